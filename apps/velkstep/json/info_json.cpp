// A file's header and counts as JSON.
#include <algorithm>
#include <vector>

#include "formats/info_formats.h"
#include "json/documents.h"
#include "json/json_line.h"

namespace Velkstep {

namespace {

Json header_json(const Kessel::Header& header) {
  return {{"description", header.description},
          {"implementation_level", header.implementation_level},
          {"name", header.name},
          {"time_stamp", header.time_stamp},
          {"authors", header.authors},
          {"organisations", header.organisations},
          {"preprocessor_version", header.preprocessor_version},
          {"originating_system", header.originating_system},
          {"authorisation", header.authorisation},
          {"schemas", header.schemas}};
}

Json types_json(const std::vector<Kessel::TypeCount>& types) {
  Json list = Json::array();
  const std::size_t shown = std::min(types.size(), MOST_FREQUENT);
  for (std::size_t i = 0; i < shown; ++i) {
    list.push_back({{"type", types[i].type}, {"records", types[i].records}});
  }
  return list;
}

Json units_json(const std::vector<Kessel::UnitUse>& uses, const char* measured_in) {
  Json list = Json::array();
  for (const Kessel::UnitUse& use : uses) {
    list.push_back({{"name", use.name},
                    {measured_in, use.factor == 0 ? Json() : Json(use.factor)},
                    {"contexts", use.contexts}});
  }
  return list;
}

Json references_json(const std::vector<Kessel::ReferencedFile>& references) {
  Json list = Json::array();
  for (const Kessel::ReferencedFile& file : references) {
    list.push_back(
        {{"file", file.name}, {"references", file.references}, {"is_there", file.is_there}});
  }
  return list;
}

}  // namespace

std::string info_json(const Kessel::Summary& summary, const std::string& input) {
  Json json;
  json["format"] = JSON_FORMAT;
  json["input"] = input;
  json["bytes"] = summary.bytes;
  json["header"] = header_json(summary.header);
  json["records"] = summary.records;
  json["types"] = summary.types.size();
  json["most_frequent"] = types_json(summary.types);
  json["parts"] = summary.parts;
  json["assemblies"] = summary.assemblies;
  json["assemblies_with_bodies"] = summary.assemblies_with_bodies;
  json["depth"] = summary.depth;
  json["length_units"] = units_json(summary.length_units, "metres");
  json["plane_angle_units"] = units_json(summary.plane_angle_units, "radians");
  json["external_files"] = references_json(summary.references);
  return json_line(json);
}

}  // namespace Velkstep
