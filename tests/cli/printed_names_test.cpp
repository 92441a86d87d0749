// Names come from anywhere: what they hold must not steer a terminal. Colours are for terminals.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "cli/run_process.h"
#include "inspection/products.h"
#include "support/scratch_folder.h"

namespace Kessel::test {
namespace {

/// Whether `text` holds a control character other than the ends of lines.
bool holds_controls(const std::string& text) {
  for (std::size_t i = 0; i < text.size(); ++i) {
    const auto byte = static_cast<unsigned char>(text[i]);
    if ((byte < 0x20 && byte != '\n' && byte != '\r') || byte == 0x7F) return true;
    const auto next = static_cast<unsigned char>(i + 1 < text.size() ? text[i + 1] : 0);
    if (byte == 0xC2 && next >= 0x80 && next <= 0x9F) return true;
  }
  return false;
}

// An escape sequence, a C1 control in UTF-8 and in ISO 8859-1, delete, and a turn of direction.
const std::string NASTY =
    "a\x1B[31mb\xC2\x9B"
    "2Jc\x9B"
    "d\x7F"
    "e\xE2\x80\xAE"
    "f";
const std::string HARMLESS = "a�[31mb�2Jc�d�e�f";

TEST(PrintedNames, ControlCharactersAreReplaced) {
  const ScratchFolder folder;
  folder.write("in.stp", exchange_file(product(1, "'" + NASTY + "','x',''") +
                                       product(11, "'i','" + NASTY + "',''") + usage(20, 3, 13)));
  EXPECT_EQ(run_velkstep({"tree", "in.stp"}).out, "x [" + HARMLESS +
                                                      "]  (assembly, #3, x.stp)\n└─ " + HARMLESS +
                                                      " [i]  (part, #13, a_[31mb_2Jc_d_e_f.stp)\n");
  for (const std::vector<std::string>& options : std::vector<std::vector<std::string>>{
           {"--json"}, {"--dot"}, {"--bom"}, {"--bom", "--csv"}}) {
    std::vector<std::string> arguments = {"tree", "in.stp"};
    arguments.insert(arguments.end(), options.begin(), options.end());
    const ProcessRun run = run_velkstep(arguments);
    EXPECT_EQ(run.exit_code, 0);
    EXPECT_FALSE(holds_controls(run.out)) << run.out;
  }
}

TEST(PrintedNames, ControlCharactersOfTheHeaderAreReplaced) {
  const ScratchFolder folder;
  std::string file = exchange_file(BOX_WITH_LID);
  file.replace(file.find("'me'"), 4, "'" + NASTY + "'");
  folder.write("in.stp", file);
  const ProcessRun run = run_velkstep({"info", "in.stp"});
  EXPECT_NE(run.out.find("  Authors             " + HARMLESS + "\n"), std::string::npos) << run.out;
  EXPECT_FALSE(holds_controls(run.out));
  EXPECT_FALSE(holds_controls(run_velkstep({"info", "--json", "in.stp"}).out));
}

TEST(PrintedNames, ControlCharactersOfPathsAreReplaced) {
  const ScratchFolder folder;
  const ProcessRun run = run_velkstep({"tree", "no\x1B[2Jsuch\xFF"});
  EXPECT_EQ(run.exit_code, 1);
  EXPECT_EQ(run.errors,
            "velkstep: no�[2Jsuch�: The file cannot be opened: No such "
            "file or directory. Check its name.\n");
}

class Colours : public testing::Test {
 protected:
  Colours() { folder_.write("in.stp", exchange_file(BOX_WITH_LID)); }

  static std::string tree(const ProcessSetting& setting) {
    const ProcessRun run = run_velkstep({"tree", "in.stp"}, setting);
    EXPECT_EQ(run.exit_code, 0);
    return run.out;
  }

  const std::string plain_ =
      "box  (assembly, #3, box.stp)\n"
      "└─ lid  (part, #6, lid.stp)\n";
  ScratchFolder folder_;
};

TEST_F(Colours, MarkTextOnATerminal) {
  EXPECT_EQ(tree({.terminal = true, .environment = {{"TERM", "xterm"}, {"NO_COLOR", ""}}}),
            "\x1B[1mbox\x1B[0m  \x1B[2m(assembly, #3, box.stp)\x1B[0m\n"
            "└─ lid  \x1B[2m(part, #6, lid.stp)\x1B[0m\n");
}

TEST_F(Colours, AreNotForOtherOutputs) {
  EXPECT_EQ(tree({.environment = {{"TERM", "xterm"}, {"NO_COLOR", ""}}}), plain_);
}

TEST_F(Colours, AreNeverUsedWithNoColor) {
  EXPECT_EQ(tree({.terminal = true, .environment = {{"TERM", "xterm"}, {"NO_COLOR", "1"}}}),
            plain_);
  EXPECT_EQ(tree({.terminal = true, .environment = {{"TERM", "xterm"}, {"NO_COLOR", "0"}}}),
            plain_);
}

TEST_F(Colours, AreNotForTerminalsWithoutThem) {
  EXPECT_EQ(tree({.terminal = true, .environment = {{"TERM", "dumb"}, {"NO_COLOR", ""}}}), plain_);
}

TEST_F(Colours, AreNotForDataOnATerminal) {
  const ProcessSetting terminal = {.terminal = true,
                                   .environment = {{"TERM", "xterm"}, {"NO_COLOR", ""}}};
  for (const char* format : {"--json", "--dot"}) {
    EXPECT_EQ(run_velkstep({"tree", "in.stp", format}, terminal).out,
              run_velkstep({"tree", "in.stp", format}).out);
  }
  EXPECT_EQ(run_velkstep({"tree", "in.stp", "--bom", "--csv"}, terminal).out,
            run_velkstep({"tree", "in.stp", "--bom", "--csv"}).out);
}

}  // namespace
}  // namespace Kessel::test
