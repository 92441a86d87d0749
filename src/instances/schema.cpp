#include "instances/schema.h"

#include <string_view>

#include "exchange/characters.h"
#include "exchange/parameters.h"
#include "exchange/string_value.h"
#include "findings/finding_kinds.h"

namespace Kessel {

std::string schema_of(const Instances& instances) {
  for (const std::string& entity : instances.header()) {
    const auto partial = Exchange::partial_records(entity);
    if (partial.empty() || partial.front().keyword != "FILE_SCHEMA") continue;
    const auto schemas =
        Exchange::items_of(Exchange::parameter(Exchange::items_of(partial.front().list), 0));
    if (schemas.empty()) continue;
    const std::string name = Exchange::string_value(schemas.front());
    return std::string(
        Exchange::without_blanks_behind(std::string_view(name).substr(0, name.find('{'))));
  }
  return {};
}

Finding other_schema(const std::string& schema, const std::string& expected) {
  return make_finding(FindingKind::mixed_schemas, "The file obeys the schema \"" + schema +
                                                      "\", the root \"" + expected + "\".");
}

}  // namespace Kessel
