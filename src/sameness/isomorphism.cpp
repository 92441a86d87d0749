#include "sameness/isomorphism.h"

#include <algorithm>
#include <vector>

#include "sameness/hash.h"
#include "sameness/partition.h"

namespace Kessel::Sameness {

namespace {

/// Pairs nodes that refinement cannot tell apart, component by component.
///
/// What hangs together among such nodes either corresponds to what hangs together around one of the
/// candidates, or to nothing; and since corresponding is transitive, one component's partner can be
/// settled before the next is looked at.
class Pairing {
 public:
  Pairing(Partition& partition, const Graph& a, std::uint64_t most_work)
      : partition_(partition), a_(a), most_work_(most_work), seen_(a.size()) {}

  Verdict pair_all() {
    std::vector<Node> nodes;
    for (Node node = 0; node < a_.size(); ++node) {
      if (!partition_.is_single(A, node)) nodes.push_back(node);
    }
    return pair_components(nodes, 0);
  }

 private:
  static constexpr int MOST_LEVELS = 2000;

  bool is_exhausted() const { return partition_.work() + work_ > most_work_; }

  Verdict pair_components(const std::vector<Node>& nodes, int level) {
    for (const Node node : nodes) {
      if (partition_.is_single(A, node)) continue;
      const Verdict verdict = pair_component(component_of(node), level);
      if (verdict != Verdict::same) return verdict;
    }
    return Verdict::same;
  }

  Verdict pair_component(const std::vector<Node>& component, int level) {
    const Node node = *std::min_element(component.begin(), component.end(), [&](Node x, Node y) {
      const auto length_of = [&](Node of) { return partition_.length(partition_.cell(A, of)); };
      return length_of(x) != length_of(y) ? length_of(x) < length_of(y) : x < y;
    });
    const auto candidates = partition_.nodes(B, partition_.cell(A, node));
    // The first one fits nearly always, and there may be many.
    const Node first = candidates.back();
    const Verdict verdict = try_pair(node, first, component, level);
    if (verdict != Verdict::different) return verdict;
    for (const Node other : std::vector<Node>(candidates.begin(), candidates.end())) {
      const Verdict next =
          other == first ? Verdict::different : try_pair(node, other, component, level);
      if (next != Verdict::different) return next;
    }
    return Verdict::different;
  }

  Verdict try_pair(Node node, Node candidate, const std::vector<Node>& component, int level) {
    if (is_exhausted() || level == MOST_LEVELS) return Verdict::undecided;
    const std::size_t mark = partition_.mark();
    partition_.pair(node, candidate);
    if (partition_.refine()) {
      const Verdict verdict = pair_components(component, level + 1);
      if (verdict != Verdict::different) return verdict;
    }
    partition_.go_back(mark);
    return Verdict::different;
  }

  /// What hangs together with `first` by references among nodes that are not paired yet.
  std::vector<Node> component_of(Node first) {
    std::vector<Node> component{first};
    ++round_;
    seen_[first] = round_;
    for (std::size_t i = 0; i < component.size(); ++i) {
      for (const auto& edges : {a_.references(component[i]), a_.users(component[i])}) {
        work_ += edges.size() + 1;
        for (const Edge& edge : edges) {
          if (seen_[edge.node] == round_ || partition_.is_single(A, edge.node)) continue;
          seen_[edge.node] = round_;
          component.push_back(edge.node);
        }
      }
    }
    return component;
  }

  Partition& partition_;
  const Graph& a_;
  std::uint64_t most_work_;
  std::uint64_t work_ = 0;
  std::uint64_t round_ = 0;
  Column<std::uint64_t> seen_;
};

/// Whether the pairs that the cells have become are an isomorphism: the proof.
bool is_isomorphism(const Partition& partition, const Graph& a, const Graph& b) {
  std::vector<Edge> mapped;
  for (Node node = 0; node < a.size(); ++node) {
    const Node partner = partition.nodes(B, partition.cell(A, node)).front();
    const auto references = b.references(partner);
    if (a.text(node) != b.text(partner)) return false;
    mapped.clear();
    for (const Edge& edge : a.references(node)) {
      mapped.push_back({partition.nodes(B, partition.cell(A, edge.node)).front(), edge.label});
    }
    std::sort(mapped.begin(), mapped.end(), [](const Edge& x, const Edge& y) {
      return x.label != y.label ? x.label < y.label : x.node < y.node;
    });
    if (!std::equal(mapped.begin(), mapped.end(), references.begin(), references.end()))
      return false;
  }
  return true;
}

}  // namespace

Verdict compare(Graph& a, Graph& b, const Column<std::uint64_t>& colours_a,
                const Column<std::uint64_t>& colours_b) {
  if (a.size() != b.size() || a.edge_count() != b.edge_count()) return Verdict::different;
  Partition partition(a, b);
  if (!partition.begin(colours_a, colours_b)) return Verdict::different;
  bool is_paired = true;
  for (Node node = 0; node < a.size() && is_paired; ++node)
    is_paired = partition.is_single(A, node);
  if (!is_paired) {
    a.find_users();
    b.find_users();
    if (!partition.refine()) return Verdict::different;
    constexpr std::uint64_t MOST_WORK_PER_EDGE = 64;
    const std::uint64_t most_work =
        partition.work() + MOST_WORK_PER_EDGE * (a.size() + a.edge_count()) + (1 << 20);
    const Verdict verdict = Pairing(partition, a, most_work).pair_all();
    if (verdict != Verdict::same) return verdict;
  }
  return is_isomorphism(partition, a, b) ? Verdict::same : Verdict::different;
}

namespace {

/// The hash of what stands at the other ends of `edges`, in no order, outside of a circle.
std::uint64_t neighbours(const Column<std::uint64_t>& colours, std::span<const Edge> edges,
                         Circle circle) {
  std::uint64_t sum = 0;
  for (const Edge& edge : edges) {
    if (edge.node >= circle.begin && edge.node < circle.end) continue;
    sum += mixed(combined(colours[edge.node], edge.label));
  }
  return sum;
}

}  // namespace

Column<std::uint64_t> colours_of(const Graph& graph, const Column<std::uint64_t>& structure) {
  Column<std::uint64_t> colours(graph.size());
  for (Node node = 0; node < graph.size(); ++node) {
    colours[node] = combined(graph.text(node), structure[graph.record(node)]);
  }
  const auto& circles = graph.circles();
  auto circle = circles.rbegin();
  for (Node node = graph.size(); node-- > 0;) {
    while (circle != circles.rend() && circle->begin > node) ++circle;
    const bool is_in_circle = circle != circles.rend() && node < circle->end;
    colours[node] = combined(
        colours[node], neighbours(colours, graph.users(node), is_in_circle ? *circle : Circle()));
  }
  auto next = circles.begin();
  for (Node node = 0; node < graph.size(); ++node) {
    while (next != circles.end() && next->end <= node) ++next;
    const bool is_in_circle = next != circles.end() && node >= next->begin;
    colours[node] = combined(colours[node], neighbours(colours, graph.references(node),
                                                       is_in_circle ? *next : Circle()));
  }
  return colours;
}

}  // namespace Kessel::Sameness
