// Fills Instances without a reading, from records of others.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "instances/instances.h"

namespace Kessel {

/// Enters records of files that were read as those of a file that nobody writes. Such instances are
/// what a loader would make of that file, but that nothing can be read again: they have no places.
/// The record at index i has the number i + 1, or none, as anchors.
class InstanceBuilder {
 public:
  /// Fills `instances`, which are new and must outlive it. Takes at most `memory_limit` bytes.
  InstanceBuilder(Instances& instances, std::uint64_t memory_limit)
      : instances_(instances), memory_limit_(memory_limit) {}

  void take_header(const std::vector<std::string>& entities) { instances_.header_ = entities; }
  void begin_section(Exchange::Section section, std::string_view parameters);

  /// From here on records come from a file whose types are `types`.
  void begin_file(const TypeTable& types);
  /// Begins a record of the type that is `type` there. Throws InputError where there is no room for
  /// it.
  void begin_record(TypeId type, bool has_number);
  /// The record refers to one that is or will be entered, or to NO_RECORD.
  void refer(Reference to) {
    instances_.references_.push_back(to);
    if (to.record() == NO_RECORD) ++instances_.missing_references_;
  }
  /// Its text is kept: its body, in which instances have the numbers of these.
  void keep(std::string body);

  /// Ends the entering, before which no record is found by its number.
  void finish();

 private:
  void require_memory() const;

  Instances& instances_;
  std::uint64_t memory_limit_;
  std::vector<TypeId> types_;  // by type of the file that records come from
};

}  // namespace Kessel
