// References the other way round.
#pragma once

#include <cstdint>
#include <span>

#include "instances/column.h"
#include "instances/instances.h"

namespace Kessel {

/// For every record, which records refer to it. About 16 bytes a record.
class Users {
 public:
  explicit Users(const Instances& instances);

  /// The records that refer to `record`, ascending; one that does so twice stands there twice.
  std::span<const Index> of(Index record) const {
    return users_.part(static_cast<std::size_t>(first_[record]),
                       static_cast<std::size_t>(first_[record + 1]));
  }

 private:
  Column<std::uint64_t> first_;
  Column<Index> users_;
};

}  // namespace Kessel
