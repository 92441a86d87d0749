// Exchange strings and UTF-8.
#include <benchmark/benchmark.h>

#include <cstdint>
#include <string>

#include "kessel/encoding.h"

namespace Kessel::bench {

namespace {

/// One conversion of one text, over and over.
template <auto Convert>
void convert(benchmark::State& state, const std::string& text) {
  for (auto _ : state) {
    std::string converted = Convert(text);
    benchmark::DoNotOptimize(converted.data());
  }
  state.SetItemsProcessed(state.iterations());
  state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(text.size()));
}

void decode(benchmark::State& state, const std::string& text) {
  convert<&decode_step_to_utf8>(state, text);
}

void encode(benchmark::State& state, const std::string& text) {
  convert<&encode_utf8_to_step>(state, text);
}

const std::string ASCII = "Desk lamp, base plate 120 x 80";
const std::string OTHER_SCRIPT =
    "\xD0\x9D\xD0\xB0\xD1\x81\xD1\x82\xD0\xBE\xD0\xBB\xD1\x8C\xD0\xBD\xD0\xB0\xD1\x8F";
const std::string DIRECTIVES =
    "Lamp \\X2\\041D04300441\\X0\\ and \\X2\\0442043E043B\\X0\\, it''s \\X\\41";

BENCHMARK_CAPTURE(decode, ascii, ASCII)->Name("decode_step_to_utf8/ascii");
BENCHMARK_CAPTURE(decode, directives, DIRECTIVES)->Name("decode_step_to_utf8/directives");
BENCHMARK_CAPTURE(encode, ascii, ASCII)->Name("encode_utf8_to_step/ascii");
BENCHMARK_CAPTURE(encode, other_script, OTHER_SCRIPT)->Name("encode_utf8_to_step/other_script");

}  // namespace

}  // namespace Kessel::bench
