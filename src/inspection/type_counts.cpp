// Counts records by type, and knows whose text is worth keeping.
#include "inspection/type_counts.h"

#include <algorithm>

#include "inspection/parameters.h"

namespace Kessel {

namespace {

constexpr std::string_view UNITS_ASSIGNED = "GLOBAL_UNIT_ASSIGNED_CONTEXT";

bool contains(std::string_view text, std::string_view part) {
  return text.find(part) != std::string_view::npos;
}

struct TextRule {
  bool (*applies)(std::string_view type);
  TextKept text;
};

// The first rule that applies decides. Products have names; mapped items and the representations
// that they show stand in for them; the others say what units are.
constexpr TextRule TEXT_RULES[] = {
    {[](std::string_view type) { return type == "PRODUCT"; }, TextKept::whole},
    {[](std::string_view type) { return type == "MAPPED_ITEM"; }, TextKept::first_string},
    {[](std::string_view type) { return type.ends_with("SHAPE_REPRESENTATION"); },
     TextKept::first_string},
    {[](std::string_view type) { return contains(type, "SI_UNIT"); }, TextKept::whole},
    {[](std::string_view type) { return contains(type, "CONVERSION_BASED_UNIT"); },
     TextKept::whole},
    {[](std::string_view type) { return contains(type, "MEASURE_WITH_UNIT"); }, TextKept::whole},
    {[](std::string_view type) { return contains(type, UNITS_ASSIGNED); }, TextKept::whole},
};

TextKept text_to_keep(std::string_view type) {
  for (const auto& [applies, text] : TEXT_RULES) {
    if (applies(type)) return text;
  }
  return TextKept::none;
}

}  // namespace

TypeCounts::Type& TypeCounts::of(std::string_view type) {
  if (type.ends_with(')')) {  // No keyword does.
    keywords_.clear();
    for_each_group(type, [&](std::string_view keyword, std::string_view) {
      if (!keywords_.empty()) keywords_ += ' ';
      keywords_ += keyword;
    });
    type = keywords_;
  }
  if (const auto found = by_name_.find(type); found != by_name_.end()) return *found->second;
  Type& added = types_.emplace_back(
      Type{std::string(type), text_to_keep(type), contains(type, UNITS_ASSIGNED), 0});
  by_name_[added.name] = &added;
  return added;
}

std::vector<TypeCount> TypeCounts::sorted() const {
  std::vector<TypeCount> counts;
  counts.reserve(types_.size());
  for (const Type& type : types_) counts.push_back({type.name, type.records});
  std::sort(counts.begin(), counts.end(), [](const TypeCount& a, const TypeCount& b) {
    return a.records != b.records ? a.records > b.records : a.type < b.type;
  });
  return counts;
}

}  // namespace Kessel
