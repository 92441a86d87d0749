// Finds inputs on which the library would never stop reading.
#include "ended_input.h"

#include <cerrno>
#include <fstream>
#include <stdexcept>
#include <string_view>
#include <system_error>

namespace Velkstep {

namespace {

bool is_space(char c) {
  return c == ' ' || (c >= '\t' && c <= '\r');
}

void trim(std::string& text) {
  while (!text.empty() && is_space(text.back())) text.pop_back();
  std::size_t front = 0;
  while (front < text.size() && is_space(text[front])) ++front;
  text.erase(0, front);
}

/// Reads up to and including the line that closes the header. Returns whether there is one.
bool read_header(std::istream& in) {
  std::string line;
  std::getline(in, line);
  while (std::getline(in, line)) {
    trim(line);
    if (line.ends_with("ENDSEC;")) return true;
  }
  return false;
}

/// Reads the data up to its end. Returns whether it ends at a ";" that completes something.
bool read_data(std::istream& in) {
  bool inside_record = false;  // After a piece that a record's next piece must complete.
  for (std::string piece; std::getline(in, piece, ';');) {
    trim(piece);
    if (in.eof()) return piece.empty() && !inside_record;
    if (piece.empty() && !inside_record) return true;
    if (inside_record || piece.front() == '#') {
      inside_record = piece.empty() || piece.back() != ')';
    }
  }
  return !inside_record;
}

}  // namespace

std::string why_reading_would_not_end(const std::filesystem::path& in) {
  errno = 0;
  std::ifstream file(in, std::ios::in | std::ios::binary);
  if (!file) {
    throw std::runtime_error(std::system_category().message(errno == 0 ? ENOENT : errno));
  }
  if (!read_header(file)) return "no line ends the header with \"ENDSEC;\"";
  if (file.eof()) return "the file ends with its header";
  if (!read_data(file)) return "the file does not end with a \";\" that closes a record or section";
  if (file.bad()) throw std::runtime_error("cannot be read");
  return {};
}

}  // namespace Velkstep
