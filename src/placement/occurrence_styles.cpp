// Enters styles that single occurrences have.
#include <algorithm>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "placement/placing.h"

namespace Kessel {

namespace {

/// By type: whether it is STYLED_ITEM or derived from that (ISO 10303-46).
std::vector<bool> styled_items(const TypeTable& types) {
  std::vector<bool> styled(types.size());
  for (TypeId type = 0; type < styled.size(); ++type) {
    const auto& keywords = types.keywords(type);
    styled[type] = std::any_of(keywords.begin(), keywords.end(),
                               [](std::string_view k) { return k.ends_with("STYLED_ITEM"); });
  }
  return styled;
}

bool is_item(const Placing& placing, Index record) {
  return placing.classes.has(record, OWNED) &&
         !placing.classes.has(record, SOFT | DEFINING | SHOWING);
}

/// Puts the styles of occurrences into the files of their assemblies.
class OccurrenceStyles {
 public:
  explicit OccurrenceStyles(Placing& placing)
      : placing_(placing), is_styled_(styled_items(placing.instances.types())) {
    find_names();
    const auto& files = placing.placement.files;
    has_bodies_apart_ = std::any_of(files.begin(), files.end(),
                                    [](const PlacedFile& file) { return file.body != NO_RECORD; });
  }

  std::vector<OverriddenStyle> place_all() {
    if (usages_.empty()) return {};
    for (Index record = 0; record < placing_.instances.size(); ++record) {
      if (!is_styled_item(record)) continue;
      const Usage* const usage = usage_of(record);
      if (usage != nullptr) place(record, *usage);
    }
    return std::move(overridden_);
  }

 private:
  bool is_styled_item(Index record) const { return is_styled_[placing_.instances.type(record)]; }

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

  void place(Index styled, const Usage& usage) {
    const FileId assembly = placing_.placement.file_of[usage.assembly];
    if (has_items(styled, assembly)) return;
    // The style of an only occurrence goes with the part, or the body: that shows it alone, too.
    const FileId component = placing_.placement.file_of[usage.component];
    const bool is_only = uses_[usage.component] == 1;
    if (is_only && (has_bodies_apart_ || has_items(styled, component))) return;
    enter(styled, placing_.keeps_others_out(assembly) ? 0 : assembly);
  }

  bool has_items(Index styled, FileId file) const {
    const auto references = placing_.instances.references(styled);
    return std::all_of(references.begin(), references.end(), [&](Reference reference) {
      if (reference.record() == NO_RECORD || !is_item(placing_, reference.record())) return true;
      const Stand* const stand = placing_.stands.find(reference.record(), file);
      return stand != nullptr && stand->role() == Role::own;
    });
  }

  void enter(Index styled, FileId file) {
    if (!placing_.stands.add(styled, file, Role::own)) return;
    for (const Reference reference : placing_.instances.references(styled)) {
      const Index other = reference.record();
      if (other == NO_RECORD) continue;
      if (is_styled_item(other)) {
        overridden_.push_back({other, file});
      } else if (is_item(placing_, other)) {
        placing_.stands.add(other, file, Role::stand_in);
      } else {
        placing_.bring(other, file);
      }
    }
  }

  Placing& placing_;
  std::vector<bool> is_styled_;                     // by type
  std::unordered_map<Index, const Usage*> usages_;  // by the representation that names it
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
