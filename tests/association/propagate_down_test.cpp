// The walk that spreads one instance's parts to everything below another.
#include <gtest/gtest.h>

#include <queue>

#include "association/rule_store.h"

namespace Kessel::test {
namespace {

/// The walk by the book: a queue of instances, each of which may gain parts when it comes to the
/// front, and is expanded if it did.
bool plainly_propagate_down(const Store& file, const Entity* source, Entity* start,
                            KindFilter filter) {
  if (source == nullptr || start == nullptr) return false;
  bool added = false;
  std::queue<Entity*> queue;
  for (queue.push(start); !queue.empty(); queue.pop()) {
    Entity* entity = queue.front();
    if (!plainly_adopt(source, entity, filter)) continue;
    added = true;
    for (const unsigned reference : entity->references()) queue.push(file.at(reference));
  }
  return added;
}

TEST(PropagateDown, NumbersAreGivenLevelByLevelInTheOrderOfTheReferences) {
  RuleStore store;
  store.add(1, "", {3, 2});
  store.add(2, "", {4});
  store.add(3, "", {6, 5});
  for (const unsigned number : {4u, 5u, 6u}) store.add(number, "");
  store.add(7, "");
  Part& p = store.part('P', LEAF_PART);
  store.give(7, {&p});
  EXPECT_TRUE(propagate_down(store.file(), store.at(7), store.at(1), ALL_PARTS));
  EXPECT_EQ(store.numbers(), "#1(P2) #2(P4) #3(P3) #4(P7) #5(P6) #6(P5) #7(P1) last(P7)");
}

TEST(PropagateDown, PartsOfTheSourceAreSpreadAndNotThoseMetOnTheWay) {
  RuleStore store;
  store.add(1, "");
  store.add(2, "", {3});
  store.add(3, "");
  Part& p = store.part('P', LEAF_PART);
  Part& q = store.part('Q', LEAF_PART);
  store.give(1, {&p});
  store.give(2, {&q});
  EXPECT_TRUE(propagate_down(store.file(), store.at(1), store.at(2), ALL_PARTS));
  EXPECT_EQ(store.numbers(), "#1(P1) #2(P2 Q1) #3(P3) last(P3 Q1)");
}

TEST(PropagateDown, DiamondGivesEachPartOnce) {
  RuleStore store;
  store.add(1, "", {2, 3});
  store.add(2, "", {4});
  store.add(3, "", {4, 4});
  store.add(4, "", {5});
  store.add(5, "");
  store.add(6, "");
  Part& p = store.part('P', LEAF_PART);
  Part& q = store.part('Q', ASSEMBLY_PART);
  store.give(6, {&p, &q});
  EXPECT_TRUE(propagate_down(store.file(), store.at(6), store.at(1), ALL_PARTS));
  EXPECT_EQ(store.numbers(),
            "#1(P2 Q2) #2(P3 Q3) #3(P4 Q4) #4(P5 Q5) #5(P6 Q6) #6(P1 Q1) last(P6 Q6)");
}

TEST(PropagateDown, InstanceThatGainsNothingStopsTheWalkEvenAboveInstancesThatLackParts) {
  RuleStore store;
  store.add(1, "");
  store.add(2, "", {3, 5});
  store.add(3, "", {4});
  store.add(4, "");
  store.add(5, "");
  Part& p = store.part('P', LEAF_PART);
  store.give(1, {&p});
  store.give(3, {&p});
  EXPECT_TRUE(propagate_down(store.file(), store.at(1), store.at(2), ALL_PARTS));
  EXPECT_EQ(store.numbers(), "#1(P1) #2(P3) #3(P2) #4() #5(P4) last(P4)");
  EXPECT_FALSE(propagate_down(store.file(), store.at(1), store.at(3), ALL_PARTS));
  EXPECT_EQ(store.numbers(), "#1(P1) #2(P3) #3(P2) #4() #5(P4) last(P4)");
}

TEST(PropagateDown, InstanceThatGainsOneOfSeveralPartsIsExpanded) {
  RuleStore store;
  store.add(1, "");
  store.add(2, "", {3});
  store.add(3, "");
  Part& p = store.part('P', LEAF_PART);
  Part& q = store.part('Q', LEAF_PART);
  store.give(1, {&p, &q});
  store.give(2, {&p});
  EXPECT_TRUE(propagate_down(store.file(), store.at(1), store.at(2), ALL_PARTS));
  EXPECT_EQ(store.numbers(), "#1(P1 Q1) #2(P2 Q2) #3(P3 Q3) last(P3 Q3)");
}

TEST(PropagateDown, FilterHoldsOnTheWholeWay) {
  RuleStore store;
  store.add(1, "");
  store.add(2, "", {3});
  store.add(3, "");
  Part& p = store.part('P', ASSEMBLY_PART);
  Part& q = store.part('Q', LEAF_PART);
  store.give(1, {&p, &q});
  EXPECT_TRUE(propagate_down(store.file(), store.at(1), store.at(2), ASSEMBLIES));
  EXPECT_EQ(store.numbers(), "#1(P1 Q1) #2(P2) #3(P3) last(P3 Q1)");
  EXPECT_TRUE(propagate_down(store.file(), store.at(1), store.at(2), LEAVES));
  EXPECT_EQ(store.numbers(), "#1(P1 Q1) #2(P2 Q2) #3(P3 Q3) last(P3 Q3)");
}

TEST(PropagateDown, WalkFromTheSourceItselfEndsAtOnce) {
  RuleStore store;
  store.add(1, "", {2});
  store.add(2, "", {1});
  Part& p = store.part('P', LEAF_PART);
  store.give(1, {&p});
  EXPECT_FALSE(propagate_down(store.file(), store.at(1), store.at(1), ALL_PARTS));
  EXPECT_TRUE(propagate_down(store.file(), store.at(1), store.at(2), ALL_PARTS));
  EXPECT_EQ(store.numbers(), "#1(P1) #2(P2) last(P2)");
}

TEST(PropagateDown, CycleEnds) {
  RuleStore store;
  store.add(1, "");
  store.add(2, "", {3});
  store.add(3, "", {2, 3});
  Part& p = store.part('P', LEAF_PART);
  store.give(1, {&p});
  EXPECT_TRUE(propagate_down(store.file(), store.at(1), store.at(2), ALL_PARTS));
  EXPECT_EQ(store.numbers(), "#1(P1) #2(P2) #3(P3) last(P3)");
}

TEST(PropagateDown, MissingInstancesAreNoOp) {
  RuleStore store;
  store.add(1, "", {9, 0, 2});
  store.add(2, "");
  store.add(3, "");
  Part& p = store.part('P', LEAF_PART);
  store.give(3, {&p});
  EXPECT_FALSE(propagate_down(store.file(), nullptr, store.at(1), ALL_PARTS));
  EXPECT_FALSE(propagate_down(store.file(), store.at(3), nullptr, ALL_PARTS));
  EXPECT_EQ(store.numbers(), "#1() #2() #3(P1) last(P1)");
  EXPECT_TRUE(propagate_down(store.file(), store.at(3), store.at(1), ALL_PARTS));
  EXPECT_EQ(store.numbers(), "#1(P2) #2(P3) #3(P1) last(P3)");
}

TEST(PropagateDown, ReferenceBeyondTheStoreThrowsOnlyBelowAnInstanceThatGained) {
  RuleStore store;
  store.add(1, "");
  store.add(2, "", {3});
  store.add(3, "", {4, BEYOND_STORE});
  store.add(4, "");
  Part& p = store.part('P', LEAF_PART);
  store.give(1, {&p});
  store.give(3, {&p});
  EXPECT_TRUE(propagate_down(store.file(), store.at(1), store.at(2), ALL_PARTS));
  EXPECT_EQ(store.numbers(), "#1(P1) #2(P3) #3(P2) #4() last(P3)");

  Part& q = store.part('Q', LEAF_PART);
  store.give(1, {&q});
  EXPECT_EQ(
      out_of_range_text([&] { propagate_down(store.file(), store.at(1), store.at(2), ALL_PARTS); }),
      "invalid vector subscript");
  EXPECT_EQ(store.numbers(), "#1(P1 Q1) #2(P3 Q2) #3(P2 Q3) #4() last(P3 Q3)");
}

TEST(PropagateDown, AfterAReferenceBeyondTheStoreNothingMoreIsGivenOut) {
  RuleStore store;
  store.add(1, "", {2, 3});
  store.add(2, "", {BEYOND_STORE});
  store.add(3, "");
  store.add(4, "");
  Part& p = store.part('P', LEAF_PART);
  store.give(4, {&p});
  EXPECT_EQ(
      out_of_range_text([&] { propagate_down(store.file(), store.at(4), store.at(1), ALL_PARTS); }),
      "invalid vector subscript");
  EXPECT_EQ(store.numbers(), "#1(P2) #2(P3) #3() #4(P1) last(P3)");
}

TEST(PropagateDown, GivesTheNumbersOfAPlainQueue) {
  constexpr unsigned COUNT = 25;
  for (unsigned seed = 0; seed < 400; ++seed) {
    SCOPED_TRACE(seed);
    RuleStore store;
    RuleStore plain;
    fill_at_random(store, seed, COUNT);
    fill_at_random(plain, seed, COUNT);
    std::mt19937 random(seed);
    for (int i = 0; i < 12; ++i) {
      const auto source = static_cast<unsigned>(1 + random() % COUNT);
      const auto start = static_cast<unsigned>(1 + random() % COUNT);
      const auto filter = static_cast<KindFilter>(random() % 3);
      ASSERT_EQ(propagate_down(store.file(), store.at(source), store.at(start), filter),
                plainly_propagate_down(plain.file(), plain.at(source), plain.at(start), filter));
    }
    ASSERT_EQ(store.numbers(), plain.numbers());
  }
}

}  // namespace
}  // namespace Kessel::test
