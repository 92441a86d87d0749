// Presentation records, whose item list is made anew for every part.
#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <vector>

#include "writer/hand_made_store.h"

namespace Kessel::test {
namespace {

/// The record #9 with items #1 to #4 and the context #5. The left part holds the record as 90, #1,
/// #3 and the context as 10, 30 and 50; the right part all but #1 and the context, as their input
/// numbers and 600 more.
class PresentationItems : public testing::Test {
 protected:
  PresentationItems() {
    for (const std::uint32_t id : {1U, 3U, 5U, 9U}) store_.hold(id, left_, id * 10);
    for (const std::uint32_t id : {2U, 3U, 4U, 9U}) store_.hold(id, right_, id + 600);
  }

  /// `text` as a record with these references.
  std::string rewritten(std::string_view text, const std::vector<std::uint32_t>& references,
                        Part* part) {
    Entity record;
    for (const std::uint32_t id : references) record.add_reference(id);
    return store_.rewritten_presentation(text, record, part);
  }

  HandMadeStore store_;
  Part* left_ = store_.add_part();
  Part* right_ = store_.add_part();
};

TEST_F(PresentationItems, EachPartListsItsOwnItemsInTheRecordsOrder) {
  const char* const text = "#9=P('',(#4,#3,#1,#2),#5)";
  EXPECT_EQ(rewritten(text, {4, 3, 1, 2, 5}, left_), "#90=P('',(#30,#10,#50),#50)");
  EXPECT_EQ(rewritten(text, {4, 3, 1, 2, 5}, right_), "#609=P('',(#604,#603,#602))");
}

TEST_F(PresentationItems, ContextStandsAmongTheItems) {
  // The list is made of everything that the record refers to; outputs depend on that.
  EXPECT_EQ(rewritten("#9=P('x',(#1),#5)", {1, 5}, left_), "#90=P('x',(#10,#50),#50)");
}

TEST_F(PresentationItems, ItemNamedTwiceIsListedTwice) {
  EXPECT_EQ(rewritten("#9=P('',(#1,#3,#1),#5)", {1, 3, 1, 5}, left_),
            "#90=P('',(#10,#30,#10,#50),#50)");
}

TEST_F(PresentationItems, WithoutItemsOfThePartTheListIsEmpty) {
  EXPECT_EQ(rewritten("#9=P('',(#2,#4),$)", {2, 4}, left_), "#90=P('',(),$)");
}

TEST_F(PresentationItems, ContextThatThePartLacksGoesWithItsComma) {
  EXPECT_EQ(rewritten("#9=P('',(#2),#5)", {2, 5}, right_), "#609=P('',(#602))");
}

TEST_F(PresentationItems, ListIsMadeOfTheRecordInTheStoreNotOfTheText) {
  // After a repeated instance number the store holds the newer record of the two.
  EXPECT_EQ(rewritten("#9=P('',(#1),#5)", {3, 3}, left_), "#90=P('',(#30,#30),#50)");
}

TEST_F(PresentationItems, LastReferenceIsRenumberedWhereverItStands) {
  EXPECT_EQ(rewritten("#9=P('',(#2,#3),$)", {2, 3}, left_), "#90=P('',(#30),$)");
  EXPECT_EQ(rewritten("#9=P('',(#1),#3,#5)", {1, 3, 5}, left_), "#90=P('',(#10,#30,#50),#3,#50)");
}

TEST_F(PresentationItems, LastHashMayStandInALiteral) {
  EXPECT_EQ(rewritten("#9=P('',(#1),#5,'see #3')", {1, 5}, left_),
            "#90=P('',(#10,#50),#5,'see #30')");
  EXPECT_EQ(rewritten("#9=P('',(#1),#5,'no # here')", {1, 5}, left_),
            "#90=P('',(#10,#50),#5,'no # here')");
}

TEST_F(PresentationItems, OwnNumberAloneIsTakenForAReferenceOnceMore) {
  // Without another "#", the last one is the new number itself, read as an input number.
  store_.hold(90, left_, 1234);
  EXPECT_EQ(rewritten("#9=P('',(),$)", {}, left_), "#1234=P('',(),$)");
  EXPECT_EQ(rewritten("#9=P('',(),$)", {}, right_), "#609=P('',(),$)");
}

TEST_F(PresentationItems, WithoutAnItemListTheRecordIsRewrittenLikeAnyOther) {
  const struct {
    const char* what;
    const char* record;
    const char* expected;
  } CASES[] = {
      {"no second parenthesis", "#9=P('',#1,#2,#5)", "#90=P('',#10,#50)"},
      {"no parenthesis at all", "#9=P,#1,#2", "#90=P,#10"},
      {"none that closes", "#9=P('',(#1,#2", "#90=P('',(#10"},
      {"one that closes in the name", "#9=P('a)',(#1,#2),#5)", "#90=P('a)',(#10),#50)"},
      {"one that closes before the list", "#9=P(),(#1,#2),#5", "#90=P(),(#10),#50"},
  };
  for (const auto& row : CASES) {
    SCOPED_TRACE(row.what);
    EXPECT_EQ(rewritten(row.record, {1, 2, 5}, left_), row.expected);
  }
}

TEST_F(PresentationItems, ParenthesisInTheNameIsTakenForTheList) {
  EXPECT_EQ(rewritten("#9=P('f(x)',(#1,#2),#5)", {1, 2, 5}, left_),
            "#90=P('f(#10,#50)',(#1,#2),#50)");
}

TEST_F(PresentationItems, ComplexInstanceGetsTheItemsIntoItsSecondParenthesis) {
  EXPECT_EQ(rewritten("#9=(P()R('',(#1,#2),#5))", {1, 2, 5}, left_),
            "#90=(P(#10,#50)R('',(#1,#2),#50))");
}

TEST_F(PresentationItems, CutOfTheLastReferenceMayReachIntoTheList) {
  // Nothing but the list's own separators stands before the reference: the closing one goes.
  EXPECT_EQ(rewritten("#9=P('',(#1)#2)", {1, 2}, left_), "#90=P('',(#10)");
}

TEST_F(PresentationItems, NumberBeyondTheStoreEndsTheRun) {
  try {
    rewritten("#9=P('',(#1048576),#5)", {1048576, 5}, left_);
    ADD_FAILURE() << "no exception";
  } catch (const std::out_of_range& error) {
    EXPECT_STREQ(error.what(), "invalid vector subscript");
  }
}

}  // namespace
}  // namespace Kessel::test
