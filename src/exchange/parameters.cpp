#include "exchange/parameters.h"

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

#include <algorithm>
#include <bit>

#include "exchange/characters.h"
#include "exchange/lexer.h"
#include "exchange/literals.h"

namespace Kessel::Exchange {

namespace {

/// The first apostrophe, parenthesis, "/" or "<" at or behind `at`; the end of the text for none.
std::size_t find_mark(std::string_view text, std::size_t at) {
#if defined(__SSE2__)
  // Fast path: sixteen bytes at once. Two of the marks differ from two others in one bit only.
  const auto all = [](char c) { return _mm_set1_epi8(c); };
  for (; text.size() - at >= 16; at += 16) {
    const __m128i block = _mm_loadu_si128(reinterpret_cast<const __m128i*>(text.data() + at));
    const __m128i parentheses = _mm_cmpeq_epi8(_mm_or_si128(block, all('(' ^ ')')), all('(' | ')'));
    const __m128i others = _mm_cmpeq_epi8(_mm_or_si128(block, all('\'' ^ '/')), all('\'' | '/'));
    const __m128i resources = _mm_cmpeq_epi8(block, all('<'));
    const int found = _mm_movemask_epi8(_mm_or_si128(_mm_or_si128(parentheses, others), resources));
    if (found != 0) {
      return at + static_cast<std::size_t>(std::countr_zero(static_cast<unsigned>(found)));
    }
  }
#endif
  const auto is_mark = [](char c) {
    return c == '\'' || c == '(' || c == ')' || c == '/' || c == '<';
  };
  while (at < text.size() && !is_mark(text[at])) ++at;
  return at;
}

/// The position behind the ")" that closes the "(" at `open`; the end of the text for none. The
/// same as word by word, of which no other than these begins or holds what matters here.
std::size_t behind_list(std::string_view text, std::size_t open) {
  std::size_t at = open + 1;
  for (int depth = 1; depth > 0;) {
    at = find_mark(text, at);
    if (at == text.size()) break;
    const char c = text[at];
    if (c == '\'') {
      at = std::min(behind_string(text, at), text.size());
    } else if (c == '/' && begins_comment(text, at)) {
      at = behind_blanks(text, at);
    } else if (c == '<') {
      const std::size_t close = text.find('>', at);
      at = close == std::string_view::npos ? at + 1 : close + 1;
    } else {
      if (c == '(') ++depth;
      if (c == ')') --depth;
      ++at;
    }
  }
  return at;
}

std::size_t position_of(const Word& word, std::string_view text) {
  return static_cast<std::size_t>(word.text.data() - text.data());
}

/// Partial records and parameters are rarely more.
constexpr std::size_t USUAL_COUNT = 8;

constexpr std::string_view without_blanks(std::string_view text) {
  while (!text.empty() && is_blank(text.front())) text.remove_prefix(1);
  return without_blanks_behind(text);
}

/// The first byte at or behind `at` that take_items() looks at, or one in front of it that is none
/// of those; the end of the text for none.
std::size_t find_item_mark(std::string_view text, std::size_t at) {
#if defined(__SSE2__)
  // Fast path: as in find_mark().
  const auto all = [](char c) { return _mm_set1_epi8(c); };
  for (; text.size() - at >= 16; at += 16) {
    const __m128i block = _mm_loadu_si128(reinterpret_cast<const __m128i*>(text.data() + at));
    const __m128i parentheses = _mm_cmpeq_epi8(_mm_or_si128(block, all('(' ^ ')')), all('(' | ')'));
    const __m128i others = _mm_cmpeq_epi8(_mm_or_si128(block, all('\'' ^ '/')), all('\'' | '/'));
    const __m128i rare = _mm_cmpeq_epi8(_mm_or_si128(block, all('<' ^ '\\')), all('<' | '\\'));
    const __m128i commas = _mm_cmpeq_epi8(block, all(','));
    const int found = _mm_movemask_epi8(
        _mm_or_si128(_mm_or_si128(parentheses, others), _mm_or_si128(rare, commas)));
    if (found != 0) {
      return at + static_cast<std::size_t>(std::countr_zero(static_cast<unsigned>(found)));
    }
  }
#endif
  return at;
}

/// Adds the items of the list that `list` begins with to `items`, by the commas between them.
/// Returns the position behind its ")"; 0, at any item, where that is not enough: it is no list,
/// nothing closes it, or there is what may be a comment, a resource or a directive.
std::size_t take_items(std::string_view list, Parameters& items) {
  if (!list.starts_with('(')) return 0;
  std::size_t begin = 1;  // of the item that is read
  const auto item_to = [&](std::size_t end) {
    const std::string_view item = without_blanks(list.substr(begin, end - begin));
    return item.empty() ? std::string_view() : item;
  };
  std::size_t at = begin;
  for (;;) {
    if (at < list.size()) at = find_item_mark(list, at);
    if (at >= list.size()) return 0;
    if (list[at] == ')') break;
    switch (list[at]) {
      case '/':
      case '<':
      case '\\':
        return 0;
      case '(':
        at = behind_list(list, at);
        break;
      case '\'':
        at = behind_string(list, at);
        break;
      case ',':
        items.push_back(item_to(at));
        begin = ++at;
        break;
      default:
        ++at;
    }
  }
  const std::string_view last = item_to(at);
  if (!last.empty() || !items.empty()) items.push_back(last);
  return at + 1;
}

/// The same as take_items(), word by word.
Parameters items_word_by_word(std::string_view list) {
  Parameters items;
  Lexer lexer(list);
  if (lexer.next().kind != WordKind::open) return items;
  std::size_t begin = std::string_view::npos;  // of the item that is read
  std::size_t end = 0;
  const auto take_item = [&] {
    items.push_back(begin == std::string_view::npos ? std::string_view()
                                                    : list.substr(begin, end - begin));
    begin = std::string_view::npos;
  };
  for (;;) {
    const Word word = lexer.next();
    if (word.kind == WordKind::comma) {
      take_item();
      continue;
    }
    if (word.kind == WordKind::close || word.kind == WordKind::end) break;
    if (begin == std::string_view::npos) begin = position_of(word, list);
    end = lexer.position();
    if (word.kind != WordKind::open) continue;
    end = behind_list(list, position_of(word, list));
    lexer = Lexer(list, end);
  }
  if (begin != std::string_view::npos || !items.empty()) take_item();
  return items;
}

}  // namespace

std::vector<PartialRecord> partial_records(std::string_view body) {
  std::vector<PartialRecord> records;
  records.reserve(USUAL_COUNT);
  Lexer lexer(body);
  std::string_view keyword;
  for (Word word = lexer.next(); word.kind != WordKind::end; word = lexer.next()) {
    if (word.kind == WordKind::keyword) {
      keyword = word.text;
    } else if (word.kind == WordKind::open && !keyword.empty()) {
      const std::size_t begin = position_of(word, body);
      const std::size_t end = behind_list(body, begin);
      records.push_back({keyword, body.substr(begin, end - begin)});
      lexer = Lexer(body, end);
      keyword = {};
    }
  }
  return records;
}

Parameters items_of(std::string_view list) {
  // Fast path: comments between parameters are rare.
  Parameters items;
  items.reserve(USUAL_COUNT);
  return take_items(list, items) != 0 ? items : items_word_by_word(list);
}

Parameters parameters_of(std::string_view body, std::string_view keyword) {
  // Fast path: a simple record has one list, and nothing behind it.
  if (!body.starts_with('(')) {
    Lexer lexer(body);
    const bool begins = lexer.next().kind == WordKind::keyword;
    const Word open = lexer.next();
    if (begins && open.kind == WordKind::open) {
      const std::size_t begin = position_of(open, body);
      Parameters items;
      items.reserve(USUAL_COUNT);
      const std::size_t size = take_items(body.substr(begin), items);
      if (size != 0 && behind_blanks(body, begin + size) == body.size()) return items;
    }
  }
  const std::vector<PartialRecord> records = partial_records(body);
  if (records.size() == 1 && !body.starts_with('(')) return items_of(records.front().list);
  for (const PartialRecord& record : records) {
    if (record.keyword == keyword) return items_of(record.list);
  }
  return {};
}

std::string_view parameter(const Parameters& parameters, std::size_t i) {
  return i < parameters.size() ? parameters[i] : std::string_view();
}

std::uint64_t instance_of(std::string_view parameter) {
  return parameter.starts_with('#') ? number_in(parameter) : 0;
}

}  // namespace Kessel::Exchange
