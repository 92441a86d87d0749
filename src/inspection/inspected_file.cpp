#include "inspection/inspected_file.h"

#include <fstream>
#include <stdexcept>

#include "findings/input_file.h"
#include "instances/loader.h"
#include "kessel/errors.h"

namespace Kessel {

InspectedFile::InspectedFile(const std::filesystem::path& in, const Options& options)
    : folder(in.parent_path()) {
  if (const auto finding = find_no_regular_file(in)) throw InputError(*finding);
  std::ifstream file(in, std::ios::in | std::ios::binary);
  if (!file.is_open()) throw std::invalid_argument("Failed to open input file.");
  InstanceLoader loader(instances, options);
  load_with(file, loader, options);
  products = find_products(instances);
  references = find_external_references(instances, products);
}

}  // namespace Kessel
