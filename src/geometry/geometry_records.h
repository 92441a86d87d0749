// The records of one file that geometry is read from.
#pragma once

#include <memory>
#include <string_view>
#include <vector>

#include "exchange/parameters.h"
#include "geometry/roles.h"
#include "geometry/vector.h"
#include "instances/column.h"
#include "instances/instances.h"

namespace Kessel::Geometry {

/// Coordinates and texts of records, by position in the instances. Filled in the order of the file.
class GeometryRecords {
 public:
  explicit GeometryRecords(const Instances& instances) : instances_(instances) {}

  /// Enters a record, whose text is `body`, where it is of those that geometry is read from.
  void add(Index record, std::string_view body);

  const Instances& instances() const { return instances_; }
  Role role(Index record) const;

  /// The coordinates of a CARTESIAN_POINT or DIRECTION; those that are not given are 0. Throws
  /// BadGeometry for all else, and where they are no finite numbers.
  Vector triple(Index record) const;
  /// The text of a record; empty where none is kept.
  std::string_view body(Index record) const;

  /// Bytes that all this takes.
  std::uint64_t bytes() const;
  std::uint64_t text_bytes() const { return text_bytes_; }

 private:
  struct Triple {
    Index record;
    Vector value;
  };
  struct Text {
    Index record;
    std::uint32_t size;
    const char* begin;
  };
  struct Block {
    std::unique_ptr<char[]> bytes;
    std::size_t size = 0;
  };
  const char* keep(std::string_view text);

  const Instances& instances_;
  Column<Triple> triples_;
  Column<Text> texts_;
  std::vector<Block> blocks_;
  std::size_t used_ = 0;  // of the last block
  std::uint64_t block_bytes_ = 0;
  std::uint64_t text_bytes_ = 0;
  mutable std::vector<Role> roles_;  // by type, as far as asked
  std::vector<Kept> kept_;
};

}  // namespace Kessel::Geometry
