// A finished split as JSON.
#include <cstdint>
#include <map>

#include "json/documents.h"
#include "json/json_line.h"
#include "kessel/assembly.h"
#include "run/words.h"
#include "text/part_label.h"

namespace Velkstep {

namespace {

/// The parts at the other ends of uses, as indices into the list of files; those without a file are
/// left out.
Json indices_of(const std::vector<Kessel::PartUse>& uses, const Kessel::Assembly& assembly,
                const std::map<std::uint64_t, std::size_t>& file_of_record) {
  Json list = Json::array();
  for (const Kessel::PartUse& use : uses) {
    const auto file = file_of_record.find(assembly.parts[use.part].record);
    if (file != file_of_record.end()) list.push_back(file->second);
  }
  return list;
}

}  // namespace

std::string split_json(const FinishedSplit& split, const SplitArguments& arguments,
                       const std::string& page) {
  const Kessel::Assembly assembly = Kessel::read_assembly(split.input, arguments.options);
  std::map<std::uint64_t, const Kessel::PartInfo*> parts;  // by record, 0 for a generated root
  for (const Kessel::PartInfo& part : assembly.parts) parts[part.record] = &part;
  std::map<std::uint64_t, std::size_t> file_of_record;
  for (std::size_t i = 0; i < split.files.size(); ++i) file_of_record[split.files[i].part] = i;

  Json json;
  json["format"] = JSON_FORMAT;
  json["input"] = arguments.in;
  json["output"] = arguments.outdir.string();
  json["assemblies"] = word_of(arguments.options.assemblies);
  json["names"] = word_of(arguments.options.names);
  json["root"] = split.has_root ? Json(split.files.front().path.string()) : Json();
  if (!page.empty()) json["report"] = page;
  json["files"] = Json::array();
  for (const Kessel::WrittenFile& file : split.files) {
    // The classic reading has files of materials and the like, which are no parts of the tree.
    const auto found = parts.find(file.part);
    Kessel::PartInfo part = found == parts.end() ? Kessel::PartInfo() : *found->second;
    if (file.part == 0) part.role = Kessel::PartRole::assembly;
    Json entry;
    entry["file"] = file.path.string();
    entry["record"] = file.part == 0 ? Json() : Json(file.part);
    entry["id"] = part.id;
    entry["name"] = part.name;
    entry["kind"] = role_name(part.role);
    entry["parents"] = indices_of(part.used_in, assembly, file_of_record);
    entry["children"] = indices_of(part.components, assembly, file_of_record);
    entry["records"] = file.records;
    entry["bytes"] = file.bytes;
    json["files"].push_back(std::move(entry));
  }
  return json_line(json);
}

}  // namespace Velkstep
