// What cannot be extracted, and what then happens: nothing, and a sentence that says why.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>

#include "kessel/errors.h"
#include "kessel/extract.h"
#include "support/folder_tree.h"
#include "support/loaded_text.h"
#include "support/product_records.h"
#include "support/scratch_folder.h"
#include "support/small_disk.h"

namespace Kessel::test {
namespace {

namespace fs = std::filesystem;
using Names = std::set<std::string>;

/// A car, "in.stp", with a wheel whose solid is large.
class ExtractFaults : public testing::Test {
 protected:
  ExtractFaults() {
    std::string items = "#3,#40";
    std::string points;
    for (int i = 1000; i < 4000; ++i) {
      items += ",#" + std::to_string(i);
      points += "#" + std::to_string(i) + "=CARTESIAN_POINT('',(0.,0.,0.));\n";
    }
    folder_.write("in.stp", exchange_file(SHARED_RECORDS + product_records(10, "car", "#3") +
                                          product_records(20, "wheel", items) + solid_records(40) +
                                          points + placed_usage_records(100, 10, 20)));
  }

  /// Why the wheel cannot be extracted into `out`.
  std::string refusal(const fs::path& out = "out.stp") const {
    try {
      extract("in.stp", "wheel", out, options);
    } catch (const InputError& error) {
      return error.finding().sentence;
    } catch (const OutputError& error) {
      return error.path().string() + ": " + error.reason().message();
    } catch (const std::exception& error) {
      return error.what();
    }
    return "extracted";
  }

  ScratchFolder folder_;
  ExtractOptions options;
};

TEST_F(ExtractFaults, OutputThatIsThere) {
  folder_.write("out.stp", "precious");
  EXPECT_EQ(refusal(), "out.stp: File exists");
  EXPECT_EQ(read_file("out.stp"), "precious");
  options.replace = true;
  EXPECT_EQ(refusal(), "extracted");
  EXPECT_TRUE(read_file("out.stp").starts_with("ISO-10303-21;"));
  EXPECT_EQ(names_in("."), (Names{"in.stp", "out.stp"}));
}

TEST_F(ExtractFaults, OutputThatIsTheInput) {
  const std::string before = read_file("in.stp");
  options.replace = true;
  fs::create_symlink("in.stp", "link.stp");
  EXPECT_EQ(refusal("in.stp"), "in.stp: File exists");
  EXPECT_EQ(refusal("link.stp"), "link.stp: File exists");
  EXPECT_EQ(read_file("in.stp"), before);
  EXPECT_EQ(names_in("."), (Names{"in.stp", "link.stp"}));
}

TEST_F(ExtractFaults, OutputThatCannotBe) {
  fs::create_directory("folder.stp");
  EXPECT_EQ(refusal("folder.stp"), "folder.stp: Is a directory");
  EXPECT_EQ(refusal("nowhere/out.stp"), "nowhere/out.stp: No such file or directory");
  EXPECT_EQ(names_in("."), (Names{"folder.stp", "in.stp"}));
}

TEST_F(ExtractFaults, InputThatCannotBeRead) {
  EXPECT_THROW(extract("nowhere.stp", "wheel", "out.stp"), InputError);
  folder_.write("in.stp", "ISO-10303-21;\nHEADER;\nENDSEC;\nDATA;\n#1=A('");
  EXPECT_THROW(extract("in.stp", "wheel", "out.stp"), InputError);
  fs::create_directory("folder");
  EXPECT_THROW(extract("folder", "wheel", "out.stp"), InputError);
  EXPECT_EQ(names_in("."), (Names{"folder", "in.stp"}));
}

TEST_F(ExtractFaults, UnknownPart) {
  EXPECT_THROW(extract("in.stp", "tyre", "out.stp"), PartError);
  EXPECT_THROW(extract_each("in.stp", {"wheel", "tyre"}, "out"), PartError);
  options.progress = [](const Progress& progress) {
    if (progress.stage == Stage::writing) throw 1;
  };
  EXPECT_THROW(extract_each("in.stp", {"wheel"}, "out/deep/", options), int);
  EXPECT_EQ(names_in("."), Names{"in.stp"});
}

TEST_F(ExtractFaults, MemoryLimit) {
  options.memory_limit = 20'000;
  EXPECT_TRUE(refusal().starts_with("The first ")) << refusal();
  EXPECT_EQ(names_in("."), Names{"in.stp"});
}

TEST_F(ExtractFaults, FullDisk) {
  const SmallDisk disk(folder_ / "disk", "size=64k");
  if (!disk.is_there()) GTEST_SKIP() << "only root may have a small disk";
  EXPECT_EQ(refusal("disk/out.stp"), "disk/out.stp: No space left on device");
  EXPECT_EQ(names_in("disk"), Names());
}

TEST_F(ExtractFaults, ProgressTellsAllStagesAndMayEndIt) {
  std::vector<Progress> told;
  options.progress = [&](const Progress& progress) { told.push_back(progress); };
  EXPECT_EQ(refusal(), "extracted");
  ASSERT_FALSE(told.empty());
  EXPECT_EQ(told.front().stage, Stage::reading);
  EXPECT_EQ(told.back().stage, Stage::writing);
  EXPECT_EQ(told.back().done, fs::file_size("in.stp"));
  EXPECT_EQ(told.back().total, fs::file_size("in.stp"));
  for (std::size_t i = 1; i < told.size(); ++i) {
    EXPECT_LE(told[i].done, told[i].total);
    EXPECT_LE(told[i - 1].stage, told[i].stage);
  }
  options.replace = true;
  folder_.write("out.stp", "precious");
  options.progress = [](const Progress& progress) {
    if (progress.stage == Stage::writing) throw 1;
  };
  EXPECT_THROW(extract("in.stp", "wheel", "out.stp", options), int);
  EXPECT_EQ(read_file("out.stp"), "precious");
  EXPECT_EQ(names_in("."), (Names{"in.stp", "out.stp"}));
}

TEST_F(ExtractFaults, InputThatIsChangedMeanwhile) {
  options.progress = [&](const Progress& progress) {
    if (progress.stage != Stage::writing || progress.done != 0) return;
    folder_.write("in.stp", exchange_file(SHARED_RECORDS));
  };
  EXPECT_TRUE(refusal().starts_with("The file was changed")) << refusal();
  EXPECT_EQ(names_in("."), Names{"in.stp"});
}

TEST_F(ExtractFaults, SeveralInAFolderAllOrNone) {
  const std::vector<ExtractedFile> files =
      extract_each("in.stp", {"wheel", "#10", "id wheel"}, "out", options);
  ASSERT_EQ(files.size(), 2u);
  EXPECT_EQ(files[0].path, "out/wheel.stp");
  EXPECT_EQ(files[1].path, "out/car.stp");
  EXPECT_EQ(files[0].bytes, fs::file_size("out/wheel.stp"));
  fs::remove("out/wheel.stp");
  EXPECT_THROW(extract_each("in.stp", {"wheel", "car"}, "out", options), OutputError);
  EXPECT_EQ(names_in("out"), Names{"car.stp"});
}

/// A usage whose place needs another product's shape stays without it; so does the circle's.
TEST(Extract, WhatNeedsOthersStaysBehind) {
  const ScratchFolder folder;
  folder.write(
      "in.stp",
      exchange_file(SHARED_RECORDS + product_records(10, "car", "#3") +
                    product_records(20, "axle", "#3") + product_records(30, "wheel", "#3,#40") +
                    solid_records(40) + placed_usage_records(100, 10, 20) +
                    placed_usage_records(110, 20, 30) + placed_usage_records(120, 30, 20) +
                    "#130=STYLED_ITEM('',(),#41);\n"
                    "#131=CONTEXT_DEPENDENT_OVER_RIDING_STYLED_ITEM('',(),#41,#130,(#103));\n"
                    "#132=CONTEXT_DEPENDENT_OVER_RIDING_STYLED_ITEM('',(),#41,#130,(#113));\n"
                    "#140=PERSON('nobody knows');\n"));
  // What is shared, two products, a solid, a usage, styles; and the transformations of the other
  // usages, which only speak of the placement that is shared.
  EXPECT_EQ(extract("in.stp", "axle", "axle.stp").records, 4u + 12 + 2 + 5 + 2 + 1);
  const std::string text = read_file("axle.stp");
  EXPECT_EQ(text.find("'car'"), text.npos);
  EXPECT_EQ(text.find("PERSON"), text.npos);
  EXPECT_NE(text.find("'axle'"), text.npos);
  EXPECT_NE(text.find("CONTEXT_DEPENDENT_OVER_RIDING_STYLED_ITEM"), text.npos);
  // The only top has all there is.
  EXPECT_EQ(extract("in.stp", "car", "car.stp").records, 4u + 18 + 2 + 15 + 3 + 1);
}

}  // namespace
}  // namespace Kessel::test
