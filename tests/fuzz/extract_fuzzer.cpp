// Each of the first products of any input, taken out of it.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>
#include <vector>

#include "fuzz/expect.h"
#include "instances/loader.h"
#include "kessel/errors.h"
#include "kessel/extract.h"
#include "products/products.h"
#include "support/scratch_folder.h"

namespace Kessel::test {
namespace {

namespace fs = std::filesystem;

constexpr std::uint64_t MEMORY = 256 << 20;
constexpr std::size_t MOST_PARTS = 5;

/// A file with the products in it.
struct ReadFile {
  explicit ReadFile(const fs::path& path) {
    Options options;
    options.memory_limit = MEMORY;
    std::ifstream in(path, std::ios::in | std::ios::binary);
    load_instances(in, instances, options);
    all = find_products(instances);
  }

  /// "id|name" of each product, sorted.
  std::vector<std::string> names(const std::vector<bool>& some) const {
    std::vector<std::string> names;
    for (ProductId product = 0; product < all.products.size(); ++product) {
      if (some[product]) {
        names.push_back(all.products[product].id + "|" + all.products[product].name);
      }
    }
    std::sort(names.begin(), names.end());
    return names;
  }

  /// `part` and all below it, as components or by mapped items.
  std::vector<bool> below(ProductId part) const {
    std::vector<bool> is_below(all.products.size());
    is_below[part] = true;
    for (bool grows = true; grows;) {
      grows = false;
      const auto add = [&](ProductId upper, ProductId lower) {
        if (!is_below[upper] || is_below[lower]) return;
        is_below[lower] = true;
        grows = true;
      };
      for (const Usage& usage : all.usages) add(usage.assembly, usage.component);
      for (ProductId product = 0; product < all.products.size(); ++product) {
        for (const MappedProduct& one : all.products[product].mapped) add(product, one.product);
      }
    }
    return is_below;
  }

  Instances instances;
  Products all;
};

ExtractOptions choices() {
  ExtractOptions options;
  options.memory_limit = MEMORY;
  options.replace = true;
  return options;
}

void check_part(const ReadFile& in, ProductId part) {
  const std::string number =
      "#" + std::to_string(in.instances.number(in.all.products[part].definition));
  const ExtractedFile file = extract("in.stp", number, "out.stp", choices());
  const ReadFile out("out.stp");
  expect(fs::file_size("out.stp") == file.bytes, "the size is as it says");
  expect(out.instances.size() == file.records, "the records are counted");
  expect(out.instances.missing_references() <= in.instances.missing_references(),
         "no reference leads nowhere that did not before");
  const bool is_whole = in.all.tops.size() == 1 && in.all.tops.front() == part;
  if (is_whole) return;
  const std::vector<std::string> allowed = in.names(in.below(part));
  const std::vector<std::string> there =
      out.names(std::vector<bool>(out.all.products.size(), true));
  expect(std::includes(allowed.begin(), allowed.end(), there.begin(), there.end()),
         "no other product is in it");
}

void check_bodies(const ReadFile& in, ProductId part) {
  const std::string number =
      "#" + std::to_string(in.instances.number(in.all.products[part].definition));
  ExtractOptions options = choices();
  options.bodies = true;
  try {
    for (const ExtractedFile& file : extract_each("in.stp", {number}, "bodies", options)) {
      const ReadFile out(file.path);
      expect(out.instances.size() == file.records, "a body's records are counted");
      expect(file.body != 0, "a body has its number");
    }
  } catch (const PartError& error) {
    expect(error.candidates().size() == 1, "only bodies can be missing");
  }
  fs::remove_all("bodies");
}

}  // namespace
}  // namespace Kessel::test

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace Kessel;
  using namespace Kessel::test;
  static const ScratchFolder folder;
  folder.write("in.stp", {reinterpret_cast<const char*>(data), size});
  try {
    const std::size_t parts = read_parts("in.stp", choices()).size();
    const ReadFile in("in.stp");
    expect(in.all.products.size() == parts, "what can be named is what there is");
    for (std::size_t part = 0; part < std::min(parts, MOST_PARTS); ++part) {
      check_part(in, static_cast<ProductId>(part));
      check_bodies(in, static_cast<ProductId>(part));
    }
  } catch (const InputError& error) {
    expect(!std::string_view(error.what()).empty(), "a refusal has a sentence");
  }
  return 0;
}
