// Lines that are drawn, compared with the edges that a CAD kernel reads from the same file.
#include <gtest/gtest.h>

#include "interop/assemblies.h"
#include "interop/kernel_edges.h"
#include "support/scratch_folder.h"

namespace Kessel::test {
namespace {

class DrawnEdges : public testing::TestWithParam<AssemblySource> {};

TEST_P(DrawnEdges, AreThoseOfTheKernel) {
  const ScratchFolder folder;
  const std::filesystem::path in = file_of(GetParam(), folder);
  if (in.empty()) GTEST_SKIP() << why_no_sample();
  const Drawing drawing = read_drawing(in, {.tolerance = 1e-6});
  for (const DrawnPart& part : drawing.parts) EXPECT_EQ(part.dropped, 0u);
  KernelEdges kernel(read_edges(in));
  std::string differences;
  const std::vector<PlacedEdge> drawn = drawn_edges(drawing);
  EXPECT_FALSE(drawn.empty());
  for (const PlacedEdge& edge : drawn) differences += kernel.take(edge);
  EXPECT_EQ(differences, "");
  EXPECT_EQ(kernel.left(), "");
}

/// All that the kernel reads the shapes of: not a faceted solid that is mapped.
std::vector<AssemblySource> drawn_assemblies() {
  std::vector<AssemblySource> sources = every_assembly();
  std::erase_if(sources, [](const auto& source) { return source.name == "mapped-ap242.stp"; });
  sources.push_back({"io1-tu-203.stp"});
  return sources;
}

INSTANTIATE_TEST_SUITE_P(Assemblies, DrawnEdges, testing::ValuesIn(drawn_assemblies()),
                         [](const auto& test) { return test_name(test.param); });

}  // namespace
}  // namespace Kessel::test
