#include "verify/expected_record.h"

#include <algorithm>
#include <string_view>

namespace Kessel {

namespace {

constexpr Token COMMA = {Token::Kind::mark, 0, ","};
constexpr Token EXTERNAL = {Token::Kind::string, 0, "'external'"};

Token reference_to(std::uint32_t number) {
  return {Token::Kind::reference, number, "#"};
}

bool is_presentation(const Entity& entity) {
  return entity.type().find("MECHANICAL_DESIGN_GEOMETRIC_PRESENTATION_REPRESENTATION") !=
         std::string_view::npos;
}

/// Where the `count`-th `mark` is, counted from 1; the number of words where there are fewer.
std::size_t find_mark(const std::vector<Token>& words, char mark, int count = 1) {
  std::size_t at = 0;
  while (at < words.size() && (!words[at].is(mark) || --count > 0)) ++at;
  return at;
}

/// Whether no white space and no comment stands between two words.
bool adjoin(const Token& left, const Token& right) {
  return left.text.data() + left.text.size() == right.text.data();
}

}  // namespace

const std::vector<Token>& ExpectedRecord::derive(std::uint32_t id, std::uint32_t number,
                                                 const std::vector<Token>& words) {
  const Entity& entity = *input_.file().entities[id];
  expected_.clear();
  if (words.empty()) return expected_;
  expected_.push_back(reference_to(number));

  const bool shared = entity.part_numbers.size() > 1 && part_.part_kind != LEAF_PART;
  if (shared && entity.type() == "GEOMETRIC_REPRESENTATION_CONTEXT") {
    const std::size_t first = find_mark(words, ',');
    const std::size_t second = find_mark(words, ',', 2);
    if (second < words.size()) {
      add(words, 1, first + 1);
      expected_.push_back(EXTERNAL);
      add(words, second, words.size());
      return expected_;
    }
  }
  if (is_presentation(entity)) {
    const std::size_t open = find_mark(words, '(', 2);
    const std::size_t close = find_mark(words, ')');
    if (open < close && close < words.size()) {
      add(words, 1, open + 1);
      add_items(words);
      add(words, close, words.size());
      return expected_;
    }
  }
  add(words, 1, words.size());
  return expected_;
}

/// Adds the words from `begin` to `end`.
void ExpectedRecord::add(const std::vector<Token>& words, std::size_t begin, std::size_t end) {
  for (std::size_t at = begin; at < end; ++at) {
    const Token& word = words[at];
    if (word.kind != Token::Kind::reference) {
      expected_.push_back(word);
    } else if (const std::uint32_t number = input_.number_in(part_, word.number)) {
      expected_.push_back(reference_to(number));
    } else {
      take_back_to_separator();
      if (expected_.back().is(',')) {
        expected_.pop_back();
      } else if (at + 1 < end && words[at + 1].is(',') && adjoin(word, words[at + 1])) {
        ++at;
      }
    }
  }
}

/// Adds all references to records that are there, behind the record's own.
void ExpectedRecord::add_items(const std::vector<Token>& words) {
  bool first = true;
  for (std::size_t at = 1; at < words.size(); ++at) {
    if (words[at].kind != Token::Kind::reference) continue;
    const std::uint32_t number = input_.number_in(part_, words[at].number);
    if (number == 0) continue;
    if (!first) expected_.push_back(COMMA);
    first = false;
    expected_.push_back(reference_to(number));
  }
}

/// A reference stands behind a comma or an opening parenthesis; in what is no record, nothing is
/// taken back.
void ExpectedRecord::take_back_to_separator() {
  const auto separator = std::find_if(expected_.rbegin(), expected_.rend(), [](const Token& word) {
    return word.is(',') || word.is('(');
  });
  if (separator != expected_.rend()) expected_.erase(separator.base(), expected_.end());
}

}  // namespace Kessel
