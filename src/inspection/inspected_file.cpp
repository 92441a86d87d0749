// An exchange file that was read to be looked at, not to be split.
#include "inspection/inspected_file.h"

#include <algorithm>
#include <stdexcept>
#include <string_view>
#include <utility>

#include "findings/messages.h"
#include "kessel/encoding.h"
#include "reader/record_cutter.h"
#include "reader/record_loader.h"
#include "structure/names_of_their_own.h"
#include "structure/part_records.h"
#include "structure/process_parts.h"

namespace Kessel {

namespace {

/// A record up to the end of its first string.
std::string_view up_to_first_string(std::string_view record) {
  const std::string_view body = whole_first_string(record);
  if (body.data() == nullptr) return record;  // There is none.
  const auto end = static_cast<std::size_t>(body.data() + body.size() - record.data());
  return record.substr(0, end + 1);
}

}  // namespace

InspectedFile::InspectedFile(const std::filesystem::path& in, const Options& options) : file_(in) {
  if (!file_.input.is_open()) throw std::invalid_argument("Failed to open input file.");
  file_.name_style = options.names;
  read();
  find_structure();
  numbers_ = part_records(file_);
}

void InspectedFile::read() {
  RecordCutter cutter(file_.input);
  // The same loops as those of a split, which would go on for ever where these throw.
  header_ = cutter.next_line();
  header_ += '\n';
  const std::size_t first_line_end = header_.size();
  while (header_.size() == first_line_end || !header_.ends_with("ENDSEC;\n")) {
    if (cutter.input_ended()) throw std::runtime_error("no line ends the header with \"ENDSEC;\"");
    header_ += cutter.next_line();
    header_ += '\n';
  }
  if (cutter.input_ended()) throw std::runtime_error("the file ends with its header");

  RecordLoader loader(file_);
  std::vector<TypeCounts::Type*> known_types(RecordLoader::MOST_KNOWN_TYPES + 1, nullptr);
  for (;;) {
    const std::string_view record = cutter.read_record();
    if (record.empty()) break;
    if (cutter.input_ended()) {
      throw std::runtime_error(
          "the file does not end with a \";\" that closes a record or section");
    }
    const RecordLoader::Added added = loader.add(record);
    if (added.number == 0) continue;
    TypeCounts::Type*& known = known_types[added.known_type];
    if (known == nullptr || added.known_type == RecordLoader::MOST_KNOWN_TYPES) {
      known = &types_.of(added.type);
    }
    ++known->records;
    if (known->text != TextKept::none) keep_text(added.number, *known, record);
  }
  if (file_.input.bad()) throw std::runtime_error("cannot be read");
  std::sort(unit_contexts_.begin(), unit_contexts_.end());
  unit_contexts_.erase(std::unique(unit_contexts_.begin(), unit_contexts_.end()),
                       unit_contexts_.end());
}

void InspectedFile::keep_text(std::uint32_t number, const TypeCounts::Type& type,
                              std::string_view record) {
  texts_.keep(number, type.text == TextKept::whole ? record : up_to_first_string(record));
  if (type.assigns_units) unit_contexts_.push_back(number);
}

void InspectedFile::find_structure() {
  const Silence silence;
  const NamesOfTheirOwn names;
  process_parts(file_, decode_step_to_utf8);
}

}  // namespace Kessel
