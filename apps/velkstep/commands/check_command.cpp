// velkstep check IN...
#include "commands/check_command.h"

#include <filesystem>
#include <vector>

#include "formats/findings.h"
#include "json/documents.h"
#include "kessel/check.h"
#include "run/each_input.h"
#include "run/exit_codes.h"
#include "run/unpacked.h"
#include "run/with_input.h"

namespace Velkstep {

namespace {

using Kessel::Finding;

/// As compilers do: the file, the line where there is one, how bad it is, what it is.
std::string check_text(const std::string& in, const std::vector<Finding>& findings) {
  std::string text;
  for (const Finding& finding : findings) text += finding_text(name_of_file(in, finding), finding);
  return text;
}

int print_findings(const std::vector<Finding>& findings, const std::string& in, bool json) {
  const int printed = print(json ? check_json(findings, in) : check_text(in, findings));
  return printed != EXIT_DONE ? printed : exit_code_of(findings);
}

int check_one(const std::string& in, const CheckArguments& arguments) {
  return with_path(
      in,
      [&](const std::filesystem::path& path) {
        Unpacked unpacked;
        Kessel::Options options = arguments.options;
        options.readable = unpacked.readable();
        options.input_folder = folder_of_input(in);
        return print_findings(Kessel::check(path, options), in, arguments.json);
      },
      [&](const Finding& refused) { return print_findings({refused}, in, arguments.json); });
}

}  // namespace

int check(const CheckArguments& arguments) {
  return for_each_input({.inputs = arguments.in, .jobs = arguments.jobs},
                        [&](std::size_t i) { return check_one(arguments.in[i], arguments); });
}

}  // namespace Velkstep
