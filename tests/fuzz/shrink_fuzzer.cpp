// Any bytes as a file, shrunk: it says the same, and cannot be shrunk again.
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>

#include "fuzz/expect.h"
#include "kessel/diff.h"
#include "kessel/errors.h"
#include "kessel/shrink.h"
#include "support/scratch_folder.h"

namespace Kessel::test {
namespace {

constexpr std::uint64_t MEMORY = 256 << 20;

ShrinkOptions choices() {
  ShrinkOptions options;
  options.memory_limit = MEMORY;
  options.replace = true;
  return options;
}

void check_shrunk(ShrinkOptions options) {
  const Shrunk shrunk = shrink("in.stp", "out.stp", options);
  expect(std::filesystem::file_size("out.stp") == shrunk.bytes_after, "the size is as it says");
  expect(shrunk.records_after + shrunk.unreachable <= shrunk.records_before, "none is new");
  Options reading;
  reading.memory_limit = MEMORY;
  const Difference difference = diff("in.stp", "out.stp", reading);
  expect(difference.records_in_b <= shrunk.records_after, "the records are counted");
  if (!options.drop_unreachable) {
    expect(difference.is_same || !difference.is_certain, "the result says the same");
  }
  const Shrunk again = shrink("out.stp", "again.stp", options);
  expect(again.records_after == again.records_before, "nothing is left to become one");
  if (options.renumber) return;
  expect(read_file("again.stp") == read_file("out.stp"), "a shrunk file stays as it is");
}

}  // namespace
}  // namespace Kessel::test

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace Kessel;
  using namespace Kessel::test;
  static const ScratchFolder folder;
  folder.write("in.stp", {reinterpret_cast<const char*>(data), size});
  for (int flags = 0; flags < 4; ++flags) {
    ShrinkOptions options = choices();
    options.renumber = (flags & 1) != 0;
    options.drop_unreachable = (flags & 2) != 0;
    try {
      check_shrunk(options);
    } catch (const InputError& error) {
      expect(!std::string_view(error.what()).empty(), "a refusal has a sentence");
    }
  }
  return 0;
}
