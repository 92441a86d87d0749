// Reads one exchange file into a store.
#include <memory>
#include <stdexcept>
#include <string_view>
#include <utility>

#include "kessel/file.h"
#include "model/progress_reporter.h"
#include "reader/header.h"
#include "reader/record_cutter.h"
#include "reader/record_loader.h"
#include "reader/refusals.h"

namespace Kessel {

File* File::parse_file(std::filesystem::path path, const Options& options) {
  auto file = std::make_unique<File>(std::move(path));
  file->read(options);
  return file.release();
}

std::unique_ptr<File> File::parse_file_checked(std::filesystem::path path, const Options& options) {
  auto file = std::make_unique<File>(std::move(path));
  file->checked_ = true;
  file->read(options);
  return file;
}

namespace {

/// Ends a checked run. That the input cannot be read goes before all that follows from it.
[[noreturn]] void refuse(const std::istream& input, const Finding& finding) {
  throw InputError(input.bad() ? unreadable_file("cannot be read to its end") : finding);
}

}  // namespace

/// Reads the header and the records. Checked, throws InputError where it would read for ever, and
/// where the store or a text would take more than the options' memory limit.
void File::read(const Options& options) {
  if (!input_.is_open()) throw std::invalid_argument("Failed to open input file.");

  name_style_ = options.names;
  const std::uint64_t size = size_for_progress(input_, options);
  const std::uint64_t memory_limit = options.memory_limit;
  RecordCutter cutter(input_);
  cutter.limit_memory(memory_limit);
  first_line_ = cutter.next_line();
  while (!header_.ends_with("ENDSEC;\n")) {
    if (checked_ && cutter.input_ended()) refuse(input_, no_header_end(cutter.offset()));
    header_ += cutter.next_line();
    header_ += '\n';
    if (header_.size() > memory_limit) throw InputError(too_long(memory_limit, cutter.offset()));
  }
  if (checked_ && cutter.input_ended()) refuse(input_, no_data(cutter.offset()));

  RecordLoader loader(*this, memory_limit);
  ProgressReporter reporter(options, Stage::reading, size);
  bool has_records = false;
  for (;;) {
    const std::string_view record = cutter.next_record();
    if (record.empty()) break;
    if (checked_ && cutter.input_ended()) {
      refuse(input_, unclosed(record, cutter.place_of(record).offset));
    }
    loader.add(record);
    has_records = true;
    if (reporter.is_due(cutter.offset())) reporter.report(cutter.offset());
  }
  if (checked_ && input_.bad()) refuse(input_, {});
  if (checked_) {
    const SecondReading second = read_again(first_line_, header_);
    // A record that begins in the header is complete where the first one of the data is.
    if (second == SecondReading::begin_of_data && !has_records &&
        !second_reading_ends(input_, entities_.size(), memory_limit)) {
      refuse(input_, header_as_data());
    }
    if (second == SecondReading::passed_over) read_up_to_ = cutter.offset();
  }
  input_.clear();  // The writer rewinds the stream and reads it again.
  reporter.report_end();
}

}  // namespace Kessel
