#include "support/table_scripts.h"

#include <stdio.h>

#include <array>
#include <fstream>

namespace Kessel::test {

namespace {

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
  if (run("command -v python3").second != 0) return "no Python";
  return {};
}

std::pair<std::string, int> run_table_script(const std::string& script,
                                             const std::string& arguments) {
  const std::filesystem::path path = std::filesystem::path(PROJECT_FOLDER) / "tools" / script;
  return run("python3 '" + path.string() + "' " + arguments);
}

}  // namespace Kessel::test
