// The table of graphic characters in the sources is what its script prints.
#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "support/scratch_folder.h"
#include "support/table_scripts.h"

namespace Kessel::test {
namespace {

TEST(GraphicTable, IsWhatItsScriptPrints) {
  if (const std::string why = why_no_tables(); !why.empty()) GTEST_SKIP() << why;
  const auto [printed, status] =
      run_table_script("generate_graphic_ranges.py", (UNICODE_DATA / "UnicodeData.txt").string());
  EXPECT_EQ(status, 0);
  const std::filesystem::path project = PROJECT_FOLDER;
  EXPECT_EQ(read_file(project / "src/encoding/graphic_ranges.inc"), printed);
}

}  // namespace
}  // namespace Kessel::test
