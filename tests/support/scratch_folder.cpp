#include "support/scratch_folder.h"

#include <gtest/gtest.h>
#include <stdlib.h>

#include <fstream>
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
  constexpr std::string_view PATTERN = "dddd-dd-ddTdd:dd:dd+00:00";
  const auto is_stamp = [&](std::size_t at) {
    for (std::size_t i = 0; i < PATTERN.size(); ++i) {
      const char c = text[at + i];
      if (PATTERN[i] == 'd' ? c < '0' || c > '9' : c != PATTERN[i]) return false;
    }
    return true;
  };
  // Every stamp ends in the same six characters.
  constexpr std::string_view ZONE = "+00:00";
  for (std::size_t zone = 0; (zone = text.find(ZONE, zone)) != std::string::npos; ++zone) {
    const std::size_t length = PATTERN.size() - ZONE.size();
    if (zone >= length && is_stamp(zone - length)) {
      text.replace(zone - length, PATTERN.size(), "<time>");
      zone -= length;
    }
  }
  return text;
}

std::filesystem::path samples_folder() {
  std::filesystem::path folder = VELKSTEP_SAMPLES;
  return std::filesystem::is_directory(folder) ? folder : std::filesystem::path();
}

std::string why_no_sample() {
  if (samples_folder().empty()) return "no folder with real assemblies: " VELKSTEP_SAMPLES;
  return "not among the real assemblies in " VELKSTEP_SAMPLES;
}

}  // namespace Kessel::test
