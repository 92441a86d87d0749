// An exchange file taken apart in the most obvious way, to be changed and put together again.
#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace Kessel::test {

/// A piece of a record: an instance name, a string, a keyword or number, or a single character.
struct Piece {
  enum class Kind { instance, string, word, number, sign } kind = Kind::sign;
  std::string text;
};

struct PlainRecord {
  std::string number;
  std::vector<Piece> pieces;  ///< behind "="
};

struct PlainFile {
  std::string head;  ///< up to "DATA;"
  std::vector<PlainRecord> records;
  std::string tail;  ///< from "ENDSEC;" on
};

/// Takes a file with one data section apart. Comments and blanks are dropped.
PlainFile take_apart(std::string_view text);

/// The file in words again, one record a line.
std::string put_together(const PlainFile& file);

/// A file with these records, one a line, in its data section.
std::string file_of(std::string_view records);

}  // namespace Kessel::test
