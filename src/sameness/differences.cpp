#include "sameness/differences.h"

#include <algorithm>
#include <map>
#include <string>
#include <string_view>
#include <unordered_set>

#include "sameness/changed_parameters.h"
#include "sameness/correspondence.h"

namespace Kessel::Sameness {

namespace {

/// So many changed records are read again for their parameters.
constexpr std::size_t MOST_READ_AGAIN = 10'000;

/// A record with findings, and what is found.
struct Found {
  enum class Kind : std::uint8_t { only_in_a, only_in_b, changed } kind;
  Node node;  // of A, or of B for what is only there
};

/// What needs no partner, since the other file says as much: values of which that has an equal one,
/// and copies of what products share there.
class Covered {
 public:
  Covered(const RecordGraph& graph, const std::vector<Node>& unpaired, const RecordGraph& other,
          const Owners& owners_of_other)
      : graph_(graph) {
    if (unpaired.empty()) return;
    std::unordered_set<std::uint64_t> wanted;
    for (const Node node : unpaired) wanted.insert(graph.structure(node));
    const Fingerprints& of_other = other.file.fingerprints;
    for (Node node = 0; node < other.graph.size(); ++node) {
      const Index record = other.graph.record(node);
      if (of_other.worth[record] == Worth::identity) continue;
      if (wanted.contains(of_other.structure[record])) values_.insert(of_other.structure[record]);
    }
    for (const FurtherOwner& further : owners_of_other.further()) {
      shared_.insert(of_other.structure[further.record]);
    }
  }

  bool contains(Node node) const {
    const std::uint64_t structure = graph_.structure(node);
    if (shared_.contains(structure)) return true;
    const Index record = graph_.graph.record(node);
    return graph_.file.fingerprints.worth[record] != Worth::identity && values_.contains(structure);
  }

 private:
  const RecordGraph& graph_;
  std::unordered_set<std::uint64_t> values_;
  std::unordered_set<std::uint64_t> shared_;
};

std::vector<Node> unpaired(const Column<Node>& partners) {
  std::vector<Node> nodes;
  for (Node node = 0; node < partners.size(); ++node) {
    if (partners[node] == NO_NODE) nodes.push_back(node);
  }
  return nodes;
}

void append_uncovered(std::vector<Found>& found, Found::Kind kind, const std::vector<Node>& nodes,
                      const Covered* covered) {
  for (const Node node : nodes) {
    if (covered == nullptr || !covered->contains(node)) found.push_back({kind, node});
  }
}

/// The id and name of what `definition` defines. Returns false where that is no product of the
/// file.
bool name_product(const ComparedFile& file, Index definition, ProductDifference& difference) {
  const ProductId id = file.products.find(definition);
  if (id == NO_PRODUCT) return false;
  difference.id = file.products.products[id].id;
  difference.name = file.products.products[id].name;
  return true;
}

class Report {
 public:
  Report(const Compared& a, const Compared& b)
      : compared_{&a, &b},
        a_(a.file),
        b_(b.file),
        correspondence_(find_correspondence(a_, b_)),
        changes_(a_, b_, correspondence_) {}

  std::vector<ProductDifference> take() {
    std::vector<Found> found = find();
    std::sort(found.begin(), found.end(), [this](const Found& x, const Found& y) {
      return x.kind != y.kind ? x.kind < y.kind : record(x) < record(y);
    });
    for (const Found& one : found) enter(one);
    read_again();
    return finished();
  }

 private:
  using Key = std::pair<Index, Index>;  // of the definitions in A and B

  Side side(const Found& found) const { return found.kind == Found::Kind::only_in_b ? B : A; }
  Index record(const Found& found) const {
    return (side(found) == A ? a_ : b_).graph.record(found.node);
  }

  std::vector<Found> find() const {
    std::vector<Found> found;
    for (Node node = 0; node < a_.graph.size(); ++node) {
      if (correspondence_.to_b[node] != NO_NODE && !changes_.is_unchanged(node)) {
        found.push_back({Found::Kind::changed, node});
      }
    }
    const std::vector<Node> in_a = unpaired(correspondence_.to_b);
    const std::vector<Node> in_b = unpaired(correspondence_.to_a);
    const Covered covered_in_a(a_, in_a, b_, compared_[B]->owners);
    const Covered covered_in_b(b_, in_b, a_, compared_[A]->owners);
    append_uncovered(found, Found::Kind::only_in_a, in_a, &covered_in_a);
    append_uncovered(found, Found::Kind::only_in_b, in_b, &covered_in_b);
    if (!found.empty()) return found;
    // What differs is how often the same is there.
    append_uncovered(found, Found::Kind::only_in_a, in_a, nullptr);
    append_uncovered(found, Found::Kind::only_in_b, in_b, nullptr);
    return found;
  }

  /// The product that a record belongs to, with its like in the other file.
  Key key_of(Side side, Index record) const {
    const Index definition = compared_[side]->owners.of(record);
    if (definition == NO_RECORD) return {NO_RECORD, NO_RECORD};
    const RecordGraph& own = side == A ? a_ : b_;
    const RecordGraph& other = side == A ? b_ : a_;
    const Node partner =
        (side == A ? correspondence_.to_b : correspondence_.to_a)[own.nodes[definition]];
    const Index like = partner == NO_NODE ? NO_RECORD : other.graph.record(partner);
    return side == A ? Key{definition, like} : Key{like, definition};
  }

  void enter(const Found& found) {
    const Index own = record(found);
    const Instances& instances = compared_[side(found)]->file.instances;
    TypeDifference& type = products_[key_of(side(found), own)]
                                    [std::string(instances.types().name(instances.type(own)))];
    switch (found.kind) {
      case Found::Kind::only_in_a:
        type.only_in_a.push_back(instances.number(own));
        break;
      case Found::Kind::only_in_b:
        type.only_in_b.push_back(instances.number(own));
        break;
      case Found::Kind::changed: {
        const Index partner = b_.graph.record(correspondence_.to_b[found.node]);
        type.changed.push_back(
            {instances.number(own), compared_[B]->file.instances.number(partner), {}});
        if (changed_.size() < MOST_READ_AGAIN) {
          changed_.push_back({own, partner, &type, type.changed.size() - 1});
        }
        break;
      }
    }
  }

  /// Looks up the parameters.
  void read_again() {
    for (const ChangedPair& pair : changed_) {
      const std::string body_a = compared_[A]->body_of(pair.a);
      const std::string body_b = compared_[B]->body_of(pair.b);
      pair.type->changed[pair.place].parameters =
          changed_parameters(body_a, body_b, a_, b_, changes_);
    }
  }

  std::vector<ProductDifference> finished() {
    std::vector<ProductDifference> list;
    for (auto& [key, types] : products_) {
      ProductDifference product;
      const auto [in_a, in_b] = key;
      bool is_named = false;
      if (in_a != NO_RECORD) {
        is_named = name_product(a_.file, in_a, product);
        product.definition_in_a = a_.file.instances.number(in_a);
      }
      if (in_b != NO_RECORD) {
        // A definition may correspond to a record that defines no product.
        if (!is_named) name_product(b_.file, in_b, product);
        product.definition_in_b = b_.file.instances.number(in_b);
      }
      for (auto& [name, type] : types) {
        type.type = name;
        product.types.push_back(std::move(type));
      }
      list.push_back(std::move(product));
    }
    return list;
  }

  struct ChangedPair {
    Index a;
    Index b;
    TypeDifference* type;
    std::size_t place;
  };

  const Compared* compared_[2];
  RecordGraph a_;
  RecordGraph b_;
  Correspondence correspondence_;
  Changes changes_;
  // NO_RECORD is above all others, so that products of B alone, and what has none, come last.
  std::map<Key, std::map<std::string, TypeDifference, std::less<>>> products_;
  std::vector<ChangedPair> changed_;
};

}  // namespace

std::vector<ProductDifference> differences(const Compared& a, const Compared& b) {
  return Report(a, b).take();
}

}  // namespace Kessel::Sameness
