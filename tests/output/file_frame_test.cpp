#include "output/file_frame.h"

#include <gtest/gtest.h>

#include <sstream>

#include "instances/loader.h"

namespace Kessel::test {
namespace {

TEST(FileFrame, TheHeaderNamesTheFileAndTheTime) {
  const HeaderForm form(
      {"FILE_DESCRIPTION(('a;b'),'2;1')", "FILE_NAME( 'in.stp' , '1999' ,('me'),(''),'','','')",
       "FILE_SCHEMA(('X'))"},
      "2020", true);
  EXPECT_EQ(form.with_name("T\u00fcr's.stp"),
            "ISO-10303-21;\nHEADER;\nFILE_DESCRIPTION(('a;b'),'2;1');\n"
            "FILE_NAME( 'T\\X2\\00FC\\X0\\r''s.stp' , '2020' ,('me'),(''),'','','');\n"
            "FILE_SCHEMA(('X'));\nENDSEC;\n");
}

TEST(FileFrame, WhatSpeaksOfSectionsSpeaksOfAllWhereTheyBecomeOne) {
  const std::vector<std::string> entities = {"SECTION_LANGUAGE('A','de')",
                                             "SECTION_LANGUAGE('B','de')",
                                             "FILE_POPULATION('X','INCLUDE_ALL',('A','B'))"};
  EXPECT_EQ(HeaderForm(entities, "", true).with_name(""),
            "ISO-10303-21;\nHEADER;\nSECTION_LANGUAGE($,'de');\n"
            "FILE_POPULATION('X','INCLUDE_ALL',$);\nENDSEC;\n");
  EXPECT_EQ(HeaderForm(entities, "", false).with_name(""),
            "ISO-10303-21;\nHEADER;\nSECTION_LANGUAGE('A','de');\nSECTION_LANGUAGE('B','de');\n"
            "FILE_POPULATION('X','INCLUDE_ALL',('A','B'));\nENDSEC;\n");
}

std::vector<std::string> sections_of(const std::string& text) {
  std::istringstream in("ISO-10303-21;\nHEADER;\nENDSEC;\n" + text + "END-ISO-10303-21;\n");
  Instances instances;
  load_instances(in, instances);
  return section_parameters(instances);
}

TEST(FileFrame, SectionsOfOneSchemaBecomeOne) {
  EXPECT_EQ(sections_of("DATA;\n#1=A();\nENDSEC;\n"), std::vector<std::string>{""});
  EXPECT_EQ(sections_of("DATA('A',('X'));\nENDSEC;\nDATA('B',('X'));\nENDSEC;\n"),
            std::vector<std::string>{""});
  EXPECT_EQ(sections_of("DATA('A',('X'));\nENDSEC;\nDATA('B',('Y'));\nENDSEC;\n"),
            (std::vector<std::string>{"('A',('X'))", "('B',('Y'))"}));
}

TEST(FileFrame, Schemas) {
  EXPECT_EQ(schemas({"FILE_SCHEMA( ( 'A { 1 0 }' , 'B' ) )"}),
            (std::vector<std::string>{"A { 1 0 }", "B"}));
  EXPECT_EQ(schemas({"FILE_DESCRIPTION(('A'),'2;1')", "FILE_NAME('')"}),
            std::vector<std::string>{});
}

}  // namespace
}  // namespace Kessel::test
