// Files to which the input refers: a split's files refer to them as well, from where they lie.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <set>
#include <stdexcept>
#include <vector>

#include "external/repointing.h"
#include "kessel/assembly.h"
#include "kessel/diff.h"
#include "kessel/errors.h"
#include "kessel/join.h"
#include "kessel/split_list.h"
#include "kessel/splitter.h"
#include "kessel/verify.h"
#include "splitter/small_inputs.h"
#include "support/folder_tree.h"
#include "support/product_records.h"
#include "support/referring_input.h"
#include "support/scratch_folder.h"
#include "support/small_disk.h"

namespace Kessel::test {
namespace {

namespace fs = std::filesystem;

TEST(Repointing, PathsSeenFromAnotherFolder) {
  const auto seen = [](std::string_view text, bool is_uri = false) {
    return repointed(text, "/top/in", "/top/out/deep", is_uri);
  };
  EXPECT_EQ(seen("a.stp"), "../../in/a.stp");
  EXPECT_EQ(seen("./sub/a.stp"), "../../in/./sub/a.stp");
  EXPECT_EQ(seen("../a.stp"), "../../a.stp");
  EXPECT_EQ(seen("../out/deep/a.stp"), "../../out/deep/a.stp");
  EXPECT_EQ(seen("../../../../a.stp"), "../../../../../a.stp");
  EXPECT_EQ(seen("sub/../../a.stp"), "../../in/sub/../../a.stp");
  EXPECT_EQ(seen("a%20b.stp", true), "../../in/a%20b.stp");
  for (const char* const stays : {"/a.stp", "C:\\a.stp", "\\\\host\\a.stp", "http://host/a.stp"}) {
    EXPECT_EQ(seen(stays), stays);
  }
  EXPECT_EQ(repointed("../out/a.stp", "/top/in", "/top/in"), "../out/a.stp");
  EXPECT_EQ(repointed("a b.stp", "/top/my in", "/top", true), "my%20in/a b.stp");
  EXPECT_EQ(repointed("..", "/top/in", "/top"), ".");
  EXPECT_EQ(repointed("../a.stp", "/top/in", "/top"), "a.stp");
}

TEST(TextEdits, OnlyTheStringChanges) {
  const std::string text = "#7 =\nE( 'a''b' /*'*/,#12 , IDENTIFIER( 'x' ),(#3,'y'))";
  const std::string_view body = std::string_view(text).substr(5);
  const auto mention = [&](std::uint64_t number, const char* digits) {
    const std::size_t at = text.find(digits) + 1;
    return Exchange::Mention{number, text.data() + at, text.data() + text.find_first_of(" ,", at)};
  };
  const std::vector<Exchange::Mention> mentions{mention(12, "#12"), mention(3, "#3")};
  const TextEdits edits({{7, "E", 2, "T\xC3\xBCr's\\"}, {7, "E", 0, "longer than it was"}});
  const EditedText edited(text, body, mentions, edits.of(7));
  EXPECT_EQ(edited.text(),
            "#7 =\nE( 'longer than it was' /*'*/,#12 , "
            "IDENTIFIER( 'T\\X2\\00FC\\X0\\r''s\\\\' ),(#3,'y'))");
  EXPECT_EQ(edited.body(), edited.text().substr(5));
  ASSERT_EQ(edited.mentions().size(), 2u);
  for (std::size_t i = 0; i < 2; ++i) {
    const Exchange::Mention& moved = edited.mentions()[i];
    EXPECT_EQ(std::string(moved.begin, moved.end), std::to_string(mentions[i].number));
    EXPECT_EQ(moved.number, mentions[i].number);
  }
  EXPECT_TRUE(edits.of(6).empty());
}

class KeptReferences : public testing::TestWithParam<AssemblyStyle> {
 protected:
  KeptReferences() {
    fs::create_directories("in/T\xC3\xBCr");
    folder_.write("in/in.stp", exchange_file(REFERRING));
    folder_.write("in/lid.stp", part_in_a_file("lid"));
    folder_.write("in/T\xC3\xBCr/hinge.stp", part_in_a_file("hinge"));
  }

  std::vector<WrittenFile> split_with(Options options, const fs::path& outdir) {
    options.assemblies = GetParam();
    return split("in/in.stp", outdir, options);
  }

  std::vector<fs::path> split_to(const fs::path& outdir, NameStyle names = NameStyle::product) {
    Options options;
    options.assemblies = GetParam();
    options.names = names;
    options.warning = [&](const Finding& finding) {
      warnings_.push_back(std::string(name_of(finding.kind)) + ": " + finding.sentence);
    };
    std::vector<fs::path> paths;
    for (const WrittenFile& file : split("in/in.stp", outdir, options)) paths.push_back(file.path);
    return paths;
  }

  /// Whether the split's root leads to the same as the input.
  bool leads_to_the_same(const fs::path& root) const {
    const JoinOptions options{.follow_outside = true, .replace = true};
    join("in/in.stp", "whole.stp", options);
    join(root, "again.stp", options);
    return diff("whole.stp", "again.stp").is_same;
  }

  static bool is_verified(const fs::path& in, const fs::path& outdir) {
    fs::rename("roots.txt", outdir / "roots.txt");
    return verify(in, outdir).findings.empty();
  }

  ScratchFolder folder_;
  std::vector<std::string> warnings_;
};

TEST_P(KeptReferences, LeadToTheFilesFromTheFolderOfTheOutput) {
  const std::vector<fs::path> files = split_to("out");
  EXPECT_EQ(warnings_,
            (std::vector<std::string>{
                "shape_elsewhere: A shape is in the file \"lid.stp\", which is only referred to.",
                "shape_elsewhere: A shape is in the file \"T\xC3\xBCr/hinge.stp\", which is only "
                "referred to."}));
  ASSERT_EQ(files.size(), 4u);
  const std::string lid = read_file("out/lid (2).stp");
  EXPECT_NE(lid.find("=DOCUMENT_FILE('../in/lid.stp','about it','',$,'',$);\n"), std::string::npos)
      << lid;
  EXPECT_NE(lid.find("=APPLIED_EXTERNAL_IDENTIFICATION_ASSIGNMENT( '../in/lid.stp' ,$,"),
            std::string::npos)
      << lid;
  EXPECT_NE(lid.find("=EXTERNAL_SOURCE(IDENTIFIER(''));\n"), std::string::npos) << lid;
  const std::string hinge = read_file("out/hinge (2).stp");
  EXPECT_NE(hinge.find("=DOCUMENT_FILE('../in/T\\X2\\00FC\\X0\\r/hinge.stp','about it',"),
            std::string::npos)
      << hinge;
  EXPECT_TRUE(leads_to_the_same(files.front()));
  EXPECT_TRUE(is_verified("in/in.stp", "out"));
}

TEST_P(KeptReferences, PathsOfOtherSystemsLeadToTheFilesFromTheFolderOfTheOutput) {
  fs::create_directory("in/sub");
  fs::copy_file("in/lid.stp", "in/sub/lid.stp");
  const std::string here = fs::absolute("in").string();
  const struct {
    std::string text;
    std::string seen_from_out;
  } names[] = {
      {"sub\\\\lid.stp", "../in/sub/lid.stp"},
      {".\\\\sub\\\\lid.stp", "../in/./sub/lid.stp"},
      {"..\\\\in\\\\lid.stp", "..\\\\in\\\\lid.stp"},  // the same from there
      {"file://" + here + "/sub/lid.stp", "file://" + here + "/sub/lid.stp"},
      {"no\\\\where.stp", "../in/no\\\\where.stp"},
  };
  for (const auto& [text, seen_from_out] : names) {
    std::string records = REFERRING;
    for (std::size_t at; (at = records.find("'lid.stp'")) != std::string::npos;) {
      records.replace(at, 9, "'" + text + "'");
    }
    folder_.write("in/in.stp", exchange_file(records));
    const std::vector<fs::path> files = split_to("out");
    const std::string lid =
        read_file(fs::exists("out/lid (2).stp") ? "out/lid (2).stp" : "out/lid.stp");
    EXPECT_NE(lid.find("=DOCUMENT_FILE('" + seen_from_out + "','about it',"), std::string::npos)
        << lid;
    const bool is_there = !text.starts_with("no");
    EXPECT_TRUE(!is_there || leads_to_the_same(files.front())) << text;
    EXPECT_TRUE(is_verified("in/in.stp", "out")) << text;
    fs::remove_all("out");
  }
}

TEST_P(KeptReferences, NoOutputIsCalledAsAFileThatTheInputRefersTo) {
  const std::vector<fs::path> files = split_to("in");
  const auto has = [&](const fs::path& path) {
    return std::find(files.begin(), files.end(), path) != files.end();
  };
  EXPECT_TRUE(has("in/lid (2).stp"));
  EXPECT_TRUE(has("in/own.stp"));
  // In one folder the names stay.
  EXPECT_NE(read_file("in/lid (2).stp").find("=DOCUMENT_FILE('lid.stp','about it',"),
            std::string::npos);
  EXPECT_TRUE(leads_to_the_same(files.front()));
}

TEST_P(KeptReferences, NamesAfterRecordsMakeWayAsWell) {
  std::string input = REFERRING;
  for (std::size_t at = 0; (at = input.find("'lid.stp'")) != std::string::npos;) {
    input.replace(at, 9, "'#31_PART.stp'");
  }
  folder_.write("in/in.stp", exchange_file(input));
  fs::rename("in/lid.stp", "in/#31_PART.stp");
  const std::vector<fs::path> files = split_to("out", NameStyle::record);
  EXPECT_EQ(names_in("out"),
            (std::set<std::string>{"#11_part.stp", "#21_part.stp", "#31_part_(2)_.stp",
                                   "#41_part.stp", "velkstep-split.json"}));
  EXPECT_TRUE(leads_to_the_same(files.front()));
}

TEST_P(KeptReferences, MissingFilesAreWarnedOf) {
  fs::remove("in/lid.stp");
  split_to("out");
  EXPECT_EQ(warnings_,
            (std::vector<std::string>{
                "missing_target: The file \"lid.stp\" that is referred to is not there.",
                "shape_elsewhere: A shape is in the file \"T\xC3\xBCr/hinge.stp\", which is only "
                "referred to."}));
  EXPECT_NE(read_file("out/lid (2).stp").find("'../in/lid.stp'"), std::string::npos);
  EXPECT_TRUE(is_verified("in/in.stp", "out"));
}

TEST_P(KeptReferences, LeadFromWhereTheFilesAreGoingToLie) {
  Options options;
  options.assemblies = GetParam();
  options.names = NameStyle::product;
  options.output_folder = folder_ / "far/away";
  options.input_folder = folder_ / "in/T\xC3\xBCr";
  split("in/in.stp", "out", options);
  const std::string lid = read_file("out/lid (2).stp");
  EXPECT_NE(lid.find("'../../in/T\\X2\\00FC\\X0\\r/lid.stp'"), std::string::npos) << lid;
}

// The file of a sub-assembly refers to its components' files, whose names its own split would give.
TEST_P(KeptReferences, OfASplitThatIsSplitAgain) {
  const std::string sub = SHARED_RECORDS + product_records(10, "top", "#3") +
                          product_records(20, "middle", "#3") +
                          product_records(30, "pin", "#3,#50") + solid_records(50) +
                          usage_record(60, 10, 20) + usage_record(61, 20, 30);
  folder_.write("in/in.stp", exchange_file(sub));
  Options options;
  options.assemblies = AssemblyStyle::nested;
  options.names = NameStyle::product;
  split("in/in.stp", "first", options);
  options.assemblies = GetParam();
  const std::vector<WrittenFile> files = split("first/middle.stp", "second", options);
  ASSERT_EQ(files.size(), 2u);
  EXPECT_EQ(files[0].path, "second/middle.stp");
  EXPECT_EQ(files[1].path, "second/pin (2).stp");
  const JoinOptions outside{.follow_outside = true, .replace = true};
  join("first/middle.stp", "whole.stp", outside);
  join("second/middle.stp", "again.stp", outside);
  // The first split's marks are gone, by which its files' contexts were one.
  std::vector<std::string> more;
  for (const ProductDifference& product : diff("whole.stp", "again.stp").products) {
    for (const TypeDifference& type : product.types) {
      EXPECT_TRUE(type.only_in_a.empty()) << type.type;
      if (!type.only_in_b.empty()) more.push_back(type.type);
    }
  }
  EXPECT_EQ(more, (std::vector<std::string>{"APPLICATION_CONTEXT", "REPRESENTATION_CONTEXT"}));
  EXPECT_TRUE(is_verified("first/middle.stp", "second"));
}

// What a split refers to is found again by one that follows, and split as it was.
TEST_P(KeptReferences, OfASplitThatIsFollowedAndSplitAgain) {
  const std::string lamp = std::string(PROJECT_FOLDER) + "/examples/desk-lamp.step";
  Options options;
  options.assemblies = GetParam();
  const std::vector<WrittenFile> first = split(lamp, "first", options);
  options.follow_references = true;
  const std::vector<WrittenFile> second = split(first.front().path, "second", options);
  ASSERT_EQ(second.size(), first.size());
  const std::set<std::string> names = names_in("first");
  EXPECT_EQ(names_in("second").size(), names.size());
  join("first", "whole.stp");
  fs::rename("roots.txt", "second/roots.txt");
  join("second", "again.stp");
  EXPECT_TRUE(diff("whole.stp", "again.stp").is_same);
  EXPECT_TRUE(diff(lamp, "again.stp").is_same);
}

// The lid's file refers to a pin's in turn, and the hinge's name is taken twice.
TEST_P(KeptReferences, CopiesLieBesideTheSplitWithWhatTheyReferTo) {
  fs::create_directory("in/more");
  folder_.write("in/lid.stp",
                exchange_file(SHARED_RECORDS + product_records(10, "lid", "#3") +
                              product_records(20, "pin", "#3") + usage_record(60, 10, 20) +
                              "/* a comment */ " + reference(70, "more/hinge.stp", 20)));
  folder_.write("in/more/hinge.stp", part_in_a_file("pin"));
  const std::vector<WrittenFile> files = split_with({.copy_references = true}, "out");
  const std::size_t written = 4;
  ASSERT_EQ(files.size(), written + 3);
  for (std::size_t i = 0; i < files.size(); ++i) EXPECT_EQ(files[i].is_copy, i >= written);
  EXPECT_EQ(names_in("out"), (std::set<std::string>{"whole.stp", "own.stp", "lid (2).stp",
                                                    "hinge (3).stp", "lid.stp", "hinge.stp",
                                                    "hinge (2).stp", "velkstep-split.json"}));
  EXPECT_EQ(files[written].path, "out/lid.stp");
  EXPECT_EQ(files[written].records, 21u);
  EXPECT_EQ(files[written].bytes, fs::file_size("out/lid.stp"));
  const std::optional<SplitList> list = read_split_list("out");
  ASSERT_TRUE(list && list->files.size() == files.size());
  for (std::size_t i = 0; i < files.size(); ++i) {
    EXPECT_EQ(list->files[i].name, files[i].path.filename());
    EXPECT_EQ(state_of(list->files[i], "out"), ListedState::unchanged);
    EXPECT_EQ(list->files[i].record == 0, files[i].is_copy);
  }
  // Only names change.
  std::string expected = read_file("in/lid.stp");
  for (std::size_t at = 0; (at = expected.find("more/hinge.stp")) != std::string::npos;) {
    expected.replace(at, 14, "hinge (2).stp");
  }
  EXPECT_EQ(read_file("out/lid.stp"), expected);
  EXPECT_EQ(read_file("out/hinge.stp"), read_file("in/T\xC3\xBCr/hinge.stp"));
  EXPECT_EQ(read_file("out/hinge (2).stp"), read_file("in/more/hinge.stp"));
  const std::string hinge = read_file("out/hinge (3).stp");
  EXPECT_NE(hinge.find("=DOCUMENT_FILE('hinge.stp','about it',"), std::string::npos) << hinge;
  fs::rename("out", "moved");
  EXPECT_TRUE(leads_to_the_same("moved/whole.stp"));
  EXPECT_TRUE(is_verified("in/in.stp", "moved"));
}

TEST_P(KeptReferences, CopiesAndFollowedFilesStayInTheFolder) {
  fs::rename("in/lid.stp", "lid.stp");
  std::string input = REFERRING;
  for (std::size_t at = 0; (at = input.find("'lid.stp'", at)) != std::string::npos; at += 12) {
    input.replace(at, 9, "'../lid.stp'");
  }
  folder_.write("in/in.stp", exchange_file(input));
  for (const bool follow : {true, false}) {
    Options options;
    (follow ? options.follow_references : options.copy_references) = true;
    try {
      split_with(options, "out");
      ADD_FAILURE() << "nothing was refused";
    } catch (const InputError& error) {
      EXPECT_EQ(error.finding().kind, FindingKind::target_outside);
      EXPECT_EQ(error.finding().sentence,
                "References lead out of the folder of the file: \"../lid.stp\".");
    }
    EXPECT_FALSE(fs::exists("out"));
  }
  const std::vector<WrittenFile> files =
      split_with({.copy_references = true, .follow_outside = true}, "out");
  EXPECT_EQ(read_file("out/lid.stp"), read_file("lid.stp"));
  fs::remove("lid.stp");
  const JoinOptions within{.replace = true};
  join(files.front().path, "again.stp", within);
  EXPECT_NE(read_file("out/lid (2).stp").find("=DOCUMENT_FILE('lid.stp',"), std::string::npos);
}

TEST_P(KeptReferences, WhatCannotBeCopiedEndsTheSplitBeforeItWrites) {
  folder_.write("in/lid.stp", "no exchange file");
  for (const bool follow : {true, false}) {
    Options options;
    (follow ? options.follow_references : options.copy_references) = true;
    try {
      split_with(options, "out");
      ADD_FAILURE() << "nothing was refused";
    } catch (const InputError& error) {
      EXPECT_EQ(error.finding().kind, FindingKind::not_an_exchange_file);
      EXPECT_EQ(fs::path(error.finding().file).filename(), "lid.stp");
    }
    EXPECT_FALSE(fs::exists("out"));
  }
  folder_.write("in/lid.stp", part_in_a_file("lid"));
  fs::create_directory("out");
  folder_.write("out/lid.stp", "somebody's");
  EXPECT_THROW(split_with({.copy_references = true}, "out"), OutputError);
  EXPECT_EQ(names_in("out"), std::set<std::string>{"lid.stp"});
  EXPECT_EQ(read_file("out/lid.stp"), "somebody's");
}

TEST_P(KeptReferences, CopiesThatLieThereAlreadyStay) {
  split_with({.copy_references = true}, "in");
  EXPECT_EQ(read_file("in/lid.stp"), part_in_a_file("lid"));
  EXPECT_NE(read_file("in/hinge (2).stp").find("=DOCUMENT_FILE('hinge.stp','about it',"),
            std::string::npos);
  EXPECT_EQ(read_file("in/hinge.stp"), part_in_a_file("hinge"));
}

// The hinge's file has the name of one that lies there, and that of the input.
TEST_P(KeptReferences, CopiesMakeWayForWhatLiesThere) {
  const std::string hinge = "T\\X2\\00FC\\X0\\r/hinge.stp";
  for (const char* const name : {"lid.stp", "in.stp"}) {
    std::string other = REFERRING;
    for (std::size_t at = 0; (at = other.find(hinge, at)) != std::string::npos; ++at) {
      other.replace(at, hinge.size(), std::string("T\\X2\\00FC\\X0\\r/") + name);
    }
    folder_.write("in/in.stp", exchange_file(other));
    folder_.write(std::string("in/T\xC3\xBCr/") + name, part_in_a_file("hinge"));
    const std::vector<WrittenFile> files = split_with({.copy_references = true}, "in");
    EXPECT_EQ(files.back().path, fs::path("in") / (fs::path(name).stem().string() + " (2).stp"));
    EXPECT_EQ(read_file(files.back().path), part_in_a_file("hinge"));
    EXPECT_EQ(read_file("in/lid.stp"), part_in_a_file("lid"));
    EXPECT_TRUE(leads_to_the_same(files.front().path));
    for (const WrittenFile& file : files) fs::remove(file.path);
    fs::remove("in/velkstep-split.json");
    fs::remove("roots.txt");
  }
}

TEST_P(KeptReferences, FollowedFilesAreSplitAsOne) {
  const std::vector<WrittenFile> files = split_with({.follow_references = true}, "in");
  // No file takes the place of one that was read.
  EXPECT_EQ(read_file("in/lid.stp"), part_in_a_file("lid"));
  ASSERT_EQ(files.size(), 4u);
  EXPECT_EQ(files[0].path, "in/whole.stp");
  EXPECT_TRUE(fs::exists("in/lid (2).stp"));
  EXPECT_NE(read_file("in/lid (2).stp").find("MANIFOLD_SOLID_BREP"), std::string::npos);
  const JoinOptions within{.replace = true};
  join("in/in.stp", "whole.stp", within);
  join("in/whole.stp", "again.stp", within);
  EXPECT_TRUE(diff("whole.stp", "again.stp").is_same);
}

TEST_P(KeptReferences, FollowedFilesAreCalledAfterTheirProducts) {
  const std::vector<WrittenFile> files = split_with({.follow_references = true}, "out");
  EXPECT_TRUE(fs::exists("out/lid.stp"));
  EXPECT_TRUE(fs::exists("out/hinge.stp"));
  const Assembly assembly =
      read_assembly("in/in.stp", {.assemblies = GetParam(), .follow_references = true});
  ASSERT_EQ(assembly.parts.size(), 4u);
  for (const PartInfo& part : assembly.parts) {
    EXPECT_TRUE(part.external_file.empty());
    EXPECT_TRUE(std::any_of(files.begin(), files.end(), [&](const WrittenFile& file) {
      return file.part == part.record && file.path.filename() == part.file;
    })) << part.name;
  }
}

TEST_P(KeptReferences, CopyThatDoesNotFitOntoTheDisk) {
  std::string lid = part_in_a_file("lid");
  lid.insert(lid.find("DATA;"), "/*" + std::string(300000, 'x') + "*/\n");
  folder_.write("in/lid.stp", lid);
  const SmallDisk disk("disk", "size=128k");
  if (!disk.is_there()) GTEST_SKIP() << "needs a small disk";
  try {
    split_with({.copy_references = true}, "disk");
    ADD_FAILURE() << "nothing was said";
  } catch (const OutputError& error) {
    EXPECT_EQ(error.path(), "disk/lid.stp");
    EXPECT_EQ(error.reason(), std::errc::no_space_on_device);
  }
}

TEST(ClassicStyle, NeitherFollowsNorCopies) {
  const ScratchFolder folder;
  folder.write("in.stp", exchange_file(REFERRING));
  Options options = Options::classic();
  options.follow_references = true;
  EXPECT_THROW(split("in.stp", "out", options), std::invalid_argument);
  options.follow_references = false;
  options.copy_references = true;
  EXPECT_THROW(split("in.stp", "out", options), std::invalid_argument);
}

INSTANTIATE_TEST_SUITE_P(Styles, KeptReferences,
                         testing::Values(AssemblyStyle::lean, AssemblyStyle::nested),
                         [](const auto& test) {
                           return test.param == AssemblyStyle::lean ? "lean" : "nested";
                         });

}  // namespace
}  // namespace Kessel::test
