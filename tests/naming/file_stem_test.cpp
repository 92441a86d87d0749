// File names made of products' names.
#include "naming/file_stem.h"

#include <gtest/gtest.h>

#include <string>

namespace Kessel::test {
namespace {

std::string ascii_stem(std::string_view name) {
  return file_stem(name, FileNameSet::ascii);
}

std::string unicode_stem(std::string_view name) {
  return file_stem(name, FileNameSet::unicode);
}

/// Expects the same name in both sets.
void expect_both(std::string_view name, const std::string& stem) {
  EXPECT_EQ(ascii_stem(name), stem);
  EXPECT_EQ(unicode_stem(name), stem);
}

TEST(FileStem, PlainNamesStayAsTheyAre) {
  expect_both("M2x10 self-tapping screw (A4) #7, v1.2", "M2x10 self-tapping screw (A4) #7, v1.2");
}

TEST(FileStem, ReservedCharactersAreReplacedOneByOne) {
  for (const char reserved : std::string_view("<>:\"/\\|?*';")) {
    expect_both(std::string("a") + reserved + "b", "a_b");
  }
  expect_both("../..\\outside", "_._.._outside");
}

TEST(FileStem, ControlAndFormatCharactersAreReplaced) {
  for (char c = 1; c < 0x20; ++c) expect_both(std::string("a") + c + "b", "a_b");
  expect_both(
      "a\x7F"
      "b",
      "a_b");
  expect_both("a\u0085b", "a_b");      // next line
  expect_both("a\u202Eb", "a_b");      // right-to-left override
  expect_both("a\u200Bb", "a_b");      // zero-width space
  expect_both("a\uE000b", "a_b");      // private use
  expect_both("a\U000E0041b", "a_b");  // tag
  expect_both("a\uFFFDb", "a_b");      // what could not be decoded
  expect_both(std::string("a\0b", 3), "a_b");
}

TEST(FileStem, SpacesOfAllWidthsAreSpaces) {
  expect_both("a\u00A0b\u3000c", "a b c");
}

TEST(FileStem, SpacesAndDotsAtTheEndGo) {
  expect_both("ends with dots...", "ends with dots");
  expect_both("ends . . ", "ends");
  expect_both("  in front", "in front");
}

TEST(FileStem, NoNameIsHidden) {
  expect_both(".hidden", "_hidden");
  expect_both("..a", "_.a");
}

TEST(FileStem, NoNameMeansSomethingToAShell) {
  expect_both("#744 plate", "_744 plate");
  expect_both("-rf", "_rf");
  expect_both("--help", "_-help");
  expect_both("~root", "_root");
  expect_both("  -x", "_x");
  expect_both("a#-~", "a#-~");
}

TEST(FileStem, DevicesAreNoFiles) {
  for (const char* device : {"CON", "con", "PRN", "Aux", "NUL", "COM1", "com0", "LPT9", "CONIN$",
                             "conout$", "nul.step", "con .x", "COM\u00B9"}) {
    EXPECT_EQ(unicode_stem(device), std::string("_") + device);
  }
  EXPECT_EQ(ascii_stem("COM\u00B9"), "_COM1");
  expect_both("console", "console");
  expect_both("COM10", "COM10");
  expect_both("COMA", "COMA");
  expect_both("x.nul", "x.nul");
}

TEST(FileStem, NamesOfNoUseAreEmpty) {
  for (const char* name :
       {"", " ", "...", "///", "-", "_", "?", "--", "#", "~", "#-", "\u202E", "\u00A0", ". / ."}) {
    expect_both(name, "");
  }
}

TEST(FileStem, UnicodeNamesAreComposed) {
  EXPECT_EQ(unicode_stem("fu\u0308r"), "f\u00fcr");
  EXPECT_EQ(unicode_stem("支架/A"), "支架_A");
}

TEST(FileStem, BytesThatAreNotUtf8AreLatin1) {
  EXPECT_EQ(unicode_stem("f\xFCr"), "f\u00fcr");
  EXPECT_EQ(ascii_stem("f\xFCr"), "fur");
  EXPECT_EQ(unicode_stem("\xE9\xBB"), "\u00e9\u00bb");  // a sequence that breaks off
}

TEST(FileStem, LongNamesAreCut) {
  EXPECT_EQ(unicode_stem(std::string(300, 'x')), std::string(139, 'x'));
  EXPECT_EQ(unicode_stem(std::string(139, 'x')), std::string(139, 'x'));
}

TEST(FileStem, CutsFallBetweenCharacters) {
  std::string wide;
  for (int i = 0; i < 100; ++i) wide += "架";
  EXPECT_EQ(unicode_stem(wide).size(), 138u);  // 46 characters of three bytes
  // A letter with a mark of its own at the edge: both go.
  EXPECT_EQ(unicode_stem(std::string(138, 'x') + "q\u0323z"), std::string(138, 'x'));
  EXPECT_EQ(unicode_stem(std::string(136, 'x') + "q\u0323z"), std::string(136, 'x') + "q\u0323");
}

TEST(FileStem, CutLeavesNoSpaceOrDotAtTheEnd) {
  EXPECT_EQ(unicode_stem(std::string(137, 'x') + ". z"), std::string(137, 'x'));
}

TEST(FileStem, DevicesWithLongExtensionsAreCut) {
  expect_both("nul." + std::string(200, 'x'), "_nul." + std::string(134, 'x'));
}

TEST(FileStem, CutLeavesNoDevice) {
  expect_both("nul" + std::string(140, ' ') + "x", "_nul");
}

TEST(FileStem, WhatACutLeavesMayBeOfNoUse) {
  expect_both(std::string(140, '_') + "x", "");
}

TEST(ProductFileStem, EndingsOfExchangeFilesGo) {
  const struct {
    std::string name;
    std::string stem;
  } CASES[] = {
      {"lid.step", "lid"},
      {"lid.STP", "lid"},
      {"lid.p21", "lid"},
      {"lid.stp.Step ", "lid"},
      {"lid .stp", "lid"},
      {"v1.2.stp", "v1.2"},
      {"lid.stpz", "lid.stpz"},
      {"lid.sldprt", "lid.sldprt"},
      {"step", "step"},
      {"lidstep", "lidstep"},
      {".step", "_step"},
      {"..stp", "_.stp"},
      {"?.stp", "_.stp"},
      {"nul.step", "_nul"},
      {"", ""},
      {"?", ""},
  };
  for (const auto& row : CASES) {
    EXPECT_EQ(product_file_stem(row.name, FileNameSet::ascii), row.stem) << row.name;
    EXPECT_EQ(product_file_stem(row.name, FileNameSet::unicode), row.stem) << row.name;
  }
  expect_both("lid.step", "lid.step");
}

TEST(ProductFileStem, WhatIsCutOffHidesNoEnding) {
  EXPECT_EQ(product_file_stem(std::string(200, 'x') + ".step", FileNameSet::ascii),
            std::string(139, 'x'));
}

TEST(ShortenedStem, LeavesRoom) {
  EXPECT_EQ(shortened_stem(std::string(139, 'x'), 4), std::string(135, 'x'));
  EXPECT_EQ(shortened_stem("short", 4), "short");
}

}  // namespace
}  // namespace Kessel::test
