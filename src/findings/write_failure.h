// The first file of a run that could not be written.
#pragma once

#include <filesystem>
#include <optional>
#include <system_error>

namespace Kessel {

/// A file that could not be opened, written or closed, and why.
struct WriteFailure {
  std::filesystem::path path;
  std::error_code reason;
};

/// The first failure since the last `forget_write_failure`: a stream that is opened again forgets
/// its own.
const std::optional<WriteFailure>& first_write_failure();

/// Notes that a call on `path` failed just now; `errno` tells why. Keeps an earlier failure.
void note_write_failure(const std::filesystem::path& path);

void forget_write_failure();

/// Throws `OutputError` where there was a failure.
void throw_write_failure();

}  // namespace Kessel
