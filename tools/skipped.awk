# Passes on what ctest prints, and in front of its summary says which tests were skipped, and why:
# the reasons stand in ctest's log only.

/^Test project / && !log_file { log_file = substr($0, 14) "/Testing/Temporary/LastTest.log" }
/% tests passed, / { in_summary = 1 }
in_summary { summary[++lines] = $0; next }
{ print; fflush() }

function note(reason,    program) {
  program = test
  sub(/\..*/, "", program)
  if (!(reason in times)) order[++reasons] = reason
  times[reason]++
  if (!((reason, program) in of_program)) programs[reason] = programs[reason] " " program
  of_program[reason, program]++
  skipped++
}

function read_log(    line, in_output, in_reason, reason) {
  while ((getline line < log_file) > 0) {
    if (line ~ /^[0-9]+\/[0-9]+ Testing: /) {
      test = line
      sub(/^[^:]*: /, "", test)
      reason = "no reason given"
      in_output = 0
    } else if (line == "Output:") {
      in_output = 1
    } else if (!in_output) {
      continue
    } else if (in_reason) {
      reason = line
      in_reason = 0
    } else if (line ~ /: Skipped$/) {
      in_reason = 1
    } else if (line ~ /^SKIPPED: /) {
      note(substr(line, 10))
    } else if (line ~ /^\[  SKIPPED \] .*\(/) {
      note(reason)
    }
  }
}

END {
  if (log_file) read_log()
  if (skipped) print "\nSkipped, out of the tests that follow: " skipped
  for (i = 1; i <= reasons; ++i) {
    reason = order[i]
    count = split(programs[reason], names, " ")
    text = ""
    for (k = 1; k <= count; ++k) {
      text = text (k > 1 ? ", " : "") names[k] " " of_program[reason, names[k]]
    }
    printf "  %4d  %s (%s)\n", times[reason], reason, text
  }
  for (i = 1; i <= lines; ++i) print summary[i]
}
