// Decodes exchange-string bodies to UTF-8.
#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>

#include "encoding/unicode.h"
#include "kessel/encoding.h"

namespace Kessel {

namespace {

constexpr std::string_view WIDE_END = "\\X0\\";

/// The text without outer spaces, without control characters, and with doubled apostrophes single.
std::string plain_text(std::string_view in) {
  const std::size_t first = in.find_first_not_of(' ');
  if (first == std::string_view::npos) return {};
  in = in.substr(first, in.find_last_not_of(' ') - first + 1);

  std::string out;
  out.reserve(in.size());
  bool after_apostrophe = false;
  for (const char c : in) {
    if (c >= '\b' && c <= '\r') continue;  // backspace, tab, line feed, VT, form feed, CR
    if (c == '\'' && after_apostrophe) {
      after_apostrophe = false;
      continue;
    }
    after_apostrophe = c == '\'';
    out.push_back(c);
  }
  return out;
}

int hex_digit(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  if (c >= 'A' && c <= 'F') return c - 'A' + 10;
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  return -1;
}

/// Reads hexadecimal digits from the front of `digits` up to the first other character, at most
/// four. Returns whether there was one.
bool read_hex(std::string_view digits, unsigned& value) {
  value = 0;
  bool any = false;
  for (const char c : digits) {
    const int digit = hex_digit(c);
    if (digit < 0) break;
    value = value * 16 + static_cast<unsigned>(digit);
    any = true;
  }
  return any;
}

/// Walks the directives of one text from front to back. What was produced is never looked at again,
/// so the result grows at its end and the cost is linear.
class DirectiveReader {
 public:
  explicit DirectiveReader(std::string_view text) : rest_(text) { out_.reserve(text.size()); }

  std::string decode() {
    for (;;) {
      const std::size_t backslash = rest_.find('\\');
      if (backslash == std::string_view::npos) break;
      keep(backslash);
      read_directive();
    }
    keep(rest_.size());
    return std::move(out_);
  }

 private:
  void keep(std::size_t count) {
    out_.append(rest_.substr(0, count));
    drop(count);
  }
  void drop(std::size_t count) { rest_.remove_prefix(count); }

  /// `rest_` begins with a backslash. Consumes at least it.
  void read_directive() {
    if (rest_.size() > 1 && rest_[1] == '\\') {
      // The second backslash is looked at again and may begin a directive: outputs depend on it.
      drop(1);
    } else if (starts('S', 2) || starts('P', 3)) {
      drop(4);  // A character and its page, or a change of page: nothing is produced.
    } else if (starts('X', 2) && rest_.size() > 4) {
      read_byte();
    } else if (starts('X', 3) && (rest_[2] == '2' || rest_[2] == '4')) {
      read_wide();
    } else {
      keep(1);
    }
  }

  /// Whether four characters or more are left that begin with a backslash and `letter` and have the
  /// directive's second backslash at `second`.
  bool starts(char letter, std::size_t second) const {
    return rest_.size() > 3 && rest_[1] == letter && rest_[second] == '\\';
  }

  /// `\X\hh`: the byte itself, not its UTF-8 form; outputs depend on it.
  void read_byte() {
    unsigned value = 0;
    if (read_hex(rest_.substr(3, 2), value)) {
      if (is_graphic(static_cast<char16_t>(value))) {
        out_.push_back(static_cast<char>(value));
      } else {
        append_utf8(out_, REPLACEMENT_CHARACTER);
      }
    }
    drop(5);
  }

  /// `\X2\...\X0\` and `\X4\...\X0\`, both four digits at a time.
  void read_wide() {
    const std::size_t end = no_more_ends_ ? std::string_view::npos : rest_.find(WIDE_END, 4);
    if (end == std::string_view::npos) {
      no_more_ends_ = true;  // Nor will a later directive find one.
      keep(1);
      return;
    }
    if (end % 2 == 0) {
      for (std::size_t group = 4; group < end; group += 4) {
        unsigned value = 0;
        if (!read_hex(rest_.substr(group, 4), value)) continue;
        const auto unit = static_cast<char16_t>(value);
        append_utf8(out_, is_graphic(unit) ? unit : REPLACEMENT_CHARACTER);
      }
    }
    drop(end + WIDE_END.size());
  }

  std::string_view rest_;
  std::string out_;
  bool no_more_ends_ = false;
};

}  // namespace

std::string decode_step_to_utf8(std::string_view in) {
  const std::string text = plain_text(in);
  return DirectiveReader(text).decode();
}

}  // namespace Kessel
