// velkstep split: what it prints, writes and returns.
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <algorithm>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <set>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

#include "cli/run_process.h"
#include "kessel/part.h"
#include "kessel/split_list.h"
#include "kessel/splitter.h"
#include "splitter/small_inputs.h"
#include "support/folder_tree.h"
#include "support/product_records.h"
#include "support/scratch_folder.h"
#include "support/shell.h"

namespace Kessel::test {
namespace {

namespace fs = std::filesystem;

/// The list of a split of the box, of which the input is called so.
std::string list_of_box(const std::string& input) {
  // Time stamps are longer than what stands for them here.
  const auto entry = [](const std::string& name, const char* record, std::string_view records) {
    return "  {\"file\": \"" + name + ".stp\", \"record\": " + record + ", \"id\": \"" + name +
           "\", \"name\": \"" + name +
           "\", \"bytes\": " + std::to_string(nested_file(name + ".stp", records).size() + 25 - 6) +
           ", \"hash\": \"<hash>\"}";
  };
  return "{\n \"format\": 1,\n \"program\": \"velkstep " VELKSTEP_VERSION
         "\",\n \"options\": {\"assemblies\": \"nested\", \"names\": \"product\", \"reading\": "
         "\"standard\"},\n \"input\": {\"name\": \"" +
         input + "\", \"bytes\": " + std::to_string(exchange_file(BOX_WITH_LID).size()) +
         "},\n \"root\": \"box.stp\",\n \"hash\": \"XXH64\",\n \"files\": [\n" +
         entry("box", "3", NESTED_BOX_RECORDS) + ",\n" + entry("lid", "6", NESTED_LID_RECORDS) +
         "\n ]\n}\n";
}

class SplitCommand : public testing::Test {
 protected:
  /// Expects that the command fails with this one line.
  void expect_failure(const std::string& in, const std::string& outdir, const std::string& line,
                      std::vector<std::string> options = {}) {
    options.insert(options.begin(), "split");
    options.insert(options.end(), {in, "-o", outdir});
    const ProcessRun run = run_velkstep(options);
    EXPECT_EQ(run.exit_code, 1);
    EXPECT_EQ(run.out, "");
    EXPECT_EQ(run.errors, line);
  }

  void expect_unopened(const std::string& in, const std::string& reason) {
    expect_failure(in, "out",
                   "velkstep: " + (in.empty() ? "''" : in) +
                       ": The file cannot be opened: " + reason + ". Check its name.\n");
  }

  fs::path write_box() { return folder_.write("in.stp", exchange_file(BOX_WITH_LID)); }

  ScratchFolder folder_;
};

TEST_F(SplitCommand, WritesTheFilesAndPrintsThemOnePerLine) {
  write_box();
  const ProcessRun run = run_velkstep({"split", "in.stp", "out"});
  EXPECT_EQ(run.exit_code, 0);
  EXPECT_EQ(run.out, "out/box.stp\nout/lid.stp\n");
  EXPECT_EQ(run.errors, "");
  EXPECT_EQ(tree_of("out"), (FolderTree{{"box.stp", nested_file("box.stp", NESTED_BOX_RECORDS)},
                                        {"lid.stp", nested_file("lid.stp", NESTED_LID_RECORDS)},
                                        {"roots.txt", "box.stp\n"},
                                        {SPLIT_LIST, list_of_box("in.stp")}}));
  EXPECT_FALSE(fs::exists("roots.txt"));
}

TEST_F(SplitCommand, ClassicLeavesWhatHostsGet) {
  write_box();
  const ProcessRun run = run_velkstep({"split", "--classic", "in.stp", "./out"});
  EXPECT_EQ(run.exit_code, 0);
  EXPECT_EQ(run.out, "out/#1_part.stp\nout/#4_part.stp\n");
  EXPECT_EQ(run.errors, "");
  FolderTree expected = {
      {"#1_part.stp", output_file("./out/#1_part.stp", BOX_RECORDS)},
      {"#4_part.stp", output_file("./out/#4_part.stp", LID_RECORDS)},
      {"roots.txt", "#1_part.stp\n"},
  };
  EXPECT_EQ(tree_of("out"), expected);

  // As it is for hosts, but for the working directory's list of roots.
  fs::remove_all("out");
  Kessel::Run("in.stp", "./out");
  Part::free_statics();
  fs::rename("roots.txt", "out/roots.txt");
  EXPECT_EQ(tree_of("out"), expected);
}

TEST_F(SplitCommand, ClassicIsAllThreeChoices) {
  folder_.write("in.stp", exchange_file(std::string(BOX_WITH_LID) + "#20=A('x;y');\n"));
  EXPECT_EQ(run_velkstep({"split", "--classic", "in.stp", "a"}).exit_code, 0);
  EXPECT_EQ(run_velkstep({"split", "--assemblies=classic", "--names=record", "--reading=classic",
                          "in.stp", "b"})
                .exit_code,
            0);
  EXPECT_EQ(read_file("a/#4_part.stp").find("A('x;y')"), std::string::npos);
  FolderTree a = tree_of("a");
  for (auto& [name, text] : a) {
    const std::size_t folder = text.find("'a/#");
    if (folder != std::string::npos) text[folder + 1] = 'b';
  }
  EXPECT_EQ(a, tree_of("b"));
  for (const char* choice : {"--assemblies=lean", "--names=product", "--reading=standard"}) {
    const ProcessRun run = run_velkstep({"split", "--classic", choice, "in.stp", "c"});
    EXPECT_EQ(run.exit_code, 2);
    EXPECT_TRUE(run.errors.find(" excludes --classic\n") != std::string::npos) << run.errors;
  }
  EXPECT_FALSE(fs::exists("c"));
}

TEST_F(SplitCommand, PrintsTheRootsFileFirst) {
  folder_.write("in.stp", exchange_file("#1=PRODUCT('lid','lid','',());\n"
                                        "#2=PRODUCT_DEFINITION_FORMATION('','',#1);\n"
                                        "#3=PRODUCT_DEFINITION('d','',#2,$);\n"
                                        "#4=PRODUCT('box','box','',());\n"
                                        "#5=PRODUCT_DEFINITION_FORMATION('','',#4);\n"
                                        "#6=PRODUCT_DEFINITION('d','',#5,$);\n"
                                        "#7=NEXT_ASSEMBLY_USAGE_OCCURRENCE('1','','',#6,#3,$);\n"));
  const ProcessRun run = run_velkstep({"split", "in.stp", "./out/."});
  EXPECT_EQ(run.exit_code, 0);
  EXPECT_EQ(run.out, "out/box.stp\nout/lid.stp\n");
  EXPECT_EQ(run.errors, "");
}

const std::string NOTHING_TO_SPLIT =
    "velkstep: in.stp: holds one part or none, of which a classic split makes nothing; without "
    "--classic it is copied\n";

TEST_F(SplitCommand, OnePartIsCopied) {
  folder_.write("in.stp", exchange_file(LID_WITH_SHAPE));
  for (const char* style : {"--assemblies=nested", "--assemblies=lean"}) {
    const ProcessRun run = run_velkstep({"split", style, "in.stp", "-o", "./out"});
    EXPECT_EQ(run.exit_code, 0);
    EXPECT_EQ(run.out, "out/lid.stp\n");
    EXPECT_EQ(run.errors, "velkstep: in.stp: holds one part only; out/lid.stp is a copy of it\n");
    EXPECT_EQ(names_in("out"), (std::set<std::string>{"lid.stp", "roots.txt", SPLIT_LIST}));
    EXPECT_EQ(read_file("out/lid.stp"), read_file("in.stp"));
    EXPECT_EQ(run_velkstep({"diff", "in.stp", "out/lid.stp"}).exit_code, 0);
    EXPECT_EQ(run_velkstep({"verify", "in.stp", "out"}).errors, "");
    EXPECT_EQ(run_velkstep({"verify", "in.stp", "out"}).exit_code, 0);
    EXPECT_EQ(run_velkstep({"join", "out", "-f", "-o", "one.stp"}).exit_code, 0);
    EXPECT_EQ(run_velkstep({"diff", "in.stp", "one.stp"}).exit_code, 0);
    fs::remove_all("out");
  }
  const ProcessRun quiet = run_velkstep({"split", "--quiet", "in.stp", "-o", "out"});
  EXPECT_EQ(quiet.exit_code, 0);
  EXPECT_EQ(quiet.out + quiet.errors, "");
}

TEST_F(SplitCommand, NoPartIsCopiedUnderTheInputsName) {
  fs::create_directory("deep");
  folder_.write("deep/points.step", exchange_file("#1=CARTESIAN_POINT('',(0.,0.,0.));\n"));
  const ProcessRun run = run_velkstep({"split", "deep/points.step", "-o", "out"});
  EXPECT_EQ(run.exit_code, 0);
  EXPECT_EQ(run.out, "out/points.stp\n");
  EXPECT_EQ(run.errors,
            "velkstep: deep/points.step: holds no part; out/points.stp is a copy of it\n");
  EXPECT_EQ(read_file("out/points.stp"), read_file("deep/points.step"));
  const ProcessRun piped =
      run_velkstep({"split", "-", "-o", "piped"}, {.standard_input = "deep/points.step"});
  EXPECT_EQ(piped.exit_code, 0);
  EXPECT_EQ(piped.out, "piped/Root.stp\n");
  EXPECT_EQ(piped.errors,
            "velkstep: standard input: holds no part; piped/Root.stp is a copy of it\n");
}

TEST_F(SplitCommand, OtherWarningsAreCountedApart) {
  folder_.write("in.stp", exchange_file(std::string(LID_WITH_SHAPE) + "#90=A(#99);\n"));
  const ProcessRun run = run_velkstep({"split", "in.stp", "-o", "out"});
  EXPECT_EQ(run.exit_code, 0);
  EXPECT_EQ(run.errors,
            "velkstep: in.stp: holds one part only; out/lid.stp is a copy of it\n"
            "velkstep: in.stp: 1 warning; velkstep check in.stp lists it\n");
}

TEST_F(SplitCommand, WhatASplitAloneWarnsOfIsTold) {
  std::string text = SHARED_RECORDS + product_records(10, "car", "#3") +
                     product_records(20, "wheel", "#3,#40") + solid_records(40) +
                     placed_usage_records(60, 10, 20) + placed_usage_records(70, 10, 20) +
                     "#80=STYLED_ITEM('',(#81),#40);\n#81=NULL_STYLE(.NULL.);\n";
  for (const char* number : {"90", "91"}) {
    text += std::string("#") + number +
            "=CONTEXT_DEPENDENT_OVER_RIDING_STYLED_ITEM('',(#81),#40,#80,(#63));\n";
  }
  folder_.write("in.stp", exchange_file(text));
  const ProcessRun run = run_velkstep({"split", "in.stp", "-o", "out"});
  EXPECT_EQ(run.exit_code, 0);
  EXPECT_EQ(run.errors,
            "velkstep: in.stp:38:1: The style #90 is for one of several occurrences of a part "
            "whose shape is in another file; readers may show it on all of them or on none. 1 more "
            "like it.\n");
}

TEST_F(SplitCommand, HashesOfTheListAreThoseOfXxhsum) {
  if (run_in_shell("xxhsum --version 2>&1").out.empty()) GTEST_SKIP() << "xxhsum is missing";
  write_box();
  EXPECT_EQ(run_velkstep({"split", "in.stp", "-o", "out"}).exit_code, 0);
  // Its lists have the hash first.
  EXPECT_EQ(
      run_in_shell("sed -n 's/.*\"file\": \"\\([^\"]*\\)\".*\"hash\": \"\\([^\"]*\\)\".*/"
                   "\\2  \\1/p' out/velkstep-split.json > sums && cd out && xxhsum -c ../sums "
                   "2>/dev/null; echo $?")
          .out,
      "box.stp: OK\nlid.stp: OK\n0\n");
}

TEST_F(SplitCommand, OnePartIsNothingToSplitToHosts) {
  folder_.write("in.stp", exchange_file(LID_ALONE));
  const ProcessRun run = run_velkstep({"split", "--classic", "in.stp", "out"});
  EXPECT_EQ(run.exit_code, 3);
  EXPECT_EQ(run.out, "");
  EXPECT_EQ(run.errors, std::string(ONLY_ONE_PART) + NOTHING_TO_SPLIT);
  EXPECT_FALSE(fs::exists("roots.txt"));
}

TEST_F(SplitCommand, NoPartsAreNothingToSplitToHosts) {
  folder_.write("in.stp", exchange_file("#1=PRODUCT('lid','lid','',());\n"));
  const ProcessRun run = run_velkstep({"split", "--classic", "in.stp", "out"});
  EXPECT_EQ(run.exit_code, 3);
  EXPECT_EQ(run.out, "");
  EXPECT_EQ(run.errors, std::string(NO_ROOT) + NOTHING_TO_SPLIT);
  EXPECT_FALSE(fs::exists("roots.txt"));
}

TEST_F(SplitCommand, PartsWithoutARootAreWrittenWithTheLibrarysSentenceToHosts) {
  folder_.write("in.stp", exchange_file(CYCLE));
  const ProcessRun run = run_velkstep({"split", "--classic", "in.stp", "out"});
  EXPECT_EQ(run.exit_code, 0);
  EXPECT_EQ(run.out, "out/#1_part.stp\nout/#4_part.stp\n");
  EXPECT_EQ(run.errors, NO_ROOT);
}

TEST_F(SplitCommand, InputThatCannotBeOpened) {
  expect_unopened("missing.stp", "No such file or directory");
  expect_unopened("missing/in.stp", "No such file or directory");
  expect_unopened("", "No such file or directory");
  write_box();
  expect_unopened("in.stp/in.stp", "Not a directory");
  EXPECT_FALSE(fs::exists("out"));
}

TEST_F(SplitCommand, InputWhoseNameCannotBeLookedUp) {
  expect_unopened(std::string(300, 'a'), "File name too long");
  fs::create_symlink("loop", "loop");
  expect_unopened("loop", "Too many levels of symbolic links");
}

TEST_F(SplitCommand, InputThatIsAFolder) {
  expect_failure(".", "out",
                 "velkstep: .: The file is a folder. It holds no STEP file: name one.\n");
}

TEST_F(SplitCommand, PipeIsReadOnceAndSplitAllTheSame) {
  ASSERT_EQ(::mkfifo("pipe", 0600), 0);
  std::thread writer([] { std::ofstream("pipe") << exchange_file(BOX_WITH_LID); });
  const ProcessRun run = run_velkstep({"split", "pipe", "out"});
  writer.join();
  EXPECT_EQ(run.exit_code, 0);
  EXPECT_EQ(run.out, "out/box.stp\nout/lid.stp\n");
}

TEST_F(SplitCommand, InputThatIsADevice) {
  expect_failure("/dev/null", "out",
                 "velkstep: /dev/null: The file is neither a file nor a pipe. Copy it into a file "
                 "first.\n");
}

TEST_F(SplitCommand, OutputFolderThatIsAFile) {
  write_box();
  folder_.write("out", "text");
  expect_failure("in.stp", "out",
                 "velkstep: out: cannot be created: Not a directory; name "
                 "another place\n");
  expect_failure("in.stp", "out/sub",
                 "velkstep: out/sub: cannot be created: Not a directory; name "
                 "another place\n");
  EXPECT_EQ(read_file("out"), "text");
}

TEST_F(SplitCommand, ExceptionOfTheLibraryIsOneLine) {
  folder_.write("in.stp", exchange_file("#3=PRODUCT_DEFINITION('d','',#2000000,$);\n"));
  expect_failure("in.stp", "out",
                 "velkstep: in.stp: a record refers to an instance far beyond the highest number; "
                 "velkstep check finds it\n",
                 {"--classic"});
}

TEST_F(SplitCommand, ReferenceBlockWithNothingToPointAtFollowsTheLibrarysSentences) {
  std::string records(BOX_WITH_LID);
  records.replace(records.find("(#8,#10)"), 8, "(#8)");
  folder_.write("in.stp", exchange_file(records));
  expect_failure(
      "in.stp", "out",
      "Got an out of range in 'get_child' while fetching child nb 1\n"
      "Got an out of range in 'get_child' while fetching child nb 1\n"
      "velkstep: in.stp: an assembly's file would lack the definition or shape of a component "
      "to which it must refer; without --classic it is split\n",
      {"--classic"});
}

TEST_F(SplitCommand, StandardOutputThatIsFullIsAFailure) {
  if (!fs::exists("/dev/full")) GTEST_SKIP() << "no device that is always full";
  write_box();
  const ProcessRun run = run_velkstep({"split", "in.stp", "out"}, {.standard_output = "/dev/full"});
  EXPECT_EQ(run.exit_code, 1);
  EXPECT_EQ(run.errors,
            "velkstep: standard output: cannot be written: No space left on device; make "
            "room, or name a place on another disk\n");
  EXPECT_FALSE(fs::exists("out"));
}

TEST_F(SplitCommand, DryRunPrintsSizesAndWritesNothing) {
  write_box();
  fs::create_directory("temporary");
  const ProcessSetting setting = {.environment = {{"TMPDIR", fs::absolute("temporary")}}};
  const FolderTree before = tree_of(".");
  const ProcessRun dry = run_velkstep({"split", "-n", "in.stp", "new/out"}, setting);
  const ProcessRun json = run_velkstep({"split", "-n", "--json", "in.stp", "new/out"}, setting);
  const ProcessRun quiet = run_velkstep({"split", "-nq", "in.stp", "new/out"}, setting);
  EXPECT_TRUE(differences(tree_of("."), before).empty());
  EXPECT_EQ(quiet.out + quiet.errors, "");

  const ProcessRun wet = run_velkstep({"split", "--json", "in.stp", "new/out"});
  EXPECT_EQ(json.out, wet.out);
  EXPECT_EQ(dry.exit_code, 0);
  EXPECT_EQ(dry.errors, "");
  std::istringstream lines(dry.out);
  std::uintmax_t all = 0;
  std::size_t files = 0;
  std::string size;
  std::string path;
  while (lines >> size >> path && path != "bytes") {
    size.erase(std::remove(size.begin(), size.end(), ','), size.end());
    EXPECT_EQ(size, std::to_string(fs::file_size(path))) << path;
    all += fs::file_size(path);
    ++files;
  }
  EXPECT_EQ(files, names_in("new/out").size());
  size.erase(std::remove(size.begin(), size.end(), ','), size.end());
  EXPECT_EQ(size, std::to_string(all));
  EXPECT_TRUE(dry.out.ends_with("  bytes in " + std::to_string(files) + " files\n")) << dry.out;
}

TEST_F(SplitCommand, DryRunFailsWhereTheSplitWould) {
  write_box();
  EXPECT_EQ(run_velkstep({"split", "-q", "in.stp", "out"}).exit_code, 0);
  const FolderTree before = tree_of(".");
  const ProcessRun dry = run_velkstep({"split", "-n", "in.stp", "out"});
  EXPECT_EQ(dry.exit_code, 1);
  EXPECT_EQ(dry.out, "");
  EXPECT_EQ(dry.errors, run_velkstep({"split", "in.stp", "out"}).errors);
  EXPECT_EQ(run_velkstep({"split", "-nf", "in.stp", "out"}).exit_code, 0);
  EXPECT_TRUE(differences(tree_of("."), before).empty());
}

TEST_F(SplitCommand, NamesAfterProducts) {
  folder_.write("in.stp", exchange_file("#1=PRODUCT('box/A','','',());\n"
                                        "#2=PRODUCT_DEFINITION_FORMATION('','',#1);\n"
                                        "#3=PRODUCT_DEFINITION('d','',#2,$);\n"
                                        "#4=PRODUCT('\\X2\\76D6\\X0\\','','',());\n"
                                        "#5=PRODUCT_DEFINITION_FORMATION('','',#4);\n"
                                        "#6=PRODUCT_DEFINITION('d','',#5,$);\n"
                                        "#7=NEXT_ASSEMBLY_USAGE_OCCURRENCE('1','','',#3,#6,$);\n"));
  EXPECT_EQ(run_velkstep({"split", "--names=product", "in.stp", "ascii"}).out,
            "ascii/box_A.stp\nascii/U76D6.stp\n");
  EXPECT_EQ(run_velkstep({"split", "--names=product-unicode", "in.stp", "unicode"}).out,
            "unicode/box_A.stp\nunicode/盖.stp\n");
  EXPECT_EQ(run_velkstep({"split", "--names=record", "in.stp", "record"}).out,
            "record/#1_part.stp\nrecord/#4_part.stp\n");
  EXPECT_EQ(run_velkstep({"split", "--names=other", "in.stp", "other"}).exit_code, 2);
}

}  // namespace
}  // namespace Kessel::test
