#include "reader/plain_cutting.h"

#include <algorithm>
#include <cctype>
#include <sstream>

#include "reader/record_cutter.h"

namespace Kessel::test {

std::vector<std::string> cut(const std::string& text, int lines) {
  std::istringstream in(text);
  RecordCutter cutter(in);
  std::vector<std::string> texts;
  for (int i = 0; i < lines; ++i) texts.emplace_back(cutter.next_line());
  for (auto calls = std::count(text.begin(), text.end(), ';') + 4; calls > 0; --calls) {
    texts.emplace_back(cutter.read_record());
  }
  texts.emplace_back(cutter.input_ended() ? "ended" : "not ended");
  return texts;
}

namespace plain {

namespace {

void trim(std::string& text) {
  const auto is_white = [](char c) { return std::isspace(static_cast<unsigned char>(c)) != 0; };
  while (!text.empty() && is_white(text.back())) text.pop_back();
  const auto first = std::find_if_not(text.begin(), text.end(), is_white);
  text.erase(text.begin(), first);
}

std::string plain_line(std::istream& in) {
  std::string line;
  std::getline(in, line);
  trim(line);
  return line;
}

std::string plain_record(std::istream& in) {
  std::string record = "A";
  while (in && !in.eof()) {
    if (record.empty() || record.front() == '#') break;
    std::getline(in, record, ';');
    trim(record);
  }
  while (in && !in.eof() && !record.empty()) {
    if (record.back() == ')') return record;
    std::string piece;
    std::getline(in, piece, ';');
    trim(piece);
    record += piece;
  }
  return record;
}

}  // namespace

std::vector<std::string> cut(const std::string& text, int lines) {
  std::istringstream in(text);
  std::vector<std::string> texts;
  for (int i = 0; i < lines; ++i) texts.push_back(plain_line(in));
  for (auto calls = std::count(text.begin(), text.end(), ';') + 4; calls > 0; --calls) {
    texts.push_back(plain_record(in));
  }
  texts.emplace_back(in.eof() ? "ended" : "not ended");
  return texts;
}

}  // namespace plain

}  // namespace Kessel::test
