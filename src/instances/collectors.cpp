#include "instances/collectors.h"

#include "exchange/lexer.h"
#include "exchange/parameters.h"
#include "instances/keyword_row.h"

namespace Kessel {

namespace {

using enum Keywords::Match;

struct CollectorRow : Keywords::Row {
  unsigned parameter;
};

// The first row that fits counts.
constexpr CollectorRow COLLECTORS[] = {
    // Representations and what is derived from them: name, items, context. Records that relate a
    // definition to a representation have such names, too, but no list there.
    {ending, "REPRESENTATION", 1},
    {exactly, "DRAUGHTING_MODEL", 1},
    {exactly, "PRESENTATION_AREA", 1},
    {exactly, "PRESENTATION_VIEW", 1},
    // What is shown, and how.
    {exactly, "PRESENTATION_LAYER_ASSIGNMENT", 2},
    {exactly, "INVISIBILITY", 0},
    {exactly, "CONTEXT_DEPENDENT_INVISIBILITY", 0},
    // A style of several parts: one thing.
    {exactly, "PRESENTATION_STYLE_ASSIGNMENT", NO_PARAMETER},
    // Management data: what is assigned, sometimes in which role, and to what.
    {ending, "_ASSIGNMENT", LAST_PARAMETER},
    {beginning, "CC_DESIGN_", LAST_PARAMETER},
    {exactly, "APPLIED_DOCUMENT_REFERENCE", 2},
    {exactly, "AUTO_DESIGN_DOCUMENT_REFERENCE", 2},
    // The same of AP203's change management: what is done or wanted, and of which versions.
    {exactly, "CHANGE", 1},
    {exactly, "CHANGE_REQUEST", 1},
    {exactly, "START_WORK", 1},
    {exactly, "START_REQUEST", 1},
    // A material, and what is made of it.
    {exactly, "MATERIAL_DESIGNATION", 1},
    // Categories: name, description, products.
    {exactly, "PRODUCT_RELATED_PRODUCT_CATEGORY", 2},
};

}  // namespace

unsigned collecting_parameter(std::string_view keyword) {
  for (const CollectorRow& row : COLLECTORS) {
    if (row.fits(keyword)) return row.parameter;
  }
  return NO_PARAMETER;
}

std::vector<std::string_view> collected_lists(std::string_view body) {
  std::vector<std::string_view> lists;
  // Nearly all records are simple ones that collect nothing: then nothing behind the keyword
  // counts.
  const Exchange::Word first = Exchange::Lexer(body).next();
  const bool is_simple = first.kind == Exchange::WordKind::keyword;
  if (is_simple && collecting_parameter(first.text) == NO_PARAMETER) return lists;
  for (const Exchange::PartialRecord& partial : Exchange::partial_records(body)) {
    const unsigned place = collecting_parameter(partial.keyword);
    if (place == NO_PARAMETER) continue;
    const Exchange::Parameters parameters = Exchange::items_of(partial.list);
    if (parameters.empty()) continue;
    const std::string_view list =
        place == LAST_PARAMETER ? parameters.back() : Exchange::parameter(parameters, place);
    if (list.starts_with('(')) lists.push_back(list);
  }
  return lists;
}

}  // namespace Kessel
