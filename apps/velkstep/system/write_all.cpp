#include "system/write_all.h"

#include <unistd.h>

#include <cerrno>
#include <stdexcept>
#include <string>
#include <system_error>

namespace Velkstep {

void write_all(int to, std::string_view text) {
  while (!text.empty()) {
    const ssize_t written = ::write(to, text.data(), text.size());
    if (written < 0 && errno != EINTR) {
      throw std::runtime_error(
          "the temporary file cannot be written: " + std::system_category().message(errno) +
          "; TMPDIR names another folder for it");
    }
    if (written > 0) text.remove_prefix(static_cast<std::size_t>(written));
  }
}

}  // namespace Velkstep
