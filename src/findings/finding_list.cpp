// Findings as they are collected.
#include "findings/finding_list.h"

#include <algorithm>
#include <tuple>
#include <utility>

#include "encoding/unicode.h"

namespace Kessel {

void FindingList::begin_file(std::string file) {
  ++files_;
  file_ = std::move(file);
}

void FindingList::add(Finding finding) {
  OfAKind& same = kinds_[finding.kind];
  const std::uint64_t before = same.count;
  same.count += finding.count;
  if (before > MOST_OF_A_KIND) return;
  finding.file = file_;
  if (before < MOST_OF_A_KIND) {
    kept_.push_back({files_, std::move(finding)});
  } else {
    same.first_beyond = {files_, std::move(finding)};
  }
}

std::vector<Finding> FindingList::take() {
  for (auto& [kind, same] : kinds_) {
    if (same.count <= MOST_OF_A_KIND) continue;
    Finding& more = same.first_beyond.finding;
    more.count = same.count - MOST_OF_A_KIND;
    more.sentence = "And " + with_commas(more.count) + " more like the " +
                    std::to_string(MOST_OF_A_KIND) + " that are listed: " + more.sentence;
    kept_.push_back(std::move(same.first_beyond));
  }
  kinds_.clear();
  const auto place = [](const Kept& kept) {
    const bool has_place = kept.finding.line != 0 || kept.finding.offset != 0;
    return std::tuple(kept.file, has_place, kept.finding.offset);
  };
  std::stable_sort(kept_.begin(), kept_.end(),
                   [&](const Kept& left, const Kept& right) { return place(left) < place(right); });
  std::vector<Finding> findings;
  findings.reserve(kept_.size());
  for (Kept& kept : kept_) findings.push_back(std::move(kept.finding));
  kept_.clear();
  return findings;
}

std::string with_commas(std::uint64_t number) {
  std::string text = std::to_string(number);
  for (std::size_t at = text.size(); at > 3;) text.insert(at -= 3, ",");
  return text;
}

std::string quoted(std::string_view text) {
  constexpr std::size_t MOST = 40;
  std::string all = "\"";
  for (const char c : text.substr(0, MOST)) all += c >= ' ' && c <= '~' ? c : '?';
  return all + (text.size() > MOST ? "...\"" : "\"");
}

std::string quoted_name(std::string_view utf8) {
  if (!is_utf8(utf8)) return Kessel::quoted(utf8);
  std::string all = "\"";
  for (const char c : utf8) all += static_cast<unsigned char>(c) < ' ' || c == '\x7F' ? '?' : c;
  return all + '"';
}

}  // namespace Kessel
