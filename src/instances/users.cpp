#include "instances/users.h"

namespace Kessel {

Users::Users(const Instances& instances) : first_(std::size_t{instances.size()} + 2) {
  // Counted two places ahead, so that filling moves each count to where it is looked up.
  for (Index record = 0; record < instances.size(); ++record) {
    for (const Reference reference : instances.references(record)) {
      if (reference.record() != NO_RECORD) ++first_[std::size_t{reference.record()} + 2];
    }
  }
  for (std::size_t i = 2; i < first_.size(); ++i) first_[i] += first_[i - 1];
  users_ = Column<Index>(static_cast<std::size_t>(first_.back()));
  for (Index record = 0; record < instances.size(); ++record) {
    for (const Reference reference : instances.references(record)) {
      if (reference.record() == NO_RECORD) continue;
      users_[static_cast<std::size_t>(first_[std::size_t{reference.record()} + 1]++)] = record;
    }
  }
}

}  // namespace Kessel
