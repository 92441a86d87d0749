// Times each fast path beside its plain way, on the same input in the same run.
//
//     micro [--benchmark_filter=REGEX] ...
//
// The benchmarks stand in micro/, by what they time.
#include <benchmark/benchmark.h>

BENCHMARK_MAIN();
