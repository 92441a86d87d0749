#include "instances/type_table.h"

#include <algorithm>
#include <cstring>

#include "exchange/parameters.h"
#include "instances/collectors.h"

namespace Kessel {

namespace {

constexpr int CACHE_BITS = 10;

template <class Word>
std::uint64_t word_at(const char* place) {
  Word word = 0;
  std::memcpy(&word, place, sizeof word);
  return word;
}

}  // namespace

inline TypeTable::Ends::Ends(std::string_view name) {
  const char* const begin = name.data();
  const char* const end = begin + name.size();
  if (name.size() >= 8) {
    first = word_at<std::uint64_t>(begin);
    last = word_at<std::uint64_t>(end - 8);
  } else if (name.size() >= 4) {
    first = word_at<std::uint32_t>(begin);
    last = word_at<std::uint32_t>(end - 4);
  } else {
    for (const char c : name) first = first << 8 | static_cast<unsigned char>(c);
  }
}

inline TypeId TypeTable::look_up(Known& known, const Ends& ends, std::string_view keyword) {
  // Names of up to sixteen bytes are their ends.
  const std::size_t size = keyword.size();
  if (known.ends == ends && known.name.size() == size &&
      (size <= 16 || std::memcmp(known.name.data() + 8, keyword.data() + 8, size - 16) == 0)) {
    return known.type;
  }
  const TypeId type = enter(keyword, false);
  known = {ends, types_[type].name, type};
  return type;
}

TypeTable::TypeTable() : cache_(std::size_t{1} << CACHE_BITS) {
  enter("<anchor>", false);
  enter("<reference>", false);
  enter("<repeated>", false);
}

TypeId TypeTable::type_of(const Exchange::Record& record) {
  if (!record.keyword.empty()) {
    const Ends ends(record.keyword);
    const std::uint64_t mixed = (ends.first + ends.last * 31) * 0x9E37'79B9'7F4A'7C15;
    return look_up(cache_[mixed >> (64 - CACHE_BITS)], ends, record.keyword);
  }
  return type_of_complex(record.body);
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
