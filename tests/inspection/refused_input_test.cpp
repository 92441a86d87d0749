// Inputs that a split would read for ever are refused; those that only look like them are not.
#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <vector>

#include "kessel/summary.h"
#include "support/scratch_folder.h"

namespace Kessel::test {
namespace {

const std::string HEADER = "ISO-10303-21;\nHEADER;\nENDSEC;\n";
const std::string END = "ENDSEC;\nEND-ISO-10303-21;\n";

/// Why `input` is refused; how many records it has when it is not.
std::string outcome_of(const std::string& input) {
  const ScratchFolder folder;
  try {
    return std::to_string(read_summary(folder.write("in.stp", input)).records) + " records";
  } catch (const std::runtime_error& error) {
    return error.what();
  }
}

void expect_outcome(const std::vector<std::string>& inputs, const std::string& outcome) {
  for (const std::string& input : inputs) EXPECT_EQ(outcome_of(input), outcome) << input;
}

TEST(RefusedInput, HeaderThatNoLineEnds) {
  expect_outcome(
      {
          "",
          "\n",
          "ISO-10303-21;\nHEADER;\n",
          "ENDSEC;\n",  // the first line is not part of the header
          "ISO-10303-21; HEADER; ENDSEC;\nDATA;\n",
          "ISO-10303-21;\nHEADER;\nENDSEC;DATA;\n",
          "ISO-10303-21;\nHEADER;\nENDSEC ;\nDATA;",
          "ISO-10303-21;\nHEADER;\nENDSEC;/**/\n",
          "ISO-10303-21;\rHEADER;\rENDSEC;\rDATA;\r",
          "ISO-10303-21;\nHEADER;\nENDSEC\n;\n",
      },
      "no line ends the header with \"ENDSEC;\"");
}

TEST(RefusedInput, NothingBehindTheHeaderNotEvenTheEndOfItsLine) {
  expect_outcome({"ISO-10303-21;\nHEADER;\nENDSEC;", "ISO-10303-21;\nHEADER;\nENDSEC;  "},
                 "the file ends with its header");
}

TEST(RefusedInput, EndThatNoSemicolonCloses) {
  expect_outcome(
      {
          HEADER + "stray",
          HEADER + "DATA;\n#1=A(",
          HEADER + "DATA;\n#1=A()",
          HEADER + "DATA;\n#1=A();\nENDSEC;\nEND-ISO-10303-21",
          HEADER + "DATA;\n" + END + "/* bye */",
          HEADER + "DATA;\n#1=A();\n#2=B(\n;\n" + END,
          HEADER + "DATA;\n#1=A('x;\n" + END,
          HEADER + "DATA;\n#1=A('x;y')",
          HEADER + "DATA;\n#1=A() /* note */;\n" + END,
          HEADER + "DATA;\n#1=A(;;\n" + END,
          HEADER + "#;",
      },
      "the file does not end with a \";\" that closes a record or section");
}

TEST(AcceptedInput, EndsAtASemicolonOrAnEmptyPiece) {
  expect_outcome(
      {HEADER, HEADER + "DATA;\n" + END, HEADER + "DATA;\nA(;/* #1=A( */ #2=A(;\n" + END},
      "0 records");
  expect_outcome(
      {
          HEADER + "DATA;\n#1=A();\nENDSEC;\nEND-ISO-10303-21;",
          HEADER + "DATA;\n#1=A();",
          HEADER + "DATA;\n#1=A('x;y;;z');\n" + END + " \r\n\t\n",
          HEADER + "DATA;\n#1=A();;\nstray text #2=A(",
      },
      "1 records");
}

}  // namespace
}  // namespace Kessel::test
