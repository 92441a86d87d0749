// Inputs that the library would read for ever in the classic reading are refused in one line; those
// that only look like them are not. The standard reading knows where they end.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <regex>
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
ProcessRun split(const std::string& input, const std::string& reading) {
  const ScratchFolder folder;
  folder.write("in.stp", input);
  const ProcessRun run =
      run_velkstep({"split", "--assemblies=classic", "--reading=" + reading, "in.stp", "out"},
                   {.most_cpu_seconds = 5});
  if (run.exit_code == 1) {
    EXPECT_FALSE(std::filesystem::exists("out"));
    EXPECT_FALSE(std::filesystem::exists("roots.txt"));
  }
  return run;
}

/// A column behind its line. Where those are right is the matter of the tests of refused inputs.
const std::regex COLUMN("^(velkstep: in\\.stp:[0-9]+):[0-9]+");

/// What stands for a reading to the end.
const std::string READ = "";

/// Expects that the reading refuses `input` for `reason`, which is what stands behind the file's
/// name but for columns, or that it reads it to its end.
void expect_outcome(const std::string& input, const std::string& reading,
                    const std::string& reason) {
  SCOPED_TRACE(reading + ": " + input);
  const ProcessRun run = split(input, reading);
  EXPECT_EQ(run.out, "");
  if (reason != READ) {
    EXPECT_EQ(run.exit_code, 1);
    // What can be done stands behind it.
    const std::string printed = std::regex_replace(run.errors, COLUMN, "$1");
    EXPECT_TRUE(printed.starts_with("velkstep: in.stp" + reason + " ")) << printed;
    EXPECT_EQ(std::count(printed.begin(), printed.end(), '\n'), 1);
  } else {
    EXPECT_EQ(run.exit_code, 3);
    EXPECT_EQ(run.errors, std::string(NO_ROOT) +
                              "velkstep: in.stp: holds one part or none, of which a classic "
                              "split makes nothing; without --classic it is copied\n");
  }
}

struct Outcome {
  std::string input;
  std::string classic;   ///< why the classic reading refuses it, or READ
  std::string standard;  ///< the same of the standard one
};

void expect_outcomes(const std::vector<Outcome>& outcomes) {
  for (const auto& [input, classic, standard] : outcomes) {
    expect_outcome(input, "classic", classic);
    expect_outcome(input, "standard", standard);
  }
}

std::string unclosed_section(const std::string& name, int line) {
  return ":" + std::to_string(line) + ": The " + name + " section is not closed by \"ENDSEC;\".";
}

TEST(EndlessInput, HeaderThatNoLineEnds) {
  const auto in_line = [](int line) {
    return ":" + std::to_string(line) + ": No line ends the header with \"ENDSEC;\".";
  };
  const std::string OTHER =
      ": The file is no exchange file: it does not begin with \"ISO-10303-21\".";
  expect_outcomes({
      {"", ": The file is empty.", ": The file is empty."},
      {"\n", OTHER, OTHER},
      {"ISO-10303-21;\nHEADER;\n", in_line(3), unclosed_section("HEADER", 3)},
      {"ENDSEC;\n", OTHER, OTHER},  // the first line is not part of the header
      {"ISO-10303-21; HEADER; ENDSEC;\nDATA;\n", in_line(1), unclosed_section("DATA", 3)},
      // something else ends the line
      {"ISO-10303-21;\nHEADER;\nENDSEC;DATA;\n", in_line(3), unclosed_section("DATA", 4)},
      // not the same text
      {"ISO-10303-21;\nHEADER;\nENDSEC ;\nDATA;", in_line(3), unclosed_section("DATA", 4)},
      {"ISO-10303-21;\nHEADER;\nendsec;\n", in_line(4), unclosed_section("HEADER", 4)},
      {"ISO-10303-21;\nHEADER;\nENDSEC;/**/\n", in_line(3), READ},
      // a line ends at a line feed only
      {"ISO-10303-21;\rHEADER;\rENDSEC;\rDATA;\r", in_line(1), unclosed_section("DATA", 1)},
      {"ISO-10303-21;\nHEADER;\nENDSEC\n;\n", in_line(3), READ},
  });
}

TEST(EndlessInput, NothingBehindTheHeaderNotEvenTheEndOfItsLine) {
  const std::string FOUND = ":3: The file ends with its header.";
  expect_outcomes({{"ISO-10303-21;\nHEADER;\nENDSEC;", FOUND, READ},
                   {"ISO-10303-21;\nHEADER;\nENDSEC;  ", FOUND, READ}});
}

TEST(EndlessInput, TextBehindTheLastSemicolon) {
  const auto in_line = [](int line) {
    return ":" + std::to_string(line) + ": No \";\" closes this text, the file's last.";
  };
  const std::string OPEN = ": No \")\" and \";\" close this record up to the end of the file.";
  const std::string NO_SEMICOLON = ": No \";\" closes this record, the file's last.";
  const std::string CUT = ":5: No \";\" closes this record up to the end of the file.";
  expect_outcomes({
      {HEADER + "stray", in_line(4), ":4: No \";\" closes this text up to the end of the file."},
      {HEADER + "DATA;\n#1=A(", ":5" + OPEN, CUT},
      {HEADER + "DATA;\n#1=A()", ":5" + NO_SEMICOLON, CUT},  // a last record without its ";"
      {HEADER + "DATA;\n#1=A()\n", ":5" + NO_SEMICOLON, CUT},
      {HEADER + "DATA;\n#1=A();\nENDSEC;\nEND-ISO-10303-21", in_line(7), READ},
      {HEADER + "DATA;\n" + END + "stray\n", in_line(7), READ},
      {HEADER + "DATA;\n" + END + "/* bye */", in_line(7), READ},
  });
}

TEST(EndlessInput, TextBehindAnAssembly) {
  const std::string input = exchange_file(BOX_WITH_LID) + "stray";
  expect_outcome(input, "classic", ":22: No \";\" closes this text, the file's last.");
  const ProcessRun run = split(input, "standard");
  EXPECT_EQ(run.exit_code, 0);
  EXPECT_EQ(run.out, "out/box.stp\nout/lid.stp\n");
  EXPECT_EQ(run.errors,
            "velkstep: in.stp:22:1: Text stands behind \"END-ISO-10303-21;\"; it is left out.\n");
}

TEST(EndlessInput, LastRecordWithoutItsParenthesis) {
  const std::string OPEN = ": No \")\" and \";\" close this record up to the end of the file.";
  const std::string LIST = ": A \"(\" in this record is not closed.";
  expect_outcomes({
      {HEADER + "DATA;\n#1=A();\n#2=B(\n;\n" + END, ":6" + OPEN, ":6" + LIST},
      {HEADER + "DATA;\n#1=A('x';\n" + END, ":5" + OPEN, ":5" + LIST},
      {HEADER + "DATA;\n#1=A();\n#2;", ":6" + OPEN, unclosed_section("DATA", 6)},
      {HEADER + "DATA;\n#1=A() /* note */;\n" + END, ":5" + OPEN, READ},
      // an empty piece inside a record does not end the data
      {HEADER + "DATA;\n#1=A(;;\n" + END, ":5" + OPEN, ":5" + LIST},
      {HEADER + "#;", ":4" + OPEN,
       ":4: A record stands here, outside of the data section; \"DATA;\" may be missing."},
  });
}

// The second reading would begin a record in the header and never end it.
TEST(EndlessInput, HeaderThatIsReadAsData) {
  const std::string reason =
      ":4: The header, which this line ends, holds a \";\" in front of a \"#\" or of another "
      "\";\"; when the file is read again, data seems to begin or to end there.";
  const std::string header = "ISO-10303-21;\nHEADER;\n#x;\nENDSEC;\n";
  expect_outcomes({
      {header + "DATA;\n" + END, reason, unclosed_section("HEADER", 3)},
      {header + "DATA;;\n" + END, reason, unclosed_section("HEADER", 3)},
      // it ends that one, but not the next
      {header + "DATA;;\n#1=A();\n#2=A(\n;" + END, reason, unclosed_section("HEADER", 3)},
  });
}

/// Expects that both readings come to the end of the input, in which there is no part.
void expect_read(const std::string& input) {
  expect_outcomes({{input, READ, READ}});
}

TEST(InputThatEnds, HeaderOnly) {
  expect_read(HEADER);
}

// What stands behind the end of the data may close it.
TEST(InputThatEnds, HeaderThatBeginsARecord) {
  const std::string end_of_data = "ENDSEC;\nDATA;;\n#1=A();\n" + END;
  const std::string STANDARD = unclosed_section("HEADER", 3);
  expect_outcomes({{"ISO-10303-21;\nHEADER;\n#x;\n" + end_of_data, READ, STANDARD},
                   {"ISO-10303-21;\nHEADER;\n#7;\n" + end_of_data, READ, STANDARD}});
  const std::string far = "ISO-10303-21;\nHEADER;\n#99999999;\n" + end_of_data;
  const ProcessRun run = split(far, "classic");
  EXPECT_EQ(run.exit_code, 1);
  EXPECT_EQ(run.errors, std::string(NO_ROOT) +
                            "velkstep: in.stp: a record refers to an instance far beyond the "
                            "highest number; velkstep check finds it\n");
  expect_outcome(far, "standard", STANDARD);
}

TEST(InputThatEnds, HeaderMayEndInTheMiddleOfALineOfItsOwn) {
  expect_read("ISO-10303-21;\nHEADER;FILE_SCHEMA(('X'));ENDSEC;  \r\nDATA;\n" + END);
}

TEST(InputThatEnds, LastSemicolonMayEndTheFileOrBlanksMayFollow) {
  expect_read(HEADER + "DATA;\n#1=A();\nENDSEC;\nEND-ISO-10303-21;");
  expect_read(HEADER + "DATA;\n" + END + " \r\n\t\n");
}

TEST(InputThatEnds, LastRecordMayEndTheFile) {
  expect_outcomes({{HEADER + "DATA;\n#1=A();", READ, unclosed_section("DATA", 5)}});
}

TEST(InputThatEnds, NothingBehindAnEmptyPieceMatters) {
  expect_outcomes({{HEADER + "DATA;\n#1=A();;\nstray text #2=A(", READ,
                    ":6: No \";\" closes this text up to the end of the file."}});
}

TEST(InputThatEnds, PiecesOfARecordMayLackTheirParenthesis) {
  expect_read(HEADER + "DATA;\n#1=A('x;y;;z');\n" + END);
}

TEST(InputThatEnds, PiecesThatAreNoRecordsMayLackAnything) {
  expect_outcomes({{HEADER + "DATA;\nA(;/* #1=A( */ #2=A(;\n" + END, READ,
                    ":5: A \"(\" in this record is not closed."}});
}

}  // namespace
}  // namespace Kessel::test
