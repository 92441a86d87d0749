#include "support/scratch_folder.h"

#include <gtest/gtest.h>
#include <stdlib.h>

#include <fstream>
#include <regex>
#include <sstream>

namespace Kessel::test {

ScratchFolder::ScratchFolder() : before_(std::filesystem::current_path()) {
  std::string name = (std::filesystem::temp_directory_path() / "velkstep-XXXXXX").string();
  if (::mkdtemp(name.data()) == nullptr) throw std::runtime_error("no temporary folder");
  path_ = name;
  std::filesystem::current_path(path_);
}

ScratchFolder::~ScratchFolder() {
  std::error_code ignored;
  std::filesystem::current_path(before_, ignored);
  std::filesystem::remove_all(path_, ignored);
}

std::filesystem::path ScratchFolder::write(std::string_view name, std::string_view text) const {
  const std::filesystem::path path = path_ / name;
  std::ofstream(path, std::ios::binary) << text;
  return path;
}

std::string read_file(const std::filesystem::path& path) {
  std::ifstream file(path, std::ios::binary);
  EXPECT_TRUE(file.is_open()) << path;
  std::ostringstream text;
  text << file.rdbuf();
  return text.str();
}

std::string without_time_stamps(std::string text) {
  static const std::regex STAMP(R"(\d{4}-\d\d-\d\dT\d\d:\d\d:\d\d\+00:00)");
  return std::regex_replace(text, STAMP, "<time>");
}

std::filesystem::path samples_folder() {
  std::filesystem::path folder = VELKSTEP_SAMPLES;
  return std::filesystem::is_directory(folder) ? folder : std::filesystem::path();
}

}  // namespace Kessel::test
