#include "commands/join_command.h"

#include <iostream>

#include "formats/findings.h"
#include "json/documents.h"
#include "kessel/errors.h"
#include "kessel/join.h"
#include "kessel/split_list.h"
#include "run/advice.h"
#include "run/exit_codes.h"
#include "run/meant_files.h"
#include "run/one_output.h"
#include "run/progress.h"
#include "run/split_run.h"
#include "run/unpacked.h"
#include "run/with_input.h"
#include "system/interruption.h"
#include "text/counted.h"
#include "text/terminal.h"

namespace Velkstep {

namespace {

namespace fs = std::filesystem;

/// What a file is called that a finding names as seen from the root's folder; the root for none.
std::string name_in_finding(const JoinArguments& arguments, const Kessel::Finding& finding) {
  if (finding.file.empty()) return shown_name(arguments.root);
  std::error_code error;
  const fs::path root = arguments.root;
  const fs::path folder = fs::is_directory(root, error) ? root : root.parent_path();
  return (folder / finding.file).string();
}

/// Joins `root`, which may be a copy of what the arguments mean.
Kessel::Joined join_quietly(const fs::path& root, const JoinArguments& arguments) {
  Kessel::JoinOptions options;
  options.memory_limit = arguments.memory_limit;
  options.follow_outside = arguments.follow_outside;
  options.allow_missing = arguments.allow_missing;
  options.allow_mixed_schemas = arguments.allow_mixed_schemas;
  options.shrink = arguments.shrink;
  options.replace = arguments.force;
  if (root != arguments.root) options.stands_for = shown_name(arguments.root);
  Unpacked unpacked;
  options.readable = unpacked.readable();
  ProgressBar bar(arguments.quiet ? ShowProgress::never : arguments.progress);
  options.progress = progress_on(bar);
  return Kessel::join(root, arguments.out, options);
}

bool is_list_of_split(const fs::path& path) {
  return path.filename() == ROOTS_FILE || path.filename() == Kessel::SPLIT_LIST;
}

/// What is wrong, and which option helps, where one does.
std::string sentence_for(const JoinArguments& arguments, const Kessel::Finding& finding) {
  switch (finding.kind) {
    case Kessel::FindingKind::missing_target:
      return finding.sentence + " --allow-missing keeps what refers to them.";
    case Kessel::FindingKind::missing_file:
      return finding.sentence +
             " Name a folder that a split wrote, or the file that refers to the others.";
    case Kessel::FindingKind::not_an_exchange_file:
      if (is_list_of_split(name_in_finding(arguments, finding))) {
        return finding.sentence + " Name the folder that it is in, or its root's file.";
      }
      return sentence_with_advice(finding, name_in_finding(arguments, finding));
    case Kessel::FindingKind::mixed_schemas:
      return finding.sentence + " --allow-mixed-schemas takes them.";
    default:
      return sentence_with_advice(finding, name_in_finding(arguments, finding));
  }
}

/// What can be done about something that a join which worked was warned of.
std::string advice_on_warning(const Kessel::Finding& warning) {
  if (warning.kind == Kessel::FindingKind::missing_target) {
    return " Put it there, and join again, to have it in the result.";
  }
  const std::string advice = advice_on_joined(warning);
  return advice.empty() ? "" : " " + advice;
}

/// Who names a piece of a split, and not its root, gets that piece.
void mention_nothing_joined(const JoinArguments& arguments) {
  std::error_code error;
  if (fs::is_directory(arguments.root, error)) return;
  const std::string split = arguments.root == "-" ? "" : split_of(arguments.root);
  std::cerr << "velkstep: " << printable(shown_name(arguments.root))
            << ": refers to no other file, so " << printable(arguments.out.string())
            << " holds nothing else; "
            << (split.empty() ? "name the file that refers to the others"
                              : "velkstep join " + in_command(split) + " joins the whole split")
            << '\n';
}

std::string joined_text(const JoinArguments& arguments, const Kessel::Joined& joined) {
  return arguments.out.string() + ": " + counted(joined.records, "record", "records") + " from " +
         counted(joined.inputs.size(), "file", "files") + "\n";
}

}  // namespace

int join(const JoinArguments& arguments) {
  const auto join_from = [&](const fs::path& root) {
    try {
      hold_interruptions();
      refuse_to_replace(arguments.root, arguments.out);
      const Kessel::Joined joined = join_quietly(root, arguments);
      // No input's check would find these.
      for (const Kessel::Finding& warning : joined.warnings) {
        if (arguments.quiet) break;
        Kessel::Finding advised = warning;
        advised.sentence += advice_on_warning(warning);
        std::cerr << finding_text(name_in_finding(arguments, warning), advised);
      }
      if (joined.inputs.size() == 1 && joined.warnings.empty() && !arguments.quiet) {
        mention_nothing_joined(arguments);
      }
      if (arguments.json) return print(join_json(joined, arguments.root, arguments.out));
      return arguments.quiet ? int{EXIT_DONE} : print(joined_text(arguments, joined));
    } catch (const Kessel::InputError& error) {
      const Kessel::Finding& finding = error.finding();
      return fail(place_in(name_in_finding(arguments, finding), finding),
                  sentence_for(arguments, finding));
    } catch (const Kessel::OutputError& error) {
      return fail_to_write(error, arguments.force);
    }
  };
  return with_path(arguments.root, join_from, [&](const Kessel::Finding& finding) {
    return fail_at(shown_name(arguments.root), finding);
  });
}

}  // namespace Velkstep
