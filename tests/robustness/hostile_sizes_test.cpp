// Sizes that no honest file has. Every run gets a small stack, and a minute of the processor, which
// is a hundred times what it needs: what takes the square of such sizes takes hours. A tenth of the
// sizes, and the hundredth part of hours, shows the same where VELKSTEP_EFFORT says so.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>

#include "cli/run_process.h"
#include "kessel/errors.h"
#include "kessel/splitter.h"
#include "splitter/small_inputs.h"
#include "support/effort.h"
#include "support/scratch_folder.h"
#include "support/split_run.h"

namespace Kessel::test {
namespace {

namespace fs = std::filesystem;

constexpr ProcessSetting SMALL_STACK = {.most_cpu_seconds = 60, .most_stack = 256 << 10};

class HostileSizes : public testing::Test {
 protected:
  HostileSizes() : in_("in.stp", std::ios::binary) {
    std::string front = exchange_file(BOX_WITH_LID);
    end_ = front.substr(front.find("ENDSEC;\nEND-"));
    front.resize(front.size() - end_.size());
    // The lid's solid is for the test to add.
    const std::string SOLID = "#11=MANIFOLD_SOLID_BREP('',$);\n";
    in_ << front.replace(front.find(SOLID), SOLID.size(), "");
  }

  void add(std::string_view text) { in_ << text; }
  void add_many(std::uint64_t count, std::string_view text) {
    for (; count > 0; --count) in_ << text;
  }
  void add_record(std::uint64_t number, std::string_view rest) {
    in_ << '#' << number << '=' << rest << ";\n";
  }
  void close() {
    in_ << end_;
    in_.close();
  }

  /// Closes the input and splits it into box and lid, and looks at it in other ways.
  void expect_splits() {
    close();
    for (const char* const style : {"nested", "classic"}) {
      const ProcessRun run =
          run_velkstep({"split", "--force", "--assemblies", style, "in.stp", "out"}, SMALL_STACK);
      EXPECT_EQ(run.exit_code, 0) << style;
      EXPECT_EQ(run.out, "out/box.stp\nout/lid.stp\n");
      EXPECT_EQ(run.errors, "");
    }
    for (const char* const command : {"join", "shrink"}) {
      const ProcessRun run =
          run_velkstep({command, "--quiet", "--force", "in.stp", "-o", "one.stp"}, SMALL_STACK);
      EXPECT_EQ(run.exit_code, 0) << command << ": " << run.errors;
    }
    EXPECT_EQ(run_velkstep({"tree", "in.stp"}, SMALL_STACK).exit_code, 0);
    EXPECT_EQ(run_velkstep({"info", "in.stp"}, SMALL_STACK).exit_code, 0);
  }

  /// The exit code of the check, which reads the same file.
  int check() { return run_velkstep({"check", "in.stp"}, SMALL_STACK).exit_code; }

  /// The lid's records from its solid on, as they stand in its file.
  std::string solid_of_lid() {
    const std::string text = read_file("out/lid.stp");
    const std::size_t solid = text.find("=MANIFOLD_SOLID_BREP(");
    return solid == std::string::npos ? "" : text.substr(text.rfind('#', solid));
  }

  ScratchFolder folder_;

 private:
  std::ofstream in_;
  std::string end_;
};

TEST_F(HostileSizes, LargestInstanceNumber) {
  add_record(11, "MANIFOLD_SOLID_BREP('',#4294967295)");
  add_record(4'294'967'295, "CLOSED_SHELL('',(#4294967294))");
  add_record(4'294'967'294, "ADVANCED_FACE('',(),$,.T.)");
  expect_splits();
  EXPECT_EQ(solid_of_lid(),
            "#8=MANIFOLD_SOLID_BREP('',#9);\n"
            "#9=CLOSED_SHELL('',(#10));\n"
            "#10=ADVANCED_FACE('',(),$,.T.);\n"
            "ENDSEC;\nEND-ISO-10303-21;\n");
  EXPECT_EQ(check(), 0);
}

TEST_F(HostileSizes, RecordOfOneGigabyte) {
  const std::uint64_t megabytes = length_to_try(1000);
  const std::uint64_t bytes = megabytes * 1'000'000;
  if (fs::space(".").available < 8 * bytes) GTEST_SKIP() << "the disk has too little room";
  add("#11=MANIFOLD_SOLID_BREP('");
  const std::string megabyte(1'000'000, 'x');
  add_many(megabytes, megabyte);
  add("',$);\n");
  close();
  Options options;
  options.memory_limit = bytes / 10;
  EXPECT_THROW(split_paths("in.stp", "out", options), InputError);
  EXPECT_FALSE(fs::exists("out"));
  const ProcessRun run = run_velkstep({"split", "in.stp", "out"}, SMALL_STACK);
  EXPECT_EQ(run.exit_code, 0);
  EXPECT_EQ(run.errors, "");
  folder_.write("small.stp", exchange_file(BOX_WITH_LID));
  EXPECT_EQ(run_velkstep({"split", "small.stp", "small"}, SMALL_STACK).exit_code, 0);
  EXPECT_EQ(fs::file_size("out/lid.stp"), bytes + fs::file_size("small/lid.stp"));
  EXPECT_LT(fs::file_size("out/box.stp"), 4096u);
}

TEST_F(HostileSizes, TenMillionReferencesInOneRecord) {
  const auto hundred_thousands = static_cast<std::int64_t>(length_to_try(100));
  add("#11=MANIFOLD_SOLID_BREP('',(#13");
  const std::string many = [] {
    std::string text;
    for (int i = 0; i < 100'000; ++i) text += ",#13";
    return text;
  }();
  add_many(static_cast<std::uint64_t>(hundred_thousands), many);
  add("));\n");
  add_record(13, "CARTESIAN_POINT('',(0.,0.,0.))");
  expect_splits();
  const std::string solid = solid_of_lid();
  EXPECT_EQ(std::count(solid.begin(), solid.end(), '#'), 1 + hundred_thousands * 100'000 + 1 + 1);
  EXPECT_EQ(check(), 0);
}

TEST_F(HostileSizes, TenMillionEmptyRecords) {
  add_record(11, "MANIFOLD_SOLID_BREP('',$)");
  const std::uint64_t end = 1000 + length_to_try(10'000'000);
  for (std::uint64_t number = 1000; number < end; ++number) add_record(number, "A()");
  expect_splits();
  EXPECT_EQ(check(), 0);
}

TEST_F(HostileSizes, TypeNameOf100Megabytes) {
  add_record(11, "MANIFOLD_SOLID_BREP('',#13)");
  add("#13=");
  const std::uint64_t megabytes = length_to_try(100);
  const std::string megabyte(1'000'000, 'X');
  add_many(megabytes, megabyte);
  add("('');\n");
  expect_splits();
  EXPECT_GT(fs::file_size("out/lid.stp"), megabytes * 1'000'000);
  EXPECT_LT(fs::file_size("out/box.stp"), 4096u);
  EXPECT_EQ(check(), 0);
}

TEST_F(HostileSizes, HundredThousandTypes) {
  add_record(11, "MANIFOLD_SOLID_BREP('',#1000)");
  for (std::uint64_t number = 1000; number < 101'000; ++number) {
    const std::string type = "TYPE_" + std::to_string(number);
    const std::string next = "#" + std::to_string(number + 1);
    add_record(number,
               number % 2 == 0 ? type + "(" + next + ")" : "(A()" + type + "('')Z(" + next + "))");
  }
  add_record(101'000, "LAST()");
  expect_splits();
  const std::string solid = solid_of_lid();
  EXPECT_EQ(std::count(solid.begin(), solid.end(), '\n'), 100'002 + 2);
  EXPECT_EQ(check(), 0);
}

TEST_F(HostileSizes, ParenthesesAMillionDeep) {
  constexpr std::size_t DEPTH = 1'000'000;
  add_record(11, "MANIFOLD_SOLID_BREP('',#13)");
  const std::string open(DEPTH, '(');
  const std::string close(DEPTH, ')');
  add_record(13, "A(" + open + "#14" + close + ")");
  add_record(14, "(" + open + "#13" + close + ")");
  expect_splits();
  const std::string solid = solid_of_lid();
  EXPECT_NE(solid.find("#9=A(" + open + "#10" + close + ");\n"), std::string::npos);
  EXPECT_NE(solid.find("#10=(" + open + "#9" + close + ");\n"), std::string::npos);
}

TEST_F(HostileSizes, ChainOfAMillionReferences) {
  const std::uint64_t length = length_to_try(1'000'000);
  const std::uint64_t end = 1000 + length;
  add_record(11, "MANIFOLD_SOLID_BREP('',#1000)");
  for (std::uint64_t number = 1000; number < end; ++number) {
    add_record(number, "A(#" + std::to_string(number + 1) + ")");
  }
  add_record(end, "A()");
  expect_splits();
  EXPECT_NE(solid_of_lid().find("A(#" + std::to_string(length + 9) + ");\n"), std::string::npos);
  EXPECT_EQ(check(), 0);
}

TEST_F(HostileSizes, ChainOfAMillionReferencesBackwards) {
  const std::uint64_t length = length_to_try(1'000'000);
  const std::uint64_t end = 1000 + length;
  add_record(1000, "A()");
  for (std::uint64_t number = 1001; number < end; ++number) {
    add_record(number, "A(#" + std::to_string(number - 1) + ")");
  }
  add_record(11, "MANIFOLD_SOLID_BREP('',#" + std::to_string(end - 1) + ")");
  expect_splits();
  const std::string lid = read_file("out/lid.stp");
  const std::string short_lid = output_file("lid.stp", LID_RECORDS);
  EXPECT_EQ(
      std::count(lid.begin(), lid.end(), '\n'),
      std::count(short_lid.begin(), short_lid.end(), '\n') + static_cast<std::int64_t>(length));
  EXPECT_EQ(check(), 0);
}

TEST_F(HostileSizes, CircleOfAMillionReferences) {
  const std::uint64_t length = length_to_try(1'000'000);
  const std::uint64_t end = 1000 + length;
  add_record(11, "MANIFOLD_SOLID_BREP('',#1000)");
  for (std::uint64_t number = 1000; number < end; ++number) {
    const std::uint64_t next = number + 1 == end ? 1000 : number + 1;
    add_record(number, "A(#" + std::to_string(next) + ")");
  }
  expect_splits();
  const std::string solid = solid_of_lid();
  EXPECT_EQ(std::count(solid.begin(), solid.end(), '\n'),
            static_cast<std::int64_t>(length) + 1 + 2);
  EXPECT_EQ(check(), 4);
}

TEST_F(HostileSizes, ProductNameOf10Megabytes) {
  add_record(11, "MANIFOLD_SOLID_BREP('',$)");
  const std::string name = "lid " + std::string(10'000'000, 'x');
  add_record(4, "PRODUCT('" + name + "','','',())");
  close();
  const ProcessRun refused = run_velkstep({"split", "in.stp", "standard"}, SMALL_STACK);
  EXPECT_EQ(refused.exit_code, 1);
  EXPECT_EQ(
      refused.errors,
      "velkstep: in.stp:20:1: #4 has stood for another record already. Export it again: nobody "
      "can tell which of them is meant.\n");
  // The classic reading takes the second record under a number.
  const ProcessRun run = run_velkstep(
      {"split", "--assemblies=classic", "--reading=classic", "in.stp", "out"}, SMALL_STACK);
  EXPECT_EQ(run.exit_code, 0);
  EXPECT_EQ(run.out, "out/box.stp\nout/" + name.substr(0, 139) + ".stp\n");
}

/// Assemblies in each other, `count` levels of them below the box.
class DeepAssembly : public HostileSizes {
 protected:
  void add_levels(std::uint64_t count) {
    add_record(11, "MANIFOLD_SOLID_BREP('',$)");
    add_record(20, "NEXT_ASSEMBLY_USAGE_OCCURRENCE('2','','',#3,#1002,$)");
    for (std::uint64_t level = 0; level < count; ++level) {
      const std::uint64_t first = 1000 + 4 * level;
      const auto reference = [](std::uint64_t number) { return "#" + std::to_string(number); };
      add_record(first, "PRODUCT('level','','',())");
      add_record(first + 1, "PRODUCT_DEFINITION_FORMATION('',''," + reference(first) + ")");
      add_record(first + 2, "PRODUCT_DEFINITION('',''," + reference(first + 1) + ",$)");
      if (level + 1 == count) break;
      add_record(first + 3, "NEXT_ASSEMBLY_USAGE_OCCURRENCE('1','',''," + reference(first + 2) +
                                "," + reference(first + 6) + ",$)");
    }
    close();
  }
};

TEST_F(DeepAssembly, OfTenThousandLevelsIsSplit) {
  const std::uint64_t levels = length_to_try(10'000);
  add_levels(levels);
  for (const char* const style : {"classic", "nested"}) {
    const ProcessRun run =
        run_velkstep({"split", "--quiet", "--assemblies", style, "in.stp", style}, SMALL_STACK);
    EXPECT_EQ(run.exit_code, 0) << style;
    EXPECT_EQ(run.errors, "");
    const auto files = std::distance(fs::directory_iterator(style), fs::directory_iterator());
    const int lists = style == std::string_view("classic") ? 1 : 2;
    EXPECT_EQ(files, static_cast<std::int64_t>(levels) + 2 + lists)
        << "levels, box and lid, the root's name and the list";
    std::string root = read_file(std::string(style) + "/roots.txt");
    root.pop_back();
    const ProcessRun joined = run_velkstep(
        {"join", "--quiet", std::string(style) + "/" + root, "-o", std::string(style) + ".stp"},
        SMALL_STACK);
    EXPECT_EQ(joined.exit_code, 0) << joined.errors;
  }
  EXPECT_EQ(run_velkstep({"tree", "--json", "in.stp"}, SMALL_STACK).exit_code, 0);
}

TEST_F(DeepAssembly, OfAMillionLevelsIsRead) {
  const std::uint64_t levels = length_to_try(1'000'000);
  add_levels(levels);
  EXPECT_EQ(check(), 0);
  const ProcessRun info = run_velkstep({"info", "in.stp"}, SMALL_STACK);
  EXPECT_EQ(info.exit_code, 0);
  EXPECT_NE(info.out.find(levels == 1'000'000 ? "1,000,001" : "100,001"), std::string::npos)
      << info.out;
}

}  // namespace
}  // namespace Kessel::test
