#include "writer/file_header.h"

#include <cstddef>

namespace Kessel {

std::string make_file_header(const std::string& header, std::string_view file_name,
                             std::string_view time_stamp) {
  constexpr std::size_t NONE = std::string::npos;
  std::string text = header;
  // NONE + 1 is 0: behind an apostrophe that was not found, a search begins at the front.
  const std::size_t name_open = text.find('\'', text.find("FILE_NAME"));
  std::size_t name_close = text.find('\'', name_open + 1);
  if (name_open != NONE && name_close != NONE) {
    text.replace(name_open + 1, name_close - name_open - 1, file_name);
    name_close = name_open + 1 + file_name.size();
  }
  const std::size_t time_open = text.find('\'', name_close + 1);
  const std::size_t time_close = text.find('\'', time_open + 1);
  if (time_open != NONE && time_close != NONE) {
    text.replace(time_open + 1, time_close - time_open - 1, time_stamp);
  }
  return text;
}

}  // namespace Kessel
