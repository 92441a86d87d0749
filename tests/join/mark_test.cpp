#include "join/mark.h"

#include <gtest/gtest.h>

#include <string>

namespace Kessel::test {
namespace {

std::string shown(std::string_view lead) {
  const Mark mark = mark_in(lead);
  const char* const kinds[] = {"none", "whole", "stand-in", "made"};
  return std::string(kinds[static_cast<int>(mark.kind)]) + " " + std::to_string(mark.number);
}

TEST(Mark, ThreeForms) {
  EXPECT_EQ(shown("\n/*123*/"), "whole 123");
  EXPECT_EQ(shown("\n/*~123*/"), "stand-in 123");
  EXPECT_EQ(shown("\n/*~*/"), "made 0");
  EXPECT_EQ(shown("/*18446744073709551615*/"), "whole 18446744073709551615");
}

TEST(Mark, OtherCommentsAreNone) {
  EXPECT_EQ(shown(""), "none 0");
  EXPECT_EQ(shown("\n  "), "none 0");
  EXPECT_EQ(shown("/* 123 */"), "none 0");
  EXPECT_EQ(shown("/**/"), "none 0");
  EXPECT_EQ(shown("/*12a*/"), "none 0");
  EXPECT_EQ(shown("/*-1*/"), "none 0");
  EXPECT_EQ(shown("/*18446744073709551616*/"), "none 0");
  EXPECT_EQ(shown("/*123"), "whole 123");
}

TEST(Mark, LastOfSeveralCounts) {
  EXPECT_EQ(shown("/*1*/ /* said */ /*~2*/"), "stand-in 2");
}

TEST(Mark, SplitHasSixteenHexadecimalDigits) {
  EXPECT_EQ(split_in("\n/* velkstep split 0123456789abcdef: the number in front */\n/*1*/"),
            0x0123456789abcdefu);
  EXPECT_EQ(split_in("/* velkstep split 0123456789abcdef */"), std::nullopt);
  EXPECT_EQ(split_in("/* velkstep split 0123456789abcde: x */"), std::nullopt);
  EXPECT_EQ(split_in("/* velkstep split 0123456789abcdeg: x */"), std::nullopt);
  EXPECT_EQ(split_in("/*1*/"), std::nullopt);
}

}  // namespace
}  // namespace Kessel::test
