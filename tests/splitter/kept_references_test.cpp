// Files to which the input refers: a split's files refer to them as well, from where they lie.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <vector>

#include "external/repointing.h"
#include "kessel/diff.h"
#include "kessel/join.h"
#include "kessel/splitter.h"
#include "kessel/verify.h"
#include "splitter/small_inputs.h"
#include "support/folder_tree.h"
#include "support/product_records.h"
#include "support/scratch_folder.h"

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

/// References to the file `name` for the definition #`definition`, numbered from `number` on.
std::string reference(int number, const std::string& name, int definition) {
  const auto at = [&](int i) { return "#" + std::to_string(number + i); };
  return at(0) + "=DOCUMENT_FILE('" + name + "','about it','',$,'',$);\n" + at(1) +
         "=EXTERNAL_SOURCE(IDENTIFIER(''));\n" + at(2) +
         "=APPLIED_EXTERNAL_IDENTIFICATION_ASSIGNMENT( '" + name + "' ,$," + at(1) + ",(" + at(0) +
         "));\n" + at(3) + "=APPLIED_DOCUMENT_REFERENCE(" + at(0) + ",'',(#" +
         std::to_string(definition) + "));\n";
}

/// The whole #10 with a part #20 of its own and the parts #30 and #40, which are in other files.
const std::string REFERRING =
    SHARED_RECORDS + product_records(10, "whole", "#3") + product_records(20, "own", "#3,#50") +
    solid_records(50) + product_records(30, "lid", "#3") + product_records(40, "hinge", "#3") +
    usage_record(60, 10, 20) + usage_record(61, 10, 30) + usage_record(62, 10, 40) +
    reference(70, "lid.stp", 30) + reference(80, "T\\X2\\00FC\\X0\\r/hinge.stp", 40);

std::string part_in_a_file(const std::string& name) {
  return exchange_file(SHARED_RECORDS + product_records(10, name, "#3,#50") + solid_records(50));
}

class KeptReferences : public testing::TestWithParam<AssemblyStyle> {
 protected:
  KeptReferences() {
    fs::create_directories("in/T\xC3\xBCr");
    folder_.write("in/in.stp", exchange_file(REFERRING));
    folder_.write("in/lid.stp", part_in_a_file("lid"));
    folder_.write("in/T\xC3\xBCr/hinge.stp", part_in_a_file("hinge"));
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
  EXPECT_TRUE(warnings_.empty());
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
  EXPECT_EQ(names_in("out"), (std::set<std::string>{"#11_part.stp", "#21_part.stp",
                                                    "#31_part_(2)_.stp", "#41_part.stp"}));
  EXPECT_TRUE(leads_to_the_same(files.front()));
}

TEST_P(KeptReferences, MissingFilesAreWarnedOf) {
  fs::remove("in/lid.stp");
  split_to("out");
  EXPECT_EQ(warnings_,
            std::vector<std::string>{
                "missing_target: The file \"lid.stp\" that is referred to is not there."});
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

INSTANTIATE_TEST_SUITE_P(Styles, KeptReferences,
                         testing::Values(AssemblyStyle::lean, AssemblyStyle::nested),
                         [](const auto& test) {
                           return test.param == AssemblyStyle::lean ? "lean" : "nested";
                         });

}  // namespace
}  // namespace Kessel::test
