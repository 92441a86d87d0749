// The product structure as JSON.
#include "json/documents.h"
#include "json/json_line.h"
#include "text/part_label.h"

namespace Velkstep {

namespace {

Json uses_json(const std::vector<Kessel::PartUse>& uses) {
  Json list = Json::array();
  for (const Kessel::PartUse& use : uses) {
    list.push_back({{"part", use.part}, {"count", use.count}, {"closes_cycle", use.closes_cycle}});
  }
  return list;
}

Json part_json(const Kessel::PartInfo& part) {
  Json json;
  json["record"] = part.record == 0 ? Json() : Json(part.record);
  json["id"] = part.id;
  json["name"] = part.name;
  json["description"] = part.description;
  json["kind"] = role_name(part.role);
  json["file"] = part.file.empty() ? Json() : Json(part.file.string());
  json["external_file"] = part.external_file.empty() ? Json() : Json(part.external_file);
  json["total"] = part.total;
  json["components"] = uses_json(part.components);
  json["used_in"] = uses_json(part.used_in);
  return json;
}

}  // namespace

std::string tree_json(const Kessel::Assembly& assembly, const std::string& input) {
  Json json;
  json["format"] = JSON_FORMAT;
  json["input"] = input;
  json["depth"] = assembly.depth;
  json["roots"] = assembly.roots;
  json["parts"] = Json::array();
  for (const Kessel::PartInfo& part : assembly.parts) json["parts"].push_back(part_json(part));
  return json_line(json);
}

}  // namespace Velkstep
