// velkstep verify IN OUTDIR
#include "commands/verify_command.h"

#include <filesystem>
#include <string>

#include "formats/findings.h"
#include "json/documents.h"
#include "kessel/verify.h"
#include "run/exit_codes.h"
#include "run/with_input.h"
#include "text/counted.h"

namespace Velkstep {

namespace {

using Kessel::Finding;
using Kessel::Verification;

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

}  // namespace

namespace {

Verification verified(const std::filesystem::path& in, const VerifyArguments& arguments) {
  Kessel::Options options = arguments.options;
  ProgressBar bar(arguments.progress);
  options.progress = [&](const Kessel::Progress& progress) { bar.show(progress); };
  return Kessel::verify(in, arguments.outdir, options);
}

int print_verification(const VerifyArguments& arguments, const Verification& verification) {
  const int printed =
      print(arguments.json ? verify_json(verification, arguments.in, arguments.outdir)
                           : verify_text(arguments, verification));
  return printed != EXIT_DONE ? printed : exit_code_of(verification.findings);
}

}  // namespace

int verify(const VerifyArguments& arguments) {
  return with_path(
      arguments.in,
      [&](const std::filesystem::path& path) {
        return print_verification(arguments, verified(path, arguments));
      },
      [&](const Finding& refused) {
        Verification verification;
        verification.findings.push_back(refused);
        return print_verification(arguments, verification);
      });
}

}  // namespace Velkstep
