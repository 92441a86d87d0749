#include "placement/placement.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sstream>

#include "placement/bodies.h"
#include "placement/check_placement.h"
#include "support/loaded_text.h"
#include "support/product_records.h"

namespace Kessel::test {
namespace {

using testing::IsEmpty;

/// A file with the records of `text`, placed. The root's file is 0, the others go by product.
struct Placed {
  explicit Placed(const std::string& text, AssemblyStyle style = AssemblyStyle::nested)
      : file(SHARED_RECORDS + text),
        products(find_products(file.instances)),
        placement(place_records(file.instances, products, style)) {
    EXPECT_THAT(check_placement(file.instances, products, placement), IsEmpty());
    EXPECT_THAT(check_remarks(file.instances, products, placement), IsEmpty());
  }

  /// Where #number stands, such as "0 1g 2s": as a guest in file 1, as a stand-in in 2.
  std::string at(std::uint64_t number) const {
    std::ostringstream text;
    for (const Stand stand : placement.stands.of(file.at(number))) {
      text << (text.tellp() == 0 ? "" : " ") << stand.file();
      if (stand.role() == Role::guest) text << 'g';
      if (stand.role() == Role::stand_in) text << 's';
    }
    return text.str();
  }

  std::vector<std::string> links(FileId id) const {
    std::vector<std::string> names;
    for (const ProductId product : placement.files[id].links) {
      names.push_back(products.products[product].name);
    }
    return names;
  }

  LoadedText file;
  Products products;
  Placement placement;
};

using Names = std::vector<std::string>;

/// Car, wheel and tyre at #10, #20 and #30; solids at #40 (wheel) and #50 (tyre); usages at #60 and
/// #70.
const std::string CAR = product_records(10, "car", "#3") + product_records(20, "wheel", "#3,#40") +
                        product_records(30, "tyre", "#3,#50") + solid_records(40) +
                        solid_records(50) + placed_usage_records(60, 10, 20) +
                        placed_usage_records(70, 20, 30);

TEST(Placement, NestedGivesEachProductAFile) {
  const Placed car(CAR);
  ASSERT_EQ(car.placement.files.size(), 3u);
  EXPECT_EQ(car.links(0), Names{"wheel"});
  EXPECT_EQ(car.links(1), Names{"tyre"});
  EXPECT_EQ(car.links(2), Names{});
  EXPECT_EQ(car.at(10), "0");  // definitions stand with those who use them
  EXPECT_EQ(car.at(20), "0g 1");
  EXPECT_EQ(car.at(21), "0g 1");
  EXPECT_EQ(car.at(25), "0s 1");  // placeholders
  EXPECT_EQ(car.at(35), "1s 2");
  EXPECT_EQ(car.at(40), "1");  // bodies
  EXPECT_EQ(car.at(41), "1");
  EXPECT_EQ(car.at(50), "2");
  EXPECT_EQ(car.at(62), "0");  // places of components
  EXPECT_EQ(car.at(74), "1");
  EXPECT_EQ(car.at(2), "0 1 2");  // contexts
}

TEST(Placement, LeanGivesFilesToPartsAndTheRootAllAssembliesOwnBodies) {
  const Placed car(CAR, AssemblyStyle::lean);
  ASSERT_EQ(car.placement.files.size(), 2u);
  EXPECT_EQ(car.links(0), Names{"tyre"});
  EXPECT_EQ(car.at(25), "0");
  EXPECT_EQ(car.at(40), "0");
  EXPECT_EQ(car.at(35), "0s 1");
  EXPECT_EQ(car.at(50), "1");
  EXPECT_EQ(car.at(74), "0");
}

TEST(Placement, OneProductIsOneFile) {
  const Placed bolt(product_records(10, "bolt", "#3,#40") + solid_records(40));
  EXPECT_EQ(bolt.placement.files.size(), 1u);
  EXPECT_EQ(bolt.at(41), "0");
}

TEST(Placement, WithoutProductsAllIsInTheRoot) {
  const Placed none(solid_records(40));
  EXPECT_EQ(none.placement.files.size(), 1u);
  EXPECT_EQ(none.at(41), "0");
}

TEST(Placement, SeveralTopsAreLinkedFromARootThatNoProductHas) {
  const std::string text = product_records(10, "a", "#3,#40") + product_records(20, "b", "#3,#50") +
                           solid_records(40) + solid_records(50);
  for (const AssemblyStyle style : {AssemblyStyle::nested, AssemblyStyle::lean}) {
    const Placed tops(text, style);
    ASSERT_EQ(tops.placement.files.size(), 3u);
    EXPECT_EQ(tops.placement.files[0].top, NO_PRODUCT);
    EXPECT_EQ(tops.links(0), (Names{"a", "b"}));
    EXPECT_EQ(tops.at(10), "0g 1");
    EXPECT_EQ(tops.at(15), "0s 1");
    EXPECT_EQ(tops.at(40), "1");
  }
}

TEST(Placement, AUsageThatClosesACircleStandsInTheRootWithAWarning) {
  const Placed circle(CAR + placed_usage_records(80, 30, 10));
  EXPECT_EQ(circle.at(80), "0");
  EXPECT_EQ(circle.at(82), "0");
  EXPECT_EQ(circle.at(35), "0s 1s 2");
  EXPECT_EQ(circle.links(2), Names{});
  ASSERT_EQ(circle.placement.warnings.size(), 1u);
  EXPECT_EQ(circle.placement.warnings[0].kind, PlacementWarning::Kind::closes_circle);
  EXPECT_EQ(circle.placement.warnings[0].record, circle.file.at(80));
}

TEST(Placement, AProductThatUsesItself) {
  const Placed self(product_records(10, "a", "#3,#40") + solid_records(40) +
                    placed_usage_records(60, 10, 10));
  EXPECT_EQ(self.placement.files.size(), 1u);
  EXPECT_EQ(self.placement.warnings.size(), 1u);
}

TEST(Placement, UsagesAndComponentsWithoutShapes) {
  const Placed bare(product_records(10, "car", "#3") +
                    "#20=PRODUCT_DEFINITION('','',#22,#1);\n#21=PRODUCT('','glue','',(#1));\n"
                    "#22=PRODUCT_DEFINITION_FORMATION('','',#21);\n" +
                    usage_record(60, 10, 20));
  ASSERT_EQ(bare.placement.files.size(), 2u);
  EXPECT_EQ(bare.links(0), Names{"glue"});
  EXPECT_EQ(bare.at(20), "0g 1");
  EXPECT_EQ(bare.at(60), "0");
}

TEST(Placement, MappedItemsOfAComponentMapThePlaceholder) {
  const Placed mapped(product_records(10, "car", "#3,#60") +
                      product_records(20, "wheel", "#3,#40") + solid_records(40) +
                      "#60=MAPPED_ITEM('',#61,#3);\n#61=REPRESENTATION_MAP(#3,#25);\n" +
                      usage_record(62, 10, 20));
  EXPECT_EQ(mapped.at(60), "0");
  EXPECT_EQ(mapped.at(25), "0s 1");
  EXPECT_EQ(mapped.at(40), "1");
}

TEST(Placement, WhatIsOnlyMappedStandsWithWhatMapsIt) {
  const Placed mapped(product_records(10, "car", "#3,#60") +
                      product_records(20, "wheel", "#3,#40") + solid_records(40) +
                      "#60=MAPPED_ITEM('',#61,#3);\n#61=REPRESENTATION_MAP(#3,#25);\n");
  EXPECT_EQ(mapped.placement.files.size(), 1u);
  EXPECT_EQ(mapped.at(20), "0");
  EXPECT_EQ(mapped.at(40), "0");
  EXPECT_TRUE(mapped.placement.warnings.empty());
}

/// A lamp of two lights, each of which shows a bulb by a mapped item.
const std::string LAMP =
    product_records(10, "lamp", "#3") + product_records(20, "left", "#3,#60") +
    product_records(30, "right", "#3,#62") + product_records(50, "bulb", "#3,#40") +
    solid_records(40) + placed_usage_records(70, 10, 20) + placed_usage_records(80, 10, 30) +
    "#60=MAPPED_ITEM('',#61,#3);\n#61=REPRESENTATION_MAP(#3,#55);\n#62=MAPPED_ITEM('',#61,#3);\n" +
    "#90=PRODUCT_CATEGORY('','');\n#91=PRODUCT_RELATED_PRODUCT_CATEGORY('part',$,(#51));\n"
    "#92=PRODUCT_CATEGORY_RELATIONSHIP('','',#90,#91);\n";

TEST(Placement, WhatSeveralProductsMapStandsWithEach) {
  for (const AssemblyStyle style : {AssemblyStyle::nested, AssemblyStyle::lean}) {
    const Placed lamp(LAMP, style);
    ASSERT_EQ(lamp.placement.files.size(), 3u);
    EXPECT_EQ(lamp.links(0), (Names{"left", "right"}));
    EXPECT_EQ(lamp.at(50), "1 2");
    EXPECT_EQ(lamp.at(40), "1 2");
    EXPECT_EQ(lamp.at(92), "1 2");
    EXPECT_EQ(lamp.links(1), Names{});
  }
}

TEST(Placement, WhatIsMappedHereAndUsedThereHasAFileOfItsOwn) {
  const Placed lamp(LAMP + placed_usage_records(100, 10, 50));
  ASSERT_EQ(lamp.placement.files.size(), 4u);
  EXPECT_EQ(lamp.links(0), (Names{"left", "right", "bulb"}));
  EXPECT_EQ(lamp.at(40), "1 2 3");
  EXPECT_EQ(lamp.at(50), "0g 1 2 3");
}

TEST(Placement, ABodyOfTwoProductsStandsWithBoth) {
  const Placed shared(product_records(10, "car", "#3") + product_records(20, "left", "#3,#40") +
                      product_records(30, "right", "#3,#40") + solid_records(40) +
                      placed_usage_records(60, 10, 20) + placed_usage_records(70, 10, 30));
  EXPECT_EQ(shared.at(41), "1 2");
}

TEST(Placement, AShapeOfAComponentIsAPlaceholderWhoeverElseHasIt) {
  const Placed car(product_records(10, "car", "#3,#80") + product_records(20, "wheel", "#3,#40") +
                   product_records(30, "another", "#3") + solid_records(40) +
                   "#36=SHAPE_DEFINITION_REPRESENTATION(#33,#25);\n" +
                   placed_usage_records(60, 10, 20) +
                   "#80=MAPPED_ITEM('',#81,#3);\n#81=REPRESENTATION_MAP(#3,#25);\n");
  EXPECT_EQ(car.placement.files.size(), 4u);  // Both of them are at the top.
  EXPECT_EQ(car.at(25), "0s 1s 2 3");
  EXPECT_EQ(car.at(41), "2 3");
}

TEST(Placement, AnotherViewOfAPartStandsWithIt) {
  const std::string text = CAR +
                           "#80=PRODUCT_DEFINITION('view','',#32,#1);\n"
                           "#81=PRODUCT_DEFINITION_SHAPE('','',#80);\n"
                           "#82=SHAPE_DEFINITION_REPRESENTATION(#81,#35);\n"
                           "#83=APPLIED_APPROVAL_ASSIGNMENT(#84,(#80,#10));\n#84=APPROVAL($,'');\n";
  const Placed nested(text);
  EXPECT_EQ(nested.placement.files.size(), 3u);
  EXPECT_EQ(nested.at(80) + nested.at(81) + nested.at(82), "222");
  EXPECT_EQ(nested.at(35), "1s 2");
  EXPECT_EQ(nested.at(83), "0 2");
  const Placed lean(text, AssemblyStyle::lean);
  EXPECT_EQ(lean.placement.files.size(), 2u);
  EXPECT_EQ(lean.at(80) + lean.at(81) + lean.at(82), "111");
  EXPECT_EQ(lean.at(83), "0 1");
}

TEST(Placement, TiedRepresentationsOfAComponentAreTiedPlaceholders) {
  const Placed tied(product_records(10, "car", "#3") + product_records(20, "wheel", "#3") +
                    solid_records(40) + usage_record(60, 10, 20) +
                    "#61=PRODUCT_DEFINITION_SHAPE('','',#60);\n"
                    "#62=CONTEXT_DEPENDENT_SHAPE_REPRESENTATION(#63,#61);\n"
                    "#63=(REPRESENTATION_RELATIONSHIP('','',#66,#15)"
                    "REPRESENTATION_RELATIONSHIP_WITH_TRANSFORMATION(#64)"
                    "SHAPE_REPRESENTATION_RELATIONSHIP());\n"
                    "#64=ITEM_DEFINED_TRANSFORMATION('','',#3,#3);\n"
                    "#65=SHAPE_REPRESENTATION_RELATIONSHIP('','',#25,#66);\n"
                    "#66=ADVANCED_BREP_SHAPE_REPRESENTATION('',(#40,#3),#2);\n");
  EXPECT_EQ(tied.at(66), "0s 1");
  EXPECT_EQ(tied.at(25), "0s 1");
  EXPECT_EQ(tied.at(65), "0g 1");
  EXPECT_EQ(tied.at(40), "1");
}

TEST(Placement, APlaceThatNamesARepresentationOfNoProduct) {
  const Placed loose(product_records(10, "car", "#3") + product_records(20, "wheel", "#3,#40") +
                     solid_records(40) + solid_records(50) + usage_record(60, 10, 20) +
                     "#61=PRODUCT_DEFINITION_SHAPE('','',#60);\n"
                     "#62=CONTEXT_DEPENDENT_SHAPE_REPRESENTATION(#63,#61);\n"
                     "#63=(REPRESENTATION_RELATIONSHIP('','',#66,#15)"
                     "REPRESENTATION_RELATIONSHIP_WITH_TRANSFORMATION(#64)"
                     "SHAPE_REPRESENTATION_RELATIONSHIP());\n"
                     "#64=ITEM_DEFINED_TRANSFORMATION('','',#3,#3);\n"
                     "#66=SHAPE_REPRESENTATION('',(#50),#2);\n");
  EXPECT_EQ(loose.at(66), "0");
  EXPECT_EQ(loose.at(51), "0");
}

TEST(Placement, APlaceThatNoUsageNamesGoesToTheAssembly) {
  const Placed bare(product_records(10, "car", "#3") + product_records(20, "wheel", "#3,#40") +
                    solid_records(40) + usage_record(60, 10, 20) +
                    "#63=(REPRESENTATION_RELATIONSHIP('','',#25,#15)"
                    "REPRESENTATION_RELATIONSHIP_WITH_TRANSFORMATION(#64)"
                    "SHAPE_REPRESENTATION_RELATIONSHIP());\n"
                    "#64=ITEM_DEFINED_TRANSFORMATION('','',#3,#3);\n");
  EXPECT_EQ(bare.at(63), "0");
  EXPECT_EQ(bare.at(64), "0");
  EXPECT_EQ(bare.at(25), "0s 1");
}

TEST(Placement, ARelationAcrossLevelsStandsOnAPlaceholder) {
  const Placed across(CAR + "#90=SHAPE_REPRESENTATION_RELATIONSHIP('','',#15,#35);\n");
  EXPECT_EQ(across.at(90), "0");
  EXPECT_EQ(across.at(35), "0s 1s 2");
  EXPECT_EQ(across.at(50), "2");
}

TEST(Placement, StylesGoWithTheirItems) {
  const Placed styled(CAR +
                      "#80=STYLED_ITEM('',(#81),#41);\n#81=PRESENTATION_STYLE_ASSIGNMENT((#82));\n"
                      "#82=COLOUR_RGB('',1.,0.,0.);\n#83=STYLED_ITEM('',(#84),#51);\n"
                      "#84=PRESENTATION_STYLE_ASSIGNMENT((#82));\n"
                      "#85=OVER_RIDING_STYLED_ITEM('',(#84),#51,#83);\n");
  EXPECT_EQ(styled.at(80), "1");
  EXPECT_EQ(styled.at(81), "1");
  EXPECT_EQ(styled.at(82), "1 2");
  EXPECT_EQ(styled.at(83), "2");
  EXPECT_EQ(styled.at(85), "2");
}

TEST(Placement, AShapeOfAnAspectIsNotBoundByPointsThatItShares) {
  const Placed car(CAR +
                   "#90=SHAPE_ASPECT('','',#33,.T.);\n#91=PROPERTY_DEFINITION('','',#90);\n"
                   "#92=SHAPE_DEFINITION_REPRESENTATION(#91,#93);\n"
                   "#93=SHAPE_REPRESENTATION('',(#94,#95),#2);\n"
                   "#94=AXIS2_PLACEMENT_3D('',#4,$,$);\n" +
                   solid_records(95));
  for (const std::uint64_t number : {90, 92, 93, 94, 95, 96}) EXPECT_EQ(car.at(number), "2");
}

TEST(Placement, WhatOnlyARepresentationLeadsToStandsWithIt) {
  const Placed car(CAR +
                   "#90=SHAPE_ASPECT('','',#33,.T.);\n#91=PROPERTY_DEFINITION('','',#90);\n"
                   "#92=SHAPE_DEFINITION_REPRESENTATION(#91,#93);\n"
                   "#93=SHAPE_REPRESENTATION('',(#50,#95),#2);\n" +
                   solid_records(95));
  for (const std::uint64_t number : {92, 93, 95, 96}) EXPECT_EQ(car.at(number), "2");
}

TEST(Placement, CollectorsAreSharedOut) {
  const Placed shared(CAR +
                      "#80=PRESENTATION_LAYER_ASSIGNMENT('1','',(#40,#50));\n"
                      "#81=PRODUCT_RELATED_PRODUCT_CATEGORY('part',$,(#11,#21,#31));\n"
                      "#82=CC_DESIGN_APPROVAL(#83,(#32));\n#83=APPROVAL(#84,'');\n"
                      "#84=APPROVAL_STATUS('approved');\n#85=APPROVAL_DATE_TIME(#86,#83);\n"
                      "#86=CALENDAR_DATE(2020,1,1);\n");
  EXPECT_EQ(shared.at(80), "1 2");
  EXPECT_EQ(shared.at(81), "0 1 2");
  EXPECT_EQ(shared.at(82), "2");
  EXPECT_EQ(shared.at(83), "2");
  EXPECT_EQ(shared.at(85), "2");
  EXPECT_EQ(shared.at(86), "2");
}

TEST(Placement, AnApprovalOfAClassificationStandsWithIt) {
  const Placed approved(CAR +
                        "#80=CC_DESIGN_SECURITY_CLASSIFICATION(#81,(#22));\n"
                        "#81=SECURITY_CLASSIFICATION('','',#82);\n"
                        "#82=SECURITY_CLASSIFICATION_LEVEL('secret');\n"
                        "#83=CC_DESIGN_APPROVAL(#84,(#81));\n#84=APPROVAL(#85,'');\n"
                        "#85=APPROVAL_STATUS('approved');\n");
  EXPECT_EQ(approved.at(81), "1");
  EXPECT_EQ(approved.at(83), "1");
  EXPECT_EQ(approved.at(84), "1");
}

TEST(Placement, ASharedPersonDoesNotSpreadApprovals) {
  const Placed approved(
      CAR +
      "#80=CC_DESIGN_APPROVAL(#81,(#22));\n#81=APPROVAL(#82,'');\n#82=APPROVAL_STATUS('');\n"
      "#83=APPROVAL_PERSON_ORGANIZATION(#84,#81,$);\n#84=PERSON('',$,$,$,$,$);\n"
      "#90=CC_DESIGN_APPROVAL(#91,(#32));\n#91=APPROVAL(#92,'');\n#92=APPROVAL_STATUS('');\n"
      "#93=APPROVAL_PERSON_ORGANIZATION(#84,#91,$);\n");
  EXPECT_EQ(approved.at(83), "1");
  EXPECT_EQ(approved.at(93), "2");
  EXPECT_EQ(approved.at(84), "1 2");
}

TEST(Placement, WhoApprovedStandsWithTheApproval) {
  // However few or many other things the person, or the approval, takes part in.
  const std::string approval =
      CAR +
      "#80=APPROVAL_PERSON_ORGANIZATION(#81,#82,#85);\n#81=PERSON('',$,$,$,$,$);\n"
      "#82=APPROVAL(#83,'');\n#83=APPROVAL_STATUS('');\n#84=CC_DESIGN_APPROVAL(#82,(#32));\n"
      "#85=APPROVAL_ROLE('');\n#86=APPROVAL_PERSON_ORGANIZATION(#81,#87,#85);\n"
      "#87=APPROVAL(#83,'');\n#88=CC_DESIGN_APPROVAL(#87,(#10));\n";
  const auto person = [](int n, const std::string& items) {
    return "#" + std::to_string(n) + "=CC_DESIGN_PERSON_AND_ORGANIZATION_ASSIGNMENT(#81,$," +
           items + ");\n";
  };
  for (const std::string& more :
       {std::string(), person(90, "(#22)"), person(90, "(#22)") + person(91, "(#20)"),
        person(90, "(#22,#11)") + "#92=CC_DESIGN_APPROVAL(#82,(#30));\n"
                                  "#93=CC_DESIGN_APPROVAL(#82,(#31));\n"}) {
    const Placed approved(approval + more);
    EXPECT_EQ(approved.at(80), "2") << more;
    EXPECT_EQ(approved.at(82), "2") << more;
    EXPECT_EQ(approved.at(86), "0") << more;
  }
}

TEST(Placement, WhoApprovedAClassificationStandsWithIt) {
  const Placed approved(CAR +
                        "#80=APPROVAL_PERSON_ORGANIZATION(#81,#82,$);\n#81=PERSON('',$,$,$,$,$);\n"
                        "#82=APPROVAL($,'');\n#83=CC_DESIGN_APPROVAL(#82,(#84));\n"
                        "#84=SECURITY_CLASSIFICATION('','',$);\n"
                        "#85=CC_DESIGN_SECURITY_CLASSIFICATION(#84,(#22));\n"
                        "#86=CC_DESIGN_PERSON_AND_ORGANIZATION_ASSIGNMENT(#81,$,(#10,#32));\n");
  for (const std::uint64_t number : {80, 82, 83, 84, 85}) EXPECT_EQ(approved.at(number), "1");
  EXPECT_EQ(approved.at(81), "0 1 2");
}

TEST(Placement, WhatSpeaksOfContextsStandsWhereTheyDo) {
  const Placed spoken(CAR + "#80=APPLICATION_PROTOCOL_DEFINITION('','',2000,#1);\n");
  EXPECT_EQ(spoken.at(80), "0 1 2");
}

TEST(Placement, MaterialsAndDocumentsHaveNoFiles) {
  const Placed material(CAR +
                        "#80=PRODUCT_DEFINITION('','',#82,#1);\n#81=PRODUCT('','iron','',(#1));\n"
                        "#82=PRODUCT_DEFINITION_FORMATION('','',#81);\n"
                        "#83=MAKE_FROM_USAGE_OPTION('','','',#30,#80,1,'',$);\n");
  EXPECT_EQ(material.placement.files.size(), 3u);
  EXPECT_EQ(material.at(80), "2");
  EXPECT_EQ(material.at(83), "2");
}

TEST(Placement, WhatBelongsToNobodyIsInTheRoot) {
  const Placed loose(CAR +
                     "#80=PLANE('',#81);\n#81=AXIS2_PLACEMENT_3D('',#82,$,$);\n"
                     "#82=CARTESIAN_POINT('',(1.,0.,0.));\n");
  EXPECT_EQ(loose.at(80), "0");
  EXPECT_EQ(loose.at(82), "0");
}

TEST(Placement, AnOverridingStyleOfAnAssemblyBringsTheFaceWithAWarning) {
  const Placed styled(CAR +
                      "#80=STYLED_ITEM('',(#82),#51);\n#82=PRESENTATION_STYLE_ASSIGNMENT(());\n"
                      "#81=CONTEXT_DEPENDENT_OVER_RIDING_STYLED_ITEM('',(#82),#51,#80,(#62));\n");
  EXPECT_EQ(styled.at(81), "0");
  EXPECT_EQ(styled.at(51), "0g 2");
  EXPECT_EQ(styled.at(50), "2");
  ASSERT_EQ(styled.placement.warnings.size(), 1u);
  EXPECT_EQ(styled.placement.warnings[0].kind, PlacementWarning::Kind::foreign_shape);
  EXPECT_EQ(styled.placement.warnings[0].record, styled.file.at(81));
}

TEST(Placement, RelationsOfTwoComponentsStandInTheirAssembly) {
  const Placed related(product_records(10, "car", "#3") + product_records(20, "a", "#3,#40") +
                       product_records(30, "b", "#3,#50") + solid_records(40) + solid_records(50) +
                       placed_usage_records(60, 10, 20) + placed_usage_records(70, 10, 30) +
                       "#80=SHAPE_ASPECT('','',#23,.T.);\n#81=SHAPE_ASPECT('','',#33,.T.);\n"
                       "#82=SHAPE_ASPECT_RELATIONSHIP('','',#80,#81);\n");
  EXPECT_EQ(related.at(80), "0 1");
  EXPECT_EQ(related.at(82), "0");
}

TEST(Placement, WhatIsLeftOverBringsWhatOnlyItLeadsTo) {
  const Placed related("#7=GENERAL_PROPERTY('','',$);\n" + product_records(10, "car", "#3") +
                       product_records(20, "axle", "#3") + product_records(30, "a", "#3,#40") +
                       product_records(90, "b", "#3,#50") + solid_records(40) + solid_records(50) +
                       placed_usage_records(60, 10, 20) + placed_usage_records(70, 20, 30) +
                       placed_usage_records(80, 20, 90) +
                       "#100=SHAPE_ASPECT('','',#33,.T.);\n#101=SHAPE_ASPECT('','',#93,.T.);\n"
                       "#102=RELATION(#100,#101,#7);\n");
  EXPECT_EQ(related.at(102), "1");
  EXPECT_EQ(related.at(7), "1");
}

TEST(Placement, AFreeItemOfASharedListStandsOnce) {
  const Placed shared(CAR +
                      "#80=PRESENTATION_LAYER_ASSIGNMENT('1','',(#40,#81,#50));\n"
                      "#81=POLYLINE('',(#82,#82));\n#82=CARTESIAN_POINT('',(0.,0.,0.));\n");
  EXPECT_EQ(shared.at(80), "0 1 2");
  EXPECT_EQ(shared.at(81), "0");
}

TEST(Placement, WhatSpeaksOfTwoThingsStandsWithTheRarer) {
  const auto refer = [](int n, int document, const std::string& items) {
    return "#" + std::to_string(n) + "=APPLIED_DOCUMENT_REFERENCE(#" + std::to_string(document) +
           ",''," + items + ");\n";
  };
  const Placed related(CAR +
                       "#80=DOCUMENT_RELATIONSHIP('','',#81,#82);\n#81=DOCUMENT('a','','',$);\n"
                       "#82=DOCUMENT('b','','',$);\n" +
                       refer(83, 82, "(#20)") + refer(84, 81, "(#30)") + refer(85, 81, "(#31)"));
  EXPECT_EQ(related.at(80), "1");
}

/// Car with two wheels, whose usages have the names #67 and #77; styles #80 (of #82 and colour #83)
/// and #81 (overriding that, by the context of #67), and one presentation of both, #90.
const std::string COLOURED_WHEELS =
    product_records(10, "car", "#3") + product_records(20, "wheel", "#3,#40") + solid_records(40) +
    placed_usage_records(60, 10, 20) + placed_usage_records(70, 10, 20) +
    "#66=SHAPE_DEFINITION_REPRESENTATION(#61,#67);\n#67=SHAPE_REPRESENTATION('',(#3),#2);\n"
    "#76=SHAPE_DEFINITION_REPRESENTATION(#71,#77);\n#77=SHAPE_REPRESENTATION('',(#3),#2);\n"
    "#80=STYLED_ITEM('',(#82),#40);\n#82=PRESENTATION_STYLE_ASSIGNMENT((#83));\n"
    "#83=COLOUR_RGB('',1.,0.,0.);\n#81=OVER_RIDING_STYLED_ITEM('',(#84),#40,#80);\n"
    "#84=PRESENTATION_STYLE_BY_CONTEXT((#85),#67);\n#85=COLOUR_RGB('',0.,0.,1.);\n"
    "#90=MECHANICAL_DESIGN_GEOMETRIC_PRESENTATION_REPRESENTATION('',(#80,#81),#2);\n";

TEST(Placement, AStyleOfOneOfTwoOccurrencesStandsWithTheAssemblyOnAStandIn) {
  for (const AssemblyStyle style : {AssemblyStyle::nested, AssemblyStyle::lean}) {
    const Placed wheels(COLOURED_WHEELS, style);
    EXPECT_EQ(wheels.at(81), "0");
    EXPECT_EQ(wheels.at(84), "0");
    EXPECT_EQ(wheels.at(85), "0");
    EXPECT_EQ(wheels.at(80), "0g 1");  // what it overrides
    EXPECT_EQ(wheels.at(82), "0 1");
    EXPECT_EQ(wheels.at(40), "0s 1");
    EXPECT_EQ(wheels.at(41), "1");
    EXPECT_EQ(wheels.at(90), "0 1");
    EXPECT_THAT(wheels.placement.warnings, IsEmpty());
  }
}

TEST(Placement, AStyleOfAnOnlyOccurrenceStandsWithThePart) {
  const Placed wheel(product_records(10, "car", "#3") + product_records(20, "wheel", "#3,#40") +
                     solid_records(40) + placed_usage_records(60, 10, 20) +
                     "#66=SHAPE_DEFINITION_REPRESENTATION(#61,#67);\n"
                     "#67=SHAPE_REPRESENTATION('',(#3),#2);\n#81=STYLED_ITEM('',(#84),#40);\n"
                     "#84=PRESENTATION_STYLE_BY_CONTEXT((#85),#67);\n"
                     "#85=COLOUR_RGB('',0.,0.,1.);\n");
  EXPECT_EQ(wheel.at(81), "1");
  EXPECT_EQ(wheel.at(67), "0 1");
  EXPECT_EQ(wheel.at(40), "1");
}

/// The styles #80 of the solid #40 and #81, which overrides it where #63 places the wheel.
const std::string STYLE_BY_PLACE =
    "#80=STYLED_ITEM('',(#82),#40);\n#82=PRESENTATION_STYLE_ASSIGNMENT((#83));\n"
    "#83=COLOUR_RGB('',1.,0.,0.);\n"
    "#81=CONTEXT_DEPENDENT_OVER_RIDING_STYLED_ITEM('',(#84),#40,#80,(#63));\n"
    "#84=PRESENTATION_STYLE_ASSIGNMENT((#85));\n#85=COLOUR_RGB('',0.,0.,1.);\n";

TEST(Placement, AStyleThatNamesOneOfTwoPlacesStandsWithItsItemWithAWarning) {
  for (const AssemblyStyle style : {AssemblyStyle::nested, AssemblyStyle::lean}) {
    const Placed wheels(product_records(10, "car", "#3") + product_records(20, "wheel", "#3,#40") +
                            solid_records(40) + placed_usage_records(60, 10, 20) +
                            placed_usage_records(70, 10, 20) + STYLE_BY_PLACE,
                        style);
    EXPECT_EQ(wheels.at(81), "1");
    EXPECT_EQ(wheels.at(80), "1");
    EXPECT_EQ(wheels.at(40), "1");
    EXPECT_EQ(wheels.at(63), "0 1");
    EXPECT_EQ(wheels.at(15), "0 1s");
    ASSERT_EQ(wheels.placement.warnings.size(), 1u);
    EXPECT_EQ(wheels.placement.warnings[0].kind, PlacementWarning::Kind::occurrence_style);
    EXPECT_EQ(wheels.placement.warnings[0].record, wheels.file.at(81));
  }
}

TEST(Placement, AStyleOfAllOfOneOccurrenceThatNamesItsPlaceStandsWithTheAssembly) {
  const Placed wheels(product_records(10, "car", "#3") + product_records(20, "wheel", "#3,#40") +
                      solid_records(40) + placed_usage_records(60, 10, 20) +
                      placed_usage_records(70, 10, 20) +
                      "#80=STYLED_ITEM('',(),#40);\n"
                      "#81=CONTEXT_DEPENDENT_OVER_RIDING_STYLED_ITEM('',(),#25,#80,(#63));\n");
  EXPECT_EQ(wheels.at(81), "0");
  EXPECT_EQ(wheels.at(25), "0s 1");
  EXPECT_EQ(wheels.at(41), "1");
}

TEST(Placement, AStyleThatNamesTheOnlyPlaceStandsWithThePart) {
  const Placed wheel(product_records(10, "car", "#3") + product_records(20, "wheel", "#3,#40") +
                     solid_records(40) + placed_usage_records(60, 10, 20) + STYLE_BY_PLACE);
  EXPECT_EQ(wheel.at(81), "1");
  EXPECT_EQ(wheel.at(80), "1");
  EXPECT_EQ(wheel.at(40), "1");
  EXPECT_EQ(wheel.at(63), "0 1");
  EXPECT_EQ(wheel.at(15), "0 1s");
  EXPECT_THAT(wheel.placement.warnings, IsEmpty());
}

TEST(Placement, AStyleOfAFaceOfOneOccurrenceIsWarnedOf) {
  std::string text = COLOURED_WHEELS;
  const std::string item = "(#84),#40,#80";
  text.replace(text.find(item), item.size(), "(#84),#41,#80");
  const Placed wheels(text);
  EXPECT_EQ(wheels.at(81), "0");
  EXPECT_EQ(wheels.at(41), "0s 1");
  ASSERT_EQ(wheels.placement.warnings.size(), 1u);
  EXPECT_EQ(wheels.placement.warnings[0].kind, PlacementWarning::Kind::occurrence_style);
}

TEST(Placement, AStyleOfASubAssemblyStandsWithItsAssembly) {
  for (const AssemblyStyle style : {AssemblyStyle::nested, AssemblyStyle::lean}) {
    const Placed car(CAR +
                         "#66=SHAPE_DEFINITION_REPRESENTATION(#61,#67);\n"
                         "#67=SHAPE_REPRESENTATION('',(#3),#2);\n#81=STYLED_ITEM('',(#84),#50);\n"
                         "#84=PRESENTATION_STYLE_BY_CONTEXT((#85),#67);\n"
                         "#85=COLOUR_RGB('',0.,0.,1.);\n",
                     style);
    const bool is_nested = style == AssemblyStyle::nested;
    EXPECT_EQ(car.at(81), "0");
    EXPECT_EQ(car.at(50), is_nested ? "0s 2" : "0s 1");
  }
}

TEST(Placement, UsagesOfHigherLevelsStandWithTheirAssemblyAndBringTheirStyles) {
  const Placed higher(
      CAR +
      "#80=SPECIFIED_HIGHER_USAGE_OCCURRENCE('','','',#10,#30,$,#60,#70);\n"
      "#81=PRODUCT_DEFINITION_SHAPE('','',#80);\n#82=SHAPE_DEFINITION_REPRESENTATION(#81,#83);\n"
      "#83=SHAPE_REPRESENTATION('',(#3),#2);\n#84=STYLED_ITEM('',(#85),#50);\n"
      "#85=PRESENTATION_STYLE_BY_CONTEXT((#86),#83);\n#86=COLOUR_RGB('',0.,0.,1.);\n"
      "#87=PROMISSORY_USAGE_OCCURRENCE('','','',#20,#30,$);\n");
  EXPECT_EQ(higher.at(80), "0");
  EXPECT_EQ(higher.at(82), "0");
  EXPECT_EQ(higher.at(84), "0");
  EXPECT_EQ(higher.at(70), "0 1");
  EXPECT_EQ(higher.at(87), "1");
  EXPECT_EQ(higher.at(50), "0s 2");
  EXPECT_EQ(higher.at(10), "0");
  EXPECT_THAT(higher.placement.warnings, IsEmpty());
}

/// The solid #40 of a wheel at #20 in another colour where an assembly's representation is seen.
std::string style_in(int representation) {
  return "#84=STYLED_ITEM('',(#85),#40);\n#85=PRESENTATION_STYLE_BY_CONTEXT((#86),#" +
         std::to_string(representation) + ");\n#86=COLOUR_RGB('',0.,0.,1.);\n";
}

TEST(Placement, AStyleInTheContextOfAnAssemblyStandsWithItsItem) {
  const Placed car(CAR + style_in(15));
  EXPECT_EQ(car.at(84), "1");
  EXPECT_EQ(car.at(15), "0 1s");
  EXPECT_EQ(car.at(40), "1");
  EXPECT_THAT(car.placement.warnings, IsEmpty());
}

TEST(Placement, AStyleInTheContextOfOneOfTwoAssembliesIsWarnedOf) {
  const Placed car(CAR + product_records(90, "spare", "#3") + placed_usage_records(100, 90, 20) +
                   placed_usage_records(110, 10, 90) + style_in(95));
  EXPECT_EQ(car.at(84), "1");
  EXPECT_EQ(car.at(95), "0s 1s 3");
  EXPECT_EQ(car.at(40), "1");
  ASSERT_EQ(car.placement.warnings.size(), 1u);
  EXPECT_EQ(car.placement.warnings[0].kind, PlacementWarning::Kind::occurrence_style);
  EXPECT_EQ(car.placement.warnings[0].record, car.file.at(84));
  EXPECT_EQ(car.placement.warnings[0].file, 1u);
}

TEST(Placement, AStyleOfASubAssemblysShapeStandsWhereItsUsageDoes) {
  const Placed car(CAR +
                   "#66=SHAPE_DEFINITION_REPRESENTATION(#61,#67);\n"
                   "#67=SHAPE_REPRESENTATION('',(#3),#2);\n#81=STYLED_ITEM('',(#84),#25);\n"
                   "#84=PRESENTATION_STYLE_BY_CONTEXT((#85),#67);\n#85=COLOUR_RGB('',0.,0.,1.);\n");
  EXPECT_EQ(car.at(81), "0");
  EXPECT_EQ(car.at(25), "0s 1");
  EXPECT_THAT(car.placement.warnings, IsEmpty());
}

/// What is warned of, such as "#60 in 1".
std::vector<std::string> warned(const Placed& placed, PlacementWarning::Kind kind) {
  std::vector<std::string> all;
  for (const PlacementWarning& warning : placed.placement.warnings) {
    if (warning.kind != kind) continue;
    all.push_back("#" + std::to_string(placed.file.instances.number(warning.record)) + " in " +
                  std::to_string(warning.file));
  }
  return all;
}

TEST(Placement, WhatShowsAComponentBesideItsUsagesIsWarnedOf) {
  const std::string wheels = product_records(10, "car", "#3,#60,#62") +
                             product_records(20, "wheel", "#3,#40") + solid_records(40) +
                             "#60=MAPPED_ITEM('',#61,#3);\n#61=REPRESENTATION_MAP(#3,#25);\n"
                             "#62=MAPPED_ITEM('',#61,#3);\n#63=STYLED_ITEM('',(),#60);\n"
                             "#64=SHAPE_REPRESENTATION_RELATIONSHIP('','',#15,#25);\n";
  const auto besides = [&](const std::string& usages) {
    return warned(Placed(wheels + usages), PlacementWarning::Kind::shown_besides);
  };
  EXPECT_EQ(besides(usage_record(70, 10, 20) + usage_record(71, 10, 20) + usage_record(72, 10, 20)),
            Names{});
  EXPECT_EQ(besides(usage_record(70, 10, 20) + usage_record(71, 10, 20)), Names{"#64 in 0"});
  EXPECT_EQ(besides(usage_record(70, 10, 20)), (Names{"#62 in 0", "#64 in 0"}));
  // One of the items says again where the usage is.
  EXPECT_EQ(besides(placed_usage_records(70, 10, 20)), (Names{"#62 in 0", "#64 in 0"}));
  EXPECT_EQ(
      warned(Placed(wheels + usage_record(70, 10, 20)), PlacementWarning::Kind::occurrence_style),
      Names{"#63 in 0"});
}

TEST(Placement, DefinitionsOfTypesThatFewReadersKnowAreWarnedOf) {
  std::string text = CAR;
  const std::string usual = "#20=PRODUCT_DEFINITION(";
  text.replace(text.find(usual), usual.size(), "#20=COMPOSITE_ASSEMBLY_DEFINITION(");
  const Placed car(text);
  EXPECT_EQ(warned(car, PlacementWarning::Kind::unusual_definition), Names{"#20 in 1"});
  EXPECT_EQ(car.placement.warnings.size(), 1u);
  // In lean no file is the sub-assembly's.
  EXPECT_THAT(Placed(text, AssemblyStyle::lean).placement.warnings, IsEmpty());
}

TEST(Placement, ItemsThatAnExtractionLeavesOutStandWithTheirCollectorOutside) {
  const LoadedText file(SHARED_RECORDS + CAR +
                        "#80=SHAPE_ASPECT('','',#33,.T.);\n#81=SHAPE_ASPECT('','',#23,.T.);\n"
                        "#82=RELATION(#80,#81);\n#83=SHAPE_ASPECT('','',#33,.T.);\n"
                        "#84=APPLIED_GROUP_ASSIGNMENT(#83,(#50,#82));\n");
  const Products products = find_products(file.instances);
  const Placement placement = place_records(file.instances, products, plan_extraction(products, 2));
  EXPECT_THAT(check_placement(file.instances, products, placement), IsEmpty());
  EXPECT_TRUE(placement.stands.has(file.at(84), 0));
  EXPECT_TRUE(placement.stands.has(file.at(82), 0));
  EXPECT_TRUE(placement.stands.has(file.at(84), 1));
  EXPECT_FALSE(placement.stands.has(file.at(82), 1));
}

TEST(Placement, WhatIsMappedFromAComponentIsNoBody) {
  const LoadedText file(SHARED_RECORDS + product_records(10, "car", "#3,#80,#82") +
                        product_records(20, "wheel", "#3,#40") + solid_records(40) +
                        usage_record(60, 10, 20) +
                        "#80=MAPPED_ITEM('',#81,#3);\n#81=REPRESENTATION_MAP(#3,#25);\n"
                        "#82=MAPPED_ITEM('',#83,#3);\n#83=REPRESENTATION_MAP(#3,#84);\n"
                        "#84=SHAPE_REPRESENTATION('',(#40,#3),#2);\n");
  const Products products = find_products(file.instances);
  EXPECT_EQ(bodies_of(file.instances, products, 0), std::vector<Index>{file.at(82)});
  EXPECT_EQ(bodies_of(file.instances, products, 1), std::vector<Index>{file.at(40)});
}

TEST(Placement, TheSameTwice) {
  const Placed once(CAR);
  const Placed again(CAR);
  for (Index record = 0; record < once.file.instances.size(); ++record) {
    const auto number = once.file.instances.number(record);
    EXPECT_EQ(once.at(number), again.at(number));
  }
}

}  // namespace
}  // namespace Kessel::test
