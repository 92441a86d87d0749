#include "run/advice.h"

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <iterator>

#include "run/meant_files.h"
#include "text/terminal.h"

namespace Velkstep {

namespace {

namespace fs = std::filesystem;
using Kessel::FindingKind;

constexpr const char* GET_IT_AGAIN = "The file may be cut off or damaged: copy or export it again.";
constexpr const char* EXPORT_AS_STEP = "Export it from the CAD system as STEP (.stp, .step).";
constexpr const char* CLASSIC_ONLY = "Without --classic it is read.";

struct Advice {
  FindingKind kind;
  const char* sentence;
};

/// Errors because of which an input is not read, and those of files that refer to others. Of those
/// that are not here, the sentences themselves tell what to do, or only `verify` finds them.
constexpr Advice ADVICE[] = {
    {FindingKind::empty_file, "Copy or export it again."},
    {FindingKind::binary, EXPORT_AS_STEP},
    {FindingKind::not_an_exchange_file, EXPORT_AS_STEP},
    {FindingKind::header_without_end, GET_IT_AGAIN},
    {FindingKind::nothing_after_header, GET_IT_AGAIN},
    {FindingKind::header_is_read_as_data, CLASSIC_ONLY},
    {FindingKind::unclosed_text, GET_IT_AGAIN},
    {FindingKind::unclosed_record, GET_IT_AGAIN},
    {FindingKind::changed_while_read, "Try again when nobody writes to it."},
    {FindingKind::record_number_too_large, "Export it again with smaller numbers."},
    {FindingKind::memory_limit, "With a larger --memory-limit, or without, it is read."},
    {FindingKind::skipped_text, "Put \"DATA;\" in front of it, or export it again."},
    {FindingKind::unclosed_string, GET_IT_AGAIN},
    {FindingKind::unclosed_comment, GET_IT_AGAIN},
    {FindingKind::unclosed_list, "Export it again, or close it with an editor."},
    {FindingKind::unclosed_section, GET_IT_AGAIN},
    {FindingKind::missing_header, GET_IT_AGAIN},
    {FindingKind::unsupported_scope, "Export it again in another edition of the schema."},
    {FindingKind::two_texts_of_a_number,
     "Export it again: nobody can tell which of them is meant."},
    {FindingKind::missing_file, "Name a folder that a split wrote."},
    {FindingKind::wrong_split_list, "Name the root's file in place of the folder."},
    {FindingKind::missing_target, "Put them there, or do not follow them."},
    {FindingKind::target_outside, "--follow-outside reads them."},
    {FindingKind::file_cycle, "Change one of these references first."},
    {FindingKind::mixed_schemas, "Export them with one schema."},
    {FindingKind::unknown_component, "Export that file again, with the component at its top."},
};

/// What helps where the file is one that a split wrote, and no CAD system.
constexpr const char* SPLIT_AGAIN = "Split again.";
constexpr const char* SPLIT_AGAIN_OR_PUT = "Put them there, or split again.";

std::string advice_on_unreadable(const std::string& argument) {
  if (argument == "standard input") return "Redirect it from a file, or name one.";
  std::error_code error;
  const fs::path path = argument;
  const fs::file_type type = fs::status(path, error).type();
  if (type == fs::file_type::directory) {
    std::string sentence = what_to_name_in(path) + ".";
    sentence.front() =
        static_cast<char>(std::toupper(static_cast<unsigned char>(sentence.front())));
    return sentence;
  }
  if (type == fs::file_type::not_found) {
    const std::string meant = meant_instead_of(path);
    return meant.empty() ? "Check its name." : "Did you mean " + meant + "?";
  }
  if (type == fs::file_type::regular) return "Check who may read it, and the disk that it is on.";
  if (type == fs::file_type::none) return "Check its name.";
  return "Copy it into a file first.";
}

}  // namespace

std::string advice_on(const Kessel::Finding& finding, const std::string& path) {
  if (finding.kind == FindingKind::unreadable) return advice_on_unreadable(path);
  const auto* found = std::find_if(std::begin(ADVICE), std::end(ADVICE), [&](const Advice& advice) {
    return advice.kind == finding.kind;
  });
  return found == std::end(ADVICE) ? std::string() : found->sentence;
}

std::string advice_on_joined(const Kessel::Finding& warning) {
  switch (warning.kind) {
    case FindingKind::mixed_schemas:
      return "Try the result in the program that is to read it.";
    case FindingKind::copies_differ:
      return "Undo the change in one of them if it is the wrong one.";
    case FindingKind::stand_in_left:
      return "Put the file that holds it beside the others.";
    case FindingKind::unknown_component:
      return "Look whether it is the right one.";
    default:
      return {};
  }
}

std::string advice_on_split(const Kessel::Finding& finding, const std::string& path) {
  if (finding.kind == FindingKind::missing_target) return SPLIT_AGAIN_OR_PUT;
  const std::string advice = advice_on(finding, path);
  const bool is_about_the_file = finding.kind != FindingKind::unreadable &&
                                 finding.kind != FindingKind::missing_file &&
                                 finding.kind != FindingKind::memory_limit;
  return is_about_the_file && !advice.empty() ? SPLIT_AGAIN : advice;
}

std::string sentence_with_advice(const Kessel::Finding& finding, const std::string& path) {
  const std::string advice = advice_on(finding, path);
  return finding.sentence + (advice.empty() ? "" : " " + std::string(printable(advice)));
}

}  // namespace Velkstep
