// Headers, anchors and references.
#include <gtest/gtest.h>

#include "join/joined_folder.h"

namespace Kessel::test {
namespace {

const std::string REFERENCE_TO_PART =
    "#1=PRODUCT_DEFINITION('','',$,$);\n"
    "#8=APPLIED_DOCUMENT_REFERENCE(#9,'',(#1));\n#9=DOCUMENT_FILE('part.stp','','',$,'',$);\n";

TEST(JoinSections, AnchorsAndReferencesOfAllFiles) {
  JoinedFolder folder;
  folder.folder().write(
      "root.stp", whole_file(REFERENCE_TO_PART + "#2=COLOUR_RGB('',1.,0.,0.);\n#3=A(#4);\n", "AP",
                             "ANCHOR;\n<red>=#2;\n<document>=#9;\nENDSEC;\n"
                             "REFERENCE;\n#4=<http://example.org/a.stp#x>;\nENDSEC;\n"));
  folder.folder().write(
      "part.stp",
      whole_file("#1=PRODUCT_DEFINITION('','',$,$);\n#2=COLOUR_RGB('',1.,0.,0.);\n#3=A(#5,#4);\n",
                 "AP",
                 "ANCHOR;\n<its red>=#2 {tag:#1};\nENDSEC;\n"
                 "REFERENCE;\n#4=<http://example.org/a.stp#x>;\n#5=<http://example.org/"
                 "b.stp#y>;\nENDSEC;\n"));
  folder.data();
  const std::string text = without_time_stamps(read_file("out.stp"));
  // What anchors name stays by itself.
  EXPECT_EQ(
      text.substr(text.find("ANCHOR;")),
      "ANCHOR;\n<red>=#2;\n<its red>=#6 {tag:#5};\nENDSEC;\n"
      "REFERENCE;\n#1=<http://example.org/a.stp#x>;\n#4=<http://example.org/b.stp#y>;\nENDSEC;\n"
      "DATA;\n"
      "#2=COLOUR_RGB('',1.,0.,0.);\n"
      "#3=A(#1);\n"
      "#5=PRODUCT_DEFINITION('','',$,$);\n"
      "#6=COLOUR_RGB('',1.,0.,0.);\n"
      "#7=A(#4,#1);\n"
      "ENDSEC;\nEND-ISO-10303-21;\n");
}

/// The names that stand in the reference section of the joined file, and its data.
std::string joined_references(JoinedFolder& folder) {
  folder.options.allow_missing = true;
  folder.data();
  const std::string text = read_file("out.stp");
  return text.substr(text.find("REFERENCE;"));
}

// "lost.stp" is another file for each, and so is "../lost.stp", which is the root's "lost.stp".
TEST(JoinSections, ReferencesAreSeenFromTheFoldersOfTheirFiles) {
  JoinedFolder folder;
  std::string to_part = REFERENCE_TO_PART;
  to_part.replace(to_part.find("part.stp"), 8, "in/part.stp");
  std::filesystem::create_directory("in");
  folder.folder().write("root.stp", whole_file(to_part + "#3=A(#4);\n", "AP",
                                               "REFERENCE;\n#4=<lost.stp#x>;\nENDSEC;\n"));
  folder.folder().write("in/part.stp",
                        whole_file("#1=PRODUCT_DEFINITION('','',$,$);\n#3=B(#4,#5);\n", "AP",
                                   "REFERENCE;\n#4=<lost.stp#x>;\n#5=<../lost.stp#x>;\n"
                                   "ENDSEC;\n"));
  EXPECT_EQ(joined_references(folder),
            "REFERENCE;\n#1=<lost.stp#x>;\n#3=<in/lost.stp#x>;\nENDSEC;\nDATA;\n#2=A(#1);\n"
            "#4=PRODUCT_DEFINITION('','',$,$);\n#5=B(#3,#1);\nENDSEC;\nEND-ISO-10303-21;\n");
}

TEST(JoinSections, WhatAFileNamesInItselfIsNoOthers) {
  JoinedFolder folder;
  folder.folder().write("root.stp",
                        whole_file(REFERENCE_TO_PART + "#3=A(#4);\n", "AP",
                                   "ANCHOR;\n<x>=#3;\nENDSEC;\nREFERENCE;\n#4=<#x>;\nENDSEC;\n"));
  folder.folder().write("part.stp",
                        whole_file("#1=PRODUCT_DEFINITION('','',$,$);\n#3=B(#4);\n", "AP",
                                   "ANCHOR;\n<x>=#3;\nENDSEC;\nREFERENCE;\n#4=<#x>;\nENDSEC;\n"));
  EXPECT_EQ(joined_references(folder),
            "REFERENCE;\n#1=<#x>;\n#3=<#x>;\nENDSEC;\nDATA;\n#2=A(#1);\n"
            "#4=PRODUCT_DEFINITION('','',$,$);\n#5=B(#3);\nENDSEC;\nEND-ISO-10303-21;\n");
}

TEST(JoinSections, NameOfTheOutputInItsHeader) {
  JoinedFolder folder;
  folder.file("root.stp", "#1=A();\n");
  join("root.stp", "T\xC3\xBCr 'x'.stp");
  const std::string text = without_time_stamps(read_file("T\xC3\xBCr 'x'.stp"));
  EXPECT_EQ(text.substr(0, text.find("FILE_SCHEMA")),
            "ISO-10303-21;\nHEADER;\nFILE_DESCRIPTION((''),'2;1');\n"
            "FILE_NAME('T\\X2\\00FC\\X0\\r ''x''.stp','<time>',('me'),(''),'','','');\n");
}

TEST(JoinSections, ParametersOfTheOnlyDataSection) {
  JoinedFolder folder;
  folder.folder().write("root.stp",
                        "ISO-10303-21;\nHEADER;\nFILE_NAME();\nENDSEC;\nDATA('d',('AP'));\n"
                        "#1=A();\nENDSEC;\nEND-ISO-10303-21;\n");
  join("root.stp", "one.stp");
  EXPECT_EQ(read_file("one.stp"),
            "ISO-10303-21;\nHEADER;\nFILE_NAME();\nENDSEC;\nDATA('d',('AP'));\n"
            "#1=A();\nENDSEC;\nEND-ISO-10303-21;\n");
}

TEST(JoinSections, SectionsOfDifferentSchemasStay) {
  JoinedFolder folder;
  const std::string head =
      "ISO-10303-21;\nHEADER;\nFILE_SCHEMA(('AP','AQ'));\nSECTION_LANGUAGE('d','en');\nENDSEC;\n";
  folder.folder().write("root.stp", head + "DATA('d',('AP'));\n" + REFERENCE_TO_PART +
                                        "#2=A(#3);\nENDSEC;\nDATA('e',('AQ'));\n#3=B(#2);\n"
                                        "ENDSEC;\nEND-ISO-10303-21;\n");
  folder.folder().write("part.stp", head +
                                        "DATA('x',('AQ'));\n#2=C(#1);\nENDSEC;\n"
                                        "DATA('d',('AP'));\n#1=PRODUCT_DEFINITION('','',$,$);\n"
                                        "#3=D(#2);\nENDSEC;\nEND-ISO-10303-21;\n");
  join("root.stp", "one.stp");
  EXPECT_EQ(read_file("one.stp"), head +
                                      "DATA('d',('AP'));\n#1=A(#2);\n"
                                      "#4=PRODUCT_DEFINITION('','',$,$);\n#5=D(#3);\nENDSEC;\n"
                                      "DATA('e',('AQ'));\n#2=B(#1);\n#3=C(#4);\nENDSEC;\n"
                                      "END-ISO-10303-21;\n");
}

TEST(JoinSections, SeveralDataSectionsBecomeOne) {
  JoinedFolder folder;
  folder.folder().write("root.stp",
                        "ISO-10303-21;\nHEADER;\nENDSEC;\nDATA('d',('AP'));\n#1=A(#2);\nENDSEC;\n"
                        "DATA('e',('AP'));\n#2=B();\nENDSEC;\nEND-ISO-10303-21;\n");
  join("root.stp", "one.stp");
  EXPECT_EQ(read_file("one.stp"),
            "ISO-10303-21;\nHEADER;\nENDSEC;\nDATA;\n#1=A(#2);\n#2=B();\nENDSEC;\n"
            "END-ISO-10303-21;\n");
}

}  // namespace
}  // namespace Kessel::test
