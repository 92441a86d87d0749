// An exchange file cut into header lines and data records.
#include "reader/record_cutter.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <sstream>
#include <string>
#include <string_view>
#include <tuple>
#include <vector>

#include "kessel/errors.h"

namespace Kessel::test {
namespace {

using Texts = std::vector<std::string>;

/// The first `count` records of `text`.
Texts records_of(const std::string& text, std::size_t count) {
  std::istringstream in(text);
  RecordCutter cutter(in);
  Texts records;
  while (records.size() < count) records.emplace_back(cutter.read_record());
  return records;
}

TEST(RecordCutter, RecordsStandBetweenSemicolons) {
  EXPECT_EQ(records_of("#1=A();#2=B(#1);", 3), (Texts{"#1=A()", "#2=B(#1)", ""}));
}

TEST(RecordCutter, WhiteSpaceAroundARecordGoes) {
  EXPECT_EQ(records_of(" \r\n#1 = A(\n 'x' ) \t;\n\n\f\v#2=B() ;\n", 3),
            (Texts{"#1 = A(\n 'x' )", "#2=B()", ""}));
}

TEST(RecordCutter, PiecesThatDoNotBeginWithANumberSignAreSkipped) {
  EXPECT_EQ(
      records_of("DATA;\n#1=A();\n/* note */ #2=B();\n#3=C();\nENDSEC;\nEND-ISO-10303-21;\n", 3),
      (Texts{"#1=A()", "#3=C()", ""}));
}

TEST(RecordCutter, RecordsBehindTheEndOfTheSectionAreCutToo) {
  EXPECT_EQ(records_of("#1=A();ENDSEC;END-ISO-10303-21;#2=B();", 3),
            (Texts{"#1=A()", "#2=B()", ""}));
}

TEST(RecordCutter, SemicolonInsideALiteralIsLostWithTheWhiteSpaceAroundIt) {
  EXPECT_EQ(records_of("#12=PRODUCT('a;b','c','',(#3));", 2),
            (Texts{"#12=PRODUCT('ab','c','',(#3))", ""}));
  EXPECT_EQ(records_of("#12=PRODUCT('a \n ; \t b;c');", 2), (Texts{"#12=PRODUCT('abc')", ""}));
}

TEST(RecordCutter, PieceThatBeginsWithANumberSignIsJoinedAllTheSame) {
  EXPECT_EQ(records_of("#1=A('x;#2=B();#3=C();", 3), (Texts{"#1=A('x#2=B()", "#3=C()", ""}));
}

TEST(RecordCutter, EmptyPiecesInsideARecordAreNothing) {
  EXPECT_EQ(records_of("#1=A('x;; ;y');#2=B();", 3), (Texts{"#1=A('xy')", "#2=B()", ""}));
}

TEST(RecordCutter, LiteralThatHoldsAParenthesisBeforeItsSemicolonIsCutThere) {
  EXPECT_EQ(records_of("#5=X('a);b');#6=Y();", 3), (Texts{"#5=X('a)", "#6=Y()", ""}));
}

TEST(RecordCutter, EmptyPieceEndsTheData) {
  EXPECT_EQ(records_of("#5=A(#1);;#6=B(#2);", 2), (Texts{"#5=A(#1)", ""}));
  EXPECT_EQ(records_of("#5=A(#1); \n\t;#6=B(#2);", 2), (Texts{"#5=A(#1)", ""}));
  EXPECT_EQ(records_of(";", 1), (Texts{""}));
}

TEST(RecordCutter, RecordsBehindAnEmptyPieceComeWithLaterCalls) {
  EXPECT_EQ(records_of("#5=A(#1);;#6=B(#2);", 4), (Texts{"#5=A(#1)", "", "#6=B(#2)", ""}));
}

TEST(RecordCutter, EndOfTheInputEndsTheData) {
  EXPECT_EQ(records_of("", 1), (Texts{""}));
  EXPECT_EQ(records_of(" \n\t", 1), (Texts{""}));
  EXPECT_EQ(records_of("ENDSEC;\n", 1), (Texts{""}));
}

TEST(RecordCutter, CallsBehindTheEndGiveAPlaceholder) {
  EXPECT_EQ(records_of("#1=A();", 5), (Texts{"#1=A()", "", "A", "A", "A"}));
}

TEST(RecordCutter, TextBehindTheLastSemicolonIsGivenAndThenThePlaceholder) {
  EXPECT_EQ(records_of("#1=A();\n#2=B()\n", 4), (Texts{"#1=A()", "#2=B()", "A", "A"}));
  EXPECT_EQ(records_of("#1=A(); stray ", 4), (Texts{"#1=A()", "stray", "A", "A"}));
  EXPECT_EQ(records_of("stray", 2), (Texts{"stray", "A"}));
}

TEST(RecordCutter, RecordThatTheEndCutsOffIsGivenAsFarAsItGoes) {
  EXPECT_EQ(records_of("#1=A('x;", 2), (Texts{"#1=A('x", "A"}));
  EXPECT_EQ(records_of("#1=A('x; y \n", 2), (Texts{"#1=A('xy", "A"}));
  EXPECT_EQ(records_of("#1=A;", 2), (Texts{"#1=A", "A"}));
}

TEST(RecordCutter, LinesAreGivenWithoutTheWhiteSpaceAtTheirEnds) {
  std::istringstream in("  ISO-10303-21;\r\n\n \t \nHEADER; a  b\t\nlast");
  RecordCutter cutter(in);
  EXPECT_EQ(cutter.next_line(), "ISO-10303-21;");
  EXPECT_EQ(cutter.next_line(), "");
  EXPECT_EQ(cutter.next_line(), "");
  EXPECT_EQ(cutter.next_line(), "HEADER; a  b");
  EXPECT_FALSE(cutter.input_ended());
  EXPECT_EQ(cutter.next_line(), "last");
  EXPECT_TRUE(cutter.input_ended());
  EXPECT_EQ(cutter.next_line(), "");
  EXPECT_EQ(cutter.next_line(), "");
}

TEST(RecordCutter, RecordsGoOnBehindTheLastLineThatWasRead) {
  std::istringstream in("ISO-10303-21;\nENDSEC;\nDATA;\n#1=A();\n");
  RecordCutter cutter(in);
  EXPECT_EQ(cutter.next_line(), "ISO-10303-21;");
  EXPECT_EQ(cutter.next_line(), "ENDSEC;");
  EXPECT_EQ(cutter.read_record(), "#1=A()");
  EXPECT_EQ(cutter.read_record(), "");
}

TEST(RecordCutter, LineThatTheInputsEndClosedLeavesOnlyThePlaceholder) {
  std::istringstream in("ISO-10303-21;");
  RecordCutter cutter(in);
  EXPECT_EQ(cutter.next_line(), "ISO-10303-21;");
  EXPECT_EQ(cutter.read_record(), "A");
  EXPECT_EQ(cutter.read_record(), "A");
}

TEST(RecordCutter, InputHasEndedOnceAPieceWasNotClosed) {
  std::istringstream in("#1=A();#2=B();");
  RecordCutter cutter(in);
  cutter.read_record();
  cutter.read_record();
  EXPECT_FALSE(cutter.input_ended());
  cutter.read_record();
  EXPECT_TRUE(cutter.input_ended());
}

TEST(RecordCutter, ReadingBeginsAtTheStreamsPosition) {
  std::istringstream in("#1=A();#2=B();");
  in.seekg(7);
  EXPECT_EQ(RecordCutter(in).read_record(), "#2=B()");
}

TEST(RecordCutter, OneRecordMayBeLargerThanAnyBlock) {
  for (const std::size_t size : {262'144u, 300'000u, 524'288u, 1'500'000u}) {
    SCOPED_TRACE(size);
    const std::string large = "#2=B('" + std::string(size, 'x') + "')";
    const Texts records = records_of("#1=A();" + large + ";#3=C();", 4);
    EXPECT_EQ(records[0], "#1=A()");
    EXPECT_TRUE(records[1] == large);
    EXPECT_EQ(records[2], "#3=C()");
    EXPECT_EQ(records[3], "");
  }
}

TEST(RecordCutter, RecordMayStandAcrossTheBorderOfABlock) {
  constexpr std::size_t BLOCK = 262'144;
  const std::string crossing = " #2=B('c ; d' , #1 ) ;";
  for (std::size_t inside = 0; inside <= crossing.size() + 1; ++inside) {
    SCOPED_TRACE(inside);
    const std::string first = "#1=A('" + std::string(BLOCK - inside - 9, 'x') + "')";
    const Texts records = records_of(first + ";" + crossing + "#3=C();", 4);
    EXPECT_TRUE(records[0] == first);
    EXPECT_EQ(records[1], "#2=B('cd' , #1 )");
    EXPECT_EQ(records[2], "#3=C()");
    EXPECT_EQ(records[3], "");
  }
}

TEST(RecordCutter, RecordIsWholeWhenItEndsWithAParenthesis) {
  EXPECT_TRUE(is_whole_record("#1=A()"));
  EXPECT_TRUE(is_whole_record(")"));
  EXPECT_FALSE(is_whole_record("#1=A('x"));
  EXPECT_FALSE(is_whole_record("#1=A() "));
}

/// A record and where it begins.
using Placed = std::tuple<std::string, std::uint64_t, std::uint64_t>;

std::vector<Placed> places_in(const std::string& text) {
  std::istringstream in(text);
  RecordCutter cutter(in);
  cutter.count_lines();
  std::vector<Placed> placed;
  for (;;) {
    const std::string_view record = cutter.read_record();
    if (record.empty() || cutter.input_ended()) break;
    const Place place = cutter.place_of(record);
    placed.emplace_back(record, place.offset, place.line);
  }
  return placed;
}

TEST(RecordCutterPlaces, AreWhereRecordsBegin) {
  EXPECT_EQ(places_in("DATA;\n#1=A();\n\n  #2=B(\n);#3=C('x;\ny');\nENDSEC;\n/**/;#4=D();"),
            (std::vector<Placed>{
                {"#1=A()", 6, 2}, {"#2=B(\n)", 17, 4}, {"#3=C('xy')", 25, 5}, {"#4=D()", 52, 8}}));
}

TEST(RecordCutterPlaces, AreRightBehindRecordsOfEveryLength) {
  std::string text;
  std::vector<Placed> expected;
  std::uint64_t line = 1;
  for (std::size_t size = 1; size < 400'000; size = size * 3 + 7) {
    const std::string record = "#1=A('" + std::string(size, '\n') + "')";
    expected.emplace_back(record, text.size(), line);
    text += record + ";";
    line += size;
  }
  EXPECT_EQ(places_in(text + text).size(), 2 * expected.size());
  EXPECT_EQ(places_in(text), expected);
}

TEST(RecordCutterPlaces, OfLinesAndOfWhatComesNext) {
  std::istringstream in("  first \nsecond\n#1=A(); ");
  RecordCutter cutter(in);
  cutter.count_lines();
  cutter.next_line();
  EXPECT_EQ(cutter.offset(), 9u);
  EXPECT_EQ(cutter.place_of(cutter.next_line()).offset, 9u);
  EXPECT_EQ(cutter.here().offset, 16u);
  EXPECT_EQ(cutter.here().line, 3u);
  cutter.read_record();
  EXPECT_EQ(cutter.offset(), 23u);
  cutter.read_record();
  EXPECT_EQ(cutter.offset(), 24u);
}

TEST(RecordCutterLimit, IsForTextsThatAreLonger) {
  constexpr std::size_t LIMIT = 600'000;
  const auto cut = [](const std::string& text) {
    std::istringstream in(text);
    RecordCutter cutter(in);
    cutter.limit_memory(LIMIT);
    return std::string(cutter.read_record());
  };
  const std::string fits = "#1=A('" + std::string(500'000, 'x') + "')";
  EXPECT_EQ(cut(fits + ";"), fits);
  EXPECT_THROW(cut("#1=A('" + std::string(2'000'000, 'x') + "');"), InputError);
  std::string pieces = "#1=A('";
  for (int i = 0; i < 700'000; ++i) pieces += "x;";
  EXPECT_THROW(cut(pieces + "');"), InputError);
  // To the byte, once more than a block is needed.
  const std::string longest = "#1=A('" + std::string(LIMIT - 8, 'x') + "')";
  EXPECT_EQ(cut(longest + ";"), longest);
  EXPECT_THROW(cut(" " + longest + ";"), InputError);
  // Many texts that fit are no long one.
  std::istringstream in(fits + ";" + fits + ";" + fits + ";");
  RecordCutter cutter(in);
  cutter.limit_memory(LIMIT);
  for (int i = 0; i < 3; ++i) EXPECT_EQ(cutter.read_record(), fits);
}

}  // namespace
}  // namespace Kessel::test
