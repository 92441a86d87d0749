// Searches along references for the first record of a type.
#include "structure/reachability.h"

#include <gtest/gtest.h>

#include "structure/record_graph.h"

namespace Kessel::test {
namespace {

constexpr char BEYOND_STORE[] = "out of range: invalid vector subscript";

/// The answer of a search object of its own.
std::string found(const RecordGraph& graph, std::uint32_t start, std::string_view type) {
  return outcome_of([&] { return ReachabilitySearch(graph.slots()).find(start, type); });
}

TEST(ReachabilitySearch, StartIsExaminedFirst) {
  RecordGraph graph(10);
  graph.add(1, "A", {2});
  graph.add(2, "A");
  EXPECT_EQ(found(graph, 1, "A"), "1");
}

TEST(ReachabilitySearch, NearRecordIsFoundBeforeOneDeeperUnderAnEarlierReference) {
  RecordGraph graph(10);
  graph.add(1, "", {2, 3});
  graph.add(2, "", {4});
  graph.add(3, "A");
  graph.add(4, "A");
  EXPECT_EQ(found(graph, 1, "A"), "3");
}

TEST(ReachabilitySearch, OfOneRecordsReferencesTheFirstInTheListIsFound) {
  RecordGraph graph(10);
  graph.add(1, "", {5, 3});
  graph.add(3, "A");
  graph.add(5, "A");
  EXPECT_EQ(found(graph, 1, "A"), "5");
}

TEST(ReachabilitySearch, OfTwoEquallyDeepRecordsTheOneUnderTheEarlierReferenceIsFound) {
  RecordGraph graph(10);
  graph.add(1, "", {3, 2});
  graph.add(2, "", {4});
  graph.add(3, "", {5});
  graph.add(4, "A");
  graph.add(5, "A");
  EXPECT_EQ(found(graph, 1, "A"), "5");
}

TEST(ReachabilitySearch, TypesAreComparedWhole) {
  RecordGraph graph(10);
  graph.add(1, "", {2, 3, 4, 5});
  graph.add(2, "PRODUCT_DEFINITION");
  graph.add(3, "PROD");
  graph.add(4, "product");
  graph.add(5, "PRODUCT");
  EXPECT_EQ(found(graph, 1, "PRODUCT"), "5");
}

TEST(ReachabilitySearch, WithoutSuchARecordTheAnswerIsZero) {
  RecordGraph graph(10);
  graph.add(1, "B", {2});
  graph.add(2, "");
  EXPECT_EQ(found(graph, 1, "A"), "0");
}

TEST(ReachabilitySearch, SearchOverACycleEndsWithZero) {
  RecordGraph graph(10);
  graph.add(1, "", {2});
  graph.add(2, "", {3, 2});
  graph.add(3, "", {1});
  EXPECT_EQ(found(graph, 1, "A"), "0");
}

TEST(ReachabilitySearch, RecordBehindACycleIsFound) {
  RecordGraph graph(10);
  graph.add(1, "", {2});
  graph.add(2, "", {1, 3});
  graph.add(3, "A");
  EXPECT_EQ(found(graph, 1, "A"), "3");
}

TEST(ReachabilitySearch, RecordIsNotExaminedOncePerPath) {
  // 2 to the power of 100 paths: walking each of them would never end.
  RecordGraph graph(202);
  for (std::uint32_t number = 1; number < 200; number += 2) {
    graph.add(number, "", {number + 1, number + 2});
    graph.add(number + 1, "", {number + 2});
  }
  graph.add(201, "B");
  EXPECT_EQ(found(graph, 1, "A"), "0");
  EXPECT_EQ(found(graph, 1, "B"), "201");
}

TEST(ReachabilitySearch, EmptySlotsLeadNowhere) {
  RecordGraph graph(10);
  graph.add(1, "", {7, 0, 2});
  graph.add(2, "A");
  EXPECT_EQ(found(graph, 1, "A"), "2");
  EXPECT_EQ(found(graph, 1, ""), "1");  // An empty slot is no record without a type.
  EXPECT_EQ(found(graph, 7, "A"), "0");
  EXPECT_EQ(found(graph, 7, ""), "0");
  EXPECT_EQ(found(graph, 0, "A"), "0");
}

TEST(ReachabilitySearch, NumberBeyondTheStoreThrows) {
  RecordGraph graph(10);
  graph.add(1, "", {9});
  graph.add(2, "", {10});
  EXPECT_EQ(found(graph, 1, "A"), "0");
  EXPECT_EQ(found(graph, 2, "A"), BEYOND_STORE);
  EXPECT_EQ(found(graph, 10, "A"), BEYOND_STORE);
  EXPECT_EQ(found(graph, 4294967295, "A"), BEYOND_STORE);
}

TEST(ReachabilitySearch, NumberBeyondTheStoreThrowsOnlyWhenItsTurnComes) {
  RecordGraph graph(10);
  graph.add(1, "", {2, 10});
  graph.add(2, "A");
  graph.add(3, "", {10, 2});
  graph.add(4, "", {5, 2});
  graph.add(5, "", {10});
  EXPECT_EQ(found(graph, 1, "A"), "2");
  EXPECT_EQ(found(graph, 3, "A"), BEYOND_STORE);
  EXPECT_EQ(found(graph, 4, "A"), "2");
  EXPECT_EQ(found(graph, 4, "B"), BEYOND_STORE);
}

TEST(ReachabilitySearch, DeadEndsOfOneTypeAreNoneOfAnother) {
  RecordGraph graph(10);
  graph.add(1, "", {2});
  graph.add(2, "B");
  ReachabilitySearch search(graph.slots());
  EXPECT_EQ(search.find(1, "A"), 0u);
  EXPECT_EQ(search.find(1, "B"), 2u);
  EXPECT_EQ(search.find(1, "A"), 0u);
}

TEST(ReachabilitySearch, SearchThatFoundSomethingLeavesNoDeadEnds) {
  RecordGraph graph(10);
  graph.add(1, "", {2, 3});
  graph.add(2, "", {4});
  graph.add(3, "A");
  graph.add(4, "A");
  ReachabilitySearch search(graph.slots());
  EXPECT_EQ(search.find(1, "A"), 3u);
  EXPECT_EQ(search.find(2, "A"), 4u);
  EXPECT_EQ(search.find(1, "A"), 3u);
}

TEST(ReachabilitySearch, SearchThatThrewLeavesNoDeadEnds) {
  RecordGraph graph(10);
  graph.add(1, "", {2, 10, 3});
  graph.add(2, "", {3});
  graph.add(3, "A");
  ReachabilitySearch search(graph.slots());
  EXPECT_EQ(outcome_of([&] { return search.find(1, "A"); }), BEYOND_STORE);
  EXPECT_EQ(search.find(2, "A"), 3u);
  EXPECT_EQ(outcome_of([&] { return search.find(1, "A"); }), BEYOND_STORE);
}

TEST(ReachabilitySearch, ManySearchesOfOneObjectAnswerAsThePlainSearchDoes) {
  std::mt19937 random(41);
  for (int round = 0; round < 400; ++round) {
    SCOPED_TRACE(round);
    const RecordGraph graph = random_graph(random, round % 2 == 1);
    ReachabilitySearch search(graph.slots());
    for (int i = 0; i < 60; ++i) {
      const auto start = static_cast<std::uint32_t>(random() % (graph.slots().size() + 1));
      constexpr std::string_view TYPES[] = {"A", "B", "C", "D", ""};
      const std::string_view type = TYPES[random() % std::size(TYPES)];
      ASSERT_EQ(outcome_of([&] { return search.find(start, type); }),
                outcome_of([&] { return plain_search(graph.slots(), start, type); }))
          << "from " << start << " for \"" << type << '"';
    }
  }
}

}  // namespace
}  // namespace Kessel::test
