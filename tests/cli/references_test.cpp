// Inputs that refer to other files, on the command line.
#include <gtest/gtest.h>

#include <filesystem>
#include <nlohmann/json.hpp>
#include <set>
#include <string>
#include <vector>

#include "cli/run_process.h"
#include "inspection/products.h"
#include "support/folder_tree.h"
#include "support/scratch_folder.h"
#include "support/shell.h"

namespace Kessel::test {
namespace {

namespace fs = std::filesystem;
using Json = nlohmann::json;

/// What a split says that leaves the lid where it is.
const std::string ELSEWHERE =
    "velkstep: in/in.stp:20:1: A shape is in the file \"lid.stp\", which is only referred to. "
    "--follow "
    "reads it, too.\n";

/// The box with a lid, whose shape is in the file "lid.stp" beside it.
class InputWithReferences : public testing::Test {
 protected:
  InputWithReferences() {
    fs::create_directory("in");
    folder_.write("in/in.stp", exchange_file(INPUT));
    folder_.write("in/lid.stp",
                  exchange_file("#1=PRODUCT('lid','lid','',());\n"
                                "#2=PRODUCT_DEFINITION_FORMATION('','',#1);\n"
                                "#3=PRODUCT_DEFINITION('d','',#2,$);\n"
                                "#4=PRODUCT_DEFINITION_SHAPE('','',#3);\n"
                                "#5=SHAPE_DEFINITION_REPRESENTATION(#4,#6);\n"
                                "#6=SHAPE_REPRESENTATION('lid',(#7),#8);\n"
                                "#7=MANIFOLD_SOLID_BREP('its',$);\n"
                                "#8=GEOMETRIC_REPRESENTATION_CONTEXT('id','3D',3);\n"));
  }

  static inline const std::string INPUT = std::string(BOX_WITH_LID) +
                                          "#20=DOCUMENT_FILE('lid.stp','','',$,'',$);\n"
                                          "#21=APPLIED_DOCUMENT_REFERENCE(#20,'',(#6));\n";
  ScratchFolder folder_;
};

TEST_F(InputWithReferences, NamesAreSeenFromTheFolderThatFilesArriveIn) {
  const ProcessRun run = run_velkstep({"split", "in/in.stp", "-o", "far/out"});
  EXPECT_EQ(run.exit_code, 0);
  EXPECT_EQ(run.errors, ELSEWHERE);
  EXPECT_NE(read_file("far/out/lid (2).stp").find("=DOCUMENT_FILE('../../in/lid.stp',"),
            std::string::npos);
  fs::remove("in/lid.stp");
  const ProcessRun missing = run_velkstep({"split", "in/in.stp", "-o", "out"});
  EXPECT_EQ(missing.exit_code, 0);
  EXPECT_EQ(
      missing.errors,
      "velkstep: in/in.stp:20:1: The file \"lid.stp\" that is referred to is not there. Put it "
      "there, or what is in it is missing.\n");
}

TEST_F(InputWithReferences, CopiesArriveWithTheFiles) {
  const ProcessRun run =
      run_velkstep({"split", "in/in.stp", "-o", "out", "--copy-references", "--json"});
  EXPECT_EQ(run.exit_code, 0) << run.errors;
  const Json files = Json::parse(run.out)["files"];
  ASSERT_EQ(files.size(), 3u);
  EXPECT_EQ(files[2]["file"], "lid.stp");
  EXPECT_EQ(files[2]["kind"], "copy");
  EXPECT_EQ(files[2]["record"], nullptr);
  EXPECT_EQ(files[2]["parents"], Json::array());
  EXPECT_EQ(files[0]["children"], Json::array({1}));
  EXPECT_EQ(read_file("out/lid.stp"), read_file("in/lid.stp"));
  EXPECT_EQ(run_velkstep({"verify", "in/in.stp", "out"}).exit_code, 0);
}

TEST_F(InputWithReferences, CompressedOnesAreCopied) {
  // The lid's file refers to another in turn, and then its copy names that beside it.
  fs::create_directory("in/far");
  folder_.write("in/far/pin.stp", read_file("in/lid.stp"));
  const std::string lid = read_file("in/lid.stp");
  const auto compress = [](const std::string& path) {
    return run_in_shell("gzip " + path + " && mv " + path + ".gz " + path).status;
  };
  ASSERT_EQ(compress("in/far/pin.stp"), 0);
  for (const bool refers : {false, true}) {
    std::string text = lid;
    if (refers) {
      text.insert(text.find("ENDSEC;\nEND-ISO"),
                  "#20=DOCUMENT_FILE('far/pin.stp','','',$,'',$);\n"
                  "#21=APPLIED_DOCUMENT_REFERENCE(#20,'',(#3));\n");
    }
    folder_.write("in/lid.stp", text);
    ASSERT_EQ(compress("in/lid.stp"), 0);
    const ProcessRun run =
        run_velkstep({"split", "in/in.stp", "-o", "out", "--copy-references", "--force"});
    EXPECT_EQ(run.exit_code, 0) << run.errors;
    if (refers) {
      EXPECT_NE(read_file("out/lid.stp").find("=DOCUMENT_FILE('pin.stp',"), std::string::npos);
      EXPECT_EQ(read_file("out/pin.stp"), read_file("in/far/pin.stp"));
    } else {
      EXPECT_EQ(read_file("out/lid.stp"), read_file("in/lid.stp"));
    }
    const ProcessRun verified = run_velkstep({"verify", "in/in.stp", "out"});
    EXPECT_EQ(verified.exit_code, 0) << verified.out;
    EXPECT_EQ(run_velkstep({"extract", "in/in.stp", "--part=lid", "-o", "one.stp", "--force",
                            "--copy-references"})
                  .exit_code,
              0);
    EXPECT_EQ(read_file("lid.stp"), read_file("out/lid.stp"));
  }
}

TEST_F(InputWithReferences, CopiesArriveBesideAnExtractedPart) {
  const ProcessRun run =
      run_velkstep({"extract", "in/in.stp", "--part=lid", "-o", "one.stp", "--copy-references"});
  EXPECT_EQ(run.exit_code, 0) << run.errors;
  EXPECT_EQ(run.out, "one.stp: 10 records\nlid.stp: copied\n");
  EXPECT_EQ(read_file("lid.stp"), read_file("in/lid.stp"));
  const ProcessRun again =
      run_velkstep({"extract", "in/in.stp", "--part=lid", "-o", "two.stp", "--copy-references"});
  EXPECT_EQ(again.exit_code, 1);
  EXPECT_EQ(again.errors, "velkstep: lid.stp: is there already; --force replaces it\n");
  EXPECT_FALSE(fs::exists("two.stp"));
  const ProcessRun json = run_velkstep({"extract", "in/in.stp", "--part=lid", "-o", "two.stp",
                                        "--copy-references", "--force", "--json"});
  EXPECT_EQ(Json::parse(json.out)["files"][0]["copies"], Json::array({"lid.stp"}));
  EXPECT_EQ(run_velkstep({"extract", "in/in.stp", "--part=lid", "-o", "two.stp", "--follow",
                          "--copy-references"})
                .exit_code,
            2);
  // Of a part that is split, too.
  const ProcessRun split =
      run_velkstep({"split", "in/in.stp", "--part=box", "-o", "out", "--copy-references"});
  EXPECT_EQ(split.exit_code, 0) << split.errors;
  EXPECT_EQ(read_file("out/lid.stp"), read_file("in/lid.stp"));
  EXPECT_NE(read_file("out/lid (2).stp").find("=DOCUMENT_FILE('lid.stp',"), std::string::npos);
}

TEST_F(InputWithReferences, CopiesOfAnOlderSplitGo) {
  ASSERT_EQ(run_velkstep({"split", "in/in.stp", "-o", "out", "--copy-references"}).exit_code, 0);
  EXPECT_TRUE(fs::exists("out/lid.stp"));
  const ProcessRun again = run_velkstep({"split", "in/in.stp", "-o", "out", "--force"});
  EXPECT_EQ(again.exit_code, 0) << again.errors;
  EXPECT_FALSE(fs::exists("out/lid.stp"));
  EXPECT_NE(read_file("out/lid (2).stp").find("'../in/lid.stp'"), std::string::npos);
  // Not what somebody changed since.
  ASSERT_EQ(run_velkstep({"split", "in/in.stp", "-o", "out", "-f", "--copy-references"}).exit_code,
            0);
  folder_.write("out/lid.stp", "somebody's");
  EXPECT_EQ(run_velkstep({"split", "in/in.stp", "-o", "out", "--force"}).errors,
            ELSEWHERE +
                "velkstep: out: 1 file of an earlier split changed since, and stays; remove it "
                "where not needed: lid.stp\n");
  EXPECT_EQ(read_file("out/lid.stp"), "somebody's");
}

TEST_F(InputWithReferences, FollowedAsOneAssembly) {
  const ProcessRun run = run_velkstep({"split", "in/in.stp", "-o", "out", "--follow", "--json"});
  EXPECT_EQ(run.exit_code, 0) << run.errors;
  EXPECT_EQ(Json::parse(run.out)["files"].size(), 2u);
  EXPECT_NE(read_file("out/lid.stp").find("MANIFOLD_SOLID_BREP('its',$)"), std::string::npos);
  EXPECT_EQ(
      run_velkstep({"split", "in/in.stp", "-o", "o", "--follow", "--copy-references"}).exit_code,
      2);
  EXPECT_EQ(
      run_velkstep({"split", "in/in.stp", "-o", "o", "--follow", "--assemblies=classic"}).exit_code,
      2);
}

TEST_F(InputWithReferences, WhatWasFollowedIsVerifiedWithAllThatItRefersTo) {
  EXPECT_EQ(run_velkstep({"split", "in/in.stp", "-o", "out", "--follow"}).exit_code, 0);
  const ProcessRun followed = run_velkstep({"verify", "--follow", "in/in.stp", "out"});
  EXPECT_EQ(followed.exit_code, 0) << followed.out;
  EXPECT_EQ(followed.errors, "");
  const ProcessRun alone = run_velkstep({"verify", "in/in.stp", "out"});
  EXPECT_EQ(alone.exit_code, 1);
  EXPECT_EQ(alone.errors,
            "velkstep: in/in.stp: refers to other files; what was split with --follow is verified "
            "with --follow\n");
  folder_.write("in/lid.stp", "hello");
  const ProcessRun broken = run_velkstep({"verify", "--follow", "in/in.stp", "out"});
  EXPECT_EQ(broken.exit_code, 1);
  EXPECT_EQ(broken.out.find("in/in.stp: error: \"lid.stp\": The file is no exchange file"), 0u)
      << broken.out;
}

TEST_F(InputWithReferences, ShapesThatStayElsewhereAreTold) {
  EXPECT_EQ(run_velkstep({"split", "in/in.stp", "-o", "kept"}).errors, ELSEWHERE);
  EXPECT_EQ(run_velkstep({"split", "in/in.stp", "-qo", "quiet"}).errors, "");
  EXPECT_EQ(run_velkstep({"split", "in/in.stp", "-o", "copied", "--copy-references"}).errors, "");
  EXPECT_EQ(run_velkstep({"split", "in/in.stp", "-o", "followed", "--follow"}).errors, "");
}

TEST_F(InputWithReferences, FollowingWantsAFolderForTemporaryFiles) {
  const ProcessRun run =
      run_velkstep({"tree", "--follow", "in/in.stp"}, {.environment = {{"TMPDIR", "/nowhere"}}});
  EXPECT_EQ(run.exit_code, 1);
  EXPECT_EQ(run.errors,
            "velkstep: in/in.stp: no temporary file in /nowhere: No such file or directory; TMPDIR "
            "names another folder for it\n");
}

TEST_F(InputWithReferences, SplitOnceMoreItsFilesAreCalledTheSame) {
  EXPECT_EQ(run_velkstep({"split", "in/in.stp", "-o", "once", "--follow"}).exit_code, 0);
  const std::set<std::string> names = names_in("once");
  EXPECT_TRUE(names.contains("box.stp") && names.contains("lid.stp"))
      << testing::PrintToString(names);
  EXPECT_EQ(run_velkstep({"split", "once/box.stp", "-o", "twice", "--follow"}).exit_code, 0);
  EXPECT_EQ(names_in("twice"), names);
  EXPECT_EQ(run_velkstep({"tree", "--bom", "--follow", "--csv", "once/box.stp"}).out,
            run_velkstep({"tree", "--bom", "--follow", "--csv", "twice/box.stp"}).out);
  // Beside the files that are read, others take other names, and nothing that is read goes.
  const std::string before = read_file("once/lid.stp");
  const ProcessRun run = run_velkstep({"split", "once/box.stp", "-fo", "once", "--follow"});
  EXPECT_EQ(run.exit_code, 0) << run.errors;
  EXPECT_EQ(read_file("once/lid.stp"), before);
  EXPECT_TRUE(fs::exists("once/lid (2).stp"));
}

TEST_F(InputWithReferences, CompressedOnesAreFollowed) {
  const std::vector<std::vector<std::string>> commands = {
      {"split", "in/in.stp", "-o", "out/all", "--follow"},
      {"split", "in/in.stp", "--part=lid", "-o", "out/lid", "--follow"},
      {"extract", "in/in.stp", "--part=lid", "-o", "out/one.stp", "--follow"},
  };
  const auto written = [&] {
    fs::remove_all("out");
    fs::create_directory("out");
    for (const auto& command : commands) {
      const ProcessRun run = run_velkstep(command);
      EXPECT_EQ(run.exit_code, 0) << run.errors;
    }
    std::vector<std::string> records;
    for (const char* const file : {"out/all/lid.stp", "out/lid/lid.stp", "out/one.stp"}) {
      const std::string text = read_file(file);
      EXPECT_NE(text.find("MANIFOLD_SOLID_BREP('its',$)"), std::string::npos) << file;
      records.push_back(text.substr(text.find("DATA;")));
    }
    records.push_back(run_velkstep({"extract", "in/in.stp", "--list", "--follow"}).out);
    return records;
  };
  const auto plain = written();
  ASSERT_EQ(run_in_shell("gzip in/lid.stp && mv in/lid.stp.gz in/lid.stp").status, 0);
  EXPECT_EQ(written(), plain);
}

TEST_F(InputWithReferences, APartKeepsItsOwn) {
  fs::create_directory("far");
  EXPECT_EQ(run_velkstep({"extract", "in/in.stp", "--part=lid", "-o", "far/one.stp"}).exit_code, 0);
  EXPECT_NE(read_file("far/one.stp").find("=DOCUMENT_FILE('../in/lid.stp',"), std::string::npos);
  const ProcessRun followed =
      run_velkstep({"extract", "in/in.stp", "--part=lid", "-o", "one.stp", "--follow"});
  EXPECT_EQ(followed.exit_code, 0) << followed.errors;
  EXPECT_NE(read_file("one.stp").find("MANIFOLD_SOLID_BREP('its',$)"), std::string::npos);
  EXPECT_EQ(read_file("one.stp").find("DOCUMENT"), std::string::npos);
  EXPECT_EQ(run_velkstep({"split", "in/in.stp", "--part=lid", "-o", "far/split"}).exit_code, 0);
  EXPECT_NE(read_file("far/split/lid (2).stp").find("=DOCUMENT_FILE('../../in/lid.stp',"),
            std::string::npos);
  const ProcessRun split =
      run_velkstep({"split", "in/in.stp", "--part=lid", "-o", "split", "--follow"});
  EXPECT_EQ(split.exit_code, 0) << split.errors;
  EXPECT_NE(read_file("split/lid.stp").find("MANIFOLD_SOLID_BREP('its',$)"), std::string::npos);
  const ProcessRun shrunk = run_velkstep(
      {"extract", "in/in.stp", "--part=lid", "-o", "small.stp", "--follow", "--shrink"});
  EXPECT_EQ(shrunk.exit_code, 0) << shrunk.errors;
  EXPECT_EQ(run_velkstep({"diff", "one.stp", "small.stp"}).exit_code, 0);
}

TEST_F(InputWithReferences, LookingFollowsThemWhereAsked) {
  const ProcessRun tree = run_velkstep({"tree", "in/in.stp"});
  EXPECT_NE(tree.out.find("shape in lid.stp"), std::string::npos) << tree.out;
  const ProcessRun followed = run_velkstep({"tree", "--follow", "in/in.stp"});
  EXPECT_EQ(followed.errors, "");
  EXPECT_EQ(followed.out.find("shape in"), std::string::npos) << followed.out;
  const auto records = [](const ProcessRun& run) {
    EXPECT_EQ(run.errors, "");
    return Json::parse(run.out)["records"].get<int>();
  };
  ASSERT_EQ(run_velkstep({"join", "in/in.stp", "-o", "one.stp"}).exit_code, 0);
  EXPECT_EQ(records(run_velkstep({"info", "--json", "--follow", "in/in.stp"})),
            records(run_velkstep({"info", "--json", "one.stp"})));
  fs::rename("in/lid.stp", "lid.stp");
  fs::create_symlink("../lid.stp", "in/lid.stp");
  for (const char* const command : {"tree", "info"}) {
    EXPECT_EQ(run_velkstep({command, "--follow", "in/in.stp"}).exit_code, 1);
    EXPECT_EQ(run_velkstep({command, "--follow", "--follow-outside", "in/in.stp"}).exit_code, 0);
  }
}

TEST_F(InputWithReferences, FollowingTellsWhatJoiningTells) {
  const auto add_to = [&](const std::string& path, const std::string& text) {
    folder_.write(path, read_file(path) + text);
  };
  ASSERT_EQ(run_velkstep({"split", "in/in.stp", "-o", "parts", "--follow"}).exit_code, 0);
  std::string lid = read_file("parts/lid.stp");
  lid.replace(lid.find("PRODUCT('lid',"), 14, "PRODUCT('lie',");
  folder_.write("parts/lid.stp", lid);
  add_to("in/lid.stp", "#9=A();\n#10=A();\n");
  add_to("in/in.stp", "more\n");
  const struct {
    std::string in;
    std::string joined;
    std::string told;
  } inputs[] = {
      {"in/in.stp",
       "in/in.stp:24:1: warning: Text stands behind \"END-ISO-10303-21;\"; it is left out.\n"
       "in/lid.stp:18:1: warning: Text stands behind \"END-ISO-10303-21;\"; it is left out.\n",
       "velkstep: in/in.stp:24:1: Text stands behind \"END-ISO-10303-21;\"; it is left out. 1 more "
       "like it.\n"},
      {"parts/box.stp",
       "parts/lid.stp: warning: #2 says something else than its copy in another file, which is "
       "taken. Undo the change in one of them if it is the wrong one.\n",
       "velkstep: parts/lid.stp: #2 says something else than its copy in another file, which is "
       "taken. Undo the change in one of them if it is the wrong one.\n"},
  };
  for (const auto& [in, joined, told] : inputs) {
    EXPECT_EQ(run_velkstep({"join", in, "-o", "joined.stp", "--force"}).errors, joined);
    const std::vector<std::vector<std::string>> commands = {
        {"split", "-o", "out", "--force"},
        {"split", "--part=lid", "-o", "lid", "--force"},
        {"extract", "--part=lid", "-o", "lid.stp", "--force"},
        {"extract", "--list"},
        {"tree"},
        {"info"},
        {"picture", "-o", "box.svg", "--force"},
    };
    for (std::vector<std::string> command : commands) {
      command.insert(command.end(), {"--follow", in});
      const ProcessRun run = run_velkstep(command);
      EXPECT_EQ(run.exit_code, 0) << command.front();
      const bool is_picture = command.front() == "picture";
      EXPECT_EQ(run.errors.substr(0, is_picture ? told.size() : run.errors.size()), told)
          << command.front();
    }
    const ProcessRun verified = run_velkstep({"verify", "--follow", in, "out"});
    EXPECT_EQ(verified.exit_code, 4) << verified.out;
    EXPECT_EQ(run_velkstep({"split", "-qo", "out", "--force", "--follow", in}).errors, "");
  }
}

TEST_F(InputWithReferences, WarningsOfAPartAreThoseOfTheInput) {
  folder_.write("in/in.stp", exchange_file(INPUT + "#30=A(#99);\n") + "more\n");
  EXPECT_EQ(
      run_velkstep({"split", "--part=box", "in/in.stp", "-o", "out"}).errors,
      "velkstep: in/in.stp:25:1: Text stands behind \"END-ISO-10303-21;\"; it is left out.\n" +
          ELSEWHERE + "velkstep: in/in.stp: 1 warning; velkstep check in/in.stp lists it\n");
}

TEST_F(InputWithReferences, CheckingFollowsThemWhereAsked) {
  std::string lid = read_file("in/lid.stp");
  folder_.write("in/lid.stp", lid.insert(lid.find("#1="), ";\n"));
  EXPECT_EQ(run_velkstep({"check", "in/in.stp"}).exit_code, 0);
  const ProcessRun run = run_velkstep({"check", "--follow", "in/in.stp"});
  EXPECT_EQ(run.exit_code, 4);
  EXPECT_EQ(run.errors, "");
  EXPECT_TRUE(run.out.starts_with("in/lid.stp:")) << run.out;
  EXPECT_TRUE(run.out.ends_with(": warning: Nothing stands in front of this \";\".\n")) << run.out;
  const ProcessRun told = run_velkstep({"check", "--follow", "--json", "in/in.stp"});
  EXPECT_EQ(Json::parse(told.out)["findings"][0]["file"], "lid.stp");
  ASSERT_EQ(run_in_shell("gzip in/lid.stp && mv in/lid.stp.gz in/lid.stp").status, 0);
  EXPECT_EQ(run_velkstep({"check", "--follow", "in/in.stp"}).out, run.out);
}

TEST_F(InputWithReferences, JoinKeepsWhatIsMissingWhereAsked) {
  fs::remove("in/lid.stp");
  EXPECT_EQ(run_velkstep({"join", "in/in.stp", "-o", "one.stp"}).exit_code, 1);
  const ProcessRun run = run_velkstep({"join", "in/in.stp", "-o", "one.stp", "--allow-missing"});
  EXPECT_EQ(run.exit_code, 0);
  EXPECT_NE(
      run.errors.find("in/in.stp:20:1: warning: The file \"lid.stp\" that is referred to is not "
                      "there. Put it there, and join again, to have it in the result.\n"),
      std::string::npos)
      << run.errors;
  EXPECT_NE(read_file("one.stp").find("=DOCUMENT_FILE('in/lid.stp',"), std::string::npos);
  const ProcessRun quiet =
      run_velkstep({"join", "-q", "in/in.stp", "-o", "again.stp", "--allow-missing"});
  EXPECT_EQ(quiet.errors, "");
}

}  // namespace
}  // namespace Kessel::test
