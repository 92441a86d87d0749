// Walks along components from the roots down.
#include "inspection/walk.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace Kessel {

namespace {

/// The parts that the roots lead to, in an order in which no part stands in front of one that uses
/// it, but for uses that close a cycle.
std::vector<std::size_t> users_first(const Assembly& assembly) {
  std::vector<bool> is_entered(assembly.parts.size(), false);
  std::vector<std::pair<std::size_t, std::size_t>> path;  // parts, each with its next component
  std::vector<std::size_t> left;
  const auto enter = [&](std::size_t part) {
    if (is_entered[part]) return;
    is_entered[part] = true;
    path.emplace_back(part, 0);
  };
  for (const std::size_t root : assembly.roots) {
    enter(root);
    while (!path.empty()) {
      auto& [part, next] = path.back();
      const std::vector<PartUse>& components = assembly.parts[part].components;
      if (next == components.size()) {
        left.push_back(part);
        path.pop_back();
        continue;
      }
      const PartUse& use = components[next++];
      if (!use.closes_cycle) enter(use.part);
    }
  }
  return {left.rbegin(), left.rend()};
}

constexpr std::uint64_t MOST_COUNT = std::numeric_limits<std::uint64_t>::max();

/// a + b * c, or MOST_COUNT where that is more.
std::uint64_t add_product(std::uint64_t a, std::uint64_t b, std::uint64_t c) {
  if (c != 0 && b > (MOST_COUNT - a) / c) return MOST_COUNT;
  return a + b * c;
}

}  // namespace

void complete(Assembly& assembly) {
  std::vector<PartInfo>& parts = assembly.parts;
  std::vector<std::size_t> levels(parts.size(), 0);
  for (const std::size_t root : assembly.roots) {
    parts[root].total = 1;
    levels[root] = parts[root].record == 0 ? 0 : 1;
  }
  for (const std::size_t user : users_first(assembly)) {
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
