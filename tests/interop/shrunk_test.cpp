// Shrunk files, read by a CAD kernel: the assembly as it was.
#include <gtest/gtest.h>

#include "interop/assemblies.h"
#include "interop/kernel_reader.h"
#include "kessel/shrink.h"
#include "support/scratch_folder.h"

namespace Kessel::test {
namespace {

class ShrunkAssembly : public testing::TestWithParam<AssemblySource> {};

TEST_P(ShrunkAssembly, OpensAsTheOriginal) {
  const ScratchFolder folder;
  const std::filesystem::path in = file_of(GetParam(), folder);
  if (in.empty()) GTEST_SKIP() << why_no_sample();
  shrink(in, folder / "out.stp", {.drop_unreachable = true});
  EXPECT_EQ(differences(read_free_shapes(in), read_free_shapes(folder / "out.stp")), "");
  EXPECT_EQ(differences(read_remarks(in), read_remarks(folder / "out.stp")), "");
}

INSTANTIATE_TEST_SUITE_P(Every, ShrunkAssembly, testing::ValuesIn(every_assembly()),
                         [](const auto& test) { return test_name(test.param); });
INSTANTIATE_TEST_SUITE_P(Some, ShrunkAssembly,
                         testing::Values(AssemblySource{"desk-lamp.step"},
                                         AssemblySource{"dm1-id-214.stp"},
                                         AssemblySource{"own-bodies", 2}),
                         [](const auto& test) { return test_name(test.param); });

}  // namespace
}  // namespace Kessel::test
