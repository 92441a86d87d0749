// Text on its way to the parts' files.
#include "writer/gathered_output.h"

#include <algorithm>
#include <cerrno>
#include <utility>

#include "findings/write_failure.h"
#include "writer/part_stream.h"

namespace Kessel {

namespace {

constexpr std::size_t KIB = 1024;
constexpr std::size_t MIB = 1024 * KIB;

/// A part is cold when this much was written to others since its last piece.
constexpr std::size_t COLD_AFTER = 4 * MIB;
/// A text that is smaller waits for more, or for the end, also when its part is cold.
constexpr std::size_t MIN_COLD_TEXT = 4 * KIB;
/// The least room that a text gets.
constexpr std::size_t MIN_ROOM = 256;
/// Rooms that are kept for later parts.
constexpr std::size_t MAX_SPARES = 128;

}  // namespace

GatheredOutput::GatheredOutput(const std::vector<Part*>& parts, bool must_succeed)
    : parts_(parts),
      must_succeed_(must_succeed),
      pending_(parts.size()),
      next_look_(COLD_AFTER),
      max_held_(std::clamp(parts.size() * 16 * KIB, 4 * MIB, 64 * MIB)) {}

GatheredOutput::~GatheredOutput() {
  if (must_succeed_ && first_write_failure())
    return;  // Why the run ends; there is no use in going on.
  try {
    pass_on_all();
  } catch (...) {  // NOLINT(bugprone-empty-catch): an exception is ending the run already.
  }
}

void GatheredOutput::discard(const Part& part) {
  Pending& pending = pending_[part.list_position];
  pending.discard = true;
  pending.enough = 0;
}

std::ostream& GatheredOutput::begin(Part& part, const std::string& text) {
  Pending& pending = pending_[part.list_position];
  if (!pending.discard) {
    if (must_succeed_ && !open_stream(part)) throw_write_failure();
    part.output(text);
    make_sure_of(part);
    if (!part.stream.is_open()) pending.enough = 0;
  }
  return part.stream;
}

void GatheredOutput::finish() {
  pass_on_all();
  if (!must_succeed_) return;
  close_opened_streams();
  throw_write_failure();
}

void GatheredOutput::make_sure_of(Part& part) const {
  if (!must_succeed_ || pending_[part.list_position].discard) return;
  if (part.stream.fail()) note_write_failure(part.path);
  throw_write_failure();
}

void GatheredOutput::pass_on(Part& part, Pending& pending) {
  passed_on_ += pending.text.size;
  if (!pending.discard) {
    const auto size = static_cast<std::streamsize>(pending.text.size);
    if (must_succeed_ && !open_stream(part)) throw_write_failure();
    std::ostream& file = part.output(std::string());
    errno = 0;
    file.write(pending.text.bytes.get(), size);
    make_sure_of(part);
  }
  pending.text.size = 0;
}

void GatheredOutput::pass_on_all() {
  for (Part* part : parts_) {
    Pending& pending = pending_[part->list_position];
    if (pending.text.size != 0) pass_on(*part, pending);
    give_back_room(pending.text);
  }
}

void GatheredOutput::look_for_cold_parts() {
  for (Part* part : parts_) {
    Pending& pending = pending_[part->list_position];
    if (pending.text.size < MIN_COLD_TEXT || pending.last_written + COLD_AFTER > written_) continue;
    pass_on(*part, pending);
    give_back_room(pending.text);
  }
  if (written_ - passed_on_ + COLD_AFTER > max_held_) pass_on_all();
  next_look_ = written_ + COLD_AFTER;
}

/// Makes room for `room` bytes more: the room of a text that was passed on, which is memory that
/// the system has mapped already, or else four times what there was: a text that grows to its end
/// by doubling is copied three times as much.
void GatheredOutput::make_room(Text& text, std::size_t room) {
  const std::size_t needed = text.size + room;
  Text larger;
  if (!spare_.empty() && spare_.back().room >= needed) {
    larger = std::move(spare_.back());
    spare_.pop_back();
  } else {
    larger.room = std::max({MIN_ROOM, 4 * text.room, needed});
    larger.bytes = std::make_unique_for_overwrite<char[]>(larger.room);
  }
  std::copy_n(text.bytes.get(), text.size, larger.bytes.get());
  larger.size = text.size;
  text = std::move(larger);
}

void GatheredOutput::give_back_room(Text& text) {
  if (text.room != 0 && spare_.size() < MAX_SPARES) spare_.push_back(std::move(text));
  text = Text();
}

}  // namespace Kessel
