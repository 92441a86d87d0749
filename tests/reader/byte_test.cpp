// The search for one byte in a short text.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <memory>
#include <string>
#include <string_view>

#include "reader/text.h"

namespace Kessel::test {
namespace {

/// Where find_byte() finds `wanted` in a copy of `text` around which no byte may be touched.
std::size_t found_at(std::string_view text, char wanted) {
  const auto copy = std::make_unique<char[]>(text.size());
  std::copy(text.begin(), text.end(), copy.get());
  const char* const end = copy.get() + text.size();
  return static_cast<std::size_t>(find_byte(copy.get(), end, wanted) - copy.get());
}

TEST(FindByte, TheFirstIsFoundAtEveryPlaceOfATextOfAnyLength) {
  for (std::size_t length = 1; length < 70; ++length) {
    for (std::size_t place = 0; place < length; ++place) {
      const std::string text = std::string(place, 'A') + std::string(length - place, '(');
      ASSERT_EQ(found_at(text, '('), place) << text;
    }
  }
}

TEST(FindByte, WithoutItTheEndIsGiven) {
  for (std::size_t length = 0; length < 70; ++length) {
    EXPECT_EQ(found_at(std::string(length, 'A'), '('), length);
  }
}

TEST(FindByte, NoOtherByteIsTakenForIt) {
  for (int wanted = 0; wanted < 256; ++wanted) {
    std::string text;
    for (int byte = 0; byte < 256; ++byte) {
      if (byte != wanted) text += static_cast<char>(byte);
    }
    text += static_cast<char>(wanted);
    EXPECT_EQ(found_at(text, static_cast<char>(wanted)), 255u) << wanted;
  }
}

}  // namespace
}  // namespace Kessel::test
