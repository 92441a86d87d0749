// The records of a file that bear identity, and who refers to whom.
#pragma once

#include <cstdint>
#include <span>
#include <utility>
#include <vector>

#include "instances/column.h"
#include "instances/instances.h"
#include "sameness/fingerprints.h"
#include "sameness/owners.h"

namespace Kessel::Sameness {

/// The two files that are compared.
enum Side : std::uint8_t { A, B };

using Node = std::uint32_t;
inline constexpr Node NO_NODE = UINT32_MAX;
/// The label of references in a collector's list.
inline constexpr std::uint32_t LISTED = UINT32_MAX;

/// A reference from or to a node. `label` tells references of one record apart: the how-manieth it
/// is among those outside of collectors' lists, or LISTED.
struct Edge {
  Node node = NO_NODE;
  std::uint32_t label = 0;
  friend auto operator<=>(const Edge&, const Edge&) = default;
};

/// Nodes that lead to each other, from `begin` on and in front of `end`.
struct Circle {
  Node begin = 0;
  Node end = 0;
};

/// One file as the graph that another must be isomorphic to to say the same.
///
/// Its nodes, each behind those that it refers to but for circles, are the records that bear
/// identity, once for each product that owns them, and values that lead to such records, of which
/// equal ones are one node. Values that lead to none are part of what their users say.
class Graph {
 public:
  /// Without owners, each record is one node.
  Graph(const Instances& instances, const Fingerprints& fingerprints, const Order& order,
        const Owners* owners = nullptr);

  Node size() const { return static_cast<Node>(records_.size()); }
  /// The record that a node stands for; the first one of equal values.
  Index record(Node node) const { return records_[node]; }
  /// A hash of what the record says by itself, with the values that it refers to.
  std::uint64_t text(Node node) const { return texts_[node]; }

  /// Whom the record of `node` refers to: ascending by label, those of a list as a set behind all
  /// others.
  std::span<const Edge> references(Node node) const {
    return part(references_, reference_ends_, node);
  }
  /// Who refers to it, unless that was forgotten.
  std::span<const Edge> users(Node node) const { return part(users_, user_ends_, node); }
  std::uint64_t edge_count() const { return references_.size(); }

  /// Frees what users() looks at, and makes it again.
  void forget_users();
  void find_users();

  /// The circles, ascending.
  const std::vector<Circle>& circles() const { return circles_; }

  std::uint64_t bytes() const;

 private:
  static std::span<const Edge> part(const Column<Edge>& edges, const Column<std::uint64_t>& ends,
                                    Node node) {
    return edges.part(static_cast<std::size_t>(node == 0 ? 0 : ends[node - 1]),
                      static_cast<std::size_t>(ends[node]));
  }

  Column<Index> records_;
  Column<std::uint64_t> texts_;
  Column<Edge> references_;
  Column<std::uint64_t> reference_ends_;
  Column<Edge> users_;
  Column<std::uint64_t> user_ends_;
  std::vector<Circle> circles_;
};

}  // namespace Kessel::Sameness
