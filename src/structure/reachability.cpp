// Searches along references.
#include "structure/reachability.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <optional>

namespace Kessel {

PagedArray<bool>& ReachabilitySearch::dead_ends_for(std::string_view type) {
  for (DeadEnds& known : dead_ends_) {
    if (known.type == type) return known.numbers;
  }
  return dead_ends_.emplace_back(DeadEnds{type, PagedArray<bool>(slots_.size())}).numbers;
}

/// Whether `number`, which is in the store, is in the queue.
bool ReachabilitySearch::is_queued(std::uint32_t number) const {
  if (queue_.size() > FEW) return queued_[number];
  return std::find(queue_.begin(), queue_.end(), number) != queue_.end();
}

/// Notes that `number` is in the queue, or that it is not any more.
void ReachabilitySearch::note_queued(std::uint32_t number, bool queued) {
  if (number < queued_.size()) queued_.edit(number) = queued;
}

void ReachabilitySearch::enqueue(std::uint32_t number, const PagedArray<bool>& dead_ends) {
  if (number < slots_.size() && (dead_ends[number] || is_queued(number))) return;
  queue_.push_back(number);
  if (queue_.size() <= FEW) return;
  if (queue_.size() > FEW + 1) return note_queued(number, true);
  for (const std::uint32_t queued : queue_) note_queued(queued, true);
}

void ReachabilitySearch::forget_examined() {
  if (queue_.size() > FEW) {
    for (const std::uint32_t number : queue_) note_queued(number, false);
  }
  queue_.clear();
}

std::uint32_t ReachabilitySearch::find(std::uint32_t start, std::string_view type) {
  forget_examined();  // What the last search, or its exception, left.
  PagedArray<bool>& dead_ends = dead_ends_for(type);
  enqueue(start, dead_ends);
  for (std::size_t next = 0; next < queue_.size(); ++next) {
    const Entity* record = slot_at(slots_, queue_[next]);
    if (record == nullptr) continue;
    if (record->type() == type) return queue_[next];
    for (const std::uint32_t reference : record->references()) enqueue(reference, dead_ends);
  }
  for (const std::uint32_t number : queue_) dead_ends.edit(number) = true;
  return 0;
}

namespace {

/// The records that some starts lead to, with their references turned around. Every search is for
/// the first type to begin with: a record of that type ends the way, records of the others do not.
class ReverseGraph {
 public:
  /// Nothing, when the starts lead to a number beyond the store.
  static std::optional<ReverseGraph> build(Slots slots, const std::vector<std::uint32_t>& starts,
                                           const std::vector<std::string_view>& types) {
    ReverseGraph graph(slots);
    for (const std::uint32_t start : starts) graph.add(start);
    for (std::size_t next = 0; next < graph.nodes_.size(); ++next) {
      const Entity& record = *slots[graph.nodes_[next]];
      const bool wanted = std::find(types.begin(), types.end(), record.type()) != types.end();
      graph.wanted_.push_back(wanted);
      graph.ends_.push_back(record.type() == types.front());
      if (graph.ends_.back()) continue;
      for (const std::uint32_t reference : record.references()) {
        if (reference >= slots.size()) return std::nullopt;
        if (slots[reference] != nullptr) ++graph.first_edge_[graph.add(reference)];
      }
    }
    graph.turn_edges();
    return graph;
  }

  /// For each of `starts`, whether it leads to a wanted record.
  std::vector<char> answers(const std::vector<std::uint32_t>& starts) {
    std::vector<char> leads(wanted_.begin(), wanted_.end());
    std::vector<std::uint32_t> pending;
    pending.reserve(leads.size());
    for (std::uint32_t node = 0; node < leads.size(); ++node) {
      if (leads[node]) pending.push_back(node);
    }
    while (!pending.empty()) {
      const std::uint32_t node = pending.back();
      pending.pop_back();
      for (std::uint32_t edge = first_edge_[node]; edge < first_edge_[node + 1]; ++edge) {
        const std::uint32_t source = edges_[edge];
        if (!leads[source]) pending.push_back(source);
        leads[source] = 1;
      }
    }
    std::vector<char> result;
    result.reserve(starts.size());
    for (const std::uint32_t start : starts) result.push_back(leads[node_of_[start] - 1]);
    return result;
  }

 private:
  explicit ReverseGraph(Slots slots) : slots_(slots), node_of_(slots.size()) {}

  /// The node of an instance number, made at its first mention.
  std::uint32_t add(std::uint32_t number) {
    std::uint32_t& node = node_of_.edit(number);
    if (node == 0) {
      nodes_.push_back(number);
      first_edge_.push_back(0);
      node = static_cast<std::uint32_t>(nodes_.size());
    }
    return node - 1;
  }

  /// From counts of incoming references to lists of their sources, by counting sort.
  void turn_edges() {
    first_edge_.push_back(0);
    std::uint32_t total = 0;
    for (std::uint32_t& first : first_edge_) first = (total += first);
    edges_.resize(total);
    for (std::uint32_t node = 0; node < nodes_.size(); ++node) {
      if (ends_[node]) continue;
      for (const std::uint32_t reference : slots_[nodes_[node]]->references()) {
        if (slots_[reference] != nullptr) edges_[--first_edge_[node_of_[reference] - 1]] = node;
      }
    }
  }

  Slots slots_;
  PagedArray<std::uint32_t> node_of_;      // by instance number: node + 1, 0 for none
  std::vector<std::uint32_t> nodes_;       // instance number by node
  std::vector<bool> wanted_;               // by node
  std::vector<bool> ends_;                 // by node: no search goes on behind it
  std::vector<std::uint32_t> first_edge_;  // by node: where its sources begin in edges_
  std::vector<std::uint32_t> edges_;
};

/// Whether a record of `type` is among the first few that a search from `start` examines.
bool is_near(Slots slots, std::uint32_t start, std::string_view type) {
  std::array<std::uint32_t, 16> queue;
  std::size_t queued = 0;
  const auto enqueue = [&](std::uint32_t number) {
    const auto end = queue.begin() + static_cast<std::ptrdiff_t>(queued);
    if (std::find(queue.begin(), end, number) == end) queue[queued++] = number;
  };
  enqueue(start);
  for (std::size_t next = 0; next < queued && queue[next] < slots.size(); ++next) {
    const Entity* record = slots[queue[next]];
    if (record == nullptr) continue;
    if (record->type() == type) return true;
    for (const std::uint32_t reference : record->references()) {
      if (queued == queue.size()) break;
      enqueue(reference);
    }
  }
  return false;
}

/// lead_to_any() for starts that are not near a record of the first type.
std::vector<char> lead_far_to_any(Slots slots, const std::vector<std::uint32_t>& starts,
                                  const std::vector<std::string_view>& types) {
  if (starts.empty()) return {};
  if (auto graph = ReverseGraph::build(slots, starts, types)) return graph->answers(starts);

  // A number beyond the store ends the run only if a search comes to it: search one by one.
  ReachabilitySearch search(slots);
  std::vector<char> result;
  result.reserve(starts.size());
  for (const std::uint32_t start : starts) {
    const bool found = std::any_of(types.begin(), types.end(), [&](std::string_view type) {
      return search.find(start, type) != 0;
    });
    result.push_back(found ? 1 : 0);
  }
  return result;
}

}  // namespace

std::vector<char> lead_to_any(Slots slots, const std::vector<std::uint32_t>& starts,
                              const std::vector<std::string_view>& types) {
  // Fast path: nearly every definition is next to its product.
  std::vector<char> result;
  result.reserve(starts.size());
  std::vector<std::uint32_t> far;
  for (const std::uint32_t start : starts) {
    result.push_back(is_near(slots, start, types.front()) ? 1 : 0);
    if (!result.back()) far.push_back(start);
  }
  auto answer = result.begin();
  for (const char leads : lead_far_to_any(slots, far, types)) {
    answer = std::find(answer, result.end(), 0);
    *answer++ = leads;
  }
  return result;
}

}  // namespace Kessel
