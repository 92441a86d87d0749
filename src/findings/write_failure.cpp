// The first file of a run that could not be written.
#include "findings/write_failure.h"

#include <cerrno>

#include "kessel/errors.h"

namespace Kessel {

namespace {
std::optional<WriteFailure> _failure;
}

const std::optional<WriteFailure>& first_write_failure() {
  return _failure;
}

void note_write_failure(const std::filesystem::path& path) {
  const int reason = errno != 0 ? errno : EIO;
  if (!_failure) _failure = WriteFailure{path, {reason, std::generic_category()}};
}

void forget_write_failure() {
  _failure.reset();
}

void throw_write_failure() {
  if (_failure) throw OutputError(_failure->path, _failure->reason);
}

}  // namespace Kessel
