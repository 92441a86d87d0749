// Generated assemblies, split and joined.
//
// VELKSTEP_RANDOM_SEEDS=100000 tries that many files instead of the usual number, and
// VELKSTEP_FIRST_SEED=42 begins with another one. TMPDIR=/dev/shm spares the disk.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "assemblies/random_assembly.h"
#include "round_trip/round_trip.h"
#include "support/scratch_folder.h"
#include "support/seeds.h"

namespace Kessel::test {
namespace {

constexpr std::uint64_t USUAL_SEEDS = 150;

class RandomAssemblies : public testing::TestWithParam<AssemblyStyle> {};

TEST_P(RandomAssemblies, ComeOutWhole) {
  const auto [first, count] = seeds_to_try(USUAL_SEEDS);
  const ScratchFolder folder;
  for (std::uint64_t seed = first; seed < first + count; ++seed) {
    folder.write("in.stp", random_assembly(seed));
    EXPECT_THAT(round_trip_faults("in.stp", GetParam(), true), testing::IsEmpty())
        << "seed " << seed;
  }
}

INSTANTIATE_TEST_SUITE_P(Styles, RandomAssemblies,
                         testing::Values(AssemblyStyle::lean, AssemblyStyle::nested),
                         [](const auto& test) {
                           return test.param == AssemblyStyle::lean ? "lean" : "nested";
                         });

}  // namespace
}  // namespace Kessel::test
