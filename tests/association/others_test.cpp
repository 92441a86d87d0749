// A home for the instances that no rule reached.
#include <gtest/gtest.h>

#include "association/associate.h"
#include "association/rule_store.h"
#include "support/split_run.h"

namespace Kessel::test {
namespace {

/// The numbers after the pass, which must print nothing.
std::string associate(RuleStore& store) {
  EXPECT_EQ(printed_by([&] { associate_others(store.file()); }), "");
  return store.numbers();
}

/// Adds the instances #1 to #`length`, each of which refers to the next, the last to the instance
/// of a part P. In ascending order each round of visits claims the last unclaimed one only.
void add_unfavourable_chain(RuleStore& store, unsigned length) {
  for (unsigned number = 1; number <= length; ++number) store.add(number, "", {number + 1});
  store.add(length + 1, "");
  store.give(length + 1, {&store.part('P', LEAF_PART)});
}

TEST(Others, WithoutUnclaimedInstancesNothingHappens) {
  RuleStore store;
  store.add(1, "", {2});
  store.add(2, "", {1});
  Part& p = store.part('P', LEAF_PART);
  Part& q = store.part('Q', ASSEMBLY_PART);
  store.give(1, {&p});
  store.give(2, {&q});
  EXPECT_EQ(associate(store), "#1(P1) #2(Q1) last(P1 Q1)");
}

TEST(Others, InstanceJoinsAllPartsOfAllItsReferencesWhateverTheirKind) {
  RuleStore store;
  store.add(1, "", {3, 2, 9});
  store.add(2, "");
  store.add(3, "");
  Part& p = store.part('P', LEAF_PART);
  Part& q = store.part('Q', ASSEMBLY_PART);
  Part& r = store.part('R', UNCLASSIFIED_PART);
  store.give(2, {&p, &r});
  store.give(3, {&q, &r});
  EXPECT_EQ(associate(store), "#1(P2 Q2 R3) #2(P1 R1) #3(Q1 R2) last(P2 Q2 R3)");
}

TEST(Others, InstanceThatWaitsForAHigherNumberIsClaimedAfterIt) {
  RuleStore store;
  store.add(1, "", {2});
  store.add(2, "", {3});
  store.add(3, "");
  store.give(3, {&store.part('P', LEAF_PART)});
  EXPECT_EQ(associate(store), "#1(P3) #2(P2) #3(P1) last(P3)");
}

TEST(Others, InstancesAreVisitedInAscendingOrderOfTheirNumbers) {
  RuleStore store;
  for (const unsigned number : {9u, 5000000u, 4u, 4096u, 4095u}) store.add(number, "", {1});
  store.add(1, "");
  store.give(1, {&store.part('P', LEAF_PART)});
  EXPECT_EQ(associate(store), "#9(P3) #5000000(P6) #4(P2) #4096(P5) #4095(P4) #1(P1) last(P6)");
}

TEST(Others, InstanceThatWasClaimedIsNotVisitedAgain) {
  RuleStore store;
  store.add(1, "", {2, 3});  // Takes P from #2, and not Q from #3, which is claimed later.
  store.add(2, "");
  store.add(3, "", {4});
  store.add(4, "");
  Part& p = store.part('P', LEAF_PART);
  Part& q = store.part('Q', LEAF_PART);
  store.give(2, {&p});
  store.give(4, {&q});
  EXPECT_EQ(associate(store), "#1(P2) #2(P1) #3(Q2) #4(Q1) last(P2 Q2)");
}

TEST(Others, PartsFlowUpwardOnly) {
  RuleStore store;
  store.add(1, "", {2});
  store.add(2, "");
  store.give(1, {&store.part('P', LEAF_PART)});
  EXPECT_EQ(associate(store), "#1(P1) #2() last(P1)");
}

TEST(Others, InstancesThatReferToNothingOrOnlyToEachOtherStayUnclaimed) {
  RuleStore store;
  store.add(1, "");
  store.add(2, "", {3});
  store.add(3, "", {2});
  store.add(4, "", {4, 99, 0});
  EXPECT_EQ(associate(store), "#1() #2() #3() #4() last()");
}

TEST(Others, InstanceThatRefersToNothingIsVisitedExactlyFiveTimes) {
  RuleStore store;
  store.add(1, "");
  store.add(2, "");
  store.give(2, {&store.part('P', LEAF_PART)});
  EXPECT_EQ(associate_others(store.file()), 5u);
  EXPECT_EQ(store.numbers(), "#1() #2(P1) last(P1)");
  store.give(1, {&store.part('Q', LEAF_PART)});
  EXPECT_EQ(associate_others(store.file()), 0u) << "nothing is unclaimed";
}

TEST(Others, ChainOfNineInTheUnfavourableOrderTakesExactlyTheVisitsThereAre) {
  // 9 + 8 + ... + 1 = 45 visits of 5 * 9.
  RuleStore store;
  add_unfavourable_chain(store, 9);
  EXPECT_EQ(associate(store),
            "#1(P10) #2(P9) #3(P8) #4(P7) #5(P6) #6(P5) #7(P4) #8(P3) #9(P2) #10(P1) last(P10)");
}

TEST(Others, ChainOfTenInTheUnfavourableOrderStaysPartlyUnclaimed) {
  // 10 + 9 + 8 + 7 + 6 + 5 + 4 = 49 visits claim seven; the last of 5 * 10 goes to #1.
  RuleStore store;
  add_unfavourable_chain(store, 10);
  EXPECT_EQ(associate(store),
            "#1() #2() #3() #4(P8) #5(P7) #6(P6) #7(P5) #8(P4) #9(P3) #10(P2) #11(P1) last(P8)");
}

TEST(Others, InstanceThatCannotBeClaimedUsesUpVisitsOfTheOthersInEveryRound) {
  // The chain of nine and one that refers to nothing: again 10 + 9 + ... + 4 + 1 visits.
  RuleStore store;
  add_unfavourable_chain(store, 9);
  store.add(20, "");
  EXPECT_EQ(associate(store),
            "#1() #2() #3(P8) #4(P7) #5(P6) #6(P5) #7(P4) #8(P3) #9(P2) #10(P1) #20() last(P8)");
}

TEST(Others, ChainInTheFavourableOrderIsClaimedInOneRoundHoweverLongItIs) {
  constexpr unsigned LENGTH = 1000;
  RuleStore store;
  store.add(1, "");
  Part& p = store.part('P', LEAF_PART);
  store.give(1, {&p});
  for (unsigned number = 2; number <= LENGTH; ++number) store.add(number, "", {number - 1});
  associate(store);
  for (unsigned number = 1; number <= LENGTH; ++number) {
    ASSERT_EQ(store.at(number)->part_numbers.at(&p), number);
  }
  EXPECT_EQ(p.last_instance_number, LENGTH);
}

TEST(Others, SlotZeroIsNotExamined) {
  RuleStore store;
  store.add(0, "", {1});
  store.add(1, "");
  store.give(1, {&store.part('P', LEAF_PART)});
  EXPECT_EQ(associate(store), "#0() #1(P1) last(P1)");
}

TEST(Others, ReferenceBeyondTheStoreThrowsAndWhatWasGivenStays) {
  RuleStore store;
  store.add(1, "", {4});
  store.add(2, "", {4, BEYOND_STORE});
  store.add(3, "", {4});
  store.add(4, "");
  store.give(4, {&store.part('P', LEAF_PART)});
  EXPECT_EQ(out_of_range_text([&] { associate_others(store.file()); }), "invalid vector subscript");
  EXPECT_EQ(store.numbers(), "#1(P2) #2(P3) #3() #4(P1) last(P3)");
}

}  // namespace
}  // namespace Kessel::test
