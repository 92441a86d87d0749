// Turns record texts into records of the store.
#include "reader/record_loader.h"

#include <cstring>
#include <span>
#include <tuple>

#include "model/store.h"
#include "reader/references.h"
#include "reader/text.h"

namespace Kessel {

std::string_view record_type(std::size_t from, std::string_view record) {
  std::size_t begin = from;
  while (begin < record.size() && record[begin] != '=') ++begin;
  if (begin == record.size()) return {};
  do {
    if (++begin == record.size()) return {};
  } while (is_space(record[begin]));
  std::size_t end = record.find('(', begin);
  if (end == std::string_view::npos) return {};
  if (end == begin) {  // A complex instance: all that its parentheses hold.
    ++begin;
    while (begin < record.size() && is_space(record[begin])) ++begin;
    end = record.rfind(')');
    if (end == std::string_view::npos || end < begin) return {};
  }
  while (end > begin && is_space(record[end - 1])) --end;
  return record.substr(begin, end - begin);
}

std::string_view first_string(std::string_view record) {
  const std::size_t begin = record.find('\'') + 1;  // 0 where there is none.
  return record.substr(begin, record.find('\'', begin) - begin);
}

RecordLoader::Ends::Ends(std::string_view name) {
  if (name.size() >= 8) {
    std::memcpy(&head, name.data(), 8);
    std::memcpy(&tail, name.data() + name.size() - 8, 8);
  } else {
    std::memcpy(&head, name.data(), name.size());
  }
}

RecordLoader::RecordLoader(File& file) : file_(file), cache_(CACHE_SIZE) {
  untyped_names_.reserve(CACHE_SIZE);  // Never grows beyond: views into it stay valid.
}

void RecordLoader::add(std::string_view record) {
  numbers_.clear();
  const char* own_end = nullptr;
  for_each_reference(record, [&](std::uint32_t number, const char*, const char* end) {
    if (numbers_.empty()) own_end = end;
    numbers_.push_back(number);
  });
  if (numbers_.empty()) return;
  const auto behind_own = static_cast<std::size_t>(own_end - record.data());
  const std::string_view name = record_type(behind_own, record);
  if (name.empty()) return;

  const unsigned id = numbers_.front();
  file_.make_room(id);
  Entity* entity = create(id, type_of(name), record);
  file_.set_references(*entity, std::span(numbers_).subspan(1));
}

Entity* RecordLoader::create(unsigned id, const Type& type, std::string_view record) {
  if (type.keep == Keep::nothing) return file_.store<Entity>(id);
  type.ids->push_back(id);
  if (type.keep == Keep::type) return file_.store<EntityWithType>(id, type.name);
  return file_.store<EntityWithAttr>(id, type.name, first_string(record));
}

const RecordLoader::Type& RecordLoader::type_of(std::string_view name) {
  if (name.size() > MAX_CACHED_LENGTH) return uncached_ = look_up(name);
  const Ends ends(name);
  std::uint64_t hash = (ends.head + name.size()) * 0x9E3779B97F4A7C15;
  hash = (hash ^ (hash >> 29) ^ ends.tail) * 0xBF58476D1CE4E5B9;
  std::size_t place = (hash >> 32) % CACHE_SIZE;
  for (; !cache_[place].name.empty(); place = (place + 1) % CACHE_SIZE) {
    const Type& known = cache_[place];
    if (known.ends == ends && known.name.size() == name.size() &&
        (name.size() <= 16 || known.name == name)) {
      return known;
    }
  }
  Type type = look_up(name);
  if (cached_ == CACHE_SIZE / 2) return uncached_ = type;
  ++cached_;
  if (type.keep == Keep::nothing) type.name = untyped_names_.emplace_back(name);
  type.ends = ends;
  return cache_[place] = type;
}

RecordLoader::Type RecordLoader::look_up(std::string_view name) {
  Type type{name, classify(name)};
  if (type.keep != Keep::nothing) std::tie(type.name, type.ids) = file_.intern_type(name);
  return type;
}

}  // namespace Kessel
