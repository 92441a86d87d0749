// Why a run refuses an input.
#include "check/refusal.h"

#include <algorithm>
#include <vector>

#include "kessel/check.h"

namespace Kessel {

namespace {

/// What the file is, rather than what follows from that.
bool is_about_the_file(FindingKind kind) {
  using enum FindingKind;
  return kind == empty_file || kind == compressed || kind == other_encoding || kind == binary ||
         kind == not_an_exchange_file;
}

}  // namespace

Finding explain(const Finding& refused, const std::filesystem::path& in, const Options& options) {
  if (refused.kind == FindingKind::memory_limit) return refused;  // A check needs another amount.
  const std::vector<Finding> findings = check(in, options);
  const auto find = [&](auto fits) -> const Finding* {
    const auto found = std::find_if(findings.begin(), findings.end(), fits);
    return found == findings.end() ? nullptr : &*found;
  };
  const Finding* same = find([&](const Finding& finding) { return finding.kind == refused.kind; });
  if (same == nullptr) {
    same = find([](const Finding& finding) { return is_about_the_file(finding.kind); });
  }
  return same == nullptr ? refused : *same;
}

}  // namespace Kessel
