#include "products/file_names.h"

#include <map>
#include <set>
#include <string>

#include "encoding/utf8_path.h"
#include "naming/file_stem.h"
#include "naming/unique_names.h"

namespace Kessel {

namespace {

constexpr const char* ROOT = "Root";

/// The number that a product is known by: that of its PRODUCT, or else of its definition.
std::string number_of(const Instances& instances, const Product& product) {
  const Index record = product.product != NO_RECORD ? product.product : product.definition;
  return std::to_string(instances.number(record));
}

/// Gives out names after numbers.
class RecordNames {
 public:
  explicit RecordNames(const Instances& instances) : instances_(instances) {}

  std::string take(const std::string& stem) {
    for (unsigned& count = taken_[stem];;) {
      std::string name = stem + (++count == 1 ? "" : "_(" + std::to_string(count) + ")_") +
                         std::string(FILE_EXTENSION);
      if (!reserved_.contains(caseless_name(name))) return name;
    }
  }
  std::string take(const Product& product) {
    return take("#" + number_of(instances_, product) + "_part");
  }

  void reserve(const std::string& name) { reserved_.insert(caseless_name(name)); }

 private:
  const Instances& instances_;
  std::map<std::string, unsigned> taken_;
  std::set<std::string> reserved_;
};

/// What a product is called, for a file.
std::string stem_of(const Instances& instances, const Product& product, FileNameSet set) {
  std::string stem = product_file_stem(product.name, set);
  if (stem.empty()) stem = product_file_stem(product.id, set);
  return stem.empty() ? "part " + number_of(instances, product) : stem;
}

}  // namespace

std::vector<std::filesystem::path> file_names(const Instances& instances, const Products& all,
                                              std::span<const ProductId> products, NameStyle style,
                                              const std::vector<std::string>& referred) {
  const FileNameSet set = style == NameStyle::product ? FileNameSet::ascii : FileNameSet::unicode;
  RecordNames record_names(instances);
  UniqueNames unique_names;
  for (const std::string& name : referred) {
    record_names.reserve(name);
    unique_names.reserve(name);
  }
  std::vector<std::filesystem::path> names;
  names.reserve(products.size());
  for (const ProductId id : products) {
    std::string name;
    if (style == NameStyle::record) {
      name = id == NO_PRODUCT ? record_names.take(ROOT) : record_names.take(all.products[id]);
    } else {
      name = unique_names.take(id == NO_PRODUCT ? ROOT : stem_of(instances, all.products[id], set));
    }
    names.push_back(path_of_utf8(name));
  }
  return names;
}

}  // namespace Kessel
