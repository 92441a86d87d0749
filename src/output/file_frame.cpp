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

Exchange::Parameters first_list(std::string_view entity) {
  const auto records = Exchange::partial_records(entity);
  return records.empty() ? Exchange::Parameters() : Exchange::items_of(records.front().list);
}

/// `entity` with parameter `i` replaced.
std::string with_parameter(const std::string& entity, std::size_t i, std::string_view text) {
  const std::string_view parameter = Exchange::parameter(first_list(entity), i);
  if (parameter.empty()) return entity;
  std::string changed = entity;
  changed.replace(static_cast<std::size_t>(parameter.data() - entity.data()), parameter.size(),
                  text);
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

HeaderForm::HeaderForm(const std::vector<std::string>& entities, std::string_view time_stamp,
                       bool has_one_section)
    : pieces_{"ISO-10303-21;\nHEADER;\n"} {
  std::vector<std::string> said;
  for (const std::string& entity : entities) {
    if (keyword_of(entity) == "FILE_NAME") {
      const std::string line = time_stamp.empty()
                                   ? entity
                                   : with_parameter(entity, 1, "'" + std::string(time_stamp) + "'");
      const std::string_view name = Exchange::parameter(first_list(line), 0);
      if (!name.empty()) {
        const auto begin = static_cast<std::size_t>(name.data() - line.data());
        pieces_.back().append(line, 0, begin);
        pieces_.push_back(line.substr(begin + name.size()) + ";\n");
        continue;
      }
    }
    const std::string line = has_one_section ? for_one_section(entity) : entity;
    // What each of several sections said may now be said once.
    if (line != entity && std::find(said.begin(), said.end(), line) != said.end()) continue;
    pieces_.back() += line + ";\n";
    said.push_back(line);
  }
  pieces_.back() += "ENDSEC;\n";
}

std::string HeaderForm::with_name(std::string_view name) const {
  const std::string literal = Exchange::string_literal(name);
  std::string text = pieces_.front();
  for (std::size_t i = 1; i < pieces_.size(); ++i) text.append(literal).append(pieces_[i]);
  return text;
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
