// How an input looks from outside.
#pragma once

#include <cstdint>
#include <filesystem>
#include <system_error>

namespace Kessel {

/// To notice that someone changes an input while it is read twice.
struct InputStamp {
  explicit InputStamp(const std::filesystem::path& in) {
    std::error_code ignored;  // What cannot be looked at looks the same each time.
    size = std::filesystem::file_size(in, ignored);
    written = std::filesystem::last_write_time(in, ignored);
  }
  bool operator==(const InputStamp&) const = default;

  std::uintmax_t size;
  std::filesystem::file_time_type written;
};

}  // namespace Kessel
