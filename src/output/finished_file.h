// A file that appears when it is finished, or not at all.
#pragma once

#include <cstdint>
#include <filesystem>
#include <ostream>

#include "output/fresh_file.h"

namespace Kessel {

/// A fresh file beside another, which takes that one's name at the end.
class FinishedFile {
 public:
  /// Makes the fresh file. Throws OutputError where it cannot be made, or where there is something
  /// at `path` and `replace` is not set, or what is no file: a folder, a device, a pipe.
  FinishedFile(const std::filesystem::path& path, bool replace);

  std::ostream& stream() { return fresh_.stream(); }
  /// In place of the stream: where others are to write it. They must have closed it before
  /// finish().
  const std::filesystem::path& hand_over() {
    fresh_.hand_over();
    return fresh_.path();
  }

  /// Closes the file and moves it to its place. Throws OutputError where it was not written whole,
  /// or, without `replace`, where there is something by now. Returns its size in bytes.
  std::uint64_t finish();

 private:
  std::filesystem::path path_;
  bool replace_;
  FreshFile fresh_;
};

}  // namespace Kessel
