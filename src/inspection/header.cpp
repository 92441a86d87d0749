// The fields of the header section.
#include "inspection/header.h"

#include "inspection/parameters.h"

namespace Kessel {

Header read_header(std::string_view text) {
  const auto description = parameters_of(text, "FILE_DESCRIPTION");
  const auto name = parameters_of(text, "FILE_NAME");
  const auto schema = parameters_of(text, "FILE_SCHEMA");
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
