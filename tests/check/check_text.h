// Findings of small texts, in a form that tests can compare.
#pragma once

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

#include "kessel/check.h"
#include "support/scratch_folder.h"

namespace Kessel::test {

using Lines = std::vector<std::string>;

/// A finding as one line: "LINE:COLUMN@OFFSET SEVERITY KIND #INSTANCE xCOUNT: SENTENCE"; a place
/// only where it has a line, instance and count only where there is one and more than one.
inline std::string describe(const Finding& finding) {
  std::string text;
  if (finding.line != 0) {
    text += std::to_string(finding.line) + ":" + std::to_string(finding.column) + "@" +
            std::to_string(finding.offset) + " ";
  }
  text += finding.severity == Severity::error ? "error " : "warning ";
  text += name_of(finding.kind);
  if (finding.instance != 0) text += " #" + std::to_string(finding.instance);
  if (finding.count != 1) text += " x" + std::to_string(finding.count);
  return text + ": " + finding.sentence;
}

/// Where `piece` stands first in `text`, as describe() puts it.
inline std::string place_of(std::string_view piece, std::string_view text) {
  const std::size_t offset = text.find(piece);
  std::size_t line = 1;
  std::size_t column = 1;
  for (const char c : text.substr(0, offset)) {
    ++column;
    if (c != '\n') continue;
    ++line;
    column = 1;
  }
  return std::to_string(line) + ":" + std::to_string(column) + "@" + std::to_string(offset) + " ";
}

/// What `check` finds in a file that holds `text`.
inline std::vector<Finding> findings_in(std::string_view text, const Options& options = {}) {
  const ScratchFolder folder;
  return check(folder.write("in.stp", text), options);
}

/// The same, a line each.
inline Lines checked(std::string_view text, const Options& options = {}) {
  Lines lines;
  for (const Finding& finding : findings_in(text, options)) lines.push_back(describe(finding));
  return lines;
}

}  // namespace Kessel::test
