// Takes away from a name what some file system, reader or user would trip over.
#include "naming/file_stem.h"

#include <algorithm>
#include <cstdint>
#include <iterator>

#include "encoding/unicode.h"
#include "naming/ascii.h"
#include "naming/characters.h"
#include "naming/exchange_endings.h"
#include "naming/unicode_forms.h"

namespace Kessel {

namespace {

constexpr std::size_t MAX_STEM = MAX_FILE_NAME - FILE_EXTENSION.size();

constexpr char32_t IN_PLACE_OF_RESERVED = U'_';
constexpr std::u32string_view RESERVED = U"<>:\"/\\|?*';";
/// In front these hide a file, begin a comment or an option, or stand for a folder to a shell.
constexpr std::u32string_view RESERVED_IN_FRONT = U".#-~";
/// Alone these make no name: they stand for what was taken away, or cannot be seen.
constexpr std::u32string_view OF_NO_USE = U"_ .-#~";

/// Names of devices on Windows, with any extension, in caseless form.
constexpr std::u32string_view DEVICES[] = {U"aux", U"con", U"conin$", U"conout$", U"nul", U"prn"};
constexpr std::u32string_view NUMBERED_DEVICES[] = {U"com", U"lpt"};
constexpr std::u32string_view DEVICE_NUMBERS = U"0123456789\u00b9\u00b2\u00b3";

std::size_t utf8_size(char32_t c) {
  return c < 0x80 ? 1 : c < 0x800 ? 2 : c < 0x10000 ? 3 : 4;
}

/// Unicode 15, table 6-2; other than in ASCII, spaces of all widths look the same.
bool is_space(char32_t c) {
  return c == U' ' || c == 0xA0 || c == 0x1680 || (c >= 0x2000 && c <= 0x200A) || c == 0x202F ||
         c == 0x205F || c == 0x3000;
}

/// Whether `c` can be seen. Beyond the basic plane all but tags and private use can.
bool is_visible(char32_t c) {
  if (c == REPLACEMENT_CHARACTER) return false;
  return c < 0x10000 ? is_graphic(static_cast<char16_t>(c)) : c < 0xE0000;
}

char32_t shown(char32_t c) {
  return is_space(c) ? U' ' : is_visible(c) ? c : IN_PLACE_OF_RESERVED;
}

char32_t unreserved(char32_t c) {
  return RESERVED.find(c) == std::u32string_view::npos ? c : IN_PLACE_OF_RESERVED;
}

void trim_end(std::u32string& text) {
  while (!text.empty() && (text.back() == U' ' || text.back() == U'.')) text.pop_back();
}

bool is_device(std::u32string_view name) {
  std::u32string base = to_caseless_form(name.substr(0, name.find(U'.')));
  trim_end(base);
  if (std::find(std::begin(DEVICES), std::end(DEVICES), base) != std::end(DEVICES)) return true;
  return base.size() == 4 && DEVICE_NUMBERS.find(base.back()) != std::u32string_view::npos &&
         std::any_of(std::begin(NUMBERED_DEVICES), std::end(NUMBERED_DEVICES),
                     [&](std::u32string_view device) { return base.starts_with(device); });
}

void shorten(std::u32string& text, std::size_t most) {
  std::size_t bytes = 0;
  std::size_t end = 0;
  while (end < text.size() && bytes + utf8_size(text[end]) <= most) bytes += utf8_size(text[end++]);
  if (end == text.size()) return;
  while (end > 0 && is_combining(text[end])) --end;
  text.resize(end);
  trim_end(text);
}

}  // namespace

std::string file_stem(std::string_view name, FileNameSet set) {
  std::u32string stem = to_composed_form(characters_of(name));
  std::transform(stem.begin(), stem.end(), stem.begin(), shown);
  if (set == FileNameSet::ascii) stem = to_ascii(stem);
  std::transform(stem.begin(), stem.end(), stem.begin(), unreserved);
  stem.erase(0, std::min(stem.find_first_not_of(U' '), stem.size()));
  trim_end(stem);
  shorten(stem, MAX_STEM);  // What a cut leaves may be of no use, or be a device.
  if (stem.find_first_not_of(OF_NO_USE) == std::u32string::npos) return {};
  if (RESERVED_IN_FRONT.find(stem.front()) != std::u32string_view::npos) {
    stem.front() = IN_PLACE_OF_RESERVED;
  }
  if (is_device(stem)) {
    stem.insert(stem.begin(), IN_PLACE_OF_RESERVED);
    shorten(stem, MAX_STEM);
  }
  return to_utf8(stem);
}

std::string product_file_stem(std::string_view name, FileNameSet set) {
  std::string_view stem = name;
  for (;;) {
    const std::string_view trimmed = stem.substr(0, stem.find_last_not_of(' ') + 1);
    const std::string_view shorter = without_exchange_ending(trimmed);
    if (shorter.size() == trimmed.size()) break;
    stem = shorter;
  }
  const std::string without = file_stem(stem, set);
  return without.empty() ? file_stem(name, set) : without;
}

std::string shortened_stem(std::string_view stem, std::size_t bytes) {
  const std::size_t most = MAX_STEM - bytes;
  if (stem.size() <= most) return std::string(stem);
  std::u32string text = characters_of(stem);
  shorten(text, most);
  return to_utf8(text);
}

}  // namespace Kessel
