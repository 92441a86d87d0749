// Whole exchange files read into a store.
#include <gtest/gtest.h>

#include <filesystem>
#include <iterator>
#include <memory>
#include <set>
#include <stdexcept>
#include <string>
#include <vector>

#include "kessel/encoding.h"
#include "kessel/file.h"
#include "model/store.h"
#include "reader/parse_file.h"
#include "reader/stored_records.h"
#include "support/scratch_folder.h"

namespace Kessel::test {
namespace {

using Lines = std::vector<std::string>;

std::unique_ptr<Store> parse(const std::string& text) {
  const ScratchFolder folder;
  return parse_file(folder.write("in.stp", text));
}

/// What is stored of an exchange file with the given data.
Lines stored_from(const std::string& data) {
  return stored_records(
      *parse("ISO-10303-21;\nHEADER;\nENDSEC;\nDATA;\n" + data + "\nENDSEC;\nEND-ISO-10303-21;\n"));
}

struct Head {
  std::string first_line;
  std::string header;
  bool operator==(const Head&) const = default;
};

Head head_of(const std::string& text) {
  const std::unique_ptr<Store> file = parse(text);
  return {file->first_line, file->header};
}

TEST(ParseFile, SmallFileIsReadWhole) {
  const std::unique_ptr<Store> file = parse(
      "ISO-10303-21;\n"
      "HEADER;\n"
      "FILE_DESCRIPTION(('an example; with #1'),'2;1');\n"
      "FILE_NAME('a.stp','2024-01-01T00:00:00',('me'),(''),'','','');\n"
      "FILE_SCHEMA(('AUTOMOTIVE_DESIGN'));\n"
      "ENDSEC;\n"
      "DATA;\n"
      "#1=PRODUCT('bolt','a bolt','',(#2));\n"
      "#2 = PRODUCT_CONTEXT('',#3,'mechanical');\n"
      "#3=APPLICATION_CONTEXT('any');\n"
      "#10=PRODUCT_DEFINITION_SHAPE('',$,#1);\n"
      "ENDSEC;\n"
      "END-ISO-10303-21;\n");
  EXPECT_EQ(file->first_line, "ISO-10303-21;");
  EXPECT_EQ(file->header,
            "HEADER;\n"
            "FILE_DESCRIPTION(('an example; with #1'),'2;1');\n"
            "FILE_NAME('a.stp','2024-01-01T00:00:00',('me'),(''),'','','');\n"
            "FILE_SCHEMA(('AUTOMOTIVE_DESIGN'));\n"
            "ENDSEC;\n");
  EXPECT_EQ(stored_records(*file), (Lines{"#1 named [PRODUCT] [bolt]: 2", "#2 plain: 3",
                                          "#3 plain:", "#10 typed [PRODUCT_DEFINITION_SHAPE]: 1"}));
  EXPECT_EQ(file->types, (std::set<std::string>{"PRODUCT", "PRODUCT_DEFINITION_SHAPE"}));
  EXPECT_TRUE(file->parts.empty());
  EXPECT_EQ(file->root, nullptr);
}

TEST(ParseFile, HeaderLinesLoseTheWhiteSpaceAtTheirEnds) {
  EXPECT_EQ(head_of(" \tISO-10303-21; \r\n"
                    "HEADER;\r\n"
                    "  FILE_NAME('a  b');\t\r\n"
                    "\r\n"
                    "   \n"
                    " ENDSEC; \r\n"
                    "DATA;\r\nENDSEC;\r\nEND-ISO-10303-21;\r\n"),
            (Head{"ISO-10303-21;", "HEADER;\nFILE_NAME('a  b');\n\n\nENDSEC;\n"}));
}

TEST(ParseFile, AnyLineThatEndsInEndsecEndsTheHeader) {
  EXPECT_EQ(head_of("first\nHEADER; ENDSEC;\nDATA;\n"), (Head{"first", "HEADER; ENDSEC;\n"}));
  EXPECT_EQ(head_of("first\nNO_ENDSEC;\nENDSEC;\n"), (Head{"first", "NO_ENDSEC;\n"}));
}

TEST(ParseFile, EndsecInTheMiddleOfALineOrSpelledOtherwiseDoesNotEndTheHeader) {
  EXPECT_EQ(head_of("first\nENDSEC; DATA;\nENDSEC ;\nendsec;\nENDSEC\n;\nENDSEC;\nDATA;\n"),
            (Head{"first", "ENDSEC; DATA;\nENDSEC ;\nendsec;\nENDSEC\n;\nENDSEC;\n"}));
}

TEST(ParseFile, FirstLineDoesNotEndTheHeader) {
  EXPECT_EQ(head_of("ENDSEC;\nHEADER;\nENDSEC;\n"), (Head{"ENDSEC;", "HEADER;\nENDSEC;\n"}));
}

TEST(ParseFile, RecordsOnTheLinesOfTheHeaderAreNotRead) {
  const std::unique_ptr<Store> file =
      parse("ISO-10303-21;\nHEADER; ENDSEC; DATA;\n#1=A();\nENDSEC;\n#2=B();\nEND-ISO-10303-21;\n");
  EXPECT_EQ(file->header, "HEADER; ENDSEC; DATA;\n#1=A();\nENDSEC;\n");
  EXPECT_EQ(stored_records(*file), (Lines{"#2 plain:"}));
}

TEST(ParseFile, DataNeedsNeitherItsKeywordNorAnEnd) {
  EXPECT_EQ(stored_records(*parse("x\nENDSEC;\n#1=A();\n#2=B();")),
            (Lines{"#1 plain:", "#2 plain:"}));
  EXPECT_EQ(stored_records(*parse("x\nENDSEC;\n")), Lines());
}

TEST(ParseFile, SemicolonInAStringIsLostWithTheWhiteSpaceAroundIt) {
  EXPECT_EQ(stored_from("#12=PRODUCT('a;b','c','',(#3));"), (Lines{"#12 named [PRODUCT] [ab]: 3"}));
  EXPECT_EQ(stored_from("#12=PRODUCT('a ; b','c','',(#3));"),
            (Lines{"#12 named [PRODUCT] [ab]: 3"}));
}

TEST(ParseFile, TypeInNoTableGivesAPlainRecord) {
  EXPECT_EQ(stored_from("#7 = CARTESIAN_POINT('',(0.,0.,0.));"), (Lines{"#7 plain:"}));
}

TEST(ParseFile, ReferencesComeInOrderWithDuplicates) {
  EXPECT_EQ(stored_from("#9=SHAPE_REPRESENTATION('',(#10,#11,#10),#12);"),
            (Lines{"#9 typed [SHAPE_REPRESENTATION]: 10 11 10 12"}));
}

TEST(ParseFile, ReferenceInAStringIsNoneAndReferenceToZeroEndsTheList) {
  EXPECT_EQ(stored_from("#9=STYLED_ITEM('#4',(#5),#0,#6);"), (Lines{"#9 typed [STYLED_ITEM]: 5"}));
}

TEST(ParseFile, TypeOfAComplexInstanceIsItsWholeInnerText) {
  EXPECT_EQ(stored_from("#20=(GEOMETRIC_REPRESENTATION_CONTEXT(3) "
                        "GLOBAL_UNIT_ASSIGNED_CONTEXT((#21)) REPRESENTATION_CONTEXT('',''));"),
            (Lines{"#20 typed [GEOMETRIC_REPRESENTATION_CONTEXT(3) "
                   "GLOBAL_UNIT_ASSIGNED_CONTEXT((#21)) REPRESENTATION_CONTEXT('','')]: 21"}));
}

TEST(ParseFile, RecordsWithANumberOutOfRangeAreDropped) {
  EXPECT_EQ(stored_from("#0=PRODUCT('x','x','',(#1));#4294967296=PRODUCT('x','x','',(#1));#1=A();"),
            (Lines{"#1 plain:"}));
}

TEST(ParseFile, LargestNumberIsRead) {
  const std::unique_ptr<Store> file = parse("x\nENDSEC;\n#4294967295=PRODUCT('x','x','',(#1));\n");
  EXPECT_EQ(stored_records(*file), (Lines{"#4294967295 named [PRODUCT] [x]: 1"}));
  EXPECT_EQ(file->entities.size(), 4'294'967'296u);
}

TEST(ParseFile, RecordBehindACommentIsDropped) {
  EXPECT_EQ(stored_from("/* note */ #5=PRODUCT('x','x','',(#1));\n#6=A();"), (Lines{"#6 plain:"}));
}

TEST(ParseFile, MalformedRecordsAreDroppedAndTheOthersRead) {
  EXPECT_EQ(stored_from("#1=A();\n#=B();\n#x=C();\n#4 D();\n#5=();\n#6=E();"),
            (Lines{"#1 plain:", "#6 plain:"}));
}

TEST(ParseFile, EmptyPieceEndsTheData) {
  EXPECT_EQ(stored_from("#5=A(#1);;#6=B(#2);"), (Lines{"#5 plain: 1"}));
}

TEST(ParseFile, StringThatHoldsAParenthesisBeforeItsSemicolonCutsTheRecord) {
  EXPECT_EQ(stored_from("#5=PRODUCT('a);b',#6);#7=B(#8);"),
            (Lines{"#5 named [PRODUCT] [a)]:", "#7 plain: 8"}));
}

TEST(ParseFile, RecordsBehindTheEndOfTheFileSectionAreRead) {
  EXPECT_EQ(
      stored_records(*parse("x\nENDSEC;\nDATA;\n#1=A();\nENDSEC;\nEND-ISO-10303-21;\n#2=B();\n")),
      (Lines{"#1 plain:", "#2 plain:"}));
}

TEST(ParseFile, SecondRecordOfANumberReplacesTheFirst) {
  EXPECT_EQ(stored_from("#5=PRODUCT('older','','',(#1));#5=PRODUCT('newer','','',(#2));"),
            (Lines{"#5 named [PRODUCT] [newer]: 2"}));
}

TEST(ParseFile, RecordsMayFillManyBlocks) {
  std::string data;
  Lines lines;
  for (int i = 1; i <= 20'000; ++i) {
    const std::string number = std::to_string(i);
    data +=
        "#" + number + " = PRODUCT ( 'the product number " + number + "', #" + number + " ) ;\r\n";
    lines.push_back("#" + number + " named [PRODUCT] [the product number " + number +
                    "]: " + number);
  }
  EXPECT_EQ(stored_from(data), lines);
}

TEST(ParseFile, InputIsLeftOpenAndReadableOnceMore) {
  const std::string text = "ISO-10303-21;\nHEADER;\nENDSEC;\nDATA;\n#1=A();\nENDSEC;\n";
  const ScratchFolder folder;
  const std::unique_ptr<Store> file = parse_file(folder.write("in.stp", text));
  std::ifstream& input = file->input;
  EXPECT_TRUE(input.is_open());
  EXPECT_TRUE(input.good());
  input.seekg(0);
  EXPECT_EQ(std::string(std::istreambuf_iterator<char>(input), {}), text);
}

TEST(ParseFile, FileThatCannotBeOpenedThrows) {
  const ScratchFolder folder;
  for (const auto& open : {+[](const std::filesystem::path& path) { parse_file(path); },
                           +[](const std::filesystem::path& path) {
                             std::unique_ptr<File>(File::from(path, decode_step_to_utf8));
                           }}) {
    try {
      open(folder / "there is no such file.stp");
      FAIL() << "was opened";
    } catch (const std::invalid_argument& error) {
      EXPECT_STREQ(error.what(), "Failed to open input file.");
    }
  }
}

}  // namespace
}  // namespace Kessel::test
