// The order of the steps, and what they share.
#include "placement/placement.h"

#include <algorithm>
#include <unordered_set>
#include <utility>

#include "placement/placing.h"

namespace Kessel {

Placing::Placing(const Instances& all, const Products& tree, Placement& result)
    : instances(all),
      products(tree),
      placement(result),
      stands(result.stands),
      classes(all, tree) {}

void Placing::bring(Index record, FileId file) {
  bool has_foreign_shape = false;
  const auto enter = [&](Index other) {
    if (is_placeholder(other, file)) return make_placeholder(other, file);
    const bool is_foreign = classes.has(other, OWNED) && !classes.has(other, SOFT);
    if (stands.add(other, file, is_foreign ? Role::guest : Role::own)) {
      open_.push_back(other);
      has_foreign_shape = has_foreign_shape || (is_foreign && is_shape(other));
    } else if (classes.has(other, SOFT)) {
      stands.set_role(other, file, Role::own);  // Not of placeholders alone.
    }
  };
  enter(record);
  while (!open_.empty()) {
    const Index next = open_.back();
    open_.pop_back();
    for (const Reference reference : instances.references(next)) {
      if (reference.record() != NO_RECORD) enter(reference.record());
    }
  }
  if (has_foreign_shape) {
    placement.warnings.push_back({PlacementWarning::Kind::foreign_shape, record, file});
  }
}

/// Its context stands in for the input's, too, as long as nothing else in the file wants it.
void Placing::make_placeholder(Index representation, FileId file) {
  if (!stands.add(representation, file, Role::stand_in)) return;
  placeholders.push_back(representation);
  for (const Reference reference : instances.references(representation)) {
    const Index other = reference.record();
    if (other == NO_RECORD || reference.is_listed()) continue;
    if (stands.add(other, file, classes.has(other, SOFT) ? Role::stand_in : Role::guest)) {
      open_.push_back(other);
    }
  }
}

void Placing::give_placements(FileId file, std::span<const Index> made) {
  for (const Index representation : made) {
    Index first = NO_RECORD;
    bool has_one = false;
    for (const Reference item : instances.references(representation)) {
      const Index record = item.record();
      if (record == NO_RECORD || !item.is_listed() || !is_placement(instances, record)) continue;
      if (first == NO_RECORD) first = record;
      has_one = stands.has(record, file);
      if (has_one) break;
    }
    if (!has_one && first != NO_RECORD) bring(first, file);
  }
}

bool Placing::closes_in(Index record, FileId file) const {
  std::vector<Index> open{record};
  std::unordered_set<Index> seen;
  while (!open.empty()) {
    const Index next = open.back();
    open.pop_back();
    if (stands.has(next, file) || !seen.insert(next).second) continue;
    if (classes.has(next, DEFINING | SHOWING)) return false;
    for (const Reference reference : instances.references(next)) {
      if (reference.record() != NO_RECORD) open.push_back(reference.record());
    }
  }
  return true;
}

void Placing::find_others() {
  // A product whose bodies stand apart does not own what it leaves out.
  const bool has_all = has_bodies_apart();
  for (Index record = 0; record < instances.size(); ++record) {
    if (has_all || !classes.is_firmly_owned(record)) others.push_back(record);
  }
}

Placement place_records(const Instances& instances, const Products& products, FilePlan plan) {
  Placement placement{std::move(plan), FileSets(instances.size()), {}};
  Placing placing(instances, products, placement);
  fill_files(placing);
  std::vector<OverriddenStyle> overridden = place_occurrence_styles(placing);
  hang_on(placing);
  bring_overridden(placing, std::move(overridden));
  place_free_records(placing);
  place_left_overs(placing);
  if (!placing.placement.keeps_others_out) warn_of_unfollowed(placing);
  return placement;
}

}  // namespace Kessel
