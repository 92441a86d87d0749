// Whether there is a file that can be read twice.
#include "findings/input_file.h"

#include <system_error>

#include "findings/refusals.h"

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

}  // namespace Kessel
