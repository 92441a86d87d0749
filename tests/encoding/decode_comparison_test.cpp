// The decoder against a plain one.
#include <gtest/gtest.h>

#include <cstddef>
#include <random>
#include <string>
#include <string_view>

#include "encoding/plain_decoding.h"
#include "kessel/encoding.h"
#include "support/effort.h"

namespace Kessel::test {
namespace {

using plain::decode_in_place;

/// Joins up to `most` pieces of directives and of what they are easily mistaken for.
std::string random_body(std::mt19937& random, unsigned most) {
  using namespace std::string_view_literals;
  static constexpr std::string_view PIECES[] = {
      "\\",   "\\",   "\\\\", "\\X\\", "\\X2\\", "\\X4\\", "\\X0\\", "\\X0\\", "\\S\\", "\\PA\\",
      "\\P",  "X",    "S",    "P",     "0",      "2",      "4",      "1",      "e",     "C",
      "00C4", "4E2D", "D83D", "0041",  "005C",   "0020",   "41",     "5C",     "0A",    "zz",
      "'",    "''",   " ",    "  ",    "\t",     "\n",     "\b",     "\xC3",   "a",     "\0"sv};
  std::string body;
  for (std::size_t count = random() % (most + 1); count > 0; --count) {
    body += PIECES[random() % std::size(PIECES)];
  }
  return body;
}

TEST(DecodeComparison, ShortRandomBodiesDecodeAsInPlace) {
  std::mt19937 random(7101);
  for (std::uint64_t round = 0; round < tries(100'000); ++round) {
    const std::string body = random_body(random, 8);
    ASSERT_EQ(decode_step_to_utf8(body), decode_in_place(body)) << testing::PrintToString(body);
  }
}

TEST(DecodeComparison, LongRandomBodiesDecodeAsInPlace) {
  std::mt19937 random(7102);
  for (std::uint64_t round = 0; round < tries(3'000); ++round) {
    const std::string body = random_body(random, 120);
    ASSERT_EQ(decode_step_to_utf8(body), decode_in_place(body)) << testing::PrintToString(body);
  }
}

TEST(DecodeComparison, EveryBodyOfUpToSixCharactersOfTheDirectivesDecodesAsInPlace) {
  constexpr std::string_view ALPHABET = "\\XSP24' ";
  std::size_t bodies = 1;
  for (int length = 0; length <= 6; ++length, bodies *= ALPHABET.size()) {
    for (std::size_t index = 0; index < bodies; ++index) {
      std::string body;
      std::size_t rest = index;
      for (int i = 0; i < length; ++i, rest /= ALPHABET.size())
        body += ALPHABET[rest % ALPHABET.size()];
      ASSERT_EQ(decode_step_to_utf8(body), decode_in_place(body)) << testing::PrintToString(body);
    }
  }
}

}  // namespace
}  // namespace Kessel::test
