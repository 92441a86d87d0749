#include "output/shared_lists.h"

#include <algorithm>

#include "exchange/parameters.h"
#include "instances/collectors.h"
#include "output/made_records.h"

namespace Kessel {

SharedLists::SharedLists(const MentioningText& body, const Instances& instances,
                         const Placement& placement, Index record)
    : body_(body), lists_(collected_lists(body.text)) {
  std::sort(lists_.begin(), lists_.end(),
            [](std::string_view a, std::string_view b) { return a.data() < b.data(); });
  const auto own = placement.stands.of(record);
  for (std::size_t list = 0; list < lists_.size(); ++list) {
    for (const std::string_view text : Exchange::items_of(lists_[list])) {
      const auto item = static_cast<std::uint32_t>(items_.size());
      items_.push_back({text, list});
      const std::uint64_t number = text.empty() ? 0 : Exchange::instance_of(text);
      const Index listed = number == 0 ? NO_RECORD : instances.find(number);
      if (listed == NO_RECORD) {
        for (const Stand stand : own) kept_.push_back({stand.file(), item});
        continue;
      }
      // Either may stand in very many files: a layer, or a placement that all parts share.
      const auto other = placement.stands.of(listed);
      const bool asks_other = own.size() <= other.size();
      for (const Stand stand : asks_other ? own : other) {
        if (placement.stands.has(asks_other ? listed : record, stand.file())) {
          kept_.push_back({stand.file(), item});
        }
      }
    }
  }
  std::sort(kept_.begin(), kept_.end(), [](const Kept& a, const Kept& b) {
    return a.file != b.file ? a.file < b.file : a.item < b.item;
  });
}

std::pair<const SharedLists::Kept*, const SharedLists::Kept*> SharedLists::kept_in(
    FileId file) const {
  const auto range = std::equal_range(kept_.begin(), kept_.end(), Kept{file, 0},
                                      [](const Kept& a, const Kept& b) { return a.file < b.file; });
  return {kept_.data() + (range.first - kept_.begin()),
          kept_.data() + (range.second - kept_.begin())};
}

bool SharedLists::is_shortened(FileId file) const {
  const auto [first, end] = kept_in(file);
  return static_cast<std::size_t>(end - first) != items_.size();
}

std::string SharedLists::body(const FileNumbers& numbers, FileId file) const {
  auto [kept, end] = kept_in(file);
  std::string text;
  std::size_t at = 0;
  for (std::size_t list = 0; list < lists_.size(); ++list) {
    const auto begin = static_cast<std::size_t>(lists_[list].data() - body_.text.data());
    text += renumbered(body_.cut(body_.text.substr(at, begin - at)), numbers, file);
    text += '(';
    for (bool is_first = true; kept != end && items_[kept->item].list == list; ++kept) {
      if (!is_first) text += ',';
      is_first = false;
      const std::string_view item = items_[kept->item].text;
      if (!item.empty()) text += renumbered(body_.cut(item), numbers, file);
    }
    text += ')';
    at = begin + lists_[list].size();
  }
  return text + renumbered(body_.cut(body_.text.substr(at)), numbers, file);
}

}  // namespace Kessel
