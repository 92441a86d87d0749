// velkstep diff A B
#include "commands/diff_command.h"

#include <filesystem>

#include "formats/diff_text.h"
#include "json/documents.h"
#include "kessel/diff.h"
#include "kessel/errors.h"
#include "run/exit_codes.h"
#include "run/warnings.h"
#include "run/with_input.h"

namespace Velkstep {

namespace {

using Kessel::Difference;

std::string text_of(const Difference& difference, const DiffArguments& arguments) {
  if (arguments.json) {
    return diff_json(difference, arguments.a, arguments.b, arguments.summary);
  }
  return arguments.summary ? diff_summary(difference) : diff_text(difference);
}

Difference compared(const std::filesystem::path& a, const std::filesystem::path& b,
                    const DiffArguments& arguments, Warnings& in_a, Warnings& in_b) {
  Kessel::Options options = arguments.options;
  ProgressBar bar(arguments.progress);
  options.progress = [&](const Kessel::Progress& progress) { bar.show(progress); };
  options.warning = [&](Kessel::Finding finding) {
    Warnings& of_file = finding.file == a.string() ? in_a : in_b;
    finding.file.clear();  // The input has another name where it was unpacked.
    of_file.add(finding);
  };
  return Kessel::diff(a, b, options);
}

/// What comparing two files that can be read came to.
int compare(const std::filesystem::path& a, const std::filesystem::path& b,
            const DiffArguments& arguments) {
  try {
    Warnings in_a;
    Warnings in_b;
    const Difference difference = compared(a, b, arguments, in_a, in_b);
    in_a.mention(arguments.a);
    in_b.mention(arguments.b);
    if (!difference.is_certain) {
      fail(arguments.b,
           "may differ: symmetrical all over, it looks the same; compare how they look");
    }
    if (print(text_of(difference, arguments)) != EXIT_DONE) return EXIT_TROUBLE;
    return difference.is_same ? int{EXIT_DONE} : int{EXIT_DIFFERENT};
  } catch (const Kessel::InputError& error) {
    const bool is_a = error.finding().file == a.string();
    fail_at(shown_name(is_a ? arguments.a : arguments.b), error.finding());
    return EXIT_TROUBLE;
  }
}

}  // namespace

int diff(const DiffArguments& arguments) {
  if (arguments.a == "-" && arguments.b == "-") {
    fail("standard input", "cannot be both files; name one of them");
    return EXIT_TROUBLE;
  }
  const auto refuse = [](const std::string& name) {
    return [name](const Kessel::Finding& finding) { return fail_at(shown_name(name), finding); };
  };
  int outcome = EXIT_TROUBLE;
  const auto look_at_b = [&](const std::filesystem::path& a) {
    return with_path(
        arguments.b,
        [&](const std::filesystem::path& b) { return outcome = compare(a, b, arguments); },
        refuse(arguments.b));
  };
  with_path(arguments.a, look_at_b, refuse(arguments.a));
  return outcome;
}

}  // namespace Velkstep
