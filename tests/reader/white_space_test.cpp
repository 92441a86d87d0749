// What counts as white space, and texts without it at their ends.
#include <gtest/gtest.h>

#include <string_view>

#include "reader/text.h"

namespace Kessel::test {
namespace {

TEST(WhiteSpace, SixCharactersAreAndNoOtherByteIs) {
  constexpr std::string_view WHITE_SPACE = " \t\n\v\f\r";
  for (int byte = 0; byte < 256; ++byte) {
    const char c = static_cast<char>(byte);
    EXPECT_EQ(is_space(c), WHITE_SPACE.find(c) != std::string_view::npos) << byte;
  }
}

TEST(WhiteSpace, GoesFromBothEndsOnly) {
  struct Row {
    std::string_view text;
    std::string_view expected;
  };
  constexpr Row ROWS[] = {{"", ""},
                          {"a", "a"},
                          {" a", "a"},
                          {"a ", "a"},
                          {"  a b\t c  ", "a b\t c"},
                          {" \t\n\v\f\r#1=A()\r\f\v\n\t ", "#1=A()"},
                          {" ", ""},
                          {" \t\n\v\f\r", ""},
                          {"\xA0 a \xA0", "\xA0 a \xA0"}};
  for (const auto& [text, expected] : ROWS) EXPECT_EQ(trim(text), expected);
}

TEST(WhiteSpace, TrimmedTextIsAViewOfTheText) {
  constexpr std::string_view TEXT = "  abc ";
  EXPECT_EQ(trim(TEXT).data(), TEXT.data() + 2);
}

}  // namespace
}  // namespace Kessel::test
