// Two files from one input, compared: each with itself, and one with the other.
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "fuzz/expect.h"
#include "kessel/diff.h"
#include "kessel/errors.h"
#include "support/scratch_folder.h"

namespace Kessel::test {
namespace {

constexpr std::uint64_t MEMORY = 256 << 20;

/// Ends the first file and begins the second.
constexpr std::string_view BETWEEN = "\n---\n";

bool says_where(const Difference& difference) {
  for (const ProductDifference& product : difference.products) {
    for (const TypeDifference& type : product.types) {
      if (!type.only_in_a.empty() || !type.only_in_b.empty() || !type.changed.empty()) return true;
    }
  }
  return false;
}

/// Compares two files, which may be refused with a sentence. Returns false then.
bool compare(const char* a, const char* b, Difference& difference) {
  Options options;
  options.memory_limit = MEMORY;
  try {
    difference = diff(a, b, options);
    return true;
  } catch (const InputError& error) {
    expect(*error.what() != '\0', "a refusal is a sentence");
    const std::string& file = error.finding().file;
    expect(file == a || file == b, "a refusal names a file");
    return false;
  }
}

void check_itself(const char* name) {
  Difference difference;
  if (!compare(name, name, difference)) return;
  expect(difference.is_same, "a file says the same as itself");
  expect(difference.products.empty(), "nothing is listed then");
}

void check_pair() {
  Difference forward;
  Difference backward;
  if (!compare("a.stp", "b.stp", forward)) return;
  expect(compare("b.stp", "a.stp", backward), "both directions can be compared");
  expect(forward.is_same == backward.is_same || !forward.is_certain || !backward.is_certain,
         "the order of the files does not matter");
  expect(forward.records_in_a == backward.records_in_b, "the records are counted");
  expect(!(forward.is_same && says_where(forward)), "what is the same has no differences");
  const bool other_schema = forward.schemas_in_a != forward.schemas_in_b;
  expect(forward.is_same || other_schema || says_where(forward), "a difference is listed");
}

}  // namespace
}  // namespace Kessel::test

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace Kessel::test;
  static const ScratchFolder folder;
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  const std::size_t between = text.find(BETWEEN);
  const std::string_view first = text.substr(0, between);
  const std::string_view second =
      between == std::string_view::npos ? first : text.substr(between + BETWEEN.size());
  folder.write("a.stp", first);
  folder.write("b.stp", second);
  check_itself("a.stp");
  check_itself("b.stp");
  check_pair();
  return 0;
}
