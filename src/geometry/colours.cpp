#include "geometry/colours.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <string_view>

#include "exchange/values.h"
#include "geometry/attributes.h"

namespace Kessel::Geometry {

namespace {

struct NamedColour {
  std::string_view name;
  std::int32_t rgb;
};

constexpr NamedColour NAMED[] = {
    {"black", 0x000000},  {"red", 0xFF0000},     {"green", 0x00FF00}, {"blue", 0x0000FF},
    {"yellow", 0xFFFF00}, {"magenta", 0xFF00FF}, {"cyan", 0x00FFFF},  {"white", 0xFFFFFF},
};

std::int32_t named_colour(std::string_view name) {
  const auto found = std::find_if(std::begin(NAMED), std::end(NAMED),
                                  [&](const NamedColour& one) { return one.name == name; });
  return found == std::end(NAMED) ? NO_RGB : found->rgb;
}

std::int32_t byte_of(double part) {
  return static_cast<std::int32_t>(std::lround(255 * std::clamp(part, 0.0, 1.0)));
}

bool is_colour(const Instances& instances, Index record) {
  return instances.is(record, "COLOUR_RGB") || instances.is(record, "PRE_DEFINED_COLOUR") ||
         instances.is(record, "DRAUGHTING_PRE_DEFINED_COLOUR");
}

/// 0xRRGGBB, or NO_RGB for what is no such colour.
std::int32_t read_colour(const GeometryRecords& records, Index record) {
  try {
    if (records.instances().is(record, "COLOUR_RGB")) {
      const Attributes parts(records, record, "COLOUR_RGB", 1);
      return byte_of(parts.number(0)) << 16 | byte_of(parts.number(1)) << 8 |
             byte_of(parts.number(2));
    }
    const Attributes own(records, record, "PRE_DEFINED_ITEM", 0);
    return named_colour(text_value(own.raw(0)));
  } catch (const BadGeometry&) {
    return NO_RGB;
  }
}

// What a style of surfaces says of the lines on them.
constexpr std::string_view LINES_ON_SURFACES[] = {
    "SURFACE_STYLE_BOUNDARY",           "SURFACE_STYLE_SILHOUETTE",
    "SURFACE_STYLE_SEGMENTATION_CURVE", "SURFACE_STYLE_CONTROL_GRID",
    "SURFACE_STYLE_PARAMETER_LINE",
};

bool is_on_surface(const Instances& instances, Index record) {
  return std::any_of(std::begin(LINES_ON_SURFACES), std::end(LINES_ON_SURFACES),
                     [&](std::string_view keyword) { return instances.is(record, keyword); });
}

constexpr std::string_view CONTEXT_DEPENDENT = "CONTEXT_DEPENDENT_OVER_RIDING_STYLED_ITEM";

}  // namespace

StyleTable::StyleTable(const GeometryRecords& records) : records_(records), hidden_(records) {
  const Instances& instances = records.instances();
  const TypeTable& types = instances.types();
  std::vector<int> strength(types.size());  // by type: 0 no style, 1 plain, 2 over-riding, 3 placed
  for (TypeId type = 0; type < types.size(); ++type) {
    strength[type] = types.has(type, CONTEXT_DEPENDENT)           ? 3
                     : types.has(type, "OVER_RIDING_STYLED_ITEM") ? 2
                     : types.has(type, "STYLED_ITEM")             ? 1
                                                                  : 0;
  }
  std::unordered_map<Index, int> strengths;  // of what was said of items so far
  for (Index record = 0; record < instances.size(); ++record) {
    const int strong = strength[instances.type(record)];
    if (strong == 0) continue;
    try {
      const Attributes styled(records, record, "STYLED_ITEM", 1);
      const StyleColours colours = read_styles(styled.records(0));
      if (strong == 3) {
        add_context(record, colours.any());
        continue;
      }
      if (colours.any() == NO_RGB) continue;
      const Index item = styled.record(1);
      int& before = strengths[item];
      if (before >= strong) continue;
      before = strong;
      items_[item] = colours;
    } catch (const BadGeometry&) {
      continue;  // It says nothing of any item.
    }
  }
}

std::uint64_t StyleTable::bytes() const {
  constexpr std::uint64_t NODE = 48;  // of a table, with its share of the buckets
  std::uint64_t sum = NODE * (items_.size() + styles_.size() + hidden_.size());
  for (const ContextStyle& style : contexts_) {
    sum += sizeof style + style.placements.capacity() * sizeof(Index);
  }
  return sum;
}

StyleColours StyleTable::of(Index item) const {
  const auto found = items_.find(item);
  return found == items_.end() ? StyleColours() : found->second;
}

void StyleTable::add_context(Index record, std::int32_t colour) {
  const Instances& instances = records_.instances();
  const bool is_complex = instances.types().is_complex(instances.type(record));
  const bool is_hidden = hidden_.has(record);
  if (colour == NO_RGB && !is_hidden) return;
  contexts_.push_back(
      {Attributes(records_, record, CONTEXT_DEPENDENT, is_complex ? 0 : 4).records(0), colour,
       is_hidden});
}

StyleColours StyleTable::read_styles(const std::vector<Index>& styles) {
  StyleColours colours;
  for (const Index style : styles) {
    const StyleColours some = colours_of(style, false, 0);
    if (colours.surface == NO_RGB) colours.surface = some.surface;
    if (colours.curve == NO_RGB) colours.curve = some.curve;
  }
  return colours;
}

/// The first colours that `style` leads to.
StyleColours StyleTable::colours_of(Index style, bool is_surface, int depth) {
  constexpr int MOST_LEVELS = 8;  // More than any style needs: they may go in a circle.
  const Instances& instances = records_.instances();
  if (is_colour(instances, style)) {
    const std::int32_t rgb = read_colour(records_, style);
    return is_surface ? StyleColours{rgb, NO_RGB} : StyleColours{NO_RGB, rgb};
  }
  if (depth == MOST_LEVELS || is_on_surface(instances, style)) return {};
  if (const auto known = styles_.find(style); known != styles_.end()) return known->second;
  StyleColours colours;
  styles_[style] = colours;
  const bool is_below = is_surface || instances.is(style, "SURFACE_STYLE_USAGE");
  for (const Reference reference : instances.references(style)) {
    if (reference.record() == NO_RECORD) continue;
    const StyleColours some = colours_of(reference.record(), is_below, depth + 1);
    if (colours.surface == NO_RGB) colours.surface = some.surface;
    if (colours.curve == NO_RGB) colours.curve = some.curve;
  }
  return styles_[style] = colours;
}

}  // namespace Kessel::Geometry
