// The time that headers have.
#include <gtest/gtest.h>

#include <ctime>
#include <regex>
#include <string>

#include "encoding/time_stamp.h"

namespace Kessel::test {
namespace {

TEST(TimeStamp, HasSecondsAndTheOffsetOfUtc) {
  const std::regex form(R"(\d{4}-\d\d-\d\dT\d\d:\d\d:\d\d\+00:00)");
  EXPECT_TRUE(std::regex_match(current_time_stamp(), form)) << current_time_stamp();
}

TEST(TimeStamp, IsNowInUtc) {
  const auto stamp_of = [](std::time_t time) {
    char text[26];
    std::strftime(text, sizeof text, "%FT%T+00:00", std::gmtime(&time));
    return std::string(text);
  };
  const std::string before = stamp_of(std::time(nullptr));
  const std::string stamp = current_time_stamp();
  // time() may lag a tick behind the clock of the stamp; two seconds forgive that.
  const std::string after = stamp_of(std::time(nullptr) + 2);
  EXPECT_LE(before, stamp);
  EXPECT_LE(stamp, after);
}

}  // namespace
}  // namespace Kessel::test
