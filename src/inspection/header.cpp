#include "inspection/header.h"

#include <string_view>

#include "exchange/parameters.h"
#include "exchange/values.h"

namespace Kessel {

namespace {

Exchange::Parameters find(const std::vector<std::string>& entities, std::string_view keyword) {
  for (const std::string& entity : entities) {
    const auto records = Exchange::partial_records(entity);
    if (!records.empty() && records.front().keyword == keyword) {
      return Exchange::items_of(records.front().list);
    }
  }
  return {};
}

}  // namespace

Header read_header(const std::vector<std::string>& entities) {
  using Exchange::parameter;
  const Exchange::Parameters description = find(entities, "FILE_DESCRIPTION");
  const Exchange::Parameters name = find(entities, "FILE_NAME");
  const Exchange::Parameters schema = find(entities, "FILE_SCHEMA");
  Header header;
  header.description = text_values(parameter(description, 0));
  header.implementation_level = text_value(parameter(description, 1));
  header.name = text_value(parameter(name, 0));
  header.time_stamp = text_value(parameter(name, 1));
  header.authors = text_values(parameter(name, 2));
  header.organisations = text_values(parameter(name, 3));
  header.preprocessor_version = text_value(parameter(name, 4));
  header.originating_system = text_value(parameter(name, 5));
  header.authorisation = text_value(parameter(name, 6));
  header.schemas = text_values(parameter(schema, 0));
  return header;
}

}  // namespace Kessel
