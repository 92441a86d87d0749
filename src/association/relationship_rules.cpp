// The rules that move parts from node to node through relationship records.
#include <cstddef>
#include <unordered_map>
#include <vector>

#include "association/rules.h"
#include "model/slots.h"

namespace Kessel {

namespace {

/// The relationship records of one type, found by the node that their `n`-th reference names.
///
/// The first node walks the whole list, in order, and what it reads on the way is kept; each later
/// node sees only its own relationships. Relationships too short to name a node are asked again for
/// every node, since each time they print their line.
class Relationships {
 public:
  Relationships(const Store& store, std::string_view type, std::uint16_t n)
      : slots_(store.entities), records_(store.get(type)), n_(n) {}

  /// Calls `visit` for each relationship that starts from `node`.
  template <class Visit>
  void visit_from(const Entity* node, Visit visit) {
    if (!indexed_) {
      for (std::size_t place = 0; place < records_.size(); ++place) {
        if (records_[place] != nullptr && read_node(place) == node) visit(*records_[place]);
      }
      indexed_ = true;
      return;
    }
    // Both lists ascend: a line is printed only if the walk comes to its record.
    auto too_short = too_short_.begin();
    const auto print_up_to = [&](std::size_t place) {
      for (; too_short != too_short_.end() && *too_short < place; ++too_short) {
        records_[*too_short]->get_reference(n_);
      }
    };
    if (const auto found = by_node_.find(node); found != by_node_.end()) {
      for (const std::size_t place : found->second) {
        print_up_to(place);
        visit(*records_[place]);
      }
    }
    print_up_to(records_.size());
  }

 private:
  const Entity* read_node(std::size_t place) {
    const Entity& relationship = *records_[place];
    if (relationship.references().size() <= n_) too_short_.push_back(place);
    const Entity* node = slot_at(slots_, relationship.get_reference(n_));
    if (node != nullptr) by_node_[node].push_back(place);
    return node;
  }

  Slots slots_;
  std::vector<Entity*> records_;
  std::uint16_t n_;
  bool indexed_ = false;
  std::unordered_map<const Entity*, std::vector<std::size_t>> by_node_;  // places in records_
  std::vector<std::size_t> too_short_;                                   // places in records_
};

/// The closure over relationships. `spread(node, reached)` gives the node's parts to an instance
/// that a relationship refers to and returns whether it gained any.
template <class Spread>
void close_over(const Store& store, std::string_view relationship_type, std::string_view node_type,
                std::uint16_t n, Spread spread) {
  std::vector<Entity*> queue;
  for (Entity* node : store.get(node_type)) {
    if (node != nullptr && !node->part_numbers.empty()) queue.push_back(node);
  }
  if (queue.empty()) return;

  Relationships relationships(store, relationship_type, n);
  for (std::size_t next = 0; next < queue.size(); ++next) {
    const Entity* node = queue[next];
    relationships.visit_from(node, [&](Entity& relationship) {
      if (!adopt_parts(node, &relationship, ALL_PARTS)) return;
      for (const std::uint32_t reference : relationship.references()) {
        Entity* reached = slot_at(store.entities, reference);
        if (reached != nullptr && spread(node, reached)) queue.push_back(reached);
      }
    });
  }
}

}  // namespace

void propagate_through_relationships(const Store& store, std::string_view relationship_type,
                                     std::string_view node_type, std::uint16_t n) {
  close_over(store, relationship_type, node_type, n, [](const Entity* node, Entity* reached) {
    return adopt_parts(node, reached, ALL_PARTS);
  });
}

void propagate_through_usages(const Store& store, std::string_view relationship_type,
                              std::string_view node_type, std::uint16_t n) {
  close_over(store, relationship_type, node_type, n, [&](const Entity* node, Entity* reached) {
    return reached->part_numbers.empty() && propagate_down(store, node, reached, ALL_PARTS);
  });
}

}  // namespace Kessel
