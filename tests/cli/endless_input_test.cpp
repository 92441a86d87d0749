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

struct Refusal {
  std::string input;
  std::string reason;  ///< behind the file's name
};

void expect_refused(const std::vector<Refusal>& refusals) {
  for (const auto& [input, reason] : refusals) {
    SCOPED_TRACE(input);
    const ProcessRun run = split(input);
    EXPECT_EQ(run.exit_code, 1);
    EXPECT_EQ(run.out, "");
    EXPECT_EQ(run.errors, "velkstep: in.stp" + reason + "\n");
  }
}

TEST(EndlessInput, HeaderThatNoLineEnds) {
  const auto in_line = [](int line) {
    return ":" + std::to_string(line) + ": No line ends the header with \"ENDSEC;\".";
  };
  const std::string OTHER =
      ": The file is no exchange file: it does not begin with \"ISO-10303-21\".";
  expect_refused({
      {"", ": The file is empty."},
      {"\n", OTHER},
      {"ISO-10303-21;\nHEADER;\n", in_line(3)},
      {"ENDSEC;\n", OTHER},  // the first line is not part of the header
      {"ISO-10303-21; HEADER; ENDSEC;\nDATA;\n", in_line(1)},
      {"ISO-10303-21;\nHEADER;\nENDSEC;DATA;\n", in_line(3)},   // something else ends the line
      {"ISO-10303-21;\nHEADER;\nENDSEC ;\nDATA;", in_line(3)},  // not the same text
      {"ISO-10303-21;\nHEADER;\nendsec;\n", in_line(4)},
      {"ISO-10303-21;\nHEADER;\nENDSEC;/**/\n", in_line(3)},
      // a line ends at a line feed only
      {"ISO-10303-21;\rHEADER;\rENDSEC;\rDATA;\r", in_line(1)},
      {"ISO-10303-21;\nHEADER;\nENDSEC\n;\n", in_line(3)},
  });
}

TEST(EndlessInput, NothingBehindTheHeaderNotEvenTheEndOfItsLine) {
  const std::string FOUND = ":3: The file ends with its header.";
  expect_refused(
      {{"ISO-10303-21;\nHEADER;\nENDSEC;", FOUND}, {"ISO-10303-21;\nHEADER;\nENDSEC;  ", FOUND}});
}

TEST(EndlessInput, TextBehindTheLastSemicolon) {
  const auto in_line = [](int line) {
    return ":" + std::to_string(line) + ": No \";\" closes this text, the file's last.";
  };
  const std::string OPEN = ": No \")\" and \";\" close this record up to the end of the file.";
  const std::string NO_SEMICOLON = ": No \";\" closes this record, the file's last.";
  expect_refused({
      {HEADER + "stray", in_line(4)},
      {HEADER + "DATA;\n#1=A(", ":5" + OPEN},
      {HEADER + "DATA;\n#1=A()", ":5" + NO_SEMICOLON},  // a last record without its ";"
      {HEADER + "DATA;\n#1=A()\n", ":5" + NO_SEMICOLON},
      {HEADER + "DATA;\n#1=A();\nENDSEC;\nEND-ISO-10303-21", in_line(7)},
      {HEADER + "DATA;\n" + END + "stray\n", in_line(7)},
      {HEADER + "DATA;\n" + END + "/* bye */", in_line(7)},
      {exchange_file(BOX_WITH_LID) + "stray", in_line(22)},
  });
}

TEST(EndlessInput, LastRecordWithoutItsParenthesis) {
  const std::string OPEN = ": No \")\" and \";\" close this record up to the end of the file.";
  expect_refused({
      {HEADER + "DATA;\n#1=A();\n#2=B(\n;\n" + END, ":6" + OPEN},
      {HEADER + "DATA;\n#1=A('x';\n" + END, ":5" + OPEN},
      {HEADER + "DATA;\n#1=A();\n#2;", ":6" + OPEN},
      {HEADER + "DATA;\n#1=A() /* note */;\n" + END, ":5" + OPEN},
      // an empty piece inside a record does not end the data
      {HEADER + "DATA;\n#1=A(;;\n" + END, ":5" + OPEN},
      {HEADER + "#;", ":4" + OPEN},
  });
}

// The second reading would begin a record in the header and never end it.
TEST(EndlessInput, HeaderThatIsReadAsData) {
  const std::string reason =
      ":4: The header, which this line ends, holds a \";\" in front of a \"#\" or of another "
      "\";\"; when the file is read again, data seems to begin or to end there.";
  const std::string header = "ISO-10303-21;\nHEADER;\n#x;\nENDSEC;\n";
  expect_refused({
      {header + "DATA;\n" + END, reason},
      {header + "DATA;;\n" + END, reason},
      {header + "DATA;;\n#1=A();\n#2=A(\n;" + END, reason},  // it ends that one, but not the next
  });
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

// What stands behind the end of the data may close it.
TEST(InputThatEnds, HeaderThatBeginsARecord) {
  const std::string end_of_data = "ENDSEC;\nDATA;;\n#1=A();\n" + END;
  expect_read("ISO-10303-21;\nHEADER;\n#x;\n" + end_of_data);
  expect_read("ISO-10303-21;\nHEADER;\n#7;\n" + end_of_data);
  const ProcessRun run = split("ISO-10303-21;\nHEADER;\n#99999999;\n" + end_of_data);
  EXPECT_EQ(run.exit_code, 1);
  EXPECT_EQ(run.errors, std::string(NO_ROOT) +
                            "velkstep: in.stp: a record refers to an instance far beyond the "
                            "highest number; velkstep check finds it\n");
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
