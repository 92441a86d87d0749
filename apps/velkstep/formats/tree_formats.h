// The product structure as text: a tree, a graph, lists of parts.
#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <vector>

#include "kessel/assembly.h"
#include "kessel/drawing.h"
#include "text/part_label.h"
#include "text/terminal.h"

namespace Velkstep {

/// A tree in box-drawing characters, `depth` levels below each root. An assembly that occurs again
/// is drawn once and then points above, so that the text stays linear in parts and uses, times the
/// depth; so does one that contains itself.
std::string tree_text(const Kessel::Assembly& assembly, std::size_t depth, const Colours& colours);

/// The same as a graph in the DOT language of Graphviz: each part within `depth` levels is one
/// node, each use one edge.
std::string tree_dot(const Kessel::Assembly& assembly, std::size_t depth, const std::string& name);

/// The sides of each part's box along x, y and z, and their unit; empty for a part without lines.
using PartSizes = std::vector<std::array<std::string, 4>>;

/// Those of the parts that a list has, parallel to the assembly's.
PartSizes sizes_of(const Kessel::Drawing& drawing);

/// All parts, assemblies where they have bodies of their own, with their total quantities, in
/// columns, and with `sizes` in further ones their sizes. Each product definition has a line of its
/// own, also where several have one name.
std::string parts_list_text(const Kessel::Assembly& assembly, PartsOrder order,
                            const Colours& colours, const PartSizes& sizes = {});

/// The same columns as comma-separated values (RFC 4180), in UTF-8: quantities and records without
/// signs in front. `input`, unless it is empty, is the value of a column in front of the others.
std::string parts_list_csv(const Kessel::Assembly& assembly, PartsOrder order,
                           const std::string& input = {}, const PartSizes& sizes = {});

/// The record of headings above that; `input` is the heading of the column in front.
std::string parts_list_csv_heading(const std::string& input = {}, bool with_sizes = false);

}  // namespace Velkstep
