// The second reading of the input, in which every part's file is written.
#include <gtest/gtest.h>

#include <filesystem>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

#include "association/associate.h"
#include "kessel/encoding.h"
#include "reader/parse_file.h"
#include "splitter/small_inputs.h"
#include "structure/process_parts.h"
#include "support/scratch_folder.h"
#include "support/split_run.h"
#include "writer/write_parts.h"

namespace Kessel::test {
namespace {

namespace fs = std::filesystem;

class WriteParts : public testing::Test {
 protected:
  ~WriteParts() override { Part::free_statics(); }

  /// Reads `input` and finds its parts.
  void read(std::string_view input) {
    folder_.write("in.stp", input);
    file_ = parse_file("in.stp");
    process_parts(*file_, decode_step_to_utf8);
  }

  /// Makes the part at `position` of the list hold record `id` as `number`.
  void hold(unsigned id, std::size_t position, std::uint32_t number) {
    Part* part = file_->parts.at(position);
    file_->at(id)->part_numbers.emplace(part, number);
    if (part->last_instance_number < number) part->last_instance_number = number;
  }

  void associate_and_write(const fs::path& outdir) {
    associate_entities(*file_);
    write(outdir);
    Part::free_statics();
  }

  void write(const fs::path& outdir) { write_parts(*file_, outdir); }

  std::vector<fs::path> paths() const {
    std::vector<fs::path> all;
    for (const Part* part : file_->parts) all.push_back(part->path);
    return all;
  }

  /// The file's text, time stamp replaced. Closes all files.
  static std::string text_of(const fs::path& path) {
    Part::free_statics();
    return without_time_stamps(read_file(path));
  }

  ScratchFolder folder_;
  std::unique_ptr<Store> file_;
};

TEST_F(WriteParts, EveryPartsFileIsWrittenWhole) {
  read(exchange_file(BOX_WITH_LID));
  associate_and_write("out");
  EXPECT_EQ(text_of("out/#1_part.stp"), output_file("out/#1_part.stp", BOX_RECORDS));
  EXPECT_EQ(text_of("out/#4_part.stp"), output_file("out/#4_part.stp", LID_RECORDS));
}

TEST_F(WriteParts, FrameIsTheInputsOwn) {
  read(
      "ISO-10303-21; \t\r\n"
      "  HEADER;\r\n"
      "FILE_DESCRIPTION((''),'2;1');  \r\n"
      "\r\n"
      "FILE_NAME('in.stp',\r\n"
      "   'then',(''),(''),'','','');\r\n"
      "FILE_SCHEMA(('X'));ENDSEC;\r\n"
      "DATA;\r\n"
      "#1 = PRODUCT('box' , 'box','',()) ;\r\n"
      "#2=PRODUCT_DEFINITION_FORMATION('',\r\n  '',#1);\r\n"
      "#3=PRODUCT_DEFINITION('d','',#2,$);#4=PRODUCT_DEFINITION('e','',#2,$);\r\n"
      "ENDSEC;\r\n"
      "END-ISO-10303-21;\r\n");
  associate_and_write("out");
  // Two products definitions of one product; nothing links them, so there is a root above.
  EXPECT_EQ(text_of("out/#1_part.stp"),
            "ISO-10303-21;\n"
            "HEADER;\n"
            "FILE_DESCRIPTION((''),'2;1');\n"
            "\n"
            "FILE_NAME('out/#1_part.stp',\n"
            "'<time>',(''),(''),'','','');\n"
            "FILE_SCHEMA(('X'));ENDSEC;\n"
            "\n"
            "DATA;\n"
            "#3 = PRODUCT('box' , 'box','',());\n"
            "#2=PRODUCT_DEFINITION_FORMATION('',\r\n  '',#3);\n"
            "#1=PRODUCT_DEFINITION('d','',#2,$);\n"
            "ENDSEC;\n"
            "END-ISO-10303-21;\n");
}

TEST_F(WriteParts, EndLineIsMadeOfWhateverTheFirstLineIs) {
  std::string input = exchange_file(BOX_WITH_LID);
  input.replace(0, input.find('\n'), "  STEP? ");
  read(input);
  associate_and_write("out");
  std::string expected = output_file("out/#4_part.stp", LID_RECORDS);
  expected.replace(0, expected.find('\n'), "STEP?");
  expected.replace(expected.find("END-ISO"), std::string::npos, "END-STEP?\n");
  EXPECT_EQ(text_of("out/#4_part.stp"), expected);
}

TEST_F(WriteParts, HeaderHoldsTheWholePathInTheExchangeEncoding) {
  read(exchange_file(BOX_WITH_LID));
  associate_and_write("it's/\u00e9\u4e2d");
  EXPECT_EQ(text_of("it's/\u00e9\u4e2d/#4_part.stp"),
            output_file("it''s/\xe9\\X2\\4E2D\\X0\\/#4_part.stp", LID_RECORDS));
}

TEST_F(WriteParts, OutputFolderIsMadeWithItsParents) {
  read(exchange_file(BOX_WITH_LID));
  associate_and_write("a/b/c");
  EXPECT_EQ(text_of("a/b/c/#4_part.stp"), output_file("a/b/c/#4_part.stp", LID_RECORDS));
}

TEST_F(WriteParts, PathsAreBareNamesAgainAfterwards) {
  read(exchange_file(BOX_WITH_LID));
  EXPECT_EQ(paths(), (std::vector<fs::path>{"#1_part.stp", "#4_part.stp"}));
  associate_and_write("a/b");
  EXPECT_EQ(paths(), (std::vector<fs::path>{"#1_part.stp", "#4_part.stp"}));
}

TEST_F(WriteParts, FilesThatExistAreAppendedTo) {
  fs::create_directory("out");
  folder_.write("out/#4_part.stp", "of an earlier run\n");
  read(exchange_file(BOX_WITH_LID));
  associate_and_write("out");
  EXPECT_EQ(text_of("out/#4_part.stp"),
            "of an earlier run\n" + output_file("out/#4_part.stp", LID_RECORDS));
}

TEST_F(WriteParts, StreamsStayOpenUntilTheRunIsEnded) {
  read(exchange_file(BOX_WITH_LID));
  associate_entities(*file_);
  write("out");
  EXPECT_EQ(Part::_opened_files.size(), 2u);
  Part::free_statics();
  EXPECT_FALSE(file_->parts.front()->stream.is_open());
}

TEST_F(WriteParts, OnlyPartThatWasGivenANameGetsItsWholeFile) {
  EXPECT_EQ(printed_by([&] { read(exchange_file(LID_ALONE)); }), ONLY_ONE_PART);
  file_->parts.front()->path = "lid.stp";
  file_->parts.front()->part_kind = LEAF_PART;
  associate_and_write("out");
  EXPECT_EQ(text_of("out/lid.stp"), output_file("out/lid.stp",
                                                "#3=PRODUCT('lid','lid','',());\n"
                                                "#2=PRODUCT_DEFINITION_FORMATION('','',#3);\n"
                                                "#1=PRODUCT_DEFINITION('d','',#2,$);\n"));
}

TEST_F(WriteParts, OnlyPartWithoutANameHasNoFile) {
  EXPECT_EQ(printed_by([&] { read(exchange_file(LID_ALONE)); }), ONLY_ONE_PART);
  EXPECT_EQ(printed_by([&] { associate_and_write("out"); }), "");
  EXPECT_TRUE(fs::is_empty("out"));
  EXPECT_EQ(paths(), std::vector<fs::path>{""});
}

TEST_F(WriteParts, PartWithoutANameAmongOthersIsReportedPerPiece) {
  // The lid's definition is made of a formation that does not exist: no name, and "out/" is no
  // file.
  read(
      exchange_file("#1=PRODUCT('box','box','',());\n"
                    "#2=PRODUCT_DEFINITION_FORMATION('','',#1);\n"
                    "#3=PRODUCT_DEFINITION('d','',#2,$);\n"
                    "#6=PRODUCT_DEFINITION('d','',#5,#1);\n"
                    "#7=NEXT_ASSEMBLY_USAGE_OCCURRENCE('1','','',#3,#6,$);\n"));
  // Its frame, its own record, the shared product, and the closing lines.
  EXPECT_EQ(printed_by([&] { associate_and_write("out"); }),
            "Could not open out/\n"
            "Could not open out/\n"
            "Could not open out/\n"
            "Could not open out/\n");
  EXPECT_EQ(text_of("out/#1_part.stp"),
            output_file("out/#1_part.stp",
                        "#4=PRODUCT('box','box','',());\n"
                        "#3=PRODUCT_DEFINITION_FORMATION('','',#4);\n"
                        "#1=PRODUCT_DEFINITION('d','',#3,$);\n"
                        "#2=PRODUCT_DEFINITION('d','',#4);\n"
                        "#5=NEXT_ASSEMBLY_USAGE_OCCURRENCE('1','','',#1,#2,$);\n"));
  EXPECT_EQ(paths(), (std::vector<fs::path>{"#1_part.stp", ""}));
}

TEST_F(WriteParts, WithoutPartsOnlyTheFolderIsMade) {
  EXPECT_EQ(printed_by([&] { read(exchange_file("#1=PRODUCT('box','box','',());\n")); }), NO_ROOT);
  EXPECT_EQ(printed_by([&] { associate_and_write("out"); }), "");
  EXPECT_TRUE(fs::is_empty("out"));
}

TEST_F(WriteParts, RecordsThatNoPartHoldsAreWrittenNowhere) {
  read(exchange_file(std::string(BOX_WITH_LID) +
                     "#13=ORPHAN();\n"               // nothing leads to a part
                     "#14=ORPHAN(#13);\n"            //
                     "#x=BAD(#6);\n"                 // no number
                     "#0=BAD(#6);\n"                 // no instance
                     "#15 BAD(#6);\n"                // no record: no "="
                     "#4294967296=BAD(#6);\n"        // too large a number
                     "/* note */ #16=BAD(#6);\n"));  // does not begin with "#"
  associate_and_write("out");
  EXPECT_EQ(text_of("out/#1_part.stp"), output_file("out/#1_part.stp", BOX_RECORDS));
  EXPECT_EQ(text_of("out/#4_part.stp"), output_file("out/#4_part.stp", LID_RECORDS));
}

TEST_F(WriteParts, RecordsOfARepeatedNumberAreAllWritten) {
  // One slot, two texts: both are the instance that the slot holds.
  read(exchange_file(std::string(BOX_WITH_LID) + "#11=MANIFOLD_SOLID_BREP('again',#12);\n"));
  associate_and_write("out");
  EXPECT_EQ(text_of("out/#4_part.stp"),
            output_file("out/#4_part.stp",
                        std::string(LID_RECORDS) + "#8=MANIFOLD_SOLID_BREP('again',#7);\n"));
}

TEST_F(WriteParts, InstancesOfTheAssemblyAloneAreOnlyRenumbered) {
  read(exchange_file(std::string(BOX_WITH_LID) +
                     "#13=PRODUCT_DEFINITION_SHAPE('','',#3);\n"
                     "#14=SHAPE_DEFINITION_REPRESENTATION(#13,#15);\n"
                     "#15=SHAPE_REPRESENTATION('box',(#16),#17);\n"
                     "#16=AXIS2_PLACEMENT_3D('',$,$,$);\n"
                     "#17=GEOMETRIC_REPRESENTATION_CONTEXT('own','3D',3);\n"));
  for (unsigned id = 1; id <= 17; ++id) hold(id, 0, id);
  for (unsigned id = 4; id <= 12; ++id) hold(id, 1, id);
  write("out");
  const std::string text = text_of("out/#1_part.stp");
  EXPECT_EQ(text.substr(text.find("#13=")),
            "#13=PRODUCT_DEFINITION_SHAPE('','',#3);\n"
            "#14=SHAPE_DEFINITION_REPRESENTATION(#13,#15);\n"
            "#15=SHAPE_REPRESENTATION('box',(#16),#17);\n"
            "#16=AXIS2_PLACEMENT_3D('',$,$,$);\n"
            "#17=GEOMETRIC_REPRESENTATION_CONTEXT('own','3D',3);\n"
            "ENDSEC;\n"
            "END-ISO-10303-21;\n");
}

TEST_F(WriteParts, LeafFilesGetNeitherBlocksNorExternalContexts) {
  read(exchange_file(BOX_WITH_LID));
  for (Part* part : file_->parts) part->part_kind = LEAF_PART;
  for (unsigned id = 1; id <= 12; ++id) {
    hold(id, 0, id);
    hold(id, 1, id);
  }
  write("out");
  for (const char* path : {"out/#1_part.stp", "out/#4_part.stp"}) {
    EXPECT_EQ(text_of(path), output_file(path, BOX_WITH_LID));
  }
}

TEST_F(WriteParts, LinkOfTwoAssembliesAndALeafGivesEachAssemblyABlockOfItsOwn) {
  // A shelf (#3) with a box (#23) with the lid: assemblies, and the leaf last in the list.
  read(
      exchange_file("#1=PRODUCT('shelf','shelf','',());\n"
                    "#2=PRODUCT_DEFINITION_FORMATION('','',#1);\n"
                    "#3=PRODUCT_DEFINITION('d','',#2,$);\n"
                    "#21=PRODUCT('box','box','',());\n"
                    "#22=PRODUCT_DEFINITION_FORMATION('','',#21);\n"
                    "#23=PRODUCT_DEFINITION('d','',#22,$);\n"
                    "#24=PRODUCT('lid','lid','',());\n"
                    "#25=PRODUCT_DEFINITION_FORMATION('','',#24);\n"
                    "#26=PRODUCT_DEFINITION('d','',#25,$);\n"
                    "#7=NEXT_ASSEMBLY_USAGE_OCCURRENCE('1','','',#3,#23,$);\n"
                    "#8=NEXT_ASSEMBLY_USAGE_OCCURRENCE('2','','',#23,#26,$);\n"
                    "#9=SHAPE_DEFINITION_REPRESENTATION(#26,#10);\n"
                    "#10=SHAPE_REPRESENTATION('lid',(),$);\n"));
  for (const unsigned id : {26U, 9U, 10U}) {
    hold(id, 0, id);
    hold(id, 1, id + 100);
    hold(id, 2, id + 200);
  }
  write("out");
  EXPECT_EQ(text_of("out/#1_part.stp"),
            output_file("out/#1_part.stp",
                        "#26=PRODUCT_DEFINITION('d','',$);\n"
                        "#27=DOCUMENT_TYPE('geometry');\n"
                        "#28=DOCUMENT_FILE('#24_part.stp','','',#27,'',$);\n"
                        "#29=DOCUMENT_REPRESENTATION_TYPE('digital',#28);\n"
                        "#30=EXTERNAL_SOURCE(IDENTIFIER(''));\n"
                        "#31=IDENTIFICATION_ROLE('external document id and location',$);\n"
                        "#32=APPLIED_EXTERNAL_IDENTIFICATION_ASSIGNMENT('#24_part.stp',#31,#30,"
                        "(#28));\n"
                        "#33=PROPERTY_DEFINITION('external definition','',#28);\n"
                        "#34=PROPERTY_DEFINITION_REPRESENTATION(#33,#10);\n"
                        "#35=APPLIED_DOCUMENT_REFERENCE(#28,'',(#26));\n"
                        "#36=OBJECT_ROLE('mandatory',$);\n"
                        "#37=ROLE_ASSOCIATION(#36,#35);\n"
                        "#9=SHAPE_DEFINITION_REPRESENTATION(#26,#10);\n"
                        "#10=SHAPE_REPRESENTATION('lid',(),$);\n"));
  EXPECT_EQ(text_of("out/#21_part.stp"),
            output_file("out/#21_part.stp",
                        "#126=PRODUCT_DEFINITION('d','',$);\n"
                        "#127=DOCUMENT_TYPE('geometry');\n"
                        "#128=DOCUMENT_FILE('#24_part.stp','','',#127,'',$);\n"
                        "#129=DOCUMENT_REPRESENTATION_TYPE('digital',#128);\n"
                        "#130=EXTERNAL_SOURCE(IDENTIFIER(''));\n"
                        "#131=IDENTIFICATION_ROLE('external document id and location',$);\n"
                        "#132=APPLIED_EXTERNAL_IDENTIFICATION_ASSIGNMENT('#24_part.stp',#131,#130,"
                        "(#128));\n"
                        "#133=PROPERTY_DEFINITION('external definition','',#128);\n"
                        "#134=PROPERTY_DEFINITION_REPRESENTATION(#133,#110);\n"
                        "#135=APPLIED_DOCUMENT_REFERENCE(#128,'',(#126));\n"
                        "#136=OBJECT_ROLE('mandatory',$);\n"
                        "#137=ROLE_ASSOCIATION(#136,#135);\n"
                        "#109=SHAPE_DEFINITION_REPRESENTATION(#126,#110);\n"
                        "#110=SHAPE_REPRESENTATION('lid',(),$);\n"));
  EXPECT_EQ(text_of("out/#24_part.stp"),
            output_file("out/#24_part.stp",
                        "#226=PRODUCT_DEFINITION('d','',$);\n"
                        "#209=SHAPE_DEFINITION_REPRESENTATION(#226,#210);\n"
                        "#210=SHAPE_REPRESENTATION('lid',(),$);\n"));
}

TEST_F(WriteParts, OnlyTheExactTypesAreTreatedAsSharedContextOrLink) {
  const std::string records =
      "#13=(GEOMETRIC_REPRESENTATION_CONTEXT(3)REPRESENTATION_CONTEXT('id','3D'));\n"
      "#14=MY_GEOMETRIC_REPRESENTATION_CONTEXT('id','3D',3);\n"
      "#15=SHAPE_REPRESENTATION_SHAPE_DEFINITION_REPRESENTATION(#14,#13);\n";
  read(exchange_file(std::string(BOX_WITH_LID) + records));
  for (const unsigned id : {13U, 14U, 15U}) {
    hold(id, 0, id);
    hold(id, 1, id);
    ASSERT_NE(file_->at(id)->type(), "");
  }
  write("out");
  EXPECT_EQ(text_of("out/#1_part.stp"), output_file("out/#1_part.stp", records));
}

TEST_F(WriteParts, EveryTypeThatContainsThePresentationTypesNameHasItsItemListMadeAnew) {
  read(exchange_file(
      std::string(BOX_WITH_LID) +
      "#13=MECHANICAL_DESIGN_GEOMETRIC_PRESENTATION_REPRESENTATION('',(#11,#10),#12);\n"
      "#14=(MECHANICAL_DESIGN_GEOMETRIC_PRESENTATION_REPRESENTATION()SHAPE_REPRESENTATION()"
      "REPRESENTATION('',(#11),#12));\n"
      "#15=PRESENTATION_LAYER_ASSIGNMENT('',(#11,#10),#12);\n"));
  for (const unsigned id : {10U, 12U, 13U, 14U, 15U}) hold(id, 0, id);
  for (const unsigned id : {13U, 14U, 15U}) hold(id, 1, id);
  write("out");
  EXPECT_EQ(
      text_of("out/#1_part.stp"),
      output_file("out/#1_part.stp",
                  "#10=SHAPE_REPRESENTATION('lid',(),#12);\n"
                  "#12=GEOMETRIC_REPRESENTATION_CONTEXT('id','3D',3);\n"
                  "#13=MECHANICAL_DESIGN_GEOMETRIC_PRESENTATION_REPRESENTATION('',(#10,#12),#12);\n"
                  "#14=(MECHANICAL_DESIGN_GEOMETRIC_PRESENTATION_REPRESENTATION(#12)"
                  "SHAPE_REPRESENTATION()REPRESENTATION('',(#11),#12));\n"
                  "#15=PRESENTATION_LAYER_ASSIGNMENT('',(#10),#12);\n"));
}

TEST_F(WriteParts, MoreFilesThanMayBeOpenComeOutWhole) {
  constexpr unsigned LEAVES = 120;
  std::string records =
      "#1=PRODUCT('top','top','',());\n"
      "#2=PRODUCT_DEFINITION_FORMATION('','',#1);\n"
      "#3=PRODUCT_DEFINITION('d','',#2,$);\n";
  for (unsigned i = 1; i <= LEAVES; ++i) {
    const auto name = [i](unsigned k) { return "#" + std::to_string(10 * i + k); };
    records += name(0) + "=PRODUCT('leaf " + std::to_string(i) + "','','',());\n";
    records += name(1) + "=PRODUCT_DEFINITION_FORMATION('',''," + name(0) + ");\n";
    records += name(2) + "=PRODUCT_DEFINITION('d',''," + name(1) + ",$);\n";
    records += name(3) + "=NEXT_ASSEMBLY_USAGE_OCCURRENCE('1','','',#3," + name(2) + ",$);\n";
  }
  read(exchange_file(records));
  associate_and_write("out");
  for (unsigned i = 1; i <= LEAVES; ++i) {
    const std::string path = "out/#" + std::to_string(10 * i) + "_part.stp";
    EXPECT_EQ(text_of(path), output_file(path, "#3=PRODUCT('leaf " + std::to_string(i) +
                                                   "','','',());\n"
                                                   "#2=PRODUCT_DEFINITION_FORMATION('','',#3);\n"
                                                   "#1=PRODUCT_DEFINITION('d','',#2,$);\n"));
  }
}

TEST_F(WriteParts, FileThatCannotBeOpenedIsReportedPerPieceAndTheOthersAreWritten) {
  fs::create_directories("out/#1_part.stp");
  read(exchange_file(BOX_WITH_LID));
  // Frame, eleven records, one reference block, closing lines.
  std::string lines;
  for (int i = 0; i < 1 + 11 + 1 + 1; ++i) lines += "Could not open out/#1_part.stp\n";
  EXPECT_EQ(printed_by([&] { associate_and_write("out"); }), lines);
  EXPECT_EQ(text_of("out/#4_part.stp"), output_file("out/#4_part.stp", LID_RECORDS));
}

TEST_F(WriteParts, InputThatCannotBeRewoundEndsTheRunBeforeAnythingIsWritten) {
  read(exchange_file(BOX_WITH_LID));
  file_->input.close();
  try {
    write("out");
    ADD_FAILURE() << "no exception";
  } catch (const std::runtime_error& error) {
    EXPECT_STREQ(error.what(), "Unable to change pos indicator");
  }
  EXPECT_FALSE(fs::exists("out"));
  EXPECT_EQ(paths(), (std::vector<fs::path>{"#1_part.stp", "#4_part.stp"}));
}

TEST_F(WriteParts, FolderThatCannotBeMadeEndsTheRunBeforeAnythingIsWritten) {
  folder_.write("file", "text");
  read(exchange_file(BOX_WITH_LID));
  const struct {
    const char* outdir;
    std::errc error;
    const char* what;
  } CASES[] = {
      {"file", std::errc::not_a_directory,
       "filesystem error: create_directories: Not a directory [file]"},
      {"file/out", std::errc::not_a_directory,
       "filesystem error: create_directories: Not a directory [file/out]"},
  };
  for (const auto& row : CASES) {
    SCOPED_TRACE(row.outdir);
    try {
      write(row.outdir);
      ADD_FAILURE() << "no exception";
    } catch (const fs::filesystem_error& error) {
      EXPECT_EQ(error.code(), row.error);
      EXPECT_EQ(error.path1(), row.outdir);
      EXPECT_EQ(error.path2(), "");
      EXPECT_STREQ(error.what(), row.what);
    }
  }
  EXPECT_EQ(read_file("file"), "text");
  EXPECT_EQ(paths(), (std::vector<fs::path>{"#1_part.stp", "#4_part.stp"}));
}

TEST_F(WriteParts, ExceptionLeavesWhatWasWrittenInTheFilesAndThePathsLong) {
  read(exchange_file(BOX_WITH_LID));
  associate_entities(*file_);
  // The assembly's copy of the lid's representation is lost: the block cannot point at it.
  Entity& representation = *file_->at(10);
  representation.part_numbers = {};
  try {
    write("out");
    ADD_FAILURE() << "no exception";
  } catch (const std::out_of_range& error) {
    EXPECT_STREQ(error.what(), "invalid map<K, T> key");
  }
  EXPECT_EQ(paths(), (std::vector<fs::path>{"out/#1_part.stp", "out/#4_part.stp"}));
  EXPECT_EQ(text_of("out/#1_part.stp"),
            output_begin("out/#1_part.stp") +
                std::string(BOX_RECORDS.substr(0, BOX_RECORDS.find("#12=DOCUMENT_TYPE"))));
  EXPECT_EQ(text_of("out/#4_part.stp"),
            output_begin("out/#4_part.stp") +
                std::string(LID_RECORDS.substr(0, LID_RECORDS.find("#5=SHAPE_DEFINITION"))));
}

TEST_F(WriteParts, ReferenceBeyondTheStoreThatOnlyTheTextHoldsEndsTheRun) {
  // The slot holds the newer record of the number, the older text refers beyond the store.
  read(exchange_file("#1=PRODUCT('box','box','',(#2000000));\n" + std::string(BOX_WITH_LID)));
  associate_entities(*file_);
  try {
    write("out");
    ADD_FAILURE() << "no exception";
  } catch (const std::out_of_range& error) {
    EXPECT_STREQ(error.what(), "invalid vector subscript");
  }
  EXPECT_EQ(text_of("out/#1_part.stp"), output_begin("out/#1_part.stp"));
}

}  // namespace
}  // namespace Kessel::test
