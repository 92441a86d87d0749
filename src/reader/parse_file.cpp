// Reads one exchange file into a store.
#include "reader/parse_file.h"

#include <memory>
#include <optional>
#include <stdexcept>
#include <string_view>

#include "findings/progress_reporter.h"
#include "findings/refusals.h"
#include "reader/header.h"
#include "reader/record_cutter.h"
#include "reader/record_loader.h"
#include "reader/standard_reading.h"

namespace Kessel {

namespace {

/// A folder can be opened, but nothing can be read from it.
void require_readable(std::ifstream& input) {
  if (input.is_open()) input.peek();
  if (!input.is_open() || input.bad()) throw std::invalid_argument("Failed to open input file.");
  input.clear();
}

/// Ends a checked run. That the input cannot be read goes before all that follows from it.
[[noreturn]] void refuse(const std::istream& input, const Finding& finding) {
  throw InputError(input.bad() ? unreadable_file("cannot be read to its end") : finding);
}

/// Takes the lines up to the one that ends the header. Returns where that one begins.
std::uint64_t read_header(Store& store, RecordCutter& cutter, std::uint64_t memory_limit) {
  std::optional<std::uint64_t> almost;  // Where the header would end, were it not for the line.
  const auto take_line = [&] {
    const std::string_view line = cutter.next_line();
    const std::size_t end = line.find("ENDSEC");
    if (!almost && end != std::string_view::npos) almost = cutter.place_of(line).offset + end;
    return line;
  };
  store.first_line = take_line();
  for (;;) {
    if (store.checked && cutter.input_ended()) {
      refuse(store.input, no_header_end(almost.value_or(cutter.offset())));
    }
    const std::string_view line = take_line();
    store.header.append(line).append("\n");
    if (store.header.size() > memory_limit)
      throw InputError(too_long(memory_limit, cutter.offset()));
    if (line.ends_with("ENDSEC;")) return cutter.place_of(line).offset;
  }
}

void read(Store& store, const Options& options) {
  require_readable(store.input);

  store.name_style = options.names;
  const std::uint64_t size = size_for_progress(store.input, options);
  const std::uint64_t memory_limit = options.memory_limit;
  RecordCutter cutter(store.input);
  cutter.limit_memory(memory_limit);
  const std::uint64_t end_of_header = read_header(store, cutter, memory_limit);
  if (store.checked && cutter.input_ended()) refuse(store.input, no_data(cutter.offset()));

  RecordLoader loader(store, memory_limit);
  ProgressReporter reporter(options, Stage::reading, size);
  bool has_records = false;
  for (;;) {
    const std::string_view record = cutter.read_record();
    if (record.empty()) break;
    if (store.checked && cutter.input_ended()) {
      refuse(store.input, unclosed(record, cutter.place_of(record).offset));
    }
    loader.add(record, cutter.place_of(record).offset);
    has_records = true;
    if (reporter.is_due(cutter.offset())) reporter.report(cutter.offset());
  }
  if (store.checked && store.input.bad()) refuse(store.input, {});
  if (store.checked) {
    const SecondReading second = read_again(store.first_line, store.header);
    // A record that begins in the header is complete where the first one of the data is.
    if (second == SecondReading::begin_of_data && !has_records &&
        !second_reading_ends(store.input, store.entities.size(), memory_limit)) {
      refuse(store.input, header_as_data(end_of_header));
    }
    if (second == SecondReading::passed_over) store.read_up_to = cutter.offset();
  }
  store.input.clear();  // The writer rewinds the stream and reads it again.
  reporter.report_end();
}

}  // namespace

std::unique_ptr<Store> parse_file(const std::filesystem::path& path, const Options& options) {
  auto store = std::make_unique<Store>(path);
  read(*store, options);
  return store;
}

std::unique_ptr<Store> parse_file_checked(const std::filesystem::path& path,
                                          const Options& options) {
  auto store = std::make_unique<Store>(path);
  store->checked = true;
  store->reading = options.reading;
  if (options.reading == Reading::standard) {
    require_readable(store->input);
    store->name_style = options.names;
    read_as_standard(*store, options);
  } else {
    read(*store, options);
  }
  return store;
}

}  // namespace Kessel
