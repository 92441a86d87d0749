#include "shrink/unreachable.h"

#include "sameness/values.h"

namespace Kessel::Shrink {

namespace {

/// By type: whether it says nothing by itself.
std::vector<bool> silent_types(const TypeTable& types) {
  std::vector<bool> is_silent(types.size());
  for (TypeId type = TypeTable::FIRST_OF_RECORDS; type < types.size(); ++type) {
    is_silent[type] = Sameness::worth_of(types, type) != Sameness::Worth::identity ||
                      Sameness::is_shape_part(types, type) ||
                      Sameness::is_representation_context(types, type);
  }
  return is_silent;
}

}  // namespace

std::vector<Index> unreachable_records(const Instances& instances) {
  const std::vector<bool> is_silent = silent_types(instances.types());
  Column<bool> is_reached(instances.size());
  std::vector<Index> open;
  const auto reach = [&](Index record) {
    if (is_reached[record]) return;
    is_reached[record] = true;
    open.push_back(record);
  };
  for (Index root = 0; root < instances.size(); ++root) {
    if (is_silent[instances.type(root)]) continue;
    reach(root);
    while (!open.empty()) {
      const Index record = open.back();
      open.pop_back();
      for (const Reference reference : instances.references(record)) {
        if (reference.record() != NO_RECORD) reach(reference.record());
      }
    }
  }
  std::vector<Index> unreachable;
  for (Index record = 0; record < instances.size(); ++record) {
    if (!is_reached[record]) unreachable.push_back(record);
  }
  return unreachable;
}

}  // namespace Kessel::Shrink
