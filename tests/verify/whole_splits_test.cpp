// Splits as they come out: nothing is found in them, whatever the assembly and the style.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <tuple>

#include "interop/assemblies.h"
#include "kessel/part.h"
#include "support/scratch_folder.h"
#include "verify/styles.h"
#include "verify/verified_split.h"

namespace Kessel::test {
namespace {

namespace fs = std::filesystem;
using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::StartsWith;

class WholeSplit : public testing::TestWithParam<AssemblySource> {};

TEST_P(WholeSplit, NothingIsFoundInAnyStyle) {
  for (const AssemblyStyle assemblies : ASSEMBLY_STYLES) {
    for (const NameStyle names : NAME_STYLES) {
      const ScratchFolder folder;
      const fs::path in = file_of(GetParam(), folder);
      if (in.empty()) GTEST_SKIP() << why_no_sample();
      const Options options = {.assemblies = assemblies, .names = names};
      const std::vector<WrittenFile> files = split(in, "out", options);
      fs::rename("roots.txt", "out/roots.txt");
      const Verification verification = verify(in, "out", options);
      for (const Finding& finding : verification.findings) {
        ADD_FAILURE() << finding.file << ": " << describe(finding);
      }
      std::uint64_t records = 0;
      for (const WrittenFile& file : files) records += file.records;
      EXPECT_EQ(verification.files, files.size());
      EXPECT_EQ(verification.records, records);
    }
  }
}

INSTANTIATE_TEST_SUITE_P(All, WholeSplit, testing::ValuesIn(all_assemblies()),
                         [](const auto& test) { return test_name(test.param); });

class SmallSplit : public VerifiedSplit {};

TEST_F(SmallSplit, AnotherStyleThanTheSplitsIsFound) {
  split_records(BOX_WITH_LID, {.assemblies = AssemblyStyle::nested, .names = NameStyle::product});
  EXPECT_THAT(found(), IsEmpty());
  options_.assemblies = AssemblyStyle::classic;
  EXPECT_FALSE(found().empty());
  options_ = {.assemblies = AssemblyStyle::nested, .names = NameStyle::record};
  EXPECT_FALSE(found().empty());
}

TEST_F(SmallSplit, NamesBeyondAscii) {
  split_records(
      "#1=PRODUCT('\\X2\\652F67B6\\X0\\ it''s','','',());\n"
      "#2=PRODUCT_DEFINITION_FORMATION('','',#1);\n"
      "#3=PRODUCT_DEFINITION('d','',#2,$);\n"
      "#4=PRODUCT('T\\X2\\00FC\\X0\\r \\X4\\0001F600\\X0\\','','',());\n"
      "#5=PRODUCT_DEFINITION_FORMATION('','',#4);\n"
      "#6=PRODUCT_DEFINITION('d','',#5,$);\n"
      "#7=NEXT_ASSEMBLY_USAGE_OCCURRENCE('1','','',#3,#6,$);\n"
      "#8=PRODUCT_DEFINITION_SHAPE('','',#6);\n"
      "#9=SHAPE_DEFINITION_REPRESENTATION(#8,#10);\n"
      "#10=SHAPE_REPRESENTATION('lid',(#11),$);\n"
      "#11=MANIFOLD_SOLID_BREP('',$);\n",
      {.names = NameStyle::product_unicode});
  EXPECT_TRUE(fs::exists("out/\u652F\u67B6 it_s.stp"));
  EXPECT_THAT(found(), IsEmpty());
}

TEST_F(SmallSplit, FolderWithAnApostropheAndLettersInTheHeaders) {
  folder_.write("in.stp", exchange_file(BOX_WITH_LID));
  for (const NameStyle names : NAME_STYLES) {
    const std::string outdir = "it's \u00E4,'";
    Kessel::split("in.stp", outdir, {.names = names});
    const Verification verification = verify("in.stp", outdir, {.names = names});
    ASSERT_EQ(verification.findings.size(), 1u);
    EXPECT_EQ(verification.findings[0].kind, FindingKind::missing_root_list);
    fs::remove_all(outdir);
  }
}

TEST_F(SmallSplit, SemicolonsInStringsAreLostAsEverywhere) {
  split_records(std::string(BOX_WITH_LID) + "#20=A('b ; c;d)',#11,'; ');\n");
  EXPECT_THAT(found(), IsEmpty());
}

TEST_F(SmallSplit, RecordsLongerThanWhatIsReadAtOnce) {
  std::string list;
  for (int i = 0; i < 50000; ++i) list += "#11,";
  split_records(std::string(BOX_WITH_LID) + "#20=A((" + list + "#11));\n#21=B(#20,#11);\n");
  EXPECT_THAT(found(), IsEmpty());
}

TEST_F(SmallSplit, RecordsFarApart) {
  std::string records;
  for (int i = 100; i < 3000; ++i) {
    records += "#" + std::to_string(i) + "=A('" + std::string(100, 'x') + "',#11);\n";
  }
  split_records("#99=B(#11);\n" + records + std::string(BOX_WITH_LID) + "#3001=C(#99);\n");
  EXPECT_THAT(found(), IsEmpty());
}

TEST_F(SmallSplit, LeadingZerosStay) {
  split_records(std::string(BOX_WITH_LID) + "#0020=A(#0011);\n");
  EXPECT_NE(read_file("out/#4_part.stp").find("#009=A(#008)"), std::string::npos);
  EXPECT_THAT(found(), IsEmpty());
}

TEST_F(SmallSplit, RecordThatIsNoneInTheInputEitherIsAWarning) {
  split_records(std::string(BOX_WITH_LID) + "#20=A(#11,,);\n");
  EXPECT_THAT(found(), ElementsAre(at("#4_part.stp", "#9=") +
                                   "warning malformed_record #9: #9 is not written as a record is, "
                                   "nor is the input's #20."));
}

TEST_F(SmallSplit, WhatARunSpoilsIsFound) {
  // An apostrophe in a comment keeps the writer from the references behind it.
  split_records(std::string(BOX_WITH_LID) + "#20=A(#11,/* it's */#12,'');\n");
  EXPECT_THAT(found(), Contains(StartsWith(at("#4_part.stp", "#9=") + "error ")));
}

TEST_F(SmallSplit, NumberThatTheInputGivesTwice) {
  split_records(std::string(BOX_WITH_LID) + "#11=MANIFOLD_SOLID_BREP('',$);\n");
  const std::string text = read_file("out/#4_part.stp");
  EXPECT_THAT(found(), ElementsAre("#4_part.stp:17@" + std::to_string(text.rfind("#8=")) +
                                   " error repeated_record #8: #8 is there once more."));
}

TEST_F(SmallSplit, WithoutARootThereIsNoRootList) {
  split_records(CYCLE);
  EXPECT_THAT(found(), IsEmpty());
  write("roots.txt", "#1_part.stp\n");
  EXPECT_THAT(found(),
              ElementsAre("roots.txt:error wrong_root_list: There is no root whose file it "
                          "could name."));
}

// Inputs of which there is no split

TEST_F(SmallSplit, OnlyPart) {
  folder_.write("in.stp", exchange_file(LID_ALONE));
  EXPECT_THAT(found(),
              ElementsAre(":warning one_part: There is nothing to split: there is only one "
                          "part."));
}

TEST_F(SmallSplit, NoPart) {
  folder_.write("in.stp", exchange_file("#1=A();\n"));
  EXPECT_THAT(found(), ElementsAre(":warning no_part: There is nothing to split: no product "
                                   "definition leads to a product or a shape."));
}

TEST_F(SmallSplit, InputThatARunRefuses) {
  folder_.write("in.stp", "ISO-10303-21;\nHEADER;\n");
  EXPECT_THAT(found(), ElementsAre(StartsWith(":3@22 error header_without_end: ")));
}

TEST_F(SmallSplit, InputThatARunFailsOver) {
  folder_.write("in.stp", exchange_file(std::string(BOX_WITH_LID) + "#13=A(#4000000000);\n"));
  EXPECT_THAT(found(), ElementsAre(":error instance_beyond_store: A record refers to an instance "
                                   "far beyond the highest number that is there; a split fails "
                                   "over it."));
}

TEST_F(SmallSplit, MissingInput) {
  EXPECT_THAT(found(), ElementsAre(":error unreadable: The file cannot be opened."));
}

TEST_F(SmallSplit, InputThatIsAFolder) {
  fs::create_directory("in.stp");
  EXPECT_THAT(found(), ElementsAre(":error unreadable: The file is a folder."));
}

TEST_F(SmallSplit, PartWithoutAName) {
  folder_.write("in.stp", exchange_file(std::string(BOX_WITH_LID) +
                                        "#20=PRODUCT_DEFINITION('d','',$,#4);\n"));
  EXPECT_THROW(Kessel::split("in.stp", "out"), std::runtime_error);
  EXPECT_THAT(found(), Contains(".:error part_without_name: A part leads to no product "
                                "after which its file could be named; it has no file."));
}

// What it leaves behind

TEST_F(SmallSplit, NothingIsPrintedOrWritten) {
  split_records(std::string(BOX_WITH_LID) + "#20=PROPERTY_DEFINITION('','');\n");
  fs::remove("out/roots.txt");
  const std::string printed = printed_by([&] { verify("in.stp", "out"); });
  EXPECT_EQ(printed, "");
  EXPECT_FALSE(fs::exists("roots.txt"));
  EXPECT_FALSE(fs::exists("out/roots.txt"));
}

TEST_F(SmallSplit, NamesOfTheNextRunAreNotTaken) {
  split_records(BOX_WITH_LID);
  verify("in.stp", "out");
  EXPECT_TRUE(Part::_filenames.empty());
}

TEST_F(SmallSplit, ProgressIsNotReported) {
  split_records(BOX_WITH_LID);
  options_.progress = [](const Progress&) { throw std::logic_error("reported"); };
  EXPECT_THAT(found(), IsEmpty());
}

}  // namespace
}  // namespace Kessel::test
