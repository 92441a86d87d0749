// What the checked form of a run throws.
#pragma once

#include <filesystem>
#include <stdexcept>
#include <system_error>

#include "kessel/export.h"
#include "kessel/finding.h"

namespace Kessel {

/// An input that cannot be read, on which a run would not end, or that would take more memory than
/// it may.
class KESSEL_EXPORT InputError : public std::runtime_error {
 public:
  /// `what()` is "lamp.step:12:5: " and the finding's sentence: the path as the system spells it,
  /// line and column where the finding has them. Without a path it is the sentence alone.
  explicit InputError(const Finding& finding, const std::filesystem::path& path = {});
  InputError(const InputError&);
  InputError& operator=(const InputError&) = delete;
  ~InputError() override;

  /// What was found, and where; lives as long as the exception.
  const Finding& finding() const;
  /// The file, as it was given or found; every function of the library sets it. Lives as long as
  /// the exception.
  const std::filesystem::path& path() const;

 private:
  Finding finding_;
  std::filesystem::path path_;
};

/// An output file that was not written whole, or not at all, since there is something already.
class KESSEL_EXPORT OutputError : public std::runtime_error {
 public:
  /// `what()` is the path as the system spells it, ": cannot be written: " and the reason.
  OutputError(const std::filesystem::path& path, std::error_code reason);
  OutputError(const OutputError&);
  OutputError& operator=(const OutputError&) = delete;
  ~OutputError() override;

  /// The file; lives as long as the exception.
  const std::filesystem::path& path() const;
  /// The system's reason: `std::errc::file_exists`, `no_space_on_device`, ...
  std::error_code reason() const;

 private:
  std::filesystem::path path_;
  std::error_code reason_;
};

}  // namespace Kessel
