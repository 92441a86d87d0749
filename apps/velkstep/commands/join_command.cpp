#include "commands/join_command.h"

#include <iostream>
#include <list>

#include "formats/findings.h"
#include "json/documents.h"
#include "kessel/errors.h"
#include "kessel/join.h"
#include "run/exit_codes.h"
#include "run/one_output.h"
#include "run/progress.h"
#include "run/with_input.h"
#include "system/input.h"
#include "system/interruption.h"
#include "text/counted.h"

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

/// Unpacks the compressed ones of the files that are joined; they are there as long as it lives.
class Unpacked {
 public:
  fs::path path_of(const fs::path& file) {
    const std::string name = fs::absolute(file).string();
    if (!needs_a_copy(name)) return file;
    return inputs_.emplace_back(name).path();
  }

 private:
  std::list<Input> inputs_;
};

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
  options.readable = [&](const fs::path& file) { return unpacked.path_of(file); };
  ProgressBar bar(arguments.quiet ? ShowProgress::never : arguments.progress);
  options.progress = progress_on(bar);
  return Kessel::join(root, arguments.out, options);
}

/// The finding with what its reader can do about it.
Kessel::Finding with_advice(Kessel::Finding finding) {
  if (finding.kind == Kessel::FindingKind::target_outside) {
    finding.sentence += " --follow-outside reads them.";
  } else if (finding.kind == Kessel::FindingKind::missing_target) {
    finding.sentence += " --allow-missing keeps what refers to them.";
  } else if (finding.kind == Kessel::FindingKind::mixed_schemas) {
    finding.sentence += " --allow-mixed-schemas takes them.";
  }
  return finding;
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
        std::cerr << finding_text(name_in_finding(arguments, warning), warning);
      }
      if (arguments.json) return print(join_json(joined, arguments.root, arguments.out));
      return arguments.quiet ? int{EXIT_DONE} : print(joined_text(arguments, joined));
    } catch (const Kessel::InputError& error) {
      return fail_at(name_in_finding(arguments, error.finding()), with_advice(error.finding()));
    } catch (const Kessel::OutputError& error) {
      return fail_to_write(error);
    }
  };
  return with_path(arguments.root, join_from, [&](const Kessel::Finding& finding) {
    return fail_at(shown_name(arguments.root), finding);
  });
}

}  // namespace Velkstep
