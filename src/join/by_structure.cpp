#include "join/by_structure.h"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <utility>

#include "exchange/lexer.h"
#include "findings/finding_kinds.h"
#include "geometry/units.h"
#include "instances/places.h"
#include "kessel/errors.h"
#include "products/products.h"
#include "products/structure.h"

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
      : products(find_products(file.instances)), units(file.instances), placements(file) {
    if (products.products.empty()) add_bare_definitions(file.instances);
    tops = products.tops;
    std::vector<ProductId> shown;
    for (const ProductId top : tops) {
      if (!products.products[top].links.empty()) shown.push_back(top);
    }
    if (!shown.empty()) tops = std::move(shown);
  }

  /// The product with that definition; null for none.
  const Product* find(Index definition) const {
    const ProductId product = definition == NO_RECORD ? NO_PRODUCT : products.find(definition);
    return product == NO_PRODUCT ? nullptr : &products.products[product];
  }

  /// A component may have neither a shape nor components.
  void add_bare_definitions(const Instances& instances) {
    for (const Index definition : instances.kept_with("PRODUCT_DEFINITION")) {
      Product product;
      product.definition = definition;
      product.formation = first_reference(instances, definition, "PRODUCT_DEFINITION_FORMATION");
      if (product.formation != NO_RECORD) {
        product.product = first_reference(instances, product.formation, "PRODUCT");
      }
      products.tops.push_back(static_cast<ProductId>(products.products.size()));
      products.products.push_back(std::move(product));
    }
  }

  Products products;
  std::vector<ProductId> tops;  ///< those with a shape, if there are such
  Geometry::UnitTable units;
  PlacementReader placements;
};

/// The copies of a record that the files of one split have, known by their marks.
class MarkedCopies {
 public:
  MarkedCopies(const FileSet& files, Records& records) {
    for (std::size_t i = 0; i < files.size(); ++i) {
      for (const JoinedFile::Marked& marked : files[i].marked) {
        const Node node = records.node(i, marked.record);
        copies_.emplace_back(records.leader(node), node);
      }
    }
    std::sort(copies_.begin(), copies_.end());
    for (const auto& [leader, node] : copies_) leaders_.emplace_back(node, leader);
    std::sort(leaders_.begin(), leaders_.end());
  }

  /// Calls `look` with `node` and its copies.
  template <class Look>
  void for_each(Node node, Look look) const {
    const auto known = std::lower_bound(leaders_.begin(), leaders_.end(), std::pair(node, Node{0}));
    if (known == leaders_.end() || known->first != node) return look(node);
    const Node leader = known->second;
    auto copy = std::lower_bound(copies_.begin(), copies_.end(), std::pair(leader, Node{0}));
    for (; copy != copies_.end() && copy->first == leader; ++copy) look(copy->second);
  }

 private:
  std::vector<std::pair<Node, Node>> copies_;   // leader, copy
  std::vector<std::pair<Node, Node>> leaders_;  // copy, leader
};

class StructuralUnion {
 public:
  StructuralUnion(const FileSet& files, Records& records, std::vector<Finding>& doubts)
      : files_(files),
        records_(records),
        doubts_(doubts),
        copies_(files, records),
        structures_(files.size()) {}

  Documents unite() {
    Documents documents;
    for (std::size_t i = 0; i < files_.size(); ++i) {
      for (const FileReference& reference : files_[i].references) {
        if (files_[i].is_of_split_of(files_[reference.target])) continue;
        if (reference.what.is_to_anchor()) continue;
        unite(i, reference);
        documents.push_back(records_.node(i, reference.what.document));
        for (const Index record : reference.what.managing) {
          documents.push_back(records_.node(i, record));
        }
      }
    }
    std::sort(documents.begin(), documents.end());
    documents.erase(std::unique(documents.begin(), documents.end()), documents.end());
    return documents;
  }

 private:
  Structure& structure(std::size_t file) {
    if (!structures_[file]) structures_[file] = std::make_unique<Structure>(files_[file]);
    return *structures_[file];
  }

  void unite(std::size_t from, const FileReference& reference) {
    const Product* const here = structure(from).find(reference.what.definition);
    const std::size_t to = reference.target;
    const Product& there = component(here, to);
    counterpart(from, reference.what.definition, to, there.definition);
    if (here != nullptr) {
      counterpart(from, here->formation, to, there.formation);
      counterpart(from, here->product, to, there.product);
    }
    if (there.links.empty()) return;
    const std::vector<ShapeLink> shapes = shapes_of(here, reference);
    for (std::size_t i = 0; i < shapes.size(); ++i) {
      const ShapeLink& shape = there.links[std::min(i, there.links.size() - 1)];
      counterpart(from, shapes[i].shape, to, shape.shape);
      // What is measured in other units stays in a representation of its own.
      if (differ_in_units(from, shapes[i].representation, to, shape.representation)) continue;
      counterpart(from, shapes[i].link, to, shape.link);
      counterpart(from, shapes[i].representation, to, shape.representation);
      unite_placements(from, shapes[i].representation, to, shape.representation);
    }
  }

  /// The shapes that stand for those of the component: the ones that the reference names, or else
  /// all that the product has.
  static std::vector<ShapeLink> shapes_of(const Product* product, const FileReference& reference) {
    const std::vector<ShapeLink> all =
        product == nullptr ? std::vector<ShapeLink>() : product->links;
    if (reference.what.representations.empty()) return all;
    std::vector<ShapeLink> shapes;
    for (const Index representation : reference.what.representations) {
      const auto link = std::find_if(all.begin(), all.end(), [&](const ShapeLink& one) {
        return one.representation == representation;
      });
      shapes.push_back(link != all.end() ? *link : ShapeLink{.representation = representation});
    }
    return shapes;
  }

  /// The product in the file `to` that is meant by a reference which `here` stands for, if that is
  /// known: the only one at the top, or the one that has the same id; of several, the one that has
  /// the same name and version, too.
  const Product& component(const Product* here, std::size_t to) {
    const Structure& there = structure(to);
    const std::vector<Product>& products = there.products.products;
    if (there.tops.size() == 1) return products[there.tops.front()];
    std::vector<ProductId> meant;
    if (here != nullptr) {
      std::copy_if(there.tops.begin(), there.tops.end(), std::back_inserter(meant),
                   [&](ProductId top) { return products[top].id == here->id; });
    }
    if (meant.empty()) throw_unknown_component(to);
    for (std::string Product::*const text : {&Product::name, &Product::version}) {
      const auto differs = [&](ProductId one) { return products[one].*text != here->*text; };
      if (!std::all_of(meant.begin(), meant.end(), differs)) std::erase_if(meant, differs);
    }
    if (meant.size() > 1) doubt(products[meant.front()], to);
    return products[meant.front()];
  }

  /// The first of several is taken.
  void doubt(const Product& taken, std::size_t to) {
    if (!doubted_.insert(records_.node(to, taken.definition)).second) return;
    const std::uint64_t number = files_[to].instances.number(taken.definition);
    Finding finding = make_finding(FindingKind::unknown_component,
                                   "The file holds several products that a reference to it may "
                                   "mean; #" +
                                       std::to_string(number) + " is taken.",
                                   0, number);
    finding.severity = Severity::warning;
    finding.file = files_[to].name;
    doubts_.push_back(std::move(finding));
  }

  [[noreturn]] void throw_unknown_component(std::size_t to) {
    Finding finding = make_finding(
        FindingKind::unknown_component,
        structure(to).tops.empty()
            ? "The file holds no product, and another refers to it as a component's."
            : "The file holds several products at its top, and the reference to it names none of "
              "them.");
    finding.file = files_[to].name;
    throw InputError(finding);
  }

  bool differ_in_units(std::size_t from, Index here, std::size_t to, Index there) {
    const double unit_here = structure(from).units.of(here).metres;
    const double unit_there = structure(to).units.of(there).metres;
    return unit_here != 0 && unit_there != 0 && unit_here != unit_there;
  }

  void counterpart(std::size_t from, Index here, std::size_t to, Index there) {
    if (here == NO_RECORD || there == NO_RECORD) return;
    const Node node = records_.node(from, here);
    copies_.for_each(node, [&](Node copy) {
      if (records_.standing(copy) == Standing::whole) {
        records_.set_standing(copy, Standing::counterpart);
      }
    });
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
  std::vector<Finding>& doubts_;
  std::set<Node> doubted_;  // definitions that were taken
  const MarkedCopies copies_;
  std::vector<std::unique_ptr<Structure>> structures_;
  std::set<std::pair<Node, Node>> done_;
};

}  // namespace

Documents unite_by_structure(const FileSet& files, Records& records, std::vector<Finding>& doubts) {
  return StructuralUnion(files, records, doubts).unite();
}

}  // namespace Kessel
