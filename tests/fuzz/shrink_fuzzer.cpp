// Any bytes as a file, shrunk: it says the same, and cannot be shrunk again.
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>

#include "fuzz/expect.h"
#include "instances/loader.h"
#include "kessel/diff.h"
#include "kessel/errors.h"
#include "kessel/shrink.h"
#include "products/products.h"
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

struct ReadFile {
  explicit ReadFile(const char* path) {
    Options options;
    options.memory_limit = MEMORY;
    std::ifstream in(path, std::ios::in | std::ios::binary);
    load_instances(in, instances, options);
    all = find_products(instances);
  }
  Instances instances;
  Products all;
};

/// The structure stays as it is, whatever becomes one or goes.
void check_products(const ShrinkOptions& options, const Shrunk& shrunk) {
  const ReadFile before("in.stp");
  const ReadFile after("out.stp");
  expect(before.instances.size() == shrunk.records_before, "the records before are counted");
  expect(after.instances.size() == shrunk.records_after, "the records after are counted");
  const std::uint64_t missing_before = before.instances.missing_references();
  const std::uint64_t missing_after = after.instances.missing_references();
  expect(missing_after <= missing_before &&
             (options.drop_unreachable || missing_after == missing_before),
         "references lead where they led");
  expect(before.all.products.size() == after.all.products.size(), "no product goes");
  expect(before.all.usages.size() == after.all.usages.size(), "no usage goes");
  for (ProductId product = 0; product < before.all.products.size(); ++product) {
    const Product& one = before.all.products[product];
    const Product& same = after.all.products[product];
    expect(one.id == same.id && one.name == same.name && one.version == same.version &&
               one.has_bodies == same.has_bodies && one.links.size() == same.links.size(),
           "a product stays as it is");
  }
}

/// Numbering anew changes numbers only.
void check_numbering(ShrinkOptions options, const Shrunk& shrunk) {
  if (options.renumber) {
    const ReadFile out("out.stp");
    for (Index record = 0; record < out.instances.size(); ++record) {
      expect(out.instances.number(record) <= out.instances.size(), "numbers are from 1 on");
    }
    return;
  }
  options.renumber = true;
  const Shrunk numbered = shrink("in.stp", "numbered.stp", options);
  expect(
      numbered.records_after == shrunk.records_after && numbered.unreachable == shrunk.unreachable,
      "numbered anew, it has as many records");
  Options reading;
  reading.memory_limit = MEMORY;
  const Difference difference = diff("out.stp", "numbered.stp", reading);
  expect(difference.is_same || !difference.is_certain, "numbered anew, it says the same");
}

void check_shrunk(ShrinkOptions options) {
  const Shrunk shrunk = shrink("in.stp", "out.stp", options);
  expect(std::filesystem::file_size("out.stp") == shrunk.bytes_after, "the size is as it says");
  expect(shrunk.records_after + shrunk.unreachable <= shrunk.records_before, "none is new");
  expect(options.drop_unreachable || shrunk.unreachable == 0, "what nothing leads to stays");
  Options reading;
  reading.memory_limit = MEMORY;
  const Difference difference = diff("in.stp", "out.stp", reading);
  expect(difference.records_in_b <= shrunk.records_after, "the records are counted");
  if (!options.drop_unreachable) {
    expect(difference.is_same || !difference.is_certain, "the result says the same");
  }
  const Shrunk again = shrink("out.stp", "again.stp", options);
  expect(again.records_after == again.records_before, "nothing is left to become one");
  expect(again.unreachable == 0, "nothing is left that nothing leads to");
  check_products(options, shrunk);
  check_numbering(options, shrunk);
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
