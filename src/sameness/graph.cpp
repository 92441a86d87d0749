#include "sameness/graph.h"

#include <algorithm>
#include <optional>
#include <unordered_map>

#include "sameness/hash.h"
#include "sameness/transformation_ends.h"

namespace Kessel::Sameness {

namespace {

constexpr std::uint64_t A_NODE = mixed(0x6E6F'6465);

/// Hands out nodes: which one a record is, and whose copy.
class Nodes {
 public:
  Nodes(const Instances& instances, const Fingerprints& fingerprints, const Owners* owners)
      : instances_(instances),
        fingerprints_(fingerprints),
        owners_(owners),
        first_(instances.size(), NO_NODE) {
    if (owners_ == nullptr || owners_->further().empty()) return;
    copies_.resize(owners_->further().size(), NO_NODE);
    ends_.emplace(instances, *owners_);
  }

  /// A node for each owner of `record`, unless it is an equal value's. `add(record, owner)` makes
  /// one.
  template <class Add>
  void enter(Index record, Add add) {
    first_[record] = enter_copy(record, owner_of(record), add);
    for (std::size_t i = copies_of(record); is_copy_of(i, record); ++i) {
      copies_[i] = enter_copy(record, owners_->further()[i].owner, add);
    }
  }

  /// What `record` says as `owner` has it: its edges are added to `edges`.
  std::uint64_t read(Index record, Index owner, std::vector<Edge>& edges) const {
    edges.clear();
    std::uint64_t text = fingerprints_.text[record];
    std::uint32_t place = 0;
    bool misses_in_list = false;
    for (const Reference reference : instances_.references(record)) {
      const Index to = reference.record();
      const std::uint32_t label = reference.is_listed() ? LISTED : place++;
      const bool is_node = to != NO_RECORD && !fingerprints_.is_pure[to];
      if (is_node) add_edges(to, whose(record, label, owner), label, edges);
      if (reference.is_listed()) {
        misses_in_list = misses_in_list || !is_node;
      } else {
        text = combined(text, is_node           ? A_NODE
                              : to == NO_RECORD ? MISSING
                                                : fingerprints_.structure[to]);
      }
    }
    if (misses_in_list) text = combined(text, MISSING);
    std::sort(edges.begin(), edges.end(), [](const Edge& a, const Edge& b) {
      return a.label != b.label ? a.label < b.label : a.node < b.node;
    });
    edges.erase(std::unique(edges.begin(), edges.end()), edges.end());
    return text;
  }

 private:
  /// Of which owner the copy is that `record` refers to by `label`, as `owner` has it.
  Index whose(Index record, std::uint32_t label, Index owner) const {
    const Index end = ends_ ? ends_->owner(record, label) : NO_RECORD;
    return end != NO_RECORD ? end : owner;
  }
  /// The owner whose copies `record` refers to; of a record with copies that of the first.
  Index owner_of(Index record) const {
    if (owners_ == nullptr) return NO_RECORD;
    const bool has_copies = is_copy_of(copies_of(record), record);
    return has_copies || owners_->is_certain(record) ? owners_->of(record) : NO_RECORD;
  }
  /// Where its copies beside the first stand.
  std::size_t copies_of(Index record) const {
    if (copies_.empty()) return 0;
    const auto& further = owners_->further();
    return static_cast<std::size_t>(
        std::lower_bound(further.begin(), further.end(), FurtherOwner{record, 0}) -
        further.begin());
  }
  bool is_copy_of(std::size_t i, Index record) const {
    return i < copies_.size() && owners_->further()[i].record == record;
  }

  template <class Add>
  Node enter_copy(Index record, Index owner, Add add) {
    if (fingerprints_.worth[record] == Worth::identity) return add(record, owner);
    std::uint64_t key = read(record, owner, scratch_);
    for (const Edge& edge : scratch_) key = combined(combined(key, edge.label), edge.node);
    const auto [found, is_new] = values_.try_emplace(key, NO_NODE);
    if (is_new) found->second = add(record, owner);
    return found->second;
  }

  /// To the copy of the same owner; where there is none, to all copies.
  void add_edges(Index to, Index owner, std::uint32_t label, std::vector<Edge>& edges) const {
    const std::size_t begin = copies_of(to);
    if (owner_of(to) != owner) {
      for (std::size_t i = begin; is_copy_of(i, to); ++i) {
        if (owners_->further()[i].owner == owner) return edges.push_back({copies_[i], label});
      }
      for (std::size_t i = begin; is_copy_of(i, to); ++i) edges.push_back({copies_[i], label});
    }
    edges.push_back({first_[to], label});
  }

  const Instances& instances_;
  const Fingerprints& fingerprints_;
  const Owners* owners_;
  Column<Node> first_;
  std::vector<Node> copies_;                // beside Owners::further
  std::optional<TransformationEnds> ends_;  // where there are copies
  std::unordered_map<std::uint64_t, Node> values_;
  std::vector<Edge> scratch_;
};

}  // namespace

Graph::Graph(const Instances& instances, const Fingerprints& fingerprints, const Order& order,
             const Owners* owners) {
  Nodes nodes(instances, fingerprints, owners);
  Column<Index> node_owners;
  const auto add = [&](Index record, Index owner) {
    records_.push_back(record);
    node_owners.push_back(owner);
    return static_cast<Node>(records_.size() - 1);
  };
  auto circle = order.circles.begin();
  for (Index i = 0; i < order.records.size(); ++i) {
    const Index record = order.records[i];
    const bool is_in_circle = circle != order.circles.end() && i >= circle->first;
    if (is_in_circle && i == circle->first) circles_.push_back({size(), size()});
    if (!fingerprints.is_pure[record] && instances.type(record) != TypeTable::REPEATED) {
      nodes.enter(record, add);
    }
    if (!is_in_circle) continue;
    circles_.back().end = size();
    if (i + 1 == circle->second) ++circle;
  }
  std::vector<Edge> edges;
  for (Node node = 0; node < size(); ++node) {
    texts_.push_back(nodes.read(records_[node], node_owners[node], edges));
    for (const Edge& edge : edges) references_.push_back(edge);
    reference_ends_.push_back(references_.size());
  }
  find_users();
}

void Graph::forget_users() {
  users_ = {};
  user_ends_ = {};
}

void Graph::find_users() {
  if (!user_ends_.empty()) return;
  user_ends_ = Column<std::uint64_t>(std::size_t{size()} + 1);
  for (const Edge& edge : references_) ++user_ends_[edge.node + 1];
  for (Node node = 0; node < size(); ++node) user_ends_[node + 1] += user_ends_[node];
  users_ = Column<Edge>(references_.size());
  for (Node node = 0; node < size(); ++node) {
    for (const Edge& edge : references(node)) {
      users_[static_cast<std::size_t>(user_ends_[edge.node]++)] = {node, edge.label};
    }
  }
}

std::uint64_t Graph::bytes() const {
  return records_.bytes() + texts_.bytes() + references_.bytes() + reference_ends_.bytes() +
         users_.bytes() + user_ends_.bytes();
}

}  // namespace Kessel::Sameness
