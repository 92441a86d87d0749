#include "output/run_copy.h"

#include "exchange/digits.h"
#include "output/renumbered_text.h"

namespace Kessel {

namespace {

/// What a record may need beside its text and the numbers in it: its own, what stands around it,
/// and a block that is copied whole.
constexpr std::size_t AROUND_TEXT = 32 + PIECE_BLOCK;

}  // namespace

inline void RunCopy::go_to(Index record) {
  record_ = record;
  if (is_done()) return;
  input_.next();
  // They stand one after the other.
  references_ = {references_.data() + references_.size(), instances_.end_of_references(record)};
  const auto size = static_cast<std::size_t>(input_.end() - input_.behind_number());
  room_ = size + references_.size() * MOST_DIGITS + AROUND_TEXT;
}

void RunCopy::begin(const Run& run) {
  run_ = run;
  number_ = CountingNumber(run.number);
  references_ = instances_.references(run.first).first(0);
  go_to(run.first);
}

/// A name of a record of the run is the number of its first and a distance; only others are looked
/// up.
inline char* RunCopy::copy_record(const Run& run, CountingNumber& number, char* out) {
  *out++ = '#';
  out = number.write(out);
  const char* from = input_.behind_number();
  for (const Reference reference : references_) {
    const NamePlace place = input_.take_place();
    out = copy_piece(from, place.gap, out);
    const char* const digits = from + place.gap;
    input_.expect_name(digits);
    from = digits + place.digits;
    const Index distance = reference.record() - run.first;
    if (distance < run.end - run.first) {
      out = Exchange::write_number(out, run.number + distance);
    } else {
      out = renumbered_name({digits, from}, reference, numbers_, run.file, out);
    }
  }
  out = copy_piece(from, static_cast<std::size_t>(input_.end() - from), out);
  *out++ = ';';
  *out++ = '\n';
  return out;
}

char* RunCopy::copy(char* out, const char* end) {
  const Run run = run_;  // Copies, which no text that is written can change.
  CountingNumber number = number_;
  do {
    out = copy_record(run, number, out);
    go_to(record_ + 1);
  } while (!is_done() && room_ <= static_cast<std::size_t>(end - out));
  number_ = number;
  return out;
}

void RunCopy::pass_over(Index first, Index end) {
  for (Index record = first; record < end; ++record) {
    input_.next();
    input_.pass_over(instances_.references(record).size());
  }
}

}  // namespace Kessel
