// Parts of generated assemblies; see tests/round_trip/random_assemblies_test.cpp for the seeds.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "assemblies/random_assembly.h"
#include "extract/extract_faults.h"
#include "support/scratch_folder.h"
#include "support/seeds.h"

namespace Kessel::test {
namespace {

TEST(ExtractRandom, PartsComeOutWhole) {
  const auto [first, count] = seeds_to_try(40);
  const ScratchFolder folder;
  for (std::uint64_t seed = first; seed < first + count; ++seed) {
    folder.write("in.stp", random_assembly(seed));
    EXPECT_THAT(extract_faults("in.stp", false), testing::IsEmpty()) << "seed " << seed;
  }
}

}  // namespace
}  // namespace Kessel::test
