#include "exchange/statement_cutter.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <sstream>
#include <string>
#include <vector>

namespace Kessel::Exchange {
namespace {

using testing::ElementsAre;

std::string name_of(Cut cut) {
  switch (cut) {
    case Cut::statement:
      return "statement";
    case Cut::end:
      return "end";
    case Cut::unclosed_text:
      return "unclosed text";
    case Cut::unclosed_string:
      return "unclosed string";
    case Cut::unclosed_comment:
      return "unclosed comment";
    case Cut::too_long:
      break;
  }
  return "too long";
}

struct How {
  std::size_t block = StatementCutter::BLOCK_SIZE;
  std::uint64_t most = StatementCutter::NO_LIMIT;
  Scrutiny scrutiny = Scrutiny::full;
  bool resources = false;
  std::uint64_t position = 0;
};

/// All statements of `text` with their numbers, and how the last cut ended:
/// "LEAD|TEXT@OFFSET->NUMBERS".
std::vector<std::string> cut(const std::string& text, How how = {}) {
  std::istringstream in(text);
  StatementCutter cutter(in, how.position, how.most, how.block, how.scrutiny);
  cutter.know_resources(how.resources);
  std::vector<std::string> found;
  Statement statement;
  for (;;) {
    const Cut outcome = cutter.next(statement);
    std::string line = outcome == Cut::statement ? "" : name_of(outcome) + ' ';
    line += std::string(statement.lead) + '|' + std::string(statement.text) + '@' +
            std::to_string(statement.offset);
    for (const Mention& mention : cutter.mentions()) {
      line += "->" + std::string(mention.begin, mention.end) + '=' + std::to_string(mention.number);
    }
    found.push_back(line);
    if (outcome != Cut::statement) return found;
  }
}

TEST(StatementCutter, CutsAtSemicolons) {
  EXPECT_THAT(cut("A;#1 = B(#2,#003) ;\n"),
              ElementsAre("|A@0", "|#1 = B(#2,#003)@2->1=1->2=2->003=3", "end \n|@20"));
}

TEST(StatementCutter, CutsInNoStringAndNoComment) {
  EXPECT_THAT(cut("A('b;''#1;',/*;'#2*/#3);B;"),
              ElementsAre("|A('b;''#1;',/*;'#2*/#3)@0->3=3", "|B@24", "end |@26"));
}

TEST(StatementCutter, GivesWhatStandsInFront) {
  EXPECT_THAT(cut(" /*a;*/\n/*#1*/ A;\\N\\\\F\\B;;"),
              ElementsAre(" /*a;*/\n/*#1*/ |A@15", "\\N\\\\F\\|B@23", "|@25", "end |@26"));
}

TEST(StatementCutter, SaysWhatIsNotClosed) {
  EXPECT_THAT(cut("A;B "), ElementsAre("|A@0", "unclosed text |B@2"));
  EXPECT_THAT(cut("A('b;"), ElementsAre("unclosed string |A('b;@0"));
  EXPECT_THAT(cut(" /* A;"), ElementsAre("unclosed comment  |/* A;@1"));
  EXPECT_THAT(cut("A/* ;"), ElementsAre("unclosed comment |A/* ;@0"));
  EXPECT_THAT(cut("A/"), ElementsAre("unclosed text |A/@0"));
  EXPECT_THAT(cut(""), ElementsAre("end |@0"));
  EXPECT_THAT(cut("A('\\S\\'"), ElementsAre("unclosed string |A('\\S\\'@0"));
}

TEST(StatementCutter, KnowsNumbersOfEveryLength) {
  std::string digits;
  for (int length = 1; length <= 19; ++length) {
    digits += static_cast<char>('0' + length % 10);
    EXPECT_THAT(cut('#' + digits + ";"), ElementsAre("|#" + digits + "@0->" + digits + '=' + digits,
                                                     "end |@" + std::to_string(length + 2)));
  }
  EXPECT_THAT(cut("#18446744073709551615;#0;#000;"),
              ElementsAre("|#18446744073709551615@0->18446744073709551615=18446744073709551615",
                          "|#0@22->0=0", "|#000@25->000=0", "end |@30"));
}

TEST(StatementCutter, KnowsWhatFollowsANumber) {
  // Every byte behind one to eight digits, for the way that takes eight bytes at once.
  for (int length = 1; length <= 8; ++length) {
    const std::string digits(static_cast<std::size_t>(length), '7');
    for (int byte = 0; byte < 256; ++byte) {
      const char c = static_cast<char>(byte);
      if (c == ';' || c == '\'' || (c >= '0' && c <= '9')) continue;
      std::istringstream in('#' + digits + c + "99999999;");
      StatementCutter cutter(in);
      Statement statement;
      ASSERT_EQ(cutter.next(statement), Cut::statement) << byte;
      ASSERT_FALSE(cutter.mentions().empty()) << byte;
      ASSERT_EQ(cutter.mentions()[0].number, std::stoull(digits)) << byte;
    }
  }
}

TEST(StatementCutter, FlagsNumbersThatAreTooLarge) {
  for (const auto& [text, is_too_large] :
       {std::pair("A(#18446744073709551616);", true), std::pair("A(#18446744073709551615);", false),
        std::pair("A(#99999999999999999999999999,#1);", true), std::pair("A(#0);", false),
        std::pair("A(#00000000000000000000000000);", false),
        std::pair("A('#18446744073709551616');", false)}) {
    for (const Scrutiny scrutiny : {Scrutiny::none, Scrutiny::full}) {
      std::istringstream in(text);
      StatementCutter cutter(in, 0, StatementCutter::NO_LIMIT, 64, scrutiny);
      Statement statement;
      EXPECT_EQ(cutter.next(statement), Cut::statement);
      EXPECT_EQ(statement.has_too_large_number, is_too_large) << text;
    }
  }
}

TEST(StatementCutter, TakesConstantsForNoInstances) {
  EXPECT_THAT(cut("A(#PI,#,#1);"), ElementsAre("|A(#PI,#,#1)@0->1=1", "end |@12"));
}

TEST(StatementCutter, KnowsResourcesWhereItIsTold) {
  EXPECT_THAT(cut("#1=<http://a;b'c/*#2>;<x>=#3;", {.resources = true}),
              ElementsAre("|#1=<http://a;b'c/*#2>@0->1=1", "|<x>=#3@22->3=3", "end |@29"));
  EXPECT_THAT(cut("#1=<a;b>;", {.resources = false}),
              ElementsAre("|#1=<a@0->1=1", "|b>@6", "end |@9"));
  EXPECT_THAT(cut("#1=<a;", {.resources = true}), ElementsAre("unclosed text |#1=<a;@0->1=1"));
  EXPECT_THAT(cut("'<;'/*<;*/;", {.resources = true}), ElementsAre("|'<;'/*<;*/@0", "end |@11"));
}

struct Looks {
  int depth;
  bool takes_in_record;
  bool has_backslash;
  bool has_high_bytes;
  bool operator==(const Looks&) const = default;
};

Looks look(const std::string& text, bool resources = false) {
  std::istringstream in(text);
  StatementCutter cutter(in);
  cutter.know_resources(resources);
  Statement s;
  EXPECT_EQ(cutter.next(s), Cut::statement);
  return {s.depth, s.takes_in_record, s.has_backslash, s.has_high_bytes};
}

TEST(StatementCutter, LooksAtParenthesesAndBytes) {
  for (const bool resources : {false, true}) {
    EXPECT_EQ(look("#1=A((#2),'(',/*(*/(#3));", resources), (Looks{0, false, false, false}));
    EXPECT_EQ(look("#1=A((#2);", resources), (Looks{1, false, false, false}));
    EXPECT_EQ(look("#1=A()));", resources), (Looks{-2, false, false, false}));
    EXPECT_EQ(look("#1=A()+#2=B();", resources), (Looks{0, true, false, false}));
    EXPECT_EQ(look("#1=A()) #2=B(();", resources), (Looks{0, true, false, false}));
    EXPECT_EQ(look("DATA #1=A();", resources), (Looks{0, true, false, false}));
    EXPECT_EQ(look(" #1=A();", resources), (Looks{0, false, false, false}));
    EXPECT_EQ(look("#1=A('\\');", resources), (Looks{0, false, true, false}));
    EXPECT_EQ(look("#1=A('\xFF');", resources), (Looks{0, false, false, true}));
    EXPECT_EQ(look("#1=A('\\S\\'                 \xFF');", resources),
              (Looks{0, false, true, true}))
        << "in what is passed over with a directive";
    EXPECT_EQ(look("#1=A(/*                      \xFF\\*/);", resources),
              (Looks{0, false, true, true}))
        << "in a comment";
  }
}

// Texts in which everything falls across the ends of blocks, wherever they are.
const std::string TEXTS[] = {
    "#1=A('it''s;\\S\\';',/* ;*/#22,'''',\"0F\"); /* \\N\\ */ #333 =(B()C('\\S\\'''';'));;END;\n",
    "A;/***/B/*/*/;'\\\\';'\\S\\\\';'\\X0\\\\S\\';';\\N\\#4444444444;#18446744073709551615;",
    "'\\S\\''/*,*/;'\\S\\'' ;'\\S\\''a';'\\S\\'''a';C('d",
    "A;/* not closed; ",
    "A/* not closed; ",
    "A ( '\\S\\'",
};

TEST(StatementCutter, CutsTheSameInBlocksOfEverySize) {
  for (const std::string& text : TEXTS) {
    for (const bool resources : {false, true}) {
      const auto whole = cut(text, {.resources = resources});
      for (std::size_t block = 1; block <= text.size() + 1; ++block) {
        ASSERT_EQ(cut(text, {.block = block, .resources = resources}), whole) << block;
        ASSERT_EQ(cut(text, {.block = block, .scrutiny = Scrutiny::none, .resources = resources}),
                  whole)
            << block;
      }
    }
  }
}

TEST(StatementCutter, CutsTheSameAtTheEndOfTheUsualBlock) {
  for (const std::string& text : TEXTS) {
    for (std::size_t before = 0; before < text.size(); ++before) {
      const std::string filler = std::string(StatementCutter::BLOCK_SIZE - before - 2, 'x') + ";";
      std::vector<std::string> lines = cut(filler + text);
      lines.erase(lines.begin());
      ASSERT_EQ(lines, cut(text, {.position = filler.size()})) << before;
    }
  }
}

TEST(StatementCutter, HasRoomForAnyNumberOfNames) {
  for (const Scrutiny scrutiny : {Scrutiny::none, Scrutiny::full}) {
    for (const bool resources : {false, true}) {
      for (std::size_t count = 0; count < 300; ++count) {
        std::string text(count % 7, 'x');
        std::string expected = "|" + text;
        std::string names;
        for (std::size_t i = 0; i < count; ++i) {
          expected += "#1";
          names += "->1=1";
        }
        text = expected.substr(1) + std::string(100, '#');
        expected = '|' + text + "@0" + names;
        ASSERT_EQ(cut(text + ";", {.scrutiny = scrutiny, .resources = resources}).front(),
                  expected);
      }
    }
  }
}

TEST(StatementCutter, GrowsForLongStatements) {
  const std::string text = "A('" + std::string(3 * StatementCutter::BLOCK_SIZE, ';') + "')";
  EXPECT_THAT(cut(text + ";B;"),
              ElementsAre("|" + text + "@0", "|B@" + std::to_string(text.size() + 1),
                          "end |@" + std::to_string(text.size() + 3)));
}

TEST(StatementCutter, HoldsNoMoreThanItMay) {
  const auto last = [](std::size_t length, std::uint64_t most, std::size_t block) {
    return cut(std::string(length, 'x') + ";", {.block = block, .most = most}).front().substr(0, 8);
  };
  EXPECT_EQ(last(100, 100, 10), "|xxxxxxx");
  EXPECT_EQ(last(101, 100, 10), "too long");
  EXPECT_EQ(last(101, 100, 102), "|xxxxxxx") << "as much as a block is held anyway";
  EXPECT_EQ(last(103, 100, 102), "too long");
  EXPECT_EQ(cut("A;" + std::string(50, ' ') + "B;", {.block = 10, .most = 20}).back().substr(0, 8),
            "too long")
      << "what stands in front counts";
}

TEST(StatementCutter, ShowsTheFirstBytes) {
  std::istringstream in("abcdef;g;");
  StatementCutter cutter(in, 0, StatementCutter::NO_LIMIT, 2);
  EXPECT_EQ(cutter.peek(4), "abcd");
  EXPECT_EQ(cutter.offset(), 0u);
  cutter.pass_over(3);
  EXPECT_EQ(cutter.offset(), 3u);
  Statement statement;
  EXPECT_EQ(cutter.next(statement), Cut::statement);
  EXPECT_EQ(statement.text, "def");
  EXPECT_EQ(statement.offset, 3u);
  EXPECT_EQ(cutter.offset(), 7u);
  EXPECT_EQ(cutter.peek(100), "g;");
}

TEST(StatementCutter, BeginsInTheMiddle) {
  std::istringstream in("A;B;C;");
  in.seekg(2);
  StatementCutter cutter(in, 2);
  Statement statement;
  EXPECT_EQ(cutter.next(statement), Cut::statement);
  EXPECT_EQ(statement.text, "B");
  EXPECT_EQ(statement.offset, 2u);
}

}  // namespace
}  // namespace Kessel::Exchange
