// A real assembly that another system wrote as thirteen files.
#include <gtest/gtest.h>

#include <map>

#include "join/joined_folder.h"
#include "kessel/assembly.h"
#include "kessel/diff.h"
#include "kessel/summary.h"

namespace Kessel::test {
namespace {

namespace fs = std::filesystem;

fs::path root_of_set() {
  return samples_folder().parent_path() / "samples-external" / "s1_pe_214.stp";
}

std::map<std::string, std::uint64_t> types_of(const Summary& summary) {
  std::map<std::string, std::uint64_t> types;
  for (const TypeCount& count : summary.types) types[count.type] = count.records;
  return types;
}

TEST(JoinExternalSet, OneFileWithTheWholeTree) {
  if (samples_folder().empty()) GTEST_SKIP() << why_no_sample();
  const ScratchFolder folder;
  const Joined joined = join(root_of_set(), folder / "one.stp");
  EXPECT_TRUE(joined.warnings.empty());
  ASSERT_EQ(joined.inputs.size(), 13u);
  std::map<std::string, std::uint64_t> read;
  for (const JoinedInput& input : joined.inputs) {
    for (const auto& [type, count] : types_of(read_summary(input.path))) read[type] += count;
  }
  const Summary one = read_summary(folder / "one.stp");
  EXPECT_EQ(one.records, joined.records);
  EXPECT_EQ(one.parts, 8u);
  EXPECT_EQ(one.assemblies, 5u);
  EXPECT_EQ(one.depth, 3u);

  std::map<std::string, std::uint64_t> written = types_of(one);
  // Thirteen products; twelve of them had stood for themselves in an assembly's file.
  for (const char* const type : {"PRODUCT", "PRODUCT_DEFINITION", "PRODUCT_DEFINITION_FORMATION"}) {
    EXPECT_EQ(written[type], 13u) << type;
    EXPECT_EQ(read[type], 25u) << type;
  }
  EXPECT_EQ(written["NEXT_ASSEMBLY_USAGE_OCCURRENCE"], read["NEXT_ASSEMBLY_USAGE_OCCURRENCE"]);
  EXPECT_EQ(written["MANIFOLD_SOLID_BREP"], read["MANIFOLD_SOLID_BREP"]);
  EXPECT_EQ(written["CARTESIAN_POINT"] + 12, read["CARTESIAN_POINT"]);
  // No reference block, and nothing that only they needed.
  for (const char* const type :
       {"APPLIED_DOCUMENT_REFERENCE", "APPLIED_EXTERNAL_IDENTIFICATION_ASSIGNMENT",
        "DESCRIPTIVE_REPRESENTATION_ITEM", "DOCUMENT_FILE", "DOCUMENT_REPRESENTATION_TYPE",
        "DOCUMENT_TYPE", "EXTERNAL_SOURCE", "IDENTIFICATION_ROLE", "OBJECT_ROLE",
        "REPRESENTATION_CONTEXT", "ROLE_ASSOCIATION"}) {
    EXPECT_EQ(written[type], 0u) << type;
    EXPECT_NE(read[type], 0u) << type;
  }
}

TEST(JoinExternalSet, JoiningOnceMoreChangesNothing) {
  if (samples_folder().empty()) GTEST_SKIP() << why_no_sample();
  const ScratchFolder folder;
  join(root_of_set(), folder / "one.stp");
  join(folder / "one.stp", folder / "two.stp");
  EXPECT_TRUE(diff(folder / "one.stp", folder / "two.stp").is_same);
  EXPECT_EQ(difference_of_data(root_of_set(), folder / "one.stp", {}), "");
}

}  // namespace
}  // namespace Kessel::test
