#include "support/table_scripts.h"

#include <fstream>

namespace Kessel::test {

namespace {

/// The version that the installed data has, as its files state it.
std::string installed_version() {
  std::ifstream ages(UNICODE_DATA / "DerivedAge.txt");
  std::string line;
  std::getline(ages, line);
  return line;
}

}  // namespace

std::string why_no_tables() {
  if (!std::filesystem::exists(UNICODE_DATA / "UnicodeData.txt")) return "no Unicode data";
  if (installed_version() != "# DerivedAge-15.0.0.txt") return "data of another version";
  if (run_in_shell("command -v python3").status != 0) return "no Python";
  return {};
}

ShellRun run_table_script(const std::string& script, const std::string& arguments) {
  const std::filesystem::path path = std::filesystem::path(PROJECT_FOLDER) / "tools" / script;
  return run_in_shell("python3 '" + path.string() + "' " + arguments);
}

}  // namespace Kessel::test
