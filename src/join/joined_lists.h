// Lists that were shared out over files.
#pragma once

#include <map>
#include <span>
#include <vector>

#include "join/records.h"

namespace Kessel {

/// What collectors' lists gain by the lists of the records that became one with them.
class JoinedLists {
 public:
  /// Looks at what was united; after Records::settle(). Both must outlive it.
  JoinedLists(const FileSet& files, const Records& records);

  /// What the list of the record `text` lacks, as texts, in the order of the files; each once.
  std::span<const Node> more_of(Node text) const {
    const auto found = more_.find(text);
    return found == more_.end() ? std::span<const Node>() : std::span<const Node>(found->second);
  }
  /// The same for all records of which there is something.
  const std::map<Node, std::vector<Node>>& all() const { return more_; }

 private:
  std::map<Node, std::vector<Node>> more_;
};

}  // namespace Kessel
