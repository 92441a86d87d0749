// How a file is written down.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "exchange/plain_reader.h"

namespace Kessel::test {

/// A record, or an entity of the header, whose number is empty.
struct WrittenRecord {
  std::string number;
  std::vector<plain::Token> tokens;  ///< behind the "="
};

/// A file, and all that can be chosen about its text. What is put between tokens and statements is
/// blank: blanks, comments, empty statements.
struct Form {
  std::vector<WrittenRecord> header;
  std::vector<WrittenRecord> records;

  std::string in_front;  ///< of the first word
  std::string behind_header = "\n";
  std::string sections;  ///< between the header and the data
  std::string data = "DATA;";
  std::string between_tokens;  ///< in records and in the header
  std::string inside_record;   ///< once in each record, behind the first "("
  std::string before_record;
  std::string behind_record = "\n";  ///< behind the ";"
  std::string middle;                ///< between two records in the middle of the data
  std::string end = "ENDSEC;\nEND-ISO-10303-21;\n";
  std::string zeros;            ///< in front of every number
  bool breaks_strings = false;  ///< over lines
  std::string line_end = "\n";  ///< in place of every line feed

  /// Gives the record at that place of all its number.
  std::uint64_t (*number)(std::uint64_t place, std::uint64_t count) = nullptr;
};

/// The parts of a legal file with one data section and no others.
Form form_of(std::string_view file);

/// The number under which each record is written, by the one that it had.
std::map<std::string, std::string> numbers_of(const Form& form);

/// The text.
std::string text_of(const Form& form);

}  // namespace Kessel::test
