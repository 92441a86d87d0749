#include "join/joined_lists.h"

#include <unordered_set>

namespace Kessel {

namespace {

/// The texts of what stands in the lists of `node`.
std::vector<Node> listed_by(const FileSet& files, const Records& records, Node node) {
  std::vector<Node> nodes;
  const std::size_t file = records.file_of(node);
  for (const Reference reference : files[file].instances.references(records.index_of(node))) {
    if (!reference.is_listed() || reference.record() == NO_RECORD) continue;
    nodes.push_back(records.text_of(records.node(file, reference.record())));
  }
  return nodes;
}

}  // namespace

JoinedLists::JoinedLists(const FileSet& files, const Records& records) {
  const std::vector<Node>& united = records.united();
  for (std::size_t first = 0; first < united.size();) {
    const Node text = records.text_of(united[first]);
    std::size_t end = first;
    while (end < united.size() && records.text_of(united[end]) == text) ++end;
    const std::vector<Node> own = listed_by(files, records, text);
    std::unordered_set<Node> known(own.begin(), own.end());
    std::vector<Node> more;
    for (; first < end; ++first) {
      const Node member = united[first];
      if (member == text || records.standing(member) > Standing::counterpart) continue;
      for (const Node item : listed_by(files, records, member)) {
        if (known.insert(item).second) more.push_back(item);
      }
    }
    if (!more.empty()) more_.emplace(text, std::move(more));
  }
}

}  // namespace Kessel
