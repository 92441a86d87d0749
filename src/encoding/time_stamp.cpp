#include "encoding/time_stamp.h"

#include <chrono>
#include <cstddef>

namespace Kessel {

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
