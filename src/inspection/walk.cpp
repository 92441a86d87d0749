// Walks along components from the roots down.
#include "inspection/walk.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace Kessel {

namespace {

/// Depth-first walks that enter no part twice.
class DepthFirst {
 public:
  explicit DepthFirst(std::vector<PartInfo>& parts)
      : parts_(parts), states_(parts.size(), State::not_reached) {}

  bool reached(std::size_t part) const { return states_[part] != State::not_reached; }

  /// Enters `start`, unless it was reached, and all that it leads to.
  void enter(std::size_t start) {
    if (reached(start)) return;
    open(start);
    while (!path_.empty()) {
      auto& [part, next] = path_.back();
      if (next == parts_[part].components.size()) {
        states_[part] = State::left;
        left_.push_back(part);
        path_.pop_back();
        continue;
      }
      PartUse& use = parts_[part].components[next++];
      use.closes_cycle = states_[use.part] == State::on_path;
      if (!reached(use.part)) open(use.part);
    }
  }

  /// All parts reached, in an order in which no part stands in front of one that uses it, but for
  /// uses that close a cycle.
  std::vector<std::size_t> users_first() const { return {left_.rbegin(), left_.rend()}; }

 private:
  enum class State : char { not_reached, on_path, left };

  void open(std::size_t part) {
    states_[part] = State::on_path;
    path_.emplace_back(part, 0);
  }

  std::vector<PartInfo>& parts_;
  std::vector<State> states_;
  std::vector<std::pair<std::size_t, std::size_t>> path_;  // parts, each with its next component
  std::vector<std::size_t> left_;
};

/// Adds roots for parts that the present ones do not lead to, and marks uses that close a cycle.
/// Returns the parts, users first.
std::vector<std::size_t> add_roots(Assembly& assembly) {
  // Any order finds groups that contain each other; entering the groups that were left last first
  // needs one root for each group that nothing else leads to.
  DepthFirst trial(assembly.parts);
  for (std::size_t part = 0; part < assembly.parts.size(); ++part) trial.enter(part);

  DepthFirst walk(assembly.parts);
  for (const std::size_t root : assembly.roots) walk.enter(root);
  for (const std::size_t part : trial.users_first()) {
    if (walk.reached(part)) continue;
    assembly.roots.push_back(part);
    walk.enter(part);
  }
  return walk.users_first();
}

constexpr std::uint64_t MOST = std::numeric_limits<std::uint64_t>::max();

/// a + b * c, or MOST where that is more.
std::uint64_t add_product(std::uint64_t a, std::uint64_t b, std::uint64_t c) {
  if (c != 0 && b > (MOST - a) / c) return MOST;
  return a + b * c;
}

}  // namespace

void complete(Assembly& assembly) {
  std::vector<PartInfo>& parts = assembly.parts;
  const std::vector<std::size_t> users_first = add_roots(assembly);

  std::vector<std::size_t> levels(parts.size(), 0);
  for (const std::size_t root : assembly.roots) {
    parts[root].total = 1;
    levels[root] = parts[root].record == 0 ? 0 : 1;
  }
  for (const std::size_t user : users_first) {
    assembly.depth = std::max(assembly.depth, levels[user]);
    for (const PartUse& use : parts[user].components) {
      if (use.closes_cycle) continue;
      PartInfo& component = parts[use.part];
      component.total = add_product(component.total, parts[user].total, use.count);
      levels[use.part] = std::max(levels[use.part], levels[user] + 1);
    }
  }

  for (std::size_t user = 0; user < parts.size(); ++user) {
    for (const PartUse& use : parts[user].components) {
      parts[use.part].used_in.push_back({user, use.count, use.closes_cycle});
    }
  }
}

}  // namespace Kessel
