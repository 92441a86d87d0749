// The cutter against a plain one that reads the stream piece by piece.
#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <cstddef>
#include <random>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include "reader/record_cutter.h"

namespace Kessel::test {
namespace {

using Texts = std::vector<std::string>;

void trim(std::string& text) {
  const auto is_white = [](char c) { return std::isspace(static_cast<unsigned char>(c)) != 0; };
  while (!text.empty() && is_white(text.back())) text.pop_back();
  const auto first = std::find_if_not(text.begin(), text.end(), is_white);
  text.erase(text.begin(), first);
}

std::string plain_line(std::istream& in) {
  std::string line;
  std::getline(in, line);
  trim(line);
  return line;
}

std::string plain_record(std::istream& in) {
  std::string record = "A";
  while (in && !in.eof()) {
    if (record.empty() || record.front() == '#') break;
    std::getline(in, record, ';');
    trim(record);
  }
  while (in && !in.eof() && !record.empty()) {
    if (record.back() == ')') return record;
    std::string piece;
    std::getline(in, piece, ';');
    trim(piece);
    record += piece;
  }
  return record;
}

/// `lines` lines of `text`, then records until well behind the end.
Texts cut(const std::string& text, int lines) {
  std::istringstream in(text);
  RecordCutter cutter(in);
  Texts texts;
  for (int i = 0; i < lines; ++i) texts.emplace_back(cutter.next_line());
  for (auto calls = std::count(text.begin(), text.end(), ';') + 4; calls > 0; --calls) {
    texts.emplace_back(cutter.next_record());
  }
  texts.emplace_back(cutter.input_ended() ? "ended" : "not ended");
  return texts;
}

Texts cut_plainly(const std::string& text, int lines) {
  std::istringstream in(text);
  Texts texts;
  for (int i = 0; i < lines; ++i) texts.push_back(plain_line(in));
  for (auto calls = std::count(text.begin(), text.end(), ';') + 4; calls > 0; --calls) {
    texts.push_back(plain_record(in));
  }
  texts.emplace_back(in.eof() ? "ended" : "not ended");
  return texts;
}

class RandomText {
 public:
  explicit RandomText(unsigned seed) : random_(seed) {}

  /// `length` characters, one in `rarity` of them a ";".
  std::string of(std::size_t length, unsigned long rarity) {
    constexpr std::string_view OTHERS = "#'() \n A1,=#)";
    std::string text(length, ' ');
    for (char& c : text) c = random_() % rarity == 0 ? ';' : OTHERS[random_() % OTHERS.size()];
    return text;
  }
  std::size_t below(std::size_t limit) { return random_() % limit; }

 private:
  std::mt19937 random_;
};

TEST(RecordCutterComparison, ShortRandomTextsAreCutAlike) {
  RandomText random(3105);
  for (int round = 0; round < 30'000; ++round) {
    const std::string text = random.of(random.below(50), 2 + random.below(6));
    const int lines = static_cast<int>(random.below(3));
    ASSERT_EQ(cut(text, lines), cut_plainly(text, lines)) << testing::PrintToString(text);
  }
}

TEST(RecordCutterComparison, TextsLargerThanABlockAreCutAlike) {
  RandomText random(3106);
  for (const std::size_t rarity : {4u, 10u, 100u, 5'000u, 100'000u, 400'000u}) {
    for (int round = 0; round < 2; ++round) {
      SCOPED_TRACE(testing::Message() << "rarity " << rarity << ", round " << round);
      const std::string text = random.of(200'000 + random.below(500'000), rarity);
      const int lines = static_cast<int>(random.below(3));
      // Not ASSERT_EQ: a message with a megabyte helps nobody.
      ASSERT_TRUE(cut(text, lines) == cut_plainly(text, lines));
    }
  }
}

TEST(RecordCutterComparison, EveryEndAtTheBorderOfABlockIsCutAlike) {
  constexpr std::size_t BLOCK = 262'144;
  RandomText random(3107);
  for (int round = 0; round < 100; ++round) {
    SCOPED_TRACE(round);
    const std::string first = "#1=A('" + std::string(BLOCK - 9 - random.below(30), 'x') + "');";
    const std::string text = first + random.of(random.below(60), 3);
    ASSERT_TRUE(cut(text, 0) == cut_plainly(text, 0)) << text.substr(first.size());
  }
}

}  // namespace
}  // namespace Kessel::test
