// Damage to a split, and what is said about it.
#include "verify/verified_split.h"

namespace Kessel::test {
namespace {

class Damage : public VerifiedSplit {};

TEST_F(Damage, ChangedWord) {
  replace("part.stp", "'its'", "'hers'");
  EXPECT_EQ(found(),
            FoundLines{"part.stp:18: error changed_record: #10, the input's #20: parameter 1 of "
                       "MANIFOLD_SOLID_BREP is \"'hers'\" in place of \"'its'\"."});
}

TEST_F(Damage, ChangedWordOfACopy) {
  replace("part.stp", "('part','part'", "('part','Part'");
  EXPECT_EQ(found(), FoundLines{"part.stp:13: error copies_differ: #5 says something else than its "
                                "copy in another file, which is taken."});
}

TEST_F(Damage, DroppedRecord) {
  replace("root.stp", "#18=NEXT_ASSEMBLY_USAGE_OCCURRENCE('u','','',#3,#11,$);\n", "");
  EXPECT_EQ(found(),
            FoundLines{":24: error missing_record: #17 (NEXT_ASSEMBLY_USAGE_OCCURRENCE) is in no "
                       "file."});
}

TEST_F(Damage, ForeignRecord) {
  replace("part.stp", "#10=MANIFOLD", "#12=DIRECTION('more',(1.,0.,0.));\n#10=MANIFOLD");
  EXPECT_EQ(found(), FoundLines{"part.stp:18: error foreign_record: #12 (DIRECTION) is not in the "
                                "input, or there less often."});
}

TEST_F(Damage, ShareOfAListThatIsGone) {
  replace("part.stp", "/*30*/#11=PRESENTATION_LAYER_ASSIGNMENT('l','',(#10));\n", "");
  const FoundLines lines = found();
  ASSERT_EQ(lines.size(), 1u);
  EXPECT_TRUE(lines.front().starts_with("root.stp:")) << lines.front();
  EXPECT_NE(lines.front().find("changed_record: #19, the input's #18: parameter 3 of "
                               "PRESENTATION_LAYER_ASSIGNMENT is \"(#10)\" in place of "
                               "\"(#10,#20)\"."),
            std::string::npos)
      << lines.front();
}

TEST_F(Damage, StandInThatHasLostItsForm) {
  replace("root.stp", "#16=SHAPE_REPRESENTATION('',(#17),#2)",
          "#16=SHAPE_REPRESENTATION('',(),#2)");
  EXPECT_EQ(found(),
            FoundLines{"root.stp:24: error changed_record: #16 has an empty parameter that "
                       "is not empty in the record for which it stands."});
  replace("root.stp", "#16=SHAPE_REPRESENTATION('',(),#2)", "#16=SHAPE_REPRESENTATION('',#2)");
  EXPECT_EQ(found(), FoundLines{"root.stp:24: error changed_record: #16 has another number of "
                                "parameters than the record for which it stands."});
  replace("root.stp", "#16=SHAPE_REPRESENTATION('',#2)", "#16=PLAINER('',(#17),#2)");
  EXPECT_EQ(found(), FoundLines());
}

TEST_F(Damage, ReferenceThatLeadsNowhere) {
  replace("root.stp", "#16=SHAPE_REPRESENTATION('',(#17),#2)",
          "#16=SHAPE_REPRESENTATION('',(#17),#99)");
  EXPECT_EQ(found(),
            FoundLines{"root.stp:24: error unresolved_reference: #16 refers to an instance "
                       "that the file does not have."});
}

TEST_F(Damage, MissingFile) {
  std::filesystem::remove("out/part.stp");
  EXPECT_EQ(found(),
            FoundLines{".:0: error missing_target: Files that are referred to are missing: "
                       "\"part.stp\"."});
}

TEST_F(Damage, FileThatBreaksOff) {
  const std::string text = read_file("out/part.stp");
  write("part.stp", text.substr(0, text.find("'its'") + 2));
  const FoundLines lines = found();
  ASSERT_EQ(lines.size(), 1u);
  EXPECT_TRUE(lines.front().starts_with("part.stp:18: error unclosed")) << lines.front();
}

TEST_F(Damage, ExchangedFile) {
  std::string other = read_file("out/part.stp");
  for (const char* const number : {"20", "21", "22", "23", "24", "25", "26", "30"}) {
    other.replace(other.find(std::string("/*") + number + "*/") + 2, 1, "9");
  }
  write("part.stp", other);
  const FoundLines lines = found();
  ASSERT_FALSE(lines.empty());
  EXPECT_TRUE(std::find(lines.begin(), lines.end(),
                        "root.stp:24: error stand_in_left: #16 stands for a record that no file "
                        "holds; it is taken itself.") != lines.end());
}

TEST_F(Damage, OtherSchema) {
  for (const char* const name : {"root.stp", "part.stp"}) replace(name, "(('AP'))", "(('OTHER'))");
  EXPECT_EQ(found(), FoundLines{"root.stp:0: error wrong_header: The root's file names other "
                                "schemas than the input."});
}

TEST_F(Damage, InputThatCannotBeRead) {
  std::filesystem::remove("in.stp");
  const FoundLines lines = found();
  ASSERT_EQ(lines.size(), 1u);
  EXPECT_TRUE(lines.front().starts_with(":0: error unreadable: ")) << lines.front();
}

}  // namespace
}  // namespace Kessel::test
