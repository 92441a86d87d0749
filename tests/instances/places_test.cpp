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
  Loaded loaded = load(data);
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
  Loaded loaded = load_file(file);
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

TEST(SetLines, CountsLineFeeds) {
  std::istringstream in("a\nb\r\nc\n\n");
  std::vector<Finding> findings(6);
  const std::uint64_t offsets[] = {8, 0, 1, 2, 5, 7};
  for (std::size_t i = 0; i < 6; ++i) findings[i].offset = offsets[i];
  set_lines(in, findings);
  std::vector<std::uint64_t> lines;
  for (const Finding& finding : findings) lines.push_back(finding.line);
  EXPECT_THAT(lines, ElementsAre(5, 0, 1, 2, 3, 4)) << "0 for the whole file";
}

TEST(SetLines, CountsInLongFiles) {
  std::string text;
  for (int i = 0; i < 100000; ++i) text += "x\n";
  for (const std::size_t offset : {std::size_t{65535}, std::size_t{65536}, std::size_t{65537},
                                   std::size_t{131072}, text.size() - 1, text.size()}) {
    std::istringstream in(text);
    std::vector<Finding> findings(1);
    findings[0].offset = offset;
    set_lines(in, findings);
    EXPECT_EQ(findings[0].line, 1 + offset / 2) << offset;
  }
}

}  // namespace
}  // namespace Kessel::test
