// Looking at a file leaves nothing behind: no output, no file, no name taken.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <memory>
#include <thread>

#include "findings/messages.h"
#include "inspection/products.h"
#include "kessel/assembly.h"
#include "kessel/encoding.h"
#include "kessel/file.h"
#include "kessel/splitter.h"
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

TEST(Quiet, NamesOfARunThatGoesOnAreLeftAlone) {
  const ScratchFolder folder;
  const fs::path in = folder.write("in.stp", exchange_file(BOX_WITH_LID));
  const std::unique_ptr<File> file(File::from(in, decode_step_to_utf8));
  const auto names = Part::_filenames;
  const Assembly assembly = read_assembly(in);
  EXPECT_EQ(assembly.parts[0].file, "#1_part.stp");  // Not the second of that name.
  EXPECT_EQ(Part::_filenames, names);
  Part::free_statics();
}

TEST(Quiet, NamesAreLeftAloneByOneThatFails) {
  const ScratchFolder folder;
  const fs::path in =
      folder.write("in.stp", exchange_file(std::string(BOX_WITH_LID) + product(21, "'a','a',''") +
                                           "#30=SHAPE_DEFINITION_REPRESENTATION(#2000000,#8);\n"));
  EXPECT_THROW(read_assembly(in), std::out_of_range);
  EXPECT_THAT(Part::_filenames, testing::IsEmpty());
  EXPECT_EQ(printed_by([] { messages() << "heard"; }), "heard");
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
