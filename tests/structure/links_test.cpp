// Links between assemblies and components.
#include <gtest/gtest.h>

#include "structure/discovery.h"
#include "structure/links.h"
#include "structure/literal_file.h"
#include "support/split_run.h"

namespace Kessel::test {
namespace {

constexpr char USAGE_TYPES[][40] = {"NEXT_ASSEMBLY_USAGE_OCCURRENCE", "ASSEMBLY_COMPONENT_USAGE",
                                    "QUANTIFIED_ASSEMBLY_COMPONENT_USAGE"};

/// A store with the parts #10, #20, #30 and #40, the definition #50 that is none, and `usages`.
std::unique_ptr<Store> with_parts(const std::string& usages) {
  std::unique_ptr<Store> file = read_records(
      "#1=PRODUCT('p','p','',());\n"
      "#10=PRODUCT_DEFINITION('',#1);\n"
      "#20=PRODUCT_DEFINITION('',#1);\n"
      "#30=PRODUCT_DEFINITION('',#1);\n"
      "#40=MAPPED_ITEM('',#1);\n"
      "#50=PRODUCT_DEFINITION('');\n" +
      usages);
  find_and_create_parts(*file);
  return file;
}

/// Every part that has links, such as "#10 children #20; #20 parents #10; ".
std::string links_of(const Store& file) {
  std::string text;
  for (const Part* part : file.parts) {
    const std::string name = name_of(file, part);
    if (!part->children.empty())
      text += name + " children " + names_of(file, part->children) + "; ";
    if (!part->parents.empty()) text += name + " parents " + names_of(file, part->parents) + "; ";
  }
  return text;
}

/// The links after the pass, which must print nothing.
std::string link(const std::string& usages) {
  const auto file = with_parts(usages);
  EXPECT_EQ(printed_by([&] { link_parts(*file); }), "");
  return links_of(*file);
}

TEST(Links, FirstReferenceIsTheParentAndTheSecondTheChild) {
  EXPECT_EQ(link("#60=NEXT_ASSEMBLY_USAGE_OCCURRENCE('u','child','parent',#10,#20,$);\n"),
            "#10 children #20 ; #20 parents #10 ; ");
  EXPECT_EQ(link("#60=NEXT_ASSEMBLY_USAGE_OCCURRENCE('','','',#40,#10,$);\n"),
            "#10 parents #40 ; #40 children #10 ; ");
}

TEST(Links, AllThreeTypesLinkAndFurtherReferencesAreIgnored) {
  for (const std::string type : USAGE_TYPES) {
    SCOPED_TRACE(type);
    EXPECT_EQ(link("#60=" + type + "('','','',#10,#20,$,#30,#1048576);\n"),
              "#10 children #20 ; #20 parents #10 ; ");
  }
}

TEST(Links, OtherTypesOfUsageAreNotRead) {
  EXPECT_EQ(link("#60=MAKE_FROM_USAGE_OPTION('',#10,#20);\n"
                 "#61=SPECIFIED_HIGHER_USAGE_OCCURRENCE('',#10,#20);\n"
                 "#62=PROMISSORY_USAGE_OCCURRENCE('',#10,#20);\n"),
            "");
}

TEST(Links, UsageWithFewerThanTwoReferencesPrintsTwoLinesAndIsSkipped) {
  for (const std::string type : USAGE_TYPES) {
    SCOPED_TRACE(type);
    const auto file = with_parts("#60=" + type + "('','','',#10);\n#61=" + type +
                                 "('');\n#62=" + type + "('',#10,#20);\n");
    EXPECT_EQ(printed_by([&] { link_parts(*file); }),
              "Got a malformed " + type + "\nIt does not have two childs.\n" +  //
                  "Got a malformed " + type + "\nIt does not have two childs.\n");
    EXPECT_EQ(links_of(*file), "#10 children #20 ; #20 parents #10 ; ");
  }
}

TEST(Links, MalformedUsagesAreReportedTypeByType) {
  const auto file = with_parts(
      "#60=QUANTIFIED_ASSEMBLY_COMPONENT_USAGE('');\n"
      "#61=ASSEMBLY_COMPONENT_USAGE('');\n"
      "#62=NEXT_ASSEMBLY_USAGE_OCCURRENCE('');\n");
  EXPECT_EQ(printed_by([&] { link_parts(*file); }),
            "Got a malformed NEXT_ASSEMBLY_USAGE_OCCURRENCE\nIt does not have two childs.\n"
            "Got a malformed ASSEMBLY_COMPONENT_USAGE\nIt does not have two childs.\n"
            "Got a malformed QUANTIFIED_ASSEMBLY_COMPONENT_USAGE\nIt does not have two childs.\n");
}

TEST(Links, UsageOfWhatIsNoPartIsDroppedSilently) {
  EXPECT_EQ(link("#60=NEXT_ASSEMBLY_USAGE_OCCURRENCE('',#10,#50);\n"
                 "#61=NEXT_ASSEMBLY_USAGE_OCCURRENCE('',#50,#10);\n"
                 "#62=NEXT_ASSEMBLY_USAGE_OCCURRENCE('',#10,#1);\n"
                 "#63=NEXT_ASSEMBLY_USAGE_OCCURRENCE('',#10,#999);\n"
                 "#64=NEXT_ASSEMBLY_USAGE_OCCURRENCE('',#999,#10);\n"),
            "");
}

TEST(Links, AreAddedTypeByTypeAndWithinATypeInTheOrderOfTheFile) {
  EXPECT_EQ(link("#60=QUANTIFIED_ASSEMBLY_COMPONENT_USAGE('',#10,#40);\n"
                 "#61=ASSEMBLY_COMPONENT_USAGE('',#10,#30);\n"
                 "#63=NEXT_ASSEMBLY_USAGE_OCCURRENCE('',#10,#20);\n"
                 "#62=NEXT_ASSEMBLY_USAGE_OCCURRENCE('',#10,#40);\n"),
            "#10 children #20 #40 #30 #40 ; #20 parents #10 ; #30 parents #10 ; "
            "#40 parents #10 #10 ; ");
}

TEST(Links, ComponentThatIsUsedTwiceIsListedTwiceOnBothSides) {
  EXPECT_EQ(link("#60=NEXT_ASSEMBLY_USAGE_OCCURRENCE('',#10,#20);\n"
                 "#61=NEXT_ASSEMBLY_USAGE_OCCURRENCE('',#10,#20);\n"),
            "#10 children #20 #20 ; #20 parents #10 #10 ; ");
}

TEST(Links, PartMayBeItsOwnComponent) {
  EXPECT_EQ(link("#60=NEXT_ASSEMBLY_USAGE_OCCURRENCE('',#10,#10);\n"),
            "#10 children #10 ; #10 parents #10 ; ");
}

TEST(Links, EitherReferenceBeyondTheStoreThrowsAndEarlierLinksStay) {
  for (const std::string references : {"#10,#1048576", "#1048576,#10", "#999,#1048576"}) {
    SCOPED_TRACE(references);
    const auto file = with_parts("#60=NEXT_ASSEMBLY_USAGE_OCCURRENCE('',#10,#20);\n" +
                                 ("#61=NEXT_ASSEMBLY_USAGE_OCCURRENCE(''," + references) +
                                 ");\n#62=NEXT_ASSEMBLY_USAGE_OCCURRENCE('',#10,#30);\n");
    EXPECT_EQ(out_of_range_text([&] { link_parts(*file); }), "invalid vector subscript");
    EXPECT_EQ(links_of(*file), "#10 children #20 ; #20 parents #10 ; ");
  }
}

TEST(Links, NumberWithoutARecordUnderAUsageTypeIsPassedOver) {
  const auto file = with_parts("");
  file->add_type(70, "NEXT_ASSEMBLY_USAGE_OCCURRENCE");
  EXPECT_EQ(printed_by([&] { link_parts(*file); }), "");
  EXPECT_EQ(links_of(*file), "");
}

}  // namespace
}  // namespace Kessel::test
