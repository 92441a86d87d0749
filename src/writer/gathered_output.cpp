// Text on its way to the parts' files.
#include "writer/gathered_output.h"

#include <algorithm>

namespace Kessel {

namespace {

constexpr std::size_t KIB = 1024;
constexpr std::size_t MIB = 1024 * KIB;

}  // namespace

GatheredOutput::GatheredOutput(const std::vector<Part*>& parts)
    : parts_(parts),
      pending_(parts.size()),
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
  if (pending.text.size() < MAX_PER_PART) {
    pending.text.clear();
  } else {
    std::string().swap(pending.text);
  }
}

void GatheredOutput::pass_on_all() {
  for (Part* part : parts_) {
    Pending& pending = pending_[part->list_position];
    if (pending.text.empty()) continue;
    pass_on(*part, pending);
    std::string().swap(pending.text);
  }
}

}  // namespace Kessel
