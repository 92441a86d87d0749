// Findings on one file, with their lines.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

#include "findings/finding_kinds.h"
#include "findings/finding_list.h"

namespace Kessel {

/// Adds findings on the text of one file. Quick when their offsets ascend.
class FileReport {
 public:
  /// `findings` has begun the file; both arguments must outlive the object.
  FileReport(std::string_view text, FindingList& findings) : text_(text), findings_(findings) {}

  /// Adds a finding on the whole file.
  void add(FindingKind kind, std::string sentence, std::uint32_t instance = 0) {
    findings_.add(make_finding(kind, std::move(sentence), 0, 0, instance));
  }

  /// Adds one on the place `offset`.
  void add_at(std::size_t offset, FindingKind kind, std::string sentence,
              std::uint32_t instance = 0) {
    add_at(offset, kind, severity_of(kind), std::move(sentence), instance);
  }
  void add_at(std::size_t offset, FindingKind kind, Severity severity, std::string sentence,
              std::uint32_t instance) {
    Finding finding = make_finding(kind, std::move(sentence), offset, line_of(offset), instance);
    finding.severity = severity;
    findings_.add(std::move(finding));
  }

 private:
  std::uint64_t line_of(std::size_t offset) {
    if (offset < counted_) {
      counted_ = 0;
      line_ = 1;
    }
    const char* const text = text_.data();
    line_ += static_cast<std::uint64_t>(std::count(text + counted_, text + offset, '\n'));
    counted_ = offset;
    return line_;
  }

  std::string_view text_;
  FindingList& findings_;
  std::size_t counted_ = 0;
  std::uint64_t line_ = 1;
};

}  // namespace Kessel
