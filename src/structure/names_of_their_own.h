// File names that do not count among those of a run.
#pragma once

#include <cstdint>
#include <filesystem>
#include <map>

#include "kessel/part.h"

namespace Kessel {

/// While one lives, parts get names as in a run that begins afresh; however it ends, the names that
/// were given before are the ones that count again.
class NamesOfTheirOwn {
 public:
  NamesOfTheirOwn() { Part::_filenames.swap(before_); }
  NamesOfTheirOwn(const NamesOfTheirOwn&) = delete;
  NamesOfTheirOwn& operator=(const NamesOfTheirOwn&) = delete;
  ~NamesOfTheirOwn() { Part::_filenames.swap(before_); }

 private:
  std::map<std::filesystem::path, std::uint32_t> before_;
};

}  // namespace Kessel
