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
  held_ -= pending.text.size();
  if (pending.mode != Mode::discard) part.output(pending.text);
  pending.text.clear();
}

void GatheredOutput::pass_on_all() {
  for (Part* part : parts_) {
    Pending& pending = pending_[part->list_position];
    if (!pending.text.empty()) pass_on(*part, pending);
    give_back_room(pending.text);
  }
}

void GatheredOutput::look_for_cold_parts() {
  for (Part* part : parts_) {
    Pending& pending = pending_[part->list_position];
    if (pending.text.size() < MIN_COLD_TEXT || pending.last_written + COLD_AFTER > written_) {
      continue;
    }
    pass_on(*part, pending);
    give_back_room(pending.text);
  }
  if (held_ + COLD_AFTER > max_held_) pass_on_all();
  next_look_ = written_ + COLD_AFTER;
}

/// Gives an empty text the room of one that was passed on: memory that is mapped already.
void GatheredOutput::reuse_room(std::string& text) {
  if (spare_.empty()) {
    text.reserve(MIN_ROOM);
  } else {
    text = std::move(spare_.back());
    spare_.pop_back();
  }
}

void GatheredOutput::give_back_room(std::string& text) {
  if (text.capacity() >= MIN_ROOM && spare_.size() < MAX_SPARES) spare_.push_back(std::move(text));
  std::string().swap(text);  // Frees its room, which an assignment would keep.
}

}  // namespace Kessel
