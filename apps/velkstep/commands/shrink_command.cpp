#include "commands/shrink_command.h"

#include <vector>

#include "json/documents.h"
#include "kessel/errors.h"
#include "kessel/shrink.h"
#include "run/exit_codes.h"
#include "run/one_output.h"
#include "run/progress.h"
#include "run/warnings.h"
#include "run/with_input.h"
#include "system/interruption.h"
#include "text/counted.h"

namespace Velkstep {

namespace {

Kessel::Shrunk shrink_quietly(const std::filesystem::path& in, const ShrinkArguments& arguments,
                              std::vector<Kessel::Finding>& warnings) {
  Kessel::ShrinkOptions options;
  options.memory_limit = arguments.memory_limit;
  options.drop_unreachable = arguments.drop_unreachable;
  options.renumber = arguments.renumber;
  options.replace = arguments.force;
  options.warning = [&](const Kessel::Finding& finding) { warnings.push_back(finding); };
  ProgressBar bar(arguments.quiet ? ShowProgress::never : arguments.progress);
  options.progress = progress_on(bar);
  return Kessel::shrink(in, arguments.out, options);
}

std::string shrunk_text(const ShrinkArguments& arguments, const Kessel::Shrunk& shrunk) {
  std::string text = arguments.out.string() + ": " + grouped(shrunk.records_after) + " of " +
                     counted(shrunk.records_before, "record", "records") + ", " +
                     grouped(shrunk.bytes_after) + " of " +
                     counted(shrunk.bytes_before, "byte", "bytes");
  if (arguments.drop_unreachable) {
    text += ", " + counted(shrunk.unreachable, "record", "records") + " unreachable";
  }
  return text + "\n";
}

}  // namespace

int shrink(const ShrinkArguments& arguments) {
  return with_input(arguments.in, [&](const std::filesystem::path& in) {
    try {
      hold_interruptions();
      refuse_to_replace(arguments.in, arguments.out);
      std::vector<Kessel::Finding> findings;
      const Kessel::Shrunk shrunk = shrink_quietly(in, arguments, findings);
      Warnings warnings;
      for (const Kessel::Finding& finding : findings) warnings.add(finding);
      if (!arguments.quiet) warnings.mention(arguments.in);
      if (arguments.json) {
        return print(shrink_json(shrunk, findings, arguments.in, arguments.out));
      }
      return arguments.quiet ? int{EXIT_DONE} : print(shrunk_text(arguments, shrunk));
    } catch (const Kessel::OutputError& error) {
      return fail_to_write(error, arguments.force);
    }
  });
}

}  // namespace Velkstep
