#include "split_list/json_text.h"

#include <algorithm>
#include <charconv>

#include "encoding/unicode.h"
#include "naming/characters.h"

namespace Kessel {

namespace {

constexpr int DEEPEST = 30;

/// Escapes of one character, and what they stand for.
constexpr std::string_view ESCAPES = "\"\\/bfnrt";
constexpr std::string_view ESCAPED = "\"\\/\b\f\n\r\t";

/// Reads a text from front to back. What it returns counts only where nothing failed.
class JsonReader {
 public:
  explicit JsonReader(std::string_view text) : left_(text) {}

  std::optional<JsonValue> read() {
    JsonValue value = read_value(0);
    skip_blanks();
    if (failed_ || !left_.empty()) return std::nullopt;
    return value;
  }

 private:
  void skip_blanks() {
    left_.remove_prefix(std::min(left_.find_first_not_of(" \t\n\r"), left_.size()));
  }

  /// Takes `c`, and blanks in front of it, where it comes next.
  bool take(char c) {
    skip_blanks();
    if (!left_.starts_with(c)) return false;
    left_.remove_prefix(1);
    return true;
  }
  void require(bool holds) {
    if (holds) return;
    failed_ = true;
    left_ = {};  // Nothing follows, so that every loop ends.
  }

  JsonValue read_value(int depth) {
    JsonValue value;
    require(depth <= DEEPEST);
    if (take('"')) {
      value.kind = JsonValue::Kind::string;
      value.text = read_string();
    } else if (take('[')) {
      value.kind = JsonValue::Kind::list;
      read_items(value, depth);
    } else if (take('{')) {
      value.kind = JsonValue::Kind::object;
      read_members(value, depth);
    } else {
      read_word(value);
    }
    return value;
  }

  void read_items(JsonValue& list, int depth) {
    if (take(']')) return;
    do {
      list.items.push_back(read_value(depth + 1));
    } while (take(','));
    require(take(']'));
  }

  void read_members(JsonValue& object, int depth) {
    if (take('}')) return;
    do {
      require(take('"'));
      std::string name = read_string();
      require(take(':'));
      object.items.push_back(read_value(depth + 1));
      object.items.back().name = std::move(name);
    } while (take(','));
    require(take('}'));
  }

  void read_word(JsonValue& value) {
    const std::size_t end = std::min(left_.find_first_of(" \t\n\r,]}"), left_.size());
    value.text = left_.substr(0, end);
    left_.remove_prefix(end);
    const bool is_word = value.text == "true" || value.text == "false" || value.text == "null";
    double number = 0;
    const char* const last = value.text.data() + value.text.size();
    const auto [read, error] = std::from_chars(value.text.data(), last, number);
    require(is_word || (read == last && error != std::errc::invalid_argument));
    if (!is_word) value.kind = JsonValue::Kind::number;
  }

  /// What stands behind a quotation mark, up to the next.
  std::string read_string() {
    std::string text;
    for (;;) {
      const std::size_t end = std::min(left_.find_first_of("\"\\"), left_.size());
      text += left_.substr(0, end);
      left_.remove_prefix(end);
      require(!left_.empty());
      if (failed_ || left_.front() == '"') break;
      left_.remove_prefix(1);
      read_escape(text);
    }
    if (!failed_) left_.remove_prefix(1);
    return text;
  }

  void read_escape(std::string& text) {
    require(!left_.empty());
    if (failed_) return;
    const char letter = left_.front();
    left_.remove_prefix(1);
    if (letter == 'u') {
      append_utf8(text, read_character());
      return;
    }
    const std::size_t escape = ESCAPES.find(letter);
    require(escape != std::string_view::npos);
    if (!failed_) text += ESCAPED[escape];
  }

  /// One code point of one or two halves.
  char32_t read_character() {
    const char32_t first = read_half();
    if (first < 0xD800 || first > 0xDFFF) return first;
    require(first < 0xDC00 && left_.starts_with("\\u"));
    if (failed_) return REPLACEMENT_CHARACTER;
    left_.remove_prefix(2);
    const char32_t second = read_half();
    require(second >= 0xDC00 && second <= 0xDFFF);
    return failed_ ? REPLACEMENT_CHARACTER : 0x10000 + ((first - 0xD800) << 10) + (second - 0xDC00);
  }

  char32_t read_half() {
    std::uint32_t half = 0;
    const std::string_view digits = left_.substr(0, 4);
    const char* const last = digits.data() + digits.size();
    const auto [read, error] = std::from_chars(digits.data(), last, half, 16);
    require(digits.size() == 4 && read == last && error == std::errc());
    if (failed_) return REPLACEMENT_CHARACTER;
    left_.remove_prefix(4);
    return half;
  }

  std::string_view left_;
  bool failed_ = false;
};

}  // namespace

std::string json_string(std::string_view utf8) {
  constexpr char DIGITS[] = "0123456789abcdef";
  std::string text = "\"";
  for (const char32_t c : characters_of(utf8)) {
    if (c == U'"' || c == U'\\') {
      text += '\\';
      text += static_cast<char>(c);
    } else if (c < 0x20 || c == 0x7F) {
      text += "\\u00";
      text += DIGITS[c >> 4];
      text += DIGITS[c & 15];
    } else {
      append_utf8(text, c);
    }
  }
  return text + '"';
}

const JsonValue* JsonValue::find(std::string_view wanted) const {
  if (kind != Kind::object) return nullptr;
  const auto found = std::find_if(items.begin(), items.end(),
                                  [&](const JsonValue& member) { return member.name == wanted; });
  return found == items.end() ? nullptr : &*found;
}

std::optional<std::uint64_t> JsonValue::whole_number() const {
  std::uint64_t number = 0;
  const char* const last = text.data() + text.size();
  const auto [read, error] = std::from_chars(text.data(), last, number);
  if (kind != Kind::number || read != last || error != std::errc()) return std::nullopt;
  return number;
}

std::optional<JsonValue> read_json(std::string_view text) {
  return JsonReader(text).read();
}

}  // namespace Kessel
