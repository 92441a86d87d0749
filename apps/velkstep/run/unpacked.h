// Compressed files that an input refers to.
#pragma once

#include <filesystem>
#include <functional>
#include <list>
#include <string>

#include "system/input.h"

namespace Velkstep {

/// Unpacks the compressed ones of files that are read with an input; they are there as long as it
/// lives.
class Unpacked {
 public:
  /// What to ask for where a file can be read: JoinOptions::readable.
  std::function<std::filesystem::path(const std::filesystem::path&)> readable() {
    return [this](const std::filesystem::path& file) { return path_of(file); };
  }

 private:
  std::filesystem::path path_of(const std::filesystem::path& file) {
    const std::string name = std::filesystem::absolute(file).string();
    if (!needs_a_copy(name)) return file;
    return inputs_.emplace_back(name).path();
  }

  std::list<Input> inputs_;
};

}  // namespace Velkstep
