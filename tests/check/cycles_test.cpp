// Cycles in graphs, compared with a plain search.
#include "check/cycles.h"

#include <gtest/gtest.h>

#include <map>
#include <random>
#include <set>
#include <vector>

#include "support/effort.h"

namespace Kessel::test {
namespace {

using Graph = std::vector<std::vector<std::uint32_t>>;

/// Size by lowest node.
using Cycles = std::map<std::uint32_t, std::size_t>;

Cycles cycles_of(const Graph& graph) {
  CycleSearch search(
      graph.size(), [&](std::uint32_t node) { return std::span<const std::uint32_t>(graph[node]); },
      [](std::uint32_t successor) { return successor; });
  for (std::uint32_t node = 0; node < graph.size(); ++node) search.visit(node);
  Cycles cycles;
  for (const Cycle& cycle : search.cycles()) {
    EXPECT_TRUE(cycles.emplace(cycle.lowest, cycle.size).second) << cycle.lowest;
  }
  return cycles;
}

/// The nodes that one or more steps from `start` lead to.
std::set<std::uint32_t> reached_from(const Graph& graph, std::uint32_t start) {
  std::set<std::uint32_t> reached;
  std::vector<std::uint32_t> pending = graph[start];
  while (!pending.empty()) {
    const std::uint32_t node = pending.back();
    pending.pop_back();
    if (reached.insert(node).second) {
      pending.insert(pending.end(), graph[node].begin(), graph[node].end());
    }
  }
  return reached;
}

Cycles plain_cycles_of(const Graph& graph) {
  std::vector<std::set<std::uint32_t>> reached;
  for (std::uint32_t node = 0; node < graph.size(); ++node) {
    reached.push_back(reached_from(graph, node));
  }
  Cycles cycles;
  for (std::uint32_t node = 0; node < graph.size(); ++node) {
    if (!reached[node].contains(node)) continue;
    std::uint32_t lowest = node;
    for (std::uint32_t other = 0; other < node; ++other) {
      if (reached[node].contains(other) && reached[other].contains(node)) {
        lowest = other;
        break;
      }
    }
    ++cycles[lowest];
  }
  return cycles;
}

TEST(CycleSearch, FindsWhatAPlainSearchFinds) {
  std::mt19937 random(1);
  std::size_t found = 0;
  for (int round = 0; round < 500; ++round) {
    Graph graph(1 + random() % 12);
    const std::size_t edges = random() % (2 * graph.size());
    for (std::size_t edge = 0; edge < edges; ++edge) {
      graph[random() % graph.size()].push_back(static_cast<std::uint32_t>(random() % graph.size()));
    }
    const Cycles expected = plain_cycles_of(graph);
    ASSERT_EQ(cycles_of(graph), expected) << round;
    found += expected.size();
  }
  EXPECT_GT(found, 300u);
}

TEST(CycleSearch, LongWaysTakeNoStack) {
  const auto length = static_cast<std::uint32_t>(length_to_try(2'000'000));
  Graph chain(length);
  for (std::uint32_t node = 0; node + 1 < length; ++node) chain[node] = {node + 1};
  EXPECT_EQ(cycles_of(chain), Cycles());
  chain.back() = {1};
  EXPECT_EQ(cycles_of(chain), (Cycles{{1, length - 1}}));
}

}  // namespace
}  // namespace Kessel::test
