// Rewriting records for a part's file.
#include <benchmark/benchmark.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "kessel/part.h"
#include "micro/sample.h"
#include "writer/rewrite.h"

namespace Kessel::bench {

namespace {

/// The sample, of which one part holds every record.
class HeldSample {
 public:
  HeldSample() : part_("PRODUCT_DEFINITION"), file_(load_sample()) {
    file_->entities.for_each_in_use([this](std::size_t, Entity* entity) {
      if (entity == nullptr) return;
      entity->part_numbers.add(&part_, ++part_.last_instance_number);
    });
  }

  Part* part() { return &part_; }
  Slots slots() const { return file_->entities; }

 private:
  Part part_;
  std::unique_ptr<Store> file_;
};

/// Puts the text that the library writes into a string.
void rewrite_in_place(std::string_view text, const std::vector<TextReference>& references,
                      Slots slots, Part* part, std::string& out) {
  rewrite_references(text, references, slots, part, out);
}

/// The plain way for records whose references are all held: replaces number by number in a copy.
void rewrite_by_replacing(std::string_view text, const std::vector<TextReference>& references,
                          Slots slots, Part* part, std::string& out) {
  std::string copy(text);
  for (std::size_t i = references.size(); i > 0; --i) {
    const TextReference& reference = references[i - 1];
    const std::uint32_t number = slot_at(slots, reference.number)->part_numbers.at(part);
    copy.replace(reference.begin, reference.end - reference.begin, std::to_string(number));
  }
  out += copy;
}

template <auto Rewrite>
void rewrite_records(benchmark::State& state) {
  HeldSample sample;
  std::vector<TextReference> references;
  std::string out;
  out.reserve(sample_bytes() * 2);
  for (auto _ : state) {
    out.clear();
    for (const std::string_view record : sample_records()) {
      find_references(record, references);
      Rewrite(record, references, sample.slots(), sample.part(), out);
    }
    benchmark::DoNotOptimize(out.data());
    benchmark::ClobberMemory();
  }
  const std::int64_t iterations = state.iterations();
  state.SetItemsProcessed(iterations * static_cast<std::int64_t>(sample_records().size()));
  state.SetBytesProcessed(iterations * static_cast<std::int64_t>(sample_bytes()));
}
BENCHMARK_TEMPLATE(rewrite_records, &rewrite_in_place)->Name("rewrite_references");
BENCHMARK_TEMPLATE(rewrite_records, &rewrite_by_replacing)->Name("rewrite_references/plainly");

}  // namespace

}  // namespace Kessel::bench
