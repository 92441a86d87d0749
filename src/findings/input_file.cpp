// Whether there is a file that can be read twice.
#include "findings/input_file.h"

#include <cerrno>
#include <system_error>

#include "findings/refusals.h"
#include "kessel/errors.h"

namespace Kessel {

std::optional<Finding> find_no_regular_file(const std::filesystem::path& in) {
  using std::filesystem::file_type;
  std::error_code ignored;
  switch (std::filesystem::status(in, ignored).type()) {
    case file_type::regular:
    case file_type::not_found:
    case file_type::none:
      return std::nullopt;
    case file_type::directory:
      return unreadable_file("is a folder");
    default:
      return unreadable_file("is not a regular file, and the input is read twice");
  }
}

std::ifstream open_input(const std::filesystem::path& in) {
  if (const auto finding = find_no_regular_file(in)) throw InputError(*finding);
  errno = 0;
  std::ifstream file(in, std::ios::in | std::ios::binary);
  if (!file.is_open()) {
    const std::error_code reason(errno != 0 ? errno : EIO, std::generic_category());
    throw InputError(unreadable_file("cannot be opened: " + reason.message()));
  }
  return file;
}

std::uint64_t size_of_file(const std::filesystem::path& in) {
  std::error_code unknown;
  const std::uintmax_t size = std::filesystem::file_size(in, unknown);
  return unknown ? 0 : size;
}

}  // namespace Kessel
