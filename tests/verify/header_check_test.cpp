// Headers with fewer strings than they should have.
#include <gtest/gtest.h>

#include <string>

#include "check/check_text.h"
#include "findings/finding_list.h"
#include "verify/file_report.h"
#include "verify/header_check.h"

namespace Kessel::test {
namespace {

const std::string TIME = "2026-11-16T02:45:07+00:00";

/// What is found in a file that begins with the line "X;", `text` and the begin of the data, where
/// the input begins with the line "X;" and `header`.
Lines findings_on(std::string_view header, std::string_view text) {
  const std::string whole = "X;\n" + std::string(text) + "\nDATA;\nrest";
  FindingList findings;
  FileReport report(whole, findings);
  const std::size_t data = check_header(whole, "X;", header, "a b.stp", report);
  EXPECT_EQ(data, whole.size() - 4);
  Lines lines;
  for (const Finding& finding : findings.take()) lines.push_back(finding.sentence);
  return lines;
}

bool fits(std::string_view header, std::string_view text) {
  return findings_on(header, text).empty();
}

TEST(HeaderCheck, NameAndTime) {
  EXPECT_TRUE(
      fits("FILE_NAME('old','then','me');\n", "FILE_NAME('a b.stp','" + TIME + "','me');\n"));
  EXPECT_FALSE(fits("FILE_NAME('old','then','me');\n", "FILE_NAME('old','" + TIME + "','me');\n"));
  EXPECT_FALSE(fits("FILE_NAME('old','then','me');\n", "FILE_NAME('a b.stp','then','me');\n"));
  EXPECT_FALSE(
      fits("FILE_NAME('old','then','me');\n", "FILE_NAME('a b.stp','" + TIME + "','us');\n"));
}

TEST(HeaderCheck, StringsInFrontOfTheName) {
  EXPECT_TRUE(fits("D(('x'));F('y');FILE_NAME('','');\n",
                   "D(('x'));F('y');FILE_NAME('a b.stp','" + TIME + "');\n"));
}

TEST(HeaderCheck, DoubledApostropheEndsTheOldName) {
  EXPECT_TRUE(fits("FILE_NAME('it''s','then');\n",
                   "FILE_NAME('a b.stp'" + std::string("'") + TIME + "','then');\n"));
}

TEST(HeaderCheck, NameWithoutATime) {
  EXPECT_TRUE(fits("FILE_NAME('old');\n", "FILE_NAME('a b.stp');\n"));
  EXPECT_FALSE(fits("FILE_NAME('old');\n", "FILE_NAME('old');\n"));
}

TEST(HeaderCheck, OneApostropheBehindFileName) {
  EXPECT_TRUE(fits("D('x');FILE_NAME(';\n", "D('" + TIME + "');FILE_NAME(';\n"));
}

TEST(HeaderCheck, NoApostropheBehindFileName) {
  EXPECT_TRUE(fits("D('x','y');FILE_NAME();\n", "D('x'" + TIME + "'y');FILE_NAME();\n"));
}

TEST(HeaderCheck, NoFileName) {
  EXPECT_TRUE(fits("D('x','y');\n", "D('x'" + TIME + "'y');\n"));
  EXPECT_FALSE(fits("D('x','y');\n", "D('x','y');\n"));
  EXPECT_TRUE(fits("D('x');\n", "D('x');\n"));
  EXPECT_TRUE(fits("D();\n", "D();\n"));
}

TEST(HeaderCheck, NameThatLooksLikeTheEndOfTheName) {
  EXPECT_EQ(findings_on("FILE_NAME('old','then');\n", "FILE_NAME('a'',''b','" + TIME + "');\n"),
            Lines{"The header says that the file is called \"a'',''b\", which it is not."});
}

TEST(HeaderCheck, WithoutData) {
  FindingList findings;
  FileReport report("X;\nH;\nDATA", findings);
  EXPECT_EQ(check_header("X;\nH;\nDATA", "X;", "H;\n", "a", report), std::string::npos);
  EXPECT_EQ(findings.take().size(), 1u);
}

}  // namespace
}  // namespace Kessel::test
