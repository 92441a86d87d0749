#include "exchange/reader.h"

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

#include <bit>
#include <cstring>

#include "exchange/characters.h"
#include "exchange/faults.h"
#include "exchange/keyword_ids.h"
#include "exchange/keywords.h"
#include "exchange/lexer.h"
#include "exchange/signature.h"
#include "exchange/string_value.h"

namespace Kessel::Exchange {

namespace {

constexpr std::string_view FIRST_WORD = "ISO-10303-21";
constexpr std::string_view LAST_WORD = "END-ISO-10303-21";

/// The keyword that `text` begins with.
inline std::string_view keyword_at_front(std::string_view text) {
  const char* p = text.data();
  const char* const end = p + text.size();
  if (p != end && *p == '!') ++p;
  if (p == end || !begins_keyword(*p)) return {};
  p = behind_keyword(p, end);
  return {text.data(), static_cast<std::size_t>(p - text.data())};
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

/// Whether nothing but a section begins with `text`.
bool begins_section(std::string_view text) {
  return keyword_at_front(text) == "DATA" || is_word(text, "HEADER") || is_word(text, "ANCHOR") ||
         is_word(text, "REFERENCE");
}

/// Whether `text` holds what defines something more than once, outside of literals and lists.
bool defines_two(std::string_view text) {
  Lexer lexer(text);
  int definitions = 0;
  for (Word word = lexer.next(); word.kind != WordKind::end; word = lexer.next()) {
    if (word.kind == WordKind::equals) ++definitions;
  }
  return definitions > 1;
}

/// Where the body of `record` begins, however "=" is written.
[[gnu::noinline]] const char* find_unusual_body(Record& record) {
  const std::string_view text = record.text;
  std::size_t at =
      behind_blanks(text, static_cast<std::size_t>(record.behind_number - text.data()));
  record.has_equals = at < text.size() && text[at] == '=';
  if (record.has_equals) at = behind_blanks(text, at + 1);
  return text.data() + at;
}

/// Completes `record`, whose statement is known and stands in a buffer with more bytes behind it,
/// but for its keyword.
[[gnu::always_inline]] inline void complete(Record& record, std::span<const Mention> mentions) {
  record.number = mentions.front().number;
  record.behind_number = mentions.front().end;
  record.mentions = mentions.subspan(1);
  record.has_equals = true;
  record.is_usual = true;
  const char* body = record.behind_number;
  // Fast path: nobody writes "=" in another way.
  if (std::memcmp(body, " = ", 3) == 0 && begins_keyword(body[3])) {
    body += 3;
  } else if (body[0] == '=' && begins_keyword(body[1])) {
    ++body;
  } else {
    body = find_unusual_body(record);
    record.is_usual = false;
  }
  record.body = {body, static_cast<std::size_t>(record.text.data() + record.text.size() - body)};
}

/// One reading: goes from section to section.
class Reading {
 public:
  Reading(std::istream& in, std::uint64_t position, const Limits& limits, Listener& listener)
      : cutter_(in, position, limits.statement, limits.block_size, limits.scrutiny),
        limits_(limits),
        listener_(listener) {
    if (is_full()) keywords_.emplace();
  }

  Ending read() {
    Ending ending;
    if (begin() && read_header()) read_sections();
    ending.error = std::move(error_);
    ending.bytes = cutter_.offset() - behind_end_;
    return ending;
  }

  /// Reads on in `section`, up to and with so many records and entries.
  void read_on(Section section, std::uint64_t count) {
    left_ = count;
    const bool goes_on = section == Section::data ? read_records() : read_entries(section);
    if (goes_on) read_sections();
  }

 private:
  const Statement& statement() const { return record_; }
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
    const Cut cut = cutter_.next(record_);
    return cut == Cut::statement || stop_at(cut, open);
  }

  bool stop_at(Cut cut, const Section* open) {
    const std::uint64_t offset = statement().offset;
    switch (cut) {
      case Cut::statement:
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
    const std::string_view head = cutter_.peek(HEAD_SIZE);
    if (head.empty()) return stop(empty_file());
    if (const auto finding = recognise(head)) return stop(*finding);
    if (head.starts_with(BYTE_ORDER_MARK)) cutter_.pass_over(BYTE_ORDER_MARK.size());
    if (take(nullptr) && is_word(statement().text, FIRST_WORD)) return true;
    return error_ ? false : stop(missing_header(statement().offset));
  }

  bool read_header() {
    if (!take(nullptr) || !is_word(statement().text, "HEADER")) {
      return error_ ? false : stop(missing_header(statement().offset));
    }
    constexpr Section HEADER = Section::header;
    listener_.begin_section(HEADER, {});
    for (;;) {
      if (!take(&HEADER)) return false;
      const std::string_view text = statement().text;
      if (is_word(text, "ENDSEC")) break;
      if (ends_without_word(text) || text.starts_with('#')) {
        return stop(unclosed_section(name_of(HEADER), statement().offset));
      }
      if (keyword_at_front(text).empty()) {
        warn(text.empty() ? empty_statement(statement().offset) : passed_over(statement()));
      } else {
        if (is_full()) warn_of_bytes(0);
        listener_.header_entity(statement());
      }
    }
    listener_.end_section(HEADER, cutter_.offset());
    return true;
  }

  /// Whether `text` tells that the section, whose end was not met, is over.
  static bool ends_without_word(std::string_view text) {
    return keyword_at_front(text) == "ENDSEC" || begins_section(text) || is_word(text, LAST_WORD);
  }

  void read_sections() {
    while (take_outside()) {
      const std::string_view text = statement().text;
      if (is_word(text, LAST_WORD)) return look_behind_end();
      if (!read_section(text)) return;
    }
  }

  /// Takes the next statement outside of all sections; false at the end of the file.
  bool take_outside() {
    if (take(nullptr)) return true;
    if (!error_) {
      warn(missing_end(cutter_.offset()));
    } else if (error_->kind == FindingKind::unclosed_text &&
               LAST_WORD.starts_with(statement().text)) {
      // Nothing but the last word is cut off.
      error_.reset();
      warn(missing_end(statement().offset));
    }
    return false;
  }

  bool read_section(std::string_view text) {
    if (keyword_at_front(text) == "DATA") return read_data(text);
    if (is_word(text, "ANCHOR")) return begin_entries(Section::anchor);
    if (is_word(text, "REFERENCE")) return begin_entries(Section::reference);
    if (text.starts_with('#') || statement().takes_in_record) {
      return stop(record_outside_data(statement()));
    }
    warn(text.empty() ? empty_statement(statement().offset) : passed_over(statement()));
    return true;
  }

  bool read_data(std::string_view text) {
    const std::string_view parameters = text.substr(behind_blanks(text, 4));
    if (!parameters.empty() && !parameters.starts_with('(')) {
      return stop(unclosed_text(text, statement().offset));
    }
    if (statement().takes_in_record) return stop(unclosed_record(statement()));
    listener_.begin_section(Section::data, parameters);
    return read_records();
  }

  bool read_records() {
    constexpr Section DATA = Section::data;
    for (;;) {
      if (!take(&DATA)) return false;
      const std::string_view text = statement().text;
      if (text.starts_with('#')) {
        if (!take_record()) return false;
        continue;
      }
      if (is_word(text, "ENDSEC")) {
        break;
      } else if (ends_without_word(text)) {
        return stop(unclosed_section(name_of(DATA), statement().offset));
      } else if (statement().takes_in_record) {
        return stop(unclosed_record(statement()));
      } else {
        warn(text.empty() ? empty_statement(statement().offset) : passed_over(statement()));
      }
    }
    listener_.end_section(DATA, cutter_.offset());
    return true;
  }

  bool take_record() {
    const std::span<const Mention> mentions = cutter_.mentions();
    if (!begins_with_name(record_, mentions)) {
      if (record_.takes_in_record) return stop(unclosed_record(record_));
      warn(passed_over(record_));
      return true;
    }
    complete(record_, mentions);
    if (is_full()) {
      find_keyword();
      if (!scrutinise(record_)) return false;
    }
    listener_.record(record_);
    return --left_ != 0;
  }

  void find_keyword() {
    // Fast path: a keyword that was met before is all that stands in front of "(".
    const char* const begin = record_.body.data();
    const char* end = record_.open;
    if (end > begin) {
      if (end[-1] == ' ') --end;
      const std::string_view keyword(begin, static_cast<std::size_t>(end - begin));
      const std::uint32_t id = keywords_->recognise(keyword);
      if (id != Record::NO_KEYWORD) {
        record_.keyword = keyword;
        record_.keyword_id = id;
        return;
      }
    }
    find_new_keyword();
  }

  [[gnu::noinline]] void find_new_keyword() {
    record_.is_usual = false;
    record_.keyword = keyword_at_front(record_.body);
    record_.keyword_id =
        record_.keyword.empty() ? Record::NO_KEYWORD : keywords_->id_of(record_.keyword);
  }

  /// Looks for what makes a record doubtful or unusual.
  bool scrutinise(const Record& record) {
    const bool is_fine = record.is_usual && record.depth == 0 && record.number != 0 &&
                         !(record.takes_in_record | record.has_too_large_number |
                           record.has_backslash | record.has_high_bytes);
    return is_fine || scrutinise_closely(record);
  }

  /// The same for a record in which there is something to say a word about.
  bool scrutinise_closely(const Record& record) {
    if (record.body.starts_with('&')) return stop(unsupported_scope(record));
    if (statement().takes_in_record) return stop(unclosed_record(statement()));
    if (statement().depth > 0) return stop(unclosed_list(record));
    if (statement().has_too_large_number) return stop(too_large_number(statement()));
    if (record.number == 0) {
      warn(unusual_record(record, "The number of this record is 0."));
    }
    if (statement().depth < 0) {
      warn(unusual_record(record, "A \")\" in this record closes nothing."));
    }
    if (!record.has_equals) {
      warn(unusual_record(record, "No \"=\" stands behind the number of this record."));
    }
    if (record.keyword.empty() && !record.body.starts_with('(')) {
      warn(unusual_record(record, "This record has no type."));
    }
    warn_of_bytes(record.number);
    return true;
  }

  void warn_of_bytes(std::uint64_t number) {
    const Statement& here = statement();
    if (here.has_backslash && has_lone_backslash(here.text)) warn(lone_backslash(here, number));
    if (here.has_high_bytes && !is_utf8(here.text)) warn(foreign_bytes(here, number));
  }

  bool begin_entries(Section section) {
    listener_.begin_section(section, {});
    return read_entries(section);
  }

  bool read_entries(Section section) {
    cutter_.know_resources(true);
    for (;;) {
      if (!take(&section)) return false;
      const std::string_view text = statement().text;
      if (is_word(text, "ENDSEC")) break;
      if (ends_without_word(text)) {
        return stop(unclosed_section(name_of(section), statement().offset));
      }
      if (text.empty()) {
        warn(empty_statement(statement().offset));
        continue;
      }
      if (is_full() && !scrutinise_entry(text)) return false;
      listener_.entry(section, statement(), cutter_.mentions());
      if (--left_ == 0) return false;
    }
    cutter_.know_resources(false);
    listener_.end_section(section, cutter_.offset());
    return true;
  }

  bool scrutinise_entry(std::string_view text) {
    if (defines_two(text)) return stop(unclosed_record(statement()));
    if (statement().has_too_large_number) return stop(too_large_number(statement()));
    warn_of_bytes(0);
    return true;
  }

  /// What stands behind the end is not read.
  void look_behind_end() {
    if (!is_full()) return;
    const std::uint64_t end = cutter_.offset();
    if (cutter_.pass_over_blanks()) {
      const std::uint64_t offset = cutter_.offset();
      const bool is_signature = keyword_at_front(cutter_.peek(HEAD_SIZE)) == "SIGNATURE";
      warn(is_signature ? dropped_signature(offset) : text_behind_end(offset));
    }
    behind_end_ = cutter_.offset() - end;
  }

  StatementCutter cutter_;
  Record record_;                       // what was taken last, if it is one
  std::optional<KeywordIds> keywords_;  // with full scrutiny
  const Limits& limits_;
  Listener& listener_;
  std::optional<Finding> error_;
  std::uint64_t behind_end_ = 0;  // bytes that were looked at only
  std::uint64_t left_ = 0;        // how many records and entries are to be read; 0 for all
};

}  // namespace

void complete_record(Record& record, std::span<const Mention> mentions) {
  complete(record, mentions);
}

Record record_of(const Statement& statement, std::span<const Mention> mentions) {
  Record record;
  static_cast<Statement&>(record) = statement;
  complete(record, mentions);
  return record;
}

Ending read_exchange_file(std::istream& in, const Limits& limits, Listener& listener) {
  in.clear();
  in.seekg(0);
  return Reading(in, 0, limits, listener).read();
}

void read_records_at(std::istream& in, std::uint64_t offset, Section section, std::uint64_t count,
                     Listener& listener) {
  if (count == 0) return;
  in.clear();
  in.seekg(static_cast<std::streamoff>(offset));
  Limits limits;
  limits.scrutiny = Scrutiny::none;
  Reading(in, offset, limits, listener).read_on(section, count);
}

}  // namespace Kessel::Exchange
