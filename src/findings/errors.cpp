// The exceptions of the checked form.
#include "kessel/errors.h"

namespace Kessel {

InputError::InputError(const Finding& finding)
    : std::runtime_error(finding.sentence), finding_(finding) {}

InputError::InputError(const InputError&) = default;

InputError::~InputError() = default;

const Finding& InputError::finding() const {
  return finding_;
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
