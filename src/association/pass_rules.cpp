// The rules as rows of the pass table name them.
#include "association/passes.h"

namespace Kessel::Rules {

namespace {

/// For rules that take one type at a time.
template <class Run>
void for_each_type(const SelectedTypes& selected, Run run) {
  for (const std::string_view type : selected.types) run(type);
}

}  // namespace

void from_child(const Store& store, const Pass& pass, const SelectedTypes& selected) {
  propagate_from_child(store, selected.types, pass.n, pass.filter);
}

void from_children(const Store& store, const Pass& pass, const SelectedTypes& selected) {
  propagate_from_children(store, selected.types, pass.filter);
}

void to_descendants(const Store& store, const Pass& pass, const SelectedTypes& selected) {
  for_each_type(selected,
                [&](std::string_view type) { propagate_to_descendants(store, type, pass.filter); });
}

void both_ways(const Store& store, const Pass& pass, const SelectedTypes& selected) {
  for_each_type(selected,
                [&](std::string_view type) { propagate_both_ways(store, type, pass.filter); });
}

void gather_and_spread(const Store& store, const Pass& pass, const SelectedTypes& selected) {
  Kessel::gather_and_spread(store, selected.types, pass.filter);
}

void from_child_and_down(const Store& store, const Pass& pass, const SelectedTypes& selected) {
  propagate_from_child_and_down(store, selected.types, pass.n, pass.filter);
}

void to_children_inside(const Store& store, const Pass& pass, const SelectedTypes& selected) {
  propagate_to_typed_children(store, selected.types, selected.other, ChildTypes::inside,
                              pass.filter);
}

void to_children_outside(const Store& store, const Pass& pass, const SelectedTypes& selected) {
  propagate_to_typed_children(store, selected.types, selected.other, ChildTypes::outside,
                              pass.filter);
}

void through_relationships(const Store& store, const Pass& pass, const SelectedTypes& selected) {
  for_each_type(selected, [&](std::string_view type) {
    propagate_through_relationships(store, type, *selected.other.begin(), pass.n);
  });
}

void through_usages(const Store& store, const Pass& pass, const SelectedTypes& selected) {
  for_each_type(selected, [&](std::string_view type) {
    propagate_through_usages(store, type, *selected.other.begin(), pass.n);
  });
}

}  // namespace Kessel::Rules
