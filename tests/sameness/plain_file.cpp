#include "sameness/plain_file.h"

#include <cctype>

namespace Kessel::test {

namespace {

bool is_word(char c) {
  return std::isalnum(static_cast<unsigned char>(c)) != 0 || c == '_' || c == '-';
}

std::size_t behind_string(std::string_view text, std::size_t at) {
  for (++at; at < text.size(); ++at) {
    if (text[at] != '\'') continue;
    if (at + 1 < text.size() && text[at + 1] == '\'') {
      ++at;
    } else {
      return at + 1;
    }
  }
  return at;
}

bool is_number(std::string_view text, std::size_t at) {
  const bool has_sign = text[at] == '-' || text[at] == '+';
  const std::size_t digit = at + (has_sign ? 1 : 0);
  return digit < text.size() && std::isdigit(static_cast<unsigned char>(text[digit])) != 0;
}

std::vector<Piece> pieces_of(std::string_view text) {
  std::vector<Piece> pieces;
  for (std::size_t at = 0; at < text.size();) {
    std::size_t end = at + 1;
    Piece::Kind kind = Piece::Kind::sign;
    if (text[at] == '\'') {
      kind = Piece::Kind::string;
      end = behind_string(text, at);
    } else if (text[at] == '#') {
      kind = Piece::Kind::instance;
      while (end < text.size() && std::isdigit(static_cast<unsigned char>(text[end])) != 0) ++end;
    } else if (text[at] == '.') {
      kind = Piece::Kind::word;  // an enumeration
      end = text.find('.', at + 1) + 1;
    } else if (is_number(text, at)) {
      kind = Piece::Kind::number;
      while (end < text.size() && (is_word(text[end]) || text[end] == '.' || text[end] == '+'))
        ++end;
    } else if (is_word(text[at])) {
      kind = Piece::Kind::word;
      while (end < text.size() && is_word(text[end])) ++end;
    }
    if (std::isspace(static_cast<unsigned char>(text[at])) == 0) {
      pieces.push_back({kind, std::string(text.substr(at, end - at))});
    }
    at = end;
  }
  return pieces;
}

/// `text` without comments, cut behind each ";" that is in no string.
std::vector<std::string> statements_of(std::string_view text) {
  std::vector<std::string> statements(1);
  for (std::size_t at = 0; at < text.size();) {
    std::size_t end = at + 1;
    if (text.substr(at, 2) == "/*") {
      at = text.find("*/", at + 2) + 2;
      continue;
    }
    if (text[at] == '\'') end = behind_string(text, at);
    statements.back() += text.substr(at, end - at);
    if (text[at] == ';') statements.emplace_back();
    at = end;
  }
  return statements;
}

}  // namespace

PlainFile take_apart(std::string_view text) {
  PlainFile file;
  const std::size_t data = text.find("DATA;") + 5;
  file.head = text.substr(0, data);
  for (const std::string& statement : statements_of(text.substr(data))) {
    const std::size_t begin = statement.find_first_not_of(" \t\r\n");
    if (begin == std::string::npos) continue;
    if (!file.tail.empty() || statement[begin] != '#') {
      file.tail += statement.substr(begin) + "\n";
      continue;
    }
    std::vector<Piece> pieces = pieces_of(statement);
    PlainRecord record;
    record.number = pieces[0].text;
    record.pieces.assign(pieces.begin() + 2, pieces.end() - 1);
    file.records.push_back(std::move(record));
  }
  return file;
}

std::string put_together(const PlainFile& file) {
  std::string text = file.head + "\n";
  for (const PlainRecord& record : file.records) {
    text += record.number + "=";
    for (const Piece& piece : record.pieces) text += piece.text;
    text += ";\n";
  }
  return text + file.tail;
}

std::string file_of(std::string_view records) {
  return "ISO-10303-21;\nHEADER;\nFILE_DESCRIPTION((''),'2;1');\n"
         "FILE_NAME('','',(''),(''),'','','');\nFILE_SCHEMA(('AUTOMOTIVE_DESIGN'));\nENDSEC;\n"
         "DATA;\n" +
         std::string(records) + "ENDSEC;\nEND-ISO-10303-21;\n";
}

}  // namespace Kessel::test
