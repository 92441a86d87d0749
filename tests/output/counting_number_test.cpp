#include "output/counting_number.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>

namespace Kessel {
namespace {

TEST(CountingNumber, CountsAsNumbersAreWritten) {
  for (const std::uint32_t first : {1U, 7U, 95U, 9'990U, 999'999U, 99'999'990U, 4'294'967'270U}) {
    CountingNumber number(first);
    for (std::uint32_t i = 0; i < 25; ++i) {
      char text[CountingNumber::ROOM + 8];
      EXPECT_EQ(std::string(text, number.write(text)), std::to_string(first + i));
    }
  }
}

}  // namespace
}  // namespace Kessel
