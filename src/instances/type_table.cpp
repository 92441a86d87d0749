#include "instances/type_table.h"

#include <algorithm>

#include "exchange/parameters.h"
#include "instances/collectors.h"

namespace Kessel {

TypeTable::TypeTable() {
  enter("<anchor>", false);
  enter("<reference>", false);
  enter("<repeated>", false);
}

TypeId TypeTable::look_up(const Exchange::Record& record) {
  if (record.keyword.empty()) return type_of_complex(record.body);
  const TypeId type = enter(record.keyword, false);
  const std::uint32_t id = record.keyword_id;
  if (id == Exchange::Record::NO_KEYWORD) return type;
  if (id >= by_keyword_.size()) by_keyword_.resize(std::size_t{id} + 1);
  by_keyword_[id] = type;
  return type;
}

TypeId TypeTable::type_of_complex(std::string_view body) {
  key_ = COMPLEX;
  for (const Exchange::PartialRecord& partial : Exchange::partial_records(body)) {
    if (key_.size() != 1) key_ += ' ';
    key_ += partial.keyword;
  }
  return enter_key();
}

TypeId TypeTable::enter(std::string_view name, bool is_complex) {
  key_.clear();
  if (is_complex) key_ = COMPLEX;
  key_ += name;
  return enter_key();
}

TypeId TypeTable::enter_key() {
  if (const auto found = ids_.find(key_); found != ids_.end()) return found->second;
  const auto id = static_cast<TypeId>(types_.size());
  const bool is_complex = key_.starts_with(COMPLEX);
  const std::string_view name = std::string_view(key_).substr(is_complex ? 1 : 0);
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
  ids_.emplace(keys_.emplace_back(key_), id);
  return id;
}

bool TypeTable::has(TypeId type, std::string_view keyword) const {
  const auto& keywords = types_[type].keywords;
  return std::find(keywords.begin(), keywords.end(), keyword) != keywords.end();
}

}  // namespace Kessel
