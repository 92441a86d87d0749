// Which files another refers to, in each form that systems write, and where those are.
#include "external/external_references.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "external/resource.h"
#include "external/targets.h"
#include "support/loaded_text.h"
#include "support/product_records.h"
#include "support/scratch_folder.h"

namespace Kessel::test {
namespace {

// The products whole (#10) and part (#20).
const std::string PRODUCTS =
    "#2=REPRESENTATION_CONTEXT('','');\n#3=AXIS2_PLACEMENT_3D('',$,$,$);\n" +
    product_records(10, "whole", "#3") + product_records(20, "part", "#3") +
    usage_record(30, 10, 20);

/// A line per reference: "#DOCUMENT of #DEFINITION: NAME (KEYWORD of #RECORD says TEXT), ...".
std::string references_of(const std::string& records) {
  const LoadedText file(records);
  const auto number = [&](Index record) {
    return record == NO_RECORD ? std::string("none")
                               : "#" + std::to_string(file.instances.number(record));
  };
  std::string text;
  for (const ExternalReference& reference :
       find_external_references(file.instances, find_products(file.instances))) {
    text += number(reference.document) + " of " + number(reference.definition) + ":";
    for (const FileName& name : reference.names) {
      text += " " + name.name + " (" + std::string(name.keyword) + " " +
              std::to_string(name.parameter) + " of " + number(name.record) + " says " + name.text +
              ")";
    }
    for (const Index record : reference.managing) text += " managed by " + number(record);
    text += "\n";
  }
  return text;
}

TEST(ExternalReferences, NamesInTheirOrder) {
  EXPECT_EQ(references_of(PRODUCTS +
                          "#40=DOCUMENT_FILE('id.stp','name.stp','',$,'',$);\n"
                          "#41=EXTERNAL_SOURCE(IDENTIFIER('folder'));\n"
                          "#42=APPLIED_EXTERNAL_IDENTIFICATION_ASSIGNMENT('a.stp',$,#41,(#40));\n"
                          "#43=APPLIED_DOCUMENT_REFERENCE(#40,'',(#20));\n"),
            "#40 of #20: folder/a.stp (EXTERNAL_SOURCE 0 of #41 says folder) "
            "a.stp (APPLIED_EXTERNAL_IDENTIFICATION_ASSIGNMENT 0 of #42 says a.stp) "
            "id.stp (DOCUMENT_FILE 0 of #40 says id.stp) "
            "name.stp (DOCUMENT_FILE 1 of #40 says name.stp)\n");
}

TEST(ExternalReferences, PathsOfOtherSystemsAndUrisMeanWhatTheyMeanThere) {
  // The name in the identification, the folder in the source, and what is found in their order.
  const struct {
    const char* name;
    const char* source;
    std::vector<std::string> found;
  } cases[] = {
      {"a\\\\b.stp", "", {"a\\b.stp says a\\b.stp", "a/b.stp says a/b.stp"}},
      {"..\\\\b.stp", "", {"..\\b.stp says ..\\b.stp", "../b.stp says ../b.stp"}},
      {"C:\\\\b.stp", "", {"C:\\b.stp says C:\\b.stp"}},
      {"\\\\\\\\host\\\\b.stp", "", {"\\\\host\\b.stp says \\\\host\\b.stp"}},
      {"file:///x/a%20b.stp",
       "",
       {"file:///x/a%20b.stp says file:///x/a%20b.stp", "/x/a b.stp says /x/a b.stp"}},
      {"file://localhost/b.stp",
       "",
       {"file://localhost/b.stp says file://localhost/b.stp", "/b.stp says /b.stp"}},
      {"file://host/b.stp", "", {"file://host/b.stp says file://host/b.stp"}},
      {"http://host/b.stp", "", {"http://host/b.stp says http://host/b.stp"}},
      {"a%20b.stp", "", {"a%20b.stp says a%20b.stp"}},
      {"b.stp", "x\\\\y", {"x\\y/b.stp says x\\y", "x/y/b.stp says x/y", "b.stp says b.stp"}},
      {"b.stp", "x\\\\", {"x\\/b.stp says x\\", "x/b.stp says x/", "b.stp says b.stp"}},
      {"b.stp",
       "file:///x/",
       {"file:///x/b.stp says file:///x/", "/x/b.stp says /x/", "b.stp says b.stp"}},
  };
  for (const auto& [name, source, expected] : cases) {
    const LoadedText file(PRODUCTS + "#40=DOCUMENT_FILE('','','',$,'',$);\n#41=EXTERNAL_SOURCE('" +
                          source + "');\n#42=APPLIED_EXTERNAL_IDENTIFICATION_ASSIGNMENT('" + name +
                          "',$,#41,(#40));\n#43=APPLIED_DOCUMENT_REFERENCE(#40,'',(#20));\n");
    const auto references = find_external_references(file.instances, find_products(file.instances));
    ASSERT_EQ(references.size(), 1u) << name;
    std::vector<std::string> found;
    for (const FileName& one : references[0].names) {
      found.push_back(one.name + " says " + one.text);
    }
    EXPECT_EQ(found, expected) << name;
  }
}

TEST(ExternalReferences, SourceThatIsTheFileItself) {
  EXPECT_EQ(references_of(PRODUCTS +
                          "#40=DOCUMENT_FILE('7','drawing','',$,'',$);\n"
                          "#41=EXTERNAL_SOURCE(IDENTIFIER('a.stp'));\n"
                          "#42=APPLIED_EXTERNAL_IDENTIFICATION_ASSIGNMENT('a.stp',$,#41,(#40));\n"
                          "#43=PROPERTY_DEFINITION('external definition','',#40);\n"
                          "#44=PROPERTY_DEFINITION_REPRESENTATION(#43,#25);\n"),
            "#40 of #20: a.stp (APPLIED_EXTERNAL_IDENTIFICATION_ASSIGNMENT 0 of #42 says a.stp) "
            "a.stp (EXTERNAL_SOURCE 0 of #41 says a.stp) 7 (DOCUMENT_FILE 0 of #40 says 7)\n");
}

TEST(ExternalReferences, FileOfAManagedDocument) {
  EXPECT_EQ(references_of(PRODUCTS +
                          "#40=DOCUMENT_PRODUCT_EQUIVALENCE('equivalence',$,#41,#42);\n"
                          "#41=DOCUMENT('','',$,$);\n"
                          "#42=PRODUCT_DEFINITION_FORMATION('1','',#43);\n"
                          "#43=PRODUCT('20001','a.stp-Doc','',());\n"
                          "#44=PRODUCT_DEFINITION_WITH_ASSOCIATED_DOCUMENTS('1','',#42,$,(#45));\n"
                          "#45=DOCUMENT_FILE('a.stp','',$,$,'',$);\n"
                          "#46=APPLIED_DOCUMENT_REFERENCE(#41,'',(#20));\n"),
            "#45 of #20: a.stp (DOCUMENT_FILE 0 of #45 says a.stp) managed by #44 managed by #42 "
            "managed by #43 managed by #41\n");
}

TEST(ExternalReferences, DocumentsThatAreNoExchangeFilesAreNone) {
  EXPECT_EQ(references_of(PRODUCTS + "#40=DOCUMENT_FILE('drawing.pdf','','',$,'',$);\n"
                                     "#41=APPLIED_DOCUMENT_REFERENCE(#40,'',(#20));\n"
                                     "#42=DOCUMENT_FILE('nobody.stp','','',$,'',$);\n"),
            "");
}

TEST(ExternalReferences, AnchorsInFiles) {
  std::istringstream in(
      "ISO-10303-21;\nHEADER;\nENDSEC;\nREFERENCE;\n#1=<sub/my%20part.stp#a%23>;\n"
      "#2=<#here>;\n#3=<http://example.org/a.stp#b>;\n#4=<file:///top/a.stp#c>;\n#5=<a.stp>;\n"
      "ENDSEC;\nDATA;\n#6=A(#1);\nENDSEC;\nEND-ISO-10303-21;\n");
  Instances instances;
  load_instances(in, instances);
  const auto references = find_external_references(instances, find_products(instances));
  ASSERT_EQ(references.size(), 2u);
  EXPECT_EQ(references[0].document, instances.find(1));
  EXPECT_EQ(references[0].names.front().name, "sub/my part.stp");
  EXPECT_EQ(references[0].names.front().text, "sub/my%20part.stp");
  EXPECT_EQ(references[0].anchor, "a#");
  EXPECT_EQ(references[1].names.front().name, "/top/a.stp");
  EXPECT_EQ(references[1].anchor, "c");
}

TEST(ExternalReferences, UriTexts) {
  EXPECT_EQ(decoded_uri("a%2Fb%zz%4"), "a/b%zz%4");
  EXPECT_EQ(encoded_uri("../T\xC3\xBCr #1/a.stp"), "../T%C3%BCr%20%231/a.stp");
}

TEST(ExternalReferences, FirstNameWhoseFileIsThereCounts) {
  const ScratchFolder folder;
  folder.write("b.stp", "");
  ExternalReference reference;
  reference.names = {{"a.stp", "a.stp"}, {"b.stp", "b.stp"}, {"c.stp", "c.stp"}};
  const Target target = find_target(folder.path(), reference);
  EXPECT_TRUE(target.is_there);
  EXPECT_EQ(target.name, &reference.names[1]);
  EXPECT_EQ(target.path, folder / "b.stp");
  const Target missing = find_target(folder / "elsewhere", reference);
  EXPECT_FALSE(missing.is_there);
  EXPECT_EQ(missing.path, folder / "elsewhere" / "a.stp");
}

}  // namespace
}  // namespace Kessel::test
