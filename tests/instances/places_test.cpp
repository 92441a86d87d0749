#include "instances/places.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <vector>

#include "instances/loaded_text.h"

namespace Kessel::test {
namespace {

using testing::ElementsAre;

TEST(ReadAgain, FindsEveryRecordOfAFile) {
  std::string data;
  for (int i = 1; i <= 300; ++i) {
    data += "/*#0=Z();*/ #" + std::to_string(i) + " = A('" + std::to_string(i) + "');;?;\n";
  }
  LoadedText loaded = load(data);
  const std::string file = file_with(data);
  ASSERT_EQ(loaded.instances.size(), 300u);
  for (Index record = 0; record < 300; ++record) {
    const std::string number = std::to_string(record + 1);
    const PlacedText text = read_again(loaded.in, loaded.instances, record);
    ASSERT_EQ(text.body, "A('" + number + "')");
    ASSERT_EQ(text.offset, file.find("#" + number + " = "));
  }
}

TEST(ReadAgain, FindsRecordsBehindOtherSections) {
  std::string file = "ISO-10303-21;HEADER;ENDSEC;ANCHOR;";
  for (int i = 0; i < 50; ++i) file += "<a;" + std::to_string(i) + "'>=#1;";
  file += "ENDSEC;REFERENCE;#5=<b;#9=C();>;@6=<'>;ENDSEC;DATA;#1=A('<');# 7=X();#2=B('>');ENDSEC;";
  file += "DATA;#3=C();#5=<b;ENDSEC;END-ISO-10303-21;";
  // The last record has the number of a reference, and another text.
  file.erase(file.find("#5=<b;ENDSEC"), 6);
  LoadedText loaded = load_file(file);
  const auto body = [&](Index record) {
    return read_again(loaded.in, loaded.instances, record).body;
  };
  EXPECT_EQ(body(0), "<a;0'>=#1");
  EXPECT_EQ(body(49), "<a;49'>=#1");
  EXPECT_EQ(body(50), "<b;#9=C();>");
  EXPECT_EQ(body(51), "@6=<'>");
  EXPECT_EQ(body(52), "A('<')");
  EXPECT_EQ(body(53), "B('>')");
  EXPECT_EQ(body(54), "C()");
}

/// "LINE:COLUMN" of each offset in `text`.
std::vector<std::string> located(const std::string& text,
                                 const std::vector<std::uint64_t>& offsets) {
  std::istringstream in(text);
  std::vector<Finding> findings(offsets.size());
  for (std::size_t i = 0; i < offsets.size(); ++i) findings[i].offset = offsets[i];
  locate(in, findings);
  std::vector<std::string> places;
  for (const Finding& finding : findings) {
    places.push_back(std::to_string(finding.line) + ":" + std::to_string(finding.column));
  }
  return places;
}

TEST(Locate, CountsLineFeedsAndBytesBehindThem) {
  EXPECT_THAT(located("a\nb\r\nc\n\n", {8, 0, 1, 2, 3, 5, 7}),
              ElementsAre("5:1", "0:0", "1:2", "2:1", "2:2", "3:1", "4:1"))
      << "0 for the whole file";
  EXPECT_THAT(located("x\n\u00e4\u20acb", {7}), ElementsAre("2:6")) << "bytes, not characters";
}

TEST(Locate, CountsInLongFiles) {
  std::string text;
  for (int i = 0; i < 100000; ++i) text += "x\n";
  for (const std::size_t offset : {std::size_t{65535}, std::size_t{65536}, std::size_t{65537},
                                   std::size_t{131072}, text.size() - 1, text.size()}) {
    EXPECT_THAT(located(text, {offset}),
                ElementsAre(std::to_string(1 + offset / 2) + ":" + std::to_string(1 + offset % 2)))
        << offset;
  }
}

TEST(Locate, CountsInLinesLongerThanABlock) {
  EXPECT_THAT(located("x\n" + std::string(200000, 'y'), {65536, 150000, 150001}),
              ElementsAre("2:65535", "2:149999", "2:150000"));
}

}  // namespace
}  // namespace Kessel::test
