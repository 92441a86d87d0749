// Numbers in text.
#include <benchmark/benchmark.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "generator/random.h"
#include "reader/text.h"

namespace Kessel::bench {

namespace {

/// Numbers of one to seven digits, with the lengths that instance numbers of a file of some million
/// records have.
const std::vector<std::uint32_t>& numbers() {
  static const std::vector<std::uint32_t> list = [] {
    Random random(1);
    std::vector<std::uint32_t> made;
    for (int i = 0; i < 10'000; ++i) made.push_back(1 + random.below(2'600'000));
    return made;
  }();
  return list;
}

/// The numbers in decimal, one comma behind each.
const std::string& digits() {
  static const std::string text = [] {
    std::string made;
    for (const std::uint32_t number : numbers()) made += std::to_string(number) + ",";
    return made;
  }();
  return text;
}

void set_counters(benchmark::State& state) {
  const std::int64_t iterations = state.iterations();
  state.SetItemsProcessed(iterations * static_cast<std::int64_t>(numbers().size()));
  state.SetBytesProcessed(iterations * static_cast<std::int64_t>(digits().size()));
}

template <auto Read>
void read_numbers(benchmark::State& state) {
  const std::string& text = digits();
  for (auto _ : state) {
    std::uint64_t sum = 0;
    const char* const end = text.data() + text.size();
    for (const char* p = text.data(); p != end; ++p) sum += Read(p, end);
    benchmark::DoNotOptimize(sum);
  }
  set_counters(state);
}
BENCHMARK_TEMPLATE(read_numbers, &read_number)->Name("read_number");
BENCHMARK_TEMPLATE(read_numbers, &read_number_plainly)->Name("read_number/plainly");

template <auto Write>
void write_numbers(benchmark::State& state) {
  std::vector<char> out(numbers().size() * Exchange::NUMBER_ROOM);
  for (auto _ : state) {
    char* p = out.data();
    for (const std::uint32_t number : numbers()) p = Write(p, number);
    benchmark::DoNotOptimize(p);
    benchmark::ClobberMemory();
  }
  set_counters(state);
}
BENCHMARK_TEMPLATE(write_numbers, &Exchange::write_number)->Name("write_number");
BENCHMARK_TEMPLATE(write_numbers, &Exchange::write_number_plainly)->Name("write_number/plainly");

}  // namespace

}  // namespace Kessel::bench
