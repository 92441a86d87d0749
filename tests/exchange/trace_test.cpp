#include "exchange/trace.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "event_log.h"

namespace Kessel::Exchange {
namespace {

using test::event_log;

const std::string BEGIN_OF_FILE = "ISO-10303-21;HEADER;F('a');ENDSEC;ANCHOR;<a>=#1;ENDSEC;DATA;";
const std::string END_OF_FILE = "ENDSEC;END_OF_FILE-ISO-10303-21;";

/// All that a trace tells or does not: short records and long ones, many names and none, leads,
/// comments, constants, numbers that say nothing, and what is no record.
const std::string RECORDS =
    "#1=A();\n#22 = B ( #1, '#2;', #0000333 ) ;\r\n  #333=(C(#1)D(#22));;/* c */#4=E(/*#5*/#1);"
    "#5=F(#PI,#0,#1);#6=G('\\S\\';',#1);?;        #7=H(#1);#8=I(" +
    std::string(240, ' ') + "#1);#9=J(#1" +
    [] {
      std::string names;
      for (int i = 0; i < 40; ++i) names += ",#1";
      return names;
    }() +
    ");ENDSEC;DATA('b');#10=K(#9,#8);";

std::vector<std::string> read_first(const std::string& file, Tape& tape) {
  return event_log(file, StatementCutter::BLOCK_SIZE, Scrutiny::full, &tape);
}

std::vector<std::string> read_again(const std::string& file, Tape* tape,
                                    std::size_t block_size = StatementCutter::BLOCK_SIZE) {
  return event_log(file, block_size, Scrutiny::none, tape);
}

TEST(Trace, LeadsToWhatAReadingWithoutItFinds) {
  const std::string file = BEGIN_OF_FILE + RECORDS + END_OF_FILE;
  Tape tape;
  read_first(file, tape);
  const auto expected = read_again(file, nullptr);
  ASSERT_EQ(expected.size(), 20u);
  for (const std::size_t block_size : {1, 7, 64, 300, 1 << 18}) {
    EXPECT_EQ(read_again(file, &tape, block_size), expected) << block_size;
  }
}

TEST(Trace, LeadsNowhereInAFileThatIsCutOff) {
  const std::string file = BEGIN_OF_FILE + RECORDS + END_OF_FILE;
  Tape tape;
  read_first(file, tape);
  for (std::size_t size = 0; size < file.size(); ++size) {
    const std::string part = file.substr(0, size);
    ASSERT_EQ(read_again(part, &tape), read_again(part, nullptr)) << size;
  }
}

TEST(Trace, IsLeftWhereNamesAreNotInTheirPlaces) {
  Tape tape;
  read_first(BEGIN_OF_FILE + "#1=A(#2,#3);#2=B(#1);" + END_OF_FILE, tape);
  for (const char* other :
       {"#1=A(2#,#3);#2=B(#1);", "#1=A(#2,'#');#2=B(#1);", " 1=A(#2,#3);#2=B(#1);",
        "#1=A(#2,#3),#2=B(#1);", "#123456789012345678;#2=B(#1);", "#1;#2;#3;"}) {
    const std::string file = BEGIN_OF_FILE + other + END_OF_FILE;
    EXPECT_EQ(read_again(file, &tape), read_again(file, nullptr)) << other;
  }
}

TEST(Trace, OfManyRecordsGoesOverAllBlocksOfTheTape) {
  std::string file = BEGIN_OF_FILE;
  for (int i = 1; i < 50'000; ++i) {
    file += '#' + std::to_string(i) + "=A(#" + std::to_string(1 + i / 2) + ",#1);\n";
  }
  file += END_OF_FILE;
  Tape tape;
  read_first(file, tape);
  EXPECT_EQ(read_again(file, &tape), read_again(file, nullptr));
}

}  // namespace
}  // namespace Kessel::Exchange
