// The rules that only lean and nested splits have, and what their passes differ in from classic.
#include <gtest/gtest.h>

#include <algorithm>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

#include "association/numbers_text.h"
#include "association/passes.h"
#include "association/rule_store.h"

namespace Kessel::test {
namespace {

TEST(GatherAndSpreadToLeaves, RecordThatALeafReachesMovesLeavesOnly) {
  RuleStore store;
  store.add(1, "LINK", {2, 3});
  store.add(2, "");
  store.add(3, "", {4});
  store.add(4, "");
  Part& leaf = store.part('L', LEAF_PART);
  Part& assembly = store.part('A', ASSEMBLY_PART);
  store.give(2, {&leaf, &assembly});
  gather_and_spread_to_leaves(store.file(), "LINK");
  EXPECT_EQ(store.numbers(), "#1(L2) #2(L1 A1) #3(L3) #4(L4) last(L4 A1)");
}

TEST(GatherAndSpreadToLeaves, RecordThatNoLeafReachesMovesAssemblies) {
  RuleStore store;
  store.add(1, "LINK", {2, 3});
  store.add(2, "");
  store.add(3, "", {4});
  store.add(4, "");
  Part& a = store.part('A', ASSEMBLY_PART);
  Part& b = store.part('B', ASSEMBLY_PART);
  store.give(2, {&a});
  store.give(4, {&b});
  gather_and_spread_to_leaves(store.file(), "LINK");
  EXPECT_EQ(store.numbers(), "#1(A2) #2(A1) #3(A3) #4(A4 B1) last(A4 B1)");
}

TEST(GatherAndSpreadToLeaves, LeafIsFoundAtAnyReferenceButNotBelowIt) {
  RuleStore store;
  store.add(1, "LINK", {2, 0, 3});  // The leaf is at the last one; nothing has the number 0.
  store.add(2, "");
  store.add(3, "");
  store.add(4, "LINK", {5, 6});
  store.add(5, "");
  store.add(6, "", {7});
  store.add(7, "");
  Part& leaf = store.part('L', LEAF_PART);
  Part& assembly = store.part('A', ASSEMBLY_PART);
  store.give(2, {&assembly});
  store.give(3, {&leaf});
  store.give(5, {&assembly});
  store.give(7, {&leaf});
  gather_and_spread_to_leaves(store.file(), "LINK");
  EXPECT_EQ(store.numbers(), "#1(L3) #2(L4 A1) #3(L1) #4(A3) #5(A2) #6(A4) #7(L2 A5) last(L4 A5)");
}

TEST(StylesToTheirItems, StyledItemTakesThePartsOfItsItemAndSpreadsThemToItsStyles) {
  RuleStore store;
  store.add(1, "STYLED_ITEM", {2, 3});
  store.add(2, "STYLE", {4});
  store.add(3, "SOLID", {5});
  store.add(4, "COLOUR");
  store.add(5, "SHELL");
  Part& p = store.part('P', LEAF_PART);
  store.give(3, {&p});
  store.give(5, {&p});
  styles_to_their_items(store.file(), "STYLED_ITEM");
  EXPECT_EQ(store.numbers(), "#1(P3) #2(P4) #3(P1) #4(P5) #5(P2) last(P5)");
}

TEST(StylesToTheirItems, SharedStyleBringsNoOtherPartToTheItem) {
  RuleStore store;
  store.add(1, "STYLED_ITEM", {2, 3});
  store.add(2, "STYLE");
  store.add(3, "SOLID");
  Part& p = store.part('P', LEAF_PART);
  Part& q = store.part('Q', ASSEMBLY_PART);
  store.give(2, {&q});
  store.give(3, {&p});
  styles_to_their_items(store.file(), "STYLED_ITEM");
  EXPECT_EQ(store.numbers(), "#1(P2) #2(P3 Q1) #3(P1) last(P3 Q1)");
}

TEST(StylesToTheirItems, OverridingItemTakesThePartsOfWhatStandsBeforeTheOverridden) {
  RuleStore store;
  store.add(1, "OVER_RIDING_STYLED_ITEM", {2, 3, 4, 5});
  store.add(2, "STYLE");
  store.add(3, "FACE");
  store.add(4, "STYLED_ITEM");
  store.add(5, "CONTEXT");
  Part& p = store.part('P', LEAF_PART);
  Part& q = store.part('Q', LEAF_PART);
  Part& r = store.part('R', LEAF_PART);
  store.give(3, {&p});
  store.give(4, {&q});
  store.give(5, {&r});
  styles_to_their_items(store.file(), "OVER_RIDING_STYLED_ITEM");
  EXPECT_EQ(store.numbers(), "#1(P2) #2(P3) #3(P1) #4(P4 Q1) #5(P5 R1) last(P5 Q1 R1)");
}

TEST(StylesToTheirItems, ItemThatIsNotThereBringsNothing) {
  RuleStore store;
  store.add(1, "STYLED_ITEM");
  store.add(2, "STYLED_ITEM", {3, 0});
  store.add(3, "STYLE");
  Part& p = store.part('P', LEAF_PART);
  store.give(3, {&p});
  styles_to_their_items(store.file(), "STYLED_ITEM");
  EXPECT_EQ(store.numbers(), "#1() #2() #3(P1) last(P1)");
}

// Three definitions, each of the same product.
const std::string DEFINITIONS =
    "#1=FORMATION(#2);\n"
    "#2=PRODUCT('','','',());\n"
    "#3=PRODUCT_DEFINITION('','',#1);\n"
    "#13=PRODUCT_DEFINITION('','',#1);\n"
    "#23=PRODUCT_DEFINITION('','',#1);\n";

TEST(UsagesToTheirAssemblies, EachUsageBelongsToTheAssemblyThatItStartsFrom) {
  const auto file = read_structure(DEFINITIONS +
                                   "#30=NEXT_ASSEMBLY_USAGE_OCCURRENCE('',#3,#13);\n"
                                   "#31=NEXT_ASSEMBLY_USAGE_OCCURRENCE('',#13,#23);\n"
                                   "#32=NEXT_ASSEMBLY_USAGE_OCCURRENCE('',#3,#23);\n");
  usages_to_their_assemblies(*file, "NEXT_ASSEMBLY_USAGE_OCCURRENCE");
  const std::string expected =
      "#1: \n"
      "#2: \n"
      "#3: \n"
      "#13: \n"
      "#23: \n"
      "#30: #3=1\n"
      "#31: #13=1\n"
      "#32: #3=2\n"
      "last: #3=2 #13=1 #23=0\n";
  EXPECT_EQ(numbers_of(*file), expected);
  usages_to_their_assemblies(*file, "NEXT_ASSEMBLY_USAGE_OCCURRENCE");
  EXPECT_EQ(numbers_of(*file), expected);
}

TEST(UsagesToTheirAssemblies, UsageOfNoAssemblyBelongsToNone) {
  RuleStore store;
  store.add(1, "USAGE");
  store.add(2, "USAGE", {4, 5});
  store.add(3, "USAGE", {0, 5});
  store.add(4, "");
  store.add(5, "");
  Part& p = store.part('P', ASSEMBLY_PART);
  store.give(4, {&p});
  usages_to_their_assemblies(store.file(), "USAGE");
  EXPECT_EQ(store.numbers(), "#1() #2() #3() #4(P1) #5() last(P1)");
}

TEST(TopsToGeneratedRoot, RootGetsTheDefinitionsThatNothingUsesAndWhatIsBelowThem) {
  const auto file =
      read_structure(DEFINITIONS + "#30=NEXT_ASSEMBLY_USAGE_OCCURRENCE('',#3,#13);\n");
  tops_to_generated_root(*file, "PRODUCT_DEFINITION");
  const std::string expected =
      "#1: root=2\n"
      "#2: root=3\n"
      "#3: root=1\n"
      "#13: \n"
      "#23: root=4\n"
      "#30: \n"
      "root: \n"
      "last: #3=0 #13=0 #23=0 root=4\n";
  EXPECT_EQ(numbers_of(*file), expected);
  tops_to_generated_root(*file, "PRODUCT_DEFINITION");
  EXPECT_EQ(numbers_of(*file), expected);
}

TEST(TopsToGeneratedRoot, NothingHappensWhereTheRootIsOneOfTheParts) {
  const auto file = read_structure(DEFINITIONS +
                                   "#30=NEXT_ASSEMBLY_USAGE_OCCURRENCE('',#3,#13);\n"
                                   "#31=NEXT_ASSEMBLY_USAGE_OCCURRENCE('',#3,#23);\n");
  const std::string before = numbers_of(*file);
  tops_to_generated_root(*file, "PRODUCT_DEFINITION");
  EXPECT_EQ(numbers_of(*file), before);
}

TEST(TopsToGeneratedRoot, NothingHappensWithoutARoot) {
  RuleStore store;
  store.add(1, "PRODUCT_DEFINITION");
  tops_to_generated_root(store.file(), "PRODUCT_DEFINITION");
  EXPECT_EQ(store.numbers(), "#1() last()");
}

/// A row of the table.
struct Row {
  Rule rule;
  KindFilter filter;
  int n;
  std::vector<std::string_view> names;
  TypeGroup group;
  TypeGroup other_group;

  bool operator==(const Row&) const = default;
};

void PrintTo(const Row& row, std::ostream* out) {
  *out << "rule at " << reinterpret_cast<std::uintptr_t>(row.rule) << " filter " << row.filter << " n " << row.n
       << " group " << static_cast<int>(row.group) << " other "
       << static_cast<int>(row.other_group);
  for (const std::string_view name : row.names) *out << ' ' << name;
}

std::vector<Row> rows_of(AssemblyStyle style) {
  std::vector<Row> rows;
  for (const Pass& pass : association_passes(style)) {
    rows.push_back(
        {pass.rule, pass.filter, pass.n, pass.types.names, pass.types.group, pass.other.group});
  }
  return rows;
}

/// The one row of these types and this rule.
std::vector<Row>::iterator find_row(std::vector<Row>& rows, std::string_view name, Rule rule) {
  const auto is_it = [&](const Row& row) {
    return row.rule == rule && !row.names.empty() && row.names.front() == name;
  };
  EXPECT_EQ(std::count_if(rows.begin(), rows.end(), is_it), 1) << name;
  return std::find_if(rows.begin(), rows.end(), is_it);
}

using namespace Rules;
using enum TypeGroup;

/// Puts the styles' own rule where classic gathers and spreads.
void follow_items_only(std::vector<Row>& rows) {
  for (const std::string_view type :
       {"STYLED_ITEM", "OVER_RIDING_STYLED_ITEM", "CONTEXT_DEPENDENT_OVER_RIDING_STYLED_ITEM"}) {
    find_row(rows, type, Rules::gather_and_spread)->rule = styles_to_items;
  }
}

const std::vector<std::string_view> USAGES = {"ASSEMBLY_COMPONENT_USAGE",
                                              "NEXT_ASSEMBLY_USAGE_OCCURRENCE",
                                              "QUANTIFIED_ASSEMBLY_COMPONENT_USAGE"};

TEST(PassesOfStyles, ClassicIsTheDefault) {
  const std::vector<Row> classic = rows_of(AssemblyStyle::classic);
  EXPECT_EQ(association_passes().size(), classic.size());
  for (const Row& row : classic) {
    EXPECT_NE(row.rule, spread_to_leaves);
    EXPECT_NE(row.rule, styles_to_items);
    EXPECT_NE(row.rule, usages_to_assemblies);
    EXPECT_NE(row.rule, tops_to_root);
  }
}

TEST(PassesOfStyles, LeanKeepsGeometryAndStylesWithLeaves) {
  std::vector<Row> expected = rows_of(AssemblyStyle::classic);
  find_row(expected, "SHAPE_REPRESENTATION_RELATIONSHIP", Rules::gather_and_spread)->rule =
      spread_to_leaves;
  follow_items_only(expected);
  EXPECT_EQ(rows_of(AssemblyStyle::lean), expected);
}

TEST(PassesOfStyles, NestedGivesUsagesToTheirAssembliesAndEndsWithTheComponents) {
  std::vector<Row> expected = rows_of(AssemblyStyle::classic);
  *find_row(expected, USAGES.front(), from_child_and_down) = {
      usages_to_assemblies, ALL_PARTS, 0, USAGES, none, none};
  expected.erase(find_row(expected, "NEXT_ASSEMBLY_USAGE_OCCURRENCE", through_usages));
  follow_items_only(expected);
  // Parts start in their own files, so no filter has to keep assemblies out of anything.
  for (Row& row : expected) {
    if (row.filter == LEAVES) row.filter = ALL_PARTS;
  }
  const std::vector<Row> components = {
      {to_descendants, ALL_PARTS, 0, USAGES, none, none},
      {tops_to_root,
       ALL_PARTS,
       0,
       {"PRODUCT_DEFINITION", "PRODUCT_DEFINITION_WITH_ASSOCIATED_DOCUMENTS"},
       none,
       none},
      {from_child, ALL_PARTS, 0, {"PRODUCT_DEFINITION_SHAPE"}, none, none},
      {both_ways, ALL_PARTS, 0, {"SHAPE_DEFINITION_REPRESENTATION"}, none, none},
      {to_children_inside, ALL_PARTS, 0, {}, shape_representations, placements_and_contexts},
      {both_ways, ALL_PARTS, 0, {"CONTEXT_DEPENDENT_SHAPE_REPRESENTATION"}, none, none},
      {to_children_outside, ALL_PARTS, 0, {}, transformations, shape_representations},
  };
  expected.insert(expected.end(), components.begin(), components.end());
  EXPECT_EQ(rows_of(AssemblyStyle::nested), expected);
}

}  // namespace
}  // namespace Kessel::test
