// Which records of a file become one.
#pragma once

#include <cstdint>
#include <vector>

#include "exchange/reader.h"
#include "instances/column.h"
#include "instances/instances.h"

namespace Kessel::Shrink {

/// Hashes of what the records of a file say by themselves, for those of types that are values.
/// Eight bytes a record.
class ValueTexts {
 public:
  /// Takes in a record that `instances` has as its last one, as InstanceLoader::added.
  void add(const Instances& instances, Index index, const Exchange::Record& record);

  std::uint64_t operator[](Index record) const { return texts_[record]; }

 private:
  Column<std::uint64_t> texts_;
  std::vector<signed char> is_value_;  // by type: -1 not known yet
};

/// By record: the first record of the file that says the same and that it may become one with; of
/// all others the record itself. Linear in records and references; some 40 bytes a record beside
/// `instances`.
///
/// Two records become one where their type is a value's, their words say the same, and their
/// references lead to what has become one (Sameness::mergeable has what never does). Of those that
/// some record refers to side by side, and that must not be one there, only the first one in it
/// becomes one with others anywhere. So applying the result and asking again finds nothing.
Column<Index> equal_records(const Instances& instances, const ValueTexts& texts);

}  // namespace Kessel::Shrink
