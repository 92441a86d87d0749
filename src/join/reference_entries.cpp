#include "join/reference_entries.h"

#include <filesystem>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "encoding/utf8_path.h"
#include "exchange/lexer.h"
#include "external/resource.h"
#include "external/targets.h"
#include "findings/finding_kinds.h"
#include "findings/finding_list.h"
#include "join/origins.h"
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

/// What the lines of one file's reference section name, in one way for all files.
class NamedResources {
 public:
  explicit NamedResources(const JoinedFile& file) : folder_(file.place.parent_path()) {}

  /// Empty where `line` names nothing that another file may mean.
  std::string of(std::string_view line) {
    const Resource resource = resource_in(line);
    if (resource.whole.starts_with('#')) return {};
    if (resource.path.empty()) return std::string(resource.whole);
    const auto [path, is_new] = paths_.try_emplace(resource.path);
    if (is_new) {
      path->second = without_links(folder_ / path_of_utf8(decoded_uri(resource.path))).string();
    }
    return path->second + "#" + decoded_uri(resource.anchor);
  }

 private:
  const std::filesystem::path folder_;
  std::map<std::string_view, std::string> paths_;
};

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
  const std::vector<Origin> origins = origins_of(files);
  if (origins.size() < 2) return;
  std::map<std::string, std::vector<Node>> known;
  for (const Origin& origin : origins) {
    std::map<std::string, std::size_t> counts;
    for (const std::size_t i : origin) {
      NamedResources resources(files[i]);
      for (const Index entry : files[i].instances.kept()) {
        if (files[i].instances.type(entry) != TypeTable::REFERENCE_ENTRY) continue;
        const Node node = records.node(i, entry);
        const bool is_first = records.leader(node) == node;
        if (!is_first || records.standing(node) != Standing::whole) continue;
        const std::string resource = resources.of(files[i].instances.kept_body(entry));
        if (resource.empty()) continue;
        std::vector<Node>& same = known[resource];
        const std::size_t count = counts[resource]++;
        if (count < same.size()) {
          records.unite(same[count], node);
        } else {
          same.push_back(node);
        }
      }
    }
  }
}

}  // namespace Kessel
