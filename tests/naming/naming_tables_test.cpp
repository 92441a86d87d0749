// The tables behind file names in the sources are what their script writes.
#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "support/scratch_folder.h"
#include "support/table_scripts.h"

namespace Kessel::test {
namespace {

TEST(NamingTables, AreWhatTheirScriptWrites) {
  if (const std::string why = why_no_tables(); !why.empty()) GTEST_SKIP() << why;
  const ScratchFolder folder;
  const auto [printed, status] =
      run_table_script("generate_naming_tables.py", UNICODE_DATA.string() + " .");
  EXPECT_EQ(status, 0);
  const std::filesystem::path sources = std::filesystem::path(PROJECT_FOLDER) / "src/naming";
  for (const char* table : {"unicode_tables.inc", "ascii_table.inc"}) {
    EXPECT_EQ(read_file(sources / table), read_file(folder / table)) << table;
  }
}

}  // namespace
}  // namespace Kessel::test
