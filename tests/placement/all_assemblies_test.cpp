// What must hold of every placement, on real and generated assemblies.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>

#include "instances/loader.h"
#include "interop/assemblies.h"
#include "placement/check_placement.h"

namespace Kessel::test {
namespace {

class PlacementOf : public testing::TestWithParam<AssemblySource> {};

TEST_P(PlacementOf, HoldsInBothStyles) {
  const ScratchFolder folder;
  const std::filesystem::path path = file_of(GetParam(), folder);
  if (path.empty()) GTEST_SKIP() << why_no_sample();
  std::ifstream in(path, std::ios::binary);
  Instances instances;
  load_instances(in, instances);
  const Products products = find_products(instances);
  for (const AssemblyStyle style : {AssemblyStyle::lean, AssemblyStyle::nested}) {
    const Placement placement = place_records(instances, products, style);
    EXPECT_THAT(check_placement(instances, products, placement), testing::IsEmpty());
    EXPECT_THAT(check_remarks(instances, products, placement), testing::IsEmpty());
    EXPECT_TRUE(placement.warnings.empty());
  }
}

INSTANTIATE_TEST_SUITE_P(Assemblies, PlacementOf, testing::ValuesIn(every_assembly()),
                         [](const auto& test) { return test_name(test.param); });

}  // namespace
}  // namespace Kessel::test
