// Shares out the lists of collectors.
#pragma once

#include <string>
#include <vector>

#include "output/renumbered_text.h"
#include "placement/placement.h"

namespace Kessel {

/// A collector's body, which says in each file what it keeps of its lists: the items that stand
/// there. Costs as much as all files' lists together, however many files there are.
class SharedLists {
 public:
  SharedLists(const MentioningText& body, const Instances& instances, const Placement& placement,
              Index record);

  /// Whether the file lacks some of the items.
  bool is_shortened(FileId file) const;

  /// The body for `file`.
  std::string body(const FileNumbers& numbers, FileId file) const;

 private:
  struct Item {
    std::string_view text;
    std::size_t list;
  };
  struct Kept {
    FileId file;
    std::uint32_t item;
  };
  std::pair<const Kept*, const Kept*> kept_in(FileId file) const;

  const MentioningText& body_;
  std::vector<std::string_view> lists_;
  std::vector<Item> items_;
  std::vector<Kept> kept_;  // by file, then by item
};

}  // namespace Kessel
