#include "splitter/placed_names.h"

#include "encoding/utf8_path.h"
#include "naming/file_stem.h"
#include "products/file_names.h"

namespace Kessel {

std::vector<std::filesystem::path> placed_names(const Instances& instances,
                                                const Products& products,
                                                const Placement& placement, NameStyle style,
                                                const std::vector<std::string>& referred) {
  // Names are given out in the order of the products, a root that none has last.
  std::vector<ProductId> tops;
  std::vector<FileId> files;
  for (ProductId product = 0; product < placement.file_of.size(); ++product) {
    const FileId file = placement.file_of[product];
    if (placement.files[file].top != product) continue;
    tops.push_back(product);
    files.push_back(file);
  }
  if (placement.files.front().top == NO_PRODUCT) {
    tops.push_back(NO_PRODUCT);
    files.push_back(0);
  }
  const std::vector<std::filesystem::path> given =
      file_names(instances, products, tops, style, referred);
  std::vector<std::filesystem::path> names(placement.files.size());
  for (std::size_t i = 0; i < files.size(); ++i) names[files[i]] = given[i];
  return names;
}

std::filesystem::path name_after(const std::string& input, NameStyle style) {
  const std::size_t extension = input.rfind('.');
  const bool has_stem = extension != std::string::npos && extension != 0;
  const std::string name = input.substr(0, has_stem ? extension : std::string::npos);
  const FileNameSet set =
      style == NameStyle::product_unicode ? FileNameSet::unicode : FileNameSet::ascii;
  std::string stem = product_file_stem(name, set);
  if (stem.empty()) stem = "Root";
  stem += FILE_EXTENSION;
  return path_of_utf8(stem);
}

}  // namespace Kessel
