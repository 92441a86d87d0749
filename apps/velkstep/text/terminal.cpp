// Text for terminals: colours, display width, and nothing that does more than show.
#include "text/terminal.h"

#include <locale.h>
#include <unistd.h>
#include <wchar.h>

#include <algorithm>
#include <cstdlib>

namespace Velkstep {

namespace {

constexpr char32_t REPLACEMENT = 0xFFFD;
constexpr std::string_view REPLACEMENT_UTF8 = "\xEF\xBF\xBD";

/// Takes one character off the front of `text`, which is not empty; REPLACEMENT and one byte for
/// what is not UTF-8.
char32_t take_character(std::string_view& text) {
  struct Form {
    unsigned char mask, lead;
    std::size_t size;
    char32_t least;
  };
  constexpr Form FORMS[] = {
      {0x80, 0x00, 1, 0}, {0xE0, 0xC0, 2, 0x80}, {0xF0, 0xE0, 3, 0x800}, {0xF8, 0xF0, 4, 0x10000}};
  const auto first = static_cast<unsigned char>(text.front());
  for (const Form& form : FORMS) {
    if ((first & form.mask) != form.lead || text.size() < form.size) continue;
    char32_t c = first & static_cast<unsigned char>(~form.mask);
    bool valid = true;
    for (std::size_t i = 1; i < form.size; ++i) {
      const auto byte = static_cast<unsigned char>(text[i]);
      valid = valid && (byte & 0xC0) == 0x80;
      c = (c << 6) | (byte & 0x3Fu);
    }
    if (!valid || c < form.least || c > 0x10FFFF || (c >= 0xD800 && c <= 0xDFFF)) break;
    text.remove_prefix(form.size);
    return c;
  }
  text.remove_prefix(1);
  return REPLACEMENT;
}

struct Range {
  char32_t first, last;
};

// What does something to a terminal or to the text around it.
constexpr Range NOT_FOR_TERMINALS[] = {
    {0x00, 0x1F},      // C0 controls
    {0x7F, 0x9F},      // delete and C1 controls
    {0x061C, 0x061C},  // marks, embeddings, overrides and isolates of direction
    {0x200E, 0x200F},  //
    {0x202A, 0x202E},  //
    {0x2066, 0x2069},  //
    {0x2028, 0x2029},  // line and paragraph separators
};

bool only_shows(char32_t c) {
  return std::none_of(std::begin(NOT_FOR_TERMINALS), std::end(NOT_FOR_TERMINALS),
                      [c](const Range& range) { return c >= range.first && c <= range.last; });
}

/// The system's table of widths, whatever the user's locale is; one column each without it.
class Widths {
 public:
  Widths() : utf8_(::newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr)) {
    if (utf8_ != nullptr) before_ = ::uselocale(utf8_);
  }
  Widths(const Widths&) = delete;
  Widths& operator=(const Widths&) = delete;
  ~Widths() {
    if (utf8_ == nullptr) return;
    ::uselocale(before_);
    ::freelocale(utf8_);
  }
  std::size_t of(char32_t c) const {
    const int width = utf8_ == nullptr ? 1 : ::wcwidth(static_cast<wchar_t>(c));
    return width < 0 ? 1 : static_cast<std::size_t>(width);
  }

 private:
  locale_t utf8_;
  locale_t before_ = nullptr;
};

std::string spaces_up_to(std::string_view text, std::size_t width) {
  const std::size_t taken = display_width(text);
  return std::string(width > taken ? width - taken : 0, ' ');
}

bool colours_are_wanted(ColourChoice choice) {
  if (choice != ColourChoice::automatic) return choice == ColourChoice::always;
  const char* no_color = std::getenv("NO_COLOR");
  if (no_color != nullptr && *no_color != '\0') return false;
  const char* terminal = std::getenv("TERM");
  if (terminal == nullptr || std::string_view(terminal) == "dumb") return false;
  return ::isatty(STDOUT_FILENO) == 1;
}

}  // namespace

std::string printable(std::string_view text) {
  std::string out;
  out.reserve(text.size());
  while (!text.empty()) {
    const std::string_view before = text;
    const char32_t c = take_character(text);
    if (c != REPLACEMENT && only_shows(c)) {
      out += before.substr(0, before.size() - text.size());
    } else {
      out += REPLACEMENT_UTF8;
    }
  }
  return out;
}

std::size_t display_width(std::string_view text) {
  static const Widths WIDTHS;
  std::size_t width = 0;
  while (!text.empty()) width += WIDTHS.of(take_character(text));
  return width;
}

std::string padded_right(std::string_view text, std::size_t width) {
  return std::string(text) + spaces_up_to(text, width);
}

std::string padded_left(std::string_view text, std::size_t width) {
  return spaces_up_to(text, width) + std::string(text);
}

Colours::Colours(ColourChoice choice) : wanted_(colours_are_wanted(choice)) {}

std::string Colours::marked(std::string_view code, std::string_view text) const {
  if (!wanted_ || text.empty()) return std::string(text);
  std::string out = "\x1B[";
  out += code;
  out += 'm';
  out += text;
  out += "\x1B[0m";
  return out;
}

}  // namespace Velkstep
