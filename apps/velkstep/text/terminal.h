// Text for terminals: colours, display width, and nothing that does more than show.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace Velkstep {

/// `text` as UTF-8 that only shows: control characters, those that turn the direction of writing,
/// and bytes that are not UTF-8 become U+FFFD. Names come from anywhere, and an escape sequence
/// among them must not reach a terminal.
std::string printable(std::string_view text);

/// Columns that printable text takes on a terminal.
std::size_t display_width(std::string_view text);

/// `text` followed, or preceded, by spaces up to `width` columns.
std::string padded_right(std::string_view text, std::size_t width);
std::string padded_left(std::string_view text, std::size_t width);

/// Whether text is marked: automatically where standard output is a terminal that knows how, unless
/// NO_COLOR says otherwise.
enum class ColourChoice { automatic, always, never };

/// Marks text.
class Colours {
 public:
  explicit Colours(ColourChoice choice);
  std::string bold(std::string_view text) const { return marked("1", text); }
  std::string dim(std::string_view text) const { return marked("2", text); }

 private:
  std::string marked(std::string_view code, std::string_view text) const;

  bool wanted_;
};

}  // namespace Velkstep
