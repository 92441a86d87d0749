// Checks the text of an exchange file while it is read.
#include "check/text_check.h"

#include <algorithm>
#include <string>

#include "check/signature.h"
#include "encoding/unicode.h"
#include "findings/finding_kinds.h"
#include "findings/refusals.h"
#include "reader/header.h"
#include "reader/text.h"

namespace Kessel {

namespace {

using enum FindingKind;

constexpr std::size_t NONE = std::string_view::npos;

/// A header that is longer is not kept, and what the second reading sees in it is not looked at.
constexpr std::size_t LONGEST_HEADER = std::size_t{16} * 1024 * 1024;

std::string name(std::uint32_t number) {
  return "#" + std::to_string(number);
}

bool has_open_string(std::string_view text) {
  return std::count(text.begin(), text.end(), '\'') % 2 != 0;
}

bool begins_or_ends_section(std::string_view piece) {
  return piece == "DATA" || piece == "ENDSEC" ||
         (piece.starts_with("DATA") && trim(piece.substr(4)).starts_with('('));
}

/// The number of the first record that seems to begin in `piece`, 0 where there is none.
std::uint32_t find_record(std::string_view piece) {
  const char* p = piece.data();
  const char* const end = p + piece.size();
  while ((p = std::find(p, end, '#')) != end) {
    const std::uint32_t number = read_number(++p, end);
    while (p != end && is_space(*p)) ++p;
    if (number != 0 && p != end && *p == '=') return number;
  }
  return 0;
}

/// What is left of `piece` behind the comments that stand in front of it, or that began before.
std::string_view skip_comments(std::string_view piece, bool& in_comment) {
  for (;;) {
    if (!in_comment) {
      if (!piece.starts_with("/*")) return piece;
      piece.remove_prefix(2);
      in_comment = true;
    }
    const std::size_t end = piece.find("*/");
    if (end == NONE) return {};
    in_comment = false;
    piece = trim(piece.substr(end + 2));
  }
}

/// Counts records in pieces of text that nobody reads. One counts also where the reader would pass
/// it over, since a comment or other text stands in front of it.
class UnreadRecords {
 public:
  explicit UnreadRecords(bool begins_in_comment) : in_comment_(begins_in_comment) {}

  /// Takes what stands in front of the next ";".
  void take(std::string_view piece) {
    const std::string_view text = in_string_ ? piece : skip_comments(piece, in_comment_);
    if (!in_string_ && find_record(text) != 0) ++count_;
    // As the reader has it, a string goes on in the next piece of a record, but not behind a ")".
    in_string_ = (in_string_ || text.starts_with('#')) && !text.ends_with(')') &&
                 in_string_ != has_open_string(text);
  }

  std::uint64_t count() const { return count_; }

 private:
  bool in_comment_;
  bool in_string_ = false;
  std::uint64_t count_ = 0;
};

}  // namespace

TextCheck::TextCheck(std::istream& in, Store& store, FindingList& findings,
                     std::uint64_t memory_limit)
    : in_(in),
      store_(store),
      findings_(findings),
      cutter_(in),
      loader_(store, memory_limit),
      memory_limit_(memory_limit) {
  cutter_.count_lines();
  cutter_.limit_memory(memory_limit);
  cutter_.tell(this);
}

bool TextCheck::read(bool expects_no_header) {
  try {
    return read_header(expects_no_header) && read_records();
  } catch (const InputError& error) {
    // Too little memory: for a record, or for a text that was not read to its end.
    const Finding& finding = error.finding();
    findings_.add(finding.kind, finding.instance != 0 ? place_ : cutter_.here(), finding.instance,
                  finding.sentence);
    return false;
  }
}

bool TextCheck::read_header(bool expects_no_header) {
  const std::string first_line(cutter_.next_line());
  const std::string_view text = first_line;
  if (!expects_no_header) look_at_bytes_of_header(text, {0, 1});
  if (expects_no_header) {
    // It has been said already what the file is.
  } else if (text.starts_with(BYTE_ORDER_MARK)) {
    findings_.add(FindingKind::first_line, {0, 1}, 0,
                  "The file begins with a byte order mark, which gets into the last line of every "
                  "file that is written.");
  } else if (text != "ISO-10303-21;") {
    findings_.add(FindingKind::first_line, {0, 1}, 0,
                  "The first line is not \"ISO-10303-21;\"; the last line of every file that is "
                  "written is made from it.");
  }
  std::string header;
  Place look_here = {};  // The first line that nearly ends the header.
  if (text.find("ENDSEC") != NONE) look_here = {0, 1};
  Place end_of_header;
  bool complete = false;
  while (!complete) {
    if (cutter_.input_ended()) {
      if (in_.bad()) {
        findings_.add(unreadable_file("cannot be read to its end"));
      } else if (!expects_no_header) {
        Finding finding = no_header_end(0);
        const Place place = look_here.line != 0 ? look_here : cutter_.here();
        finding.offset = place.offset;
        finding.line = place.line;
        findings_.add(std::move(finding));
      }
      return false;
    }
    const std::string_view line = cutter_.next_line();
    if (!expects_no_header) look_at_bytes_of_header(line, cutter_.place_of(line));
    complete = line.ends_with("ENDSEC;");
    if (complete) end_of_header = cutter_.place_of(line);
    if (look_here.line == 0 && line.find("ENDSEC") != NONE) look_here = cutter_.place_of(line);
    if (header.size() < LONGEST_HEADER) header.append(line).append("\n");
  }
  if (header.size() > memory_limit_) throw InputError(too_long(memory_limit_, 0));
  if (header.size() < LONGEST_HEADER &&
      read_again(first_line, header) != SecondReading::passed_over) {
    findings_.add(header_is_read_as_data, end_of_header, 0, header_as_data().sentence);
  }
  if (cutter_.input_ended()) {
    findings_.add(FindingKind::nothing_after_header, cutter_.here(), 0, no_data(0).sentence);
    return false;
  }
  return true;
}

void TextCheck::look_at_bytes_of_header(std::string_view line, Place place) {
  if (is_utf8(line)) return;
  findings_.add(
      not_utf8, place, 0,
      "A line of the header holds bytes that are neither ASCII nor UTF-8; they are copied "
      "as they are.");
}

bool TextCheck::read_records() {
  for (;;) {
    is_joined_ = in_string_ = joined_in_string_ = joined_behind_string_ = false;
    const std::string_view record = cutter_.read_record();
    if (record.empty()) break;
    place_ = cutter_.place_of(record);
    if (cutter_.input_ended()) {
      Finding finding = unclosed(record, place_.offset);
      finding.line = place_.line;
      findings_.add(in_.bad() ? unreadable_file("cannot be read to its end") : std::move(finding));
      return false;
    }
    look_at(record);
  }
  if (in_.bad()) {
    findings_.add(unreadable_file("cannot be read to its end"));
    return false;
  }
  report_numbers_beyond_store();
  if (!cutter_.input_ended()) {
    const Place behind = cutter_.here();  // Behind the ";".
    look_behind_empty_statement({behind.offset - 1, behind.line});
  } else if (!found_end_) {
    findings_.add(missing_end, cutter_.here(), 0,
                  "The file does not end with \"END-ISO-10303-21;\"; it may have been cut off.");
  }
  return true;
}

void TextCheck::look_behind_empty_statement(Place place) {
  UnreadRecords unread(in_comment_);
  bool is_empty = true;
  while (!cutter_.input_ended()) {
    const std::string_view piece = cutter_.next_piece();
    is_empty = is_empty && piece.empty();
    if (!cutter_.input_ended()) unread.take(piece);
  }
  if (is_empty) return;
  const std::uint64_t bytes = cutter_.here().offset - place.offset - 1;
  Finding finding =
      make_finding(data_ended_early,
                   "An empty statement ends the data: the " + with_commas(bytes) +
                       " bytes behind it, with " + with_commas(unread.count()) +
                       (unread.count() == 1 ? " record" : " records") + ", are ignored.",
                   place.offset, place.line);
  if (unread.count() == 0) finding.severity = Severity::warning;
  findings_.add(std::move(finding));
}

void TextCheck::note_text_after_end(Place place) {
  if (!found_end_ || found_text_after_end_) return;
  found_text_after_end_ = true;
  findings_.add(text_after_end, place, 0,
                "More text stands behind \"END-ISO-10303-21;\", and its records are read as well.");
}

void TextCheck::passed_over(std::string_view piece) {
  const Place place = cutter_.place_of(piece);
  const std::string_view text = skip_comments(piece, in_comment_);
  if (text.empty()) return;
  note_text_after_end(place);
  if (text == "END-ISO-10303-21") {
    found_end_ = true;
  } else if (const std::uint32_t number = find_record(text)) {
    findings_.add(record_after_text, place, number,
                  "Record " + name(number) + " is dropped, since " +
                      (text.front() == '#' ? "a comment" : "other text") +
                      " stands in front of it.");
  } else if (!begins_or_ends_section(text)) {
    findings_.add(skipped_text, place, 0,
                  "This is neither a record nor the begin or end of a section, and is passed "
                  "over: " +
                      quoted(text));
  }
}

void TextCheck::to_be_joined(std::string_view piece) {
  if (is_joined_) (in_string_ ? joined_in_string_ : joined_behind_string_) = true;
  is_joined_ = true;
  in_string_ ^= has_open_string(piece);
}

void TextCheck::look_at(std::string_view record) {
  note_text_after_end(place_);
  const char* digits = record.data() + 1;
  const std::uint32_t number = read_number(digits, record.data() + record.size());
  look_at_text_of(record, number);
  load(record, number);
}

void TextCheck::look_at_text_of(std::string_view record, std::uint32_t number) {
  if (is_joined_ ? in_string_ : has_open_string(record)) {
    findings_.add(cut_record, place_, number,
                  "The record ends inside a string: the string has no end, or holds \");\", behind "
                  "which the record is cut off.");
  }
  if (joined_behind_string_) {
    findings_.add(joined_record, place_, number,
                  "The record does not end in \")\", and what stands behind its \";\" is read as "
                  "part of it.");
  }
  if (joined_in_string_) {
    findings_.add(semicolon_in_string, place_, number,
                  "A string holds a \";\", which gets lost with the blanks around it.");
  }
  if (!is_utf8(record)) {
    findings_.add(not_utf8, place_, number,
                  "The record holds bytes that are neither ASCII nor UTF-8; they are copied as "
                  "they are.");
  }
  look_at_comments_in(record, number);
}

void TextCheck::look_at_comments_in(std::string_view record, std::uint32_t number) {
  bool is_read = in_comment_;
  if (in_comment_) in_comment_ = record.find("*/") == NONE;
  std::size_t from = 0;
  bool in_string = false;
  for (std::size_t begin = 0; !is_read && (begin = record.find("/*", begin)) != NONE;) {
    in_string ^= has_open_string(record.substr(from, begin - from));
    from = begin;
    begin += 2;
    if (in_string) continue;
    const std::size_t end = std::min(record.find("*/", begin), record.size());
    is_read = record.substr(begin, end - begin).find_first_of("#'") != NONE;
    from = begin = end;
  }
  if (!is_read) return;
  findings_.add(comment_is_read, place_, number,
                "A comment holds what looks like data, and is read as data.");
}

void TextCheck::load(std::string_view record, std::uint32_t number) {
  if (number != 0 && number < store_.entities.size() && store_.entities[number] != nullptr) {
    findings_.add(repeated_number, place_, number,
                  "The number " + name(number) + " was given to the record in line " +
                      std::to_string(places_[number].line) +
                      " already, which loses its place to this one.");
    for (const std::uint32_t reference : store_.at(number)->references()) {
      if (reference >= store_.entities.size()) {
        not_kept_.push_back({places_[number], number, reference});
      }
    }
  }
  switch (loader_.add(record).loading) {
    case Loading::no_number:
      say_why_dropped(record);
      return;
    case Loading::no_type:
      findings_.add(record_without_type, place_, number,
                    "The record is dropped, since no \"=\", type and \"(\" stand behind its "
                    "number.");
      if (number >= store_.entities.size()) not_kept_.push_back({place_, number, number});
      return;
    case Loading::references_cut:
      findings_.add(malformed_reference, place_, number,
                    "A \"#\" in the record has no number from 1 to 4,294,967,295 behind it; the "
                    "references behind it are not seen.");
      look_at_last_number_of(record, number);
      break;
    case Loading::whole:
      break;
  }
  places_.set(number, place_, store_.entities.size());
}

/// The writer looks at the last number of some records first.
void TextCheck::look_at_last_number_of(std::string_view record, std::uint32_t number) {
  const char* digits = record.data() + record.rfind('#') + 1;
  const std::uint32_t last = read_number(digits, record.data() + record.size());
  if (last >= store_.entities.size()) not_kept_.push_back({place_, number, last});
}

void TextCheck::report_numbers_beyond_store() {
  for (const Mention& mention : not_kept_) {
    if (mention.number < store_.entities.size()) continue;
    findings_.add(instance_beyond_store, mention.place, mention.record,
                  "A split may fail over " + name(mention.number) +
                      " in the text of the record, which is far beyond the highest number that is "
                      "there.");
  }
}

void TextCheck::say_why_dropped(std::string_view record) {
  const std::string_view digits = record.substr(1, record.find_first_not_of("0123456789", 1) - 1);
  if (digits.empty()) {
    findings_.add(record_without_number, place_, 0,
                  "The record is dropped, since no number stands behind its \"#\".");
  } else if (digits.find_first_not_of('0') == NONE) {
    findings_.add(record_number_zero, place_, 0, "The record is dropped, since its number is 0.");
  } else {
    findings_.add(record_number_too_large, place_, 0,
                  "The record is dropped, since its number is above 4,294,967,295.");
  }
}

}  // namespace Kessel
