// Reads one exchange file into a store.
#include <memory>
#include <stdexcept>
#include <string_view>
#include <utility>

#include "kessel/file.h"
#include "reader/record_cutter.h"
#include "reader/record_loader.h"

namespace Kessel {

File* File::parse_file(std::filesystem::path path) {
  auto file = std::make_unique<File>(std::move(path));
  if (!file->input_.is_open()) throw std::invalid_argument("Failed to open input file.");

  RecordCutter cutter(file->input_);
  file->first_line_ = cutter.next_line();
  while (!file->header_.ends_with("ENDSEC;\n")) {
    file->header_ += cutter.next_line();
    file->header_ += '\n';
  }

  RecordLoader loader(*file);
  for (;;) {
    const std::string_view record = cutter.next_record();
    if (record.empty()) break;
    loader.add(record);
  }
  file->input_.clear();  // The writer rewinds the stream and reads it again.
  return file.release();
}

}  // namespace Kessel
