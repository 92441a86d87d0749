// The table of alphabets in the sources is what its script writes.
#include <gtest/gtest.h>

#include <filesystem>

#include "support/scratch_folder.h"
#include "support/table_scripts.h"

namespace Kessel::test {
namespace {

TEST(Alphabets, AreWhatTheirScriptWrites) {
  if (run_in_shell("command -v python3").status != 0) GTEST_SKIP() << "no Python";
  const auto [printed, status] = run_table_script("generate_alphabets.py", "");
  EXPECT_EQ(status, 0);
  EXPECT_EQ(printed,
            read_file(std::filesystem::path(PROJECT_FOLDER) / "src/exchange/alphabets.inc"));
}

}  // namespace
}  // namespace Kessel::test
