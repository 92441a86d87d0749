// Instance numbers read from text and written to it.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "reader/text.h"
#include "support/effort.h"

namespace Kessel::test {
namespace {

struct Reading {
  std::uint32_t number;
  std::size_t length;  ///< how many characters were passed
  bool operator==(const Reading&) const = default;
};

/// Reads from a copy of `text` behind whose end no byte may be touched.
Reading read(std::string_view text) {
  const auto copy = std::make_unique<char[]>(text.size());
  std::copy(text.begin(), text.end(), copy.get());
  const char* p = copy.get();
  const std::uint32_t number = read_number(p, copy.get() + text.size());
  return {number, static_cast<std::size_t>(p - copy.get())};
}

Reading read_by_standard_library(const std::string& text) {
  const std::size_t length = std::min(text.find_first_not_of("0123456789"), text.size());
  const std::string digits = text.substr(0, length);
  const std::size_t first = std::min(digits.find_first_not_of('0'), digits.size());
  if (digits.size() - first > 10 || digits.size() == first) return {0, length};
  const unsigned long long value = std::stoull(digits);
  return {value > 4'294'967'295 ? 0 : static_cast<std::uint32_t>(value), length};
}

struct Row {
  std::string_view text;
  Reading expected;
};

void expect_readings(const std::vector<Row>& rows) {
  for (const auto& [text, expected] : rows) {
    SCOPED_TRACE(text);
    const Reading reading = read(text);
    EXPECT_EQ(reading.number, expected.number);
    EXPECT_EQ(reading.length, expected.length);
  }
}

TEST(ReadNumber, DigitsUpToTheFirstOtherCharacterCount) {
  expect_readings({{"7", {7, 1}},
                   {"12=PRODUCT()", {12, 2}},
                   {"10,#11", {10, 2}},
                   {"5)", {5, 1}},
                   {"1234567", {1'234'567, 7}},
                   {"12345678", {12'345'678, 8}},
                   {"123456789", {123'456'789, 9}},
                   {"1.5", {1, 1}},
                   {"3\xB2", {3, 1}}});
}

TEST(ReadNumber, WithoutADigitItIsZero) {
  expect_readings({{"", {0, 0}},
                   {"x", {0, 0}},
                   {" 5", {0, 0}},
                   {"-5", {0, 0}},
                   {"+5", {0, 0}},
                   {"/5", {0, 0}},
                   {":5", {0, 0}},
                   {"\xB5", {0, 0}}});
}

TEST(ReadNumber, LeadingZerosDoNotMatter) {
  expect_readings({{"0", {0, 1}},
                   {"000", {0, 3}},
                   {"007", {7, 3}},
                   {"0000000000000000000007x", {7, 22}},
                   {"000000000004294967295", {4'294'967'295, 21}}});
}

TEST(ReadNumber, ValueAbove4294967295IsZeroAndItsDigitsArePassed) {
  expect_readings({{"4294967295", {4'294'967'295, 10}},
                   {"4294967296", {0, 10}},
                   {"4294967300", {0, 10}},
                   {"9999999999", {0, 10}},
                   {"42949672950", {0, 11}},
                   {"18446744073709551616", {0, 20}},
                   {"18446744073709551623,", {0, 20}},
                   {"99999999999999999999999999999999999999x", {0, 38}}});
}

TEST(ReadNumber, EndCutsTheDigitsOff) {
  const std::string_view text = "123456789012";
  const char* p = text.data();
  EXPECT_EQ(read_number(p, text.data() + 3), 123u);
  EXPECT_EQ(p, text.data() + 3);
  EXPECT_EQ(read_number(p, text.data() + 3), 0u);
  EXPECT_EQ(p, text.data() + 3);
}

TEST(ReadNumber, RandomTextsAreReadAsByTheStandardLibrary) {
  constexpr std::string_view ALPHABET = "0000123456789123456789,/:)\xB1";
  std::mt19937 random(3101);
  for (std::uint64_t round = 0; round < tries(200'000); ++round) {
    std::string text;
    const std::size_t choice = random() % 3 == 0 ? ALPHABET.size() : ALPHABET.size() - 5;
    for (std::size_t length = random() % 24; length > 0; --length) {
      text += ALPHABET[random() % choice];
    }
    if (random() % 2 == 0) text += ",#12";
    ASSERT_EQ(read(text), read_by_standard_library(text)) << text;
  }
}

/// Writes where exactly NUMBER_ROOM bytes are free.
std::string written(std::uint32_t number) {
  const auto out = std::make_unique<char[]>(Exchange::NUMBER_ROOM);
  return {out.get(), Exchange::write_number(out.get(), number)};
}

TEST(WriteNumber, NumbersOfEveryLengthAreWrittenAsByTheStandardLibrary) {
  for (std::uint32_t number = 0; number <= 1'002'000; ++number) {
    ASSERT_EQ(written(number), std::to_string(number));
  }
  for (std::uint64_t power = 1; power <= 1'000'000'000; power *= 10) {
    for (const std::uint64_t number : {power - 1, power, power + 1, 4 * power + 1}) {
      const auto written_number = static_cast<std::uint32_t>(number);
      ASSERT_EQ(written(written_number), std::to_string(written_number));
    }
  }
  EXPECT_EQ(written(4'294'967'295), "4294967295");
}

}  // namespace
}  // namespace Kessel::test
