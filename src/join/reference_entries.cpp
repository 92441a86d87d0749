#include "join/reference_entries.h"

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "exchange/lexer.h"
#include "external/resource.h"
#include "findings/finding_kinds.h"
#include "findings/finding_list.h"
#include "kessel/errors.h"

namespace Kessel {

namespace {

/// The instances that anchors of a file name, by the anchors' names.
std::map<std::string, Index> anchored_instances(const Instances& instances) {
  std::map<std::string, Index> anchors;
  for (const Index anchor : instances.kept()) {
    if (instances.type(anchor) != TypeTable::ANCHOR_ENTRY) continue;
    const std::string_view line = instances.kept_body(anchor);
    Exchange::Lexer lexer(line);
    const auto name = lexer.next();
    const auto equals = lexer.next();
    if (name.kind != Exchange::WordKind::resource || equals.text != "=") continue;
    if (lexer.next().kind != Exchange::WordKind::instance) continue;
    const auto references = instances.references(anchor);
    if (references.empty() || references.front().record() == NO_RECORD) continue;
    anchors.emplace(decoded_uri(resource_in(line).whole), references.front().record());
  }
  return anchors;
}

[[noreturn]] void throw_unknown_anchor(const JoinedFile& file, const std::string& anchor) {
  Finding finding =
      make_finding(FindingKind::unknown_component,
                   "The file has no anchor " + Kessel::quoted(anchor) + " that names an instance.");
  finding.file = file.name;
  throw InputError(finding);
}

}  // namespace

void unite_anchors(const FileSet& files, Records& records) {
  std::map<std::size_t, std::map<std::string, Index>> anchors;  // by file
  for (std::size_t i = 0; i < files.size(); ++i) {
    for (const FileReference& reference : files[i].references) {
      if (!reference.what.is_to_anchor()) continue;
      const JoinedFile& target = files[reference.target];
      const auto [place, is_new] = anchors.try_emplace(reference.target);
      if (is_new) place->second = anchored_instances(target.instances);
      const auto named = place->second.find(reference.what.anchor);
      if (named == place->second.end()) throw_unknown_anchor(target, reference.what.anchor);
      const Node entry = records.node(i, reference.what.document);
      records.set_standing(entry, Standing::stand_in);
      records.unite(entry, records.node(reference.target, named->second));
    }
  }
}

void unite_reference_entries(const FileSet& files, Records& records) {
  std::map<std::string_view, std::vector<Node>> known;
  for (std::size_t i = 0; i < files.size(); ++i) {
    const Instances& instances = files[i].instances;
    std::map<std::string_view, std::size_t> counts;
    for (const Index entry : instances.kept()) {
      if (instances.type(entry) != TypeTable::REFERENCE_ENTRY) continue;
      const std::string_view resource = resource_in(instances.kept_body(entry)).whole;
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
