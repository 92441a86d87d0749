// What parts are called on paper.
#include "text/part_label.h"

#include <cstdint>

#include "text/terminal.h"

namespace Velkstep {

std::string_view role_name(Kessel::PartRole role) {
  switch (role) {
    case Kessel::PartRole::part:
      return "part";
    case Kessel::PartRole::assembly:
      return "assembly";
    case Kessel::PartRole::assembly_with_bodies:
      return "assembly with bodies";
  }
  return {};
}

std::string title_of(const Kessel::PartInfo& part) {
  if (part.record == 0) return "(generated root)";
  if (!part.name.empty()) return printable(part.name);
  if (!part.id.empty()) return printable(part.id);
  return "(no name)";
}

std::string record_of(const Kessel::PartInfo& part) {
  return part.record == 0 ? std::string() : "#" + std::to_string(part.record);
}

std::string file_of(const Kessel::PartInfo& part) {
  return printable(part.file.string());
}

std::string total_of(const Kessel::PartInfo& part) {
  return (part.total == UINT64_MAX ? "≥ " : "") + std::to_string(part.total);
}

}  // namespace Velkstep
