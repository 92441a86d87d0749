// A store that is made record by record, with parts that stand for no record, for tests of rules.
#pragma once

#include <initializer_list>
#include <memory>
#include <random>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "association/rules.h"
#include "model/store.h"
#include "support/out_of_range.h"

namespace Kessel::test {

/// Numbers beyond the store begin here.
inline constexpr unsigned BEYOND_STORE = SLOT_BLOCK;

/// The parts have one-letter names and are keys in the order in which they are made.
class RuleStore {
 public:
  RuleStore() : file_("") {}

  Store& file() { return file_; }
  Entity* at(unsigned number) { return file_.at(number); }

  /// A record; without a type it is one whose type was not kept.
  void add(unsigned number, std::string_view type, const std::vector<unsigned>& references = {}) {
    Entity* record = type.empty() ? file_.create_entity(number) : file_.create_entity(number, type);
    for (const unsigned reference : references) record->add_reference(reference);
    records_.push_back(number);
  }

  /// A part; it stands in no list and no slot.
  Part& part(char name, std::uint32_t kind) {
    parts_.emplace_back(name, std::make_unique<Part>("PRODUCT_DEFINITION"));
    Part& made = *parts_.back().second;
    made.part_kind = kind;
    made.list_position = static_cast<std::uint32_t>(parts_.size());
    return made;
  }

  /// Enters a record into the files of parts, under each file's next number.
  void give(unsigned number, std::initializer_list<Part*> parts) {
    for (Part* part : parts) at(number)->part_numbers.emplace(part, ++part->last_instance_number);
  }

  /// Who holds which record under which number, and the last number of each file, such as
  /// "#1(P2 Q1) #2() last(P2 Q1)".
  std::string numbers() const {
    std::string text;
    for (const unsigned number : records_) {
      text += '#' + std::to_string(number) + '(';
      std::string_view separator;
      for (const auto& [part, value] : file_.at(number)->part_numbers) {
        text += separator;
        text += name_of(part) + std::to_string(value);
        separator = " ";
      }
      text += ") ";
    }
    text += "last(";
    std::string_view separator;
    for (const auto& [name, part] : parts_) {
      text += separator;
      text += name + std::to_string(part->last_instance_number);
      separator = " ";
    }
    return text + ')';
  }

 private:
  std::string name_of(const Part* part) const {
    for (const auto& [name, known] : parts_) {
      if (known.get() == part) return std::string(1, name);
    }
    return "?";
  }

  std::vector<std::pair<char, std::unique_ptr<Part>>> parts_;
  Store file_;
  std::vector<unsigned> records_;
};

/// The step that all rules are made of, one insertion after the other.
inline bool plainly_adopt(const Entity* source, Entity* target, KindFilter filter) {
  if (source == nullptr || target == nullptr) return false;
  std::vector<Part*> offered;
  for (const auto& [part, number] : source->part_numbers) offered.push_back(part);
  bool added = false;
  for (Part* part : offered) {
    if (filter != 0 && part->part_kind != filter) continue;
    if (target->part_numbers.emplace(part, ++part->last_instance_number).second) {
      added = true;
    } else {
      --part->last_instance_number;
    }
  }
  return added;
}

/// Fills `store` the same way for the same seed: `count` records of types "NODE", "LINK" or none
/// with up to four references each, cycles and empty slots included, and four parts that some of
/// the records hold.
inline void fill_at_random(RuleStore& store, unsigned seed, unsigned count) {
  std::mt19937 random(seed);
  const auto below = [&](unsigned bound) { return static_cast<unsigned>(random() % bound); };
  for (unsigned number = 1; number <= count; ++number) {
    if (below(10) == 0) continue;
    constexpr std::string_view TYPES[] = {"NODE", "NODE", "LINK", "LINK", ""};
    std::vector<unsigned> references(below(5));
    for (unsigned& reference : references) reference = below(count + 2);
    store.add(number, TYPES[below(std::size(TYPES))], references);
  }
  for (const char name : {'P', 'Q', 'R', 'S'}) {
    Part& part = store.part(name, 1 + below(2));
    for (unsigned left = 1 + below(3); left > 0; --left) {
      const unsigned number = 1 + below(count);
      if (store.at(number) == nullptr || store.at(number)->part_numbers.contains(&part)) continue;
      store.give(number, {&part});
    }
  }
}

}  // namespace Kessel::test
