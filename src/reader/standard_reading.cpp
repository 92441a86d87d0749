#include "reader/standard_reading.h"

#include <algorithm>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "exchange/comments.h"
#include "exchange/reader.h"
#include "findings/finding_kinds.h"
#include "findings/progress_reporter.h"
#include "findings/refusals.h"
#include "instances/places.h"
#include "instances/text_layout.h"
#include "kessel/errors.h"
#include "reader/record_loader.h"
#include "reader/text.h"

namespace Kessel {

namespace {

constexpr std::string_view FIRST_LINE = "ISO-10303-21;";
constexpr std::string_view HEADER_END = "ENDSEC;\n";

/// Everything up to the end of the header section, which is at the offset `end`, as it stands.
std::string text_of_header(std::istream& in, std::uint64_t end) {
  std::string text(static_cast<std::size_t>(end), '\0');
  in.clear();
  in.seekg(0);
  in.read(text.data(), static_cast<std::streamsize>(text.size()));
  return text;
}

/// The lines behind the first, trimmed, where reading by lines ends the header at the same place.
std::optional<std::string> header_by_lines(std::string_view text) {
  std::string header;
  for (bool is_first = true; !text.empty(); is_first = false) {
    if (header.ends_with(HEADER_END)) return std::nullopt;
    const std::size_t end = std::min(text.find('\n'), text.size());
    const std::string_view line = trim(text.substr(0, end));
    if (is_first && line != FIRST_LINE) return std::nullopt;
    if (!is_first) header.append(line).append("\n");
    text.remove_prefix(std::min(end + 1, text.size()));
  }
  if (!header.ends_with(HEADER_END)) return std::nullopt;
  return header;
}

/// A text of the header in which the apostrophes are those of strings, as files' names and times
/// are put between them: as it stands, or without its comments.
std::string writable(std::string_view text) {
  std::string bare = Exchange::without_comments(text);
  const bool is_fine =
      std::count(bare.begin(), bare.end(), '\'') == std::count(text.begin(), text.end(), '\'');
  return is_fine ? std::string(text) : bare;
}

std::uint32_t number_of(const Exchange::Record& record) {
  if (record.number == 0 || record.number > UINT32_MAX) {
    throw InputError(
        make_finding(FindingKind::record_number_too_large,
                     "The number of this record is none from 1 to 4,294,967,295, which "
                     "this style needs; the others do not.",
                     record.offset));
  }
  return static_cast<std::uint32_t>(record.number);
}

/// Enters records into a store.
class StoreLoader final : public Exchange::Listener {
 public:
  StoreLoader(Store& store, const Options& options)
      : store_(store),
        options_(options),
        loader_(store, options.memory_limit),
        reporter_(options, Stage::reading, size_for_progress(store.input, options)) {}

  void header_entity(const Exchange::Statement& entity) override {
    entities_.append(writable(entity.text)).append(";\n");
  }

  void end_section(Exchange::Section section, std::uint64_t end) override {
    if (section == Exchange::Section::header) header_end_ = end;
  }

  void record(const Exchange::Record& record) override {
    const std::uint32_t number = number_of(record);
    const bool is_known = number < store_.entities.size() && store_.entities[number] != nullptr;
    if (is_known) {
      store_.repeated.insert(number);
    } else {
      loader_.add(record);
    }
    layout_->add_counted(record);
    loader_.count_beside(layout_->bytes());
    if (reporter_.is_due(record.offset)) reporter_.report(record.offset);
  }

  void entry(Exchange::Section, const Exchange::Statement& entry,
             std::span<const Exchange::Mention>) override {
    if (has_entries_) return;
    has_entries_ = true;
    warning(make_finding(FindingKind::skipped_text,
                         "Files of this style have no anchors and no references to other files; "
                         "this one is left out, and so are all others.",
                         entry.offset));
  }

  void warning(const Finding& finding) override {
    if (options_.warning) warnings_.push_back(finding);
  }

  void finish() {
    loader_.make_room_for_references();
    store_.layout = std::move(layout_);
    const std::optional<std::string> by_lines =
        header_by_lines(text_of_header(store_.input, header_end_));
    store_.first_line = FIRST_LINE;
    const bool is_by_lines = by_lines && writable(*by_lines) == *by_lines;
    store_.header = is_by_lines ? *by_lines : "HEADER;\n" + entities_ + std::string(HEADER_END);
    locate(store_.input, warnings_);
    store_.input.clear();  // The writer rewinds the stream and reads it again.
    for (const Finding& warning : warnings_) options_.warning(warning);
    reporter_.report_end();
  }

 private:
  Store& store_;
  const Options& options_;
  RecordLoader loader_;
  ProgressReporter reporter_;
  std::unique_ptr<TextLayout> layout_ = std::make_unique<TextLayout>();
  std::string entities_;
  std::uint64_t header_end_ = 0;
  bool has_entries_ = false;
  std::vector<Finding> warnings_;
};

/// Compares the records under each number that several have.
class RepeatedRecords final : public Exchange::Listener {
 public:
  explicit RepeatedRecords(const Store& store) : store_(store) {}

  void record(const Exchange::Record& record) override {
    const std::uint32_t number = number_of(record);
    if (!store_.repeated.contains(number)) return;
    const auto [known, is_new] = bodies_.emplace(number, record.body);
    if (is_new || known->second == record.body) return;
    throw InputError(
        make_finding(FindingKind::two_texts_of_a_number,
                     "#" + std::to_string(number) + " has stood for another record already.",
                     record.offset, number));
  }

 private:
  const Store& store_;
  std::map<std::uint32_t, std::string> bodies_;
};

/// Reads the input to its end. Throws where that cannot be done.
void read_to_end(std::istream& in, const Options& options, Exchange::Listener& listener) {
  const Exchange::Ending ending = read_exchange_file(in, {options.memory_limit}, listener);
  if (in.bad()) throw InputError(unreadable_file("cannot be read to its end"));
  if (ending.error) throw InputError(*ending.error);
}

}  // namespace

void read_as_standard(Store& store, const Options& options) {
  try {
    StoreLoader loader(store, options);
    read_to_end(store.input, options, loader);
    if (!store.repeated.empty()) {
      RepeatedRecords repeated(store);
      read_to_end(store.input, options, repeated);
    }
    loader.finish();
  } catch (const InputError& error) {
    std::vector<Finding> found{error.finding()};
    locate(store.input, found);
    throw InputError(found.front());
  }
}

}  // namespace Kessel
