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
#include "support/small_disk.h"

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

class CopiesOfReferring : public ExtractFromReferring {
 protected:
  CopiesOfReferring() {
    copying_ = choices();
    copying_.replace = false;
    copying_.copy_references = true;
  }

  /// What a part's file leads to, as one file: the same as if the input's files had been followed.
  bool leads_to_the_same(const char* part, const fs::path& file) {
    ExtractOptions following = choices();
    following.follow_references = true;
    extract("in/in.stp", part, "followed.stp", following);
    const JoinOptions within{.replace = true};
    join(file, "joined.stp", within);
    return diff("joined.stp", "followed.stp").is_same;
  }

  ExtractOptions copying_;
};

TEST_F(CopiesOfReferring, LieBesideThePartWhichRefersToThem) {
  fs::create_directory("out");
  const ExtractedFile file = extract("in/in.stp", "lid", "out/part.stp", copying_);
  EXPECT_EQ(file.copies, std::vector<fs::path>{"out/lid.stp"});
  EXPECT_EQ(names_in("out"), (std::set<std::string>{"part.stp", "lid.stp"}));
  EXPECT_EQ(read_file("out/lid.stp"), part_in_a_file("lid"));
  EXPECT_NE(read_file("out/part.stp").find("=DOCUMENT_FILE('lid.stp','about it','',$,'',$);\n"),
            std::string::npos);
  EXPECT_EQ(file.bytes, fs::file_size("out/part.stp"));
  fs::rename("out", "elsewhere");
  EXPECT_TRUE(leads_to_the_same("lid", "elsewhere/part.stp"));
}

TEST_F(CopiesOfReferring, MakeWayForThePart) {
  fs::create_directory("out");
  const ExtractedFile file = extract("in/in.stp", "lid", "out/LID.stp", copying_);
  EXPECT_EQ(file.copies, std::vector<fs::path>{"out/lid (2).stp"});
  EXPECT_TRUE(leads_to_the_same("lid", "out/LID.stp"));
}

TEST_F(CopiesOfReferring, OnlyOfWhatThePartRefersTo) {
  folder_.write("in/lid.stp", "no exchange file");
  fs::create_directory("out");
  EXPECT_TRUE(extract("in/in.stp", "own", "out/own.stp", copying_).copies.empty());
  EXPECT_EQ(extract("in/in.stp", "hinge", "out/its.stp", copying_).copies,
            std::vector<fs::path>{"out/hinge.stp"});
  try {
    extract("in/in.stp", "lid", "out/lid.stp", copying_);
    ADD_FAILURE() << "nothing was refused";
  } catch (const InputError& error) {
    EXPECT_EQ(error.finding().kind, FindingKind::not_an_exchange_file);
    EXPECT_EQ(fs::path(error.finding().file).filename(), "lid.stp");
  }
  EXPECT_EQ(names_in("out"), (std::set<std::string>{"own.stp", "its.stp", "hinge.stp"}));
}

// Both parts need the hinge's file, the lid's file by itself.
TEST_F(CopiesOfReferring, OnceForAllParts) {
  folder_.write("in/lid.stp",
                exchange_file(SHARED_RECORDS + product_records(10, "lid", "#3") +
                              product_records(20, "hinge", "#3") + usage_record(60, 10, 20) +
                              reference(70, "T\\X2\\00FC\\X0\\r/hinge.stp", 20)));
  const std::vector<ExtractedFile> files =
      extract_each("in/in.stp", {"own", "lid", "hinge"}, "out", copying_);
  ASSERT_EQ(files.size(), 3u);
  EXPECT_TRUE(files[0].copies.empty());
  EXPECT_EQ(files[1].copies, (std::vector<fs::path>{"out/lid.stp", "out/hinge.stp"}));
  EXPECT_TRUE(files[2].copies.empty());
  EXPECT_EQ(names_in("out"), (std::set<std::string>{"own.stp", "lid (2).stp", "hinge (2).stp",
                                                    "lid.stp", "hinge.stp"}));
  fs::rename("out", "elsewhere");
  EXPECT_TRUE(leads_to_the_same("lid", "elsewhere/lid (2).stp"));
  EXPECT_TRUE(leads_to_the_same("hinge", "elsewhere/hinge (2).stp"));
}

TEST_F(CopiesOfReferring, WhatLiesThereStays) {
  folder_.write("in/T\xC3\xBCr/lid.stp", part_in_a_file("other"));
  std::string input = REFERRING;
  const std::string hinge = "T\\X2\\00FC\\X0\\r/hinge.stp";
  for (std::size_t at = 0; (at = input.find(hinge, at)) != std::string::npos; ++at) {
    input.replace(at, hinge.size(), "T\\X2\\00FC\\X0\\r/lid.stp");
  }
  folder_.write("in/in.stp", exchange_file(input));
  const ExtractedFile file = extract("in/in.stp", "whole", "in/new.stp", copying_);
  EXPECT_EQ(file.copies, std::vector<fs::path>{"in/lid (2).stp"});
  EXPECT_EQ(read_file("in/lid.stp"), part_in_a_file("lid"));
  EXPECT_EQ(read_file("in/lid (2).stp"), part_in_a_file("other"));
  EXPECT_TRUE(leads_to_the_same("whole", "in/new.stp"));
  // Somebody's file is replaced where that is asked for only, and nothing is written otherwise.
  fs::create_directory("far");
  folder_.write("far/lid.stp", "somebody's");
  EXPECT_THROW(extract("in/in.stp", "lid", "far/part.stp", copying_), OutputError);
  EXPECT_EQ(names_in("far"), std::set<std::string>{"lid.stp"});
  EXPECT_EQ(read_file("far/lid.stp"), "somebody's");
  copying_.replace = true;
  extract("in/in.stp", "lid", "far/part.stp", copying_);
  EXPECT_EQ(read_file("far/lid.stp"), part_in_a_file("lid"));
}

// The lid's file is missing; another one of that name must not be taken for it.
TEST_F(CopiesOfReferring, TakeNoNameOfAFileThatIsMissingThere) {
  fs::rename("in/lid.stp", "in/T\xC3\xBCr/lid.stp");
  folder_.write("in/T\xC3\xBCr/hinge.stp",
                exchange_file(SHARED_RECORDS + product_records(10, "hinge", "#3") +
                              product_records(20, "lid", "#3") + usage_record(60, 10, 20) +
                              reference(70, "lid.stp", 20)));
  const ExtractedFile file = extract("in/in.stp", "whole", "in/new.stp", copying_);
  EXPECT_EQ(file.copies, (std::vector<fs::path>{"in/hinge.stp", "in/lid (2).stp"}));
  EXPECT_EQ(warnings_, Sentences{"70: The file \"lid.stp\" that is referred to is not there."});
  EXPECT_NE(read_file("in/hinge.stp").find("'lid (2).stp'"), std::string::npos);
  EXPECT_NE(read_file("in/new.stp").find("=DOCUMENT_FILE('lid.stp',"), std::string::npos);
}

TEST_F(CopiesOfReferring, BodiesReferToThemToo) {
  folder_.write(
      "in/in.stp",
      exchange_file(SHARED_RECORDS + product_records(10, "pair", "#3,#40,#50") + solid_records(40) +
                    solid_records(50) + reference(70, "lid.stp", 10)));
  copying_.bodies = true;
  const std::vector<ExtractedFile> files = extract_each("in/in.stp", {"pair"}, "out", copying_);
  ASSERT_EQ(files.size(), 2u);
  EXPECT_EQ(files[0].copies, std::vector<fs::path>{"out/lid.stp"});
  EXPECT_TRUE(files[1].copies.empty());
  for (const ExtractedFile& file : files) {
    EXPECT_NE(read_file(file.path).find("=DOCUMENT_FILE('lid.stp',"), std::string::npos);
  }
}

TEST_F(CopiesOfReferring, StayInTheInputsFolderUnlessAskedFor) {
  fs::rename("in/lid.stp", "lid.stp");
  fs::create_symlink("../lid.stp", "in/lid.stp");
  try {
    extract("in/in.stp", "lid", "part.stp", copying_);
    ADD_FAILURE() << "nothing was refused";
  } catch (const InputError& error) {
    EXPECT_EQ(error.finding().kind, FindingKind::target_outside);
  }
  EXPECT_FALSE(fs::exists("part.stp"));
  copying_.follow_outside = true;
  fs::create_directory("out");
  EXPECT_EQ(extract("in/in.stp", "lid", "out/part.stp", copying_).copies,
            std::vector<fs::path>{"out/lid.stp"});
  EXPECT_EQ(read_file("out/lid.stp"), part_in_a_file("lid"));
}

TEST_F(CopiesOfReferring, CopyThatDoesNotFitOntoTheDiskLeavesNothing) {
  std::string lid = part_in_a_file("lid");
  lid.insert(lid.find("DATA;"), "/*" + std::string(300000, 'x') + "*/\n");
  folder_.write("in/lid.stp", lid);
  const SmallDisk disk("disk", "size=128k");
  if (!disk.is_there()) GTEST_SKIP() << "needs a small disk";
  try {
    extract("in/in.stp", "lid", "disk/part.stp", copying_);
    ADD_FAILURE() << "nothing was said";
  } catch (const OutputError& error) {
    EXPECT_EQ(error.path(), "disk/lid.stp");
    EXPECT_EQ(error.reason(), std::errc::no_space_on_device);
  }
  EXPECT_TRUE(names_in("disk").empty());
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

TEST(ExtractFromCircle, UsagesThatCloseItAreLeftOutAndToldOf) {
  const ScratchFolder folder;
  const std::string whole = SHARED_RECORDS + product_records(10, "whole", "#3") +
                            product_records(20, "a", "#3,#50") + solid_records(50) +
                            product_records(30, "b", "#3,#90") + solid_records(90) +
                            placed_usage_records(60, 10, 20) + placed_usage_records(70, 20, 30);
  folder.write("in.stp", exchange_file(whole + placed_usage_records(80, 30, 20)));
  folder.write("open.stp", exchange_file(whole));
  const std::string leads_back = "The component of the usage #80 leads back to its assembly; ";
  const struct {
    std::string part;
    std::string told;
    std::vector<std::string> more;  ///< than without that usage
  } cases[] = {
      {"#10",
       leads_back + "the usage stands in the root's file.",
       {"ITEM_DEFINED_TRANSFORMATION", "CONTEXT_DEPENDENT_SHAPE_REPRESENTATION",
        "REPRESENTATION_RELATIONSHIP REPRESENTATION_RELATIONSHIP_WITH_TRANSFORMATION "
        "SHAPE_REPRESENTATION_RELATIONSHIP",
        "NEXT_ASSEMBLY_USAGE_OCCURRENCE", "PRODUCT_DEFINITION_SHAPE"}},
      {"#20", leads_back + "the usage is left out.", {"ITEM_DEFINED_TRANSFORMATION"}},
      {"#30", leads_back + "the usage is left out.", {"ITEM_DEFINED_TRANSFORMATION"}},
  };
  for (const auto& [part, sentence, more] : cases) {
    ExtractOptions options;
    options.replace = true;
    std::vector<std::string> told;
    options.warning = [&](const Finding& finding) {
      EXPECT_EQ(finding.kind, FindingKind::usage_cycle);
      EXPECT_EQ(finding.instance, 80u);
      told.push_back(finding.sentence);
    };
    extract("in.stp", part, "out.stp", options);
    EXPECT_EQ(told, std::vector<std::string>{sentence});
    options.warning = nullptr;
    extract("open.stp", part, "expected.stp", options);
    std::vector<std::string> types;
    for (const ProductDifference& product : diff("expected.stp", "out.stp").products) {
      for (const TypeDifference& type : product.types) {
        EXPECT_TRUE(type.only_in_a.empty() && type.changed.empty()) << part << type.type;
        EXPECT_EQ(type.only_in_b.size(), 1u) << part << type.type;
        types.push_back(type.type);
      }
    }
    EXPECT_EQ(types, more) << part;
  }
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
