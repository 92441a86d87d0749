// Enters styles that single occurrences have.
#include <algorithm>
#include <span>
#include <unordered_map>
#include <utility>
#include <vector>

#include "placement/bodies.h"
#include "placement/placing.h"
#include "placement/types_in.h"

namespace Kessel {

namespace {

// STYLED_ITEM and what is derived from that (ISO 10303-46).
constexpr Keywords::Row STYLED_ITEMS[] = {{Keywords::Match::ending, "STYLED_ITEM"}};
constexpr Keywords::Row NAMING_CONTEXT[] = {
    {Keywords::Match::ending, "CONTEXT_DEPENDENT_OVER_RIDING_STYLED_ITEM"}};

bool is_item(const Placing& placing, Index record) {
  return placing.classes.has(record, OWNED) &&
         !placing.classes.has(record, SOFT | DEFINING | SHOWING);
}

/// Puts the styles of occurrences into the files of their assemblies.
class OccurrenceStyles {
 public:
  explicit OccurrenceStyles(Placing& placing)
      : placing_(placing),
        is_styled_(types_in(STYLED_ITEMS, placing.instances.types())),
        names_context_(types_in(NAMING_CONTEXT, placing.instances.types())) {
    find_names();
    const auto& files = placing.placement.files;
    has_bodies_apart_ = std::any_of(files.begin(), files.end(),
                                    [](const PlacedFile& file) { return file.body != NO_RECORD; });
  }

  std::vector<OverriddenStyle> place_all() {
    if (usages_.empty() && places_.empty()) return {};
    const std::span<const TypeId> types = placing_.instances.record_types();
    for (Index record = 0; record < types.size(); ++record) {
      if (is_styled_[types[record]] == 0) continue;
      const Usage* const usage = names_context(record) ? placed_by(record) : usage_of(record);
      if (usage != nullptr) place(record, *usage);
    }
    return std::move(overridden_);
  }

 private:
  bool is_styled_item(Index record) const { return is_styled_[placing_.instances.type(record)] != 0; }
  bool names_context(Index record) const {
    return names_context_[placing_.instances.type(record)] != 0;
  }

  void find_names() {
    uses_.resize(placing_.products.products.size());
    for (const Usage& usage : placing_.products.usages) {
      if (usage.closes_circle) continue;
      ++uses_[usage.component];
      find_names(usage);
    }
    for (const Usage& usage : placing_.products.deeper) {
      uses_[usage.component] += 2;  // This one, and that of the level above the component.
      find_names(usage);
    }
  }

  void find_names(const Usage& usage) {
    for (const ShapeLink& link : usage.links) {
      // What names an occurrence is the only representation that is soft.
      if (placing_.classes.has(link.representation, SOFT)) {
        usages_.emplace(link.representation, &usage);
      }
    }
    for (const Index relationship : usage.relationships) places_.emplace(relationship, &usage);
  }

  /// The usage that a style by context is for: the first that its contexts name.
  const Usage* usage_of(Index styled) const {
    for (const Reference style : placing_.instances.references(styled)) {
      if (style.record() == NO_RECORD) continue;
      if (!placing_.instances.is(style.record(), "PRESENTATION_STYLE_BY_CONTEXT")) continue;
      for (const Reference context : placing_.instances.references(style.record())) {
        const auto found = usages_.find(context.record());
        if (found != usages_.end()) return found->second;
      }
    }
    return nullptr;
  }

  /// The same for a style that names what places the occurrence: of several usages, that whose
  /// assembly is no component of the others.
  const Usage* placed_by(Index styled) const {
    const Usage* highest = nullptr;
    for (const Reference context : placing_.instances.references(styled)) {
      const auto found = places_.find(context.record());
      if (found == places_.end()) continue;
      if (highest == nullptr || found->second->component == highest->assembly) {
        highest = found->second;
      }
    }
    return highest;
  }

  void place(Index styled, const Usage& usage) {
    const FileId assembly = placing_.placement.file_of[usage.assembly];
    if (has_targets(styled, assembly)) return;
    // The style of an only occurrence goes with the part, or the body: that shows it alone, too.
    const FileId component = placing_.placement.file_of[usage.component];
    if (uses_[usage.component] == 1 && goes_with_component(styled, component)) {
      // hang_on() finds the place, unless the style names what stands with the assembly.
      if (names_context(styled)) enter(styled, component);
      return;
    }
    enter(styled, placing_.keeps_others_out(assembly) ? 0 : assembly);
  }

  bool goes_with_component(Index styled, FileId component) const {
    if (!names_context(styled)) return has_bodies_apart_ || has_targets(styled, component);
    return !placing_.keeps_others_out(component) && has_targets(styled, component);
  }

  /// Whether a style of `record` is one of a shape: of an item, or of a representation of bodies.
  bool is_target(Index record) const {
    if (!placing_.classes.has(record, OWNED) || placing_.classes.has(record, SOFT | DEFINING)) {
      return false;
    }
    if (!placing_.classes.has(record, SHOWING)) return true;
    const auto items = placing_.instances.references(record);
    return std::any_of(items.begin(), items.end(), [&](Reference item) {
      return item.record() != NO_RECORD && item.is_listed() &&
             !is_placement(placing_.instances, item.record());
    });
  }

  bool is_own(Index record, FileId file) const {
    const Stand* const stand = placing_.stands.find(record, file);
    return stand != nullptr && stand->role() == Role::own;
  }

  bool has_targets(Index styled, FileId file) const {
    const auto references = placing_.instances.references(styled);
    return std::all_of(references.begin(), references.end(), [&](Reference reference) {
      return reference.record() == NO_RECORD || !is_target(reference.record()) ||
             is_own(reference.record(), file);
    });
  }

  void enter(Index styled, FileId file) {
    if (!placing_.stands.add(styled, file, Role::own)) return;
    bool is_lost = false;
    for (const Reference reference : placing_.instances.references(styled)) {
      const Index other = reference.record();
      if (other == NO_RECORD) continue;
      is_lost = is_lost || is_lost_behind(styled, other, file);
      if (is_styled_item(other)) {
        overridden_.push_back({other, file});
      } else if (is_item(placing_, other)) {
        placing_.stands.add(other, file, Role::stand_in);
      } else {
        placing_.bring(other, file);
      }
    }
    if (is_lost) {
      placing_.placement.warnings.push_back(
          {PlacementWarning::Kind::occurrence_style, styled, file});
    }
  }

  /// Whether no reader can tell what is styled: readers know the usages that contexts of styles
  /// have names for, and give the style to all of the component; of any other style only the item
  /// would tell.
  bool is_lost_behind(Index styled, Index target, FileId file) const {
    if (!is_target(target) || is_own(target, file)) return false;
    return names_context(styled) ||
           (!placing_.classes.has(target, SHOWING) && !is_body(placing_.instances, target));
  }

  Placing& placing_;
  TypeSet is_styled_;
  TypeSet names_context_;                           // whether the style itself does
  std::unordered_map<Index, const Usage*> usages_;  // by the representation that names it
  std::unordered_map<Index, const Usage*> places_;  // by the relationship that places it
  std::vector<std::uint32_t> uses_;                 // by product
  bool has_bodies_apart_ = false;
  std::vector<OverriddenStyle> overridden_;
};

}  // namespace

std::vector<OverriddenStyle> place_occurrence_styles(Placing& placing) {
  return OccurrenceStyles(placing).place_all();
}

void bring_overridden(Placing& placing, std::vector<OverriddenStyle> open) {
  while (!open.empty()) {
    const auto [styled, file] = open.back();
    open.pop_back();
    if (!placing.stands.add(styled, file, Role::guest)) continue;
    for (const Reference reference : placing.instances.references(styled)) {
      const Index other = reference.record();
      if (other == NO_RECORD) continue;
      if (is_item(placing, other)) {
        placing.stands.add(other, file, Role::stand_in);
      } else if (placing.classes.has(other, BOUND)) {
        open.push_back({other, file});
      } else {
        placing.bring(other, file);
      }
    }
  }
}

}  // namespace Kessel
