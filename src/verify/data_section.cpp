#include "verify/data_section.h"

#include <string>

#include "reader/text.h"
#include "verify/text_search.h"

namespace Kessel {

namespace {

using enum FindingKind;

std::size_t skip_spaces(std::string_view text, std::size_t at) {
  while (at < text.size() && is_space(text[at])) ++at;
  return at;
}

std::size_t skip_spaces_and_comments(std::string_view text, std::size_t at) {
  for (;;) {
    at = skip_spaces(text, at);
    const std::size_t end = text.substr(at).starts_with("/*") ? text.find("*/", at + 2) : NONE;
    if (end == NONE) return at;
    at = end + 2;
  }
}

/// Checks what stands behind the data, at `at`.
void check_end(std::string_view text, std::size_t at, std::string_view end_line,
               FileReport& report) {
  at = skip_spaces(text, at);
  if (!text.substr(at).starts_with(end_line)) {
    report.add_at(at, unfinished_file,
                  "The data is not followed by the last line, " + quoted(end_line) + ".");
    return;
  }
  at = skip_spaces(text, at + end_line.size());
  if (at == text.size()) return;
  report.add_at(
      at, text_behind_end,
      "Behind the file's end stands " + quoted(text.substr(at)) + "; was it written twice?");
}

}  // namespace

std::vector<WrittenRecord> cut_data(std::string_view text, std::size_t begin,
                                    std::string_view end_line, FileReport& report) {
  std::vector<WrittenRecord> records;
  for (std::size_t at = begin;;) {
    at = skip_spaces_and_comments(text, at);
    const std::size_t end = text.find(';', at);
    if (end == NONE) {
      report.add_at(at, unfinished_file,
                    at == text.size() ? "The data does not end with \"ENDSEC;\"."
                                      : "No \";\" closes " + quoted(text.substr(at)) + ".");
      return records;
    }
    const std::string_view statement = trim(text.substr(at, end - at));
    if (statement == "ENDSEC") {
      check_end(text, end + 1, end_line, report);
      return records;
    }
    if (statement.starts_with('#')) {
      const char* digits = statement.data() + 1;
      const std::uint32_t number = read_number(digits, statement.data() + statement.size());
      records.push_back({at, at + statement.size(), number});
    } else {
      report.add_at(at, stray_text, "Between the records stands " + quoted(statement) + ".");
    }
    at = end + 1;
  }
}

}  // namespace Kessel
