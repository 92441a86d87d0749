// Findings as they are collected.
#include "check/finding_list.h"

#include <algorithm>
#include <utility>

#include "model/finding_kinds.h"

namespace Kessel {

void FindingList::add(FindingKind kind, Place place, std::uint32_t instance, std::string sentence) {
  add(make_finding(kind, std::move(sentence), place.offset, place.line, instance));
}

void FindingList::add(Finding finding) {
  OfAKind& same = kinds_[finding.kind];
  ++same.count;
  if (same.count <= MOST_OF_A_KIND) {
    kept_.push_back(std::move(finding));
  } else if (same.count == MOST_OF_A_KIND + 1) {
    same.first_beyond = std::move(finding);
  }
}

std::vector<Finding> FindingList::take() {
  for (auto& [kind, same] : kinds_) {
    if (same.count <= MOST_OF_A_KIND) continue;
    Finding& more = same.first_beyond;
    more.count = same.count - MOST_OF_A_KIND;
    more.sentence = "And " + with_commas(more.count) + " more like the " +
                    std::to_string(MOST_OF_A_KIND) + " that are listed: " + more.sentence;
    kept_.push_back(std::move(more));
  }
  kinds_.clear();
  std::stable_sort(kept_.begin(), kept_.end(), [](const Finding& left, const Finding& right) {
    return std::pair(left.line != 0, left.offset) < std::pair(right.line != 0, right.offset);
  });
  return std::exchange(kept_, {});
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

}  // namespace Kessel
