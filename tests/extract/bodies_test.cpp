// A file for each body of a part.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>

#include "extract/said_records.h"
#include "kessel/errors.h"
#include "kessel/extract.h"
#include "products/products.h"
#include "support/folder_tree.h"
#include "support/loaded_text.h"
#include "support/product_records.h"
#include "support/scratch_folder.h"

namespace Kessel::test {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::IsEmpty;

/// A part with two solids, #40 and #50, in one representation, one of them in a second, tied one;
/// colours for faces of both, a layer of both, a shape aspect of each face, and a property of the
/// part; beside it another part.
const std::string TWO_BODIES =
    SHARED_RECORDS + product_records(10, "pair", "#3,#40,#50") +
    product_records(20, "other", "#3,#60") + solid_records(40) + solid_records(50) +
    solid_records(60) +
    "#70=SHAPE_REPRESENTATION('second',(#50),#2);\n"
    "#71=SHAPE_REPRESENTATION_RELATIONSHIP('','',#15,#70);\n"
    "#80=STYLED_ITEM('',(),#41);\n#81=STYLED_ITEM('',(),#51);\n"
    "#82=MECHANICAL_DESIGN_GEOMETRIC_PRESENTATION_REPRESENTATION('',(#80,#81),#2);\n"
    "#83=PRESENTATION_LAYER_ASSIGNMENT('1','',(#41,#51,#61));\n"
    "#90=SHAPE_ASPECT('first','',#13,.T.);\n#91=SHAPE_ASPECT('second','',#13,.T.);\n"
    "#92=GEOMETRIC_ITEM_SPECIFIC_USAGE('','',#90,#15,#41);\n"
    "#93=GEOMETRIC_ITEM_SPECIFIC_USAGE('','',#91,#15,#51);\n"
    "#94=DIMENSIONAL_SIZE(#90,'length');\n"
    "#95=PROPERTY_DEFINITION('mass','',#10);\n"
    "#96=SHAPE_ASPECT('of all','',#13,.F.);\n";

std::string data_of(const fs::path& path) {
  const std::string text = read_file(path);
  const std::size_t begin = text.find("DATA;\n") + 6;
  return text.substr(begin, text.find("ENDSEC;\n", begin) - begin);
}

TEST(Bodies, EachHasItsOwnThingsAndThePartsProduct) {
  const ScratchFolder folder;
  folder.write("in.stp", exchange_file(TWO_BODIES));
  ExtractOptions options;
  options.bodies = true;
  const std::vector<ExtractedFile> files = extract_each("in.stp", {"pair"}, "out", options);
  ASSERT_EQ(files.size(), 2u);
  EXPECT_EQ(files[0].body, 40u);
  EXPECT_EQ(files[1].body, 50u);
  EXPECT_EQ(files[0].part.record, 10u);
  EXPECT_EQ(names_in("out"), (std::set<std::string>{"pair body 1.stp", "pair body 2.stp"}));
  EXPECT_EQ(data_of(files[0].path),
            "#1=APPLICATION_CONTEXT('');\n#2=REPRESENTATION_CONTEXT('ID1','3D');\n"
            "#3=AXIS2_PLACEMENT_3D('',#4,$,$);\n#4=CARTESIAN_POINT('',(0.,0.,0.));\n"
            "#5=PRODUCT_DEFINITION('design','',#7,#1);\n"
            "#6=PRODUCT('id pair','pair','about it',(#1));\n"
            "#7=PRODUCT_DEFINITION_FORMATION('v1','',#6);\n"
            "#8=PRODUCT_DEFINITION_SHAPE('','',#5);\n"
            "#9=SHAPE_DEFINITION_REPRESENTATION(#8,#10);\n"
            "#10=SHAPE_REPRESENTATION('',(#3,#11),#2);\n"
            "#11=MANIFOLD_SOLID_BREP('',#12);\n#12=ADVANCED_FACE('',(),$,.T.);\n"
            "#13=STYLED_ITEM('',(),#12);\n"
            "#14=MECHANICAL_DESIGN_GEOMETRIC_PRESENTATION_REPRESENTATION('',(#13),#2);\n"
            "#15=PRESENTATION_LAYER_ASSIGNMENT('1','',(#12));\n"
            "#16=SHAPE_ASPECT('first','',#8,.T.);\n"
            "#17=GEOMETRIC_ITEM_SPECIFIC_USAGE('','',#16,#10,#12);\n"
            "#18=DIMENSIONAL_SIZE(#16,'length');\n"
            "#19=PROPERTY_DEFINITION('mass','',#5);\n#20=SHAPE_ASPECT('of all','',#8,.F.);\n");
  const std::string second = data_of(files[1].path);
  EXPECT_NE(second.find("SHAPE_REPRESENTATION('second',("), second.npos) << second;
  EXPECT_NE(second.find("SHAPE_ASPECT('second'"), second.npos) << second;
  EXPECT_EQ(second.find("SHAPE_ASPECT('first'"), second.npos) << second;
  EXPECT_EQ(second.find("DIMENSIONAL_SIZE"), second.npos) << second;
  const SaidRecords input("in.stp");
  for (const ExtractedFile& file : files) {
    EXPECT_THAT(input.not_said(SaidRecords(file.path)), IsEmpty());
  }
}

TEST(Bodies, PartsWithoutAnyAreRefused) {
  const ScratchFolder folder;
  folder.write("in.stp", exchange_file(SHARED_RECORDS + product_records(10, "empty", "#3") +
                                       product_records(20, "solid", "#40") + solid_records(40)));
  ExtractOptions options;
  options.bodies = true;
  try {
    extract_each("in.stp", {"solid", "empty"}, "out", options);
    FAIL() << "extracted";
  } catch (const PartError& error) {
    EXPECT_STREQ(error.what(), "in.stp: The part #10 (empty) has no bodies of its own.");
  }
  EXPECT_FALSE(fs::exists("out"));
}

TEST(Bodies, ComponentsStayBehind) {
  const ScratchFolder folder;
  folder.write("in.stp",
               exchange_file(SHARED_RECORDS + product_records(10, "frame", "#3,#40,#50") +
                             product_records(20, "bolt", "#3,#60") + solid_records(40) +
                             solid_records(50) + solid_records(60) + usage_record(100, 10, 20)));
  ExtractOptions options;
  options.bodies = true;
  for (const ExtractedFile& file : extract_each("in.stp", {"frame"}, "out", options)) {
    const SaidRecords body(file.path);
    const Products products = find_products(body.instances);
    ASSERT_EQ(products.products.size(), 1u);
    EXPECT_EQ(products.products[0].name, "frame");
    EXPECT_EQ(body.instances.missing_references(), 0u);
    EXPECT_EQ(file.records, 12u);
  }
}

}  // namespace
}  // namespace Kessel::test
