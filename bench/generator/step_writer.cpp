// Formats records into a buffer and hands the buffer to the stream in large pieces.

#include "step_writer.h"

#include <charconv>
#include <string>

#include "exchange_text.h"

namespace Kessel::bench {
namespace {

// Text is handed to the stream when this many bytes have gathered.
constexpr std::size_t FLUSH_SIZE = std::size_t{1} << 20U;

// A value that would start at or behind this column goes to the next line.
constexpr std::size_t LINE_BREAK_COLUMN = 68;

// Longer than any number that std::to_chars writes here.
constexpr std::size_t NUMBER_SIZE = 32;

// The time stamp of every generated file; a fixed one keeps the bytes the same on every run.
constexpr std::string_view TIME_STAMP = "2024-05-17T09:30:00";

template <class Number>
void append_number(std::string& out, Number value) {
  char digits[NUMBER_SIZE];
  const auto end = std::to_chars(digits, digits + NUMBER_SIZE, value).ptr;
  out.append(digits, end);
}

}  // namespace

StepWriter::StepWriter(std::ostream& out, Spacing spacing, Numbering numbering)
    : out_(out),
      wide_(spacing == Spacing::wide),
      next_number_(numbering.first),
      step_(numbering.step) {}

void StepWriter::begin_file(std::string_view file_name, std::string_view description) {
  buffer_ += "ISO-10303-21;\nHEADER;\nFILE_DESCRIPTION(('";
  append_exchange_text(buffer_, description);
  buffer_ += "'),'2;1');\nFILE_NAME('";
  append_exchange_text(buffer_, file_name);
  buffer_ += "','";
  buffer_ += TIME_STAMP;
  buffer_ +=
      "',(''),(''),'generate_assembly','generate_assembly','');\n"
      "FILE_SCHEMA(('AUTOMOTIVE_DESIGN { 1 0 10303 214 1 1 1 1 }'));\nENDSEC;\nDATA;\n";
}

void StepWriter::end_file() {
  buffer_ += "ENDSEC;\nEND-ISO-10303-21;\n";
  flush();
}

void StepWriter::flush() {
  out_.write(buffer_.data(), static_cast<std::streamsize>(buffer_.size()));
  buffer_.clear();
}

InstanceId StepWriter::reserve() {
  return reserve_block(1);
}

InstanceId StepWriter::reserve_block(std::uint64_t count) {
  const InstanceId id{next_number_};
  next_number_ += count * step_;
  return id;
}

void StepWriter::append_records(std::string_view text) {
  buffer_ += text;
  if (buffer_.size() >= FLUSH_SIZE) flush();
}

void StepWriter::begin_record(InstanceId id) {
  line_start_ = buffer_.size();
  put(id);
  buffer_ += " = ";
}

void StepWriter::end_record() {
  buffer_ += ";\n";
  if (buffer_.size() >= FLUSH_SIZE) flush();
}

void StepWriter::open_list() {
  buffer_ += wide_ ? "( " : "(";
}

void StepWriter::close_list() {
  // An empty list has one space only, the one that opened it.
  if (wide_ && buffer_.back() != ' ') buffer_ += ' ';
  buffer_ += ')';
}

void StepWriter::separate_values() {
  buffer_ += ',';
  if (!break_long_line() && wide_) buffer_ += ' ';
}

bool StepWriter::break_long_line() {
  if (buffer_.size() - line_start_ < LINE_BREAK_COLUMN) return false;
  buffer_ += '\n';
  line_start_ = buffer_.size();
  buffer_ += "  ";
  return true;
}

void StepWriter::put(InstanceId id) {
  buffer_ += '#';
  append_number(buffer_, id.number);
}

void StepWriter::put(std::span<const InstanceId> ids) {
  open_list();
  bool first = true;
  for (const InstanceId id : ids) put_separated(first, id);
  close_list();
}

void StepWriter::put(double value) {
  char digits[NUMBER_SIZE];
  // Adding zero turns -0 into 0.
  const auto end = std::to_chars(digits, digits + NUMBER_SIZE, value + 0.0).ptr;
  const std::string_view number(digits, static_cast<std::size_t>(end - digits));
  // A real has a decimal point, and its exponent an upper-case E (ISO 10303-21, 6.4.2).
  const std::size_t exponent = number.find('e');
  const std::string_view mantissa = number.substr(0, exponent);
  buffer_ += mantissa;
  if (mantissa.find('.') == std::string_view::npos) buffer_ += '.';
  if (exponent == std::string_view::npos) return;
  buffer_ += 'E';
  buffer_ += number.substr(exponent + 1);
}

void StepWriter::put(const Vec3& value) {
  open_list();
  put(value.x);
  separate_values();
  put(value.y);
  separate_values();
  put(value.z);
  close_list();
}

void StepWriter::put(std::string_view text) {
  buffer_ += '\'';
  append_exchange_text(buffer_, text);
  buffer_ += '\'';
}

void StepWriter::put(Symbol symbol) {
  buffer_ += '.';
  buffer_ += symbol.name;
  buffer_ += '.';
}

void StepWriter::put_integer(std::int64_t value) {
  append_number(buffer_, value);
}

}  // namespace Kessel::bench
