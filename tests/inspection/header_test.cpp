// The fields of the header section.
#include "inspection/header.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace Kessel::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST(ReadHeader, FindsEveryField) {
  const Header header = read_header(
      {"FILE_DESCRIPTION(('first','second'),'2;1')",
       "FILE_NAME('a.stp','2024-05-17T09:30:00',('Ann','Bob'),('Works'),'pre 1','orig 2','yes')",
       "FILE_SCHEMA(('ONE { 1 0 }','TWO'))"});
  EXPECT_THAT(header.description, ElementsAre("first", "second"));
  EXPECT_EQ(header.implementation_level, "2;1");
  EXPECT_EQ(header.name, "a.stp");
  EXPECT_EQ(header.time_stamp, "2024-05-17T09:30:00");
  EXPECT_THAT(header.authors, ElementsAre("Ann", "Bob"));
  EXPECT_THAT(header.organisations, ElementsAre("Works"));
  EXPECT_EQ(header.preprocessor_version, "pre 1");
  EXPECT_EQ(header.originating_system, "orig 2");
  EXPECT_EQ(header.authorisation, "yes");
  EXPECT_THAT(header.schemas, ElementsAre("ONE { 1 0 }", "TWO"));
}

TEST(ReadHeader, CommentsMayStandAnywhere) {
  const Header header = read_header(
      {"FILE_NAME/* it's */(\n/* name */\n'C:/long pa\nth.step',\n"
       "/* time, stamp */ '2021',\n/* author */ (/* none */''),(''),'',\n'',/* ( */ 'x')"});
  EXPECT_EQ(header.name, "C:/long path.step");
  EXPECT_EQ(header.time_stamp, "2021");
  EXPECT_THAT(header.authors, ElementsAre(""));
  EXPECT_EQ(header.authorisation, "x");
}

TEST(ReadHeader, TextsAreDecoded) {
  const Header header =
      read_header({"FILE_NAME('C:\\\\a \\X2\\00DC\\X0\\bung','',('O''Hara'),())"});
  EXPECT_EQ(header.name, "C:\\a Übung");
  EXPECT_THAT(header.authors, ElementsAre("O'Hara"));
  EXPECT_THAT(header.organisations, IsEmpty());
}

TEST(ReadHeader, WhatIsNotThereIsEmpty) {
  using Entities = std::vector<std::string>;
  for (const Entities& entities :
       {Entities{}, Entities{"FILE_NAME()", "FILE_SCHEMA($)"}, Entities{"FILE_NAME"},
        Entities{"FILE_NAMES('a')", "file_schema(('a'))"}, Entities{"FILE_NAME(1.,.T.,'me')"}}) {
    SCOPED_TRACE(testing::PrintToString(entities));
    const Header header = read_header(entities);
    EXPECT_EQ(header.name, "");
    EXPECT_EQ(header.time_stamp, "");
    EXPECT_THAT(header.authors, IsEmpty());
    EXPECT_THAT(header.schemas, IsEmpty());
  }
}

TEST(ReadHeader, FirstEntityOfANameCounts) {
  EXPECT_EQ(read_header({"FILE_NAME('a')", "FILE_NAME('b')"}).name, "a");
}

}  // namespace
}  // namespace Kessel::test
