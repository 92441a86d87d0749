// What is found in the text: its frame, its records, and what stands between them.
#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

#include "check/check_text.h"

namespace Kessel::test {
namespace {

/// Two parts, so that there is something to split.
const std::string PARTS =
    "#1=PRODUCT('a','','',());\n"
    "#2=PRODUCT_DEFINITION_FORMATION('','',#1);\n"
    "#3=PRODUCT_DEFINITION('','',#2,$);\n"
    "#4=PRODUCT_DEFINITION('','',#2,$);\n";

const std::string HEADER = "ISO-10303-21;\nHEADER;\nENDSEC;\n";
const std::string DATA = HEADER + "DATA;\n" + PARTS;
const std::string END = "ENDSEC;\nEND-ISO-10303-21;\n";

/// The place `column` bytes behind the two parts, in the line behind them.
std::string at(std::size_t column) {
  return "9@" + std::to_string(DATA.size() + column) + " ";
}

struct Row {
  std::string text;
  Lines expected;
};

void expect_findings(const std::vector<Row>& rows) {
  for (const Row& row : rows) {
    SCOPED_TRACE(row.text);
    EXPECT_EQ(checked(row.text), row.expected);
  }
}

/// Expects what is found when the text stands behind the two parts.
void expect_findings_in_data(const std::vector<Row>& rows) {
  for (const Row& row : rows) {
    SCOPED_TRACE(row.text);
    EXPECT_EQ(checked(DATA + row.text + END), row.expected);
  }
}

TEST(TextCheck, NothingIsFoundInAProperFile) {
  expect_findings({
      {DATA + END, {}},
      {DATA + "#5=A('#0', 'it''s', '/* #6 */', #4) ;\n#6=( B(#5) C() );\n" + END, {}},
      {DATA + "/* a note; with #5=A(); */\n/* and one */ /* more */" + END, {}},
      {DATA + "ENDSEC;\nEND-ISO-10303-21;", {}},
      {"ISO-10303-21;\r\nHEADER;\r\nENDSEC;\r\nDATA;\r\n" + PARTS + "ENDSEC;\r\n" + END, {}},
      {HEADER + "DATA('first',('X'));\n" + PARTS + "ENDSEC;\nDATA ();\n" + END, {}},
      {DATA + "#5=A('\xC3\xA4 \xE2\x82\xAC');\n" + END, {}},
  });
}

TEST(TextCheck, FirstLine) {
  const std::string OTHER =
      "1@0 warning first_line: The first line is not \"ISO-10303-21;\"; the last line of every "
      "file that is written is made from it.";
  expect_findings({
      {"ISO-10303-21;HEADER;\n" + DATA,
       {OTHER,
        "10@196 warning missing_end: " +
            std::string(
                "The file does not end with \"END-ISO-10303-21;\"; it may have been cut off.")}},
      {"/* made by hand */\n" + DATA + END, {OTHER}},
      {"\xEF\xBB\xBF" + DATA + END,
       {"1@0 warning first_line: The file begins with a byte order mark, which gets into the last "
        "line of every file that is written."}},
  });
}

TEST(TextCheck, HeaderThatNoLineEnds) {
  const std::string FOUND = " error header_without_end: No line ends the header with \"ENDSEC;\".";
  expect_findings({
      {"ISO-10303-21;", {"1@13" + FOUND}},
      {"ISO-10303-21;\nHEADER;\n", {"3@22" + FOUND}},
      // Where a line nearly ends it, that line.
      {"ISO-10303-21;\nHEADER;\nENDSEC;DATA;\n", {"3@22" + FOUND}},
      {"ISO-10303-21;\nHEADER;\n  ENDSEC ;\nENDSEC;/**/", {"3@24" + FOUND}},
      {"ISO-10303-21;\rHEADER;\rENDSEC;\rDATA;\r",
       {"1@0 warning first_line: The first line is not \"ISO-10303-21;\"; the last line of every "
        "file that is written is made from it.",
        "1@0" + FOUND}},
  });
}

TEST(TextCheck, NothingBehindTheHeader) {
  expect_findings({{"ISO-10303-21;\nHEADER;\nENDSEC; ",
                    {"3@30 error nothing_after_header: The file ends with its header."}}});
}

TEST(TextCheck, HeaderThatIsReadAsData) {
  const std::string FOUND =
      "error header_is_read_as_data: The header, which this line ends, holds a \";\" in front of a "
      "\"#\" or of another \";\"; when the file is read again, data seems to begin or to end "
      "there.";
  const auto with = [](const std::string& text) {
    return "ISO-10303-21;\nHEADER;\n" + text + ";\nENDSEC;\nDATA;\n" + PARTS + END;
  };
  for (const char* text :
       {"A('a;;b')", "A('a; ;b')", "A('a;#4=b')", "#4=A()", "#4", "#b", "#b\n;#c"}) {
    SCOPED_TRACE(text);
    EXPECT_EQ(checked(with(text)), (Lines{place_of("ENDSEC", with(text)) + FOUND}));
  }
  // What is whole, and has no number, is dropped.
  for (const char* text : {"A('a;#b;c')", "A('a;b#4;c')", "#()"}) {
    SCOPED_TRACE(text);
    EXPECT_EQ(checked(with(text)), Lines());
  }
}

TEST(TextCheck, TextBehindTheLastSemicolon) {
  const std::string FOUND = "error unclosed_text: No \";\" closes this text, the file's last.";
  expect_findings({
      {DATA + "stray", {at(0) + FOUND}},
      {DATA + "ENDSEC;\nEND-ISO-10303-21\n",
       {"10@" + std::to_string(DATA.size() + 8) + " " + FOUND}},
      {DATA + END + "\n\n /* bye */\n", {"13@" + std::to_string(DATA.size() + 29) + " " + FOUND}},
  });
}

TEST(TextCheck, LastRecordThatNothingCloses) {
  const std::string OPEN =
      "error unclosed_record #5: No \")\" and \";\" close this record up to the end of the file.";
  expect_findings({
      {DATA + " #5=A(", {at(1) + OPEN}},
      {DATA + "#5=A()",
       {at(0) + "error unclosed_record #5: No \";\" closes this record, the file's last."}},
      {DATA + "#5=A('x';\n" + END, {at(0) + OPEN}},
      {DATA + "#5=A()/**/;\n" + END, {at(0) + OPEN}},
      {DATA + "#;",
       {at(0) + "error unclosed_record: No \")\" and \";\" close this record up to the "
                "end of the file."}},
  });
}

TEST(TextCheck, EmptyStatement) {
  const std::string FOUND = "data_ended_early: An empty statement ends the data: the ";
  expect_findings({
      {DATA + ";#5=A();\n#6=B();\n" + END,
       {at(0) + "error " + FOUND + "42 bytes behind it, with 2 records, are ignored."}},
      {DATA + "\n ;;\n#5=A('x;y');" + END,
       {"10@" + std::to_string(DATA.size() + 2) + " error " + FOUND +
        "40 bytes behind it, with 1 record, are ignored."}},
      {DATA + ";" + END,
       {at(0) + "warning " + FOUND + "26 bytes behind it, with 0 records, are ignored."}},
      {DATA + ";stray",
       {at(0) + "warning " + FOUND + "5 bytes behind it, with 0 records, are ignored."}},
      {DATA + END + ";\n \n", {}},
      // Inside a record it is nothing but a piece.
      {DATA + "#5=A(';;');" + END,
       {at(0) + "warning semicolon_in_string #5: A string holds a \";\", which gets lost with the "
                "blanks around it."}},
  });
}

TEST(TextCheck, RecordsBehindAnEmptyStatementCountBehindComments) {
  const auto lost = [](const std::string& text) {
    const Lines lines = checked(DATA + ";" + text + END);
    EXPECT_EQ(lines.size(), 1u) << text;
    const std::string what = lines.empty() ? "" : lines.front();
    return what.substr(0, what.find(':')) + what.substr(what.find(", with ") + 6);
  };
  const auto error = [](const std::string& records) {
    return at(0) + "error data_ended_early " + records + ", are ignored.";
  };
  EXPECT_EQ(lost("/* one */ #8=A(#1);\n/* two */\n#10=C();"), error("2 records"));
  EXPECT_EQ(lost("#8=A('x',#1);\n/* a; b */#10=C();"), error("2 records"));
  EXPECT_EQ(lost("#8=A() /* n */;\n#10=C() /* m */;"), error("2 records"));
  EXPECT_EQ(lost("DATA #8=A();"), error("1 record"));
  EXPECT_EQ(lost("#8=A('a;#9=b;c',$);"), error("1 record"));
  EXPECT_EQ(lost("#8=A('a;#9=b);\n#10=C();"), error("2 records"));
  // What stands in a comment is none.
  EXPECT_EQ(lost("/* #8=A(); #9=B(); */"),
            at(0) + "warning data_ended_early 0 records, are ignored.");
  EXPECT_EQ(checked(DATA + "/* a;; #8=A(); b */ #10=C();" + END),
            (Lines{at(5) + "error data_ended_early: An empty statement ends the data: the 48 bytes "
                           "behind it, with 1 record, are ignored."}));
}

TEST(TextCheck, TextBehindTheEnd) {
  const std::string FOUND =
      " error text_after_end: More text stands behind \"END-ISO-10303-21;\", and its records are "
      "read as well.";
  const auto place = [](std::size_t line, std::size_t offset) {
    return std::to_string(line) + "@" + std::to_string(DATA.size() + END.size() + offset);
  };
  expect_findings({
      {DATA + END + "#5=A();\n#6=A();\n", {place(11, 0) + FOUND}},
      {DATA + END + "/* note */;\n\nENDSEC;\n#6=A();\n", {place(13, 13) + FOUND}},
      {DATA + END + END, {place(11, 0) + FOUND}},
  });
}

TEST(TextCheck, MissingEnd) {
  expect_findings({
      {DATA + "ENDSEC;\n",
       {"10@" + std::to_string(DATA.size() + 8) +
        " warning missing_end: The file does not end with \"END-ISO-10303-21;\"; it may have been "
        "cut off."}},
  });
}

TEST(TextCheck, RecordsThatAreDropped) {
  const std::string DROPPED = "The record is dropped, since ";
  const std::string NO_TYPE = DROPPED + "no \"=\", type and \"(\" stand behind its number.";
  expect_findings_in_data({
      {"#=A();",
       {at(0) + "error record_without_number: " + DROPPED + "no number stands behind its \"#\"."}},
      {"# 5=A();",
       {at(0) + "error record_without_number: " + DROPPED + "no number stands behind its \"#\"."}},
      {" #0=A();", {at(1) + "error record_number_zero: " + DROPPED + "its number is 0."}},
      {"#000()",
       {at(0) + "error unclosed_record: No \")\" and \";\" close this record up to the "
                "end of the file."}},
      {"#4294967296=A();",
       {at(0) + "error record_number_too_large: " + DROPPED +
        "its number is above 4,294,967,295."}},
      {"#99999999999999999999=A();",
       {at(0) + "error record_number_too_large: " + DROPPED +
        "its number is above 4,294,967,295."}},
      {"#5 A();", {at(0) + "error record_without_type #5: " + NO_TYPE}},
      {"#5=);", {at(0) + "error record_without_type #5: " + NO_TYPE}},
      {"#5=();", {at(0) + "error record_without_type #5: " + NO_TYPE}},
  });
}

TEST(TextCheck, RecordsBehindOtherText) {
  expect_findings_in_data({
      {"/* n */ #5=A();",
       {at(0) + "error record_after_text #5: Record #5 is dropped, since a "
                "comment stands in front of it."}},
      {"/* n;m */ #5 = A();",
       {at(5) + "error record_after_text #5: Record #5 is dropped, since a "
                "comment stands in front of it."}},
      {"DATA #5=A();",
       {at(0) + "error record_after_text #5: Record #5 is dropped, since other "
                "text stands in front of it."}},
  });
}

TEST(TextCheck, OtherText) {
  const std::string FOUND =
      "warning skipped_text: This is neither a record nor the begin or end of a section, and is "
      "passed over: ";
  expect_findings_in_data({
      {"ANCHOR;", {at(0) + FOUND + "\"ANCHOR\""}},
      {"&SCOPE #4;", {at(0) + FOUND + "\"&SCOPE #4\""}},
      {"a\n\xE4;", {at(0) + FOUND + "\"a??\""}},
      {std::string(50, 'x') + ";", {at(0) + FOUND + "\"" + std::string(40, 'x') + "...\""}},
  });
}

TEST(TextCheck, StringsThatASemicolonCuts) {
  const std::string LOST =
      "warning semicolon_in_string #5: A string holds a \";\", which gets lost with the blanks "
      "around it.";
  const std::string CUT =
      "error cut_record #5: The record ends inside a string: the string has no end, or holds "
      "\");\", behind which the record is cut off.";
  expect_findings_in_data({
      {"#5=A('b ; c','d;e');", {at(0) + LOST}},
      {"#5=A('b);c');",
       {at(0) + CUT, at(9) + "warning skipped_text: This is neither a record nor the begin or end "
                             "of a section, and is passed over: \"c')\""}},
      {"#5=A('b);", {at(0) + CUT}},
      {"#5=A('b;c);", {at(0) + CUT, at(0) + LOST}},
  });
}

TEST(TextCheck, RecordsThatTakeInWhatFollows) {
  expect_findings_in_data({
      {"#5=A() /* n */;\n#6=B();",
       {at(0) + "error joined_record #5: The record does not end in \")\", and what stands behind "
                "its \";\" is read as part of it.",
        at(0) + "error missing_instance #5: #5 refers to #6, which is not there."}},
      {"#5=A(;);",
       {at(0) + "error joined_record #5: The record does not end in \")\", and what stands behind "
                "its \";\" is read as part of it."}},
  });
}

TEST(TextCheck, CommentsThatAreReadAsData) {
  const std::string FOUND =
      "warning comment_is_read #5: A comment holds what looks like data, and is read as data.";
  expect_findings_in_data({
      {"#5=A(/* #4 */);", {at(0) + FOUND}},
      {"#5=A('/*', /* not 'me' */ $);", {at(0) + FOUND}},
      {"#5=A('it''s /* #4 */', /* me */ '/* #4');", {}},
      {"/* old; #5=A(); still old */ ENDSEC;", {at(8) + FOUND}},
  });
}

TEST(TextCheck, BytesThatAreNoUtf8) {
  const std::string FOUND =
      "warning not_utf8 #5: The record holds bytes that are neither ASCII nor UTF-8; they are "
      "copied as they are.";
  expect_findings_in_data({
      {"#5=A('M\xFCller');", {at(0) + FOUND}},
      {"#5=A('\xC3\xBC \xC3');", {at(0) + FOUND}},
  });
}

TEST(TextCheck, BytesOfTheHeaderThatAreNoUtf8) {
  const std::string FOUND =
      " warning not_utf8: A line of the header holds bytes that are neither ASCII nor UTF-8; they "
      "are copied as they are.";
  const auto with = [](const std::string& lines) {
    return "ISO-10303-21;\nHEADER;\n" + lines + "ENDSEC;\nDATA;\n" + PARTS + END;
  };
  expect_findings({
      {with("FILE_NAME('\xE9','');\n"), {"3@22" + FOUND}},
      {with("\n FILE_NAME('','');\n\tFILE_SCHEMA(('\xC3'));\n"), {"5@43" + FOUND}},
      {with("FILE_NAME('\xE9','\xE9');\nFILE_SCHEMA(('\xE9'));\n"),
       {"3@22" + FOUND, "4@42" + FOUND}},
      {with("FILE_NAME('\xC3\xA9 \xE2\x82\xAC','');\n"), {}},
      {"ISO-10303-21;/*\xE9*/\n" + DATA + END,
       {"1@0" + FOUND,
        "1@0 warning first_line: The first line is not \"ISO-10303-21;\"; the last line of every "
        "file that is written is made from it."}},
  });
}

TEST(TextCheck, RepeatedNumber) {
  const std::string FOUND = "was given to the record in line ";
  expect_findings_in_data({
      {"#5=A();\n#4=PRODUCT_DEFINITION('','',#2,$);\n#04=PRODUCT_DEFINITION('','',#2,$);",
       {"10@" + std::to_string(DATA.size() + 8) + " error repeated_number #4: The number #4 " +
            FOUND + "8 already, which loses its place to this one.",
        "11@" + std::to_string(DATA.size() + 43) + " error repeated_number #4: The number #4 " +
            FOUND + "10 already, which loses its place to this one."}},
      {"#5;\n#5=();#5=A();",
       {at(0) + "error joined_record #5: The record does not end in \")\", and what stands behind "
                "its \";\" is read as part of it.",
        at(0) + "error record_without_type #5: The record is dropped, since no \"=\", type and "
                "\"(\" stand behind its number."}},
  });
}

TEST(TextCheck, MalformedReference) {
  const std::string FOUND =
      "error malformed_reference #5: A \"#\" in the record has no number from 1 to 4,294,967,295 "
      "behind it; the references behind it are not seen.";
  expect_findings_in_data({
      {"#5=A(#4,#x,#99);", {at(0) + FOUND}},
      {"#5=A(#0);", {at(0) + FOUND}},
      {"#5=A(#4294967296);", {at(0) + FOUND}},
  });
}

TEST(TextCheck, MemoryLimit) {
  const std::string text = DATA + "#4294967295=A();\n" + END;
  EXPECT_EQ(checked(text), Lines());
  // A table of 8 MiB, two pages of slots, a block for the records and a few texts.
  EXPECT_EQ(checked(text, {.memory_limit = 9'000'000}), Lines());
  EXPECT_EQ(checked(text, {.memory_limit = 8'000'000}),
            (Lines{at(0) + "error memory_limit #4294967295: With instance #4294967295 the records "
                           "need 8716714 bytes of memory, and the limit is 8000000."}));
  const std::string long_record = DATA + "#5=A('" + std::string(3'000'000, 'x') + "');" + END;
  EXPECT_EQ(checked(long_record, {.memory_limit = 2'000'000}),
            (Lines{"8@174 error memory_limit: The header, a record or other text in front of a "
                   "\";\" is longer than the memory limit of 2000000 bytes."}));
  EXPECT_EQ(checked(long_record, {.memory_limit = 5'000'000}), Lines());
  const std::string long_header = "ISO-10303-21;\n" + std::string(400'000, '\n');
  EXPECT_EQ(checked(long_header + "ENDSEC;\n" + END, {.memory_limit = 300'000}),
            (Lines{"400003@400022 error memory_limit: The header, a record or other text in front "
                   "of a \";\" is longer than the memory limit of 300000 bytes."}));
}

}  // namespace
}  // namespace Kessel::test
