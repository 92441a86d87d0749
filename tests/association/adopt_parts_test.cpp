// The step that all rules are made of: one instance takes the parts of another.
#include <gtest/gtest.h>

#include "association/rule_store.h"

namespace Kessel::test {
namespace {

/// The records #1, #2 and #3, the assemblies P and R, and the leaves Q and S.
struct AdoptParts : testing::Test {
  AdoptParts() {
    for (const unsigned number : {1u, 2u, 3u}) store.add(number, "");
  }
  bool adopt(unsigned source, unsigned target, KindFilter filter = ALL_PARTS) {
    return adopt_parts(store.at(source), store.at(target), filter);
  }

  RuleStore store;
  Part& p = store.part('P', ASSEMBLY_PART);
  Part& q = store.part('Q', LEAF_PART);
  Part& r = store.part('R', ASSEMBLY_PART);
  Part& s = store.part('S', LEAF_PART);
};

TEST_F(AdoptParts, TargetGetsTheNextNumberOfEveryPartOfTheSource) {
  store.give(3, {&p, &q});
  store.give(1, {&q, &p});
  EXPECT_TRUE(adopt(1, 2));
  EXPECT_EQ(store.numbers(), "#1(P2 Q2) #2(P3 Q3) #3(P1 Q1) last(P3 Q3 R0 S0)");
}

TEST_F(AdoptParts, SourceWithoutPartsGivesNone) {
  store.give(2, {&p});
  EXPECT_FALSE(adopt(1, 2));
  EXPECT_EQ(store.numbers(), "#1() #2(P1) #3() last(P1 Q0 R0 S0)");
}

TEST_F(AdoptParts, NumberOfAPartThatIsHeldAlreadyStaysAndNoneIsUsedUp) {
  store.give(1, {&p, &q});
  store.give(2, {&p});
  EXPECT_TRUE(adopt(1, 2));
  EXPECT_EQ(store.numbers(), "#1(P1 Q1) #2(P2 Q2) #3() last(P2 Q2 R0 S0)");
  EXPECT_FALSE(adopt(1, 2));
  EXPECT_EQ(store.numbers(), "#1(P1 Q1) #2(P2 Q2) #3() last(P2 Q2 R0 S0)");
}

TEST_F(AdoptParts, TargetKeepsPartsThatTheSourceLacks) {
  store.give(1, {&q, &s});
  store.give(2, {&p, &r});
  EXPECT_TRUE(adopt(1, 2));
  EXPECT_EQ(store.numbers(), "#1(Q1 S1) #2(P1 Q2 R1 S2) #3() last(P1 Q2 R1 S2)");
}

TEST_F(AdoptParts, InstanceAdoptsNothingFromItself) {
  store.give(1, {&p, &q});
  EXPECT_FALSE(adopt(1, 1));
  EXPECT_EQ(store.numbers(), "#1(P1 Q1) #2() #3() last(P1 Q1 R0 S0)");
  store.give(2, {&p});
  EXPECT_FALSE(adopt(2, 2));
  EXPECT_EQ(store.numbers(), "#1(P1 Q1) #2(P2) #3() last(P2 Q1 R0 S0)");
}

TEST_F(AdoptParts, FilterForLeavesPassesOnlyPartsOfKindTwo) {
  store.give(1, {&p, &q, &r, &s});
  EXPECT_TRUE(adopt(1, 2, LEAVES));
  EXPECT_EQ(store.numbers(), "#1(P1 Q1 R1 S1) #2(Q2 S2) #3() last(P1 Q2 R1 S2)");
}

TEST_F(AdoptParts, FilterForAssembliesPassesOnlyPartsOfKindOne) {
  store.give(1, {&p, &q, &r, &s});
  EXPECT_TRUE(adopt(1, 2, ASSEMBLIES));
  EXPECT_EQ(store.numbers(), "#1(P1 Q1 R1 S1) #2(P2 R2) #3() last(P2 Q1 R2 S1)");
}

TEST_F(AdoptParts, FilterForLeavesAddsNothingFromAnInstanceOfAnAssemblyOnly) {
  store.give(1, {&p});
  EXPECT_FALSE(adopt(1, 2, LEAVES));
  EXPECT_EQ(store.numbers(), "#1(P1) #2() #3() last(P1 Q0 R0 S0)");
}

TEST_F(AdoptParts, PartThatWasNotClassifiedPassesOnlyWithoutAFilter) {
  p.part_kind = UNCLASSIFIED_PART;
  store.give(1, {&p});
  EXPECT_FALSE(adopt(1, 2, LEAVES));
  EXPECT_FALSE(adopt(1, 2, ASSEMBLIES));
  EXPECT_TRUE(adopt(1, 2, ALL_PARTS));
  EXPECT_EQ(store.numbers(), "#1(P1) #2(P2) #3() last(P2 Q0 R0 S0)");
}

TEST_F(AdoptParts, EitherInstanceMayBeMissing) {
  store.give(1, {&p});
  EXPECT_FALSE(adopt_parts(nullptr, store.at(1), ALL_PARTS));
  EXPECT_FALSE(adopt_parts(store.at(1), nullptr, ALL_PARTS));
  EXPECT_FALSE(adopt_parts(nullptr, nullptr, ALL_PARTS));
  EXPECT_EQ(store.numbers(), "#1(P1) #2() #3() last(P1 Q0 R0 S0)");
}

TEST_F(AdoptParts, PartsOfAnInstanceAreInTheOrderOfTheListWhateverTheirAddresses) {
  // In an array the addresses ascend; the positions in the list descend.
  Part parts[] = {Part("C"), Part("B"), Part("A")};
  std::uint32_t position = 3;
  for (Part& part : parts) part.list_position = --position;
  for (Part& part : parts) store.at(1)->part_numbers.emplace(&part, 1);
  ASSERT_TRUE(adopt(1, 2));
  store.at(3)->part_numbers.emplace(&parts[1], 7);
  ASSERT_TRUE(adopt(1, 3));
  for (const unsigned number : {1u, 2u, 3u}) {
    SCOPED_TRACE(number);
    std::string order;
    for (const auto& [part, value] : store.at(number)->part_numbers) order += part->type();
    EXPECT_EQ(order, "ABC");
  }
}

TEST(AdoptPartsAtRandom, GivesTheNumbersOfOneInsertionAfterTheOther) {
  for (unsigned seed = 0; seed < 300; ++seed) {
    SCOPED_TRACE(seed);
    RuleStore store;
    RuleStore plain;
    fill_at_random(store, seed, 12);
    fill_at_random(plain, seed, 12);
    std::mt19937 random(seed);
    for (int i = 0; i < 60; ++i) {
      const auto source = static_cast<unsigned>(1 + random() % 12);
      const auto target = static_cast<unsigned>(1 + random() % 12);
      const auto filter = static_cast<KindFilter>(random() % 3);
      ASSERT_EQ(adopt_parts(store.at(source), store.at(target), filter),
                plainly_adopt(plain.at(source), plain.at(target), filter));
    }
    ASSERT_EQ(store.numbers(), plain.numbers());
  }
}

}  // namespace
}  // namespace Kessel::test
