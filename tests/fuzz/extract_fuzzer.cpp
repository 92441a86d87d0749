// Each of the first products of any input, taken out of it: with all that is said of it, and
// nothing of others.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "extract/extract_faults.h"
#include "fuzz/expect.h"
#include "instances/loader.h"
#include "kessel/check.h"
#include "kessel/diff.h"
#include "kessel/errors.h"
#include "kessel/extract.h"
#include "placement/check_placement.h"
#include "placement/placement.h"
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

  /// Whether a definition, usage or shape of `part` or of a product below it leads to another
  /// product's definition, as no schema has it. Then that comes with it.
  bool leads_elsewhere(ProductId part) const {
    const std::vector<bool> is_below = below(part);
    std::vector<Index> open;
    for (ProductId product = 0; product < all.products.size(); ++product) {
      if (!is_below[product]) continue;
      const Product& one = all.products[product];
      for (const auto* list : {&one.shapes, &one.representations, &one.tied, &one.ties}) {
        open.insert(open.end(), list->begin(), list->end());
      }
      for (const ShapeLink& link : one.links) open.push_back(link.link);
      open.push_back(one.definition);
    }
    for (const Usage& usage : all.usages) {
      if (!is_below[usage.assembly]) continue;
      open.push_back(usage.record);
      for (const auto* list : {&usage.shapes, &usage.placements, &usage.relationships}) {
        open.insert(open.end(), list->begin(), list->end());
      }
    }
    return lead_elsewhere(std::move(open), is_below);
  }

  /// Whether what a link calls a product's shape is no representation, as no schema has it.
  bool has_odd_shapes() const {
    return std::any_of(all.products.begin(), all.products.end(), [&](const Product& product) {
      return !std::all_of(product.representations.begin(), product.representations.end(),
                          [&](Index shape) { return is_shape_representation(instances, shape); });
    });
  }

  Instances instances;
  Products all;

 private:
  bool lead_elsewhere(std::vector<Index> open, const std::vector<bool>& is_below) const {
    std::vector<bool> is_known(instances.size());
    while (!open.empty()) {
      const Index record = open.back();
      open.pop_back();
      if (is_known[record]) continue;
      is_known[record] = true;
      const ProductId product = all.find(record);
      if (product != NO_PRODUCT && !is_below[product]) return true;
      for (const Reference reference : instances.references(record)) {
        if (reference.record() != NO_RECORD) open.push_back(reference.record());
      }
    }
    return false;
  }
};

ExtractOptions choices() {
  ExtractOptions options;
  options.memory_limit = MEMORY;
  options.replace = true;
  return options;
}

Options reading() {
  Options options;
  options.memory_limit = MEMORY;
  return options;
}

/// `more` beside what `less` says: nothing lacks.
void expect_nothing_lacks(const fs::path& less, const fs::path& more, const char* property) {
  const Difference difference = diff(less, more, reading());
  expect(difference.is_same || !difference.is_certain, property);
}

/// Taken out of what was taken out, it says the same.
void check_again() {
  const ReadFile out("out.stp");
  if (out.all.tops.size() != 1) return;
  const std::string number =
      "#" + std::to_string(out.instances.number(out.all.products[out.all.tops.front()].definition));
  const ExtractedFile again = extract("out.stp", number, "again.stp", choices());
  expect(again.records == out.instances.size(), "taken out twice, it has as many records");
  expect_nothing_lacks("out.stp", "again.stp", "taken out twice, it says the same");
}

void check_placing(const ReadFile& in, ProductId part) {
  const Placement placement = place_records(in.instances, in.all, plan_extraction(in.all, part));
  for (const std::string& sentence : check_placement(in.instances, in.all, placement)) {
    expect(false, sentence.c_str());
  }
}

void check_part(const ReadFile& in, ProductId part) {
  check_placing(in, part);
  const std::string number =
      "#" + std::to_string(in.instances.number(in.all.products[part].definition));
  const ExtractedFile file = extract("in.stp", number, "out.stp", choices());
  const ReadFile out("out.stp");
  expect(fs::file_size("out.stp") == file.bytes, "the size is as it says");
  expect(out.instances.size() == file.records, "the records are counted");
  expect(out.instances.missing_references() <= in.instances.missing_references(),
         "no reference leads nowhere that did not before");
  check_again();
  const bool is_whole = in.all.tops.size() == 1 && in.all.tops.front() == part;
  if (is_whole) return expect_nothing_lacks("in.stp", "out.stp", "the whole is all there is");
  if (in.leads_elsewhere(part)) return;
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
    for (ProductId part = 0; part < parts; ++part) {
      if (in.leads_elsewhere(part)) return 0;
    }
    if (parts > MOST_PARTS || in.has_odd_shapes() || !check("in.stp", reading()).empty()) return 0;
    for (const std::string& fault : extract_faults("in.stp", false, false)) {
      expect(false, fault.c_str());
    }
  } catch (const InputError& error) {
    expect(!std::string_view(error.what()).empty(), "a refusal has a sentence");
  }
  return 0;
}
