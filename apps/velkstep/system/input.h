// Where a command's input comes from: a file, a pipe, or standard input.
#pragma once

#include <filesystem>
#include <string>

#include "system/descriptor.h"

namespace Velkstep {

/// Whether an argument is standard input, the path of a pipe, or that of a compressed file.
bool needs_a_copy(const std::string& argument);

/// An input that can be read more than once, as long as the object lives. What can be read only
/// once, standard input and pipes, is copied into a temporary file without a name, which is gone
/// however the process ends; so is what is compressed (see system/archive.h), unpacked.
class Input {
 public:
  /// `argument` is a path, or "-" for standard input. Throws `Kessel::InputError` for an
  /// archive that cannot be unpacked, and `std::runtime_error` with the reason when there is
  /// nothing else that can be read.
  explicit Input(const std::string& argument);

  /// Where to read it.
  const std::filesystem::path& path() const { return path_; }

 private:
  void spool(int source);
  void unpack_if_compressed(int file);
  void read_from(Descriptor copy);

  std::filesystem::path path_;
  Descriptor copy_;
};

}  // namespace Velkstep
