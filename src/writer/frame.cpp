// Header rewriting and the time stamp.
#include "writer/frame.h"

#include <chrono>
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

std::string current_time_stamp() {
  using namespace std::chrono;
  const auto now = floor<seconds>(system_clock::now());
  const auto today = floor<days>(now);
  const year_month_day date(today);
  const hh_mm_ss time(now - today);

  std::string stamp;
  const auto put = [&](long value, int width, char after) {
    const std::string digits = std::to_string(value);
    stamp.append(static_cast<std::size_t>(width) - digits.size(), '0').append(digits) += after;
  };
  put(int{date.year()}, 4, '-');
  put(static_cast<long>(unsigned{date.month()}), 2, '-');
  put(static_cast<long>(unsigned{date.day()}), 2, 'T');
  put(time.hours().count(), 2, ':');
  put(time.minutes().count(), 2, ':');
  put(time.seconds().count(), 2, '+');
  return stamp + "00:00";
}

}  // namespace Kessel
