// The rules that move parts along the references of each record of a type.
#include <gtest/gtest.h>

#include "association/rule_store.h"
#include "support/split_run.h"

namespace Kessel::test {
namespace {

/// The record #1 of type "HEAD" over #2, #3 and #4, which have #5, #6 and #7 below them. Q, an
/// assembly, holds #1; P, a leaf, #2; R, a leaf, #3.
struct SingleRecordRules : testing::Test {
  SingleRecordRules() {
    store.add(1, "HEAD", {2, 3, 4});
    store.add(2, "KID", {5});
    store.add(3, "", {6});
    store.add(4, "KID", {7});
    for (const unsigned number : {5u, 6u, 7u}) store.add(number, "");
    store.give(1, {&q});
    store.give(2, {&p});
    store.give(3, {&r});
    // A number that is listed under the type without a record: passed over by every rule.
    store.file().add_type(99, "HEAD");
  }

  RuleStore store;
  Part& p = store.part('P', LEAF_PART);
  Part& q = store.part('Q', ASSEMBLY_PART);
  Part& r = store.part('R', LEAF_PART);
};

using PropagateFromChild = SingleRecordRules;

TEST_F(PropagateFromChild, RecordTakesThePartsOfItsNthReference) {
  propagate_from_child(store.file(), "HEAD", 1, ALL_PARTS);
  EXPECT_EQ(store.numbers(), "#1(Q1 R2) #2(P1) #3(R1) #4() #5() #6() #7() last(P1 Q1 R2)");
  propagate_from_child(store.file(), "HEAD", 0, ALL_PARTS);
  EXPECT_EQ(store.numbers(), "#1(P2 Q1 R2) #2(P1) #3(R1) #4() #5() #6() #7() last(P2 Q1 R2)");
}

TEST_F(PropagateFromChild, FilterChoosesTheParts) {
  propagate_from_child(store.file(), "HEAD", 0, ASSEMBLIES);
  EXPECT_EQ(store.numbers(), "#1(Q1) #2(P1) #3(R1) #4() #5() #6() #7() last(P1 Q1 R1)");
  propagate_from_child(store.file(), "HEAD", 0, LEAVES);
  EXPECT_EQ(store.numbers(), "#1(P2 Q1) #2(P1) #3(R1) #4() #5() #6() #7() last(P2 Q1 R1)");
}

TEST_F(PropagateFromChild, EveryRecordThatIsTooShortPrintsOneLine) {
  store.add(8, "HEAD", {2});
  store.add(9, "HEAD");
  store.add(10, "HEAD", {4, 3});
  EXPECT_EQ(printed_by([&] { propagate_from_child(store.file(), "HEAD", 1, ALL_PARTS); }),
            "Got an out of range in 'propagate_from_child' while fetching child nb 1\n"
            "Got an out of range in 'propagate_from_child' while fetching child nb 1\n");
  EXPECT_EQ(store.numbers(),
            "#1(Q1 R2) #2(P1) #3(R1) #4() #5() #6() #7() #8() #9() #10(R3) last(P1 Q1 R3)");
}

TEST_F(PropagateFromChild, LineNamesThePosition) {
  EXPECT_EQ(printed_by([&] { propagate_from_child(store.file(), "HEAD", 3, ALL_PARTS); }),
            "Got an out of range in 'propagate_from_child' while fetching child nb 3\n");
  EXPECT_EQ(printed_by([&] { propagate_from_child(store.file(), "HEAD", 65535, ALL_PARTS); }),
            "Got an out of range in 'propagate_from_child' while fetching child nb 65535\n");
}

TEST_F(PropagateFromChild, ReferenceBeyondTheStoreThrowsAndAnEmptySlotGivesNothing) {
  store.add(8, "OTHER", {77, BEYOND_STORE});
  EXPECT_EQ(printed_by([&] { propagate_from_child(store.file(), "OTHER", 0, ALL_PARTS); }), "");
  EXPECT_TRUE(store.at(8)->part_numbers.empty());
  EXPECT_EQ(out_of_range_text([&] { propagate_from_child(store.file(), "OTHER", 1, ALL_PARTS); }),
            "invalid vector subscript");
}

using PropagateFromChildren = SingleRecordRules;

TEST_F(PropagateFromChildren, RecordTakesThePartsOfAllItsReferences) {
  propagate_from_children(store.file(), "HEAD", ALL_PARTS);
  EXPECT_EQ(store.numbers(), "#1(P2 Q1 R2) #2(P1) #3(R1) #4() #5() #6() #7() last(P2 Q1 R2)");
}

TEST_F(PropagateFromChildren, RecordsAreVisitedInTheOrderOfTheFile) {
  store.add(20, "HEAD", {2});
  store.add(8, "HEAD", {2, 20});
  store.add(9, "HEAD", {10});
  store.add(10, "HEAD", {2});
  propagate_from_children(store.file(), "HEAD", LEAVES);
  EXPECT_EQ(store.numbers(),
            "#1(P2 Q1 R2) #2(P1) #3(R1) #4() #5() #6() #7() #20(P3) #8(P4) #9() #10(P5) "
            "last(P5 Q1 R2)");
}

TEST_F(PropagateFromChildren, FilterChoosesTheParts) {
  propagate_from_children(store.file(), "HEAD", ASSEMBLIES);
  EXPECT_EQ(store.numbers(), "#1(Q1) #2(P1) #3(R1) #4() #5() #6() #7() last(P1 Q1 R1)");
}

TEST_F(PropagateFromChildren, RecordWithoutReferencesTakesNothingSilently) {
  store.add(8, "BARE");
  EXPECT_EQ(printed_by([&] { propagate_from_children(store.file(), "BARE", ALL_PARTS); }), "");
  EXPECT_TRUE(store.at(8)->part_numbers.empty());
}

TEST_F(PropagateFromChildren, PartsTakenBeforeAReferenceBeyondTheStoreStay) {
  store.add(8, "OTHER", {77, 2, BEYOND_STORE, 3});
  EXPECT_EQ(out_of_range_text([&] { propagate_from_children(store.file(), "OTHER", ALL_PARTS); }),
            "invalid vector subscript");
  EXPECT_EQ(store.numbers(), "#1(Q1) #2(P1) #3(R1) #4() #5() #6() #7() #8(P2) last(P2 Q1 R1)");
}

using PropagateToDescendants = SingleRecordRules;

TEST_F(PropagateToDescendants, RecordSpreadsItsPartsThroughOneReferenceAfterTheOther) {
  propagate_to_descendants(store.file(), "HEAD", ALL_PARTS);
  EXPECT_EQ(store.numbers(),
            "#1(Q1) #2(P1 Q2) #3(Q4 R1) #4(Q6) #5(Q3) #6(Q5) #7(Q7) last(P1 Q7 R1)");
}

TEST_F(PropagateToDescendants, FilterChoosesTheParts) {
  propagate_to_descendants(store.file(), "HEAD", LEAVES);
  EXPECT_EQ(store.numbers(), "#1(Q1) #2(P1) #3(R1) #4() #5() #6() #7() last(P1 Q1 R1)");
}

using PropagateBothWays = SingleRecordRules;

TEST_F(PropagateBothWays, RecordGathersFirstAndThenGivesToItsReferencesOnly) {
  propagate_both_ways(store.file(), "HEAD", ALL_PARTS);
  EXPECT_EQ(store.numbers(),
            "#1(P2 Q1 R2) #2(P1 Q2 R3) #3(P3 Q3 R1) #4(P4 Q4 R4) #5() #6() #7() last(P4 Q4 R4)");
}

TEST_F(PropagateBothWays, FilterChoosesThePartsInBothDirections) {
  propagate_both_ways(store.file(), "HEAD", LEAVES);
  EXPECT_EQ(store.numbers(),
            "#1(P2 Q1 R2) #2(P1 R3) #3(P3 R1) #4(P4 R4) #5() #6() #7() last(P4 Q1 R4)");
}

TEST_F(PropagateBothWays, ReferencesWithoutARecordArePassedOver) {
  store.add(8, "OTHER", {77, 2, 0, 4});
  propagate_both_ways(store.file(), "OTHER", ALL_PARTS);
  EXPECT_EQ(store.numbers(), "#1(Q1) #2(P1) #3(R1) #4(P3) #5() #6() #7() #8(P2) last(P3 Q1 R1)");
}

using GatherAndSpread = SingleRecordRules;

TEST_F(GatherAndSpread, RecordGathersFirstAndThenSpreadsToEverythingBelow) {
  gather_and_spread(store.file(), "HEAD", ALL_PARTS);
  EXPECT_EQ(store.numbers(),
            "#1(P2 Q1 R2) #2(P1 Q2 R3) #3(P4 Q4 R1) #4(P6 Q6 R6) #5(P3 Q3 R4) #6(P5 Q5 R5) "
            "#7(P7 Q7 R7) last(P7 Q7 R7)");
}

TEST_F(GatherAndSpread, FilterChoosesThePartsInBothDirections) {
  gather_and_spread(store.file(), "HEAD", ASSEMBLIES);
  EXPECT_EQ(store.numbers(),
            "#1(Q1) #2(P1 Q2) #3(Q4 R1) #4(Q6) #5(Q3) #6(Q5) #7(Q7) last(P1 Q7 R1)");
}

using PropagateFromChildAndDown = SingleRecordRules;

TEST_F(PropagateFromChildAndDown, RecordTakesFromOneReferenceAndSpreadsToEverythingBelow) {
  propagate_from_child_and_down(store.file(), "HEAD", 1, ALL_PARTS);
  EXPECT_EQ(store.numbers(),
            "#1(Q1 R2) #2(P1 Q2 R3) #3(Q4 R1) #4(Q6 R6) #5(Q3 R4) #6(Q5 R5) #7(Q7 R7) "
            "last(P1 Q7 R7)");
}

TEST_F(PropagateFromChildAndDown, FilterChoosesThePartsInBothDirections) {
  propagate_from_child_and_down(store.file(), "HEAD", 0, ASSEMBLIES);
  EXPECT_EQ(store.numbers(),
            "#1(Q1) #2(P1 Q2) #3(Q4 R1) #4(Q6) #5(Q3) #6(Q5) #7(Q7) last(P1 Q7 R1)");
}

TEST_F(PropagateFromChildAndDown, RecordThatIsTooShortPrintsOneLineAndSpreadsAllTheSame) {
  store.add(8, "SHORT", {9});
  store.add(9, "", {10});
  store.add(10, "");
  store.give(8, {&q});
  EXPECT_EQ(
      printed_by([&] { propagate_from_child_and_down(store.file(), "SHORT", 1, ASSEMBLIES); }),
      "Got an out of range in 'propagate_from_child' while fetching child nb 1\n");
  EXPECT_EQ(store.numbers(),
            "#1(Q1) #2(P1) #3(R1) #4() #5() #6() #7() #8(Q2) #9(Q3) #10(Q4) last(P1 Q4 R1)");
}

using PropagateToTypedChildren = SingleRecordRules;

TEST_F(PropagateToTypedChildren, InsideFollowsReferencesToTheTypesOfTheSet) {
  propagate_to_typed_children(store.file(), {"HEAD"}, {"KID", "TOY"}, ChildTypes::inside,
                              ALL_PARTS);
  EXPECT_EQ(store.numbers(), "#1(Q1) #2(P1 Q2) #3(R1) #4(Q4) #5(Q3) #6() #7(Q5) last(P1 Q5 R1)");
}

TEST_F(PropagateToTypedChildren, OutsideFollowsTheOthersUntypedRecordsIncluded) {
  propagate_to_typed_children(store.file(), {"HEAD"}, {"KID", "TOY"}, ChildTypes::outside,
                              ALL_PARTS);
  EXPECT_EQ(store.numbers(), "#1(Q1) #2(P1) #3(Q2 R1) #4() #5() #6(Q3) #7() last(P1 Q3 R1)");
}

TEST_F(PropagateToTypedChildren, OnlyTheFirstLevelIsChosenByType) {
  store.add(8, "TOP", {1});
  store.give(8, {&q});
  propagate_to_typed_children(store.file(), {"TOP"}, {"HEAD"}, ChildTypes::inside, ALL_PARTS);
  EXPECT_EQ(store.numbers(), "#1(Q1) #2(P1) #3(R1) #4() #5() #6() #7() #8(Q2) last(P1 Q2 R1)");
  store.give(8, {&p});
  propagate_to_typed_children(store.file(), {"TOP"}, {"HEAD"}, ChildTypes::inside, LEAVES);
  EXPECT_EQ(store.numbers(),
            "#1(P3 Q1) #2(P1) #3(P4 R1) #4(P5) #5() #6(P6) #7(P7) #8(P2 Q2) last(P7 Q2 R1)");
}

TEST_F(PropagateToTypedChildren, NamesMustBeEqual) {
  propagate_to_typed_children(store.file(), {"HEAD"}, {"KI", "KIDS", "kid"}, ChildTypes::inside,
                              ALL_PARTS);
  EXPECT_EQ(store.numbers(), "#1(Q1) #2(P1) #3(R1) #4() #5() #6() #7() last(P1 Q1 R1)");
}

TEST_F(PropagateToTypedChildren, FilterChoosesTheParts) {
  propagate_to_typed_children(store.file(), {"HEAD"}, {}, ChildTypes::outside, LEAVES);
  EXPECT_EQ(store.numbers(), "#1(Q1) #2(P1) #3(R1) #4() #5() #6() #7() last(P1 Q1 R1)");
}

TEST_F(PropagateToTypedChildren, EmptySlotIsNeitherInsideNorOutside) {
  store.add(8, "TOP", {77, 4});
  store.give(8, {&q});
  propagate_to_typed_children(store.file(), {"TOP"}, {""}, ChildTypes::inside, ALL_PARTS);
  propagate_to_typed_children(store.file(), {"TOP"}, {""}, ChildTypes::outside, ALL_PARTS);
  EXPECT_EQ(store.numbers(), "#1(Q1) #2(P1) #3(R1) #4(Q3) #5() #6() #7(Q4) #8(Q2) last(P1 Q4 R1)");
}

TEST_F(SingleRecordRules, TypeWithoutRecordsDoesNothing) {
  const std::string before = store.numbers();
  EXPECT_EQ(printed_by([&] {
              propagate_from_child(store.file(), "NONE", 9, ALL_PARTS);
              propagate_from_children(store.file(), "NONE", ALL_PARTS);
              propagate_to_descendants(store.file(), "NONE", ALL_PARTS);
              propagate_both_ways(store.file(), "NONE", ALL_PARTS);
              gather_and_spread(store.file(), "NONE", ALL_PARTS);
              propagate_from_child_and_down(store.file(), "NONE", 9, ALL_PARTS);
              propagate_to_typed_children(store.file(), {"NONE"}, {}, ChildTypes::outside,
                                          ALL_PARTS);
            }),
            "");
  EXPECT_EQ(store.numbers(), before);
}

TEST_F(SingleRecordRules, DownwardRulesThrowOverAReferenceBeyondTheStore) {
  store.add(8, "OTHER", {4, BEYOND_STORE});
  store.give(8, {&p});
  const auto text = [&](auto rule) { return out_of_range_text([&] { rule(store.file()); }); };
  constexpr char EXPECTED[] = "invalid vector subscript";
  EXPECT_EQ(text([](const Store& f) { propagate_to_descendants(f, "OTHER", ALL_PARTS); }),
            EXPECTED);
  EXPECT_EQ(text([](const Store& f) { propagate_both_ways(f, "OTHER", ALL_PARTS); }), EXPECTED);
  EXPECT_EQ(text([](const Store& f) { gather_and_spread(f, "OTHER", ALL_PARTS); }), EXPECTED);
  EXPECT_EQ(text([](const Store& f) { propagate_from_child_and_down(f, "OTHER", 0, ALL_PARTS); }),
            EXPECTED);
  EXPECT_EQ(text([](const Store& f) {
              propagate_to_typed_children(f, {"OTHER"}, {}, ChildTypes::inside, ALL_PARTS);
            }),
            EXPECTED);
}

}  // namespace
}  // namespace Kessel::test
