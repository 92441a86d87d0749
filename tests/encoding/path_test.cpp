// File-system paths as UTF-8 text.
#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <system_error>

#include "kessel/encoding.h"

namespace Kessel::test {
namespace {

TEST(PathToUtf8, EmptyPathGivesEmptyText) {
  EXPECT_EQ(fspath_to_utf8(std::filesystem::path()), "");
}

TEST(PathToUtf8, PathIsGivenAsItIsWritten) {
  for (const std::string text : {"Root.stp", "out/#7_part.stp", "/a/./b//c/../d.stp", "it's\\x "}) {
    EXPECT_EQ(fspath_to_utf8(std::filesystem::path(text)), text);
  }
}

TEST(PathToUtf8, LettersBeyondAsciiGiveTheirUtf8Bytes) {
  EXPECT_EQ(fspath_to_utf8(std::filesystem::path(u8"Ä")), "\xC3\x84");
  EXPECT_EQ(fspath_to_utf8(std::filesystem::path(u"out/中文.stp")),
            "out/\xE4\xB8\xAD\xE6\x96\x87.stp");
  EXPECT_EQ(fspath_to_utf8(std::filesystem::path(U"😀")), "\xF0\x9F\x98\x80");
}

#if !defined(_WIN32)
TEST(PathToUtf8, PathWhoseBytesAreNotUtf8Throws) {
  for (const std::string bytes : {"\xE9", "out/\xFF.stp", "\xC3", "a\x80", "\xC0\xAF",
                                  "\xED\xA0\x80/x", "\xF4\x90\x80\x80", "Ä/\xE4\xB8"}) {
    SCOPED_TRACE(testing::PrintToString(bytes));
    try {
      const std::string text = fspath_to_utf8(std::filesystem::path(bytes));
      FAIL() << "gave " << text;
    } catch (const std::system_error& error) {
      EXPECT_EQ(error.code(), std::make_error_code(std::errc::illegal_byte_sequence));
    }
  }
}
#endif

}  // namespace
}  // namespace Kessel::test
