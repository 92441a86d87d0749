// Takes the parameters of a record that geometry is read from.
#pragma once

#include <string_view>
#include <vector>

#include "geometry/bad_geometry.h"
#include "geometry/geometry_records.h"

namespace Kessel::Geometry {

/// The attributes that one entity of a record adds to those of its supertypes. Whatever is not as
/// it is asked for throws BadGeometry.
class Attributes {
 public:
  /// The attributes of `keyword`. In a simple record, `inherited` of its supertypes stand in front.
  Attributes(const GeometryRecords& records, Index record, std::string_view keyword,
             std::size_t inherited);

  bool empty() const { return first_ >= parameters_.size(); }
  std::size_t size() const { return empty() ? 0 : parameters_.size() - first_; }
  std::string_view raw(std::size_t i) const;
  bool is_given(std::size_t i) const;
  Index record(std::size_t i) const { return record_in(raw(i)); }
  double number(std::size_t i) const;
  int integer(std::size_t i) const;
  bool is_true(std::size_t i) const;
  std::vector<Index> records(std::size_t i) const;
  std::vector<double> numbers(std::size_t i) const;
  std::vector<std::uint32_t> integers(std::size_t i) const;

  Index record_in(std::string_view parameter) const;

 private:
  const Instances& instances_;
  Exchange::Parameters parameters_;
  std::size_t first_ = 0;
};

/// The whole numbers of a list "(1,2)"; throws BadGeometry for all else but an empty list.
std::vector<std::uint32_t> read_integers(std::string_view list);

}  // namespace Kessel::Geometry
