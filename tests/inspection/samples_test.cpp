// Real assemblies, of which it is known what is in them.
#include <gtest/gtest.h>

#include <filesystem>
#include <map>
#include <string>

#include "kessel/assembly.h"
#include "kessel/summary.h"
#include "support/scratch_folder.h"

namespace Kessel::test {
namespace {

namespace fs = std::filesystem;

TEST(Samples, SumUpToWhatIsKnownOfThem) {
  const fs::path samples = samples_folder();
  if (samples.empty()) GTEST_SKIP() << why_no_sample();
  const struct {
    const char* sample;
    std::uint64_t records;
    std::size_t parts, assemblies, depth;
    const char* length;
    double metres;
    const char* originating_system;
  } CASES[] = {
      {"as1-oc-214.stp", 6425, 5, 4, 4, "millimetre", 0.001, "Open CASCADE 6.1"},
      {"as1-pe-203.stp", 2881, 5, 4, 4, "INCH", 0.0254,
       "PRO/ENGINEER BY PARAMETRIC TECHNOLOGY CORPORATION, 2008340"},
      {"composite-ap209.stp", 1102, 1, 0, 1, "metre", 1, ""},
      {"cube-inch.step", 391, 1, 1, 2, "INCH", 0.0254, "FreeCAD"},
      {"din-mount.step", 24424, 3, 2, 3, "millimetre", 0.001, "SolidWorks 2019"},
      {"toolhead-mount.step", 24401, 11, 10, 7, "millimetre", 0.001,
       "Autodesk Translation Framework v11.17.0.187"},
  };
  for (const auto& expected : CASES) {
    SCOPED_TRACE(expected.sample);
    const Summary summary = read_summary(samples / expected.sample);
    EXPECT_EQ(summary.bytes, fs::file_size(samples / expected.sample));
    EXPECT_EQ(summary.records, expected.records);
    EXPECT_EQ(summary.parts, expected.parts);
    EXPECT_EQ(summary.assemblies, expected.assemblies);
    EXPECT_EQ(summary.depth, expected.depth);
    ASSERT_EQ(summary.length_units.size(), 1u);
    EXPECT_EQ(summary.length_units[0].name, expected.length);
    EXPECT_EQ(summary.length_units[0].factor, expected.metres);
    EXPECT_EQ(summary.header.originating_system, expected.originating_system);
  }
}

TEST(Samples, AssembliesOccurAsOftenAsTheyAreUsed) {
  const fs::path sample = samples_folder() / "as1-oc-214.stp";
  if (!fs::exists(sample)) GTEST_SKIP() << why_no_sample();
  const std::map<std::string, std::uint64_t> TOTALS = {
      {"as1", 1},   {"rod-assembly", 1},      {"rod", 1},  {"l-bracket-assembly", 2},
      {"plate", 1}, {"nut-bolt-assembly", 6}, {"bolt", 6}, {"l-bracket", 2},
      {"nut", 8},
  };
  std::map<std::string, std::uint64_t> totals;
  for (const PartInfo& part : read_assembly(sample).parts) totals[part.name] = part.total;
  EXPECT_EQ(totals, TOTALS);
}

}  // namespace
}  // namespace Kessel::test
