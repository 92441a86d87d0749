#include "system/write_advice.h"

#include <algorithm>
#include <iterator>

namespace Velkstep {

namespace {

struct WriteAdvice {
  std::errc reason;
  const char* text;
};

constexpr WriteAdvice WRITE_ADVICE[] = {
    {std::errc::no_space_on_device, "make room, or name a place on another disk"},
    {std::errc::no_such_file_or_directory, "make its folder first, or name another"},
    {std::errc::is_a_directory, "name a file"},
    {std::errc::not_supported, "only files are replaced, so name another"},
    {std::errc::file_too_large, "raise the limit of sizes (ulimit -f), or name another disk"},
    {std::errc::filename_too_long, "name a shorter one"},
    {std::errc::too_many_files_open, "raise the limit of open files (ulimit -n)"},
    {std::errc::too_many_files_open_in_system, "close other programs"},
};

constexpr const char* ANOTHER_PLACE = "name another place";

}  // namespace

std::string reason_with_advice(std::error_code reason) {
  const auto* found =
      std::find_if(std::begin(WRITE_ADVICE), std::end(WRITE_ADVICE),
                   [&](const WriteAdvice& advice) { return reason == advice.reason; });
  return reason.message() + "; " + (found == std::end(WRITE_ADVICE) ? ANOTHER_PLACE : found->text);
}

}  // namespace Velkstep
