// Names of output files.
#include <gtest/gtest.h>

#include "kessel/file.h"
#include "structure/literal_file.h"
#include "structure/part_names.h"
#include "structure/process_parts.h"
#include "support/split_run.h"

namespace Kessel::test {
namespace {

// Three definitions of the product #12, two of them of one formation.
const std::string THREE_OF_ONE_PRODUCT =
    "#12=PRODUCT('p','p','',());\n"
    "#13=PRODUCT_DEFINITION_FORMATION('','',#12);\n"
    "#14=PRODUCT_DEFINITION_FORMATION('','',#12);\n"
    "#30=PRODUCT_DEFINITION('','',#14,$);\n"
    "#20=PRODUCT_DEFINITION('','',#13,$);\n"
    "#40=PRODUCT_DEFINITION('','',#13,$);\n";

/// Names the parts of one more file without clearing what earlier files left.
std::unique_ptr<Store> name_another(const std::string& data) {
  std::unique_ptr<Store> file = read_records(data);
  const ScratchFolder folder;
  process_parts(*file, refuse_to_decode);
  return file;
}

/// The name of one part made of `data`'s record #3, which must print `messages`.
std::string path_of_3(const std::string& data, const std::string& messages = "") {
  Part::free_statics();
  const auto file = read_records(data);
  Part part(std::move(*file->at(3)));
  EXPECT_EQ(printed_by([&] { resolve_name(part, file->entities); }), messages);
  return part.path.string();
}

TEST(Naming, FileIsNamedAfterTheProductRecord) {
  EXPECT_EQ(path_of_3("#57=PRODUCT('it''s','a name','',());\n"
                      "#2=PRODUCT_DEFINITION_FORMATION('','',#57);\n"
                      "#3=PRODUCT_DEFINITION('design','',#2,$);\n"),
            "#57_part.stp");
}

TEST(Naming, MappedItemIsNamedAfterTheMappedRepresentation) {
  EXPECT_EQ(path_of_3("#3=MAPPED_ITEM('',#5,#6);\n"
                      "#5=REPRESENTATION_MAP(#8,#7);\n"
                      "#7=ADVANCED_BREP_SHAPE_REPRESENTATION('');\n"
                      "#8=AXIS2_PLACEMENT_3D('');\n"),
            "#8_part.stp");
}

TEST(Naming, FirstReferencesDecideWhateverTheyAre) {
  EXPECT_EQ(path_of_3("#3=PRODUCT_DEFINITION('',#1048575,#2);\n"
                      "#1048575=POINT(#4294960,#3);\n"
                      "#4294960=POINT();\n"),
            "#4294960_part.stp");
}

TEST(Naming, PartsOfOneProductAreCountedInTheOrderOfTheList) {
  const auto file = read_structure(THREE_OF_ONE_PRODUCT);
  EXPECT_EQ(paths_of(*file),
            "#20=#12_part.stp #30=#12_part_(2)_.stp #40=#12_part_(3)_.stp root=Root.stp ");
  EXPECT_EQ(Part::_filenames, (std::map<std::filesystem::path, std::uint32_t>{{"#12_part", 3}}));
}

TEST(Naming, PartsOfDifferentProductsAreCountedApart) {
  EXPECT_EQ(
      paths_of(*read_structure(THREE_OF_ONE_PRODUCT + "#2=PRODUCT('q','q','',());\n"
                                                      "#3=PRODUCT_DEFINITION_FORMATION('','',#2);\n"
                                                      "#25=PRODUCT_DEFINITION('','',#3,$);\n")),
      "#20=#12_part.stp #25=#2_part.stp #30=#12_part_(2)_.stp #40=#12_part_(3)_.stp "
      "root=Root.stp ");
}

TEST(Naming, CountsGoOnInTheNextFileUntilTheStaticsAreCleared) {
  Part::free_statics();
  name_another(THREE_OF_ONE_PRODUCT);
  EXPECT_EQ(paths_of(*name_another(THREE_OF_ONE_PRODUCT)),
            "#20=#12_part_(4)_.stp #30=#12_part_(5)_.stp #40=#12_part_(6)_.stp root=Root.stp ");
  Part::free_statics();
  EXPECT_TRUE(Part::_filenames.empty());
  EXPECT_EQ(paths_of(*name_another(THREE_OF_ONE_PRODUCT)),
            "#20=#12_part.stp #30=#12_part_(2)_.stp #40=#12_part_(3)_.stp root=Root.stp ");
}

TEST(Naming, BrokenChainsGiveNoNameAndNoCount) {
  // The first reference has no record; the second has none; the record in between is bare.
  EXPECT_EQ(path_of_3("#3=PRODUCT_DEFINITION('',#99,#1);\n#1=PRODUCT('p','p','',());\n"), "");
  EXPECT_EQ(path_of_3("#3=PRODUCT_DEFINITION('',#2);\n#2=FORMATION(#99);\n"), "");
  EXPECT_EQ(path_of_3("#3=PRODUCT_DEFINITION('',#2);\n#2=FORMATION();\n",
                      "Got an out of range in 'get_child' while fetching child nb 0\n"),
            "");
  EXPECT_EQ(path_of_3("#3=PRODUCT_DEFINITION('');\n",
                      "Got an out of range in 'get_child' while fetching child nb 0\n"),
            "");
  EXPECT_TRUE(Part::_filenames.empty());
}

TEST(Naming, PartWithABrokenChainAmongOthersKeepsAnEmptyPath) {
  EXPECT_EQ(
      paths_of(*read_structure(THREE_OF_ONE_PRODUCT + "#35=PRODUCT_DEFINITION('','',#99,#12);\n")),
      "#20=#12_part.stp #30=#12_part_(2)_.stp #35= #40=#12_part_(3)_.stp root=Root.stp ");
}

TEST(Naming, ReferencesBeyondTheStoreThrow) {
  for (const std::string data : {"#3=PRODUCT_DEFINITION('',#1048576);\n",
                                 "#3=PRODUCT_DEFINITION('',#2);\n#2=FORMATION(#1048576);\n"}) {
    SCOPED_TRACE(data);
    const auto file = read_records(data);
    Part part(std::move(*file->at(3)));
    EXPECT_EQ(out_of_range_text([&] { resolve_name(part, file->entities); }),
              "invalid vector subscript");
    EXPECT_EQ(part.path, "");
  }
}

TEST(Naming, DecoderOfAHostMayBeNull) {
  Part::free_statics();
  File file("");
  file.create_entity(1);
  file.create_entity(2)->add_reference(1);
  Part part("PRODUCT_DEFINITION");
  part.add_reference(2);
  part.resolve_name(&file, nullptr);
  EXPECT_EQ(part.path, "#1_part.stp");
  part.resolve_name(&file, refuse_to_decode);
  EXPECT_EQ(part.path, "#1_part_(2)_.stp");
}

TEST(Naming, BareNameIsBothFileNameAndPathUntilTheWriterPutsAFolderInFront) {
  const auto file = read_structure(THREE_OF_ONE_PRODUCT);
  Part& part = *file->parts.at(1);
  EXPECT_EQ(part.get_utf8_filename(), "#12_part_(2)_.stp");
  EXPECT_EQ(part.get_utf8_filepath(), "#12_part_(2)_.stp");
  EXPECT_EQ(part.get_encoded_filename(), "#12_part_(2)_.stp");
  EXPECT_EQ(part.get_encoded_filepath(), "#12_part_(2)_.stp");
  part.path = "out" / part.path;
  EXPECT_EQ(part.get_utf8_filename(), "#12_part_(2)_.stp");
  EXPECT_EQ(part.get_utf8_filepath(), "out/#12_part_(2)_.stp");
  EXPECT_EQ(part.get_encoded_filename(), "#12_part_(2)_.stp");
  EXPECT_EQ(part.get_encoded_filepath(), "out/#12_part_(2)_.stp");
}

TEST(Naming, FileNameIsTheLastComponentOfAPathWithAFolder) {
  Part part("PRODUCT_DEFINITION");
  part.path = std::filesystem::path(u8"o'ut/中é/#1_中.stp");
  EXPECT_EQ(part.get_utf8_filename(), "#1_\xE4\xB8\xAD.stp");
  EXPECT_EQ(part.get_utf8_filepath(), "o'ut/\xE4\xB8\xAD\xC3\xA9/#1_\xE4\xB8\xAD.stp");
  EXPECT_EQ(part.get_encoded_filename(), "#1_\\X2\\4E2D\\X0\\.stp");
  EXPECT_EQ(part.get_encoded_filepath(), "o''ut/\\X2\\4E2D\\X0\\\xE9/#1_\\X2\\4E2D\\X0\\.stp");
}

TEST(Naming, WithoutANameAllTextsAreEmpty) {
  const Part part("PRODUCT_DEFINITION");
  EXPECT_EQ(part.get_utf8_filename(), "");
  EXPECT_EQ(part.get_utf8_filepath(), "");
  EXPECT_EQ(part.get_encoded_filename(), "");
  EXPECT_EQ(part.get_encoded_filepath(), "");
}

}  // namespace
}  // namespace Kessel::test
