#include "output/file_frame.h"

#include <algorithm>

#include "exchange/parameters.h"
#include "exchange/string_value.h"

namespace Kessel {

namespace {

std::string_view keyword_of(std::string_view entity) {
  const auto records = Exchange::partial_records(entity);
  return records.empty() ? std::string_view() : records.front().keyword;
}

/// `entity` with parameter `i` replaced.
std::string with_parameter(const std::string& entity, std::size_t i, std::string_view text) {
  const auto records = Exchange::partial_records(entity);
  if (records.empty()) return entity;
  const Exchange::Parameters parameters = Exchange::items_of(records.front().list);
  if (i >= parameters.size() || parameters[i].empty()) return entity;
  std::string changed = entity;
  changed.replace(static_cast<std::size_t>(parameters[i].data() - entity.data()),
                  parameters[i].size(), text);
  return changed;
}

/// The schema list in "('name',('SCHEMA'))".
std::string_view schema_list(const std::string& parameters) {
  return Exchange::parameter(Exchange::items_of(parameters), 1);
}

/// Entities of the header that name a data section, and with which parameter.
struct SectionRow {
  std::string_view keyword;
  std::size_t parameter;
};
constexpr SectionRow SPEAK_OF_SECTIONS[] = {
    {"FILE_POPULATION", 2}, {"SECTION_LANGUAGE", 0}, {"SECTION_CONTEXT", 0}};

std::string for_one_section(const std::string& entity) {
  const std::string_view keyword = keyword_of(entity);
  for (const SectionRow& row : SPEAK_OF_SECTIONS) {
    if (row.keyword == keyword) return with_parameter(entity, row.parameter, "$");
  }
  return entity;
}

}  // namespace

std::string make_header(const std::vector<std::string>& entities, std::string_view name,
                        std::string_view time_stamp, bool has_one_section) {
  std::vector<std::string> lines;
  for (const std::string& entity : entities) {
    std::string line = has_one_section ? for_one_section(entity) : entity;
    if (keyword_of(line) == "FILE_NAME") {
      line = with_parameter(line, 0, Exchange::string_literal(name));
      line = with_parameter(line, 1, "'" + std::string(time_stamp) + "'");
    }
    // What each of several sections said may now be said once.
    const bool is_again = line != entity && keyword_of(line) != "FILE_NAME" &&
                          std::find(lines.begin(), lines.end(), line) != lines.end();
    if (!is_again) lines.push_back(std::move(line));
  }
  std::string text = "ISO-10303-21;\nHEADER;\n";
  for (const std::string& line : lines) text.append(line).append(";\n");
  return text + "ENDSEC;\n";
}

std::vector<std::string> section_parameters(const Instances& instances) {
  const auto& sections = instances.data_sections();
  const bool is_one = std::all_of(sections.begin(), sections.end(), [&](const auto& section) {
    return schema_list(section.parameters) == schema_list(sections.front().parameters);
  });
  if (is_one || sections.empty()) return {std::string()};
  std::vector<std::string> parameters;
  for (const auto& section : sections) parameters.push_back(section.parameters);
  return parameters;
}

std::vector<std::string> schemas(const std::vector<std::string>& entities) {
  std::vector<std::string> names;
  for (const std::string& entity : entities) {
    if (keyword_of(entity) != "FILE_SCHEMA") continue;
    const auto list = Exchange::parameter(Exchange::parameters_of(entity, "FILE_SCHEMA"), 0);
    for (const std::string_view name : Exchange::items_of(list)) {
      names.push_back(Exchange::string_value(name));
    }
  }
  return names;
}

}  // namespace Kessel
