// Paths as UTF-8 text, whatever the file system's own encoding is.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace Kessel {

inline std::filesystem::path path_of_utf8(std::string_view utf8) {
  return std::u8string(utf8.begin(), utf8.end());
}

/// `path` as UTF-8; where `fspath_to_utf8` refuses a name that is none, its bytes as they are.
inline std::string utf8_of_path(const std::filesystem::path& path) {
  const std::u8string text = path.u8string();
  return {text.begin(), text.end()};
}

}  // namespace Kessel
