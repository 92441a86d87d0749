// Forms of assemblies that real systems write, or may, split and joined.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "assemblies/form_maker.h"
#include "round_trip/round_trip.h"
#include "support/scratch_folder.h"

namespace Kessel::test {
namespace {

TEST(FormRoundTrip, ComesOutWhole) {
  const ScratchFolder folder;
  for (const AssemblyForm& form : assembly_forms()) {
    folder.write("in.stp", form.text());
    for (const AssemblyStyle style : {AssemblyStyle::nested, AssemblyStyle::lean}) {
      EXPECT_THAT(round_trip_faults("in.stp", style, true), testing::IsEmpty()) << form.name;
    }
  }
}

}  // namespace
}  // namespace Kessel::test
