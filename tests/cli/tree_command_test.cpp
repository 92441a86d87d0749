// velkstep tree: the tree, its marks and limits, and which arguments go together.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "cli/run_process.h"
#include "inspection/products.h"
#include "support/scratch_folder.h"

namespace Kessel::test {
namespace {

class TreeCommand : public testing::Test {
 protected:
  /// What `velkstep tree` prints for an exchange file with these records.
  std::string tree_of(const std::string& records, std::vector<std::string> options = {}) {
    folder_.write("in.stp", exchange_file(records));
    options.insert(options.begin(), {"tree", "in.stp"});
    const ProcessRun run = run_velkstep(options);
    EXPECT_EQ(run.exit_code, 0);
    EXPECT_EQ(run.errors, "");
    return run.out;
  }

  ScratchFolder folder_;
};

const std::string LAMP =
    "Desk lamp  (assembly, #1332, Desk lamp.stp)\n"
    "├─ Stand  (assembly, #395, Stand.stp)\n"
    "│  ├─ Base  (part, #292, Base.stp)\n"
    "│  ├─ Rubber foot ×4  (part, #189, Rubber foot.stp)\n"
    "│  └─ Column  (part, #370, Column.stp)\n"
    "├─ Boom  (assembly, #1114, Boom.stp)\n"
    "│  ├─ Arm ×2  (assembly, #640, Arm.stp)\n"
    "│  │  ├─ Arm beam  (part, #615, Arm beam.stp)\n"
    "│  │  └─ Pivot pin ×2  (part, #111, Pivot pin.stp)\n"
    "│  └─ Head  (assembly, #1062, Head.stp)\n"
    "│     ├─ Socket  (part, #761, Socket.stp)\n"
    "│     ├─ Pivot pin  (part, #111, Pivot pin.stp)\n"
    "│     ├─ Shade  (part, #884, Shade.stp)\n"
    "│     └─ Bulb  (part, #1037, Bulb.stp)\n"
    "└─ Rocker switch  (part, #1307, Rocker switch.stp)\n";

TEST_F(TreeCommand, DrawsTheExample) {
  const ProcessRun run = run_velkstep({"tree", VELKSTEP_EXAMPLE});
  EXPECT_EQ(run.exit_code, 0);
  EXPECT_EQ(run.out, LAMP);
  EXPECT_EQ(run.errors, "");
  EXPECT_TRUE(std::filesystem::is_empty("."));
}

TEST_F(TreeCommand, PageShowsWhatIsPrinted) {
  std::string block;
  for (std::size_t begin = 0; begin < LAMP.size();) {
    const std::size_t end = LAMP.find('\n', begin) + 1;
    block += "    " + LAMP.substr(begin, end - begin);
    begin = end;
  }
  EXPECT_NE(read_file(VELKSTEP_COMMANDS_PAGE).find(block), std::string::npos);
}

TEST_F(TreeCommand, DepthLimitsTheLevelsBelowTheRoot) {
  EXPECT_EQ(run_velkstep({"tree", "--depth", "0", VELKSTEP_EXAMPLE}).out,
            "Desk lamp  (assembly, #1332, Desk lamp.stp)  (components not shown)\n");
  EXPECT_EQ(run_velkstep({"tree", "--depth=1", VELKSTEP_EXAMPLE}).out,
            "Desk lamp  (assembly, #1332, Desk lamp.stp)\n"
            "├─ Stand  (assembly, #395, Stand.stp)  (components not shown)\n"
            "├─ Boom  (assembly, #1114, Boom.stp)  (components not shown)\n"
            "└─ Rocker switch  (part, #1307, Rocker switch.stp)\n");
  EXPECT_EQ(run_velkstep({"tree", "--depth=3", VELKSTEP_EXAMPLE}).out, LAMP);
}

// a holds b and c; b holds c; c holds d; d holds e.
const std::string SHARED = product(1, "'a','a',''") + product(11, "'b','b',''") +
                           product(21, "'c','c',''") + product(31, "'d','d',''") +
                           product(41, "'e','e',''") + usage(51, 3, 13) + usage(52, 3, 23) +
                           usage(53, 13, 23) + usage(54, 23, 33) + usage(55, 33, 43);

TEST_F(TreeCommand, AssemblyThatOccursAgainIsDrawnOnce) {
  EXPECT_EQ(tree_of(SHARED),
            "a  (assembly, #3, a.stp)\n"
            "├─ b  (assembly, #13, b.stp)\n"
            "│  └─ c  (assembly, #23, c.stp)\n"
            "│     └─ d  (assembly, #33, d.stp)\n"
            "│        └─ e  (part, #43, e.stp)\n"
            "└─ c  (assembly, #23, c.stp)  (see above)\n");
}

TEST_F(TreeCommand, AssemblyThatWasCutIsDrawnAgainWhereThereIsRoomForMoreOfIt) {
  EXPECT_EQ(tree_of(SHARED, {"--depth=3"}),
            "a  (assembly, #3, a.stp)\n"
            "├─ b  (assembly, #13, b.stp)\n"
            "│  └─ c  (assembly, #23, c.stp)\n"
            "│     └─ d  (assembly, #33, d.stp)  (components not shown)\n"
            "└─ c  (assembly, #23, c.stp)\n"
            "   └─ d  (assembly, #33, d.stp)\n"
            "      └─ e  (part, #43, e.stp)\n");
  EXPECT_EQ(tree_of(SHARED, {"--depth=1"}),
            "a  (assembly, #3, a.stp)\n"
            "├─ b  (assembly, #13, b.stp)  (components not shown)\n"
            "└─ c  (assembly, #23, c.stp)  (components not shown)\n");
}

TEST_F(TreeCommand, PartsThatContainEachOtherEnd) {
  EXPECT_EQ(tree_of(std::string(CYCLE)),
            "hen  (assembly, #3, hen.stp)\n"
            "└─ egg  (assembly, #6, egg.stp)\n"
            "   └─ hen  (assembly, #3, hen.stp)  (contains itself)\n");
}

TEST_F(TreeCommand, CycleBesideATopIsDrawnBesideIt) {
  EXPECT_EQ(tree_of(std::string(CYCLE) + product(11, "'a','a',''") + product(21, "'b','b',''") +
                    usage(30, 13, 23)),
            "(generated root)  (assembly, Root.stp)\n"
            "├─ hen  (assembly, #3, hen.stp)\n"
            "│  └─ egg  (assembly, #6, egg.stp)\n"
            "│     └─ hen  (assembly, #3, hen.stp)  (contains itself)\n"
            "└─ a  (assembly, #13, a.stp)\n"
            "   └─ b  (part, #23, b.stp)\n");
}

TEST_F(TreeCommand, LadderOfSixtyLevelsIsSixtyLines) {
  std::string records;
  for (int i = 0; i <= 60; ++i) records += product(10 * i + 1, "'p','p',''");
  for (int i = 0; i < 60; ++i) {
    records += usage(1000 + 2 * i, 10 * i + 3, 10 * i + 13);
    records += usage(1001 + 2 * i, 10 * i + 3, 10 * i + 13);
  }
  std::string expected = "p  (assembly, #3, p.stp)\n";
  for (int i = 1; i <= 60; ++i) {
    expected += std::string(static_cast<std::size_t>(3 * (i - 1)), ' ') + "└─ p ×2  (" +
                (i == 60 ? "part" : "assembly") + ", #" + std::to_string(10 * i + 3) + ", p (" +
                std::to_string(i + 1) + ").stp)\n";
  }
  EXPECT_EQ(tree_of(records), expected);
}

TEST_F(TreeCommand, HundredLevelsAreShownUnlessMoreAreAskedFor) {
  std::string records;
  for (int i = 0; i <= 200; ++i) records += product(10 * i + 1, "'p','p',''");
  for (int i = 0; i < 200; ++i) records += usage(3000 + i, 10 * i + 3, 10 * i + 13);
  const auto lines = [](const std::string& text) {
    return std::count(text.begin(), text.end(), '\n');
  };
  EXPECT_EQ(lines(tree_of(records)), 101);
  EXPECT_EQ(lines(tree_of(records, {"--depth=150"})), 151);
  EXPECT_EQ(lines(tree_of(records, {"--depth=1000000000"})), 201);
}

TEST_F(TreeCommand, GeneratedRootBodiesIdsAndMissingNames) {
  EXPECT_EQ(tree_of(product(1, "'No. 1','Frame',''") + product(11, "'No. 2','',''") +
                    product(21, "'','',''") + product(51, "'lid','lid',''") + usage(30, 3, 13) +
                    usage(31, 3, 23) + shape(40, 3, true) + shape(60, 53, true)),
            "(generated root)  (assembly, Root.stp)\n"
            "├─ Frame [No. 1]  (assembly with bodies, #3, Frame.stp)\n"
            "│  ├─ No. 2  (part, #13, No. 2.stp)\n"
            "│  └─ (no name)  (part, #23, part 21.stp)\n"
            "└─ lid  (part, #53, lid.stp)\n");
}

TEST_F(TreeCommand, OnePartAloneHasAFile) {
  EXPECT_EQ(tree_of(std::string(LID_ALONE) + shape(10, 6, true)), "lid  (part, #6, lid.stp)\n");
}

TEST_F(TreeCommand, FileWithoutPartsIsNoFailure) {
  folder_.write("in.stp", exchange_file("#1=A();\n"));
  const ProcessRun run = run_velkstep({"tree", "in.stp"});
  EXPECT_EQ(run.exit_code, 0);
  EXPECT_EQ(run.out, "");
  EXPECT_EQ(run.errors,
            "velkstep: in.stp: holds no part: no product definition has a shape or a component; "
            "velkstep info says what it holds\n");
}

TEST_F(TreeCommand, FileThatEndsTooEarlySaysSo) {
  std::string text = exchange_file(BOX_WITH_LID);
  text.resize(text.find("END-ISO"));
  folder_.write("in.stp", text);
  for (const char* command : {"tree", "info"}) {
    const ProcessRun run = run_velkstep({command, "in.stp"});
    EXPECT_EQ(run.exit_code, 0);
    EXPECT_EQ(run.errors, "velkstep: in.stp: 1 warning; velkstep check in.stp lists it\n");
  }
}

TEST_F(TreeCommand, ColoursAreAsAskedFor) {
  folder_.write("in.stp", exchange_file(BOX_WITH_LID));
  const std::string plain = run_velkstep({"tree", "in.stp"}).out;
  const ProcessSetting without = {.environment = {{"NO_COLOR", "1"}}};
  const std::string bold = run_velkstep({"tree", "--color=always", "in.stp"}, without).out;
  EXPECT_TRUE(bold.starts_with("\x1B[1mbox\x1B[0m  \x1B[2m(assembly")) << bold;
  const ProcessSetting terminal = {.terminal = true, .environment = {{"TERM", "xterm"}}};
  const ProcessSetting no_color = {.terminal = true,
                                   .environment = {{"TERM", "xterm"}, {"NO_COLOR", "1"}}};
  EXPECT_EQ(run_velkstep({"tree", "in.stp"}, terminal).out, bold);
  EXPECT_EQ(run_velkstep({"tree", "--color=auto", "in.stp"}, no_color).out, plain);
  EXPECT_EQ(run_velkstep({"tree", "--color=never", "in.stp"}, terminal).out, plain);
}

TEST_F(TreeCommand, FormatsThatDoNotGoTogetherAreWrongUsage) {
  const std::vector<std::vector<std::string>> CASES = {
      {"--json", "--dot"},
      {"--json", "--bom"},
      {"--dot", "--bom"},
      {"--csv"},
      {"--csv", "--json"},
      {"--json", "--depth=2"},
      {"--bom", "--depth=2"},
      {"--bom", "--csv", "--dot"},
      {"--depth=-1"},
      {"--depth=deep"},
      {"--depth"},
      {"--tree"},
      {"--sort=name"},
  };
  for (std::vector<std::string> arguments : CASES) {
    SCOPED_TRACE(testing::PrintToString(arguments));
    arguments.insert(arguments.begin(), {"tree", VELKSTEP_EXAMPLE});
    const ProcessRun run = run_velkstep(arguments);
    EXPECT_EQ(run.exit_code, 2);
    EXPECT_EQ(run.out, "");
    EXPECT_NE(run.errors, "");
  }
  EXPECT_EQ(run_velkstep({"tree"}).exit_code, 2);
}

TEST_F(TreeCommand, StandardOutputThatIsFullIsAFailure) {
  if (!std::filesystem::exists("/dev/full")) GTEST_SKIP() << "no device that is always full";
  const ProcessRun run = run_velkstep({"tree", VELKSTEP_EXAMPLE}, {.standard_output = "/dev/full"});
  EXPECT_EQ(run.exit_code, 1);
  EXPECT_EQ(run.errors,
            "velkstep: standard output: cannot be written: No space left on device; make room, or "
            "name a place on another disk\n");
}

TEST_F(TreeCommand, HelpNamesEveryFormat) {
  const ProcessRun run = run_velkstep({"tree", "--help"});
  EXPECT_EQ(run.exit_code, 0);
  for (const char* option : {"--depth N", "--json", "--dot", "--bom", "--csv", "Exit codes:"}) {
    EXPECT_NE(run.out.find(option), std::string::npos) << option;
  }
}

TEST_F(TreeCommand, FileOfAShapeThatIsElsewhereStandsBesideThePart) {
  const ScratchFolder folder;
  folder.write("in.stp", exchange_file(std::string(BOX_WITH_LID) +
                                       "#20=DOCUMENT_FILE('lid.stp','','',$,'',$);\n"
                                       "#21=APPLIED_DOCUMENT_REFERENCE(#20,'',(#6));\n"));
  EXPECT_EQ(run_velkstep({"tree", "in.stp"}).out,
            "box  (assembly, #3, box.stp)\n"
            "└─ lid  (part, #6, lid (2).stp, shape in lid.stp)\n");
  const std::string info = run_velkstep({"info", "in.stp"}).out;
  EXPECT_NE(info.find("  Refers to           1 file\n                      lid.stp (not there)\n"),
            std::string::npos)
      << info;
}

}  // namespace
}  // namespace Kessel::test
