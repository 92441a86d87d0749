// Real assemblies, the example and generated shapes, split and joined.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "interop/assemblies.h"
#include "round_trip/round_trip.h"

namespace Kessel::test {
namespace {

class WholeAssembly : public testing::TestWithParam<AssemblySource> {};

TEST_P(WholeAssembly, ComesOutWhole) {
  const ScratchFolder folder;
  const std::filesystem::path path = file_of(GetParam(), folder);
  if (path.empty()) GTEST_SKIP() << why_no_sample();
  EXPECT_THAT(round_trip_faults(path, AssemblyStyle::lean, true), testing::IsEmpty());
  EXPECT_THAT(round_trip_faults(path, AssemblyStyle::nested, true), testing::IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(Assemblies, WholeAssembly, testing::ValuesIn(all_assemblies()),
                         [](const auto& test) { return test_name(test.param); });

}  // namespace
}  // namespace Kessel::test
