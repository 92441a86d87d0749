#include "commands/join_command.h"

#include <iostream>
#include <system_error>

#include "formats/findings.h"
#include "json/documents.h"
#include "kessel/errors.h"
#include "kessel/join.h"
#include "run/exit_codes.h"
#include "run/with_input.h"
#include "system/interruption.h"
#include "text/counted.h"

namespace Velkstep {

namespace {

namespace fs = std::filesystem;

/// The path of a file that a finding names as seen from the root's folder; the root for none.
std::string path_in_finding(const JoinArguments& arguments, const Kessel::Finding& finding) {
  if (finding.file.empty()) return arguments.root;
  return (fs::path(arguments.root).parent_path() / finding.file).string();
}

Kessel::Joined join_quietly(const JoinArguments& arguments) {
  Kessel::JoinOptions options;
  options.memory_limit = arguments.memory_limit;
  options.follow_outside = arguments.follow_outside;
  options.replace = arguments.force;
  ProgressBar bar(arguments.quiet ? ShowProgress::never : arguments.progress);
  options.progress = [&](const Kessel::Progress& progress) {
    throw_if_interrupted();
    bar.show(progress);
  };
  return Kessel::join(arguments.root, arguments.out, options);
}

std::string joined_text(const JoinArguments& arguments, const Kessel::Joined& joined) {
  return arguments.out.string() + ": " + counted(joined.records, "record", "records") + " from " +
         counted(joined.inputs.size(), "file", "files") + "\n";
}

}  // namespace

int join(const JoinArguments& arguments) {
  try {
    hold_interruptions();
    const Kessel::Joined joined = join_quietly(arguments);
    for (const Kessel::Finding& warning : joined.warnings) {
      std::cerr << finding_text(path_in_finding(arguments, warning), warning);
    }
    if (arguments.json) return print(join_json(joined, arguments.root, arguments.out));
    return arguments.quiet ? EXIT_DONE : print(joined_text(arguments, joined));
  } catch (const Interrupted&) {
    throw;
  } catch (const Kessel::InputError& error) {
    const Kessel::Finding& finding = error.finding();
    const std::string name = path_in_finding(arguments, finding);
    return fail(finding.line == 0 ? name : name + ":" + std::to_string(finding.line),
                finding.sentence);
  } catch (const Kessel::OutputError& error) {
    return fail_to_write(error);
  } catch (const std::exception& error) {
    return fail(arguments.root, reason_of(error));
  }
}

}  // namespace Velkstep
