// What the reading of a file itself finds: every error, of which there is at most one, and every
// warning.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "check/check_text.h"
#include "splitter/small_inputs.h"

namespace Kessel::test {
namespace {

const std::string BEGIN = "ISO-10303-21;\nHEADER;\nENDSEC;\n";
const std::string DATA = BEGIN + "DATA;\n" + std::string(BOX_WITH_LID);
const std::string END = "ENDSEC;\nEND-ISO-10303-21;\n";

/// Where the first record behind the box stands, and what stands `bytes` bytes behind that, in the
/// line that is `lines` below.
std::string at(std::size_t bytes, std::size_t lines = 0, std::size_t column = 1) {
  if (lines == 0) column += bytes;
  return std::to_string(17 + lines) + ":" + std::to_string(column) + "@" +
         std::to_string(DATA.size() + bytes) + " ";
}

struct Case {
  std::string text;
  Lines found;
};

void expect_findings(const std::vector<Case>& cases) {
  for (const Case& expected : cases)
    EXPECT_EQ(checked(expected.text), expected.found) << expected.text;
}

/// The same for records that stand behind the box.
void expect_findings_in_data(const std::vector<Case>& cases) {
  for (const Case& expected : cases) {
    EXPECT_EQ(checked(DATA + expected.text + "\n" + END), expected.found) << expected.text;
  }
}

TEST(Reading, LegalFilesHaveNoFindings) {
  expect_findings_in_data({
      {"", {}},
      {"#20=A('b; c /* #99 */ ENDSEC;');", {}},
      {"/* it's; #99=A() */ #20 /* a */ = /* b */ A ( /* #99 */ ) /* c */ ;", {}},
      {"#0020=A(#0001,'\\\\','\\X2\\00FC\\X0\\','\\S\\D','\xC3\xBC',\"0FF\",.T.,$,*,1.E-3);", {}},
      {"#20=(A()B(#1));#21=!OURS((),('a'));\r\n#18446744073709551615=A();", {}},
      {"ENDSEC;DATA;#20=A();", {}},
  });
  expect_findings({
      {"\xEF\xBB\xBF" + DATA + END, {}},
      {"/* note; */ " + DATA + END + " /* bye */ \n", {}},
      {BEGIN + "ANCHOR;<a>=#3;ENDSEC;REFERENCE;#50=<http://b/a.stp#c;d>;ENDSEC;" +
           DATA.substr(BEGIN.size()) + END,
       {}},
  });
}

TEST(Reading, WhatIsNotClosed) {
  expect_findings({
      {DATA + "#20=A(",
       {at(0) + "error unclosed_record: No \";\" closes this record up to the end of the file."}},
      {DATA + "ENDSEC",
       {at(0) + "error unclosed_text: No \";\" closes this text up to the end of the file."}},
      {DATA + "#20=A('b);\n" + END,
       {at(0) + "error unclosed_string: A string in this statement is not closed up to the end of "
                "the file."}},
      {DATA + "/* #20=A();\n" + END,
       {at(0) + "error unclosed_comment: A comment here or in this statement is not closed up to "
                "the end of the file."}},
      {DATA + "#20=A();",
       {at(8) + "error unclosed_section: The DATA section is not closed by \"ENDSEC;\"."}},
      {DATA + "END-ISO-10303-21;\n",
       {at(0) + "error unclosed_section: The DATA section is not closed by \"ENDSEC;\"."}},
      {BEGIN + "ANCHOR;\nDATA;\n",
       {"5:1@38 error unclosed_section: The ANCHOR section is not closed by \"ENDSEC;\"."}},
      {BEGIN + "REFERENCE;\nDATA;\n",
       {"5:1@41 error unclosed_section: The REFERENCE section is not closed by \"ENDSEC;\"."}},
      {"ISO-10303-21;\nHEADER;\n#1=A();\n",
       {"3:1@22 error unclosed_section: The HEADER section is not closed by \"ENDSEC;\"."}},
  });
  expect_findings_in_data({
      {"#20=A((1);", {at(0) + "error unclosed_list #20: A \"(\" in this record is not closed."}},
      {"#20=A()\n#21=B();",
       {at(0) + "error unclosed_record: A record begins in this statement; a \";\" is missing in "
                "front of it."}},
  });
}

TEST(Reading, WhatStandsAtAWrongPlace) {
  expect_findings({
      {"ISO-10303-21;\nDATA;\n",
       {"2:1@14 error missing_header: The header section, \"HEADER;\", should begin here."}},
      {BEGIN + "#1=A();\n" + END,
       {"4:1@30 error skipped_text: A record stands here, outside of the data section; \"DATA;\" "
        "may "
        "be missing."}},
  });
  expect_findings_in_data({
      {"#18446744073709551616=A();",
       {at(0) + "error record_number_too_large: An instance number here is above "
                "18446744073709551615."}},
      {"#20=A(#18446744073709551616);",
       {at(0) + "error record_number_too_large: An instance number here is above "
                "18446744073709551615."}},
      {"#20=&SCOPE #21=A(); ENDSCOPE B();",
       {at(0) + "error unsupported_scope #20: This record has a scope (\"&SCOPE\"), which is not "
                "supported."}},
      {"#20=A();\n#20=B();",
       {at(9, 1) + "error two_texts_of_a_number #20: #20 has stood for another record already."}},
  });
}

TEST(Reading, WhatIsWarnedOf) {
  expect_findings_in_data({
      {";", {at(0) + "warning empty_statement: Nothing stands in front of this \";\"."}},
      {"stray;",
       {at(0) + "warning skipped_text: This text is no record and no section's begin or end; it is "
                "left out."}},
      {"#=A();",
       {at(0) + "warning skipped_text: This text is no record and no section's begin or end; it is "
                "left out."}},
      {"#0=A();", {at(0) + "warning unusual_record: The number of this record is 0."}},
      {"#20=A());", {at(0) + "warning unusual_record #20: A \")\" in this record closes nothing."}},
      {"#20 A();",
       {at(0) + "warning unusual_record #20: No \"=\" stands behind the number of this record."}},
      {"#20='b';", {at(0) + "warning unusual_record #20: This record has no type."}},
      {"#20=A('b\\c');",
       {at(0) + "warning lone_backslash #20: A string has a \"\\\" that begins no directive and is "
                "not doubled."}},
      {"#20=A('M\xFCller');",
       {at(0) + "warning not_utf8 #20: Bytes here are neither ASCII nor UTF-8."}},
      {"#20=A();\n#20=A();",
       {at(9, 1) + "warning same_text_twice #20: #20 has been there already, with the same text; "
                   "it is taken once."}},
  });
}

TEST(Reading, WhatIsWarnedOfAroundTheData) {
  const std::string whole = DATA + END;
  const std::string behind = "19:1@" + std::to_string(whole.size()) + " ";
  expect_findings({
      {"ISO-10303-21;\nHEADER;\nFILE_NAME('\xE9\\');;\n12;\nENDSEC;\n" + DATA.substr(BEGIN.size()) +
           END,
       {"3:1@22 warning lone_backslash: A string has a \"\\\" that begins no directive and is not "
        "doubled.",
        "3:1@22 warning not_utf8: Bytes here are neither ASCII nor UTF-8.",
        "3:17@38 warning empty_statement: Nothing stands in front of this \";\".",
        "4:1@40 warning skipped_text: This text is no record and no section's begin or end; it is "
        "left out."}},
      {whole + "#5=A();",
       {behind + "warning text_after_end: Text stands behind \"END-ISO-10303-21;\"; it is left "
                 "out."}},
      {whole + "SIGNATURE;\nMIIB\nENDSEC;\n",
       {behind + "warning signature_dropped: The file is signed; the signature is left out, since "
                 "it does not sign what is written."}},
      {DATA + "ENDSEC;\n",
       {"18:1@" + std::to_string(DATA.size() + 8) +
        " warning missing_end: \"END-ISO-10303-21;\" is missing."}},
  });
}

// What was warned of in front of an error is told as well; behind it nothing is read.
TEST(Reading, WarningsInFrontOfAnError) {
  expect_findings_in_data({
      {";\n#20=A(#99\n);\n;#21=B((;\n;",
       {at(0) + "warning empty_statement: Nothing stands in front of this \";\".",
        at(15, 3) + "warning empty_statement: Nothing stands in front of this \";\".",
        at(16, 3, 2) + "error unclosed_list #21: A \"(\" in this record is not closed."}},
      {"#20=A();\n#20=B();\n;",
       {at(9, 1) + "error two_texts_of_a_number #20: #20 has stood for another record already.",
        at(18, 2) + "warning empty_statement: Nothing stands in front of this \";\"."}},
  });
}

TEST(Reading, MemoryLimit) {
  const std::string long_record = DATA + "#20=A('" + std::string(3'000'000, 'x') + "');" + END;
  EXPECT_EQ(checked(long_record, {.memory_limit = 2'000'000}),
            (Lines{at(0) + "error memory_limit: What stands here in front of the next \";\" is "
                           "longer than the memory limit allows."}));
  EXPECT_EQ(checked(long_record, {.memory_limit = 5'000'000}), Lines());
  std::string records = DATA;
  for (int i = 100; i < 20'000; ++i) records += "#" + std::to_string(i) + "=A(#1,#2,#3);\n";
  const Lines found = checked(records + END, {.memory_limit = 500'000});
  ASSERT_EQ(found.size(), 1u);
  EXPECT_TRUE(found[0].starts_with("error memory_limit: The first ")) << found[0];
  EXPECT_NE(found[0].find(" bytes of memory, and the limit is 500,000; all may take about "),
            std::string::npos)
      << found[0];
  EXPECT_EQ(checked(records + END, {.memory_limit = 5'000'000}), Lines());
}

}  // namespace
}  // namespace Kessel::test
