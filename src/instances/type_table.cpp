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
  scratch_.clear();
  for (const Exchange::PartialRecord& partial : Exchange::partial_records(body)) {
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
