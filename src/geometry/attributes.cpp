#include "geometry/attributes.h"

#include <charconv>

#include "exchange/values.h"

namespace Kessel::Geometry {

Attributes::Attributes(const GeometryRecords& records, Index record, std::string_view keyword,
                       std::size_t inherited)
    : instances_(records.instances()) {
  const std::string_view body = records.body(record);
  parameters_ = Exchange::parameters_of(body, keyword);
  if (!body.starts_with('(')) first_ = inherited;
}

std::string_view Attributes::raw(std::size_t i) const {
  return Exchange::parameter(parameters_, first_ + i);
}

bool Attributes::is_given(std::size_t i) const {
  const std::string_view parameter = raw(i);
  return !parameter.empty() && parameter != "$" && parameter != "*";
}

Index Attributes::record_in(std::string_view parameter) const {
  const std::uint64_t number = Exchange::instance_of(parameter);
  const Index record = number == 0 ? NO_RECORD : instances_.find(number);
  require(record != NO_RECORD);
  return record;
}

double Attributes::number(std::size_t i) const {
  const auto number = number_or_none(raw(i));
  require(number.has_value());
  return *number;
}

int Attributes::integer(std::size_t i) const {
  const std::string_view text = raw(i);
  int value = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  require(error == std::errc() && end == text.data() + text.size());
  return value;
}

bool Attributes::is_true(std::size_t i) const {
  const std::string_view value = enumeration_value(raw(i));
  require(value == "T" || value == "F");
  return value == "T";
}

std::vector<Index> Attributes::records(std::size_t i) const {
  std::vector<Index> records;
  for (const std::string_view item : Exchange::items_of(raw(i))) records.push_back(record_in(item));
  return records;
}

std::vector<double> Attributes::numbers(std::size_t i) const {
  std::vector<double> numbers;
  for (const std::string_view item : Exchange::items_of(raw(i))) {
    const auto number = number_or_none(item);
    require(number.has_value());
    numbers.push_back(*number);
  }
  return numbers;
}

std::vector<std::uint32_t> Attributes::integers(std::size_t i) const {
  return read_integers(raw(i));
}

std::vector<std::uint32_t> read_integers(std::string_view list) {
  std::vector<std::uint32_t> integers;
  for (const std::string_view item : Exchange::items_of(list)) {
    std::uint32_t value = 0;
    const auto [end, error] = std::from_chars(item.data(), item.data() + item.size(), value);
    require(error == std::errc() && end == item.data() + item.size());
    integers.push_back(value);
  }
  return integers;
}

}  // namespace Kessel::Geometry
