// What a reading leaves for the next one of the same file: where statements end, and the names in
// them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

#include "exchange/statement_cutter.h"
#include "model/tape.h"

namespace Kessel::Exchange {

/// A piece of a Tape for each statement of the data sections, about three bytes: how long it is,
/// lead and ";" included, or UNKNOWN, with which the piece ends; how long the lead is, and how many
/// names stand behind the first; for each of those how far it is from the name before. Only texts
/// that are short and plain are known.
struct Trace {
  static constexpr std::uint8_t UNKNOWN = 0;
  static constexpr std::size_t MOST_BYTES = 255;
  static constexpr std::size_t MOST_LEAD = 7;
  static constexpr std::size_t MOST_NAMES = 31;

  static std::uint8_t shape(std::size_t lead, std::size_t names) {
    return static_cast<std::uint8_t>(lead | names << 3);
  }
  static std::size_t lead(std::uint8_t shape) { return shape & MOST_LEAD; }
  static std::size_t names(std::uint8_t shape) { return shape >> 3; }
};
static_assert(2 + Trace::MOST_NAMES <= Tape::MOST_AT_ONCE);

inline void leave_unknown(Tape& tape) {
  std::uint8_t* const out = tape.room();
  *out = Trace::UNKNOWN;
  tape.wrote(out + 1);
}

/// Leaves the trace of `statement`, which has `size` bytes with lead and ";" and begins with the
/// first of `names`.
inline void leave_trace(const Statement& statement, std::span<const Mention> names,
                        std::size_t size, Tape& tape) {
  const std::size_t lead = statement.lead.size();
  if (size > Trace::MOST_BYTES || lead > Trace::MOST_LEAD || names.size() > Trace::MOST_NAMES + 1 ||
      !statement.is_plain) {
    return leave_unknown(tape);
  }
  std::uint8_t* out = tape.room();
  *out++ = static_cast<std::uint8_t>(size);
  *out++ = Trace::shape(lead, names.size() - 1);
  const char* behind = names.front().end;
  for (const Mention& name : names.subspan(1)) {
    *out++ = static_cast<std::uint8_t>(name.begin - behind);
    behind = name.end;
  }
  tape.wrote(out);
}

}  // namespace Kessel::Exchange
