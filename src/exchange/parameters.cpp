#include "exchange/parameters.h"

#include "exchange/lexer.h"

namespace Kessel::Exchange {

namespace {

/// Reads on behind a "(" up to the ")" that closes it. Returns the position behind that.
std::size_t behind_list(Lexer& lexer) {
  for (int depth = 1; depth > 0;) {
    const Word word = lexer.next();
    if (word.kind == WordKind::end) break;
    if (word.kind == WordKind::open) ++depth;
    if (word.kind == WordKind::close) --depth;
  }
  return lexer.position();
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
      records.push_back({keyword, body.substr(begin, behind_list(lexer) - begin)});
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
    end = word.kind == WordKind::open ? behind_list(lexer) : lexer.position();
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
