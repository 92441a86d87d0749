#include "instances/type_table.h"

#include <algorithm>

#include "exchange/parameters.h"
#include "instances/collectors.h"

namespace Kessel {

namespace {

constexpr std::size_t CACHE_SIZE = 1024;

std::size_t cache_place(std::string_view name) {
  const auto at = [&](std::size_t i) { return static_cast<unsigned char>(name[i]); };
  const std::size_t size = name.size();
  return (at(0) + at(size / 2) * 7 + at(size - 1) * 31 + at(size / 3) * 57 + size * 131) %
         CACHE_SIZE;
}

}  // namespace

TypeTable::TypeTable() : cache_(CACHE_SIZE) {
  enter("<anchor>", false);
  enter("<reference>", false);
  enter("<repeated>", false);
}

TypeId TypeTable::type_of(const Exchange::Record& record) {
  if (!record.keyword.empty()) {
    Known& known = cache_[cache_place(record.keyword)];
    if (known.name == record.keyword) return known.type;
    const TypeId type = enter(record.keyword, false);
    known = {types_[type].name, type};
    return type;
  }
  scratch_.clear();
  for (const Exchange::PartialRecord& partial : Exchange::partial_records(record.body)) {
    if (!scratch_.empty()) scratch_ += ' ';
    scratch_ += partial.keyword;
  }
  return enter(scratch_, true);
}

TypeId TypeTable::enter(std::string_view name, bool is_complex) {
  std::string key = is_complex ? "(" : "";
  key += name;
  if (const auto found = ids_.find(key); found != ids_.end()) return found->second;
  const auto id = static_cast<TypeId>(types_.size());
  Type& type = types_.emplace_back();
  type.name = name;
  type.is_complex = is_complex;
  std::string_view rest = type.name;
  while (!rest.empty()) {
    const std::size_t end = std::min(rest.find(' '), rest.size());
    type.keywords.push_back(rest.substr(0, end));
    rest.remove_prefix(std::min(end + 1, rest.size()));
  }
  type.collects = std::any_of(type.keywords.begin(), type.keywords.end(), [](std::string_view k) {
    return collecting_parameter(k) != NO_PARAMETER;
  });
  bytes_ += 2 * name.size() + 200;  // roughly, with the nodes of the table
  ids_.emplace(keys_.emplace_back(std::move(key)), id);
  return id;
}

bool TypeTable::has(TypeId type, std::string_view keyword) const {
  const auto& keywords = types_[type].keywords;
  return std::find(keywords.begin(), keywords.end(), keyword) != keywords.end();
}

}  // namespace Kessel
