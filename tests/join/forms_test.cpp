// References in the forms that systems write, and what stays where files are missing or differ.
#include <gtest/gtest.h>

#include <filesystem>

#include "join/joined_folder.h"
#include "kessel/diff.h"

namespace Kessel::test {
namespace {

namespace fs = std::filesystem;

const std::string CONTEXTS =
    "#1=PRODUCT_DEFINITION_CONTEXT('',$,'');\n#2=REPRESENTATION_CONTEXT('','');\n";

// The whole #10 with the part #20, which nothing places.
const std::string WHOLE_FILE = CONTEXTS + product(10, "whole", "()", "#2") +
                               product(20, "part", "()", "#2") +
                               "#27=NEXT_ASSEMBLY_USAGE_OCCURRENCE('u','','',#10,#20,$);\n";
const std::string PART =
    "#1=PRODUCT_DEFINITION_CONTEXT('its',$,'');\n#2=REPRESENTATION_CONTEXT('','');\n" +
    product(10, "part", "(#20)", "#2") + "#20=MANIFOLD_SOLID_BREP('its',$);\n";

const std::string JOINED =
    "#1=PRODUCT_DEFINITION_CONTEXT('',$,'');\n"
    "#2=REPRESENTATION_CONTEXT('','');\n"
    "#3=PRODUCT_DEFINITION('design','',#4,#1);\n"
    "#4=PRODUCT_DEFINITION_FORMATION('','',#5);\n"
    "#5=PRODUCT('whole','whole','',());\n"
    "#6=PRODUCT_DEFINITION_SHAPE('','',#3);\n"
    "#7=SHAPE_DEFINITION_REPRESENTATION(#6,#8);\n"
    "#8=SHAPE_REPRESENTATION('',(),#2);\n"
    "#9=NEXT_ASSEMBLY_USAGE_OCCURRENCE('u','','',#3,#12,$);\n"
    "#10=PRODUCT_DEFINITION_CONTEXT('its',$,'');\n"
    "#11=REPRESENTATION_CONTEXT('','');\n"
    "#12=PRODUCT_DEFINITION('design','',#13,#10);\n"
    "#13=PRODUCT_DEFINITION_FORMATION('','',#14);\n"
    "#14=PRODUCT('part','part','',());\n"
    "#15=PRODUCT_DEFINITION_SHAPE('','',#12);\n"
    "#16=SHAPE_DEFINITION_REPRESENTATION(#15,#17);\n"
    "#17=SHAPE_REPRESENTATION('',(#18),#11);\n"
    "#18=MANIFOLD_SOLID_BREP('its',$);\n";

TEST(JoinForms, EachLeadsToTheSame) {
  const std::string forms[] = {
      // A source that is the file.
      "#40=DOCUMENT_FILE('7','','',$,'',$);\n#41=EXTERNAL_SOURCE(IDENTIFIER('part.stp'));\n"
      "#42=APPLIED_EXTERNAL_IDENTIFICATION_ASSIGNMENT('',$,#41,(#40));\n"
      "#43=APPLIED_DOCUMENT_REFERENCE(#40,'',(#20));\n",
      // A source that is the file's folder.
      "#40=DOCUMENT_FILE('7','','',$,'',$);\n#41=EXTERNAL_SOURCE(IDENTIFIER('./'));\n"
      "#42=APPLIED_EXTERNAL_IDENTIFICATION_ASSIGNMENT('part.stp',$,#41,(#40));\n"
      "#43=APPLIED_DOCUMENT_REFERENCE(#40,'',(#20));\n",
      // A name where the id is a number.
      "#40=DOCUMENT_FILE('7','part.stp','',$,'',$);\n"
      "#43=APPLIED_DOCUMENT_REFERENCE(#40,'',(#20));\n",
      // A managed document, as the open kernel writes it.
      "#40=DOCUMENT_PRODUCT_EQUIVALENCE('equivalence',$,#41,#43);\n#41=DOCUMENT('','',$,#42);\n"
      "#42=DOCUMENT_TYPE('configuration controlled document version');\n"
      "#43=PRODUCT_DEFINITION_FORMATION('1','',#44);\n#44=PRODUCT('20001','part.stp-Doc','',(#45));"
      "\n"
      "#45=PRODUCT_CONTEXT('',$,'');\n"
      "#46=PRODUCT_DEFINITION_WITH_ASSOCIATED_DOCUMENTS('1','',#43,#47,(#48));\n"
      "#47=PRODUCT_DEFINITION_CONTEXT('digital document definition',$,'');\n"
      "#48=DOCUMENT_FILE('part.stp','',$,#49,'',$);\n#49=DOCUMENT_TYPE('');\n"
      "#50=APPLIED_EXTERNAL_IDENTIFICATION_ASSIGNMENT('part.stp',#51,#52,(#48));\n"
      "#51=IDENTIFICATION_ROLE('external document id and location',$);\n"
      "#52=EXTERNAL_SOURCE(IDENTIFIER('part.stp'));\n#53=ROLE_ASSOCIATION(#54,#55);\n"
      "#54=OBJECT_ROLE('mandatory',$);\n#55=APPLIED_DOCUMENT_REFERENCE(#41,'',(#20));\n"
      "#56=PRODUCT_RELATED_PRODUCT_CATEGORY('document',$,(#44));\n",
  };
  for (const std::string& form : forms) {
    SCOPED_TRACE(form);
    JoinedFolder folder;
    folder.file("root.stp", WHOLE_FILE + form);
    folder.file("part.stp", PART);
    EXPECT_EQ(folder.data(), JOINED);
    EXPECT_TRUE(folder.joined().warnings.empty());
  }
}

TEST(JoinForms, AnchorsOfOtherFiles) {
  JoinedFolder folder;
  folder.folder().write("root.stp",
                        whole_file("#1=A(#9,#10);\n#2=B(#11);\n", "AP",
                                   "REFERENCE;\n#9=<my%20part.stp#solid>;\n"
                                   "#10=<my%20part.stp#point>;\n#11=<./my%20part.stp#solid>;\n"
                                   "ENDSEC;\n"));
  folder.folder().write("my part.stp",
                        whole_file("#1=SOLID(#2);\n#2=POINT();\n", "AP",
                                   "ANCHOR;\n<point>=#2;\n<solid>=#1 {tag:'x'};\nENDSEC;\n"));
  EXPECT_EQ(folder.data(), "#1=A(#3,#4);\n#2=B(#3);\n#3=SOLID(#4);\n#4=POINT();\n");
  EXPECT_EQ(folder.joined().inputs.size(), 2u);
}

TEST(JoinForms, AnchorThatIsNotThere) {
  for (const char* const anchors :
       {"", "ANCHOR;\n<other>=#1;\nENDSEC;\n", "ANCHOR;\n<solid>='text';\nENDSEC;\n",
        "ANCHOR;\n<solid>=#7;\nENDSEC;\n"}) {
    JoinedFolder folder;
    folder.folder().write(
        "root.stp", whole_file("#1=A(#9);\n", "AP", "REFERENCE;\n#9=<part.stp#solid>;\nENDSEC;\n"));
    folder.folder().write("part.stp", whole_file("#1=SOLID();\n", "AP", anchors));
    EXPECT_EQ(folder.refusal(),
              "part.stp: The file has no anchor \"solid\" that names an instance.");
  }
}

TEST(JoinForms, WhatIsMissingMayStayAndIsSeenFromTheOutput) {
  JoinedFolder folder;
  folder.options.allow_missing = true;
  const std::string block = reference_block(40, "part.stp", "#25", "#20");
  folder.folder().write(
      "root.stp", whole_file("#9=X(#70);\n" + WHOLE_FILE + block, "AP",
                             "REFERENCE;\n#70=<sub/other%20part.stp#a>;\n#71=<#here>;\nENDSEC;\n"));
  fs::create_directory(folder.folder() / "out folder");
  const Joined joined = join(folder.folder() / "root.stp",
                             folder.folder() / "out folder" / "one.stp", folder.options);
  const std::string text = read_file(folder.folder() / "out folder" / "one.stp");
  EXPECT_NE(text.find("REFERENCE;\n#1=<../sub/other%20part.stp#a>;\n#2=<#here>;\nENDSEC;\n"),
            std::string::npos)
      << text;
  EXPECT_NE(text.find("=DOCUMENT_FILE('../part.stp','','',"), std::string::npos) << text;
  EXPECT_NE(text.find("_ASSIGNMENT('../part.stp',"), std::string::npos) << text;
  EXPECT_NE(text.find("=EXTERNAL_SOURCE(IDENTIFIER(''));"), std::string::npos) << text;
  ASSERT_EQ(joined.warnings.size(), 2u);
  EXPECT_EQ(joined.warnings[0].sentence,
            "The file \"sub/other part.stp\" that is referred to is not there.");
  EXPECT_EQ(joined.warnings[0].line, 8u);
  EXPECT_EQ(joined.warnings[0].severity, Severity::warning);
  EXPECT_EQ(joined.warnings[1].instance, 41u);
  // Beside the root nothing changes.
  EXPECT_EQ(join(folder.folder() / "root.stp", folder.folder() / "two.stp", folder.options).records,
            joined.records);
  EXPECT_TRUE(diff(folder.folder() / "root.stp", folder.folder() / "two.stp").is_same);
}

TEST(JoinForms, OtherSchemas) {
  JoinedFolder folder;
  folder.file("root.stp", WHOLE_FILE + reference_block(40, "part.stp", "#25", "#20"),
              "AP214 { 1 2 }");
  folder.file("part.stp", PART, "AP214 { 1 3 }");
  EXPECT_EQ(folder.data(), JOINED);
  folder.options.replace = true;
  folder.file("part.stp", PART, "AP242");
  EXPECT_EQ(folder.refusal(), "part.stp: The file obeys the schema \"AP242\", the root \"AP214\".");
  folder.options.allow_mixed_schemas = true;
  EXPECT_EQ(folder.data(), JOINED);
  EXPECT_NE(read_file("out.stp").find("FILE_SCHEMA(('AP214 { 1 2 }'));"), std::string::npos);
  ASSERT_EQ(folder.joined().warnings.size(), 1u);
  EXPECT_EQ(folder.joined().warnings.front().file, "part.stp");
  EXPECT_EQ(folder.joined().warnings.front().severity, Severity::warning);
}

/// A context in millimetres, or in metres where the prefix is "$".
std::string context(int number, const std::string& prefix) {
  const auto at = [&](int i) { return "#" + std::to_string(number + i); };
  return at(0) + "=(GEOMETRIC_REPRESENTATION_CONTEXT(3)GLOBAL_UNIT_ASSIGNED_CONTEXT((" + at(1) +
         "))REPRESENTATION_CONTEXT('',''));\n" + at(1) + "=(LENGTH_UNIT()NAMED_UNIT(*)SI_UNIT(" +
         prefix + ",.METRE.));\n";
}

TEST(JoinForms, ShapesInOtherUnitsStayApart) {
  const std::string root = "#1=PRODUCT_DEFINITION_CONTEXT('',$,'');\n" + context(2, "$") +
                           product(20, "part", "(#30)", "#2") +
                           "#30=AXIS2_PLACEMENT_3D('a',$,$,$);\n#31=USES(#30);\n" +
                           reference_block(40, "part.stp", "#25", "#20");
  const std::string part = "#1=PRODUCT_DEFINITION_CONTEXT('',$,'');\n" + context(2, ".MILLI.") +
                           product(10, "part", "(#30)", "#2") +
                           "#30=AXIS2_PLACEMENT_3D('a',$,$,$);\n";
  JoinedFolder folder;
  folder.file("root.stp", root);
  folder.file("part.stp", part);
  EXPECT_EQ(folder.data(),
            "#1=(GEOMETRIC_REPRESENTATION_CONTEXT(3)GLOBAL_UNIT_ASSIGNED_CONTEXT((#2))"
            "REPRESENTATION_CONTEXT('',''));\n"
            "#2=(LENGTH_UNIT()NAMED_UNIT(*)SI_UNIT($,.METRE.));\n"
            "#3=SHAPE_DEFINITION_REPRESENTATION(#13,#4);\n"
            "#4=SHAPE_REPRESENTATION('',(#5),#1);\n"
            "#5=AXIS2_PLACEMENT_3D('a',$,$,$);\n"
            "#6=USES(#5);\n"
            "#7=PRODUCT_DEFINITION_CONTEXT('',$,'');\n"
            "#8=(GEOMETRIC_REPRESENTATION_CONTEXT(3)GLOBAL_UNIT_ASSIGNED_CONTEXT((#9))"
            "REPRESENTATION_CONTEXT('',''));\n"
            "#9=(LENGTH_UNIT()NAMED_UNIT(*)SI_UNIT(.MILLI.,.METRE.));\n"
            "#10=PRODUCT_DEFINITION('design','',#11,#7);\n"
            "#11=PRODUCT_DEFINITION_FORMATION('','',#12);\n"
            "#12=PRODUCT('part','part','',());\n"
            "#13=PRODUCT_DEFINITION_SHAPE('','',#10);\n"
            "#14=SHAPE_DEFINITION_REPRESENTATION(#13,#15);\n"
            "#15=SHAPE_REPRESENTATION('',(#16),#8);\n"
            "#16=AXIS2_PLACEMENT_3D('a',$,$,$);\n");
}

}  // namespace
}  // namespace Kessel::test
