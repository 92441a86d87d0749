// The product structure as text: a tree, a graph, lists of parts.
#pragma once

#include <cstddef>
#include <string>

#include "kessel/assembly.h"
#include "text/terminal.h"

namespace Velkstep {

/// A tree in box-drawing characters, `depth` levels below each root. An assembly that occurs again
/// is drawn once and then points above, so that the text stays linear in parts and uses, times the
/// depth; so does one that contains itself.
std::string tree_text(const Kessel::Assembly& assembly, std::size_t depth, const Colours& colours);

/// The same as a graph in the DOT language of Graphviz: each part within `depth` levels is one
/// node, each use one edge.
std::string tree_dot(const Kessel::Assembly& assembly, std::size_t depth, const std::string& name);

/// All parts that have a shape of their own, with their total quantities, in columns.
std::string parts_list_text(const Kessel::Assembly& assembly, const Colours& colours);

/// The same list as comma-separated values (RFC 4180), in UTF-8.
std::string parts_list_csv(const Kessel::Assembly& assembly);

}  // namespace Velkstep
