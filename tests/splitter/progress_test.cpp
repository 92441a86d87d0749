// What a host is told while a run goes on, and how it cancels one.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "kessel/part.h"
#include "kessel/splitter.h"
#include "splitter/small_inputs.h"
#include "support/scratch_folder.h"
#include "support/split_run.h"

namespace Kessel::test {
namespace {

namespace fs = std::filesystem;

/// The box with its lid, and so many megabytes of points in its data.
std::string large_box(std::size_t megabytes) {
  std::string records(BOX_WITH_LID);
  const std::string text(1000, 'x');
  for (std::size_t i = 0; i < megabytes * 1049; ++i) {
    records += "#" + std::to_string(100 + i) + "=DESCRIPTION('" + text + "');\n";
  }
  return exchange_file(records);
}

class ProgressTest : public testing::Test {
 protected:
  /// The reports of a split of `in.stp`.
  std::vector<Progress> reports(const std::string& text) {
    std::vector<Progress> all;
    Options options = Options::classic();
    options.progress = [&](const Progress& progress) { all.push_back(progress); };
    split_paths(folder_.write("in.stp", text), "out", options);
    return all;
  }

  ScratchFolder folder_;
};

TEST_F(ProgressTest, StagesComeInOrderEachFromNothingToItsTotal) {
  const std::string text = large_box(5);
  const std::vector<Progress> all = reports(text);
  std::vector<Stage> stages;
  for (std::size_t i = 0; i < all.size(); ++i) {
    const bool begins = i == 0 || all[i].stage != all[i - 1].stage;
    const bool ends = i + 1 == all.size() || all[i].stage != all[i + 1].stage;
    if (begins) {
      stages.push_back(all[i].stage);
      EXPECT_EQ(all[i].done, 0u);
    } else {
      EXPECT_EQ(all[i].total, all[i - 1].total);
      EXPECT_GE(all[i].done, all[i - 1].done);
    }
    if (ends) {
      EXPECT_EQ(all[i].done, all[i].total);
    }
  }
  EXPECT_EQ(stages, (std::vector<Stage>{Stage::reading, Stage::sorting, Stage::writing}));
}

TEST_F(ProgressTest, ReadingAndWritingCountTheInputsBytesAMegabyteAtATime) {
  const std::string text = large_box(5);
  std::size_t reading = 0;
  std::size_t writing = 0;
  for (const Progress& progress : reports(text)) {
    if (progress.stage == Stage::sorting) continue;
    EXPECT_EQ(progress.total, text.size());
    (progress.stage == Stage::reading ? reading : writing) += 1;
  }
  // 0, five megabytes, the end.
  EXPECT_EQ(reading, 7u);
  EXPECT_EQ(writing, 7u);
}

TEST_F(ProgressTest, SmallFileHasBeginningsAndEndsOnly) {
  std::size_t read_or_written = 0;
  for (const Progress& progress : reports(exchange_file(BOX_WITH_LID))) {
    if (progress.stage != Stage::sorting) ++read_or_written;
  }
  EXPECT_EQ(read_or_written, 4u);
}

TEST_F(ProgressTest, ListeningChangesNothing) {
  reports(exchange_file(BOX_WITH_LID));
  EXPECT_EQ(without_time_stamps(read_file("out/#1_part.stp")),
            output_file("out/#1_part.stp", BOX_RECORDS));
}

TEST_F(ProgressTest, ExceptionOfTheHostEndsTheRunAtAnyStage) {
  folder_.write("in.stp", large_box(2));
  for (const Stage stage : {Stage::reading, Stage::sorting, Stage::writing}) {
    Options options = Options::classic();
    options.progress = [&](const Progress& progress) {
      if (progress.stage == stage && progress.done > 0) throw std::domain_error("enough");
    };
    EXPECT_THROW(split_paths("in.stp", "out", options), std::domain_error);
    EXPECT_EQ(fs::exists("out"), stage == Stage::writing);
    EXPECT_TRUE(Part::_opened_files.empty());
    EXPECT_TRUE(Part::_filenames.empty());
  }
}

TEST(Split, SaysWhatIsInEachFile) {
  const ScratchFolder folder;
  const auto files =
      split(folder.write("in.stp", exchange_file(BOX_WITH_LID)), "out", Options::classic());
  ASSERT_EQ(files.size(), 2u);
  EXPECT_EQ(files[0].path, "out/#1_part.stp");
  EXPECT_EQ(files[0].part, 3u);
  EXPECT_EQ(files[0].records, 22u);
  EXPECT_EQ(files[0].bytes, fs::file_size("out/#1_part.stp"));
  EXPECT_EQ(files[1].path, "out/#4_part.stp");
  EXPECT_EQ(files[1].part, 6u);
  EXPECT_EQ(files[1].records, 8u);
  EXPECT_EQ(files[1].bytes, fs::file_size("out/#4_part.stp"));
}

TEST(Split, SizesAreThoseOfTheFilesWhereverALinkLeads) {
  const ScratchFolder folder;
  folder.write("in.stp", exchange_file(BOX_WITH_LID));
  fs::create_directories("deep/er");
  fs::create_symlink("deep/er", "link");
  const std::vector<WrittenFile> files = split("in.stp", "link/../out", Options::classic());
  ASSERT_EQ(files.size(), 2u);
  EXPECT_EQ(files[0].path, "out/#1_part.stp");
  EXPECT_EQ(files[0].bytes, fs::file_size("deep/out/#1_part.stp"));
}

TEST(Split, GeneratedRootStandsForNoRecord) {
  constexpr std::string_view TWO_TOPS =
      "#1=PRODUCT('box','box','',());\n"
      "#2=PRODUCT_DEFINITION_FORMATION('','',#1);\n"
      "#3=PRODUCT_DEFINITION('d','',#2,$);\n"
      "#4=PRODUCT('lid','lid','',());\n"
      "#5=PRODUCT_DEFINITION_FORMATION('','',#4);\n"
      "#6=PRODUCT_DEFINITION('d','',#5,$);\n"
      "#7=PRODUCT_DEFINITION_SHAPE('','',#3);\n#8=SHAPE_DEFINITION_REPRESENTATION(#7,#11);\n"
      "#9=PRODUCT_DEFINITION_SHAPE('','',#6);\n#10=SHAPE_DEFINITION_REPRESENTATION(#9,#12);\n"
      "#11=SHAPE_REPRESENTATION('',(),$);\n#12=SHAPE_REPRESENTATION('',(),$);\n";
  for (const AssemblyStyle style :
       {AssemblyStyle::classic, AssemblyStyle::lean, AssemblyStyle::nested}) {
    SCOPED_TRACE(static_cast<int>(style));
    const ScratchFolder folder;
    Options options;
    options.assemblies = style;
    const auto files = split(folder.write("in.stp", exchange_file(TWO_TOPS)), "out", options);
    ASSERT_EQ(files.size(), 3u);
    EXPECT_EQ(files[0].path, "out/Root.stp");
    EXPECT_EQ(files[0].part, 0u);
    EXPECT_EQ(files[1].part, 3u);
    EXPECT_EQ(files[2].part, 6u);
    for (const WrittenFile& file : files) {
      std::string text = read_file(file.path);
      text.erase(0, text.find("\nDATA;\n"));
      EXPECT_EQ(file.records, std::count(text.begin(), text.end(), '=')) << file.path;
    }
  }
}

TEST(Split, NothingToSplitIsAnEmptyList) {
  const ScratchFolder folder;
  EXPECT_TRUE(
      split(folder.write("in.stp", exchange_file(LID_ALONE)), "out", Options::classic()).empty());
}

}  // namespace
}  // namespace Kessel::test
