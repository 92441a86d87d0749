// Text on its way to the parts' files.
#include "writer/gathered_output.h"

#include <algorithm>
#include <utility>

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

GatheredOutput::GatheredOutput(const std::vector<Part*>& parts)
    : parts_(parts),
      pending_(parts.size()),
      next_look_(COLD_AFTER),
      max_held_(std::clamp(parts.size() * 16 * KIB, 4 * MIB, 64 * MIB)) {}

GatheredOutput::~GatheredOutput() {
  try {
    pass_on_all();
  } catch (...) {  // NOLINT(bugprone-empty-catch): an exception is ending the run already.
  }
}

void GatheredOutput::discard(const Part& part) {
  pending_[part.list_position].mode = Mode::discard;
}

std::ostream& GatheredOutput::begin(Part& part, const std::string& text) {
  Pending& pending = pending_[part.list_position];
  if (pending.mode != Mode::discard) {
    part.output(text);
    if (!part.stream.is_open()) pending.mode = Mode::pass_on_at_once;
  }
  return part.stream;
}

void GatheredOutput::pass_on(Part& part, Pending& pending) {
  held_ -= pending.text.size;
  if (pending.mode != Mode::discard) {
    const auto size = static_cast<std::streamsize>(pending.text.size);
    part.output(std::string()).write(pending.text.bytes.get(), size);
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
  if (held_ + COLD_AFTER > max_held_) pass_on_all();
  next_look_ = written_ + COLD_AFTER;
}

/// Makes room for `room` bytes more. An empty text takes the room of one that was passed on, which
/// is memory that the system has mapped already.
void GatheredOutput::make_room(Text& text, std::size_t room) {
  if (text.room == 0 && !spare_.empty()) {
    text = std::move(spare_.back());
    spare_.pop_back();
    if (room <= text.room) return;
  }
  const std::size_t larger = std::max({MIN_ROOM, 2 * text.room, text.size + room});
  auto bytes = std::make_unique_for_overwrite<char[]>(larger);
  std::copy_n(text.bytes.get(), text.size, bytes.get());
  text.bytes = std::move(bytes);
  text.room = larger;
}

void GatheredOutput::give_back_room(Text& text) {
  if (text.room != 0 && spare_.size() < MAX_SPARES) spare_.push_back(std::move(text));
  text = Text();
}

}  // namespace Kessel
