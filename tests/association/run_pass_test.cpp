// A pass runs its rule over each of its types.
#include <gtest/gtest.h>

#include <functional>

#include "association/passes.h"
#include "association/rule_store.h"
#include "support/split_run.h"

namespace Kessel::test {
namespace {

/// A store in which every rule over the type "HEAD" gives out different numbers.
RuleStore& fill(RuleStore& store) {
  store.add(1, "HEAD", {2, 3, 4});
  store.add(2, "KID", {5});
  store.add(3, "", {6});
  store.add(4, "KID", {7});
  for (const unsigned number : {5u, 6u, 7u}) store.add(number, "");
  Part& p = store.part('P', LEAF_PART);
  Part& q = store.part('Q', ASSEMBLY_PART);
  Part& r = store.part('R', LEAF_PART);
  store.give(1, {&q});
  store.give(2, {&p});
  store.give(3, {&r});
  return store;
}

TEST(RunPass, EveryRuleIsRunWithTheArgumentsOfThePass) {
  const struct {
    Pass pass;
    std::function<void(const Store&)> rule;
  } CASES[] = {
      {{{"HEAD"}, Rules::from_child, LEAVES, 1},
       [](const Store& f) { propagate_from_child(f, "HEAD", 1, LEAVES); }},
      {{{"HEAD"}, Rules::from_children, LEAVES},
       [](const Store& f) { propagate_from_children(f, "HEAD", LEAVES); }},
      {{{"HEAD"}, Rules::to_descendants, ASSEMBLIES},
       [](const Store& f) { propagate_to_descendants(f, "HEAD", ASSEMBLIES); }},
      {{{"HEAD"}, Rules::both_ways, LEAVES},
       [](const Store& f) { propagate_both_ways(f, "HEAD", LEAVES); }},
      {{{"HEAD"}, Rules::gather_and_spread, LEAVES},
       [](const Store& f) { gather_and_spread(f, "HEAD", LEAVES); }},
      {{{"HEAD"}, Rules::from_child_and_down, ALL_PARTS, 1},
       [](const Store& f) { propagate_from_child_and_down(f, "HEAD", 1, ALL_PARTS); }},
      {{{"HEAD"}, Rules::to_children_inside, ASSEMBLIES, 0, {"KID"}},
       [](const Store& f) {
         propagate_to_typed_children(f, {"HEAD"}, {"KID"}, ChildTypes::inside, ASSEMBLIES);
       }},
      {{{"HEAD"}, Rules::to_children_outside, ASSEMBLIES, 0, {"KID"}},
       [](const Store& f) {
         propagate_to_typed_children(f, {"HEAD"}, {"KID"}, ChildTypes::outside, ASSEMBLIES);
       }},
      {{{"HEAD"}, Rules::through_relationships, ALL_PARTS, 0, {"KID"}},
       [](const Store& f) { propagate_through_relationships(f, "HEAD", "KID", 0); }},
      {{{"HEAD"}, Rules::through_usages, ALL_PARTS, 0, {"KID"}},
       [](const Store& f) { propagate_through_usages(f, "HEAD", "KID", 0); }},
      {{{"HEAD"}, Rules::gather_and_spread, ALL_PARTS},
       [](const Store& f) { gather_and_spread(f, "HEAD", ALL_PARTS); }},
  };
  std::set<std::string> outcomes;
  for (const auto& [pass, rule] : CASES) {
    RuleStore store;
    RuleStore direct;
    run_pass(fill(store).file(), pass);
    rule(fill(direct).file());
    EXPECT_EQ(store.numbers(), direct.numbers());
    EXPECT_TRUE(outcomes.insert(store.numbers()).second) << "not told apart: " << store.numbers();
  }
}

TEST(RunPass, TypesAreVisitedInAscendingOrderOfTheirNames) {
  RuleStore store;
  store.add(1, "B", {4});
  store.add(2, "C", {4});
  store.add(3, "A", {4});
  store.add(4, "");
  store.add(5, "B", {4});
  Part& p = store.part('P', LEAF_PART);
  store.give(4, {&p});
  run_pass(store.file(), {{"C", "B", "A"}, Rules::from_children});
  EXPECT_EQ(store.numbers(), "#1(P3) #2(P5) #3(P2) #4(P1) #5(P4) last(P5)");
}

TEST(RunPass, DerivedTypesAreThoseOfTheFile) {
  RuleStore store;
  store.add(1, "MY_SHAPE_REPRESENTATION", {4, 5, 6});
  store.add(2, "SHAPE_DIMENSION_REPRESENTATION", {6});
  store.add(3, "SHAPE_REPRESENTATION_RELATIONSHIP", {6});
  store.add(4, "AXIS2_PLACEMENT_3D");
  store.add(5, "X() GEOMETRIC_REPRESENTATION_CONTEXT(3)");
  store.add(6, "");
  Part& p = store.part('P', LEAF_PART);
  for (const unsigned number : {1u, 2u, 3u}) store.give(number, {&p});
  run_pass(store.file(), {TypeGroup::shape_representations, Rules::to_children_inside, ALL_PARTS, 0,
                          TypeGroup::placements_and_contexts});
  EXPECT_EQ(store.numbers(), "#1(P1) #2(P2) #3(P3) #4(P4) #5(P5) #6() last(P5)");
  run_pass(store.file(), {TypeGroup::shape_representations, Rules::to_children_outside, ALL_PARTS,
                          0, TypeGroup::placements_and_contexts});
  EXPECT_EQ(store.numbers(), "#1(P1) #2(P2) #3(P3) #4(P4) #5(P5) #6(P6) last(P6)");
}

TEST(RunPass, TypeWithoutRecordsDoesNothing) {
  for (const Pass& pass : association_passes()) {
    RuleStore store;
    EXPECT_EQ(printed_by([&] { run_pass(fill(store).file(), pass); }), "");
    EXPECT_EQ(store.numbers(), "#1(Q1) #2(P1) #3(R1) #4() #5() #6() #7() last(P1 Q1 R1)");
  }
}

TEST(RunPass, RecordThatIsTooShortPrintsOneLinePerPassOverIt) {
  const struct {
    std::string_view type;
    std::string_view function;
    int n;
  } CASES[] = {
      {"ASSEMBLY_COMPONENT_USAGE", "propagate_from_child", 0},
      {"NEXT_ASSEMBLY_USAGE_OCCURRENCE", "propagate_from_child", 0},
      {"QUANTIFIED_ASSEMBLY_COMPONENT_USAGE", "propagate_from_child", 0},
      {"PRODUCT_DEFINITION_CONTEXT_ASSOCIATION", "propagate_from_child", 0},
      {"PRODUCT_CATEGORY_RELATIONSHIP", "get_child", 1},
      {"PRODUCT_DEFINITION_SHAPE", "propagate_from_child", 0},
      {"SHAPE_ASPECT", "propagate_from_child", 0},
      {"PROPERTY_DEFINITION", "propagate_from_child", 0},
      {"MATERIAL_PROPERTY", "propagate_from_child", 0},
      {"GENERAL_PROPERTY_RELATIONSHIP", "get_child", 0},
  };
  for (const auto& [type, function, n] : CASES) {
    SCOPED_TRACE(type);
    RuleStore store;
    store.add(1, type);
    store.add(2, "PRODUCT_RELATED_PRODUCT_CATEGORY");
    store.add(3, "GENERAL_PROPERTY");
    Part& p = store.part('P', LEAF_PART);
    store.give(2, {&p});
    store.give(3, {&p});
    std::string expected = "Got an out of range in '";
    expected += function;
    expected += "' while fetching child nb " + std::to_string(n) + '\n';
    EXPECT_EQ(printed_by([&] {
                for (const Pass& pass : association_passes()) run_pass(store.file(), pass);
              }),
              expected);
  }
}

}  // namespace
}  // namespace Kessel::test
