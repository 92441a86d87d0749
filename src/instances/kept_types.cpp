#include "instances/kept_types.h"

#include <algorithm>

namespace Kessel {

namespace {

constexpr std::string_view KEPT_WITH[] = {
    "PRODUCT",
    "USAGE",
    "REPRESENTATION_RELATIONSHIP",
    "PROPERTY_DEFINITION",
    "DOCUMENT",
    "EXTERNAL",
    "UNIT",
    "TRANSFORMATION",
};

constexpr std::string_view KEPT_WITH_ENDING[] = {
    "SHAPE_REPRESENTATION",
    "DEFINITION_REPRESENTATION",
    "REPRESENTATION_CONTEXT",
    "REPRESENTATION_MAP",
    "MAPPED_ITEM",
    "IDENTIFICATION_ROLE",
    "ID_ATTRIBUTE",
    "NAME_ATTRIBUTE",
    "DESCRIPTION_ATTRIBUTE",
};

}  // namespace

bool keeps_text_of(std::string_view keyword) {
  const auto contains = [&](std::string_view name) {
    return keyword.find(name) != std::string_view::npos;
  };
  const auto ends_with = [&](std::string_view name) { return keyword.ends_with(name); };
  return std::any_of(std::begin(KEPT_WITH), std::end(KEPT_WITH), contains) ||
         std::any_of(std::begin(KEPT_WITH_ENDING), std::end(KEPT_WITH_ENDING), ends_with);
}

}  // namespace Kessel
