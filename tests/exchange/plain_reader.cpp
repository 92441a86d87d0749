#include "exchange/plain_reader.h"

#include <cstddef>
#include <cstdint>

namespace Kessel::test::plain {

namespace {

bool is_blank(char c) {
  return c == ' ' || c == '\t' || c == '\n' || c == '\v' || c == '\f' || c == '\r';
}
bool is_digit(char c) {
  return c >= '0' && c <= '9';
}
bool is_hex(char c) {
  return is_digit(c) || (c >= 'A' && c <= 'F') || (c >= 'a' && c <= 'f');
}
bool is_upper(char c) {
  return (c >= 'A' && c <= 'Z') || c == '_';
}
bool is_letter(char c) {
  return is_upper(c) || (c >= 'a' && c <= 'z');
}

bool has(std::string_view text, std::size_t i, std::string_view what) {
  return i <= text.size() && text.substr(i, what.size()) == what;
}

constexpr std::size_t NOWHERE = std::string_view::npos;

/// Behind the comment at `i`; NOWHERE if it does not end.
std::size_t comment_end(std::string_view text, std::size_t i) {
  for (i += 2; i + 1 < text.size(); ++i) {
    if (text[i] == '*' && text[i + 1] == '/') return i + 2;
  }
  return NOWHERE;
}

/// Behind blanks, comments and print control directives; a comment without end goes to the end.
std::size_t skip_blanks(std::string_view text, std::size_t i) {
  while (i < text.size()) {
    if (is_blank(text[i])) {
      ++i;
    } else if (has(text, i, "\\N\\") || has(text, i, "\\F\\")) {
      i += 3;
    } else if (has(text, i, "/*")) {
      i = comment_end(text, i);
      if (i == NOWHERE) return text.size();
    } else {
      return i;
    }
  }
  return i;
}

/// Whether a string may end in front of `i`.
bool may_follow_string(std::string_view text, std::size_t i) {
  while (i < text.size()) {
    if (is_blank(text[i])) {
      ++i;
    } else if (has(text, i, "\\N\\") || has(text, i, "\\F\\")) {
      i += 3;
    } else {
      const char c = text[i];
      return c == ',' || c == ')' || c == ';' || c == '{' || c == '}' || has(text, i, "/*");
    }
  }
  return true;
}

/// How long the directive or other beginning of one is that stands at `i`; 0 for none.
std::size_t directive_length(std::string_view text, std::size_t i) {
  for (const char* shorts : {"\\N\\", "\\F\\", "\\X\\"}) {
    if (has(text, i, shorts)) return 3;
  }
  for (const char* longs : {"\\X0\\", "\\X2\\", "\\X4\\"}) {
    if (has(text, i, longs)) return 4;
  }
  for (char page = 'A'; page <= 'I'; ++page) {
    if (has(text, i, std::string("\\P") + page + '\\')) return 4;
  }
  if (has(text, i, "\\S\\")) return 4;
  return has(text, i, "\\\\") ? 2 : 0;
}

/// Behind the string that begins at `i`; NOWHERE if it does not end.
std::size_t string_end(std::string_view text, std::size_t i) {
  ++i;
  while (i < text.size()) {
    if (has(text, i, "\\S\\'")) {
      // The directive's own apostrophe, then pairs, then perhaps the end.
      std::size_t j = i + 4;
      while (has(text, j, "''")) j += 2;
      if (has(text, j, "'")) {
        if (may_follow_string(text, j + 1)) return j + 1;
        ++j;  // The directive's apostrophe was doubled, too.
      }
      i = j;
    } else if (const std::size_t length = directive_length(text, i)) {
      i += length;
    } else if (has(text, i, "''")) {
      i += 2;
    } else if (text[i] == '\'') {
      return i + 1;
    } else {
      ++i;
    }
  }
  return NOWHERE;
}

std::size_t resource_end(std::string_view text, std::size_t i) {
  for (; i < text.size(); ++i) {
    if (text[i] == '>') return i + 1;
  }
  return NOWHERE;
}

std::string without_zeros(std::string digits) {
  while (digits.size() > 1 && digits[0] == '0') digits.erase(0, 1);
  return digits;
}

bool is_above(const std::string& number, const std::string& limit) {
  return number.size() > limit.size() || (number.size() == limit.size() && number > limit);
}

bool is_too_large(const std::string& number) {
  return is_above(number, "18446744073709551615");
}

/// An instance name.
struct Name {
  std::size_t at;
  std::string number;  // without zeros in front
};

enum class Open { nothing, all, text, string, comment };

struct Statement {
  std::size_t lead = 0;
  std::size_t begin = 0;
  std::size_t end = 0;  // without blanks
  Open open = Open::nothing;
  int depth = 0;
  bool takes_in_record = false;
  bool too_large = false;
  std::vector<Name> names;
};

/// Whether the body of a string has a backslash out of place.
bool has_stray_backslash(std::string_view body) {
  std::size_t i = 0;
  while (i < body.size()) {
    if (body[i] != '\\') {
      ++i;
      continue;
    }
    if (has(body, i, "\\\\")) {
      i += 2;
    } else if (has(body, i, "\\N\\") || has(body, i, "\\F\\")) {
      i += 3;
    } else if (has(body, i, "\\S\\") && i + 3 < body.size() && body[i + 3] >= ' ') {
      i += 4;
    } else if (has(body, i, "\\P") && has(body, i + 3, "\\") && body[i + 2] >= 'A' &&
               body[i + 2] <= 'I') {
      i += 4;
    } else if (has(body, i, "\\X\\") && i + 4 < body.size() && is_hex(body[i + 3]) &&
               is_hex(body[i + 4])) {
      i += 5;
    } else if (has(body, i, "\\X2\\") || has(body, i, "\\X4\\")) {
      const std::size_t digits = body[i + 2] == '2' ? 4 : 8;
      i += 4;
      while (!has(body, i, "\\X0\\")) {
        for (std::size_t k = 0; k < digits; ++k, ++i) {
          if (i >= body.size() || !is_hex(body[i])) return true;
        }
      }
      i += 4;
    } else {
      return true;
    }
  }
  return false;
}

/// Whether the body of a string has an apostrophe out of place, which forgiving readers take.
bool has_stray_apostrophe(std::string_view body) {
  for (std::size_t i = 0; i < body.size();) {
    const std::size_t length = directive_length(body, i);
    if (length == 0 && body[i] == '\'' && !has(body, i, "''")) return true;
    i += length != 0 ? length : body[i] == '\'' ? 2 : 1;
  }
  return false;
}

bool has_stray_backslashes(std::string_view text) {
  for (std::size_t i = 0; i < text.size();) {
    if (has(text, i, "/*")) {
      i = comment_end(text, i);
      if (i == NOWHERE) return false;
    } else if (text[i] == '\'') {
      const std::size_t end = string_end(text, i);
      if (end == NOWHERE) return false;
      if (has_stray_backslash(text.substr(i + 1, end - i - 2))) return true;
      i = end;
    } else if (text[i] == '<' && resource_end(text, i) != NOWHERE) {
      i = resource_end(text, i);
    } else {
      ++i;
    }
  }
  return false;
}

bool is_utf8(std::string_view text) {
  for (std::size_t i = 0; i < text.size();) {
    const unsigned lead = static_cast<unsigned char>(text[i]);
    std::size_t more = 0;
    std::uint32_t value = lead;
    std::uint32_t least = 0;
    if (lead >= 0xF0 && lead < 0xF8) {
      more = 3, value = lead & 0x07, least = 0x10000;
    } else if (lead >= 0xE0 && lead < 0xF0) {
      more = 2, value = lead & 0x0F, least = 0x800;
    } else if (lead >= 0xC0 && lead < 0xE0) {
      more = 1, value = lead & 0x1F, least = 0x80;
    } else if (lead >= 0x80) {
      return false;
    }
    if (i + more >= text.size()) return false;
    for (std::size_t k = 1; k <= more; ++k) {
      const unsigned next = static_cast<unsigned char>(text[i + k]);
      if (next < 0x80 || next >= 0xC0) return false;
      value = value * 64 + (next - 0x80);
    }
    if (value < least || value > 0x10FFFF || (value >= 0xD800 && value < 0xE000)) return false;
    i += more + 1;
  }
  return true;
}

/// The keyword in front of `text`, in the widest sense.
std::string_view word_of(std::string_view text) {
  std::size_t i = has(text, 0, "!") ? 1 : 0;
  if (i >= text.size() || !is_letter(text[i])) return {};
  while (i < text.size() && (is_letter(text[i]) || is_digit(text[i]) || text[i] == '-')) ++i;
  return text.substr(0, i);
}

bool is_word(std::string_view text, std::string_view word) {
  return word_of(text) == word && skip_blanks(text, word.size()) == text.size();
}

bool tells_end(std::string_view text) {
  return word_of(text) == "ENDSEC" || word_of(text) == "DATA" || is_word(text, "HEADER") ||
         is_word(text, "ANCHOR") || is_word(text, "REFERENCE") || is_word(text, "END-ISO-10303-21");
}

int equal_signs(std::string_view text) {
  int count = 0;
  for (std::size_t i = 0; i < text.size();) {
    std::size_t end = i + 1;
    if (text[i] == '\'') end = string_end(text, i);
    if (text[i] == '<') end = resource_end(text, i);
    if (has(text, i, "/*")) end = comment_end(text, i);
    if (text[i] == '=') ++count;
    i = end;
  }
  return count;
}

class Reading {
 public:
  explicit Reading(std::string_view text) : text_(text) {}

  std::vector<std::string> events() {
    if (begin() && header()) sections();
    return events_;
  }

 private:
  void add(const std::string& line) { events_.push_back(line); }

  static std::string place(std::size_t at) { return " @" + std::to_string(at) + ' '; }

  bool error(const std::string& kind, std::size_t at) {
    add("error " + kind + place(at));
    return false;
  }

  void warn(const std::string& kind, std::size_t at, const std::string& number = "0") {
    add("warning " + kind + place(at) + '#' + number);
  }

  std::string text_of(const Statement& s) const {
    return std::string(text_.substr(s.begin, s.end - s.begin));
  }
  std::string lead_of(const Statement& s) const {
    return std::string(text_.substr(s.lead, s.begin - s.lead));
  }

  /// The next statement, whatever it is.
  Statement take() {
    Statement s;
    s.lead = at_;
    s.begin = at_;
    while (s.begin < text_.size()) {
      const std::size_t before = s.begin;
      if (has(text_, before, "/*")) {
        const std::size_t end = comment_end(text_, before);
        if (end == NOWHERE) return open(s, Open::comment);
        s.begin = end;
      } else {
        if (is_blank(text_[before])) s.begin = before + 1;
        if (has(text_, before, "\\N\\") || has(text_, before, "\\F\\")) s.begin = before + 3;
      }
      if (s.begin == before) break;
    }
    std::size_t i = s.begin;
    if (i == text_.size()) return open(s, Open::all);
    while (i < text_.size()) {
      const char c = text_[i];
      if (c == ';') {
        at_ = i + 1;
        s.end = i;
        return trimmed(s);
      }
      std::size_t end = i + 1;
      if (c == '\'') {
        end = string_end(text_, i);
        if (end == NOWHERE) return open(s, Open::string);
      } else if (has(text_, i, "/*")) {
        end = comment_end(text_, i);
        if (end == NOWHERE) return open(s, Open::comment);
      } else if (c == '<' && knows_resources_) {
        end = resource_end(text_, i);
        if (end == NOWHERE) return open(s, Open::text);
      } else if (c == '#') {
        end = take_name(s, i);
      } else if (c == '(') {
        ++s.depth;
      } else if (c == ')') {
        --s.depth;
      }
      i = end;
    }
    return open(s, Open::text);
  }

  std::size_t take_name(Statement& s, std::size_t i) {
    if (s.depth <= 0 && i != s.begin) s.takes_in_record = true;
    std::size_t end = i + 1;
    while (end < text_.size() && is_digit(text_[end])) ++end;
    if (end == i + 1) return end;
    const std::string number = without_zeros(std::string(text_.substr(i + 1, end - i - 1)));
    s.names.push_back({i, number});
    if (is_too_large(number)) s.too_large = true;
    return end;
  }

  Statement open(Statement s, Open what) {
    at_ = text_.size();
    s.end = text_.size();
    s.open = what;
    return trimmed(s);
  }

  Statement trimmed(Statement s) const {
    while (s.end > s.begin && is_blank(text_[s.end - 1])) --s.end;
    return s;
  }

  /// Takes the next statement in a section, or outside where that has no name.
  bool next(const std::string& section) {
    s_ = take();
    switch (s_.open) {
      case Open::nothing:
        return true;
      case Open::all:
        return section.empty() ? false : error("unclosed_section", text_.size());
      case Open::string:
        return error("unclosed_string", s_.begin);
      case Open::comment:
        return error("unclosed_comment", s_.begin);
      case Open::text:
        break;
    }
    return error(has(text_, s_.begin, "#") ? "unclosed_record" : "unclosed_text", s_.begin);
  }

  bool begin() {
    if (has(text_, 0, "\xEF\xBB\xBF")) at_ = 3;
    const std::size_t i = skip_blanks(text_, at_);
    if (!has(text_, i, "ISO-10303-21") || !next("") || !is_word(text_of(s_), "ISO-10303-21")) {
      return false;
    }
    return next("") && is_word(text_of(s_), "HEADER");
  }

  void warn_of_bytes(const std::string& number) {
    const std::string text = text_of(s_);
    if (has_stray_backslashes(text)) warn("lone_backslash", s_.begin, number);
    if (!is_utf8(text)) warn("not_utf8", s_.begin, number);
  }

  void pass_over() { warn(s_.begin == s_.end ? "empty_statement" : "skipped_text", s_.begin); }

  bool header() {
    add("begin HEADER ");
    for (;;) {
      if (!next("HEADER")) return false;
      const std::string text = text_of(s_);
      if (is_word(text, "ENDSEC")) break;
      if (tells_end(text) || has(text, 0, "#")) return error("unclosed_section", s_.begin);
      if (word_of(text).empty()) {
        pass_over();
        continue;
      }
      warn_of_bytes("0");
      add("header" + place(s_.begin) + lead_of(s_) + '|' + text);
    }
    add("end HEADER" + place(at_));
    return true;
  }

  void sections() {
    for (;;) {
      if (!next("")) return end_of_file();
      const std::string text = text_of(s_);
      if (is_word(text, "END-ISO-10303-21")) return behind_end();
      if (word_of(text) == "DATA") {
        if (!data(text)) return;
      } else if (is_word(text, "ANCHOR") || is_word(text, "REFERENCE")) {
        if (!entries(std::string(word_of(text)))) return;
      } else if (has(text, 0, "#") || s_.takes_in_record) {
        error("skipped_text", s_.begin);
        return;
      } else {
        pass_over();
      }
    }
  }

  void end_of_file() {
    if (s_.open == Open::all) return warn("missing_end", text_.size());
    if (s_.open == Open::text && has("END-ISO-10303-21", 0, text_of(s_))) {
      events_.pop_back();
      warn("missing_end", s_.begin);
    }
  }

  void behind_end() {
    const std::string_view rest = text_.substr(at_);
    const std::size_t first = skip_blanks(rest, 0);
    if (first == rest.size()) return;
    warn(word_of(rest.substr(first)) == "SIGNATURE" ? "signature_dropped" : "text_after_end",
         at_ + first);
  }

  bool data(const std::string& text) {
    const std::string parameters = text.substr(skip_blanks(text, 4));
    if (!parameters.empty() && parameters[0] != '(') return error("unclosed_text", s_.begin);
    if (s_.takes_in_record) return error("unclosed_record", s_.begin);
    add("begin DATA " + parameters);
    for (;;) {
      if (!next("DATA")) return false;
      const std::string statement = text_of(s_);
      if (is_word(statement, "ENDSEC")) break;
      if (has(statement, 0, "#") && !s_.names.empty() && s_.names[0].at == s_.begin) {
        if (!record(statement)) return false;
      } else if (tells_end(statement)) {
        return error("unclosed_section", s_.begin);
      } else if (s_.takes_in_record) {
        return error("unclosed_record", s_.begin);
      } else {
        pass_over();
      }
    }
    add("end DATA" + place(at_));
    return true;
  }

  bool record(const std::string& text) {
    std::size_t i = 1;
    while (i < text.size() && is_digit(text[i])) ++i;
    i = skip_blanks(text, i);
    const bool has_equals = has(text, i, "=");
    if (has_equals) i = skip_blanks(text, i + 1);
    const std::string body = text.substr(i);
    const std::string number = s_.names[0].number;
    if (has(body, 0, "&")) return error("unsupported_scope", s_.begin);
    if (s_.takes_in_record) return error("unclosed_record", s_.begin);
    if (s_.depth > 0) return error("unclosed_list", s_.begin);
    if (s_.too_large) return error("record_number_too_large", s_.begin);
    if (number == "0") warn("unusual_record", s_.begin);
    if (s_.depth < 0) warn("unusual_record", s_.begin, number);
    if (!has_equals) warn("unusual_record", s_.begin, number);
    if (word_of(body).empty() && !has(body, 0, "(")) warn("unusual_record", s_.begin, number);
    warn_of_bytes(number);
    std::string line =
        "record" + place(s_.begin) + number + '|' + lead_of(s_) + '|' + text + '|' + body + '|';
    for (std::size_t k = 1; k < s_.names.size(); ++k) line += ' ' + s_.names[k].number;
    add(line);
    const std::string keyword(word_of(body));
    if (!keyword.empty()) add("keyword " + keyword);
    return true;
  }

  bool entries(const std::string& section) {
    add("begin " + section + ' ');
    knows_resources_ = true;
    for (;;) {
      if (!next(section)) return false;
      const std::string text = text_of(s_);
      if (is_word(text, "ENDSEC")) break;
      if (tells_end(text)) return error("unclosed_section", s_.begin);
      if (text.empty()) {
        pass_over();
        continue;
      }
      if (equal_signs(text) > 1) return error("unclosed_record", s_.begin);
      if (s_.too_large) return error("record_number_too_large", s_.begin);
      warn_of_bytes("0");
      std::string line = "entry " + section + place(s_.begin) + lead_of(s_) + '|' + text + '|';
      for (const Name& name : s_.names) line += ' ' + name.number;
      add(line);
    }
    knows_resources_ = false;
    add("end " + section + place(at_));
    return true;
  }

  std::string_view text_;
  std::size_t at_ = 0;
  bool knows_resources_ = false;
  Statement s_;
  std::vector<std::string> events_;
};

/// How many chars from `i` on are letters of legal keywords, or digits.
std::size_t keyword_length(std::string_view text, std::size_t i) {
  std::size_t end = i;
  if (end < text.size() && is_letter(text[end])) {
    while (end < text.size() && (is_letter(text[end]) || is_digit(text[end]))) ++end;
  }
  return end - i;
}

std::size_t digits_length(std::string_view text, std::size_t i) {
  std::size_t end = i;
  while (end < text.size() && is_digit(text[end])) ++end;
  return end - i;
}

/// The number at `i`, or an empty token.
Token number_at(std::string_view text, std::size_t i) {
  std::size_t end = i + (text[i] == '+' || text[i] == '-' ? 1 : 0);
  const std::size_t digits = digits_length(text, end);
  if (digits == 0) return {0, ""};
  end += digits;
  if (!has(text, end, ".")) return {'I', std::string(text.substr(i, end - i))};
  ++end;
  end += digits_length(text, end);
  if (has(text, end, "E")) {
    std::size_t exponent = end + 1;
    if (has(text, exponent, "+") || has(text, exponent, "-")) ++exponent;
    const std::size_t more = digits_length(text, exponent);
    if (more == 0) return {0, ""};
    end = exponent + more;
  }
  return {'R', std::string(text.substr(i, end - i))};
}

Token enclosed(std::string_view text, std::size_t i, char kind, char last, bool (*fits)(char)) {
  for (std::size_t end = i + 1; end < text.size(); ++end) {
    if (text[end] == last) {
      return end == i + 1 ? Token{0, ""} : Token{kind, std::string(text.substr(i, end + 1 - i))};
    }
    if (!fits(text[end])) break;
  }
  return {0, ""};
}

/// The token at `i`, which is no blank; an empty one where there is none.
Token token_at(std::string_view text, std::size_t i) {
  const char c = text[i];
  if (std::string_view("()=,;$*{}:").find(c) != NOWHERE) return {c, std::string(1, c)};
  if (c == '\'') {
    const std::size_t end = string_end(text, i);
    if (end == NOWHERE) return {0, ""};
    const std::string_view body = text.substr(i + 1, end - i - 2);
    if (has_stray_backslash(body) || has_stray_apostrophe(body)) return {0, ""};
    return {'S', std::string(text.substr(i, end - i))};
  }
  if (c == '#' || c == '@') {
    if (const std::size_t n = digits_length(text, i + 1)) {
      return {c, std::string(text.substr(i, n + 1))};
    }
    const std::size_t n = keyword_length(text, i + 1);
    return n == 0 ? Token{0, ""} : Token{'C', std::string(text.substr(i, n + 1))};
  }
  if (c == '<') {
    return enclosed(text, i, 'U', '>', [](char) { return true; });
  }
  if (c == '"') return enclosed(text, i, 'B', '"', is_hex);
  if (c == '.') {
    return enclosed(text, i, 'E', '.', [](char d) { return is_upper(d) || is_digit(d); });
  }
  for (const char* word : {"ISO-10303-21", "END-ISO-10303-21"}) {
    if (has(text, i, word)) return {'K', word};
  }
  const std::size_t sign = c == '!' ? 1 : 0;
  if (const std::size_t n = keyword_length(text, i + sign)) {
    return {'K', std::string(text.substr(i, n + sign))};
  }
  return c == '!' ? Token{0, ""} : number_at(text, i);
}

bool is_upper_case(const std::string& keyword) {
  for (const char c : keyword) {
    if (c >= 'a' && c <= 'z') return false;
  }
  return true;
}

/// Whether tokens follow the grammar.
class Grammar {
 public:
  explicit Grammar(const std::vector<Token>& tokens) : tokens_(tokens) {}

  bool is_file() {
    if (!word("ISO-10303-21") || !take(';') || !header()) return false;
    if (word("ANCHOR") && !(take(';') && entries(&Grammar::anchor))) return false;
    if (word("REFERENCE") && !(take(';') && entries(&Grammar::reference))) return false;
    while (word("DATA")) {
      if (take('(') && !(parameters() && take(')'))) return false;
      if (!take(';') || !entries(&Grammar::instance)) return false;
    }
    return word("END-ISO-10303-21") && take(';') && at_ == tokens_.size();
  }

 private:
  char kind() const { return at_ < tokens_.size() ? tokens_[at_].kind : '\0'; }
  bool take(char wanted) {
    if (kind() != wanted) return false;
    ++at_;
    return true;
  }
  bool word(const char* text) {
    if (kind() != 'K' || tokens_[at_].text != text) return false;
    ++at_;
    return true;
  }
  bool keyword() { return kind() == 'K' && is_upper_case(tokens_[at_++].text); }

  bool header() {
    if (!word("HEADER") || !take(';')) return false;
    int count = 0;
    while (!word("ENDSEC")) {
      // A word of the grammar, which begins a section with parameters; not a keyword (5.3, 6.2).
      if (word("DATA") || !record() || !take(';')) return false;
      ++count;
    }
    return count >= 3 && take(';');
  }

  bool entries(bool (Grammar::*entry)()) {
    while (!word("ENDSEC")) {
      if (!(this->*entry)() || !take(';')) return false;
    }
    return take(';');
  }

  bool record() {
    if (!keyword() || !take('(')) return false;
    return take(')') || (parameters() && take(')'));
  }

  bool instance() {
    if (!take('#') || !take('=')) return false;
    if (!take('(')) return record();
    do {
      if (!record()) return false;
    } while (!take(')'));
    return true;
  }

  bool parameters() {
    do {
      if (!parameter()) return false;
    } while (take(','));
    return true;
  }

  bool parameter() {
    if (take('*')) return true;
    if (kind() == 'K') return keyword() && take('(') && parameter() && take(')');
    if (take('(')) return take(')') || (parameters() && take(')'));
    return atom();
  }

  bool atom() {
    return take('$') || take('I') || take('R') || take('S') || take('#') || take('@') ||
           take('C') || take('E') || take('B');
  }

  bool reference() { return (take('#') || take('@')) && take('=') && take('U'); }

  bool anchor() {
    if (!take('U') || !take('=') || !anchor_item()) return false;
    while (take('{')) {
      if (!take('K') || !take(':') || !anchor_item() || !take('}')) return false;
    }
    return true;
  }

  bool anchor_item() {
    if (!take('(')) return take('U') || atom();
    if (take(')')) return true;
    do {
      if (!anchor_item()) return false;
    } while (take(','));
    return take(')');
  }

  const std::vector<Token>& tokens_;
  std::size_t at_ = 0;
};

void append(std::string& out, std::uint32_t c) {
  const auto put = [&](std::uint32_t byte) { out += static_cast<char>(byte); };
  if (c < 0x80) {
    put(c);
  } else if (c < 0x800) {
    put(0xC0 + c / 64), put(0x80 + c % 64);
  } else if (c < 0x10000) {
    put(0xE0 + c / 4096), put(0x80 + c / 64 % 64), put(0x80 + c % 64);
  } else {
    put(0xF0 + c / 262144), put(0x80 + c / 4096 % 64), put(0x80 + c / 64 % 64), put(0x80 + c % 64);
  }
}

bool is_high_half(std::uint32_t c) {
  return c >= 0xD800 && c < 0xDC00;
}
bool is_low_half(std::uint32_t c) {
  return c >= 0xDC00 && c < 0xE000;
}
bool is_hex_at(std::string_view text, std::size_t i, std::size_t count) {
  for (std::size_t k = i; k < i + count; ++k) {
    if (k >= text.size() || !is_hex(text[k])) return false;
  }
  return true;
}

std::uint32_t hex(std::string_view digits) {
  std::uint32_t value = 0;
  for (const char c : digits) {
    const int digit = is_digit(c) ? c - '0' : (c | 0x20) - 'a' + 10;
    value = value * 16 + static_cast<std::uint32_t>(digit);
  }
  return value;
}

}  // namespace

std::vector<std::string> events_of(std::string_view file) {
  return Reading(file).events();
}

std::optional<std::vector<Token>> tokens_of(std::string_view text) {
  std::vector<Token> tokens;
  for (std::size_t i = skip_blanks(text, 0); i < text.size(); i = skip_blanks(text, i)) {
    const Token token = token_at(text, i);
    if (token.text.empty()) return std::nullopt;
    i += token.text.size();
    tokens.push_back(token);
  }
  return tokens;
}

bool is_legal(std::string_view file) {
  if (has(file, 0, "\xEF\xBB\xBF")) file.remove_prefix(3);
  const auto tokens = tokens_of(file);
  return tokens && Grammar(*tokens).is_file();
}

std::string value_of(std::string_view literal) {
  const std::string_view body = literal.substr(1, literal.size() - 2);
  std::string out;
  for (std::size_t i = 0; i < body.size();) {
    if (has(body, i, "''") || has(body, i, "\\\\")) {
      out += body[i];
      i += 2;
    } else if (has(body, i, "\\N\\") || has(body, i, "\\F\\")) {
      i += 3;
    } else if (has(body, i, "\\S\\")) {
      append(out, 128u + static_cast<unsigned char>(body[i + 3]));
      i += 4;
    } else if (has(body, i, "\\P")) {
      i += 4;
    } else if (has(body, i, "\\X\\")) {
      append(out, hex(body.substr(i + 3, 2)));
      i += 5;
    } else if (has(body, i, "\\X2\\") || has(body, i, "\\X4\\")) {
      const std::size_t digits = body[i + 2] == '2' ? 4 : 8;
      for (i += 4; !has(body, i, "\\X0\\"); i += digits) {
        std::uint32_t c = hex(body.substr(i, digits));
        if (is_high_half(c) && is_hex_at(body, i + digits, digits) &&
            is_low_half(hex(body.substr(i + digits, digits)))) {
          i += digits;
          c = 0x10000 + (c - 0xD800) * 0x400 + hex(body.substr(i, digits)) - 0xDC00;
        }
        append(out, is_high_half(c) || is_low_half(c) || c > 0x10FFFF ? 0xFFFD : c);
      }
      i += 4;
    } else {
      if (body[i] != '\n' && body[i] != '\r') out += body[i];
      ++i;
    }
  }
  return out;
}

}  // namespace Kessel::test::plain
