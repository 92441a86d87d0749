// Parts of inputs that refer to other files, and parts that are shrunk.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "kessel/diff.h"
#include "kessel/errors.h"
#include "kessel/extract.h"
#include "kessel/join.h"
#include "kessel/shrink.h"
#include "support/folder_tree.h"
#include "support/referring_input.h"
#include "support/scratch_folder.h"

namespace Kessel::test {
namespace {

namespace fs = std::filesystem;
using Sentences = std::vector<std::string>;

class ExtractFromReferring : public testing::Test {
 protected:
  ExtractFromReferring() {
    fs::create_directories("in/T\xC3\xBCr");
    folder_.write("in/in.stp", exchange_file(REFERRING));
    folder_.write("in/lid.stp", part_in_a_file("lid"));
    folder_.write("in/T\xC3\xBCr/hinge.stp", part_in_a_file("hinge"));
  }

  ExtractOptions choices() {
    ExtractOptions options;
    options.replace = true;
    options.warning = [&](const Finding& finding) {
      warnings_.push_back(std::to_string(finding.instance) + ": " + finding.sentence);
    };
    return options;
  }

  bool is_refused(const fs::path& out, const ExtractOptions& options) {
    try {
      extract("in/in.stp", "own", out, options);
      return false;
    } catch (const OutputError& error) {
      return error.path() == out && error.reason() == std::errc::file_exists;
    }
  }

  ScratchFolder folder_;
  Sentences warnings_;
};

TEST_F(ExtractFromReferring, ReferencesOfThePartStayAndLeadToTheirFiles) {
  fs::create_directories("far/away");
  extract("in/in.stp", "lid", "far/away/lid.stp", choices());
  const std::string lid = read_file("far/away/lid.stp");
  EXPECT_NE(lid.find("=DOCUMENT_FILE('../../in/lid.stp','about it','',$,'',$);\n"),
            std::string::npos)
      << lid;
  EXPECT_NE(lid.find("=APPLIED_EXTERNAL_IDENTIFICATION_ASSIGNMENT( '../../in/lid.stp' ,$,"),
            std::string::npos)
      << lid;
  EXPECT_EQ(lid.find("hinge"), std::string::npos) << lid;
  extract("in/in.stp", "own", "far/own.stp", choices());
  EXPECT_EQ(read_file("far/own.stp").find("DOCUMENT"), std::string::npos);
}

TEST_F(ExtractFromReferring, ShapesThatStayInTheirFilesAreToldOnceEach) {
  extract("in/in.stp", "own", "one.stp", choices());
  EXPECT_EQ(warnings_, Sentences{});
  extract("in/in.stp", "lid", "one.stp", choices());
  const std::string lid = "70: A shape is in the file \"lid.stp\", which is only referred to.";
  EXPECT_EQ(warnings_, Sentences{lid});
  warnings_.clear();
  extract("in/in.stp", "whole", "one.stp", choices());
  EXPECT_EQ(
      warnings_,
      (Sentences{
          lid, "80: A shape is in the file \"T\xC3\xBCr/hinge.stp\", which is only referred to."}));
  warnings_.clear();
  ExtractOptions following = choices();
  following.follow_references = true;
  extract("in/in.stp", "whole", "one.stp", following);
  EXPECT_EQ(warnings_, Sentences{});
}

TEST_F(ExtractFromReferring, FollowedOrJoinedItIsTheSame) {
  const JoinOptions outside{.follow_outside = true, .replace = true};
  ExtractOptions following = choices();
  following.follow_references = true;
  for (const char* const part : {"lid", "hinge", "own", "whole"}) {
    fs::create_directory("out");
    extract("in/in.stp", part, "out/part.stp", choices());
    join("out/part.stp", "joined.stp", outside);
    extract("in/in.stp", part, "followed.stp", following);
    EXPECT_EQ(read_file("followed.stp").find("DOCUMENT"), std::string::npos) << part;
    EXPECT_TRUE(diff("joined.stp", "followed.stp").is_same) << part;
  }
  EXPECT_EQ(read_parts("in/in.stp", following).size(), 4u);
}

TEST_F(ExtractFromReferring, FilesOutsideAreFollowedWhereAsked) {
  fs::create_directory("deep");
  extract("in/in.stp", "lid", "deep/part.stp", choices());
  ExtractOptions following = choices();
  following.follow_references = true;
  EXPECT_THROW(extract("deep/part.stp", "lid", "one.stp", following), InputError);
  following.follow_outside = true;
  extract("deep/part.stp", "lid", "one.stp", following);
  EXPECT_TRUE(diff("one.stp", "in/lid.stp").is_same);
}

TEST_F(ExtractFromReferring, NoFileTakesTheNameOfOneThatIsReferredTo) {
  EXPECT_TRUE(is_refused("in/lid.stp", choices()));
  fs::remove("in/lid.stp");
  EXPECT_TRUE(is_refused("in/lid.stp", choices()));
  EXPECT_FALSE(fs::exists("in/lid.stp"));
  ExtractOptions following = choices();
  following.follow_references = true;
  folder_.write("in/lid.stp", part_in_a_file("lid"));
  EXPECT_TRUE(is_refused("in/lid.stp", following));
  EXPECT_TRUE(is_refused("in/in.stp", following));
  EXPECT_EQ(read_file("in/lid.stp"), part_in_a_file("lid"));
  extract_each("in/in.stp", {"lid", "own"}, "in", choices());
  EXPECT_EQ(names_in("in"),
            (std::set<std::string>{"T\xC3\xBCr", "in.stp", "lid (2).stp", "lid.stp", "own.stp"}));
  EXPECT_NE(read_file("in/lid (2).stp").find("=DOCUMENT_FILE('lid.stp',"), std::string::npos);
}

TEST_F(ExtractFromReferring, MissingFilesOfThePartAreWarnedOf) {
  fs::remove("in/lid.stp");
  extract("in/in.stp", "hinge", "one.stp", choices());
  EXPECT_EQ(warnings_.size(), 1u);  // Its own file is there.
  warnings_.clear();
  extract("in/in.stp", "lid", "one.stp", choices());
  EXPECT_EQ(warnings_, Sentences{"70: The file \"lid.stp\" that is referred to is not there."});
}

TEST_F(ExtractFromReferring, NamesAreSeenFromTheFoldersThatAreGiven) {
  ExtractOptions options = choices();
  options.input_folder = folder_ / "in/T\xC3\xBCr";
  options.output_folder = folder_ / "far/away";
  extract("in/in.stp", "lid", "one.stp", options);
  EXPECT_NE(read_file("one.stp").find("'../../in/T\\X2\\00FC\\X0\\r/lid.stp'"), std::string::npos);
}

TEST(ShrunkParts, AreWhatShrinkingMakesOfThem) {
  const ScratchFolder folder;
  const fs::path in = fs::path(PROJECT_FOLDER) / "examples/desk-lamp.step";
  ExtractOptions shrinking;
  shrinking.shrink = true;
  std::vector<std::string> parts;
  for (const NamedPart& part : read_parts(in)) parts.push_back("#" + std::to_string(part.record));
  const std::vector<ExtractedFile> whole = extract_each(in, parts, "whole");
  const std::vector<ExtractedFile> small = extract_each(in, parts, "small", shrinking);
  ASSERT_EQ(small.size(), whole.size());
  for (std::size_t i = 0; i < small.size(); ++i) {
    const Shrunk shrunk = shrink(whole[i].path, "one.stp", {.renumber = true, .replace = true});
    EXPECT_LT(shrunk.records_after, shrunk.records_before);
    EXPECT_EQ(read_file(small[i].path).substr(read_file(small[i].path).find("DATA;")),
              read_file("one.stp").substr(read_file("one.stp").find("DATA;")));
    EXPECT_EQ(small[i].records, shrunk.records_after);
    EXPECT_EQ(small[i].bytes, fs::file_size(small[i].path));
    EXPECT_TRUE(diff(small[i].path, whole[i].path).is_same) << small[i].path;
  }
  EXPECT_EQ(names_in("small"), names_in("whole"));
}

TEST(ShrunkParts, BodiesToo) {
  const ScratchFolder folder;
  folder.write("in.stp", exchange_file(SHARED_RECORDS + product_records(10, "bolt", "#3,#40,#50") +
                                       solid_records(40) + solid_records(50)));
  const ExtractOptions options{.bodies = true, .shrink = true};
  const std::vector<ExtractedFile> files = extract_each("in.stp", {"bolt"}, "out", options);
  ASSERT_EQ(files.size(), 2u);
  for (const ExtractedFile& file : files) {
    EXPECT_EQ(fs::file_size(file.path), file.bytes);
    EXPECT_EQ(read_parts(file.path).size(), 1u);
  }
  EXPECT_EQ(names_in("out"), (std::set<std::string>{"bolt body 1.stp", "bolt body 2.stp"}));
}

}  // namespace
}  // namespace Kessel::test
