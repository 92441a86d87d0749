// Totals and levels of assemblies that are written down as lists of components.
#include "inspection/walk.h"

#include <gtest/gtest.h>

#include <optional>
#include <utility>

#include "support/effort.h"

namespace Kessel::test {
namespace {

using Components = std::vector<std::vector<std::pair<std::size_t, std::uint64_t>>>;

/// A use of a part by another, both by index.
using Use = std::pair<std::size_t, std::size_t>;

/// Completes an assembly whose part `i` has the components `components[i]`, (part, count) each;
/// the use `closing` closes a cycle.
Assembly completed(const Components& components, std::vector<std::size_t> roots = {0},
                   std::optional<Use> closing = {}) {
  Assembly assembly;
  for (const auto& list : components) {
    const std::size_t user = assembly.parts.size();
    PartInfo& part = assembly.parts.emplace_back();
    part.record = user + 1;
    for (const auto& [component, count] : list) {
      part.components.push_back({component, count, closing == Use(user, component)});
    }
  }
  assembly.roots = std::move(roots);
  complete(assembly);
  return assembly;
}

std::vector<std::uint64_t> totals_of(const Assembly& assembly) {
  std::vector<std::uint64_t> totals;
  for (const PartInfo& part : assembly.parts) totals.push_back(part.total);
  return totals;
}

using Totals = std::vector<std::uint64_t>;

TEST(Walk, NothingAtAll) {
  const Assembly assembly = completed({}, {});
  EXPECT_EQ(assembly.depth, 0u);
}

TEST(Walk, TotalsMultiplyAlongPathsAndAddUpOverThem) {
  // 0 holds 2 of 1 and 3 of 2; 1 holds 5 of 2 and 1 of 3; 2 holds 7 of 3.
  const Assembly assembly = completed({{{1, 2}, {2, 3}}, {{2, 5}, {3, 1}}, {{3, 7}}, {}});
  EXPECT_EQ(totals_of(assembly), (Totals{1, 2, 13, 93}));
  EXPECT_EQ(assembly.depth, 4u);
}

TEST(Walk, UsesAreTurnedAround) {
  const Assembly assembly = completed({{{2, 2}}, {{2, 3}, {0, 1}}, {}}, {1});
  ASSERT_EQ(assembly.parts[2].used_in.size(), 2u);
  EXPECT_EQ(assembly.parts[2].used_in[0].part, 0u);
  EXPECT_EQ(assembly.parts[2].used_in[0].count, 2u);
  EXPECT_EQ(assembly.parts[2].used_in[1].part, 1u);
  EXPECT_EQ(assembly.parts[2].used_in[1].count, 3u);
  ASSERT_EQ(assembly.parts[0].used_in.size(), 1u);
  EXPECT_EQ(assembly.parts[0].used_in[0].part, 1u);
  EXPECT_TRUE(assembly.parts[1].used_in.empty());
}

TEST(Walk, LadderOfSixtyLevelsCountsEveryRung) {
  Components components(61);
  for (std::size_t i = 0; i < 60; ++i) components[i] = {{i + 1, 2}};
  const Assembly assembly = completed(components);
  EXPECT_EQ(assembly.parts[60].total, std::uint64_t{1} << 60);
  EXPECT_EQ(assembly.depth, 61u);
}

TEST(Walk, TotalsStopAtTheLargestNumber) {
  Components components(101);
  for (std::size_t i = 0; i < 100; ++i) components[i] = {{i + 1, 2}};
  const Assembly assembly = completed(components);
  EXPECT_EQ(assembly.parts[63].total, std::uint64_t{1} << 63);
  EXPECT_EQ(assembly.parts[64].total, UINT64_MAX);
  EXPECT_EQ(assembly.parts[100].total, UINT64_MAX);
}

TEST(Walk, SumThatIsTooLargeStopsThereToo) {
  const Assembly assembly = completed({{{1, UINT64_MAX}, {2, 1}}, {{3, 1}}, {{3, 1}}, {}});
  EXPECT_EQ(totals_of(assembly), (Totals{1, UINT64_MAX, 1, UINT64_MAX}));
}

TEST(Walk, UseThatClosesACycleDoesNotCount) {
  // 0 > 1 > 2 > 1, and 2 > 3.
  const Assembly assembly = completed({{{1, 1}}, {{2, 2}}, {{1, 5}, {3, 3}}, {}}, {0}, Use(2, 1));
  EXPECT_EQ(totals_of(assembly), (Totals{1, 1, 2, 6}));
  EXPECT_EQ(assembly.depth, 4u);
  EXPECT_TRUE(assembly.parts[1].used_in[1].closes_cycle);
  EXPECT_FALSE(assembly.parts[1].used_in[0].closes_cycle);
}

TEST(Walk, PartMayContainItself) {
  const Assembly assembly = completed({{{0, 2}, {1, 1}}, {}}, {0}, Use(0, 0));
  EXPECT_EQ(totals_of(assembly), (Totals{1, 1}));
}

TEST(Walk, GeneratedRootIsNoLevel) {
  Assembly assembly;
  assembly.parts.resize(2);
  assembly.parts[0].record = 5;
  assembly.parts[1].components = {{0, 1, false}};
  assembly.roots = {1};
  complete(assembly);
  EXPECT_EQ(assembly.depth, 1u);
  EXPECT_EQ(totals_of(assembly), (Totals{1, 1}));
}

TEST(Walk, LongChainNeedsNoStack) {
  const std::size_t length = length_to_try(1'000'000);
  Components components(length);
  for (std::size_t i = 0; i + 1 < length; ++i) components[i] = {{i + 1, 1}};
  const Assembly assembly = completed(components);
  EXPECT_EQ(assembly.depth, length);
  EXPECT_EQ(assembly.parts.back().total, 1u);
}

}  // namespace
}  // namespace Kessel::test
