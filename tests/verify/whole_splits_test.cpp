// Splits as they come out.
#include "sameness/symmetrical_records.h"
#include "verify/verified_split.h"

namespace Kessel::test {
namespace {

class WholeSplit : public VerifiedSplit {};

TEST_F(WholeSplit, NothingIsFound) {
  const Verification verification = verify("in.stp", "out");
  EXPECT_EQ(found(), FoundLines());
  EXPECT_EQ(verification.files, 2u);
  EXPECT_EQ(verification.records, 41u);
}

TEST_F(WholeSplit, ProgressIsToldAndCanEndIt) {
  std::vector<Stage> stages;
  Options options;
  options.progress = [&](const Progress& progress) {
    EXPECT_LE(progress.done, progress.total);
    if (stages.empty() || stages.back() != progress.stage) stages.push_back(progress.stage);
  };
  EXPECT_TRUE(verify("in.stp", "out", options).findings.empty());
  EXPECT_EQ(stages, (std::vector{Stage::reading, Stage::sorting}));

  struct Ended {};
  for (const Stage last : stages) {
    options.progress = [&](const Progress& progress) {
      if (progress.stage == last) throw Ended();
    };
    EXPECT_THROW(verify("in.stp", "out", options), Ended);
  }
}

TEST_F(WholeSplit, NumbersOrderAndBlanksDoNotMatter) {
  folder_.write("in.stp", whole_file("#90 = MANIFOLD_SOLID_BREP( 'own' , $ );\n" + [] {
                  std::string text = INPUT;
                  text.erase(text.find("#10=MANIFOLD"), 33);
                  for (std::size_t at = 0; (at = text.find("#10)", at)) != text.npos;) {
                    text.replace(at, 4, "#90)");
                  }
                  text.replace(text.find("(#10,"), 5, "(#90,");
                  return text;
                }()));
  EXPECT_EQ(found(), FoundLines());
}

TEST_F(WholeSplit, WhatIsTooSymmetricalToTellIsAWarning) {
  folder_.write("in.stp", whole_file(symmetrical_records(false)));
  std::filesystem::remove("out/part.stp");
  write("root.stp", whole_file(symmetrical_records(false)));
  EXPECT_EQ(found(), FoundLines());
  write("root.stp", whole_file(symmetrical_records(true)));
  EXPECT_EQ(found(),
            FoundLines{".:0: warning undecided: The files are so symmetrical all over that "
                       "nobody can tell whether they say the same; they look the same."});
}

TEST_F(WholeSplit, FramesWithoutRecordsBelongToIt) {
  write("frame.stp", whole_file(""));
  EXPECT_EQ(found(), FoundLines());
  EXPECT_EQ(verify("in.stp", "out").files, 3u);
  EXPECT_EQ(verify("in.stp", "out").records, 41u);
}

TEST_F(WholeSplit, ReferencesThatLeadNowhereInTheInputDoSoInTheSplit) {
  folder_.write("in.stp", whole_file(INPUT + "#21=A(#99);\n"));
  replace("part.stp", "ENDSEC;\nEND", "#12=A(#77);\nENDSEC;\nEND");
  EXPECT_EQ(found(), FoundLines());
}

TEST_F(WholeSplit, WhatStandsForARecordMayLeadNowhereAsThatDoes) {
  std::string text = INPUT;
  text.replace(text.find("(#16,#20),#2)"), 13, "(#16,#20),#99)");
  folder_.write("in.stp", whole_file(text));
  replace("root.stp", "#16=SHAPE_REPRESENTATION('',(#17),#2)",
          "#16=SHAPE_REPRESENTATION('',(#17),#99)");
  replace("part.stp", "(#9,#10),#2)", "(#9,#10),#99)");
  EXPECT_EQ(found(), FoundLines());
}

}  // namespace
}  // namespace Kessel::test
