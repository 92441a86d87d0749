// Reading: cutting records, finding references, classifying and storing.
#include <benchmark/benchmark.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include "micro/sample.h"
#include "model/store.h"
#include "reader/classification.h"
#include "reader/record_cutter.h"
#include "reader/record_loader.h"
#include "reader/references.h"

namespace Kessel::bench {

namespace {

/// Cuts the sample from front to back with one of the cutter's two functions.
template <auto NextRecord>
void cut_records(benchmark::State& state) {
  std::istringstream in(sample_text());
  std::int64_t records = 0;
  for (auto _ : state) {
    in.clear();
    in.seekg(0);
    RecordCutter cutter(in);
    for (;;) {
      const std::string_view record = (cutter.*NextRecord)();
      benchmark::DoNotOptimize(record.data());
      if (record.empty()) break;
      ++records;
    }
  }
  state.SetItemsProcessed(records);
  state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(sample_text().size()));
}
BENCHMARK_TEMPLATE(cut_records, &RecordCutter::read_record)->Name("cut_records");
BENCHMARK_TEMPLATE(cut_records, &RecordCutter::read_record_plainly)->Name("cut_records/plainly");

/// The same with the standard library, without joining or trimming anything.
void cut_with_getline(benchmark::State& state) {
  std::istringstream in(sample_text());
  std::int64_t records = 0;
  std::string piece;
  for (auto _ : state) {
    in.clear();
    in.seekg(0);
    while (std::getline(in, piece, ';')) {
      benchmark::DoNotOptimize(piece.data());
      ++records;
    }
  }
  state.SetItemsProcessed(records);
  state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(sample_text().size()));
}
BENCHMARK(cut_with_getline)->Name("cut_records/getline");

struct Fast {
  template <class Visit>
  void operator()(std::string_view text, Visit visit) const {
    for_each_reference(text, visit);
  }
};
struct Plain {
  template <class Visit>
  void operator()(std::string_view text, Visit visit) const {
    for_each_reference_plainly(text, visit);
  }
};

template <class ForEach>
void find_all_references(benchmark::State& state) {
  const auto& records = sample_records();
  std::int64_t references = 0;
  for (auto _ : state) {
    std::uint64_t sum = 0;
    for (const std::string_view record : records) {
      ForEach()(record, [&](std::uint32_t number, const char*, const char*) {
        sum += number;
        ++references;
      });
    }
    benchmark::DoNotOptimize(sum);
  }
  state.SetItemsProcessed(references);
  state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(sample_bytes()));
}
BENCHMARK_TEMPLATE(find_all_references, Fast)->Name("for_each_reference");
BENCHMARK_TEMPLATE(find_all_references, Plain)->Name("for_each_reference/plainly");

void set_record_counters(benchmark::State& state) {
  const std::int64_t iterations = state.iterations();
  state.SetItemsProcessed(iterations * static_cast<std::int64_t>(sample_records().size()));
  state.SetBytesProcessed(iterations * static_cast<std::int64_t>(sample_bytes()));
}

/// Finds every record's type and looks it up in the tables: what the loader saves by its cache.
void classify_records(benchmark::State& state) {
  const auto& records = sample_records();
  for (auto _ : state) {
    for (const std::string_view record : records) {
      benchmark::DoNotOptimize(classify(record_type(0, record)));
    }
  }
  set_record_counters(state);
}
BENCHMARK(classify_records)->Name("classify");

/// Fills a store with the loader: references, type and classification by cache, record.
void load_records(benchmark::State& state) {
  for (auto _ : state) {
    std::unique_ptr<Store> file = load_sample();
    benchmark::DoNotOptimize(file->entities.size());
    state.PauseTiming();
    file.reset();
    state.ResumeTiming();
  }
  set_record_counters(state);
}
BENCHMARK(load_records)->Name("load_records");

/// One record into the store through the public interface, classified by the tables.
void load_plainly(Store& file, std::string_view record, std::vector<std::uint32_t>& numbers) {
  numbers.clear();
  for_each_reference_plainly(
      record, [&](std::uint32_t number, const char*, const char*) { numbers.push_back(number); });
  const std::string_view type = record_type(0, record);
  if (numbers.empty() || type.empty()) return;
  Entity* entity = nullptr;
  switch (classify(type)) {
    case Keep::nothing:
      entity = file.create_entity(numbers.front());
      break;
    case Keep::type:
      entity = file.create_entity(numbers.front(), type);
      break;
    case Keep::type_and_attribute:
      entity = file.create_entity(numbers.front(), type, first_string(record));
      break;
  }
  for (std::size_t i = 1; i < numbers.size(); ++i) entity->add_reference(numbers[i]);
}

void load_records_plainly(benchmark::State& state) {
  const auto& records = sample_records();
  std::vector<std::uint32_t> numbers;
  for (auto _ : state) {
    auto file = std::make_unique<Store>("");
    for (const std::string_view record : records) load_plainly(*file, record, numbers);
    benchmark::DoNotOptimize(file->entities.size());
    state.PauseTiming();
    file.reset();
    state.ResumeTiming();
  }
  set_record_counters(state);
}
BENCHMARK(load_records_plainly)->Name("load_records/plainly");

}  // namespace

}  // namespace Kessel::bench
