#include "splitter/file_names.h"

#include <unordered_map>

#include "naming/file_stem.h"
#include "naming/unique_names.h"

namespace Kessel {

namespace {

constexpr std::string_view GENERATED_ROOT = "Root";

/// Stems after records: "#12_part", and for further definitions of one product "#12_part_(2)_".
class RecordStems {
 public:
  explicit RecordStems(const Instances& instances) : instances_(instances) {}

  std::string take(const Product& product) {
    const Index record = product.product != NO_RECORD ? product.product : product.definition;
    std::string stem = "#" + std::to_string(instances_.number(record)) + "_part";
    const std::uint32_t count = ++taken_[record];
    if (count > 1) stem += "_(" + std::to_string(count) + ")_";
    return stem;
  }

 private:
  const Instances& instances_;
  std::unordered_map<Index, std::uint32_t> taken_;
};

/// The files by product: those of products in their order, then a root that none has.
std::vector<FileId> naming_order(const Placement& placement) {
  std::vector<FileId> order;
  for (ProductId product = 0; product < placement.file_of.size(); ++product) {
    const FileId file = placement.file_of[product];
    if (placement.files[file].top == product) order.push_back(file);
  }
  if (placement.files.front().top == NO_PRODUCT) order.push_back(0);
  return order;
}

}  // namespace

std::vector<std::string> file_names(const Instances& instances, const Products& products,
                                    const Placement& placement, NameStyle style) {
  std::vector<std::string> names(placement.files.size());
  RecordStems records(instances);
  UniqueNames unique;
  const FileNameSet set =
      style == NameStyle::product_unicode ? FileNameSet::unicode : FileNameSet::ascii;
  for (const FileId file : naming_order(placement)) {
    const ProductId top = placement.files[file].top;
    std::string stem;
    if (top == NO_PRODUCT) {
      stem = GENERATED_ROOT;
    } else {
      const std::string record = records.take(products.products[top]);
      if (style != NameStyle::record) stem = file_stem(products.products[top].name, set);
      if (stem.empty()) stem = record;
    }
    names[file] =
        style == NameStyle::record ? stem + std::string(FILE_EXTENSION) : unique.take(stem);
  }
  return names;
}

}  // namespace Kessel
