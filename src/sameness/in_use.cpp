#include "sameness/in_use.h"

#include <algorithm>
#include <string_view>
#include <vector>

namespace Kessel::Sameness {

namespace {

/// What holds of all records of one type.
struct TypeRules {
  Worth worth = Worth::identity;
  bool names_items = false;
  bool names_values = false;
  bool wants_what_geometry_says = false;
};

std::vector<TypeRules> rules_of(const TypeTable& types) {
  std::vector<TypeRules> rules(types.size());
  for (TypeId type = 0; type < types.size(); ++type) {
    rules[type].worth = worth_of(types, type);
    if (type < TypeTable::FIRST_OF_RECORDS) continue;
    const auto& keywords = types.keywords(type);
    rules[type].names_items = std::any_of(keywords.begin(), keywords.end(), names_items);
    rules[type].names_values = std::any_of(keywords.begin(), keywords.end(), names_values);
    rules[type].wants_what_geometry_says =
        rules[type].worth != Worth::identity || is_shape_part(types, type);
  }
  rules[TypeTable::ANCHOR_ENTRY].names_values = true;
  return rules;
}

Column<Worth> worth_by(const std::vector<TypeRules>& rules, const Instances& instances) {
  Column<Worth> worth(instances.size());
  for (Index record = 0; record < instances.size(); ++record) {
    worth[record] = rules[instances.type(record)].worth;
  }
  for (Index record = 0; record < instances.size(); ++record) {
    const TypeRules& of_user = rules[instances.type(record)];
    for (const Reference reference : instances.references(record)) {
      const Index to = reference.record();
      if (to == NO_RECORD) continue;
      if (reference.is_listed() || of_user.names_values ||
          (of_user.names_items && worth[to] == Worth::geometry)) {
        worth[to] = Worth::identity;
      }
    }
  }
  return worth;
}

}  // namespace

Column<Worth> worth_in_use(const Instances& instances) {
  return worth_by(rules_of(instances.types()), instances);
}

Column<bool> mergeable(const Instances& instances, const Order& order) {
  const std::vector<TypeRules> rules = rules_of(instances.types());
  const Column<Worth> worth = worth_by(rules, instances);
  Column<bool> is_mergeable(instances.size());
  for (Index record = 0; record < instances.size(); ++record) {
    is_mergeable[record] =
        worth[record] != Worth::identity && instances.type(record) >= TypeTable::FIRST_OF_RECORDS;
  }
  for (Index record = 0; record < instances.size(); ++record) {
    const bool wants_values = rules[instances.type(record)].wants_what_geometry_says;
    for (const Reference reference : instances.references(record)) {
      const Index to = reference.record();
      if (to == NO_RECORD) {
        is_mergeable[record] = false;  // Nobody knows what it says.
      } else if (!wants_values && worth[to] == Worth::geometry) {
        is_mergeable[to] = false;
      }
    }
  }
  for (const auto& [begin, end] : order.circles) {
    for (Index i = begin; i < end; ++i) is_mergeable[order.records[i]] = false;
  }
  return is_mergeable;
}

}  // namespace Kessel::Sameness
