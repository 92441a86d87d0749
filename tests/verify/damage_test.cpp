// Each kind of damage to a split, and what is said about it.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>
#include <string>

#include "verify/verified_split.h"

namespace Kessel::test {
namespace {

namespace fs = std::filesystem;
using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::StartsWith;

const std::string BOX = "#1_part.stp";
const std::string LID = "#4_part.stp";

class Damage : public VerifiedSplit {
 protected:
  Damage() { split_records(BOX_WITH_LID); }
};

TEST_F(Damage, NoneIsFoundWhereThereIsNone) {
  const Verification verification = verify("in.stp", "out");
  EXPECT_THAT(verification.findings, IsEmpty());
  EXPECT_EQ(verification.files, 2u);
  EXPECT_EQ(verification.records, 30u);
}

// Records

TEST_F(Damage, DroppedRecord) {
  replace(LID, "#8=MANIFOLD_SOLID_BREP('',$);\n", "");
  EXPECT_THAT(
      found(),
      ElementsAre(LID + ":error missing_record #8: #8 is missing, the input's #11.",
                  at(LID, "#6=") + "error unresolved_reference #6: #6 refers to #8, which is not "
                                   "there."));
}

TEST_F(Damage, DoubledRecord) {
  replace(LID, "#7=GEOMETRIC", "#8 =MANIFOLD_SOLID_BREP('',$);\n#7=GEOMETRIC");
  EXPECT_THAT(found(),
              ElementsAre(at(LID, "#8 =") + "error repeated_record #8: #8 is there once more."));
}

TEST_F(Damage, ForeignRecord) {
  replace(LID, "#8=MANIFOLD", "#9=MANIFOLD_SOLID_BREP('',$);\n#8=MANIFOLD");
  EXPECT_THAT(found(), ElementsAre(at(LID, "#9=") +
                                   "error foreign_record #9: #9 does not belong into the file."));
}

TEST_F(Damage, RecordsThatHaveExchangedTheirNumbers) {
  replace(LID, "#8=MANIFOLD", "#0=MANIFOLD");
  replace(LID, "#7=GEOMETRIC", "#8=GEOMETRIC");
  replace(LID, "#0=MANIFOLD", "#7=MANIFOLD");
  EXPECT_THAT(found(),
              ElementsAre(at(LID, "#7=") + "error changed_record #7: #7, the input's #12, has "
                                           "\"MANIFOLD_SOLID_BREP\" in place of "
                                           "\"GEOMETRIC_REPRESENTATION_CONTEXT\".",
                          at(LID, "#8=") + "error changed_record #8: #8, the input's #11, has "
                                           "\"GEOMETRIC_REPRESENTATION_CONTEXT\" in place of "
                                           "\"MANIFOLD_SOLID_BREP\"."));
}

TEST_F(Damage, ReferenceToAnotherRecord) {
  replace(LID, "(#8),#7)", "(#7),#7)");
  EXPECT_THAT(found(), ElementsAre(at(LID, "#6=") +
                                   "error wrong_reference #6: #6 refers to #7 in place of #8."));
}

TEST_F(Damage, ReferenceToNothing) {
  replace(LID, "(#8),#7)", "(#80),#7)");
  EXPECT_THAT(found(), ElementsAre(at(LID, "#6=") +
                                   "error unresolved_reference #6: #6 refers to #80, which is not "
                                   "there, in place of #8."));
}

TEST_F(Damage, ReferenceThatIsGone) {
  replace(LID, "(#8),#7)", "(),#7)");
  EXPECT_THAT(found(),
              ElementsAre(at(LID, "#6=") +
                          "error changed_record #6: #6, the input's #10, has \")\" in place of "
                          "#8."));
}

TEST_F(Damage, String) {
  replace(LID, "PRODUCT('lid','lid'", "PRODUCT('lid','Lid'");
  EXPECT_THAT(found(), ElementsAre(at(LID, "#3=") +
                                   "error changed_record #3: #3, the input's #4, has \"'Lid'\" in "
                                   "place of \"'lid'\"."));
}

TEST_F(Damage, BlankInAString) {
  replace(LID, "PRODUCT('lid','lid'", "PRODUCT('lid','lid '");
  EXPECT_THAT(found(), ElementsAre(StartsWith(at(LID, "#3=") + "error changed_record #3: ")));
}

TEST_F(Damage, Keyword) {
  replace(LID, "MANIFOLD_SOLID_BREP", "FACETED_BREP");
  EXPECT_THAT(found(), ElementsAre(StartsWith(at(LID, "#8=") + "error changed_record #8: ")));
}

TEST_F(Damage, Value) {
  replace(LID, "'3D',3)", "'3D',2)");
  EXPECT_THAT(found(), ElementsAre(at(LID, "#7=") +
                                   "error changed_record #7: #7, the input's #12, has \"2\" in "
                                   "place of \"3\"."));
}

TEST_F(Damage, ContextThatIsNotCalledExternal) {
  replace(BOX, "'external',3)", "'3D',3)");
  EXPECT_THAT(found(), ElementsAre(at(BOX, "#11=") +
                                   "error changed_record #11: #11, the input's #12, has \"'3D'\" "
                                   "in place of \"'external'\"."));
}

TEST_F(Damage, RecordThatIsNotWrittenAsOne) {
  replace(LID, "(#8),#7)", "(#8,),#7)");
  EXPECT_THAT(found(), ElementsAre(at(LID, "#6=") +
                                   "error malformed_record #6: #6 is not written as a record is."));
}

TEST_F(Damage, StringThatIsNotClosed) {
  replace(LID, "PRODUCT('lid','lid','',())", "PRODUCT('lid','lid,'',())");
  EXPECT_THAT(found(), ElementsAre(at(LID, "#3=") +
                                   "error malformed_record #3: #3 is not written as a record is."));
}

TEST_F(Damage, RecordWithoutANumber) {
  replace(LID, "#8=MANIFOLD_SOLID_BREP('',$)", "#x=MANIFOLD_SOLID_BREP('',$)");
  EXPECT_THAT(found(), Contains(at(LID, "#x=") + "error malformed_record: This is no record: "
                                                 "\"#x=MANIFOLD_SOLID_BREP('',$)\"."));
}

TEST_F(Damage, StrayText) {
  replace(LID, "#8=MANIFOLD", "hello;\n#8=MANIFOLD");
  EXPECT_THAT(found(), ElementsAre(at(LID, "hello") +
                                   "error stray_text: Between the records stands \"hello\"."));
}

TEST_F(Damage, WhiteSpaceAndCommentsBetweenWordsAreNone) {
  replace(LID, "#8=MANIFOLD_SOLID_BREP('',$);\n",
          "/* the; */ /**/ #8 =\r\nMANIFOLD_SOLID_BREP/* ( */('',\t$) ;");
  EXPECT_THAT(found(), IsEmpty());
}

TEST_F(Damage, OrderOfRecordsIsNone) {
  replace(LID, "#8=MANIFOLD_SOLID_BREP('',$);\n", "");
  replace(LID, "#3=PRODUCT(", "#8=MANIFOLD_SOLID_BREP('',$);\n#3=PRODUCT(");
  EXPECT_THAT(found(), IsEmpty());
}

// Reference blocks

TEST_F(Damage, FileNameInABlock) {
  replace(BOX, "DOCUMENT_FILE('#4_part.stp'", "DOCUMENT_FILE('#5_part.stp'");
  EXPECT_THAT(found(), ElementsAre(at(BOX, "#13=") +
                                   "error wrong_reference_block #13: #13 names another file than "
                                   "\"#4_part.stp\"."));
}

TEST_F(Damage, SecondFileNameInABlock) {
  replace(BOX, "ASSIGNMENT('#4_part.stp'", "ASSIGNMENT('#4_part.stp '");
  EXPECT_THAT(found(), ElementsAre(at(BOX, "#17=") +
                                   "error wrong_reference_block #17: #17 names another file than "
                                   "\"#4_part.stp\"."));
}

TEST_F(Damage, ShapeThatABlockPointsAt) {
  replace(BOX, "(#18,#10)", "(#18,#8)");
  EXPECT_THAT(found(), ElementsAre(at(BOX, "#19=") +
                                   "error wrong_reference_block #19: #19 is not what the reference "
                                   "block for \"#4_part.stp\" has there."));
}

TEST_F(Damage, RecordsMissingFromABlock) {
  replace(BOX, "#16=IDENTIFICATION_ROLE('external document id and location',$);\n", "");
  EXPECT_THAT(found(),
              ElementsAre(BOX + ":error missing_reference_block #12: Of the reference block for "
                                "\"#4_part.stp\" 1 of 11 records are missing.",
                          at(BOX, "#17=") +
                              "error unresolved_reference #17: #17 refers to #16, which is not "
                              "there."));
}

TEST_F(Damage, RecordBeyondTheBlocks) {
  replace(BOX, "#9=SHAPE", "#23=DOCUMENT_TYPE('geometry');\n#9=SHAPE");
  EXPECT_THAT(found(), ElementsAre(at(BOX, "#23=") +
                                   "error foreign_record #23: #23 does not belong into the file."));
}

// Whole files

TEST_F(Damage, MissingFile) {
  fs::remove("out/" + LID);
  EXPECT_THAT(found(), ElementsAre(at(BOX, "#13=") +
                                       "error missing_target #13: #13 names \"#4_part.stp\", which "
                                       "is not there.",
                                   LID + ":error missing_file: The file is not there."));
}

TEST_F(Damage, ExchangedFiles) {
  fs::rename("out/" + LID, "out/other");
  fs::rename("out/" + BOX, "out/" + LID);
  fs::rename("out/other", "out/" + BOX);
  const Lines lines = found();
  EXPECT_THAT(lines, Contains(BOX + ":error wrong_header: The header says that the file is called "
                                    "\"out/#4_part.stp\", which it is not."));
  EXPECT_THAT(lines, Contains(LID + ":error wrong_header: The header says that the file is called "
                                    "\"out/#1_part.stp\", which it is not."));
  EXPECT_GT(lines.size(), 10u);
}

TEST_F(Damage, FileThatWasWrittenTwice) {
  Kessel::Run("in.stp", "out");  // Appends.
  const std::string text = read_file("out/" + LID);
  const std::size_t second = text.rfind("ISO-10303-21;\nHEADER;");
  ASSERT_NE(second, std::string::npos);
  EXPECT_THAT(found(), Contains(StartsWith(LID + ":19@" + std::to_string(second) +
                                           " error text_behind_end: Behind the file's end stands "
                                           "\"ISO-10303-21;?HEADER;")));
}

TEST_F(Damage, TextBehindTheEnd) {
  write(LID, read_file("out/" + LID) + "#1=A();\n");
  EXPECT_THAT(found(),
              ElementsAre(testing::EndsWith(" error text_behind_end: Behind the file's end stands "
                                            "\"#1=A();?\"; was it written twice?")));
}

TEST_F(Damage, FileCutOffAnywhere) {
  for (const std::string& name : {BOX, LID}) {
    const std::string text = read_file("out/" + name);
    for (std::size_t size = 0; size + 1 < text.size(); ++size) {
      write(name, text.substr(0, size));
      const Verification verification = verify("in.stp", "out");
      ASSERT_FALSE(verification.findings.empty()) << text.substr(0, size);
      for (const Finding& finding : verification.findings) ASSERT_EQ(finding.file, name);
    }
    write(name, text);
  }
}

TEST_F(Damage, FileWithoutItsEnd) {
  replace(LID, "END-ISO-10303-21;\n", "");
  EXPECT_THAT(found(), ElementsAre(testing::EndsWith(
                           " error unfinished_file: The data is not followed by the last line, "
                           "\"END-ISO-10303-21;\".")));
}

TEST_F(Damage, DataWithoutItsEnd) {
  replace(LID, "ENDSEC;\nEND-ISO-10303-21;\n", "");
  EXPECT_THAT(found(), ElementsAre(testing::EndsWith(
                           " error unfinished_file: The data does not end with \"ENDSEC;\".")));
}

TEST_F(Damage, EmptyFile) {
  write(LID, "");
  EXPECT_THAT(found(), Contains(LID + ":error unfinished_file: There is no data."));
}

TEST_F(Damage, Header) {
  replace(LID, "AUTOMOTIVE_DESIGN", "CONFIG_CONTROL_DESIGN");
  EXPECT_THAT(found(),
              ElementsAre(LID + ":error wrong_header: The lines in front of the data are not "
                                "those of the input with the file's name and a time."));
}

TEST_F(Damage, FirstLine) {
  replace(LID, "ISO-10303-21;\nHEADER;", "ISO-10303-22;\nHEADER;");
  EXPECT_THAT(found(), ElementsAre(StartsWith(LID + ":error wrong_header: ")));
}

TEST_F(Damage, TimeStamp) {
  std::string text = read_file("out/" + LID);
  const std::size_t time = text.find("+00:00'");
  write(LID, text.replace(time, 6, "+01:00"));
  EXPECT_THAT(found(), ElementsAre(StartsWith(LID + ":error wrong_header: ")));
}

TEST_F(Damage, NameInTheHeader) {
  replace(LID, "FILE_NAME('out/#4_part.stp'", "FILE_NAME('out/#1_part.stp'");
  EXPECT_THAT(found(),
              ElementsAre(LID + ":error wrong_header: The header says that the file is called "
                                "\"out/#1_part.stp\", which it is not."));
}

TEST_F(Damage, AnyFolderMayStandInFrontOfTheNameInTheHeader) {
  replace(LID, "FILE_NAME('out/#4_part.stp'", "FILE_NAME('#4_part.stp'");
  replace(BOX, "FILE_NAME('out/#1_part.stp'", "FILE_NAME('/some/where/#1_part.stp'");
  EXPECT_THAT(found(), IsEmpty());
}

TEST_F(Damage, Link) {
  fs::rename("out/" + LID, "lid");
  fs::create_symlink("../lid", "out/" + LID);
  EXPECT_THAT(found(), Contains(LID + ":error not_a_file: This is a link, not a file."));
}

TEST_F(Damage, Folder) {
  fs::remove("out/" + LID);
  fs::create_directory("out/" + LID);
  EXPECT_THAT(found(), Contains(LID + ":error not_a_file: This is a folder, not a file."));
}

TEST_F(Damage, Pipe) {
  fs::remove("out/" + LID);
  ASSERT_EQ(mkfifo(("out/" + LID).c_str(), 0600), 0);
  EXPECT_THAT(found(), Contains(LID + ":error not_a_file: This is no regular file."));
}

TEST_F(Damage, FileThatIsFarTooLarge) {
  fs::resize_file("out/" + LID, std::uint64_t{1} << 40);
  EXPECT_THAT(found(),
              ElementsAre(LID + ":error oversized_file: With 1,099,511,627,776 bytes the file "
                                "is larger than a split of this input can make one; it was not "
                                "read."));
}

TEST_F(Damage, DeepNestingIsNoDanger) {
  replace(LID, "(#8),#7)", std::string(10000, '(') + "#7)");
  EXPECT_THAT(found(), ElementsAre(StartsWith(at(LID, "#6=") + "error malformed_record #6: ")));
}

// The folder

TEST_F(Damage, ForeignFiles) {
  for (const char* name : {"b.stp", "a.STEP", "c.p21", "report.html", "d.txt"}) write(name, "");
  EXPECT_THAT(found(),
              ElementsAre("a.STEP:warning foreign_file: The file does not belong to the split.",
                          "b.stp:warning foreign_file: The file does not belong to the split.",
                          "c.p21:warning foreign_file: The file does not belong to the split."));
}

TEST_F(Damage, NoRootList) {
  fs::remove("out/roots.txt");
  EXPECT_THAT(found(), ElementsAre("roots.txt:warning missing_root_list: There is no \"roots.txt\" "
                                   "that holds the root file's name."));
}

TEST_F(Damage, RootListWithAnotherName) {
  write("roots.txt", LID + "\n");
  EXPECT_THAT(found(), ElementsAre("roots.txt:error wrong_root_list: It does not hold the root "
                                   "file's name, \"#1_part.stp\"."));
}

TEST_F(Damage, RootListThatIsAPipe) {
  fs::remove("out/roots.txt");
  ASSERT_EQ(mkfifo("out/roots.txt", 0600), 0);
  EXPECT_THAT(found(), ElementsAre(StartsWith("roots.txt:error wrong_root_list: ")));
}

TEST_F(Damage, NoFolder) {
  fs::remove_all("out");
  EXPECT_THAT(found(), ElementsAre(".:error missing_file: The folder cannot be read: No such file "
                                   "or directory."));
}

// Many findings

TEST_F(Damage, OfEachKindTwentyAreListedOverAllFiles) {
  for (const std::string& name : {BOX, LID}) {
    std::string more;
    for (int i = 100; i < 115; ++i) more += "#" + std::to_string(i) + "=A();\n";
    replace(name, "\nDATA;\n", "\nDATA;\n" + more);
  }
  const Verification verification = verify("in.stp", "out");
  ASSERT_EQ(verification.findings.size(), 21u);
  EXPECT_EQ(verification.findings[14].file, BOX);
  EXPECT_EQ(verification.findings[15].file, LID);
  EXPECT_EQ(verification.findings[20].count, 10u);
  EXPECT_EQ(verification.findings[20].instance, 105u);
}

TEST_F(Damage, FindingsOnTheWholeFileComeFirstAndFilesInTheirOrder) {
  replace(LID, "#8=MANIFOLD_SOLID_BREP('',$);\n", "");
  replace(LID, "'3D'", "'2D'");
  replace(BOX, "'external',3", "'2D',3");
  write("z.stp", "");
  Lines kinds;
  for (const Finding& finding : verify("in.stp", "out").findings) {
    kinds.push_back(finding.file + " " + std::string(name_of(finding.kind)));
  }
  EXPECT_THAT(kinds,
              ElementsAre("z.stp foreign_file", BOX + " changed_record", LID + " missing_record",
                          LID + " unresolved_reference", LID + " changed_record"));
}

}  // namespace
}  // namespace Kessel::test
