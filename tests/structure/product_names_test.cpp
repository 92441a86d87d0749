// Files called after products.
#include <gtest/gtest.h>

#include "kessel/encoding.h"
#include "reader/parse_file.h"
#include "structure/literal_file.h"
#include "structure/process_parts.h"
#include "support/split_run.h"

namespace Kessel::test {
namespace {

/// The names that `process_parts` gives the parts of `data`.
std::string named(const std::string& data, NameStyle names,
                  std::string (*decode)(std::string_view) = decode_step_to_utf8) {
  const ScratchFolder folder;
  Part::free_statics();
  const std::unique_ptr<Store> file =
      parse_file(folder.write("in.stp", "ISO-10303-21;\nHEADER;\nENDSEC;\nDATA;\n" + data +
                                            "ENDSEC;\nEND-ISO-10303-21;\n"),
                 {.names = names});
  printed_by([&] { process_parts(*file, decode); });
  return paths_of(*file);
}

/// A product with a formation and a definition, numbered `first` to `first` + 2.
std::string product(unsigned first, const std::string& strings) {
  const std::string number = std::to_string(first);
  const std::string formation = std::to_string(first + 1);
  return "#" + number + "=PRODUCT(" + strings + ",'',(#90));\n#" + formation +
         "=PRODUCT_DEFINITION_FORMATION('','',#" + number + ");\n#" + std::to_string(first + 2) +
         "=PRODUCT_DEFINITION('design','',#" + formation + ",$);\n";
}

/// #3 uses #6 and #9.
const std::string USAGES =
    "#21=NEXT_ASSEMBLY_USAGE_OCCURRENCE('1','','',#3,#6,$);\n"
    "#22=NEXT_ASSEMBLY_USAGE_OCCURRENCE('2','','',#3,#9,$);\n";

std::string assembly(const std::string& top, const std::string& first, const std::string& second) {
  return product(1, top) + product(4, first) + product(7, second) + USAGES;
}

TEST(ProductNames, FilesAreCalledAfterTheFirstStringOfTheProduct) {
  EXPECT_EQ(named(assembly("'box','x'", "'lid','x'", "$,'hinge'"), NameStyle::product),
            "#3=box.stp #6=lid.stp #9=hinge.stp ");
}

TEST(ProductNames, RecordNamesComeWithoutTheOption) {
  EXPECT_EQ(named(assembly("'box',''", "'lid',''", "'hinge',''"), NameStyle::record),
            "#3=#1_part.stp #6=#4_part.stp #9=#7_part.stp ");
}

TEST(ProductNames, NamesAreDecoded) {
  const std::string data =
      assembly("'O''Neil''s box',''", "'\\X2\\652F67B6\\X0\\',''", "'f\\X\\FCr',''");
  EXPECT_EQ(named(data, NameStyle::product), "#3=O_Neil_s box.stp #6=U652FU67B6.stp #9=fur.stp ");
  EXPECT_EQ(named(data, NameStyle::product_unicode), "#3=O_Neil_s box.stp #6=支架.stp #9=für.stp ");
}

TEST(ProductNames, HostsOwnDecoderIsUsed) {
  const auto shout = [](std::string_view text) { return std::string(text) + "!"; };
  EXPECT_EQ(named(assembly("'box',''", "'lid',''", "'hinge',''"), NameStyle::product, shout),
            "#3=box!.stp #6=lid!.stp #9=hinge!.stp ");
  EXPECT_EQ(named(assembly("'\\X2\\0041\\X0\\',''", "'lid',''", "'hinge',''"), NameStyle::product,
                  nullptr),
            "#3=A.stp #6=lid.stp #9=hinge.stp ");
}

TEST(ProductNames, EqualNamesAreNumberedInTheOrderOfTheList) {
  EXPECT_EQ(named(assembly("'bolt',''", "'Bolt',''", "'BOLT',''"), NameStyle::product),
            "#3=bolt.stp #6=Bolt (2).stp #9=BOLT (3).stp ");
}

TEST(ProductNames, PartWithoutUsableNameIsCalledAfterItsRecord) {
  EXPECT_EQ(named(assembly("'',''", "$,$", "'/*?','x'"), NameStyle::product),
            "#3=part 1.stp #6=part 4.stp #9=part 7.stp ");
}

TEST(ProductNames, PartsWithoutNamesStayApartFromProductsOfThatName) {
  EXPECT_EQ(named(assembly("'part 4',''", "'',''", "'lid',''"), NameStyle::product),
            "#3=part 4.stp #6=part 4 (2).stp #9=lid.stp ");
}

TEST(ProductNames, DefinitionsOfOneProductShareItsName) {
  EXPECT_EQ(named(product(1, "'box',''") + product(4, "'lid',''") +
                      "#9=PRODUCT_DEFINITION('other','',#5,$);\n" + USAGES,
                  NameStyle::product),
            "#3=box.stp #6=lid.stp #9=lid (2).stp ");
}

TEST(ProductNames, GeneratedRootStaysApartFromProductsOfItsName) {
  EXPECT_EQ(named(product(1, "'root',''") + product(4, "'lid',''"), NameStyle::product),
            "#3=root.stp #6=lid.stp root=Root (2).stp ");
}

TEST(ProductNames, MappedItemIsCalledAfterTheMappedRepresentation) {
  EXPECT_EQ(
      named(product(1, "'cart',''") + "#6=MAPPED_ITEM('item',#7,#9);\n"
                                      "#7=REPRESENTATION_MAP(#9,#8);\n"
                                      "#8=ADVANCED_BREP_SHAPE_REPRESENTATION('a wheel',(),#9);\n",
            NameStyle::product),
      "#3=cart.stp #6=a wheel.stp root=Root.stp ");
}

TEST(ProductNames, NumberThatIsUsedAgainHasItsLastName) {
  const std::string data = assembly("'box',''", "'lid',''", "'hinge',''");
  EXPECT_EQ(named(data + "#4=PRODUCT('cover','','',());\n", NameStyle::product),
            "#3=box.stp #6=cover.stp #9=hinge.stp ");
}

TEST(ProductNames, NameOfARecordThatWasReplacedIsForgotten) {
  EXPECT_EQ(named(product(1, "'cart',''") + "#6=PRODUCT_DEFINITION('d','',#5,$);\n"
                                            "#5=PRODUCT_DEFINITION_FORMATION('','',#8,#1);\n"
                                            "#8=SHAPE_REPRESENTATION('a wheel',());\n"
                                            "#8=ORGANIZATION('us','','');\n",
                  NameStyle::product),
            "#3=cart.stp #6=part 8.stp root=Root.stp ");
}

TEST(ProductNames, PartWhoseChainBreaksOffHasNoName) {
  EXPECT_EQ(named(product(1, "'box',''") + "#6=PRODUCT_DEFINITION('d','',#5,#1);\n"
                                           "#7=PRODUCT_DEFINITION('d','',#8,#1);\n"
                                           "#8=PRODUCT_DEFINITION_FORMATION('','');\n",
                  NameStyle::product),
            "#3=box.stp #6= #7= root=Root.stp ");
}

}  // namespace
}  // namespace Kessel::test
