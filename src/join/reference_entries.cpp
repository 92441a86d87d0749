#include "join/reference_entries.h"

#include <map>
#include <string_view>
#include <vector>

#include "exchange/lexer.h"

namespace Kessel {

namespace {

/// The resource in "#12 = <file.stp#name>".
std::string_view resource_in(std::string_view entry) {
  Exchange::Lexer lexer(entry);
  for (auto word = lexer.next(); word.kind != Exchange::WordKind::end; word = lexer.next()) {
    if (word.kind == Exchange::WordKind::resource) return word.text;
  }
  return {};
}

}  // namespace

void unite_reference_entries(const FileSet& files, Records& records) {
  std::map<std::string_view, std::vector<Node>> known;
  for (std::size_t i = 0; i < files.size(); ++i) {
    const Instances& instances = files[i].instances;
    std::map<std::string_view, std::size_t> counts;
    for (const Index entry : instances.kept()) {
      if (instances.type(entry) != TypeTable::REFERENCE_ENTRY) continue;
      const std::string_view resource = resource_in(instances.kept_body(entry));
      if (resource.empty()) continue;
      std::vector<Node>& same = known[resource];
      const std::size_t count = counts[resource]++;
      if (count < same.size()) {
        records.unite(same[count], records.node(i, entry));
      } else {
        same.push_back(records.node(i, entry));
      }
    }
  }
}

}  // namespace Kessel
