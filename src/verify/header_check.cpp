#include "verify/header_check.h"

#include <cstdint>
#include <vector>

#include "verify/string_value.h"
#include "verify/text_search.h"

namespace Kessel {

namespace {

/// What a run puts in place of something in the header.
enum class Hole { name, time };

/// A header as a run leaves it: text, and holes between two pieces of it.
struct HeaderForm {
  std::vector<std::string_view> pieces;
  std::vector<Hole> holes;
};

/// The first string behind "FILE_NAME" becomes the file's name and the second the time, where a
/// string is what stands between two apostrophes, doubled or not. Headers that lack these, and what
/// a run then replaces: where only one apostrophe is left behind "FILE_NAME", the time goes between
/// the first two of the header; where there is none, between its second and third.
HeaderForm form_of(std::string_view header) {
  std::vector<std::size_t> apostrophes;
  for (std::size_t at = header.find('\''); at != NONE; at = header.find('\'', at + 1)) {
    apostrophes.push_back(at);
  }
  const std::size_t file_name = header.find("FILE_NAME");
  std::size_t first = 0;  // of the apostrophes behind it
  if (file_name == NONE) {
    first = apostrophes.size();
  } else {
    while (first < apostrophes.size() && apostrophes[first] < file_name) ++first;
  }

  HeaderForm form;
  std::size_t begin = 0;
  const auto replace = [&](std::size_t opening, Hole hole) {
    if (opening + 1 >= apostrophes.size()) return;
    form.pieces.push_back(header.substr(begin, apostrophes[opening] + 1 - begin));
    form.holes.push_back(hole);
    begin = apostrophes[opening + 1];
  };
  const std::size_t behind = apostrophes.size() - first;
  if (behind >= 2) {
    replace(first, Hole::name);
    replace(first + 2, Hole::time);
  } else {
    replace(behind == 1 ? 0 : 1, Hole::time);
  }
  form.pieces.push_back(header.substr(begin));
  return form;
}

/// Takes a time in UTC off the front of `text`, as in 2026-11-16T02:45:07+00:00.
bool take_time(std::string_view& text) {
  constexpr std::string_view FORM = "dddd-dd-ddTdd:dd:dd+00:00";
  if (text.size() < FORM.size()) return false;
  for (std::size_t i = 0; i < FORM.size(); ++i) {
    const bool fits = FORM[i] == 'd' ? text[i] >= '0' && text[i] <= '9' : text[i] == FORM[i];
    if (!fits) return false;
  }
  text.remove_prefix(FORM.size());
  return true;
}

/// Takes off `text` what the form has from its hole `next` on, and then `end`.
bool take_rest(std::string_view& text, const HeaderForm& form, std::size_t next,
               std::string_view end) {
  for (; next < form.holes.size(); ++next) {
    if (!take_time(text) || !take(text, form.pieces[next + 1])) return false;
  }
  return take(text, end);
}

/// How a text begins, compared with what it should begin with.
struct Beginning {
  bool fits = false;
  std::size_t size = 0;
  std::string_view name = {};  ///< what stands in the place of the file's name
};

Beginning compare(std::string_view text, std::string_view first_line, const HeaderForm& form,
                  std::string_view end) {
  std::string_view rest = text;
  const auto size = [&] { return text.size() - rest.size(); };
  if (!take(rest, first_line) || !take(rest, "\n") || !take(rest, form.pieces[0])) return {};
  if (form.holes.empty() || form.holes[0] == Hole::time) {
    const bool fits = take_rest(rest, form, 0, end);
    return {fits, size()};
  }
  // A name may hold apostrophes: it ends at the first behind which all else is as it should be.
  const std::string_view behind = rest;
  const std::size_t farthest = text.find("\nDATA;\n");
  for (std::size_t at = behind.find('\''); at < farthest; at = behind.find('\'', at + 1)) {
    rest = behind.substr(at);
    if (take(rest, form.pieces[1]) && take_rest(rest, form, 1, end)) {
      return {true, size(), behind.substr(0, at)};
    }
  }
  return {};
}

/// Whether a string's body is `name`, with or without a folder in front.
bool names_file(std::string_view body, std::string_view name) {
  const std::size_t slash = body.rfind('/');
  return string_value(slash == NONE ? body : body.substr(slash + 1)) == name;
}

}  // namespace

std::size_t check_header(std::string_view text, std::string_view first_line,
                         std::string_view header, std::string_view file_name, FileReport& report) {
  constexpr std::string_view BEGIN_OF_DATA = "\nDATA;\n";
  const HeaderForm form = form_of(header);
  const Beginning beginning = compare(text, first_line, form, BEGIN_OF_DATA);
  if (beginning.fits) {
    const bool is_named =
        form.holes.size() == 2 || (form.holes.size() == 1 && form.holes[0] == Hole::name);
    if (is_named && !names_file(beginning.name, file_name)) {
      report.add(FindingKind::wrong_header, "The header says that the file is called " +
                                                quoted(beginning.name) + ", which it is not.");
    }
    return beginning.size;
  }
  report.add(FindingKind::wrong_header,
             "The lines in front of the data are not those of the input with the file's name and a "
             "time.");
  const std::size_t data = text.find(BEGIN_OF_DATA);
  return data == NONE ? NONE : data + BEGIN_OF_DATA.size();
}

}  // namespace Kessel
