#include "exchange/parameters.h"

#include <algorithm>

#include "exchange/characters.h"
#include "exchange/lexer.h"
#include "exchange/literals.h"

namespace Kessel::Exchange {

namespace {

/// The position behind the ")" that closes the "(" at `open`; the end of the text for none. The
/// same as word by word, of which no other than these begins or holds what matters here.
std::size_t behind_list(std::string_view text, std::size_t open) {
  std::size_t at = open + 1;
  for (int depth = 1; depth > 0 && at < text.size();) {
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

}  // namespace

std::vector<PartialRecord> partial_records(std::string_view body) {
  std::vector<PartialRecord> records;
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

Parameters parameters_of(std::string_view body, std::string_view keyword) {
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
  Lexer lexer(parameter);
  const Word word = lexer.next();
  if (word.kind != WordKind::instance || word.text.size() != parameter.size()) return 0;
  return number_in(word.text);
}

}  // namespace Kessel::Exchange
