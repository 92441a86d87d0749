// What diff says about small files.
#include "kessel/diff.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

#include "kessel/errors.h"
#include "sameness/plain_file.h"
#include "sameness/symmetrical_records.h"
#include "support/scratch_folder.h"

namespace Kessel::test {
namespace {

/// A product with a body, its records from #n on; #1 is a context of products, #2 one of shapes.
std::string product(int n, const std::string& name, const std::string& items) {
  const auto at = [n](int i) { return "#" + std::to_string(n + i); };
  return at(0) + "=PRODUCT('" + name + "','" + name + "','',(#1));\n" + at(1) +
         "=PRODUCT_DEFINITION_FORMATION('',''," + at(0) + ");\n" + at(2) +
         "=PRODUCT_DEFINITION('',''," + at(1) + ",#1);\n" + at(3) +
         "=PRODUCT_DEFINITION_SHAPE('',''," + at(2) + ");\n" + at(4) +
         "=SHAPE_DEFINITION_REPRESENTATION(" + at(3) + "," + at(5) + ");\n" + at(5) +
         "=SHAPE_REPRESENTATION('',(" + items + "),#2);\n";
}

const std::string CONTEXTS = "#1=PRODUCT_CONTEXT('','');\n#2=REPRESENTATION_CONTEXT('','');\n";

/// A body from #n on, of two vertices.
std::string body(int n, const std::string& place = "1.") {
  const auto at = [n](int i) { return "#" + std::to_string(n + i); };
  return at(0) + "=MANIFOLD_SOLID_BREP(''," + at(1) + ");\n" + at(1) + "=CLOSED_SHELL('',(" +
         at(2) + "," + at(3) + "));\n" + at(2) + "=VERTEX_POINT(''," + at(4) + ");\n" + at(3) +
         "=VERTEX_POINT(''," + at(5) + ");\n" + at(4) + "=CARTESIAN_POINT('',(0.,0.));\n" + at(5) +
         "=CARTESIAN_POINT('',(" + place + ",0.));\n";
}

std::string numbers(const std::vector<std::uint64_t>& records) {
  std::string text;
  for (const std::uint64_t record : records) text += " #" + std::to_string(record);
  return text;
}

/// All that a difference lists, a line for each type.
std::string lines_of(const Difference& difference) {
  std::string text;
  for (const ProductDifference& product : difference.products) {
    text += product.name + " " + std::to_string(product.definition_in_a) + " " +
            std::to_string(product.definition_in_b) + "\n";
    for (const TypeDifference& type : product.types) {
      text += "  " + type.type;
      if (!type.only_in_a.empty()) text += " -" + numbers(type.only_in_a);
      if (!type.only_in_b.empty()) text += " +" + numbers(type.only_in_b);
      for (const ChangedRecord& record : type.changed) {
        text += " ~ #" + std::to_string(record.in_a) + " #" + std::to_string(record.in_b);
        for (const ChangedParameter& parameter : record.parameters) {
          text += " [" + parameter.keyword + " " + std::to_string(parameter.place) + ": " +
                  parameter.in_a + " -> " + parameter.in_b + "]";
        }
      }
      text += "\n";
    }
  }
  return text;
}

class Diff : public testing::Test {
 protected:
  Difference compared(const std::string& a, const std::string& b) {
    folder_.write("a.stp", file_of(a));
    folder_.write("b.stp", file_of(b));
    return diff("a.stp", "b.stp");
  }
  /// "same", or what differs.
  std::string difference(const std::string& a, const std::string& b) {
    const Difference found = compared(a, b);
    EXPECT_TRUE(found.is_certain);
    EXPECT_EQ(found.is_same, lines_of(found).empty());
    return found.is_same ? "same" : lines_of(found);
  }

  ScratchFolder folder_;
};

TEST_F(Diff, NumbersAndOrderDoNotMatter) {
  const std::string a = CONTEXTS + product(10, "bolt", "#20") + body(20);
  const std::string b = product(110, "bolt", "#30") + body(30) + CONTEXTS;
  EXPECT_EQ(difference(a, b), "same");
}

TEST_F(Diff, AChangedLiteralIsOneChange) {
  const std::string rest = CONTEXTS + product(10, "bolt", "#20");
  EXPECT_EQ(difference(rest + body(20, "1."), rest + body(20, "2.")),
            "bolt 12 12\n  CARTESIAN_POINT ~ #25 #25 [CARTESIAN_POINT 2: (1.,0.) -> (2.,0.)]\n");
}

TEST_F(Diff, AChangedReferenceIsOneChange) {
  const std::string a = "#1=A(#2,#3);\n#2=B('x');\n#3=B('y');\n#4=C(#2);\n#5=C(#3);\n";
  const std::string b = "#1=A(#3,#3);\n#2=B('x');\n#3=B('y');\n#4=C(#2);\n#5=C(#3);\n";
  EXPECT_EQ(difference(a, b), " 0 0\n  A ~ #1 #1 [A 1: #2 -> #3]\n");
}

TEST_F(Diff, RecordsOfOneFileOnly) {
  const std::string a = "#1=A('x');\n#2=B(#1);\n";
  const std::string b = "#1=A('x');\n#7=C(#1);\n";
  EXPECT_EQ(difference(a, b), " 0 0\n  B - #2\n  C + #7\n");
}

TEST_F(Diff, AnItemLess) {
  const std::string a = "#1=SHAPE_REPRESENTATION('',(#2,#3),$);\n#2=A('x');\n#3=A('y');\n";
  const std::string b = "#1=SHAPE_REPRESENTATION('',(#2),$);\n#2=A('x');\n#3=A('y');\n";
  EXPECT_EQ(difference(a, b),
            " 0 0\n  SHAPE_REPRESENTATION ~ #1 #1 [SHAPE_REPRESENTATION 2: (#2,#3) -> (#2)]\n");
}

TEST_F(Diff, ListsOfCollectorsAreSets) {
  const std::string rest = "#2=A('x');\n#3=A('y');\n";
  EXPECT_EQ(difference("#1=SHAPE_REPRESENTATION('',(#2,#3),$);\n" + rest,
                       "#1=SHAPE_REPRESENTATION('',(#3,#2,#3),$);\n" + rest),
            "same");
  EXPECT_NE(difference("#1=LOOP('',(#2,#3));\n" + rest, "#1=LOOP('',(#3,#2));\n" + rest), "same");
}

TEST_F(Diff, CopiesOfValuesDoNotCount) {
  const std::string a =
      "#1=VERTEX_POINT('',#3);\n#2=VERTEX_POINT('a',#3);\n"
      "#3=CARTESIAN_POINT('',(1.,2.));\n";
  const std::string b =
      "#1=VERTEX_POINT('',#3);\n#2=VERTEX_POINT('a',#4);\n"
      "#3=CARTESIAN_POINT('',(1.,2.));\n#4=CARTESIAN_POINT('',(1.0,2.));\n";
  EXPECT_EQ(difference(a, b), "same");
}

TEST_F(Diff, CopiesOfWhatBearsIdentityCount) {
  EXPECT_EQ(
      difference("#1=VERTEX_POINT('',$);\n", "#1=VERTEX_POINT('',$);\n#2=VERTEX_POINT('',$);\n"),
      " 0 0\n  VERTEX_POINT + #2\n");
}

TEST_F(Diff, GeometryThatIsAnItemBearsIdentity) {
  const std::string a =
      "#1=SHAPE_REPRESENTATION('',(#2,#3),$);\n#2=CARTESIAN_POINT('',(0.));\n"
      "#3=CARTESIAN_POINT('',(0.));\n";
  const std::string b = "#1=SHAPE_REPRESENTATION('',(#2),$);\n#2=CARTESIAN_POINT('',(0.));\n";
  EXPECT_NE(difference(a, b), "same");
}

TEST_F(Diff, AValueThatNobodyUsesCounts) {
  EXPECT_EQ(difference("#1=COLOUR_RGB('',1.,0.,0.);\n", "#1=COLOUR_RGB('',0.,1.,0.);\n"),
            " 0 0\n  COLOUR_RGB - #1 + #1\n");
  EXPECT_EQ(difference("#1=COLOUR_RGB('',1.,0.,0.);\n#2=DIRECTION('',(1.,0.));\n",
                       "#1=COLOUR_RGB('',1.,0.,0.);\n"),
            " 0 0\n  DIRECTION - #2\n");
}

TEST_F(Diff, ABodyThatProductsShareEqualsACopyInEach) {
  const std::string shared =
      CONTEXTS + product(10, "left", "#30") + product(20, "right", "#30") + body(30);
  const std::string copied =
      CONTEXTS + product(10, "left", "#30") + product(20, "right", "#40") + body(30) + body(40);
  EXPECT_EQ(difference(shared, copied), "same");
  EXPECT_EQ(difference(copied, shared), "same");
  // The copy must be one.
  const std::string other = CONTEXTS + product(10, "left", "#30") + product(20, "right", "#40") +
                            body(30) + body(40, "7.");
  EXPECT_NE(difference(shared, other), "same");
  // Two bodies in one product are not one.
  const std::string twice =
      CONTEXTS + product(10, "left", "#30,#40") + product(20, "right", "#40") + body(30) + body(40);
  EXPECT_NE(difference(shared, twice), "same");
}

TEST_F(Diff, StylesOfSharedBodiesAreShared) {
  const std::string shared = CONTEXTS + product(10, "left", "#30") + product(20, "right", "#30") +
                             body(30) + "#50=STYLED_ITEM('',(),#30);\n";
  const std::string copied = CONTEXTS + product(10, "left", "#30") + product(20, "right", "#40") +
                             body(30) + body(40) +
                             "#50=STYLED_ITEM('',(),#30);\n#51=STYLED_ITEM('',(),#40);\n";
  EXPECT_EQ(difference(shared, copied), "same");
}

/// #50, which places "right" with its item #`component` on the item #`assembly` of "left".
std::string placed(int component, int assembly) {
  return "#50=(REPRESENTATION_RELATIONSHIP('','',#25,#15)"
         "REPRESENTATION_RELATIONSHIP_WITH_TRANSFORMATION(#51)SHAPE_REPRESENTATION_RELATIONSHIP());"
         "\n"
         "#51=ITEM_DEFINED_TRANSFORMATION('','',#" +
         std::to_string(component) + ",#" + std::to_string(assembly) + ");\n";
}

// The component's items stand in front, whoever else has them.
TEST_F(Diff, ATransformationMeansTheItemsOfItsRepresentations) {
  const std::string items = "#30=PLACEMENT('');\n#31=PLACEMENT('');\n";
  const std::string shared =
      CONTEXTS + product(10, "left", "#30,#31") + product(20, "right", "#30") + items;
  const std::string copied = CONTEXTS + product(10, "left", "#30,#31") +
                             product(20, "right", "#40") + items + "#40=PLACEMENT('');\n";
  EXPECT_NE(difference(shared + placed(30, 31), shared + placed(31, 30)), "same");
  EXPECT_EQ(difference(shared + placed(30, 31), copied + placed(40, 31)), "same");
  EXPECT_NE(difference(shared + placed(30, 31), copied + placed(30, 31)), "same");
}

TEST_F(Diff, CirclesCompare) {
  const std::string three = "#1=A(#2);\n#2=A(#3);\n#3=A(#1);\n";
  EXPECT_EQ(difference(three, "#7=A(#5);\n#5=A(#6);\n#6=A(#7);\n"), "same");
  const std::string six = "#1=A(#2);\n#2=A(#3);\n#3=A(#1);\n#4=A(#5);\n#5=A(#6);\n#6=A(#4);\n";
  const std::string ring = "#1=A(#2);\n#2=A(#3);\n#3=A(#4);\n#4=A(#5);\n#5=A(#6);\n#6=A(#1);\n";
  EXPECT_EQ(difference(six, six), "same");
  EXPECT_NE(difference(six, ring), "same");
}

TEST_F(Diff, ManyTwinsArePairedInOneGo) {
  std::string a = "#1=HUB();\n";
  for (int i = 2; i < 20'000; ++i) a += "#" + std::to_string(i) + "=TWIN(#1);\n";
  EXPECT_EQ(difference(a, a), "same");
  EXPECT_EQ(difference(a, a + "#20000=TWIN(#1);\n"), " 0 0\n  TWIN + #20000\n");
}

TEST_F(Diff, WhatIsTooSymmetricalToTellCountsAsTheSameAndIsSaid) {
  const Difference same = compared(symmetrical_records(false), symmetrical_records(false));
  EXPECT_TRUE(same.is_same && same.is_certain);
  const Difference other = compared(symmetrical_records(false), symmetrical_records(true));
  EXPECT_TRUE(other.is_same);
  EXPECT_FALSE(other.is_certain);
  EXPECT_TRUE(other.products.empty());
}

TEST_F(Diff, ADeepChainIsNoDeepRecursion) {
  std::string a;
  for (int i = 1; i < 200'000; ++i) {
    a += "#" + std::to_string(i) + "=A(#" + std::to_string(i + 1) + ");\n";
  }
  EXPECT_EQ(difference(a + "#200000=B();\n", a + "#200000=B();\n"), "same");
}

TEST_F(Diff, OfTheHeaderTheSchemaCounts) {
  folder_.write("a.stp", file_of("#1=A();\n"));
  std::string other = file_of("#1=A();\n");
  other.replace(other.find("FILE_NAME(''"), 12, "FILE_NAME('other name'");
  folder_.write("b.stp", other);
  EXPECT_TRUE(diff("a.stp", "b.stp").is_same);
  other.replace(other.find("AUTOMOTIVE_DESIGN"), 17, "CONFIG_CONTROL_DESIGN");
  folder_.write("b.stp", other);
  const Difference found = diff("a.stp", "b.stp");
  EXPECT_FALSE(found.is_same);
  EXPECT_TRUE(found.products.empty());
  EXPECT_EQ(found.schemas_in_a, std::vector<std::string>{"AUTOMOTIVE_DESIGN"});
  EXPECT_EQ(found.schemas_in_b, std::vector<std::string>{"CONFIG_CONTROL_DESIGN"});
}

TEST_F(Diff, ErrorsNameTheFile) {
  folder_.write("a.stp", file_of("#1=A();\n"));
  try {
    diff("a.stp", "missing.stp");
    FAIL();
  } catch (const InputError& error) {
    EXPECT_EQ(error.finding().file, "missing.stp");
    EXPECT_EQ(error.finding().kind, FindingKind::unreadable);
  }
  folder_.write("b.stp", "ISO-10303-21;\nHEADER;\nENDSEC;\nDATA;\n#1=A('open);\n");
  try {
    diff("b.stp", "a.stp");
    FAIL();
  } catch (const InputError& error) {
    EXPECT_EQ(error.finding().file, "b.stp");
    EXPECT_EQ(error.finding().line, 5U);
  }
}

TEST_F(Diff, ProgressIsOfBothFilesAndEnds) {
  const std::string text = file_of(CONTEXTS + product(10, "bolt", "#20") + body(20));
  folder_.write("a.stp", text);
  std::vector<Progress> told;
  Options options;
  options.progress = [&](const Progress& progress) { told.push_back(progress); };
  diff("a.stp", "a.stp", options);
  ASSERT_FALSE(told.empty());
  EXPECT_EQ(told.front().stage, Stage::reading);
  EXPECT_EQ(told.front().done, 0U);
  EXPECT_EQ(told.front().total, 2 * text.size());
  EXPECT_EQ(told.back().stage, Stage::sorting);
  EXPECT_EQ(told.back().done, told.back().total);
  for (std::size_t i = 1; i < told.size(); ++i) {
    const bool same_stage = told[i].stage == told[i - 1].stage;
    EXPECT_TRUE(!same_stage || told[i].done >= told[i - 1].done);
  }
}

TEST_F(Diff, TheMemoryLimitGoesForEachFile) {
  std::string many;
  for (int i = 1; i < 2000; ++i) many += "#" + std::to_string(i) + "=A();\n";
  folder_.write("a.stp", file_of(many));
  Options options;
  options.memory_limit = 10'000;
  EXPECT_THROW(diff("a.stp", "a.stp", options), InputError);
}

}  // namespace
}  // namespace Kessel::test
