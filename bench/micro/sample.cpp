// Generates the sample once.
#include "micro/sample.h"

#include <cstddef>
#include <sstream>

#include "generator/shapes.h"
#include "reader/record_cutter.h"
#include "reader/record_loader.h"

namespace Kessel::bench {

namespace {

std::vector<std::string> cut_sample() {
  std::istringstream in(sample_text());
  RecordCutter cutter(in);
  std::vector<std::string> records;
  for (;;) {
    const std::string_view record = cutter.read_record();
    if (record.empty()) return records;
    records.emplace_back(record);
  }
}

}  // namespace

const std::string& sample_text() {
  static const std::string text = [] {
    std::ostringstream out;
    write_file(out, *find_shape("bodies"), 22, 1);
    return out.str();
  }();
  return text;
}

const std::vector<std::string_view>& sample_records() {
  static const std::vector<std::string> texts = cut_sample();
  static const std::vector<std::string_view> records(texts.begin(), texts.end());
  return records;
}

std::size_t sample_bytes() {
  std::size_t bytes = 0;
  for (const std::string_view record : sample_records()) bytes += record.size();
  return bytes;
}

std::unique_ptr<Store> load_sample() {
  auto file = std::make_unique<Store>("");
  RecordLoader loader(*file);
  for (const std::string_view record : sample_records()) loader.add(record);
  return file;
}

}  // namespace Kessel::bench
