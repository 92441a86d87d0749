#include "join/by_structure.h"

#include <algorithm>
#include <fstream>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <utility>

#include "exchange/lexer.h"
#include "instances/places.h"
#include "join/product_shapes.h"
#include "kessel/errors.h"
#include "model/finding_kinds.h"

namespace Kessel {

namespace {

/// Reads placements again, to compare them.
class PlacementReader {
 public:
  explicit PlacementReader(const JoinedFile& file)
      : file_(file), in_(file.path, std::ios::in | std::ios::binary) {}

  /// What a placement says, whatever its numbers are; for records that are none, nothing.
  const std::string& text_of(Index record) {
    const auto [place, is_new] = known_.try_emplace(record);
    if (is_new && is_placement(record)) place->second = expanded(record, LEVELS);
    return place->second;
  }

 private:
  /// A placement, its points and directions.
  static constexpr int LEVELS = 2;

  bool is_placement(Index record) const {
    const auto& keywords = file_.instances.types().keywords(file_.instances.type(record));
    return keywords.size() == 1 && keywords.front().starts_with("AXIS") &&
           keywords.front().find("PLACEMENT") != std::string_view::npos;
  }

  std::string expanded(Index record, int levels) {
    const std::string body = read_again(in_, file_.instances, record).body;
    const auto references = file_.instances.references(record);
    std::size_t reference = 0;
    std::string text;
    Exchange::Lexer lexer(body);
    for (auto word = lexer.next(); word.kind != Exchange::WordKind::end; word = lexer.next()) {
      const bool leads_on = word.kind == Exchange::WordKind::instance &&
                            reference < references.size() &&
                            references[reference].record() != NO_RECORD;
      if (word.kind == Exchange::WordKind::instance) ++reference;
      text += leads_on && levels > 0 ? expanded(references[reference - 1].record(), levels - 1)
                                     : std::string(word.text);
      text += ' ';
    }
    return text;
  }

  const JoinedFile& file_;
  std::ifstream in_;
  std::map<Index, std::string> known_;
};

/// What joining wants to know of a file by its structure.
struct Structure {
  explicit Structure(const JoinedFile& file)
      : shapes(file.instances), tops(shapes.tops()), placements(file) {}
  ProductShapes shapes;
  std::vector<Index> tops;
  PlacementReader placements;
};

class StructuralUnion {
 public:
  StructuralUnion(const FileSet& files, Records& records)
      : files_(files), records_(records), structures_(files.size()) {}

  Documents unite() {
    Documents documents;
    for (std::size_t i = 0; i < files_.size(); ++i) {
      for (const FileReference& reference : files_[i].references) {
        if (files_[i].is_of_split_of(files_[reference.target])) continue;
        unite(i, reference);
        documents.push_back(records_.node(i, reference.what.document));
      }
    }
    std::sort(documents.begin(), documents.end());
    return documents;
  }

 private:
  Structure& structure(std::size_t file) {
    if (!structures_[file]) structures_[file] = std::make_unique<Structure>(files_[file]);
    return *structures_[file];
  }

  void unite(std::size_t from, const FileReference& reference) {
    const Index here = reference.what.definition;
    const std::size_t to = reference.target;
    const Index there = component(from, reference);
    counterpart(from, here, to, there);
    if (here != NO_RECORD) {
      counterpart(from, formation_of(files_[from].instances, here), to,
                  formation_of(files_[to].instances, there));
      counterpart(from, product_of(files_[from].instances, here), to,
                  product_of(files_[to].instances, there));
    }
    const auto shapes_there = structure(to).shapes.of(there);
    if (shapes_there.empty()) return;
    std::vector<ShapeLink> shapes_here = shapes_of(from, reference);
    for (std::size_t i = 0; i < shapes_here.size(); ++i) {
      const ShapeLink& shape = shapes_there[std::min(i, shapes_there.size() - 1)];
      counterpart(from, shapes_here[i].definition_shape, to, shape.definition_shape);
      counterpart(from, shapes_here[i].link, to, shape.link);
      counterpart(from, shapes_here[i].representation, to, shape.representation);
      unite_placements(from, shapes_here[i].representation, to, shape.representation);
    }
  }

  /// The shapes that stand for those of the component: the ones that the reference names, or else
  /// all of the definition.
  std::vector<ShapeLink> shapes_of(std::size_t from, const FileReference& reference) {
    const auto all = structure(from).shapes.of(reference.what.definition);
    if (reference.what.representations.empty()) return {all.begin(), all.end()};
    std::vector<ShapeLink> shapes;
    for (const Index representation : reference.what.representations) {
      const auto link = std::find_if(all.begin(), all.end(), [&](const ShapeLink& one) {
        return one.representation == representation;
      });
      shapes.push_back(link != all.end() ? *link : ShapeLink{.representation = representation});
    }
    return shapes;
  }

  /// The definition in the file referred to that is meant: its only top, or the one whose product
  /// has the same id.
  Index component(std::size_t from, const FileReference& reference) {
    const std::vector<Index>& tops = structure(reference.target).tops;
    if (tops.size() == 1) return tops.front();
    const Instances& there = files_[reference.target].instances;
    if (reference.what.definition != NO_RECORD) {
      const std::string_view id = product_id(files_[from].instances, reference.what.definition);
      const auto has_id = [&](Index top) { return product_id(there, top) == id; };
      const auto found = std::find_if(tops.begin(), tops.end(), has_id);
      if (found != tops.end()) return *found;
    }
    Finding finding = make_finding(
        FindingKind::unknown_component,
        tops.empty() ? "The file holds no product, and another refers to it as a component's."
                     : "The file holds several products at its top, and the reference to it names "
                       "none of them.");
    finding.file = files_[reference.target].name;
    throw InputError(finding);
  }

  void counterpart(std::size_t from, Index here, std::size_t to, Index there) {
    if (here == NO_RECORD || there == NO_RECORD) return;
    const Node node = records_.node(from, here);
    if (records_.standing(node) == Standing::whole) {
      records_.set_standing(node, Standing::counterpart);
    }
    records_.unite(node, records_.node(to, there));
  }

  /// A transformation refers to a placement of the component's representation: of equal ones, each
  /// here becomes one with another there.
  void unite_placements(std::size_t from, Index here, std::size_t to, Index there) {
    if (!done_.emplace(records_.node(from, here), records_.node(to, there)).second) return;
    std::multimap<std::string, Index> known;
    for (const Reference item : files_[to].instances.references(there)) {
      if (!item.is_listed() || item.record() == NO_RECORD) continue;
      const std::string& text = structure(to).placements.text_of(item.record());
      if (!text.empty()) known.emplace(text, item.record());
    }
    if (known.empty()) return;
    for (const Reference item : files_[from].instances.references(here)) {
      if (!item.is_listed() || item.record() == NO_RECORD) continue;
      const auto equal = known.find(structure(from).placements.text_of(item.record()));
      if (equal == known.end()) continue;
      counterpart(from, item.record(), to, equal->second);
      known.erase(equal);
    }
  }

  const FileSet& files_;
  Records& records_;
  std::vector<std::unique_ptr<Structure>> structures_;
  std::set<std::pair<Node, Node>> done_;
};

}  // namespace

Documents unite_by_structure(const FileSet& files, Records& records) {
  return StructuralUnion(files, records).unite();
}

}  // namespace Kessel
