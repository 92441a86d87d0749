// Extracted parts as JSON.
#include "json/documents.h"
#include "json/json_line.h"

namespace Velkstep {

namespace {

Json part_json(const Kessel::NamedPart& part) {
  return {{"record", part.record}, {"id", part.id}, {"name", part.name}, {"path", part.path}};
}

}  // namespace

std::string extract_json(const std::vector<Kessel::ExtractedFile>& files, const std::string& input,
                         const std::filesystem::path& out) {
  Json json = {{"format", JSON_FORMAT},
               {"input", input},
               {"output", out.string()},
               {"files", Json::array()}};
  for (const Kessel::ExtractedFile& file : files) {
    Json entry = part_json(file.part);
    entry["file"] = file.path.string();
    entry["body"] = file.body == 0 ? Json() : Json(file.body);
    entry["records"] = file.records;
    entry["bytes"] = file.bytes;
    entry["copies"] = Json::array();
    for (const std::filesystem::path& copy : file.copies) entry["copies"].push_back(copy.string());
    json["files"].push_back(std::move(entry));
  }
  return json_line(json);
}

std::string parts_json(const std::vector<Kessel::NamedPart>& parts, const std::string& input) {
  Json json = {{"format", JSON_FORMAT}, {"input", input}, {"parts", Json::array()}};
  for (const Kessel::NamedPart& part : parts) json["parts"].push_back(part_json(part));
  return json_line(json);
}

}  // namespace Velkstep
