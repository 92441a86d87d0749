// Bodies of string literals decoded to UTF-8.
#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

#include "kessel/encoding.h"

namespace Kessel::test {
namespace {

const std::string REPLACEMENT = "\xEF\xBF\xBD";

struct DecodeCase {
  std::string_view body;
  std::string expected;
};

void expect_decoded(const std::vector<DecodeCase>& cases) {
  for (const auto& [body, expected] : cases) {
    SCOPED_TRACE(testing::PrintToString(body));
    EXPECT_EQ(decode_step_to_utf8(body), expected);
  }
}

TEST(Decode, EmptyTextAndSpacesOnlyGiveNothing) {
  expect_decoded({{"", ""}, {" ", ""}, {"    ", ""}});
}

TEST(Decode, OuterSpacesGoAndInnerSpacesStay) {
  expect_decoded({{"  abc  ", "abc"}, {"  a  b ", "a  b"}, {"abc ", "abc"}, {" abc", "abc"}});
}

TEST(Decode, SpacesThatOnlyControlCharactersKeepFromTheEndsStay) {
  expect_decoded({{"\t abc \n", " abc "}, {" \t a", " a"}, {"\n", ""}, {" \t ", ""}});
}

TEST(Decode, SixControlCharactersAreRemovedEverywhere) {
  expect_decoded({{"a\tb", "ab"},
                  {"a\bb", "ab"},
                  {"a\fb", "ab"},
                  {"a\vb", "ab"},
                  {"a\rb", "ab"},
                  {"a\nb", "ab"},
                  {"\t\b\f\v\r\na\n\r\v\f\b\tb\t\b\f\v\r\n", "ab"}});
}

TEST(Decode, OtherControlCharactersStay) {
  using namespace std::string_view_literals;
  expect_decoded({{"a\x07z", "a\x07z"},
                  {"a\x0Ez", "a\x0Ez"},
                  {"a\x1Bz", "a\x1Bz"},
                  {"a\x7Fz", "a\x7Fz"},
                  {"a\0z"sv, std::string("a\0z", 3)}});
}

TEST(Decode, DoubledApostrophesBecomeSingle) {
  expect_decoded({{"it''s", "it's"},
                  {"'", "'"},
                  {"''", "'"},
                  {"'''", "''"},
                  {"''''", "''"},
                  {"'''''", "'''"},
                  {"''a''b''", "'a'b'"}});
}

TEST(Decode, ApostrophesThatAControlCharacterSeparatedCountAsDoubled) {
  expect_decoded({{"it'\n's", "it's"}, {"'\t'\t'\t'", "''"}});
}

TEST(Decode, BytesAboveAsciiStayAsTheyAre) {
  expect_decoded({{"\xC3\xA9", "\xC3\xA9"}, {"\xE9", "\xE9"}, {"a\xFF\x80", "a\xFF\x80"}});
}

TEST(Decode, DoubledBackslashBecomesSingle) {
  expect_decoded({{R"(a\\b)", R"(a\b)"}, {R"(\\)", R"(\)"}, {R"(ab\\)", R"(ab\)"}});
}

TEST(Decode, BackslashLeftOfADoubledPairIsReadAgain) {
  expect_decoded({{R"(\\\\)", R"(\)"},
                  {R"(\\\)", R"(\)"},
                  {R"(\\\\\\\\)", R"(\)"},
                  {R"(\\S\x)", ""},
                  {R"(\\X\41)", "A"},
                  {R"(\\X2\00C4\X0\)", "\xC3\x84"}});
}

TEST(Decode, SingleBackslashThatBeginsNoDirectiveStays) {
  expect_decoded({{R"(\)", R"(\)"},
                  {R"(a\)", R"(a\)"},
                  {R"(\a)", R"(\a)"},
                  {R"(\ab)", R"(\ab)"},
                  {R"(\abcdef)", R"(\abcdef)"},
                  {R"(a\bc\de)", R"(a\bc\de)"}});
}

TEST(Decode, UnlistedDirectivesStayWithTheirBackslashes) {
  expect_decoded({{R"(a\N\b)", R"(a\N\b)"},
                  {R"(\E\abc)", R"(\E\abc)"},
                  {R"(\F\41zz)", R"(\F\41zz)"},
                  {R"(\X0\abc)", R"(\X0\abc)"},
                  {R"(\X1\0041\X0\)", R"(\X1\0041\X0\)"},
                  {R"(\X3\0041\X0\)", R"(\X3\0041\X0\)"},
                  {R"(\XA41)", R"(\XA41)"},
                  {R"(\x\41)", R"(\x\41)"},
                  {R"(\x2\0041\X0\)", R"(\x2\0041\X0\)"},
                  {R"(\s\abc)", R"(\s\abc)"},
                  {R"(\pA\abc)", R"(\pA\abc)"}});
}

TEST(Decode, UpperHalfDirectiveIsDroppedWithTheCharacterThatItGoverns) {
  expect_decoded(
      {{R"(\S\a)", ""}, {R"(a\S\bc)", "ac"}, {R"(\S\\abc)", "abc"}, {R"(\S\a\S\b)", ""}});
}

TEST(Decode, UpperHalfDirectiveWithoutACharacterStays) {
  expect_decoded({{R"(\S\)", R"(\S\)"}, {R"(ab\S\)", R"(ab\S\)"}, {R"(\Sab)", R"(\Sab)"}});
}

TEST(Decode, CodePageSwitchIsDropped) {
  expect_decoded({{R"(\PA\)", ""},
                  {R"(a\PB\b)", "ab"},
                  {R"(\P1\)", ""},
                  {R"(\P\\)", ""},
                  {R"(\PA\\S\a)", ""}});
}

TEST(Decode, CodePageSwitchWithoutItsSecondBackslashStays) {
  expect_decoded({{R"(\PA)", R"(\PA)"}, {R"(\PAB\)", R"(\PAB\)"}, {R"(\P\)", R"(\P\)"}});
}

TEST(Decode, ByteDirectiveGivesItsByte) {
  expect_decoded({{R"(\X\41)", "A"},
                  {R"(\X\7e)", "~"},
                  {R"(\X\21)", "!"},
                  {R"(a\X\42c)", "aBc"},
                  {R"(\X\41\X\42)", "AB"}});
}

TEST(Decode, ByteDirectiveAboveAsciiGivesTheSingleByte) {
  expect_decoded(
      {{R"(\X\e9)", "\xE9"}, {R"(\X\E9)", "\xE9"}, {R"(\X\A1)", "\xA1"}, {R"(\X\FF)", "\xFF"}});
}

TEST(Decode, ByteDirectiveOfWhatIsNotGraphicGivesTheReplacementCharacter) {
  expect_decoded({{R"(\X\0A)", REPLACEMENT},
                  {R"(\X\20)", REPLACEMENT},
                  {R"(\X\00)", REPLACEMENT},
                  {R"(\X\7F)", REPLACEMENT},
                  {R"(\X\80)", REPLACEMENT},
                  {R"(\X\9F)", REPLACEMENT},
                  {R"(\X\A0)", REPLACEMENT},
                  {R"(\X\AD)", REPLACEMENT}});
}

TEST(Decode, ByteDirectiveReadsDigitsUpToTheFirstOtherCharacter) {
  expect_decoded({{R"(\X\4z)", REPLACEMENT},  // 0x04, and the z is consumed
                  {R"(\X\4zb)", REPLACEMENT + "b"},
                  {R"(\X\z4)", ""},
                  {R"(\X\4\n)", REPLACEMENT + "n"}});
}

TEST(Decode, ByteDirectiveWithoutADigitIsDroppedWithBothCharacters) {
  expect_decoded({{R"(\X\zz)", ""}, {R"(a\X\ghb)", "ab"}, {R"(\X\\\a)", "a"}, {R"(\X\  b)", "b"}});
}

TEST(Decode, ByteDirectiveTooCloseToTheEndStays) {
  expect_decoded({{R"(ab\X\)", R"(ab\X\)"}, {R"(ab\X\4)", R"(ab\X\4)"}, {R"(\X)", R"(\X)"}});
}

TEST(Decode, WideRunGivesItsCharactersInUtf8) {
  expect_decoded({{R"(\X2\00C400D6\X0\)", "\xC3\x84\xC3\x96"},
                  {R"(\X2\4e2d6587\X0\)", "\xE4\xB8\xAD\xE6\x96\x87"},
                  {R"(\X2\0041\X0\)", "A"},
                  {R"(u\X2\0100\X0\v)", "u\xC4\x80v"},
                  {R"(\X2\00C4\X0\ \X2\00D6\X0\)", "\xC3\x84 \xC3\x96"},
                  {R"(\X2\\X0\)", ""}});
}

TEST(Decode, WideRunOfOddLengthIsDropped) {
  expect_decoded({{R"(\X2\00C\X0\)", ""},
                  {R"(a\X2\00C41\X0\b)", "ab"},
                  {R"(\X4\0000041\X0\)", ""},
                  {R"(\X2\00\\X0\z)", "z"}});
}

TEST(Decode, WideRunWithoutAnEndStays) {
  expect_decoded({{R"(\X2\00C4)", R"(\X2\00C4)"},
                  {R"(\X4\00C4)", R"(\X4\00C4)"},
                  {R"(\X2\)", R"(\X2\)"},
                  {R"(\X2\00C4\X0)", R"(\X2\00C4\X0)"},
                  {R"(\X2\00C4\x0\)", R"(\X2\00C4\x0\)"},
                  {R"(\X2\00C4\X2\00D6)", R"(\X2\00C4\X2\00D6)"}});
}

TEST(Decode, DirectivesBehindAWideRunWithoutAnEndAreRead) {
  expect_decoded({{R"(\X2\00C4\S\a)", R"(\X2\00C4)"}, {R"(\X2\00C4\X\41)", R"(\X2\00C4A)"}});
}

TEST(Decode, WideRunEndsAtTheFirstEndMark) {
  expect_decoded({{R"(\X2\0041\X2\0042\X0\)", "AB"}, {R"(\X2\0041\X0\0042\X0\)", R"(A0042\X0\)"}});
}

TEST(Decode, GroupOfAWideRunStopsAtTheFirstCharacterThatIsNoDigit) {
  expect_decoded(
      {{R"(\X2\41GG\X0\)", "A"}, {R"(\X2\4G41\X0\)", REPLACEMENT}, {R"(\X2\41G40042\X0\)", "AB"}});
}

TEST(Decode, GroupOfAWideRunWithoutADigitIsSkipped) {
  expect_decoded(
      {{R"(\X2\zzzz\X0\)", ""}, {R"(\X2\  41\X0\)", ""}, {R"(\X2\0041zzzz0042\X0\)", "AB"}});
}

TEST(Decode, ShortLastGroupOfAWideRunStopsAtTheEndMark) {
  expect_decoded({{R"(\X2\41\X0\)", "A"}, {R"(\X2\004142\X0\cd)", "ABcd"}});
}

TEST(Decode, EightDigitValuesAreReadAsPairsOfFourDigits) {
  expect_decoded({{R"(\X4\0001F600\X0\)", REPLACEMENT + REPLACEMENT},
                  {R"(\X4\00000041\X0\)", REPLACEMENT + "A"},
                  {R"(\X4\00410042\X0\)", "AB"}});
}

TEST(Decode, SurrogatesAreReplacedOneByOne) {
  expect_decoded({{R"(\X2\D83DDE00\X0\)", REPLACEMENT + REPLACEMENT},
                  {R"(\X2\0041D83D0042\X0\)", "A" + REPLACEMENT + "B"}});
}

TEST(Decode, WideCharactersThatAreNotGraphicAreReplaced) {
  for (const std::string value : {"0000", "000A", "0020", "00A0", "00AD", "0378", "2028", "3000",
                                  "E000", "FEFF", "FFFE", "FFFF"}) {
    SCOPED_TRACE(value);
    EXPECT_EQ(decode_step_to_utf8("\\X2\\" + value + "\\X0\\"), REPLACEMENT);
  }
}

TEST(Decode, ProducedTextIsNotReadAgain) {
  expect_decoded({{R"(\X\5CS\a)", R"(\S\a)"},
                  {R"(\X\5C\X\5Cx)", R"(\\x)"},
                  {R"(\X2\005C\X0\S\a)", R"(\S\a)"},
                  {R"(\X\27\X\27)", "''"},
                  {R"(\X2\00270027\X0\)", "''"}});
}

TEST(Decode, ErasedDirectiveLetsTheTextBehindItBeginAnother) {
  expect_decoded({{R"(\S\a\X\41)", "A"}, {R"(\PA\\\b)", R"(\b)"}, {R"(\X\zz\\x)", R"(\x)"}});
}

TEST(Decode, ApostrophesAreSingledBeforeDirectivesAreRead) {
  expect_decoded({{R"(\S\''a)", "a"}, {R"(\P''\b)", "b"}});
}

}  // namespace
}  // namespace Kessel::test
