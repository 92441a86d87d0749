// velkstep check IN
#include "commands/check_command.h"

#include <filesystem>
#include <vector>

#include "formats/findings.h"
#include "json/documents.h"
#include "kessel/check.h"
#include "run/exit_codes.h"
#include "run/with_input.h"

namespace Velkstep {

namespace {

using Kessel::Finding;

/// As compilers do: the file, the line where there is one, how bad it is, what it is.
std::string check_text(const std::string& in, const std::vector<Finding>& findings) {
  std::string text;
  for (const Finding& finding : findings) text += finding_text(shown_name(in), finding);
  return text;
}

}  // namespace

int check(const CheckArguments& arguments) {
  return with_path(arguments.in, [&](const std::filesystem::path& path) {
    Kessel::Options options = arguments.options;
    options.input_folder = folder_of(arguments.in);
    const std::vector<Finding> findings = Kessel::check(path, options);
    const int printed = print(arguments.json ? check_json(findings, arguments.in)
                                             : check_text(arguments.in, findings));
    return printed != EXIT_DONE ? printed : exit_code_of(findings);
  });
}

}  // namespace Velkstep
