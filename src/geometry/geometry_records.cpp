#include "geometry/geometry_records.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstring>
#include <limits>

#include "exchange/values.h"
#include "geometry/bad_geometry.h"

namespace Kessel::Geometry {

namespace {

constexpr std::size_t BLOCK_SIZE = 256 * 1024;

bool is_blank(char c) {
  return c == ' ' || c == '\t' || c == '\r' || c == '\n';
}

const char* behind_blanks(const char* at, const char* end) {
  while (at != end && is_blank(*at)) ++at;
  return at;
}

/// Fast path: "(1.,2.,3.))" and nothing else behind the last "(".
bool read_plain_triple(std::string_view body, Vector& value) {
  const std::size_t open = body.rfind('(');
  if (open == std::string_view::npos) return false;
  double* const numbers[] = {&value.x, &value.y, &value.z};
  const char* at = body.data() + open + 1;
  const char* const end = body.data() + body.size();
  std::size_t count = 0;
  for (bool is_more = true; is_more; ++at) {
    at = behind_blanks(at, end);
    if (count == 3 || at == end) return false;
    if (*at == '+') ++at;
    const auto [behind, error] = std::from_chars(at, end, *numbers[count++]);
    if (error != std::errc()) return false;
    at = behind_blanks(behind, end);
    if (at == end || (*at != ',' && *at != ')')) return false;
    is_more = *at == ',';
  }
  at = behind_blanks(at, end);
  return at != end && *at == ')' && behind_blanks(at + 1, end) == end;
}

Vector read_triple(std::string_view body) {
  constexpr double NONE = std::numeric_limits<double>::quiet_NaN();
  Vector value;
  if (read_plain_triple(body, value)) return value;
  const auto records = Exchange::partial_records(body);
  for (const auto& record : records) {
    if (record.keyword != "CARTESIAN_POINT" && record.keyword != "DIRECTION") continue;
    const auto parameters = Exchange::items_of(record.list);
    const auto numbers =
        parameters.empty() ? Exchange::Parameters() : Exchange::items_of(parameters.back());
    if (numbers.empty() || numbers.size() > 3) return {NONE, NONE, NONE};
    value = {};
    double* const places[] = {&value.x, &value.y, &value.z};
    for (std::size_t i = 0; i < numbers.size(); ++i) {
      *places[i] = number_or_none(numbers[i]).value_or(NONE);
    }
    return value;
  }
  return {NONE, NONE, NONE};
}

}  // namespace

void GeometryRecords::add(Index record, std::string_view body) {
  const TypeId type = instances_.type(record);
  while (kept_.size() <= type) {
    kept_.push_back(kept_of(instances_.types(), static_cast<TypeId>(kept_.size())));
  }
  if (kept_[type] == Kept::nothing) return;
  if (kept_[type] == Kept::coordinates) {
    triples_.push_back({record, read_triple(body)});
    return;
  }
  if (body.size() > std::numeric_limits<std::uint32_t>::max()) return;
  texts_.push_back({record, static_cast<std::uint32_t>(body.size()), keep(body)});
  text_bytes_ += body.size();
}

const char* GeometryRecords::keep(std::string_view text) {
  if (blocks_.empty() || blocks_.back().size - used_ < text.size()) {
    const std::size_t size = std::max(BLOCK_SIZE, text.size());
    blocks_.push_back({std::make_unique_for_overwrite<char[]>(size), size});
    block_bytes_ += size;
    used_ = 0;
  }
  char* const place = blocks_.back().bytes.get() + used_;
  std::memcpy(place, text.data(), text.size());
  used_ += text.size();
  return place;
}

Role GeometryRecords::role(Index record) const {
  const TypeId type = instances_.type(record);
  while (roles_.size() <= type) {
    roles_.push_back(role_of(instances_.types(), static_cast<TypeId>(roles_.size())));
  }
  return roles_[type];
}

Vector GeometryRecords::triple(Index record) const {
  const Triple* const found =
      std::lower_bound(triples_.begin(), triples_.end(), record,
                       [](const Triple& triple, Index wanted) { return triple.record < wanted; });
  require(found != triples_.end() && found->record == record && is_finite(found->value));
  return found->value;
}

std::string_view GeometryRecords::body(Index record) const {
  const Text* const found =
      std::lower_bound(texts_.begin(), texts_.end(), record,
                       [](const Text& text, Index wanted) { return text.record < wanted; });
  if (found == texts_.end() || found->record != record) return instances_.kept_body(record);
  return {found->begin, found->size};
}

std::uint64_t GeometryRecords::bytes() const {
  return triples_.bytes() + texts_.bytes() + block_bytes_;
}

}  // namespace Kessel::Geometry
