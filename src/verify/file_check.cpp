#include "verify/file_check.h"

#include <algorithm>
#include <string>

#include "kessel/encoding.h"
#include "verify/header_check.h"
#include "verify/reference_block.h"

namespace Kessel {

namespace {

using enum FindingKind;

std::string number_text(std::uint32_t number) {
  return "#" + std::to_string(number);
}

/// Words for sentences.
std::string shown(const std::vector<Token>& words, std::size_t at) {
  if (at >= words.size()) return "nothing";
  if (words[at].kind == Token::Kind::reference) return number_text(words[at].number);
  return Kessel::quoted(words[at].text);
}

}  // namespace

FileCheck::FileCheck(PlacedInput& input, const OutputFolder& folder, Part& part,
                     std::string_view text, FindingList& findings)
    : input_(input),
      folder_(folder),
      part_(part),
      text_(text),
      report_(text, findings),
      expected_(input, part),
      placed_(input.records_of(part)),
      blocks_(input.blocks_of(part)) {}

std::size_t FileCheck::check() {
  const std::size_t begin =
      check_header(text_, input_.first_line(), input_.header(), part_.get_utf8_filename(), report_);
  std::vector<WrittenRecord> records;
  if (begin != std::string_view::npos) {
    records = cut_data(text_, begin, "END-" + input_.first_line(), report_);
  } else {
    report_.add(unfinished_file, "There is no data.");
  }
  count_numbers(records);
  find_missing();
  for (const WrittenRecord& record : records) check_record(record);
  return records.size();
}

void FileCheck::count_numbers(const std::vector<WrittenRecord>& records) {
  const std::size_t last = placed_.size() + blocks_.size() * BLOCK_RECORDS;
  times_.assign(last + 1, 0);
  seen_.assign(last + 1, false);
  for (const WrittenRecord& record : records) {
    if (record.number > last) {
      foreign_.insert(record.number);
    } else if (times_[record.number] < 2) {
      ++times_[record.number];
    }
  }
}

bool FileCheck::is_defined(std::uint32_t number) const {
  return number < times_.size() ? times_[number] != 0 : foreign_.contains(number);
}

void FileCheck::find_missing() {
  for (std::size_t i = 0; i < placed_.size(); ++i) {
    if (times_[i + 1] != 0 || placed_[i] == 0) continue;
    const auto number = static_cast<std::uint32_t>(i + 1);
    report_.add(missing_record,
                number_text(number) + " is missing, the input's " + number_text(placed_[i]) + ".",
                number);
  }
  for (std::size_t i = 0; i < blocks_.size(); ++i) {
    const auto first =
        times_.begin() + static_cast<std::ptrdiff_t>(placed_.size() + 1 + i * BLOCK_RECORDS);
    const auto missing = std::count(first, first + BLOCK_RECORDS, 0);
    if (missing == 0) continue;
    const std::string name =
        blocks_[i].component == nullptr ? "" : blocks_[i].component->get_utf8_filename();
    report_.add(missing_reference_block,
                "Of the reference block for " + Kessel::quoted(name) + " " +
                    std::to_string(missing) + " of " + std::to_string(BLOCK_RECORDS) +
                    " records are missing.",
                static_cast<std::uint32_t>(first - times_.begin()));
  }
}

void FileCheck::check_record(const WrittenRecord& record) {
  const std::uint32_t number = record.number;
  if (number == 0) {
    report_.add_at(record.begin, malformed_record,
                   "This is no record: " +
                       Kessel::quoted(text_.substr(record.begin, record.end - record.begin)) + ".");
    return;
  }
  if (number >= times_.size()) {
    report_.add_at(record.begin, foreign_record,
                   number_text(number) + " does not belong into the file.", number);
    return;
  }
  if (seen_[number]) {
    report_.add_at(record.begin, repeated_record, number_text(number) + " is there once more.",
                   number);
  }
  seen_[number] = true;
  take_apart(text_.substr(record.begin, record.end - record.begin), words_);
  if (number > placed_.size()) {
    compare_with_block(record);
  } else if (const std::uint32_t id = placed_[number - 1]) {
    compare_with_input(record, id);
  }
}

void FileCheck::compare_with_input(const WrittenRecord& record, std::uint32_t id) {
  take_apart(input_.texts()[id], input_words_);
  const std::vector<Token>& expected = expected_.derive(id, record.number, input_words_);
  const bool well_formed = is_well_formed(words_);
  const bool same = words_ == expected;
  if (!well_formed) {
    const bool as_in_input = same && !is_well_formed(input_words_);
    report_.add_at(record.begin, malformed_record,
                   as_in_input ? Severity::warning : Severity::error,
                   number_text(record.number) + " is not written as a record is" +
                       (as_in_input ? ", nor is the input's " + number_text(id) + "." : "."),
                   record.number);
  } else if (!same) {
    report_difference(record, id, expected);
  } else {
    check_references(record);
  }
}

/// Says where two lists of words begin to differ.
void FileCheck::report_difference(const WrittenRecord& record, std::uint32_t id,
                                  const std::vector<Token>& expected) {
  const auto [is, should] =
      std::mismatch(words_.begin(), words_.end(), expected.begin(), expected.end());
  const auto at = static_cast<std::size_t>(is - words_.begin());
  const bool references = is != words_.end() && should != expected.end() &&
                          is->kind == Token::Kind::reference &&
                          should->kind == Token::Kind::reference;
  std::string sentence = number_text(record.number);
  if (references && !is_defined(is->number)) {
    sentence += " refers to " + number_text(is->number) + ", which is not there, in place of " +
                number_text(should->number) + ".";
    report_.add_at(record.begin, unresolved_reference, sentence, record.number);
  } else if (references) {
    sentence += " refers to " + number_text(is->number) + " in place of " +
                number_text(should->number) + ".";
    report_.add_at(record.begin, wrong_reference, sentence, record.number);
  } else {
    sentence += ", the input's " + number_text(id) + ", has " + shown(words_, at) +
                " in place of " + shown(expected, at) + ".";
    report_.add_at(record.begin, changed_record, sentence, record.number);
  }
}

void FileCheck::compare_with_block(const WrittenRecord& record) {
  const std::size_t in_blocks = record.number - placed_.size() - 1;
  const PlacedBlock& block = blocks_[in_blocks / BLOCK_RECORDS];
  const auto index = static_cast<std::uint32_t>(in_blocks % BLOCK_RECORDS);
  const std::string name = block.component == nullptr ? "" : block.component->get_utf8_filename();
  const BlockMatch match = match_block(words_, index, block, record.number - index, name);
  const std::string number = number_text(record.number);
  if (match == BlockMatch::other) {
    report_.add_at(
        record.begin, wrong_reference_block,
        number + " is not what the reference block for " + Kessel::quoted(name) + " has there.",
        record.number);
  } else if (match == BlockMatch::other_name) {
    report_.add_at(record.begin, wrong_reference_block,
                   number + " names another file than " + Kessel::quoted(name) + ".",
                   record.number);
  } else {
    check_references(record);
    if (index == DOCUMENT_FILE && block.component != nullptr && !folder_.holds(*block.component)) {
      report_.add_at(record.begin, missing_target,
                     number + " names " + Kessel::quoted(name) + ", which is not there.",
                     record.number);
    }
  }
}

void FileCheck::check_references(const WrittenRecord& record) {
  for (const Token& word : words_) {
    if (word.kind != Token::Kind::reference || is_defined(word.number)) continue;
    report_.add_at(record.begin, unresolved_reference,
                   number_text(record.number) + " refers to " + number_text(word.number) +
                       ", which is not there.",
                   record.number);
    return;
  }
}

}  // namespace Kessel
