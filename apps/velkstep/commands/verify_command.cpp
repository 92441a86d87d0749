// velkstep verify IN OUTDIR
#include "commands/verify_command.h"

#include <filesystem>
#include <memory>
#include <string>

#include "formats/findings.h"
#include "kessel/verify.h"
#include "run/exit_codes.h"
#include "run/split_arguments.h"
#include "run/with_input.h"
#include "text/counted.h"
#include "text/json_line.h"
#include "text/terminal.h"

namespace Velkstep {

namespace {

using Kessel::Finding;
using Kessel::Verification;

struct VerifyArguments {
  std::string in;
  std::filesystem::path outdir;
  Kessel::Options options;
  bool json = false;
};

/// What a finding is about: the input, the folder, or a file in it.
std::string name_of_file(const VerifyArguments& arguments, const Finding& finding) {
  if (finding.file.empty()) return shown_name(arguments.in);
  if (finding.file == ".") return arguments.outdir.string();
  return (arguments.outdir / finding.file).string();
}

std::string verify_text(const VerifyArguments& arguments, const Verification& verification) {
  std::string text;
  for (const Finding& finding : verification.findings) {
    text += finding_text(name_of_file(arguments, finding), finding);
  }
  if (!text.empty()) return text;
  return counted(verification.files, "file", "files") + " with " +
         counted(verification.records, "record", "records") + ", all as they should be\n";
}

std::string verify_json(const VerifyArguments& arguments, const Verification& verification) {
  Json json = {
      {"format", JSON_FORMAT},
      {"input", arguments.in},
      {"output", arguments.outdir.string()},
      {"assemblies", word_of(arguments.options.assemblies)},
      {"names", word_of(arguments.options.names)},
      {"files", verification.files},
      {"records", verification.records},
      {"findings", Json::array()},
  };
  for (const Finding& finding : verification.findings) {
    Json one = finding_json(finding);
    one["file"] = nullptr;
    if (!finding.file.empty()) one["file"] = finding.file;
    json["findings"].push_back(std::move(one));
  }
  return json_line(json);
}

int verify(const VerifyArguments& arguments, const std::filesystem::path& path) {
  const Verification verification = Kessel::verify(path, arguments.outdir, arguments.options);
  const int printed = print(arguments.json ? verify_json(arguments, verification)
                                           : verify_text(arguments, verification));
  return printed != EXIT_DONE ? printed : exit_code_of(verification.findings);
}

}  // namespace

void add_verify_command(CLI::App& app, Action& action) {
  const auto arguments = std::make_shared<VerifyArguments>();
  CLI::App* command =
      app.add_subcommand("verify", "Check the files that IN was split into under OUTDIR");
  command
      ->add_option("IN", arguments->in, "The exchange file that was split; - reads standard input")
      ->required();
  command->add_option("OUTDIR", arguments->outdir, "The folder with the files of the split")
      ->required();
  add_assemblies_option(command, arguments->options.assemblies);
  add_names_option(command, arguments->options.names);
  add_memory_limit_option(command, arguments->options.memory_limit);
  command->add_flag("--json", arguments->json, "Print one line of JSON");
  command->footer(EXIT_CODES);
  command->callback([&action, arguments] {
    action = [arguments] {
      return with_path(arguments->in, [arguments](const std::filesystem::path& path) {
        return verify(*arguments, path);
      });
    };
  });
}

}  // namespace Velkstep
