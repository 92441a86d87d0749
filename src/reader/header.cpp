// What a header is to the second reading.
#include "reader/header.h"

#include <sstream>
#include <string>

#include "reader/record_cutter.h"
#include "reader/text.h"

namespace Kessel {

SecondReading read_again(std::string_view first_line, std::string_view header) {
  std::istringstream text(std::string(first_line).append("\n").append(header));
  RecordCutter cutter(text);
  auto found = SecondReading::passed_over;
  for (;;) {
    const std::string_view record = cutter.read_record();
    if (cutter.input_ended()) return record.empty() ? found : SecondReading::begin_of_data;
    if (record.empty()) return SecondReading::end_of_data;
    const char* digits = record.data() + 1;
    // What has no number is dropped.
    if (read_number(digits, record.data() + record.size()) != 0) found = SecondReading::records;
  }
}

bool second_reading_ends(std::istream& input, std::size_t store_size, std::size_t memory_limit) {
  input.clear();
  input.seekg(0);
  RecordCutter cutter(input);
  cutter.limit_memory(memory_limit);
  for (;;) {
    const std::string_view record = cutter.read_record();
    if (record.empty()) return true;
    if (cutter.input_ended()) return false;
    const char* digits = record.data() + 1;
    if (read_number(digits, record.data() + record.size()) >= store_size) return true;
  }
}

}  // namespace Kessel
