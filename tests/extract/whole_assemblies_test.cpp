// Parts of real assemblies, the example and generated shapes.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "extract/extract_faults.h"
#include "interop/assemblies.h"

namespace Kessel::test {
namespace {

class ExtractFrom : public testing::TestWithParam<AssemblySource> {};

TEST_P(ExtractFrom, EveryPartComesOutWhole) {
  const ScratchFolder folder;
  const std::filesystem::path path = file_of(GetParam(), folder);
  if (path.empty()) GTEST_SKIP() << why_no_sample();
  EXPECT_THAT(extract_faults(path, true, true), testing::IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(Assemblies, ExtractFrom, testing::ValuesIn(every_assembly()),
                         [](const auto& test) { return test_name(test.param); });

}  // namespace
}  // namespace Kessel::test
