// velkstep verify IN OUTDIR
#include "commands/verify_command.h"

#include <algorithm>
#include <filesystem>
#include <iostream>
#include <string>
#include <system_error>

#include "formats/findings.h"
#include "json/documents.h"
#include "kessel/errors.h"
#include "kessel/split_list.h"
#include "kessel/summary.h"
#include "kessel/verify.h"
#include "run/advice.h"
#include "run/exit_codes.h"
#include "run/input_names.h"
#include "run/unpacked.h"
#include "run/with_input.h"
#include "text/counted.h"
#include "text/terminal.h"

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

/// What stands in a line for a finding. What a split wrote is written again by another.
std::string line_for(const VerifyArguments& arguments, const Finding& finding) {
  const std::string name = name_of_file(arguments, finding);
  if (finding.file.empty() || finding.severity != Kessel::Severity::error) {
    return finding_text(name, finding);
  }
  const std::filesystem::path below = arguments.outdir / stem_of(arguments.in);
  std::error_code error;
  const bool is_above = finding.kind == Kessel::FindingKind::missing_file &&
                        below != arguments.outdir / "" &&
                        std::filesystem::is_directory(below, error);
  const std::string advice =
      is_above ? "Did you mean " + below.string() + "?" : advice_on_split(finding, name);
  return printable(place_in(name, finding)) + ": error: " + finding.sentence +
         (advice.empty() ? "" : " ") + printable(advice) + "\n";
}

/// Whether the files do not say what the input says.
bool differs(const Verification& verification) {
  return std::any_of(verification.findings.begin(), verification.findings.end(),
                     [](const Finding& finding) {
                       return finding.kind == Kessel::FindingKind::missing_record ||
                              finding.kind == Kessel::FindingKind::foreign_record ||
                              finding.kind == Kessel::FindingKind::changed_record;
                     });
}

/// Whoever takes the wrong folder, or the wrong input, is told so in front of all that differs.
void mention_other_input(const VerifyArguments& arguments, const Verification& verification) {
  if (!differs(verification) || arguments.in == "-") return;
  try {
    const auto list = Kessel::read_split_list(arguments.outdir);
    const std::filesystem::path in = arguments.in;
    std::error_code error;
    const bool is_other = list && list->input != in.filename().string() &&
                          list->input_bytes != std::filesystem::file_size(in, error) && !error;
    if (!is_other) return;
    std::cerr << "velkstep: " << printable(arguments.outdir.string()) << ": is the split of "
              << printable(shown_name(list->input)) << '\n';
  } catch (const Kessel::InputError&) {
    return;  // A list that is wrong is a finding.
  }
}

/// So is who does not follow references as the split did. `in` is where the input is read.
void mention_follow(const VerifyArguments& arguments, const std::filesystem::path& in,
                    const Verification& verification) {
  if (arguments.options.follow_references || !differs(verification)) return;
  const Kessel::Options options{.input_folder = folder_of_input(arguments.in)};
  if (Kessel::read_summary(in, options).references.empty()) return;
  std::cerr << "velkstep: " << printable(shown_name(arguments.in))
            << ": refers to other files; what was split with --follow is verified with --follow\n";
}

std::string verify_text(const VerifyArguments& arguments, const Verification& verification) {
  std::string text;
  for (const Finding& finding : verification.findings) {
    text += line_for(arguments, finding);
  }
  if (!text.empty()) return text;
  return counted(verification.files, "file", "files") + " with " +
         counted(verification.records, "record", "records") + ", all as they should be\n";
}

}  // namespace

namespace {

Verification verified(const std::filesystem::path& in, const VerifyArguments& arguments) {
  Kessel::Options options = arguments.options;
  options.input_folder = folder_of_input(arguments.in);
  Unpacked unpacked;
  options.readable = unpacked.readable();
  ProgressBar bar(arguments.progress);
  options.progress = [&](const Kessel::Progress& progress) { bar.show(progress); };
  return Kessel::verify(in, arguments.outdir, options);
}

int print_verification(const VerifyArguments& arguments, const Verification& verification) {
  mention_other_input(arguments, verification);
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
        const Verification verification = verified(path, arguments);
        mention_follow(arguments, path, verification);
        return print_verification(arguments, verification);
      },
      [&](const Finding& refused) {
        Verification verification;
        verification.findings.push_back(refused);
        return print_verification(arguments, verification);
      });
}

}  // namespace Velkstep
