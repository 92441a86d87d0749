// The product structure as text: a tree, a graph, lists of parts.
#pragma once

#include <cstddef>
#include <string>

#include "kessel/assembly.h"
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

/// All parts, assemblies where they have bodies of their own, with their total quantities, in
/// columns. Each product definition has a line of its own, also where several have one name.
std::string parts_list_text(const Kessel::Assembly& assembly, PartsOrder order,
                            const Colours& colours);

/// The same columns as comma-separated values (RFC 4180), in UTF-8: quantities and records without
/// signs in front. `input`, unless it is empty, is the value of a column in front of the others.
std::string parts_list_csv(const Kessel::Assembly& assembly, PartsOrder order,
                           const std::string& input = {});

/// The record of headings above that; `input` is the heading of the column in front.
std::string parts_list_csv_heading(const std::string& input = {});

}  // namespace Velkstep
