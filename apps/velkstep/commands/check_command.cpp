// velkstep check IN
#include "commands/check_command.h"

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "formats/findings.h"
#include "kessel/check.h"
#include "run/exit_codes.h"
#include "run/split_arguments.h"
#include "run/with_input.h"
#include "text/json_line.h"

namespace Velkstep {

namespace {

using Kessel::Finding;

struct CheckArguments {
  std::string in;
  Kessel::Options options;
  bool json = false;
};

/// As compilers do: the file, the line where there is one, how bad it is, what it is.
std::string check_text(const std::string& in, const std::vector<Finding>& findings) {
  std::string text;
  for (const Finding& finding : findings) text += finding_text(shown_name(in), finding);
  return text;
}

std::string check_json(const std::string& in, const std::vector<Finding>& findings) {
  Json json = {{"format", JSON_FORMAT}, {"input", in}, {"findings", Json::array()}};
  for (const Finding& finding : findings) json["findings"].push_back(finding_json(finding));
  return json_line(json);
}

int check(const CheckArguments& arguments, const std::filesystem::path& path) {
  const std::vector<Finding> findings = Kessel::check(path, arguments.options);
  const int printed = print(arguments.json ? check_json(arguments.in, findings)
                                           : check_text(arguments.in, findings));
  if (printed != EXIT_DONE) return printed;
  return exit_code_of(findings);
}

}  // namespace

void add_check_command(CLI::App& app, Action& action) {
  const auto arguments = std::make_shared<CheckArguments>();
  CLI::App* command = app.add_subcommand("check", "Say what is wrong or unusual in IN");
  command->add_option("IN", arguments->in, "The exchange file to check; - reads standard input")
      ->required();
  add_memory_limit_option(command, arguments->options.memory_limit);
  command->add_flag("--json", arguments->json, "Print one line of JSON");
  command->footer(EXIT_CODES);
  command->callback([&action, arguments] {
    action = [arguments] {
      return with_path(arguments->in, [arguments](const std::filesystem::path& path) {
        return check(*arguments, path);
      });
    };
  });
}

}  // namespace Velkstep
