#include "sameness/correspondence.h"

#include <algorithm>
#include <span>

#include "sameness/hash.h"
#include "sameness/owners.h"

namespace Kessel::Sameness {

namespace {

/// How alike two nodes must be that have the same neighbour, from strict to loose.
enum class Likeness : std::uint8_t {
  structure_in_place,  ///< all below them, and which parameter it is
  text_in_place,
  structure,
  type_in_place,
};

struct Keyed {
  std::uint64_t key;
  Node node;
};

class PairSearch {
 public:
  PairSearch(const RecordGraph& a, const RecordGraph& b) : sides_{&a, &b} {
    result_.to_b = Column<Node>(a.graph.size(), NO_NODE);
    result_.to_a = Column<Node>(b.graph.size(), NO_NODE);
  }

  Correspondence take() {
    pair_all([](const RecordGraph& side, Node node) { return side.structure(node); }, false);
    pair_all([](const RecordGraph& side, Node node) { return side.graph.text(node); }, false);
    pair_neighbours(Likeness::structure);
    pair_all([](const RecordGraph& side, Node node) { return side.structure(node); }, true);
    pair_neighbours(Likeness::type_in_place);
    pair_all([](const RecordGraph& side, Node node) { return side.graph.text(node); }, true);
    pair_neighbours(Likeness::type_in_place);
    return std::move(result_);
  }

 private:
  bool is_free(Side side, Node node) const {
    return (side == A ? result_.to_b[node] : result_.to_a[node]) == NO_NODE;
  }

  void pair(Node a, Node b) {
    result_.to_b[a] = b;
    result_.to_a[b] = a;
    open_.push_back(a);
  }

  /// Pairs free nodes of equal keys: where each side has one, or, with `also_many`, in their order.
  template <class KeyOf>
  void pair_all(KeyOf key_of, bool also_many) {
    std::vector<Keyed> keyed[2];
    for (const Side side : {A, B}) {
      const RecordGraph& graph = *sides_[side];
      for (Node node = 0; node < graph.graph.size(); ++node) {
        if (!is_free(side, node)) continue;
        keyed[side].push_back({key_of(graph, node), node});
      }
    }
    pair_equal(keyed[0], keyed[1], also_many);
    follow();
  }

  void pair_equal(std::vector<Keyed>& a, std::vector<Keyed>& b, bool also_many) {
    const auto before = [](const Keyed& x, const Keyed& y) {
      return x.key != y.key ? x.key < y.key : x.node < y.node;
    };
    std::sort(a.begin(), a.end(), before);
    std::sort(b.begin(), b.end(), before);
    for (std::size_t i = 0, j = 0; i < a.size() && j < b.size();) {
      if (a[i].key != b[j].key) {
        ++(a[i].key < b[j].key ? i : j);
        continue;
      }
      std::size_t i_end = i;
      std::size_t j_end = j;
      while (i_end < a.size() && a[i_end].key == a[i].key) ++i_end;
      while (j_end < b.size() && b[j_end].key == b[j].key) ++j_end;
      if (also_many || (i_end - i == 1 && j_end - j == 1)) {
        pair_in_order(std::span(a).subspan(i, i_end - i), std::span(b).subspan(j, j_end - j));
      }
      i = i_end;
      j = j_end;
    }
  }

  /// What one pair leads to may take the next ones.
  void pair_in_order(std::span<const Keyed> a, std::span<const Keyed> b) {
    for (std::size_t i = 0, j = 0; i < a.size() && j < b.size();) {
      if (!is_free(A, a[i].node)) {
        ++i;
      } else if (!is_free(B, b[j].node)) {
        ++j;
      } else {
        pair(a[i++].node, b[j++].node);
        if (a.size() > 1) follow();
      }
    }
  }

  /// From every pair that was not looked at to the next ones.
  void follow() {
    while (!open_.empty()) {
      const Node a = open_.back();
      open_.pop_back();
      pair_around(a, Likeness::structure_in_place);
      pair_around(a, Likeness::text_in_place);
    }
  }

  /// The same for all pairs, by a looser likeness.
  void pair_neighbours(Likeness likeness) {
    for (Node a = 0; a < result_.to_b.size(); ++a) {
      if (result_.to_b[a] == NO_NODE) continue;
      pair_around(a, likeness);
      follow();
    }
  }

  void pair_around(Node a, Likeness likeness) {
    const Graph& of_a = sides_[0]->graph;
    const Graph& of_b = sides_[1]->graph;
    const Node b = result_.to_b[a];
    pair_ends(of_a.references(a), of_b.references(b), likeness);
    pair_ends(of_a.users(a), of_b.users(b), likeness);
  }

  void pair_ends(std::span<const Edge> a, std::span<const Edge> b, Likeness likeness) {
    gather(A, a, likeness);
    if (ends_[0].empty()) return;
    gather(B, b, likeness);
    if (!ends_[1].empty()) pair_equal(ends_[0], ends_[1], false);
  }

  void gather(Side side, std::span<const Edge> edges, Likeness likeness) {
    std::vector<Keyed>& ends = ends_[side];
    const RecordGraph& graph = *sides_[side];
    ends.clear();
    for (const Edge& edge : edges) {
      if (is_free(side, edge.node)) ends.push_back({key_of(graph, edge, likeness), edge.node});
    }
  }

  static std::uint64_t key_of(const RecordGraph& side, const Edge& edge, Likeness likeness) {
    switch (likeness) {
      case Likeness::structure_in_place:
        return combined(side.structure(edge.node), edge.label);
      case Likeness::text_in_place:
        return combined(side.graph.text(edge.node), edge.label);
      case Likeness::structure:
        return side.structure(edge.node);
      case Likeness::type_in_place:
        break;
    }
    return combined(side.types[edge.node], edge.label);
  }

  const RecordGraph* sides_[2];
  Correspondence result_;
  std::vector<Node> open_;
  std::vector<Keyed> ends_[2];
};

/// Fingerprints by which every record is a node.
Fingerprints all_nodes(const ComparedFile& file) {
  Fingerprints fingerprints;
  fingerprints.text = Column<std::uint64_t>(file.instances.size());
  for (Index i = 0; i < file.instances.size(); ++i) {
    fingerprints.text[i] = file.fingerprints.text[i];
  }
  fingerprints.worth = Column<Worth>(file.instances.size(), Worth::identity);
  fingerprints.is_pure = Column<bool>(file.instances.size(), false);
  return fingerprints;
}

}  // namespace

RecordGraph::RecordGraph(const ComparedFile& compared)
    : file(compared),
      graph(compared.instances, all_nodes(compared), compared.order),
      nodes(compared.instances.size(), NO_NODE) {
  for (Node node = 0; node < graph.size(); ++node) {
    const Index record = graph.record(node);
    nodes[record] = node;
    types.push_back(hash_of(file.instances.types().name(file.instances.type(record))));
  }
}

Correspondence find_correspondence(const RecordGraph& a, const RecordGraph& b) {
  return PairSearch(a, b).take();
}

bool Changes::is_unchanged(Node node) const {
  const Node partner = correspondence_.to_b[node];
  if (a_.graph.text(node) != b_.graph.text(partner)) return false;
  const auto of_a = a_.graph.references(node);
  const auto of_b = b_.graph.references(partner);
  if (of_a.size() != of_b.size()) return false;
  std::size_t i = 0;
  for (; i < of_a.size() && of_a[i].label != LISTED; ++i) {
    if (of_a[i].label != of_b[i].label || !is_same(of_a[i].node, of_b[i].node)) return false;
  }
  // A set: each item's partner is an item, and there are as many.
  std::vector<Node> items;
  for (const Edge& edge : of_b.subspan(i)) items.push_back(edge.node);
  return std::all_of(
      of_a.begin() + static_cast<std::ptrdiff_t>(i), of_a.end(), [&](const Edge& edge) {
        return std::binary_search(items.begin(), items.end(), correspondence_.to_b[edge.node]);
      });
}

bool Changes::is_same(Node x, Node y, int depth) const {
  if (correspondence_.to_b[x] == y) return true;
  const Fingerprints& of_a = a_.file.fingerprints;
  const Fingerprints& of_b = b_.file.fingerprints;
  const Index record_a = a_.graph.record(x);
  const Index record_b = b_.graph.record(y);
  if (of_a.structure[record_a] != of_b.structure[record_b]) return false;
  if (of_a.is_pure[record_a] && of_b.is_pure[record_b]) return true;
  if (of_a.worth[record_a] == Worth::identity || of_b.worth[record_b] == Worth::identity)
    return false;
  // Equal values that lead to records with identity: where these are the same.
  constexpr int DEEPEST = 20;
  if (depth == DEEPEST || a_.graph.text(x) != b_.graph.text(y)) return false;
  return std::equal(a_.graph.references(x).begin(), a_.graph.references(x).end(),
                    b_.graph.references(y).begin(), b_.graph.references(y).end(),
                    [&](const Edge& of_x, const Edge& of_y) {
                      return of_x.label == of_y.label && is_same(of_x.node, of_y.node, depth + 1);
                    });
}

}  // namespace Kessel::Sameness
