#include "exchange/reader.h"

#include <array>

#include "check/signature.h"
#include "exchange/characters.h"
#include "exchange/faults.h"
#include "exchange/string_value.h"

namespace Kessel::Exchange {

namespace {

constexpr std::string_view FIRST_WORD = "ISO-10303-21";
constexpr std::string_view LAST_WORD = "END-ISO-10303-21";

/// Fast path: is_in_keyword() by byte.
constexpr auto IN_KEYWORD = [] {
  std::array<bool, 256> table{};
  for (std::size_t i = 0; i < table.size(); ++i) table[i] = is_in_keyword(static_cast<char>(i));
  return table;
}();

/// The keyword that `text` begins with.
std::string_view keyword_at_front(std::string_view text) {
  std::size_t end = text.starts_with('!') ? 1 : 0;
  if (end == text.size() || !begins_keyword(text[end])) return {};
  while (end < text.size() && IN_KEYWORD[static_cast<unsigned char>(text[end])]) ++end;
  return text.substr(0, end);
}

/// Whether `text` is the one word `word`, with nothing but blanks and comments behind it.
bool is_word(std::string_view text, std::string_view word) {
  return keyword_at_front(text) == word && behind_blanks(text, word.size()) == text.size();
}

std::string_view name_of(Section section) {
  switch (section) {
    case Section::header:
      return "HEADER";
    case Section::anchor:
      return "ANCHOR";
    case Section::reference:
      return "REFERENCE";
    case Section::data:
      break;
  }
  return "DATA";
}

/// One reading: goes from section to section.
class Reading {
 public:
  Reading(std::istream& in, const Limits& limits, Listener& listener)
      : cutter_(in, 0, limits.statement), limits_(limits), listener_(listener) {}

  Ending read() {
    Ending ending;
    if (begin() && read_header()) read_sections();
    ending.error = std::move(error_);
    ending.bytes = cutter_.offset();
    return ending;
  }

 private:
  const Statement& statement() const { return cutter_.statement(); }
  bool is_full() const { return limits_.scrutiny == Scrutiny::full; }

  bool stop(Finding finding) {
    error_ = std::move(finding);
    return false;
  }

  void warn(const Finding& finding) {
    if (is_full()) listener_.warning(finding);
  }

  /// Takes the next statement. `open` is the section that it stands in, if any.
  bool take(const Section* open) {
    const Cut cut = cutter_.next(limits_.scrutiny);
    const std::uint64_t offset = statement().offset;
    switch (cut) {
      case Cut::statement:
        return true;
      case Cut::end:
        return open == nullptr ? false : stop(unclosed_section(name_of(*open), offset));
      case Cut::unclosed_text:
        return stop(unclosed_text(statement().text, offset));
      case Cut::unclosed_string:
        return stop(unclosed_string(statement()));
      case Cut::unclosed_comment:
        return stop(unclosed_comment(offset));
      case Cut::too_long:
        break;
    }
    return stop(statement_too_long(offset));
  }

  /// The first word, behind a byte order mark.
  bool begin() {
    if (const auto finding = recognise(cutter_.peek(HEAD_SIZE))) return stop(*finding);
    if (cutter_.peek(BYTE_ORDER_MARK.size()) == BYTE_ORDER_MARK) {
      cutter_.pass_over(BYTE_ORDER_MARK.size());
    }
    if (!take(nullptr)) return false;
    if (is_word(statement().text, FIRST_WORD)) return true;
    return stop(missing_header(statement().offset));
  }

  bool read_header() {
    if (!take(nullptr) || !is_word(statement().text, "HEADER")) {
      return error_ ? false : stop(missing_header(cutter_.offset()));
    }
    constexpr Section HEADER = Section::header;
    listener_.begin_section(HEADER, {});
    for (;;) {
      if (!take(&HEADER)) return false;
      if (is_word(statement().text, "ENDSEC")) break;
      if (statement().text.empty()) {
        warn(empty_statement(statement().offset));
      } else {
        listener_.header_entity(statement());
      }
    }
    listener_.end_section(HEADER);
    return true;
  }

  void read_sections() {
    for (;;) {
      if (!take(nullptr)) {
        if (!error_) warn(missing_end(cutter_.offset()));
        return;
      }
      const std::string_view text = statement().text;
      if (is_word(text, LAST_WORD)) return look_behind_end();
      const std::string_view keyword = keyword_at_front(text);
      bool goes_on = true;
      if (keyword == "DATA") {
        goes_on = read_data(text.substr(behind_blanks(text, keyword.size())));
      } else if (is_word(text, "ANCHOR")) {
        goes_on = read_entries(Section::anchor);
      } else if (is_word(text, "REFERENCE")) {
        goes_on = read_entries(Section::reference);
      } else {
        warn(text.empty() ? empty_statement(statement().offset) : passed_over(statement()));
      }
      if (!goes_on) return;
    }
  }

  bool read_data(std::string_view parameters) {
    constexpr Section DATA = Section::data;
    listener_.begin_section(DATA, parameters);
    for (;;) {
      if (!take(&DATA)) return false;
      const std::string_view text = statement().text;
      if (!text.empty() && text.front() == '#') {
        if (!take_record()) return false;
      } else if (is_word(text, "ENDSEC")) {
        break;
      } else if (is_word(text, LAST_WORD)) {
        return stop(unclosed_section("DATA", statement().offset));
      } else {
        warn(text.empty() ? empty_statement(statement().offset) : passed_over(statement()));
      }
    }
    listener_.end_section(DATA);
    return true;
  }

  bool take_record() {
    const std::vector<Mention>& mentions = cutter_.mentions();
    if (mentions.empty() || mentions.front().begin != statement().text.data() + 1) {
      warn(passed_over(statement()));
      return true;
    }
    const Record record = record_of(statement(), mentions);
    if (is_full() && !scrutinise(record)) return false;
    listener_.record(record);
    return true;
  }

  /// Looks for what makes a record doubtful or unusual.
  bool scrutinise(const Record& record) {
    if (statement().names_two) return stop(unclosed_record(record));
    if (statement().depth > 0) return stop(unclosed_list(record));
    if (record.body.starts_with('&')) return stop(unsupported_scope(record));
    if (record.number == 0)
      warn(unusual_record(record, "The number of this record is not usable."));
    if (statement().depth < 0)
      warn(unusual_record(record, "A \")\" in this record closes nothing."));
    if (record.keyword.empty() && !record.body.starts_with('(')) {
      warn(unusual_record(record, "This record has no type."));
    }
    if (statement().has_backslash && has_lone_backslash(record.body)) warn(lone_backslash(record));
    if (statement().has_high_bytes && !is_utf8(record.text)) warn(foreign_bytes(record));
    return true;
  }

  bool read_entries(Section section) {
    listener_.begin_section(section, {});
    cutter_.know_resources(true);
    for (;;) {
      if (!take(&section)) return false;
      if (is_word(statement().text, "ENDSEC")) break;
      if (statement().text.empty()) {
        warn(empty_statement(statement().offset));
      } else {
        listener_.entry(section, statement(), cutter_.mentions());
      }
    }
    cutter_.know_resources(false);
    listener_.end_section(section);
    return true;
  }

  /// What stands behind the end is not read.
  void look_behind_end() {
    if (!is_full()) return;
    const std::string_view rest = cutter_.peek(HEAD_SIZE);
    const std::size_t first = behind_blanks(rest, 0);
    if (first == rest.size()) return;
    const std::uint64_t offset = cutter_.offset() + first;
    const bool is_signature = keyword_at_front(rest.substr(first)) == "SIGNATURE";
    warn(is_signature ? dropped_signature(offset) : text_behind_end(offset));
  }

  StatementCutter cutter_;
  const Limits& limits_;
  Listener& listener_;
  std::optional<Finding> error_;
};

}  // namespace

Record record_of(const Statement& statement, std::span<const Mention> mentions) {
  Record record;
  record.number = mentions.front().number;
  record.lead = statement.lead;
  record.text = statement.text;
  record.mentions = mentions.subspan(1);
  record.offset = statement.offset;
  const std::string_view text = statement.text;
  std::size_t at = static_cast<std::size_t>(mentions.front().end - text.data());
  // Fast path: "#12=KEYWORD(".
  if (at < text.size() && text[at] == '=') {
    ++at;
  } else {
    at = behind_blanks(text, at);
    if (at < text.size() && text[at] == '=') ++at;
  }
  if (at < text.size() && !begins_keyword(text[at])) at = behind_blanks(text, at);
  record.body = text.substr(at);
  record.keyword = keyword_at_front(record.body);
  return record;
}

Ending read_exchange_file(std::istream& in, const Limits& limits, Listener& listener) {
  in.clear();
  in.seekg(0);
  return Reading(in, limits, listener).read();
}

void read_record_at(std::istream& in, std::uint64_t offset, Listener& listener) {
  in.clear();
  in.seekg(static_cast<std::streamoff>(offset));
  StatementCutter cutter(in, offset);
  if (cutter.next(Scrutiny::none) != Cut::statement || cutter.mentions().empty()) return;
  listener.record(record_of(cutter.statement(), cutter.mentions()));
}

}  // namespace Kessel::Exchange
