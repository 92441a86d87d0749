// Enters styles that single occurrences have.
#include <algorithm>
#include <map>
#include <span>
#include <unordered_map>
#include <unordered_set>
#include <utility>
#include <vector>

#include "placement/bodies.h"
#include "placement/placing.h"
#include "placement/types_in.h"

namespace Kessel {

namespace {

// What says that a style is for one occurrence, or for one assembly (ISO 10303-46).
constexpr Keywords::Row NAMING_OCCURRENCES[] = {
    {Keywords::Match::exactly, "PRESENTATION_STYLE_BY_CONTEXT"},
    {Keywords::Match::ending, "CONTEXT_DEPENDENT_OVER_RIDING_STYLED_ITEM"}};
constexpr Keywords::Row NAMING_CONTEXT[] = {
    {Keywords::Match::ending, "CONTEXT_DEPENDENT_OVER_RIDING_STYLED_ITEM"}};

bool is_item(const Placing& placing, Index record) {
  return placing.classes.has(record, OWNED) &&
         !placing.classes.has(record, SOFT | DEFINING | SHOWING);
}

/// Which files show products outside of an assembly.
class ShownElsewhere {
 public:
  explicit ShownElsewhere(const Placing& placing) : placing_(placing) {}

  /// Whether something of `file` is shown where it is not below the product of `representation`.
  bool has(FileId file, Index representation) {
    const auto [found, is_new] = known_.try_emplace({representation, file});
    if (is_new) found->second = is_found(file, placing_.classes.owners(representation));
    return found->second;
  }

 private:
  /// Goes up: a way that leads past the assemblies is found soon, and who is shown by few
  /// assemblies has not much above it.
  bool is_found(FileId file, std::span<const ProductId> assemblies) {
    if (users_.empty()) find_users();
    std::unordered_set<ProductId> seen(assemblies.begin(), assemblies.end());
    std::vector<ProductId> open;
    const auto enter = [&](ProductId product) {
      if (seen.insert(product).second) open.push_back(product);
    };
    for (const ProductId product : placing_.placement.files[file].products) enter(product);
    const std::vector<ProductId>& tops = placing_.products.tops;
    while (!open.empty()) {
      const ProductId product = open.back();
      open.pop_back();
      if (std::binary_search(tops.begin(), tops.end(), product)) return true;
      for (const ProductId user : users_[product]) enter(user);
    }
    return false;
  }

  void find_users() {
    users_.resize(placing_.products.products.size());
    for (const Usage& usage : placing_.products.usages) {
      std::vector<ProductId>& users = users_[usage.component];
      if (usage.closes_circle) continue;
      if (users.empty() || users.back() != usage.assembly) users.push_back(usage.assembly);
    }
  }

  const Placing& placing_;
  std::vector<std::vector<ProductId>> users_;       // by product: the assemblies that use it
  std::map<std::pair<Index, FileId>, bool> known_;  // by the assembly's representation
};

/// Puts the styles of occurrences into the files of their assemblies or items.
class OccurrenceStyles {
 public:
  explicit OccurrenceStyles(Placing& placing)
      : placing_(placing),
        is_styled_(types_in(STYLED_ITEMS, placing.instances.types())),
        names_context_(types_in(NAMING_CONTEXT, placing.instances.types())),
        elsewhere_(placing) {}

  std::vector<OverriddenStyle> place_all() {
    const TypeSet names = types_in(NAMING_OCCURRENCES, placing_.instances.types());
    if (std::find(names.begin(), names.end(), 1) == names.end()) return {};
    find_names();
    const std::span<const TypeId> types = placing_.instances.record_types();
    for (Index record = 0; record < types.size(); ++record) {
      if (is_styled_[types[record]] == 0) continue;
      if (names_context(record)) {
        place_by_places(record);
      } else {
        place_by_context(record);
      }
    }
    return std::move(overridden_);
  }

 private:
  bool is_styled_item(Index record) const {
    return is_styled_[placing_.instances.type(record)] != 0;
  }
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

  /// The first context of a style that names an occurrence or shows a product; NO_RECORD for none.
  Index context_of(Index styled) const {
    for (const Reference style : placing_.instances.references(styled)) {
      if (style.record() == NO_RECORD) continue;
      if (!placing_.instances.is(style.record(), "PRESENTATION_STYLE_BY_CONTEXT")) continue;
      for (const Reference context : placing_.instances.references(style.record())) {
        if (context.record() == NO_RECORD) continue;
        if (usages_.contains(context.record())) return context.record();
        if (placing_.classes.has(context.record(), SHOWING)) return context.record();
      }
    }
    return NO_RECORD;
  }

  /// The usages that a style which names what places its occurrence is for: one, or one a level.
  std::vector<const Usage*> placed_by(Index styled) const {
    std::vector<const Usage*> usages;
    for (const Reference context : placing_.instances.references(styled)) {
      const auto found = places_.find(context.record());
      if (found != places_.end()) usages.push_back(found->second);
    }
    return usages;
  }

  void place_by_context(Index styled) {
    const Index context = context_of(styled);
    if (context == NO_RECORD) return;
    const auto named = usages_.find(context);
    if (named == usages_.end()) return place_in_assembly(styled, context);
    const Usage& usage = *named->second;
    const FileId assembly = placing_.placement.file_of[usage.assembly];
    const bool is_outside = placing_.keeps_others_out(assembly);
    // A style of all of the component: only here do readers know which occurrence it is for.
    if (!is_outside && styles_placeholder(styled, assembly)) return enter(styled, assembly);
    if (has_targets(styled, assembly)) return;
    // The style of an only occurrence goes with the part, or the body: that shows it alone, too.
    const FileId component = placing_.placement.file_of[usage.component];
    const bool goes_with_component = placing_.has_bodies_apart() || has_targets(styled, component);
    if (uses_[usage.component] == 1 && goes_with_component) return;  // hang_on() finds the place.
    enter(styled, is_outside ? 0 : assembly);
  }

  /// The context is what shows an assembly: readers take the style for one of the part.
  void place_in_assembly(Index styled, Index context) {
    for (const FileId file : homes_of(styled)) {
      if (placing_.stands.has(context, file)) continue;  // hang_on() finds the place.
      enter(styled, file);
      if (elsewhere_.has(file, context)) warn(styled, file);
    }
  }

  /// What is styled tells readers more than what places it: the style goes with its item. One of
  /// all of the component stands with the assembly of the highest usage, which has placeholders for
  /// both.
  void place_by_places(Index styled) {
    const std::vector<const Usage*> usages = placed_by(styled);
    if (usages.empty()) return;
    const Usage* highest = nullptr;
    for (const Usage* const usage : usages) {
      if (highest == nullptr || usage->component == highest->assembly) highest = usage;
    }
    const FileId assembly = placing_.placement.file_of[highest->assembly];
    if (has_targets(styled, assembly)) return;
    const bool is_only = std::all_of(usages.begin(), usages.end(), [&](const Usage* usage) {
      return uses_[usage->component] == 1;
    });
    const std::vector<FileId> homes = homes_of(styled);
    const bool goes_home = !homes.empty() && (is_only || !styles_representation(styled));
    if (!goes_home) return enter(styled, placing_.keeps_others_out(assembly) ? 0 : assembly);
    for (const FileId home : homes) {
      enter(styled, home);
      if (!is_only) warn(styled, home);
    }
  }

  /// The files that own all that is styled, and may hold what is of others.
  std::vector<FileId> homes_of(Index styled) const {
    std::vector<FileId> homes;
    for (const Reference reference : placing_.instances.references(styled)) {
      if (reference.record() == NO_RECORD || !is_target(reference.record())) continue;
      for (const Stand stand : placing_.stands.of(reference.record())) {
        const FileId file = stand.file();
        if (has_targets(styled, file) && !placing_.keeps_others_out(file)) homes.push_back(file);
      }
      break;
    }
    return homes;
  }

  bool styles_representation(Index styled) const {
    const auto references = placing_.instances.references(styled);
    return std::any_of(references.begin(), references.end(), [&](Reference reference) {
      return reference.record() != NO_RECORD && placing_.classes.has(reference.record(), SHOWING);
    });
  }
  bool styles_placeholder(Index styled, FileId file) const {
    const auto references = placing_.instances.references(styled);
    return std::any_of(references.begin(), references.end(), [&](Reference reference) {
      return reference.record() != NO_RECORD && placing_.is_placeholder(reference.record(), file);
    });
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
    if (is_lost) warn(styled, file);
  }

  void warn(Index styled, FileId file) {
    placing_.placement.warnings.push_back({PlacementWarning::Kind::occurrence_style, styled, file});
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
  ShownElsewhere elsewhere_;
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
