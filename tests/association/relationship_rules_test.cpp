// The rules that move parts from node to node through relationship records.
#include <gtest/gtest.h>

#include <queue>

#include "association/rule_store.h"
#include "support/split_run.h"

namespace Kessel::test {
namespace {

/// One of the two rules.
using RelationshipRule = void (*)(const Store&, std::string_view, std::string_view, std::uint16_t);
constexpr RelationshipRule RULES[] = {propagate_through_relationships, propagate_through_usages};

/// Both rules by the book: the list of relationships is fetched and walked again for every node.
void plainly_propagate(const Store& file, std::string_view relationship_type,
                       std::string_view node_type, std::uint16_t n, bool usages) {
  std::queue<Entity*> queue;
  for (Entity* node : file.get(node_type)) {
    if (!node->part_numbers.empty()) queue.push(node);
  }
  for (; !queue.empty(); queue.pop()) {
    const Entity* node = queue.front();
    for (Entity* relationship : file.get(relationship_type)) {
      if (file.at(relationship->get_reference(n)) != node) continue;
      if (!plainly_adopt(node, relationship, ALL_PARTS)) continue;
      for (const unsigned reference : relationship->references()) {
        Entity* reached = file.at(reference);
        if (reached == nullptr) continue;
        const bool added =
            usages ? reached->part_numbers.empty() && propagate_down(file, node, reached, ALL_PARTS)
                   : plainly_adopt(node, reached, ALL_PARTS);
        if (added) queue.push(reached);
      }
    }
  }
}

TEST(PropagateThroughRelationships, PartsClimbAChainToItsEnd) {
  RuleStore store;
  store.add(1, "NODE");
  store.add(2, "");
  store.add(3, "");
  store.add(4, "LINK", {3, 2});  // From #2 up to #3, listed before the link below it.
  store.add(5, "LINK", {2, 1});
  Part& p = store.part('P', LEAF_PART);
  store.give(1, {&p});
  propagate_through_relationships(store.file(), "LINK", "NODE", 1);
  EXPECT_EQ(store.numbers(), "#1(P1) #2(P3) #3(P5) #4(P4) #5(P2) last(P5)");
}

TEST(PropagateThroughRelationships, PositionTellsTheNodeThatARelationshipStartsFrom) {
  RuleStore store;
  store.add(1, "NODE");
  store.add(2, "NODE");
  store.add(3, "LINK", {2, 1});
  Part& p = store.part('P', LEAF_PART);
  store.give(1, {&p});
  propagate_through_relationships(store.file(), "LINK", "NODE", 0);
  EXPECT_EQ(store.numbers(), "#1(P1) #2() #3() last(P1)");
  propagate_through_relationships(store.file(), "LINK", "NODE", 1);
  EXPECT_EQ(store.numbers(), "#1(P1) #2(P3) #3(P2) last(P3)");
}

TEST(PropagateThroughRelationships, AllReferencesOfARelationshipTakeThePartsOneLevelDeep) {
  RuleStore store;
  store.add(1, "NODE");
  store.add(2, "", {6});
  store.add(3, "");
  store.add(5, "LINK", {1, 3, 9, 2});
  store.add(6, "");
  Part& p = store.part('P', LEAF_PART);
  Part& q = store.part('Q', ASSEMBLY_PART);
  store.give(1, {&p, &q});
  store.give(2, {&p});
  propagate_through_relationships(store.file(), "LINK", "NODE", 0);
  EXPECT_EQ(store.numbers(), "#1(P1 Q1) #2(P2 Q4) #3(P4 Q3) #5(P3 Q2) #6() last(P4 Q4)");
}

TEST(PropagateThroughRelationships, RelationshipThatHoldsTheNodesPartsIsNotExpanded) {
  RuleStore store;
  store.add(1, "NODE");
  store.add(2, "");
  store.add(3, "LINK", {1, 2});
  Part& p = store.part('P', LEAF_PART);
  store.give(1, {&p});
  store.give(3, {&p});
  propagate_through_relationships(store.file(), "LINK", "NODE", 0);
  EXPECT_EQ(store.numbers(), "#1(P1) #2() #3(P2) last(P2)");
}

TEST(PropagateThroughRelationships, CycleEnds) {
  RuleStore store;
  store.add(1, "NODE");
  store.add(2, "NODE");
  store.add(3, "LINK", {1, 2});
  store.add(4, "LINK", {2, 1});
  Part& p = store.part('P', LEAF_PART);
  Part& q = store.part('Q', LEAF_PART);
  store.give(1, {&p});
  store.give(2, {&q});
  propagate_through_relationships(store.file(), "LINK", "NODE", 0);
  EXPECT_EQ(store.numbers(), "#1(P1 Q3) #2(P3 Q1) #3(P2 Q4) #4(P4 Q2) last(P4 Q4)");
}

TEST(PropagateThroughUsages, UnclaimedComponentIsFilledWithEverythingBelowIt) {
  RuleStore store;
  store.add(1, "NODE");
  store.add(2, "NODE", {4});
  store.add(3, "LINK", {1, 2});
  store.add(4, "", {5});
  store.add(5, "");
  Part& p = store.part('P', LEAF_PART);
  store.give(1, {&p});
  propagate_through_usages(store.file(), "LINK", "NODE", 0);
  EXPECT_EQ(store.numbers(), "#1(P1) #2(P3) #3(P2) #4(P4) #5(P5) last(P5)");
}

TEST(PropagateThroughUsages, ComponentThatBelongsToAPartIsLeftAlone) {
  RuleStore store;
  store.add(1, "NODE");
  store.add(2, "NODE", {4});
  store.add(3, "LINK", {1, 2});
  store.add(4, "");
  Part& p = store.part('P', LEAF_PART);
  Part& q = store.part('Q', LEAF_PART);
  store.give(1, {&p});
  store.give(2, {&q});
  propagate_through_usages(store.file(), "LINK", "NODE", 0);
  EXPECT_EQ(store.numbers(), "#1(P1) #2(Q1) #3(P2) #4() last(P2 Q1)");
}

TEST(PropagateThroughUsages, FilledComponentsAreNodesInTurn) {
  RuleStore store;
  store.add(1, "NODE");
  store.add(2, "NODE");
  store.add(3, "NODE");
  store.add(4, "LINK", {2, 3});
  store.add(5, "LINK", {1, 2});
  Part& p = store.part('P', LEAF_PART);
  store.give(1, {&p});
  propagate_through_usages(store.file(), "LINK", "NODE", 0);
  EXPECT_EQ(store.numbers(), "#1(P1) #2(P3) #3(P5) #4(P4) #5(P2) last(P5)");
}

TEST(RelationshipRules, NodesStartInTheOrderOfTheFile) {
  for (const RelationshipRule rule : RULES) {
    RuleStore store;
    store.add(8, "NODE");
    store.add(1, "NODE");
    store.add(2, "LINK", {1, 3});
    store.add(3, "");
    store.add(4, "LINK", {8, 5});
    store.add(5, "");
    Part& p = store.part('P', LEAF_PART);
    store.give(1, {&p});
    store.give(8, {&p});
    rule(store.file(), "LINK", "NODE", 0);
    EXPECT_EQ(store.numbers(), "#8(P2) #1(P1) #2(P5) #3(P6) #4(P3) #5(P4) last(P6)");
  }
}

TEST(RelationshipRules, RelationshipsOfANodeAreTakenInTheOrderOfTheFile) {
  for (const RelationshipRule rule : RULES) {
    RuleStore store;
    store.add(1, "NODE");
    for (const unsigned number : {2u, 3u, 4u, 5u}) store.add(number, "");
    store.add(9, "LINK", {1, 2});
    store.add(7, "LINK", {1, 3});
    store.add(6, "LINK", {2, 4});
    store.add(8, "LINK", {2, 5});
    Part& p = store.part('P', LEAF_PART);
    store.give(1, {&p});
    rule(store.file(), "LINK", "NODE", 0);
    EXPECT_EQ(store.numbers(),
              "#1(P1) #2(P3) #3(P5) #4(P7) #5(P9) #9(P2) #7(P4) #6(P6) #8(P8) last(P9)");
  }
}

TEST(RelationshipRules, RelationshipThatIsTooShortPrintsOneLinePerQueuedNode) {
  for (const RelationshipRule rule : RULES) {
    // Three nodes come into the queue: #1 and #2 at first, #3 through #4.
    RuleStore store;
    store.add(1, "NODE");
    store.add(2, "NODE");
    store.add(3, "NODE");
    store.add(4, "LINK", {3, 2});
    store.add(5, "LINK", {1});
    Part& p = store.part('P', LEAF_PART);
    store.give(1, {&p});
    store.give(2, {&p});
    EXPECT_EQ(printed_by([&] { rule(store.file(), "LINK", "NODE", 1); }),
              "Got an out of range in 'get_child' while fetching child nb 1\n"
              "Got an out of range in 'get_child' while fetching child nb 1\n"
              "Got an out of range in 'get_child' while fetching child nb 1\n");
    EXPECT_EQ(store.numbers(), "#1(P1) #2(P2) #3(P4) #4(P3) #5() last(P4)");
  }
}

TEST(RelationshipRules, EveryRelationshipThatIsTooShortPrintsItsLine) {
  for (const RelationshipRule rule : RULES) {
    RuleStore store;
    store.add(1, "NODE");
    store.add(2, "LINK");
    store.add(3, "LINK", {1});
    store.add(4, "LINK");
    Part& p = store.part('P', LEAF_PART);
    store.give(1, {&p});
    EXPECT_EQ(printed_by([&] { rule(store.file(), "LINK", "NODE", 0); }),
              "Got an out of range in 'get_child' while fetching child nb 0\n"
              "Got an out of range in 'get_child' while fetching child nb 0\n");
    EXPECT_EQ(store.numbers(), "#1(P1) #2() #3(P2) #4() last(P2)");
  }
}

TEST(RelationshipRules, WithoutRelationshipsNothingHappens) {
  for (const RelationshipRule rule : RULES) {
    RuleStore store;
    store.add(1, "NODE", {2});
    store.add(2, "");
    Part& p = store.part('P', LEAF_PART);
    store.give(1, {&p});
    EXPECT_EQ(printed_by([&] { rule(store.file(), "LINK", "NODE", 0); }), "");
    EXPECT_EQ(store.numbers(), "#1(P1) #2() last(P1)");
  }
}

TEST(RelationshipRules, WithoutNodesThatHoldAPartNoRelationshipIsLookedAt) {
  for (const RelationshipRule rule : RULES) {
    // Neither the missing reference nor the one beyond the store is noticed.
    RuleStore store;
    store.add(1, "NODE");
    store.add(2, "LINK");
    store.add(3, "LINK", {BEYOND_STORE});
    store.add(4, "LINK", {1, 5});
    store.add(5, "OTHER");
    Part& p = store.part('P', LEAF_PART);
    store.give(5, {&p});
    EXPECT_EQ(printed_by([&] { rule(store.file(), "LINK", "NODE", 0); }), "");
    EXPECT_EQ(store.numbers(), "#1() #2() #3() #4() #5(P1) last(P1)");
  }
}

TEST(RelationshipRules, NumbersWithoutARecordArePassedOver) {
  for (const RelationshipRule rule : RULES) {
    RuleStore store;
    store.add(1, "NODE");
    store.add(2, "LINK", {77, 3});
    store.add(3, "");
    store.add(4, "LINK", {1, 77, 3});
    store.file().add_type(90, "NODE");
    store.file().add_type(91, "LINK");
    Part& p = store.part('P', LEAF_PART);
    store.give(1, {&p});
    EXPECT_EQ(printed_by([&] { rule(store.file(), "LINK", "NODE", 0); }), "");
    EXPECT_EQ(store.numbers(), "#1(P1) #2() #3(P3) #4(P2) last(P3)");
  }
}

TEST(RelationshipRules, ReferenceBeyondTheStoreThrows) {
  for (const RelationshipRule rule : RULES) {
    RuleStore store;
    store.add(1, "NODE");
    store.add(2, "LINK", {1, 3});
    store.add(3, "");
    store.add(4, "LINK", {BEYOND_STORE});  // The node that it starts from.
    Part& p = store.part('P', LEAF_PART);
    store.give(1, {&p});
    EXPECT_EQ(out_of_range_text([&] { rule(store.file(), "LINK", "NODE", 0); }),
              "invalid vector subscript");
    EXPECT_EQ(store.numbers(), "#1(P1) #2(P2) #3(P3) #4() last(P3)");

    RuleStore other;
    other.add(1, "NODE");
    other.add(2, "LINK", {1, BEYOND_STORE, 3});  // What it leads to.
    other.add(3, "");
    Part& q = other.part('Q', LEAF_PART);
    other.give(1, {&q});
    EXPECT_EQ(out_of_range_text([&] { rule(other.file(), "LINK", "NODE", 0); }),
              "invalid vector subscript");
    EXPECT_EQ(other.numbers(), "#1(Q1) #2(Q2) #3() last(Q2)");
  }
}

TEST(RelationshipRules, RelationshipThatIsListedTwiceCountsOnce) {
  for (const RelationshipRule rule : RULES) {
    RuleStore store;
    store.add(1, "NODE");
    store.add(2, "LINK", {1, 3});
    store.add(3, "");
    store.file().add_type(2, "LINK");
    Part& p = store.part('P', LEAF_PART);
    store.give(1, {&p});
    rule(store.file(), "LINK", "NODE", 0);
    EXPECT_EQ(store.numbers(), "#1(P1) #2(P2) #3(P3) last(P3)");
  }
}

TEST(RelationshipRules, GiveTheNumbersAndMessagesOfAWalkOverAllRelationshipsPerNode) {
  for (unsigned seed = 0; seed < 600; ++seed) {
    for (const bool usages : {false, true}) {
      SCOPED_TRACE(seed);
      RuleStore store;
      RuleStore plain;
      fill_at_random(store, seed, 30);
      fill_at_random(plain, seed, 30);
      const auto n = static_cast<std::uint16_t>(seed % 3);
      const std::string messages =
          printed_by([&] { RULES[usages](store.file(), "LINK", "NODE", n); });
      const std::string expected =
          printed_by([&] { plainly_propagate(plain.file(), "LINK", "NODE", n, usages); });
      ASSERT_EQ(messages, expected);
      ASSERT_EQ(store.numbers(), plain.numbers());
    }
  }
}

}  // namespace
}  // namespace Kessel::test
