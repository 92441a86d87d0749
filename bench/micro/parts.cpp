// Which parts hold a record: the map of a record, and the walk that spreads a part.
#include <benchmark/benchmark.h>

#include <cstddef>
#include <cstdint>
#include <deque>
#include <map>
#include <memory>
#include <vector>

#include "association/rules.h"
#include "kessel/number_map.h"
#include "kessel/part.h"
#include "micro/sample.h"
#include "model/slots.h"

namespace Kessel::bench {

namespace {

/// A key of the maps.
struct Owner {
  std::uint32_t list_position = 0;
  std::uint32_t last_number = 0;
};

/// Even owners for the source and, unless there is only one, every third for the target: they have
/// some in common.
struct Keys {
  explicit Keys(std::size_t count) : owners(3 * count) {
    for (std::size_t i = 0; i < owners.size(); ++i) {
      owners[i].list_position = static_cast<std::uint32_t>(i);
    }
    for (std::size_t i = 0; i < count; ++i) source.push_back(&owners[2 * i]);
    for (std::size_t i = 0; i < count && count > 1; ++i) target.push_back(&owners[3 * i]);
  }
  std::vector<Owner> owners;
  std::vector<Owner*> source;
  std::vector<Owner*> target;
};

/// Builds the target and gives it the source's keys, with the record's own map.
void adopt_into_number_map(benchmark::State& state) {
  const Keys keys(static_cast<std::size_t>(state.range(0)));
  NumberMap<Owner> source;
  for (Owner* owner : keys.source) source.emplace(owner, 1);
  for (auto _ : state) {
    NumberMap<Owner> target;
    for (Owner* owner : keys.target) target.emplace(owner, 1);
    const bool added = target.adopt(
        source, [](const Owner*) { return true; },
        [](Owner* owner) { return ++owner->last_number; });
    benchmark::DoNotOptimize(added);
    benchmark::DoNotOptimize(target);
  }
  state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(adopt_into_number_map)->Name("adopt")->Arg(1)->Arg(2)->Arg(50)->Arg(2000);

/// The same with an ordered map of the standard library, key by key.
void adopt_into_std_map(benchmark::State& state) {
  const Keys keys(static_cast<std::size_t>(state.range(0)));
  std::map<Owner*, std::uint32_t> source;
  for (Owner* owner : keys.source) source.emplace(owner, 1);
  for (auto _ : state) {
    std::map<Owner*, std::uint32_t> target;
    for (Owner* owner : keys.target) target.emplace(owner, 1);
    bool added = false;
    for (const auto& [owner, number] : source) {
      if (target.find(owner) != target.end()) continue;
      target.emplace(owner, ++owner->last_number);
      added = true;
    }
    benchmark::DoNotOptimize(added);
    benchmark::DoNotOptimize(target);
  }
  state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(adopt_into_std_map)->Name("adopt/std_map")->Arg(1)->Arg(2)->Arg(50)->Arg(2000);

/// The walk without a fast path: a queue, and the general rule for each instance.
bool propagate_down_plainly(const Store& file, const Entity* source, Entity* start,
                            KindFilter filter) {
  std::deque<Entity*> queue = {start};
  bool gained = false;
  while (!queue.empty()) {
    Entity* entity = queue.front();
    queue.pop_front();
    if (!adopt_parts(source, entity, filter)) continue;
    gained = true;
    for (const std::uint32_t reference : entity->get_references()) {
      if (Entity* below = slot_at(file.entities, reference)) queue.push_back(below);
    }
  }
  return gained;
}

/// Takes all parts from all records; returns how many records held one.
std::int64_t take_parts_back(const Store& file) {
  std::int64_t held = 0;
  file.entities.for_each_in_use([&](std::size_t, Entity* entity) {
    if (entity == nullptr || entity->part_numbers.empty()) return;
    ++held;
    entity->part_numbers = PartNumbers();
  });
  return held;
}

/// Spreads parts from every shape representation to all that is below it.
template <auto Propagate>
void spread_parts(benchmark::State& state) {
  const std::unique_ptr<Store> file = load_sample();
  std::deque<Part> parts;
  Entity source;
  for (std::int64_t i = 0; i < state.range(0); ++i) {
    Part& part = parts.emplace_back("PRODUCT_DEFINITION");
    part.list_position = static_cast<std::uint32_t>(i);
    source.part_numbers.add(&part, 1);
  }
  const auto starts = file->get("ADVANCED_BREP_SHAPE_REPRESENTATION");
  std::int64_t gained = 0;
  for (auto _ : state) {
    for (Entity* start : starts) {
      benchmark::DoNotOptimize(Propagate(*file, &source, start, ALL_PARTS));
    }
    state.PauseTiming();
    gained += take_parts_back(*file);
    state.ResumeTiming();
  }
  if (gained == 0) state.SkipWithError("no record gained a part");
  state.SetItemsProcessed(gained);
}
BENCHMARK_TEMPLATE(spread_parts, &propagate_down)->Name("propagate_down")->Arg(1)->Arg(2);
BENCHMARK_TEMPLATE(spread_parts, &propagate_down_plainly)
    ->Name("propagate_down/plainly")
    ->Arg(1)
    ->Arg(2);

}  // namespace

}  // namespace Kessel::bench
