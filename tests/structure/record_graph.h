// Records that are made in a test, without an exchange file, and the plain search over them.
#pragma once

#include <deque>
#include <initializer_list>
#include <memory>
#include <optional>
#include <random>
#include <set>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "kessel/entity.h"
#include "model/paged_array.h"
#include "model/slots.h"

namespace Kessel::test {

/// A store of a given number of slots. Type names must be literals.
class RecordGraph {
 public:
  explicit RecordGraph(std::size_t size) : slots_(size) {}

  /// Puts a record into slot `number`; without a type it is one whose type was not kept.
  void add(std::uint32_t number, std::string_view type,
           std::initializer_list<std::uint32_t> references = {}) {
    add(number, type, std::vector<std::uint32_t>(references));
  }
  void add(std::uint32_t number, std::string_view type,
           const std::vector<std::uint32_t>& references) {
    if (type.empty()) {
      records_.push_back(std::make_unique<Entity>());
    } else {
      records_.push_back(std::make_unique<EntityWithType>(type));
    }
    for (const std::uint32_t reference : references) records_.back()->add_reference(reference);
    slots_.edit(number) = records_.back().get();
  }

  const PagedArray<Entity*>& slots() const { return slots_; }

 private:
  PagedArray<Entity*> slots_;
  std::vector<std::unique_ptr<Entity>> records_;
};

/// Up to 47 records of types "A", "B", "C" or none with up to three references each; some slots are
/// empty, references form cycles, and a few of them name the slots beyond the store if asked for.
inline RecordGraph random_graph(std::mt19937& random, bool with_numbers_beyond) {
  constexpr std::uint32_t SIZE = 48;
  const auto below = [&](std::uint32_t bound) {
    return static_cast<std::uint32_t>(random() % bound);
  };
  RecordGraph graph(SIZE);
  for (std::uint32_t number = 1; number < SIZE; ++number) {
    if (below(8) == 0) continue;
    constexpr std::string_view TYPES[] = {"A", "B", "C", "", "", "", "", "", "", ""};
    std::vector<std::uint32_t> references;
    for (std::uint32_t left = below(4); left > 0; --left) {
      const bool beyond = with_numbers_beyond && below(25) == 0;
      references.push_back(beyond ? SIZE + below(3) : below(SIZE));
    }
    graph.add(number, TYPES[below(std::size(TYPES))], references);
  }
  return graph;
}

/// The search by the book: a queue of numbers, each examined when it comes to the front for the
/// first time.
inline std::uint32_t plain_search(Slots slots, std::uint32_t start, std::string_view type) {
  std::deque<std::uint32_t> queue = {start};
  std::set<std::uint32_t> examined;
  for (; !queue.empty(); queue.pop_front()) {
    const std::uint32_t number = queue.front();
    if (!examined.insert(number).second) continue;
    if (number >= slots.size()) throw std::out_of_range("invalid vector subscript");
    const Entity* record = slots[number];
    if (record == nullptr) continue;
    if (record->type() == type) return number;
    for (const std::uint32_t reference : record->references()) queue.push_back(reference);
  }
  return 0;
}

/// What `action` returns, as text, or the text of its out-of-range exception.
template <class Action>
std::string outcome_of(Action action) {
  try {
    return std::to_string(action());
  } catch (const std::out_of_range& error) {
    return std::string("out of range: ") + error.what();
  }
}

}  // namespace Kessel::test
