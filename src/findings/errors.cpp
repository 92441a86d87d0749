// The exceptions of the checked form.
#include "kessel/errors.h"

#include <string>

namespace Kessel {

namespace {

/// A finding in one line for people, with the file that it is about.
std::string line_about(const Finding& finding, const std::filesystem::path& path) {
  if (path.empty()) return finding.sentence;
  std::string place = path.string();
  if (finding.line != 0) {
    place += ":" + std::to_string(finding.line) + ":" + std::to_string(finding.column);
  }
  return place + ": " + finding.sentence;
}

}  // namespace

InputError::InputError(const Finding& finding, const std::filesystem::path& path)
    : std::runtime_error(line_about(finding, path)), finding_(finding), path_(path) {}

InputError::InputError(const InputError&) = default;

InputError::~InputError() = default;

const Finding& InputError::finding() const {
  return finding_;
}

const std::filesystem::path& InputError::path() const {
  return path_;
}

OutputError::OutputError(const std::filesystem::path& path, std::error_code reason)
    : std::runtime_error(path.string() + ": cannot be written: " + reason.message()),
      path_(path),
      reason_(reason) {}

OutputError::OutputError(const OutputError&) = default;

OutputError::~OutputError() = default;

const std::filesystem::path& OutputError::path() const {
  return path_;
}

std::error_code OutputError::reason() const {
  return reason_;
}

}  // namespace Kessel
