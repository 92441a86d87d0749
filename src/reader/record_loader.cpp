// Turns record texts into records of the store.
#include "reader/record_loader.h"

#include <cstring>
#include <tuple>

#include "model/store.h"
#include "reader/text.h"

namespace Kessel {

std::string_view record_type(std::size_t from, std::string_view record) {
  std::size_t begin = record.find('=', from);
  if (begin == std::string_view::npos) return {};
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

namespace {

/// Mixes the length and the first and last bytes, which is what tells keywords apart.
std::size_t hash_of(std::string_view name) {
  std::uint64_t head = 0;
  std::uint64_t tail = 0;
  if (name.size() >= 8) {
    std::memcpy(&head, name.data(), 8);
    std::memcpy(&tail, name.data() + name.size() - 8, 8);
  } else {
    std::memcpy(&head, name.data(), name.size());
  }
  std::uint64_t hash = (head + name.size()) * 0x9E3779B97F4A7C15;
  hash = (hash ^ (hash >> 29) ^ tail) * 0xBF58476D1CE4E5B9;
  return static_cast<std::size_t>(hash >> 32);
}

}  // namespace

RecordLoader::RecordLoader(File& file) : file_(file), cache_(CACHE_SIZE) {
  untyped_names_.reserve(CACHE_SIZE);  // Never grows beyond: views into it stay valid.
}

void RecordLoader::add(std::string_view record) {
  const char* const begin = record.data();
  const char* const end = begin + record.size();
  const char* p = find_reference(begin, end);
  if (p == nullptr) return;
  ++p;
  const std::uint32_t id = read_number(p, end);
  if (id == 0) return;
  const std::string_view name = record_type(static_cast<std::size_t>(p - begin), record);
  if (name.empty()) return;

  file_.make_room(id);
  Entity* entity = create(id, type_of(name), record);
  collect_references(p, end);
  file_.set_references(*entity, references_);
}

Entity* RecordLoader::create(unsigned id, const Type& type, std::string_view record) {
  if (type.keep == Keep::nothing) return file_.store<Entity>(id);
  type.ids->push_back(id);
  if (type.keep == Keep::type) return file_.store<EntityWithType>(id, type.name);
  return file_.store<EntityWithAttr>(id, type.name, first_string(record));
}

void RecordLoader::collect_references(const char* p, const char* end) {
  references_.clear();
  while ((p = find_reference(p, end)) != nullptr) {
    ++p;
    const std::uint32_t number = read_number(p, end);
    if (number == 0) return;
    references_.push_back(number);
  }
}

RecordLoader::Type RecordLoader::type_of(std::string_view name) {
  if (name.size() > MAX_CACHED_LENGTH) return look_up(name);
  std::size_t place = hash_of(name) % CACHE_SIZE;
  for (; !cache_[place].name.empty(); place = (place + 1) % CACHE_SIZE) {
    if (cache_[place].name == name) return cache_[place];
  }
  Type type = look_up(name);
  if (cached_ < CACHE_SIZE / 2) {
    ++cached_;
    if (type.keep == Keep::nothing) type.name = untyped_names_.emplace_back(name);
    cache_[place] = type;
  }
  return type;
}

RecordLoader::Type RecordLoader::look_up(std::string_view name) {
  Type type{name, classify(name), nullptr};
  if (type.keep != Keep::nothing) std::tie(type.name, type.ids) = file_.intern_type(name);
  return type;
}

}  // namespace Kessel
