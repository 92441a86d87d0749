// Extracted parts, read back by a CAD kernel: each is what it is in the whole.
#include <gtest/gtest.h>

#include <algorithm>

#include "interop/assemblies.h"
#include "interop/kernel_reader.h"
#include "kessel/extract.h"
#include "support/scratch_folder.h"

namespace Kessel::test {
namespace {

namespace fs = std::filesystem;

/// What a reader sees of the one shape in `path` otherwise than in one of `originals` of its name.
std::string differences_of_part(const std::vector<DocumentShape>& originals, const fs::path& path) {
  const std::vector<DocumentShape> shapes = read_free_shapes(path);
  if (shapes.size() != 1) return "there are " + std::to_string(shapes.size()) + " free shapes";
  std::string why = "nothing has the name " + shapes.front().name;
  for (const DocumentShape& original : originals) {
    if (original.name != shapes.front().name) continue;
    why = differences(original, shapes.front());
    if (why.empty()) break;
  }
  return why;
}

/// The differences of all parts of `in`, extracted into `out`; a product without a shape is none to
/// a kernel.
std::string differences_of_parts(const fs::path& in, const fs::path& out) {
  const std::vector<DocumentShape> originals = read_all_shapes(in);
  ExtractOptions options;
  options.replace = true;
  std::string all;
  for (const NamedPart& part : read_parts(in)) {
    const std::string number = "#" + std::to_string(part.record);
    extract(in, number, out, options);
    const bool is_known = std::any_of(originals.begin(), originals.end(),
                                      [&](const auto& one) { return one.name == part.name; });
    if (!is_known) continue;
    const std::string why = differences_of_part(originals, out);
    if (!why.empty()) all += number + " " + part.path + ": " + why + "\n";
  }
  return all;
}

class ExtractedParts : public testing::TestWithParam<AssemblySource> {};
class EveryExtractedPart : public testing::TestWithParam<AssemblySource> {};

TEST_P(ExtractedParts, OpenAsInTheOriginal) {
  const ScratchFolder folder;
  const fs::path in = file_of(GetParam(), folder);
  if (in.empty()) GTEST_SKIP() << why_no_sample();
  EXPECT_EQ(differences_of_parts(in, folder / "part.stp"), "");
}

TEST_P(EveryExtractedPart, OpensAsInTheOriginal) {
  const ScratchFolder folder;
  const fs::path in = file_of(GetParam(), folder);
  if (in.empty()) GTEST_SKIP() << why_no_sample();
  EXPECT_EQ(differences_of_parts(in, folder / "part.stp"), "");
}

INSTANTIATE_TEST_SUITE_P(Assemblies, ExtractedParts,
                         testing::Values(AssemblySource{"as1-oc-214.stp"},
                                         AssemblySource{"desk-lamp.step"},
                                         AssemblySource{"transformer-ap242.step"},
                                         AssemblySource{"own-bodies", 2}),
                         [](const auto& test) { return test_name(test.param); });

INSTANTIATE_TEST_SUITE_P(Assemblies, EveryExtractedPart, testing::ValuesIn(every_assembly()),
                         [](const auto& test) { return test_name(test.param); });

}  // namespace
}  // namespace Kessel::test
