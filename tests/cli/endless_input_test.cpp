// Inputs that the library would read for ever are refused in one line; those that only look like
// them are not.
#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "cli/run_process.h"
#include "splitter/small_inputs.h"
#include "support/scratch_folder.h"

namespace Kessel::test {
namespace {

const std::string HEADER = "ISO-10303-21;\nHEADER;\nENDSEC;\n";
const std::string END = "ENDSEC;\nEND-ISO-10303-21;\n";

/// Splits `input`. A command that does not refuse an endless input is stopped by its limit.
ProcessRun split(const std::string& input) {
  const ScratchFolder folder;
  folder.write("in.stp", input);
  const ProcessRun run = run_velkstep({"split", "in.stp", "out"}, {.most_cpu_seconds = 5});
  if (run.exit_code == 1) {
    EXPECT_FALSE(std::filesystem::exists("out"));
    EXPECT_FALSE(std::filesystem::exists("roots.txt"));
  }
  return run;
}

void expect_refused(const std::vector<std::string>& inputs, const std::string& reason) {
  for (const std::string& input : inputs) {
    SCOPED_TRACE(input);
    const ProcessRun run = split(input);
    EXPECT_EQ(run.exit_code, 1);
    EXPECT_EQ(run.out, "");
    EXPECT_EQ(run.errors, "velkstep: in.stp: " + reason + "\n");
  }
}

TEST(EndlessInput, HeaderThatNoLineEnds) {
  expect_refused(
      {
          "",
          "\n",
          "ISO-10303-21;\nHEADER;\n",
          "ENDSEC;\n",                                 // the first line is not part of the header
          "ISO-10303-21; HEADER; ENDSEC;\nDATA;\n",    //
          "ISO-10303-21;\nHEADER;\nENDSEC;DATA;\n",    // something else ends the line
          "ISO-10303-21;\nHEADER;\nENDSEC ;\nDATA;",   // not the same text
          "ISO-10303-21;\nHEADER;\nendsec;\n",         //
          "ISO-10303-21;\nHEADER;\nENDSEC;/**/\n",     //
          "ISO-10303-21;\rHEADER;\rENDSEC;\rDATA;\r",  // a line ends at a line feed only
          "ISO-10303-21;\nHEADER;\nENDSEC\n;\n",
      },
      "no line ends the header with \"ENDSEC;\"");
}

TEST(EndlessInput, NothingBehindTheHeaderNotEvenTheEndOfItsLine) {
  expect_refused({"ISO-10303-21;\nHEADER;\nENDSEC;", "ISO-10303-21;\nHEADER;\nENDSEC;  "},
                 "the file ends with its header");
}

TEST(EndlessInput, TextBehindTheLastSemicolon) {
  expect_refused(
      {
          HEADER + "stray",
          HEADER + "DATA;\n#1=A(",
          HEADER + "DATA;\n#1=A()",  // a last record without its ";"
          HEADER + "DATA;\n#1=A()\n",
          HEADER + "DATA;\n#1=A();\nENDSEC;\nEND-ISO-10303-21",
          HEADER + "DATA;\n" + END + "stray\n",
          HEADER + "DATA;\n" + END + "/* bye */",
          exchange_file(BOX_WITH_LID) + "stray",
      },
      "the file does not end with a \";\" that closes a record or section");
}

TEST(EndlessInput, LastRecordWithoutItsParenthesis) {
  expect_refused(
      {
          HEADER + "DATA;\n#1=A();\n#2=B(\n;\n" + END,
          HEADER + "DATA;\n#1=A('x';\n" + END,
          HEADER + "DATA;\n#1=A();\n#2;",
          HEADER + "DATA;\n#1=A() /* note */;\n" + END,
          HEADER + "DATA;\n#1=A(;;\n" +
              END,  // an empty piece inside a record does not end the data
          HEADER + "#;",
      },
      "the file does not end with a \";\" that closes a record or section");
}

/// Expects that the input is read to its end, in which there is no part.
void expect_read(const std::string& input) {
  SCOPED_TRACE(input);
  const ProcessRun run = split(input);
  EXPECT_EQ(run.exit_code, 3);
  EXPECT_EQ(run.out, "");
  EXPECT_EQ(run.errors, NO_ROOT);
}

TEST(InputThatEnds, HeaderOnly) {
  expect_read(HEADER);
}

TEST(InputThatEnds, HeaderMayEndInTheMiddleOfALineOfItsOwn) {
  expect_read("ISO-10303-21;\nHEADER;FILE_SCHEMA(('X'));ENDSEC;  \r\nDATA;\n" + END);
}

TEST(InputThatEnds, LastSemicolonMayEndTheFileOrBlanksMayFollow) {
  expect_read(HEADER + "DATA;\n#1=A();\nENDSEC;\nEND-ISO-10303-21;");
  expect_read(HEADER + "DATA;\n" + END + " \r\n\t\n");
}

TEST(InputThatEnds, LastRecordMayEndTheFile) {
  expect_read(HEADER + "DATA;\n#1=A();");
}

TEST(InputThatEnds, NothingBehindAnEmptyPieceMatters) {
  expect_read(HEADER + "DATA;\n#1=A();;\nstray text #2=A(");
}

TEST(InputThatEnds, PiecesOfARecordMayLackTheirParenthesis) {
  expect_read(HEADER + "DATA;\n#1=A('x;y;;z');\n" + END);
}

TEST(InputThatEnds, PiecesThatAreNoRecordsMayLackAnything) {
  expect_read(HEADER + "DATA;\nA(;/* #1=A( */ #2=A(;\n" + END);
}

}  // namespace
}  // namespace Kessel::test
