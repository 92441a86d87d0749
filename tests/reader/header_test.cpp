// What the second reading takes a header for.
#include "reader/header.h"

#include <gtest/gtest.h>

#include <string_view>

namespace Kessel::test {
namespace {

TEST(SecondReadingOfHeader, TakesItForWhatItsSemicolonsMakeOfIt) {
  using enum SecondReading;
  const struct {
    std::string_view first_line;
    std::string_view header;
    SecondReading expected;
  } CASES[] = {
      {"ISO-10303-21;", "HEADER;\nFILE_NAME('#1');\nENDSEC;\n", passed_over},
      {"", "ENDSEC;\n", passed_over},
      {"ISO-10303-21;", "A('b;c#1');\nENDSEC;\n", passed_over},
      {"ISO-10303-21;", "A('b;#c');\nENDSEC;\n", passed_over},  // whole, without a number
      {"ISO-10303-21;", "A('b;;c');\nENDSEC;\n", end_of_data},
      {"ISO-10303-21;", "A('b; \n;c');\nENDSEC;\n", end_of_data},
      {"ISO-10303-21;;", "ENDSEC;\n", end_of_data},
      {";", "ENDSEC;\n", end_of_data},
      {"ISO-10303-21;", "#1=A();\nENDSEC;\n", records},
      {"ISO-10303-21;", "#1=A();\n;ENDSEC;\n", end_of_data},
      {"ISO-10303-21;", "#1=A();\n#2;ENDSEC;\n", begin_of_data},
      {"ISO-10303-21;", "A('b;#c;d');\nENDSEC;\n", passed_over},
      {"ISO-10303-21;", "#b;\nENDSEC;\n", begin_of_data},
      {"#ISO-10303-21;", "ENDSEC;\n", begin_of_data},
  };
  for (const auto& row : CASES) {
    SCOPED_TRACE(row.header);
    EXPECT_EQ(read_again(row.first_line, row.header), row.expected);
  }
}

}  // namespace
}  // namespace Kessel::test
