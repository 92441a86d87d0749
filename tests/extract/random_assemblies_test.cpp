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
  // What names a place of the asked product is left out, but stands in its file of a split.
  const AssemblyTraits traits{.styles_by_place = false};
  for (std::uint64_t seed = first; seed < first + count; ++seed) {
    folder.write("in.stp", random_assembly(seed, traits));
    EXPECT_THAT(extract_faults("in.stp", false, true), testing::IsEmpty()) << "seed " << seed;
  }
}

}  // namespace
}  // namespace Kessel::test
