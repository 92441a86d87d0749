// Looking at a file leaves nothing behind: no output, no file.
#include <gtest/gtest.h>

#include <filesystem>
#include <thread>

#include "findings/messages.h"
#include "inspection/products.h"
#include "kessel/assembly.h"
#include "kessel/summary.h"
#include "support/scratch_folder.h"
#include "support/split_run.h"

namespace Kessel::test {
namespace {

namespace fs = std::filesystem;

/// Inputs whose split prints something.
const std::string TALKATIVE[] = {
    std::string(LID_ALONE),
    std::string(CYCLE),
    std::string(BOX_WITH_LID) + "#20=NEXT_ASSEMBLY_USAGE_OCCURRENCE('1','','',#3,$,$);\n",
    std::string(BOX_WITH_LID) + "#20=SHAPE_DEFINITION_REPRESENTATION($,$);\n",
};

TEST(Quiet, NothingIsPrintedOrWritten) {
  for (const std::string& records : TALKATIVE) {
    SCOPED_TRACE(records);
    EXPECT_NE(split_text(exchange_file(records)).messages, "");
    const ScratchFolder folder;
    const fs::path in = folder.write("in.stp", exchange_file(records));
    EXPECT_EQ(printed_by([&] { read_assembly(in); }), "");
    EXPECT_EQ(printed_by([&] { read_summary(in); }), "");
    EXPECT_EQ(std::distance(fs::directory_iterator("."), fs::directory_iterator()), 1);
  }
}

TEST(Silence, EndsWithItsScopeAndMayBeNested) {
  EXPECT_EQ(printed_by([] {
              messages() << "a";
              {
                const Silence outer;
                {
                  const Silence inner;
                  messages() << "b";
                }
                messages() << "c";
              }
              messages() << "d";
            }),
            "ad");
}

TEST(Silence, IsThatOfOneThread) {
  EXPECT_EQ(printed_by([] {
              const Silence silence;
              std::thread([] { messages() << "other"; }).join();
              messages() << "own";
            }),
            "other");
}

}  // namespace
}  // namespace Kessel::test
