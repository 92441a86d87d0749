// How many files, records and reference blocks real assemblies are split into.
#include <gtest/gtest.h>

#include <cctype>
#include <filesystem>
#include <ostream>
#include <sstream>
#include <string>
#include <vector>

#include "cli/run_process.h"
#include "splitter/small_inputs.h"
#include "support/scratch_folder.h"

namespace Kessel::test {
namespace {

struct Figures {
  const char* sample;
  std::size_t files;
  const char* root;
  std::size_t root_records;
  std::size_t root_blocks;
  std::size_t all_records;
};

void PrintTo(const Figures& figures, std::ostream* out) {
  *out << figures.sample;
}

/// Whether a line begins a record: "#", digits, blanks, "=".
bool begins_record(const std::string& line) {
  if (line.empty() || line[0] != '#') return false;
  std::size_t at = 1;
  while (at < line.size() && std::isdigit(static_cast<unsigned char>(line[at])) != 0) ++at;
  if (at == 1) return false;
  while (at < line.size() && line[at] == ' ') ++at;
  return at < line.size() && line[at] == '=';
}

std::vector<std::string> lines_of(const std::string& text) {
  std::vector<std::string> lines;
  std::istringstream in(text);
  for (std::string line; std::getline(in, line);) lines.push_back(line);
  return lines;
}

std::size_t count_records(const std::string& text) {
  std::size_t count = 0;
  for (const std::string& line : lines_of(text)) count += begins_record(line) ? 1 : 0;
  return count;
}

std::size_t count_blocks(const std::string& text) {
  const std::string role = "=IDENTIFICATION_ROLE('external document id and location',$);";
  std::size_t count = 0;
  for (const std::string& line : lines_of(text)) count += line.ends_with(role) ? 1 : 0;
  return count;
}

class SampleFigures : public testing::TestWithParam<Figures> {};

TEST_P(SampleFigures, AreReached) {
  const Figures& expected = GetParam();
  const std::filesystem::path sample = samples_folder() / expected.sample;
  if (!std::filesystem::exists(sample)) GTEST_SKIP() << why_no_sample();
  const ScratchFolder folder;
  const ProcessRun run = run_velkstep({"split", "--classic", sample, "out"});
  EXPECT_EQ(run.exit_code, 0);
  EXPECT_EQ(run.errors, "");

  const std::vector<std::string> files = lines_of(run.out);
  ASSERT_EQ(files.size(), expected.files);
  EXPECT_EQ(files[0], std::string("out/") + expected.root);
  EXPECT_EQ(read_file("out/roots.txt"), std::string(expected.root) + "\n");
  const std::string root = read_file(files[0]);
  EXPECT_EQ(count_records(root), expected.root_records);
  EXPECT_EQ(count_blocks(root), expected.root_blocks);
  std::size_t records = 0;
  for (const std::string& file : files) records += count_records(read_file(file));
  EXPECT_EQ(records, expected.all_records);
  std::size_t entries = 0;
  for ([[maybe_unused]] const auto& entry : std::filesystem::directory_iterator("out")) ++entries;
  EXPECT_EQ(entries, expected.files + 1) << "roots.txt is the one more";
}

INSTANTIATE_TEST_SUITE_P(
    Samples, SampleFigures,
    testing::Values(Figures{"as1-oc-214.stp", 9, "#7_part.stp", 466, 5, 6674},
                    Figures{"as1-pe-203.stp", 9, "#2849_part.stp", 2785, 5, 5268},
                    Figures{"as1-tu-203.stp", 15, "Root.stp", 571, 5, 2639},
                    Figures{"cube-inch.step", 2, "#7_part.stp", 60, 1, 425},
                    Figures{"din-mount.step", 5, "#2410_part.stp", 24417, 3, 48690},
                    Figures{"dm1-id-214.stp", 8, "Root.stp", 430, 4, 2478},
                    Figures{"dm1-pe-214.stp", 9, "Root.stp", 426, 3, 3338},
                    Figures{"exhaust-plate.step", 7, "#29114_part.stp", 29210, 4, 49065},
                    Figures{"filament-sensor.step", 12, "#19593_part.stp", 19742, 9, 32514},
                    Figures{"spool-ramp.step", 3, "#5005_part.stp", 5033, 2, 10026},
                    Figures{"toolhead-mount.step", 21, "#24320_part.stp", 24514, 11, 54947}));

class SampleOfOnePart : public testing::TestWithParam<const char*> {};

TEST_P(SampleOfOnePart, IsNothingToSplit) {
  const std::filesystem::path sample = samples_folder() / GetParam();
  if (!std::filesystem::exists(sample)) GTEST_SKIP() << why_no_sample();
  const ScratchFolder folder;
  const ProcessRun run = run_velkstep({"split", "--classic", sample, "out"});
  EXPECT_EQ(run.exit_code, 3);
  EXPECT_EQ(run.out, "");
  EXPECT_TRUE(run.errors.starts_with(ONLY_ONE_PART)) << run.errors;
}

INSTANTIATE_TEST_SUITE_P(Samples, SampleOfOnePart,
                         testing::Values("composite-ap209.stp", "io1-tu-203.stp"));

}  // namespace
}  // namespace Kessel::test
