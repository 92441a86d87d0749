// Any bytes as a string literal's body, as UTF-8 text, and as a product's name.
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "encoding/plain_decoding.h"
#include "encoding/plain_encoding.h"
#include "encoding/string_body.h"
#include "encoding/unicode.h"
#include "fuzz/expect.h"
#include "kessel/encoding.h"
#include "naming/characters.h"
#include "naming/file_stem.h"
#include "naming/unique_names.h"

namespace Kessel::test {
namespace {

/// The character that `digits` hexadecimal digits at the front of `body` stand for; takes them.
char32_t take_hex(std::string_view& body, std::size_t digits) {
  expect(body.size() >= digits, "a directive has all its digits");
  char32_t c = 0;
  for (const char digit : body.substr(0, digits)) {
    const std::size_t value = std::string_view("0123456789ABCDEF").find(digit);
    expect(value != std::string_view::npos, "a directive has capital hexadecimal digits");
    c = c * 16 + static_cast<char32_t>(value);
  }
  body.remove_prefix(digits);
  return c;
}

bool take(std::string_view& body, std::string_view front) {
  if (!body.starts_with(front)) return false;
  body.remove_prefix(front.size());
  return true;
}

/// A reader of conforming bodies (ISO 10303-21, 6.4.3) that takes nothing else.
std::string strictly_decoded(std::string_view body) {
  std::string text;
  while (!body.empty()) {
    if (take(body, "''")) {
      text += '\'';
    } else if (take(body, "\\\\")) {
      text += '\\';
    } else if (take(body, "\\X\\")) {
      append_utf8(text, take_hex(body, 2));
    } else if (take(body, "\\X2\\")) {
      while (!take(body, "\\X0\\")) append_utf8(text, take_hex(body, 4));
    } else if (take(body, "\\X4\\")) {
      while (!take(body, "\\X0\\")) append_utf8(text, take_hex(body, 8));
    } else {
      const char c = body.front();
      expect(c >= ' ' && c <= '~' && c != '\'' && c != '\\', "other characters are basic ones");
      text += c;
      body.remove_prefix(1);
    }
  }
  return text;
}

/// `text` with U+FFFD for each maximal subpart of a bad sequence.
std::string repaired(std::string_view text) {
  std::string out;
  bool valid = true;
  while (!text.empty()) append_utf8(out, take_utf8(text, valid));
  return out;
}

void check_file_name(const std::string& name, bool is_ascii) {
  expect(name.size() <= MAX_FILE_NAME, "a file name is not too long");
  expect(is_utf8(name), "a file name is UTF-8");
  expect(name.find_first_of("<>:\"/\\|?*';") == std::string::npos, "no reserved character");
  for (const char c : name) {
    const auto byte = static_cast<unsigned char>(c);
    expect(byte >= 0x20 && byte != 0x7F && (!is_ascii || byte < 0x80),
           "no control, no foreign byte");
  }
  expect(name.front() != '.' && name.front() != ' ', "no dot or space in front");
}

void check_names(std::string_view text) {
  for (const FileNameSet set : {FileNameSet::ascii, FileNameSet::unicode}) {
    const std::string stem = file_stem(text, set);
    if (stem.empty()) continue;
    expect(file_stem(stem, set) == stem, "a stem is its own stem");
    UniqueNames names;
    const std::string first = names.take(stem);
    const std::string second = names.take(stem);
    expect(first == stem + ".stp", "the first name is the stem's");
    expect(first != second, "no name is given out twice");
    check_file_name(first, set == FileNameSet::ascii);
    check_file_name(second, set == FileNameSet::ascii);
  }
}

}  // namespace
}  // namespace Kessel::test

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace Kessel;
  using namespace Kessel::test;
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  expect(decode_step_to_utf8(text) == plain::decode_in_place(text), "decoded as in place");
  expect(encode_utf8_to_step(text) == plain::encode_unit_by_unit(text), "encoded unit by unit");
  expect(strictly_decoded(encode_string_body(text)) == repaired(text), "a conforming body");
  expect(is_utf8(to_utf8(characters_of(text))), "characters of any text");
  check_names(text);
  return 0;
}
