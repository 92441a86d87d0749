// velkstep diff A B
#include "commands/diff_command.h"

#include <filesystem>
#include <optional>

#include "formats/diff_text.h"
#include "json/documents.h"
#include "kessel/diff.h"
#include "kessel/errors.h"
#include "run/exit_codes.h"
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

/// What comparing two files that can be read came to.
int compare(const std::filesystem::path& a, const std::filesystem::path& b,
            const DiffArguments& arguments) {
  try {
    const Difference difference = Kessel::diff(a, b, arguments.options);
    if (print(text_of(difference, arguments)) != EXIT_DONE) return EXIT_TROUBLE;
    return difference.is_same ? int{EXIT_DONE} : int{EXIT_DIFFERENT};
  } catch (const Kessel::InputError& error) {
    const bool is_a = error.finding().file == a.string();
    fail(shown_name(is_a ? arguments.a : arguments.b), error.what());
    return EXIT_TROUBLE;
  }
}

}  // namespace

int diff(const DiffArguments& arguments) {
  if (arguments.a == "-" && arguments.b == "-") {
    fail("standard input", "cannot be both files");
    return EXIT_TROUBLE;
  }
  std::optional<int> outcome;
  with_path(arguments.a, [&](const std::filesystem::path& a) {
    return with_path(arguments.b, [&](const std::filesystem::path& b) {
      outcome = compare(a, b, arguments);
      return int{EXIT_DONE};
    });
  });
  return outcome.value_or(EXIT_TROUBLE);
}

}  // namespace Velkstep
