// The table of graphic characters in the sources is what its script prints.
#include <gtest/gtest.h>
#include <stdio.h>

#include <array>
#include <filesystem>
#include <fstream>
#include <string>

#include "support/scratch_folder.h"

namespace Kessel::test {
namespace {

namespace fs = std::filesystem;

const fs::path UNICODE_DATA = fs::path(UNICODE_DATA_FOLDER) / "UnicodeData.txt";

/// The version that the installed data has, as its files state it.
std::string installed_version() {
  std::ifstream ages(fs::path(UNICODE_DATA_FOLDER) / "DerivedAge.txt");
  std::string line;
  std::getline(ages, line);  // "# DerivedAge-15.0.0.txt"
  return line;
}

/// What `command` prints on standard output, and its exit status.
std::pair<std::string, int> run(const std::string& command) {
  FILE* pipe = ::popen(command.c_str(), "r");
  if (pipe == nullptr) return {"", -1};
  std::string printed;
  std::array<char, 4096> buffer{};
  std::size_t count = 0;
  while ((count = std::fread(buffer.data(), 1, buffer.size(), pipe)) > 0) {
    printed.append(buffer.data(), count);
  }
  return {printed, ::pclose(pipe)};
}

TEST(GraphicTable, IsWhatItsScriptPrints) {
  if (!fs::exists(UNICODE_DATA)) GTEST_SKIP() << "no " << UNICODE_DATA;
  if (installed_version() != "# DerivedAge-15.0.0.txt") GTEST_SKIP() << "data of another version";
  if (run("command -v python3").second != 0) GTEST_SKIP() << "no Python";
  const fs::path project = PROJECT_FOLDER;
  const auto [printed, status] =
      run("python3 '" + (project / "tools/generate_graphic_ranges.py").string() + "' '" +
          UNICODE_DATA.string() + "'");
  EXPECT_EQ(status, 0);
  EXPECT_EQ(read_file(project / "src/encoding/graphic_ranges.inc"), printed);
}

}  // namespace
}  // namespace Kessel::test
