#include "products/products.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <utility>

#include "support/loaded_text.h"
#include "support/product_records.h"

namespace Kessel::test {
namespace {

const std::string COMMON =
    "#1=APPLICATION_CONTEXT('');\n#2=REPRESENTATION_CONTEXT('','');\n"
    "#3=AXIS2_PLACEMENT_3D('',$,$,$);\n#4=MANIFOLD_SOLID_BREP('',$);\n";

std::vector<std::string> names(const Products& all, const std::vector<ProductId>& ids) {
  std::vector<std::string> result;
  for (const ProductId id : ids) result.push_back(all.products[id].name);
  return result;
}

using Ends = std::vector<std::pair<Index, Index>>;

Ends ends_of(const std::vector<TiedShape>& shapes) {
  Ends ends;
  for (const TiedShape& shape : shapes) ends.emplace_back(shape.relationship, shape.representation);
  return ends;
}

using Names = std::vector<std::string>;

TEST(Products, DefinitionsWithShapesAndUsages) {
  const LoadedText file(COMMON + product_records(10, "whole", "#3") +
                        product_records(20, "bolt", "#3,#4") + usage_record(30, 10, 20) +
                        usage_record(31, 10, 20));
  const Products all = find_products(file.instances);
  ASSERT_EQ(all.products.size(), 2u);
  EXPECT_EQ(names(all, {0, 1}), (Names{"whole", "bolt"}));
  EXPECT_EQ(names(all, all.tops), (Names{"whole"}));
  const Product& bolt = all.products[1];
  EXPECT_EQ(bolt.definition, file.at(20));
  EXPECT_EQ(bolt.product, file.at(21));
  EXPECT_EQ(bolt.formation, file.at(22));
  EXPECT_EQ(bolt.id, "id bolt");
  EXPECT_EQ(bolt.description, "about it");
  EXPECT_EQ(bolt.version, "v1");
  EXPECT_EQ(bolt.shapes, std::vector<Index>{file.at(23)});
  EXPECT_EQ(bolt.representations, std::vector<Index>{file.at(25)});
  EXPECT_TRUE(bolt.has_bodies);
  EXPECT_FALSE(all.products[0].has_bodies);
  EXPECT_TRUE(all.is_assembly(0));
  EXPECT_FALSE(all.is_assembly(1));
  EXPECT_EQ(all.products[0].usages, (std::vector<std::uint32_t>{0, 1}));
  EXPECT_EQ(all.usages[0].id, "u30");
  EXPECT_EQ(all.usages[0].name, "left");
  EXPECT_EQ(all.usages[0].designator, "R1");
  EXPECT_EQ(all.usages[0].quantity, 1);
  EXPECT_EQ(all.find(file.at(20)), 1u);
  EXPECT_EQ(all.find(file.at(21)), NO_PRODUCT);
}

TEST(Products, NamesAreDecoded) {
  const LoadedText file(COMMON + product_records(10, "T\\X2\\00FC\\X0\\r; ''links''", "#4"));
  EXPECT_EQ(find_products(file.instances).products.at(0).name, "T\u00fcr; 'links'");
}

TEST(Products, WhatHasNeitherShapeNorPlaceIsNone) {
  const LoadedText file(
      COMMON + product_records(10, "bolt", "#4") +
      "#20=PRODUCT('m','Titanium','',(#1));\n#21=PRODUCT_DEFINITION_FORMATION('','',#20);\n"
      "#22=PRODUCT_DEFINITION('material','',#21,#1);\n"
      "#23=MAKE_FROM_USAGE_OPTION('','','',#10,#22,1,'',$);\n"
      "#24=PRODUCT_DEFINITION_SHAPE('','',#22);\n");
  const Products all = find_products(file.instances);
  EXPECT_EQ(all.products.size(), 1u);
  EXPECT_TRUE(all.usages.empty());
}

TEST(Products, ComponentsWithoutShapesAreProducts) {
  const LoadedText file(COMMON + product_records(10, "whole", "#3") +
                        "#20=PRODUCT('','glue','',(#1));\n"
                        "#21=PRODUCT_DEFINITION_FORMATION('','',#20);\n"
                        "#22=PRODUCT_DEFINITION_WITH_ASSOCIATED_DOCUMENTS('','',#21,#1,());\n" +
                        usage_record(30, 10, 22));
  const Products all = find_products(file.instances);
  ASSERT_EQ(all.products.size(), 2u);
  EXPECT_EQ(all.products[1].name, "glue");
  EXPECT_TRUE(all.products[1].shapes.empty());
}

TEST(Products, QuantitiesAndComplexUsages) {
  const LoadedText file(
      COMMON + product_records(10, "whole", "#3") + product_records(20, "bolt", "#4") +
      "#30=QUANTIFIED_ASSEMBLY_COMPONENT_USAGE('a','b','c',#10,#20,$,#31);\n"
      "#31=MEASURE_WITH_UNIT( COUNT_MEASURE( 4. ),#2);\n"
      "#32=(ASSEMBLY_COMPONENT_USAGE('R7')NEXT_ASSEMBLY_USAGE_OCCURRENCE()"
      "PRODUCT_DEFINITION_RELATIONSHIP('d','e','f',#10,#20)PRODUCT_DEFINITION_USAGE()"
      "QUANTIFIED_ASSEMBLY_COMPONENT_USAGE(#31));\n");
  const Products all = find_products(file.instances);
  ASSERT_EQ(all.usages.size(), 2u);
  EXPECT_EQ(all.usages[0].quantity, 4);
  EXPECT_EQ(all.usages[0].designator, "");
  EXPECT_EQ(all.usages[1].id, "d");
  EXPECT_EQ(all.usages[1].designator, "R7");
  EXPECT_EQ(all.usages[1].quantity, 4);
}

TEST(Products, QuantitiesThatSayNothingAreOne) {
  for (const char* value : {"COUNT_MEASURE(0.)", "COUNT_MEASURE(-2.)", "COUNT_MEASURE()", "$"}) {
    const LoadedText file(COMMON + product_records(10, "whole", "#3") +
                          product_records(20, "bolt", "#4") +
                          "#30=QUANTIFIED_ASSEMBLY_COMPONENT_USAGE('','','',#10,#20,$,#31);\n"
                          "#31=MEASURE_WITH_UNIT(" +
                          value + ",#2);\n");
    EXPECT_EQ(find_products(file.instances).usages.at(0).quantity, 1) << value;
  }
}

TEST(Products, UsagesOfDeeperLevelsAndOfNothingAreNoUsages) {
  const LoadedText file(COMMON + product_records(10, "whole", "#3") +
                        product_records(20, "bolt", "#4") + usage_record(30, 10, 20) +
                        "#31=SPECIFIED_HIGHER_USAGE_OCCURRENCE('','','',#10,#20,$,#30,#30);\n" +
                        usage_record(32, 10, 99) + usage_record(33, 10, 4));
  const Products all = find_products(file.instances);
  EXPECT_EQ(all.usages.size(), 1u);
  ASSERT_EQ(all.deeper.size(), 1u);
  EXPECT_EQ(names(all, {all.deeper[0].assembly, all.deeper[0].component}),
            (Names{"whole", "bolt"}));
}

TEST(Products, UsagesOfOccurrencesAreThoseOfTheirDefinitions) {
  const LoadedText file(COMMON + product_records(10, "whole", "#3") +
                        product_records(20, "bolt", "#4") +
                        "#30=PRODUCT_DEFINITION_OCCURRENCE('left','',$,#31,$);\n"
                        "#31=PRODUCT_DEFINITION_OCCURRENCE('any','',$,#20,$);\n"
                        "#32=PRODUCT_DEFINITION_OCCURRENCE('circle','',$,#32,$);\n" +
                        usage_record(60, 10, 30) + usage_record(61, 10, 32));
  const Products all = find_products(file.instances);
  ASSERT_EQ(all.usages.size(), 1u);
  EXPECT_EQ(names(all, {all.usages[0].component}), Names{"bolt"});
  EXPECT_EQ(names(all, all.tops), Names{"whole"});
}

TEST(Products, PlacementsOfUsages) {
  const LoadedText file(COMMON + product_records(10, "whole", "#3") +
                        product_records(20, "bolt", "#4") + usage_record(30, 10, 20) +
                        "#31=PRODUCT_DEFINITION_SHAPE('','',#30);\n"
                        "#32=CONTEXT_DEPENDENT_SHAPE_REPRESENTATION(#33,#31);\n"
                        "#33=(REPRESENTATION_RELATIONSHIP('','',#25,#15)"
                        "REPRESENTATION_RELATIONSHIP_WITH_TRANSFORMATION(#34)"
                        "SHAPE_REPRESENTATION_RELATIONSHIP());\n"
                        "#34=ITEM_DEFINED_TRANSFORMATION('','',#3,#3);\n"
                        "#35=SHAPE_DEFINITION_REPRESENTATION(#31,#36);\n"
                        "#36=SHAPE_REPRESENTATION('',(#3),#2);\n");
  const Products all = find_products(file.instances);
  const Usage& usage = all.usages.at(0);
  EXPECT_EQ(usage.shapes, std::vector<Index>{file.at(31)});
  EXPECT_EQ(usage.placements, std::vector<Index>{file.at(32)});
  EXPECT_EQ(usage.relationships, std::vector<Index>{file.at(33)});
  ASSERT_EQ(usage.links.size(), 1u);
  EXPECT_EQ(usage.links[0].representation, file.at(36));
}

TEST(Products, TiedRepresentationsBelongToTheProductUnlessAnotherHasThem) {
  const LoadedText file(COMMON + product_records(10, "whole", "#3") +
                        product_records(20, "bolt", "#3") + usage_record(30, 10, 20) +
                        "#40=ADVANCED_BREP_SHAPE_REPRESENTATION('',(#4),#2);\n"
                        "#41=SHAPE_REPRESENTATION_RELATIONSHIP('','',#25,#40);\n"
                        "#42=SHAPE_REPRESENTATION_RELATIONSHIP('','',#15,#25);\n");
  const Products all = find_products(file.instances);
  EXPECT_EQ(all.products[1].tied, std::vector<Index>{file.at(40)});
  EXPECT_EQ(all.products[1].ties, std::vector<Index>{file.at(41)});
  EXPECT_TRUE(all.products[1].has_bodies);
  EXPECT_TRUE(all.products[0].tied.empty());
  EXPECT_TRUE(all.products[0].ties.empty());
  EXPECT_EQ(ends_of(all.products[0].tied_to_others), Ends({{file.at(42), file.at(25)}}));
  EXPECT_EQ(ends_of(all.products[1].tied_to_others), Ends({{file.at(42), file.at(15)}}));
}

TEST(Products, RepresentationsMayBeTiedOneToTheOtherAndInCircles) {
  const LoadedText file(COMMON + product_records(10, "bolt", "#3") +
                        "#40=SHAPE_REPRESENTATION('',(#4),#2);\n"
                        "#41=SHAPE_REPRESENTATION('',(#4),#2);\n"
                        "#42=SHAPE_REPRESENTATION('',(#4),#2);\n"
                        "#43=SHAPE_REPRESENTATION_RELATIONSHIP('','',#15,#40);\n"
                        "#44=SHAPE_REPRESENTATION_RELATIONSHIP('','',#41,#40);\n"
                        "#45=SHAPE_REPRESENTATION_RELATIONSHIP('','',#41,#42);\n"
                        "#46=SHAPE_REPRESENTATION_RELATIONSHIP('','',#42,#40);\n");
  const Products all = find_products(file.instances);
  using testing::UnorderedElementsAre;
  EXPECT_THAT(all.products.at(0).tied, UnorderedElementsAre(file.at(40), file.at(41), file.at(42)));
  EXPECT_THAT(all.products.at(0).ties,
              UnorderedElementsAre(file.at(43), file.at(44), file.at(45), file.at(46)));
}

TEST(Products, WhatAnAssemblyAndAComponentAreTiedToIsTheComponents) {
  const LoadedText file(COMMON + product_records(10, "whole", "#3") +
                        product_records(20, "bolt", "#3") + usage_record(30, 10, 20) +
                        "#40=SHAPE_REPRESENTATION('',(#4),#2);\n"
                        "#41=SHAPE_REPRESENTATION_RELATIONSHIP('','',#25,#40);\n"
                        "#42=SHAPE_REPRESENTATION_RELATIONSHIP('','',#15,#40);\n");
  const Products all = find_products(file.instances);
  EXPECT_EQ(all.products.at(0).tied, std::vector<Index>{});
  EXPECT_EQ(all.products.at(0).ties, std::vector<Index>{});
  EXPECT_EQ(ends_of(all.products.at(0).tied_to_others), Ends({{file.at(42), file.at(40)}}));
  EXPECT_FALSE(all.products.at(0).has_bodies);
  EXPECT_EQ(all.products.at(1).tied, std::vector<Index>{file.at(40)});
  EXPECT_EQ(all.products.at(1).ties, std::vector<Index>{file.at(41)});
}

TEST(Products, ThePropertyFormOfALink) {
  std::string text = COMMON + product_records(10, "bolt", "#4");
  text.replace(text.find("SHAPE_DEFINITION_REPRESENTATION"),
               std::string("SHAPE_DEFINITION_REPRESENTATION").size(),
               "PROPERTY_DEFINITION_REPRESENTATION");
  const LoadedText file(text);
  EXPECT_EQ(find_products(file.instances).products.at(0).representations,
            std::vector<Index>{file.at(15)});
}

TEST(Products, WhatIsMappedFromAComponentIsNoBodyOfTheAssembly) {
  const LoadedText file(COMMON + product_records(10, "whole", "#40") +
                        product_records(20, "bolt", "#4") + usage_record(30, 10, 20) +
                        "#40=MAPPED_ITEM('',#41,#3);\n#41=REPRESENTATION_MAP(#3,#25);\n");
  EXPECT_FALSE(find_products(file.instances).products[0].has_bodies);
}

TEST(Products, WhatIsMappedWithoutAUsageHasAPlaceInTheStructure) {
  const LoadedText file(COMMON + product_records(10, "bolt", "#4") +
                        product_records(20, "whole", "#40,#42") +
                        "#40=MAPPED_ITEM('',#41,#3);\n#41=REPRESENTATION_MAP(#3,#15);\n"
                        "#42=MAPPED_ITEM('',#41,#3);\n");
  const Products all = find_products(file.instances);
  EXPECT_EQ(names(all, all.tops), (Names{"whole"}));
  ASSERT_EQ(all.products[1].mapped.size(), 2u);
  EXPECT_EQ(all.products[1].mapped[0].item, file.at(40));
  EXPECT_EQ(all.products[1].mapped[0].product, 0u);
}

TEST(Products, SeveralTops) {
  const LoadedText file(COMMON + product_records(10, "a", "#3") + product_records(20, "b", "#4") +
                        product_records(30, "c", "#4") + usage_record(40, 30, 20));
  const Products all = find_products(file.instances);
  EXPECT_EQ(names(all, all.tops), (Names{"a", "c"}));
}

/// A second definition #n of the version #version, which shows `representation`.
std::string view_records(int n, int version, int representation) {
  const auto at = [](int number) { return "#" + std::to_string(number); };
  return at(n) + "=PRODUCT_DEFINITION('view',''," + at(version) + ",#1);\n" + at(n + 1) +
         "=PRODUCT_DEFINITION_SHAPE('',''," + at(n) + ");\n" + at(n + 2) +
         "=SHAPE_DEFINITION_REPRESENTATION(" + at(n + 1) + "," + at(representation) + ");\n";
}

TEST(Products, AnotherViewStandsWithTheDefinitionThatTheStructureNames) {
  const LoadedText file(COMMON + view_records(10, 32, 35) + product_records(20, "whole", "#3") +
                        product_records(30, "bolt", "#4") + usage_record(40, 20, 30) +
                        view_records(50, 22, 25) + view_records(60, 32, 35));
  const Products all = find_products(file.instances);
  EXPECT_EQ(all.tops, std::vector<ProductId>{1});
  std::vector<ProductId> stands_with;
  for (const Product& product : all.products) stands_with.push_back(product.stands_with);
  EXPECT_EQ(stands_with, (std::vector<ProductId>{2, NO_PRODUCT, NO_PRODUCT, 1, 2}));
}

TEST(Products, AViewMayShowWhatIsTied) {
  const LoadedText file(COMMON + product_records(10, "whole", "#3") +
                        product_records(20, "bolt", "#3") + usage_record(30, 10, 20) +
                        "#40=SHAPE_REPRESENTATION('',(#4),#2);\n"
                        "#41=SHAPE_REPRESENTATION_RELATIONSHIP('','',#25,#40);\n" +
                        view_records(50, 22, 40));
  const Products all = find_products(file.instances);
  EXPECT_EQ(all.tops, std::vector<ProductId>{0});
  EXPECT_EQ(all.products.at(1).tied, std::vector<Index>{file.at(40)});
  EXPECT_EQ(all.products.at(2).stands_with, 1u);
}

TEST(Products, OfViewsThatNobodyUsesTheFirstCounts) {
  const LoadedText file(COMMON + product_records(10, "bolt", "#4") + view_records(20, 12, 15));
  const Products all = find_products(file.instances);
  EXPECT_EQ(all.tops, std::vector<ProductId>{0});
  EXPECT_EQ(all.products.at(1).stands_with, 0u);
}

TEST(Products, OfViewsThatNobodyUsesThatCountsWhichShowsTheMost) {
  const LoadedText file(COMMON + view_records(10, 22, 25) + product_records(20, "bolt", "#4") +
                        "#30=SHAPE_DEFINITION_REPRESENTATION(#23,#31);\n"
                        "#31=SHAPE_REPRESENTATION('',(#3),#2);\n");
  const Products all = find_products(file.instances);
  EXPECT_EQ(all.tops, std::vector<ProductId>{1});
  EXPECT_EQ(all.products.at(0).stands_with, 1u);
}

TEST(Products, WhatShowsSomethingElseOrIsUsedOrIsOfAnotherProductIsNoView) {
  const std::string whole = COMMON + product_records(10, "whole", "#3") +
                            product_records(20, "bolt", "#4") + usage_record(30, 10, 20);
  const auto tops = [&](const std::string& more) {
    const LoadedText file(whole + more);
    return find_products(file.instances).tops.size();
  };
  EXPECT_EQ(tops(view_records(40, 22, 50) + "#50=SHAPE_REPRESENTATION('',(#4),#2);\n"), 2u);
  EXPECT_EQ(tops(view_records(40, 51, 25) + "#51=PRODUCT_DEFINITION_FORMATION('','',#52);\n"
                                            "#52=PRODUCT('','nut','',(#1));\n"),
            2u);
  EXPECT_EQ(tops(view_records(40, 51, 25) + "#51=PRODUCT_DEFINITION_FORMATION('','',#21);\n"), 1u);
  const LoadedText used(whole + view_records(40, 22, 25) + usage_record(50, 10, 40));
  EXPECT_EQ(find_products(used.instances).products.at(2).stands_with, NO_PRODUCT);
}

TEST(Products, ACircleIsEnteredAtItsFirstProductAndClosedOnce) {
  const LoadedText file(COMMON + product_records(10, "tail", "#4") +
                        product_records(20, "a", "#3") + product_records(30, "b", "#4") +
                        usage_record(40, 20, 30) + usage_record(41, 30, 20) +
                        usage_record(42, 30, 10) + usage_record(43, 20, 20));
  const Products all = find_products(file.instances);
  EXPECT_EQ(names(all, all.tops), (Names{"a"}));
  EXPECT_FALSE(all.usages[0].closes_circle);
  EXPECT_TRUE(all.usages[1].closes_circle);
  EXPECT_FALSE(all.usages[2].closes_circle);
  EXPECT_TRUE(all.usages[3].closes_circle);
}

}  // namespace
}  // namespace Kessel::test
