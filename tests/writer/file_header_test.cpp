// What the header of an output file keeps of the input's.
#include <gtest/gtest.h>

#include <string>

#include "writer/file_header.h"

namespace Kessel::test {
namespace {

const std::string HEADER_OF_TOWER =
    "HEADER;\n"
    "FILE_DESCRIPTION(('a tower'),'2;1');\n"
    "FILE_NAME('tower.stp','1999-12-31T23:59:59',('me'),('us'),'pre','orig','auth');\n"
    "FILE_SCHEMA(('AUTOMOTIVE_DESIGN'));\n"
    "ENDSEC;\n";

std::string header_of(const std::string& header) {
  return make_file_header(header, "NAME", "TIME");
}

TEST(FileHeader, NameAndTimeStampAreReplacedAndTheRestIsKept) {
  EXPECT_EQ(make_file_header(HEADER_OF_TOWER, "out/#7_part.stp", "2026-11-16T02:45:07+00:00"),
            "HEADER;\n"
            "FILE_DESCRIPTION(('a tower'),'2;1');\n"
            "FILE_NAME('out/#7_part.stp','2026-11-16T02:45:07+00:00',"
            "('me'),('us'),'pre','orig','auth');\n"
            "FILE_SCHEMA(('AUTOMOTIVE_DESIGN'));\n"
            "ENDSEC;\n");
}

TEST(FileHeader, NamesWithApostrophesDoNotMoveTheTimeStamp) {
  EXPECT_EQ(make_file_header("FILE_NAME('a','b','c');\n", "it''s", "TIME"),
            "FILE_NAME('it''s','TIME','c');\n");
}

TEST(FileHeader, EmptyNameGetsThePathBetweenItsApostrophes) {
  EXPECT_EQ(header_of("FILE_NAME('','then',(''),(''),'','','');\n"),
            "FILE_NAME('NAME','TIME',(''),(''),'','','');\n");
}

TEST(FileHeader, DoubledApostropheEndsTheNameAtItsFirst) {
  // The rest of the old name, from the doubled apostrophe on, is what the time stamp goes into.
  EXPECT_EQ(header_of("FILE_NAME('it''s.stp','then',(''));\n"),
            "FILE_NAME('NAME''TIME','then',(''));\n");
}

TEST(FileHeader, ValuesOnSeveralLinesAreReplacedToo) {
  EXPECT_EQ(header_of("FILE_NAME(\n/* name */ 'old\nname',\n/* time_stamp */ 'then',\n('me'));\n"),
            "FILE_NAME(\n/* name */ 'NAME',\n/* time_stamp */ 'TIME',\n('me'));\n");
}

TEST(FileHeader, FirstMentionOfFileNameIsTheOne) {
  EXPECT_EQ(header_of("FILE_DESCRIPTION(('see FILE_NAME'),'2;1');\nFILE_NAME('a','b');\n"),
            "FILE_DESCRIPTION(('see FILE_NAME'NAME'2;1'TIME'a','b');\n");
}

TEST(FileHeader, WithoutFileNameTheTimeStampGoesBetweenTheSecondAndThirdApostrophe) {
  // Outputs depend on that.
  EXPECT_EQ(header_of("FILE_DESCRIPTION(('a','b'),'2;1');\n"),
            "FILE_DESCRIPTION(('a'TIME'b'),'2;1');\n");
}

TEST(FileHeader, MissingApostrophes) {
  const struct {
    const char* what;
    const char* header;
    const char* expected;
  } CASES[] = {
      {"an empty header", "", ""},
      {"no apostrophe at all", "FILE_NAME(a,b);\n", "FILE_NAME(a,b);\n"},
      {"a single apostrophe, behind the keyword", "FILE_NAME('a;\n", "FILE_NAME('a;\n"},
      {"two: only the name", "FILE_NAME('a',b);\n", "FILE_NAME('NAME',b);\n"},
      {"three: the time stamp is not closed", "FILE_NAME('a','b);\n", "FILE_NAME('NAME','b);\n"},
      {"none behind the keyword, three before it: as if there were no keyword",
       "A('x','y');\nFILE_NAME(a);\n", "A('x'TIME'y');\nFILE_NAME(a);\n"},
      {"one behind the keyword, two before it: the search for a time begins at the front",
       "A('x');\nFILE_NAME('a;\n", "A('TIME');\nFILE_NAME('a;\n"},
      {"one behind the keyword, one before it: they enclose the time", "A('x;\nFILE_NAME('a;\n",
       "A('TIME'a;\n"},
      {"no keyword, one apostrophe", "A('x;\n", "A('x;\n"},
      {"no keyword, two apostrophes", "A('x');\n", "A('x');\n"},
  };
  for (const auto& row : CASES) {
    SCOPED_TRACE(row.what);
    EXPECT_EQ(header_of(row.header), row.expected);
  }
}

}  // namespace
}  // namespace Kessel::test
