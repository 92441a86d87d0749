// The data of the report page.
#include <cstdint>
#include <filesystem>
#include <map>

#include "json/documents.h"
#include "json/json_line.h"
#include "kessel/assembly.h"
#include "run/with_input.h"
#include "run/words.h"
#include "text/part_label.h"

namespace Velkstep {

namespace {

Json uses_on_page(const std::vector<Kessel::PartUse>& uses) {
  Json list = Json::array();
  for (const Kessel::PartUse& use : uses) {
    Json entry = {{"part", use.part}, {"count", use.count}};
    if (use.closes_cycle) entry["closes_cycle"] = true;
    list.push_back(std::move(entry));
  }
  return list;
}

Json page_data(const FinishedSplit& split, const SplitArguments& arguments) {
  const Kessel::Assembly assembly = Kessel::read_assembly(split.input, arguments.options);
  std::map<std::uint64_t, const Kessel::WrittenFile*> files;  // by record, 0 for a generated root
  for (const Kessel::WrittenFile& file : split.files) files[file.part] = &file;

  Json json;
  json["input"] = std::filesystem::path(shown_name(arguments.in)).filename().string();
  json["assemblies"] = word_of(arguments.options.assemblies);
  json["names"] = word_of(arguments.options.names);
  json["roots"] = assembly.roots;
  json["parts"] = Json::array();
  for (const Kessel::PartInfo& part : assembly.parts) {
    const auto found = files.find(part.record);
    const Kessel::WrittenFile* file = found == files.end() ? nullptr : found->second;
    Json entry;
    entry["record"] = part.record == 0 ? Json() : Json(std::to_string(part.record));
    entry["id"] = part.id;
    entry["name"] = part.name;
    entry["kind"] = role_name(part.role);
    entry["file"] = file == nullptr ? std::string() : file->path.string();
    entry["records"] = file == nullptr ? Json() : Json(file->records);
    entry["bytes"] = file == nullptr ? Json() : Json(file->bytes);
    if (!part.external_file.empty()) entry["external_file"] = part.external_file;
    entry["total"] = total_of(part);  // Text, since numbers of a script end at 2^53.
    entry["components"] = uses_on_page(part.components);
    entry["used_in"] = uses_on_page(part.used_in);
    json["parts"].push_back(std::move(entry));
  }
  return json;
}

/// JSON that no name in it can end as an element of a page. "<" occurs in strings only.
std::string json_for_page(const Json& json) {
  std::string text;
  for (const char c : json_line(json)) {
    if (c == '<') {
      text += "\\u003c";
    } else {
      text += c;
    }
  }
  return text;
}

}  // namespace

std::string report_json(const FinishedSplit& split, const SplitArguments& arguments) {
  return json_for_page(page_data(split, arguments));
}

}  // namespace Velkstep
