// Files that an input refers to and that are read with it, compressed ones, too.
#pragma once

#include <filesystem>
#include <functional>
#include <list>
#include <string>
#include <vector>

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

  /// Those that were asked for, as they are in their places.
  const std::vector<std::filesystem::path>& files() const { return files_; }

 private:
  std::filesystem::path path_of(const std::filesystem::path& file) {
    const std::string name = std::filesystem::absolute(file).string();
    files_.push_back(name);
    if (!needs_a_copy(name)) return file;
    return inputs_.emplace_back(name).path();
  }

  std::vector<std::filesystem::path> files_;
  std::list<Input> inputs_;
};

}  // namespace Velkstep
