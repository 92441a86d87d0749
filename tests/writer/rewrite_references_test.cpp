// One record's text for one part's file: new numbers, and references that go.
#include <gtest/gtest.h>

#include <stdexcept>
#include <string>

#include "writer/hand_made_store.h"
#include "writer/rewrite.h"

namespace Kessel::test {
namespace {

/// One part that holds #5 as 1, #3 as 2, #4 as 30 and #7 as 4444; #8 exists and is not held, #9
/// does not exist.
class RewriteReferences : public testing::Test {
 protected:
  RewriteReferences() {
    store_.hold(5, part_, 1);
    store_.hold(3, part_, 2);
    store_.hold(4, part_, 30);
    store_.hold(7, part_, 4444);
    store_.add_record(8);
  }

  std::string rewritten(std::string_view text) const { return store_.rewritten(text, part_); }

  HandMadeStore store_;
  Part* part_ = store_.add_part();
};

TEST_F(RewriteReferences, EveryReferenceGetsItsNumberInThePart) {
  EXPECT_EQ(rewritten("#5=A((#3,#4),#7,#3)"), "#1=A((#2,#30),#4444,#2)");
}

TEST_F(RewriteReferences, StringLiteralsAreLeftAlone) {
  EXPECT_EQ(rewritten("#5=A('x#3',#3)"), "#1=A('x#3',#2)");
  EXPECT_EQ(rewritten("#5=A('it''s #3',#3)"), "#1=A('it''s #3',#2)");
}

TEST_F(RewriteReferences, ForeignReferencesGoWithOneComma) {
  const struct {
    const char* what;
    const char* record;
    const char* expected;
  } CASES[] = {
      {"first of a list: the comma behind goes", "#5=A((#8,#3,#4))", "#1=A((#2,#30))"},
      {"inside a list", "#5=A((#3,#8,#4))", "#1=A((#2,#30))"},
      {"last of a list", "#5=A((#3,#4,#8))", "#1=A((#2,#30))"},
      {"two at the front", "#5=A((#8,#8,#4))", "#1=A((#30))"},
      {"two at the end", "#5=A((#3,#8,#8))", "#1=A((#2))"},
      {"every other one", "#5=A((#8,#3,#8,#4,#8))", "#1=A((#2,#30))"},
      {"only member of a list", "#5=A('',(#8),#3)", "#1=A('',(),#2)"},
      {"all members of a list", "#5=A('',(#8,#8,#9),#3)", "#1=A('',(),#2)"},
      {"a number without a record", "#5=A((#3,#9,#4))", "#1=A((#2,#30))"},
      {"a direct attribute: the record has one fewer", "#5=A('',#8,$)", "#1=A('',$)"},
      {"the first direct attribute", "#5=A(#8,'',$)", "#1=A('',$)"},
      {"the last direct attribute", "#5=A('',#8)", "#1=A('')"},
      {"the only direct attribute", "#5=A(#8)", "#1=A()"},
      {"all there is", "#5=A((#8,#9),#8,(#9))", "#1=A((),())"},
      {"lists in a list", "#5=A(((#8,#3),(#8),(#4,#8)))", "#1=A(((#2),(),(#30)))"},
      {"in a typed value: only what stands inside goes", "#5=A(B(#8),#3)", "#1=A(B(),#2)"},
      {"in a complex instance", "#5=(A(#8)B((#8,#3)))", "#1=(A()B((#2)))"},
      {"white space before the reference goes, behind it stays", "#5=A( #3 , #8 , #4 )",
       "#1=A( #2  , #30 )"},
      {"white space keeps the comma behind the first of a list", "#5=A(#8 ,#3)", "#1=A( ,#2)"},
      {"leading zeros go as well", "#5=A(#3,#008,#4)", "#1=A(#2,#30)"},
  };
  for (const auto& row : CASES) {
    SCOPED_TRACE(row.what);
    EXPECT_EQ(rewritten(row.record), row.expected);
  }
}

TEST_F(RewriteReferences, CutGoesBackToASeparatorInsideALiteral) {
  // The search for the separator does not know literals; outputs depend on that.
  EXPECT_EQ(rewritten("#5=A('a,b'#8)"), "#1=A('a)");
  EXPECT_EQ(rewritten("#5=A('f(x)'#8,$)"), "#1=A('f($)");
  EXPECT_EQ(rewritten("#5=A(#3,'),',#8)"), "#1=A(#2,'),')");
}

TEST_F(RewriteReferences, CutSeesWhatEarlierCutsLeft) {
  EXPECT_EQ(rewritten("#5=A(#3,x#8y#8z#8,#4)"), "#1=A(#30)");
  EXPECT_EQ(rewritten("#5=A(#3,$,#8y#8,#4)"), "#1=A(#2,#30)");
}

TEST_F(RewriteReferences, ForeignReferenceOutsideAnyListStays) {
  EXPECT_EQ(rewritten("#8=A(#3)"), "#8=A(#2)");
  EXPECT_EQ(rewritten("#8#9=A(#8,#3)"), "#8#9=A(#2)");
}

TEST_F(RewriteReferences, LeadingZerosStayInFrontOfTheNewNumber) {
  EXPECT_EQ(rewritten("#005=A(#0007,#03)"), "#001=A(#0004444,#02)");
}

TEST_F(RewriteReferences, TextBehindAMalformedReferenceKeepsItsNumbers) {
  EXPECT_EQ(rewritten("#5=A(#3,#x,#3,#8)"), "#1=A(#2,#x,#3,#8)");
  EXPECT_EQ(rewritten("#5=A(#3,#0,#3)"), "#1=A(#2,#0,#3)");
  EXPECT_EQ(rewritten("#5=A(#3,#4294967296,#3)"), "#1=A(#2,#4294967296,#3)");
  EXPECT_EQ(rewritten("#5=A(#3,'open,#3)"), "#1=A(#2,'open,#3)");
}

TEST_F(RewriteReferences, NumberBeyondTheStoreEndsTheRun) {
  EXPECT_EQ(rewritten("#5=A(#1048575)"), "#1=A()");
  try {
    rewritten("#5=A(#3,#1048576)");
    ADD_FAILURE() << "no exception";
  } catch (const std::out_of_range& error) {
    EXPECT_STREQ(error.what(), "invalid vector subscript");
  }
}

TEST_F(RewriteReferences, NumbersAreThoseOfThePartAskedFor) {
  Part* other = store_.add_part();
  store_.hold(5, other, 70);
  store_.hold(8, other, 80);
  EXPECT_EQ(store_.rewritten("#5=A(#3,#8,#4)", other), "#70=A(#80)");
  EXPECT_EQ(rewritten("#5=A(#3,#8,#4)"), "#1=A(#2,#30)");
}

TEST_F(RewriteReferences, TextIsAppendedAndWhatStoodThereIsNotTouched) {
  const std::string record = "#8=A";
  std::vector<TextReference> references;
  find_references(record, references);
  std::string out = "#1=B(#2,#3);\n";
  rewrite_references(record, references, store_.slots(), part_, out);
  EXPECT_EQ(out, "#1=B(#2,#3);\n#8=A");
}

}  // namespace
}  // namespace Kessel::test
