// Whether two graphs are one.
#pragma once

#include <cstdint>

#include "sameness/graph.h"

namespace Kessel::Sameness {

enum class Verdict : std::uint8_t {
  same,       ///< an isomorphism was found
  different,  ///< there is none
  /// Neither was found with reasonable effort: the graphs are alike all over and so symmetrical
  /// that only trying out could tell. No file of parts is like that.
  undecided,
};

/// Compares two graphs. Nodes correspond whose texts are equal, and all of whose references and
/// users correspond with equal labels. About linear in the edges; what is symmetrical is tried out
/// piece by piece. The graphs may have forgotten users, who are found again where colours leave
/// something open.
Verdict compare(Graph& a, Graph& b, const Column<std::uint64_t>& colours_a,
                const Column<std::uint64_t>& colours_b);

/// A colour for each node: what its record says with all below it (`structure`), and then who uses
/// it and what the neighbours are, as far as one pass from users to used and one back tell. Nodes
/// that correspond in isomorphic graphs have equal colours.
Column<std::uint64_t> colours_of(const Graph& graph, const Column<std::uint64_t>& structure);

}  // namespace Kessel::Sameness
