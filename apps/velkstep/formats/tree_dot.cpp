// The product structure as a graph for Graphviz.
#include <string_view>
#include <vector>

#include "formats/tree_formats.h"
#include "text/part_label.h"

namespace Velkstep {

namespace {

using Kessel::PartInfo;
using Kessel::PartUse;

/// `text` for the inside of a quoted string that is read as a label.
std::string label_text(std::string_view text) {
  std::string out;
  for (const char c : text) {
    if (c == '"' || c == '\\') out += '\\';
    out += c;
    if (c == '&') out += "amp;";  // Labels know the character entities of HTML.
  }
  return out;
}

/// Which parts are at most `depth` levels below a root.
std::vector<bool> parts_within(const Kessel::Assembly& assembly, std::size_t depth) {
  std::vector<bool> within(assembly.parts.size(), false);
  std::vector<std::size_t> level = assembly.roots;
  for (const std::size_t root : level) within[root] = true;
  for (; depth != 0 && !level.empty(); --depth) {
    std::vector<std::size_t> below;
    for (const std::size_t user : level) {
      for (const PartUse& use : assembly.parts[user].components) {
        if (within[use.part]) continue;
        within[use.part] = true;
        below.push_back(use.part);
      }
    }
    level.swap(below);
  }
  return within;
}

void append_node(std::string& out, std::size_t index, const PartInfo& part) {
  out += "  p" + std::to_string(index) + " [label=\"" + label_text(title_of(part));
  if (!part.id.empty() && !part.name.empty() && part.id != part.name) {
    out += "\\n" + label_text(printable(part.id));
  }
  if (part.record != 0) out += "\\n" + record_of(part);
  out += '"';
  if (part.role == Kessel::PartRole::assembly) out += ", shape=folder";
  if (part.role == Kessel::PartRole::assembly_with_bodies) out += ", shape=box3d";
  out += "];\n";
}

void append_edge(std::string& out, std::size_t user, const PartUse& use) {
  out += "  p" + std::to_string(user) + " -> p" + std::to_string(use.part);
  std::string attributes;
  if (use.count != 1) attributes = "label=\"×" + std::to_string(use.count) + "\"";
  if (use.closes_cycle) attributes += attributes.empty() ? "style=dashed" : ", style=dashed";
  if (!attributes.empty()) out += " [" + attributes + "]";
  out += ";\n";
}

}  // namespace

std::string tree_dot(const Kessel::Assembly& assembly, std::size_t depth, const std::string& name) {
  const std::vector<bool> within = parts_within(assembly, depth);
  std::string out = "digraph \"" + label_text(printable(name)) +
                    "\" {\n"
                    "  graph [rankdir=LR, charset=\"UTF-8\"];\n"
                    "  node [shape=box, fontname=\"sans-serif\"];\n";
  for (std::size_t i = 0; i < assembly.parts.size(); ++i) {
    if (within[i]) append_node(out, i, assembly.parts[i]);
  }
  for (std::size_t i = 0; i < assembly.parts.size(); ++i) {
    if (!within[i]) continue;
    for (const PartUse& use : assembly.parts[i].components) {
      if (within[use.part]) append_edge(out, i, use);
    }
  }
  return out + "}\n";
}

}  // namespace Velkstep
