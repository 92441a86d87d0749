// The one reader of exchange files (ISO 10303-21, every edition).
#pragma once

#include <cstddef>
#include <cstdint>
#include <istream>
#include <optional>
#include <span>
#include <string_view>

#include "exchange/keyword_ids.h"
#include "exchange/statement_cutter.h"
#include "kessel/finding.h"

namespace Kessel::Exchange {

/// A section of an exchange file. The signature stands behind the end and is not read.
enum class Section : std::uint8_t { header, anchor, reference, data };

/// A record "#12=PRODUCT(...)" of a data section. Views are valid during the call.
struct Record : Statement {
  std::uint64_t number = 0;             ///< of the instance; 0 for "#0" and what is above 2^64-1
  const char* behind_number = nullptr;  ///< where the number's digits end in `text`
  std::string_view body;                ///< the end of `text` that begins behind "=" and blanks
  bool has_equals = true;               ///< "=" stands behind the number
  /// That `body` begins with, "!" included; empty for a complex one. With full scrutiny only.
  std::string_view keyword;
  /// The number of `keyword` among those that the reading has met, from 0 on; NO_KEYWORD for none,
  /// and for those that go without (see exchange/keyword_ids.h).
  std::uint32_t keyword_id = NO_KEYWORD;
  std::span<const Mention> mentions;  ///< the instance names in `body`, in order

  /// At most one blank stands on either side of "=", and between the keyword and "("; perhaps also
  /// where this is false. With full scrutiny only.
  bool is_usual = false;

  static constexpr std::uint32_t NO_KEYWORD = KeywordIds::NONE;
};

/// Learns what an exchange file holds, in the order in which it stands there.
class Listener {
 public:
  virtual ~Listener() = default;
  /// "FILE_NAME(...)" and the like, without the ";".
  virtual void header_entity(const Statement&) {}
  /// A section begins. `parameters` is what stands behind DATA, with its parentheses; empty for
  /// none.
  virtual void begin_section(Section, std::string_view /*parameters*/) {}
  virtual void record(const Record&) {}
  /// A line of an anchor or reference section, and the instance names in it.
  virtual void entry(Section, const Statement&, std::span<const Mention>) {}
  /// The section ends, at the offset `end`: behind the ";" of ENDSEC.
  virtual void end_section(Section, std::uint64_t /*end*/) {}
  /// Something unusual, which loses nothing unless the sentence says so. Its line is not yet known.
  virtual void warning(const Finding&) {}
};

struct Limits {
  /// Bytes that one statement may have.
  std::uint64_t statement = StatementCutter::NO_LIMIT;
  /// Without scrutiny nothing is looked for that a first reading of the same file has told, neither
  /// warnings nor unclosed lists.
  Scrutiny scrutiny = Scrutiny::full;
  /// Bytes that are read at once.
  std::size_t block_size = StatementCutter::BLOCK_SIZE;
};

/// How a reading ended.
struct Ending {
  /// Why the file was not read to its end: a fault after which nobody can say for sure where things
  /// begin and end. Its line is not yet known.
  std::optional<Finding> error;
  std::uint64_t bytes = 0;  ///< how far it came
};

/// Reads an exchange file from the stream's beginning and tells `listener` what it holds.
///
/// Accepts every edition's sections, byte order marks, comments and blanks wherever words end. What
/// a listener throws passes through. Does not throw itself.
Ending read_exchange_file(std::istream& in, const Limits& limits, Listener& listener);

/// Reads `count` records or entries of `section`, and others behind it, from the one that begins at
/// `offset` on, as a Listener was told of a file that was read before.
void read_records_at(std::istream& in, std::uint64_t offset, Section section, std::uint64_t count,
                     Listener& listener);

/// Whether a statement begins with an instance name, which is the first of its `mentions` then.
inline bool begins_with_name(const Statement& statement, std::span<const Mention> mentions) {
  return !mentions.empty() && mentions.front().begin == statement.text.data() + 1;
}

/// Completes `record`, whose statement begins with an instance name, the first of its `mentions`;
/// its keyword stays as it is.
void complete_record(Record& record, std::span<const Mention> mentions);

/// The record that a statement which begins with an instance name is, without its keyword.
Record record_of(const Statement& statement, std::span<const Mention> mentions);

}  // namespace Kessel::Exchange
