#include "inspection/inspected_file.h"

#include <fstream>
#include <stdexcept>
#include <vector>

#include "findings/input_file.h"
#include "instances/loader.h"
#include "kessel/errors.h"

namespace Kessel {

InspectedFile::InspectedFile(const std::filesystem::path& in, const Options& options)
    : folder(in.parent_path()) {
  if (const auto finding = find_no_regular_file(in)) throw InputError(*finding);
  std::ifstream file(in, std::ios::in | std::ios::binary);
  if (!file.is_open()) throw std::invalid_argument("Failed to open input file.");
  const std::vector<Finding> warnings = load_instances(file, instances, options);
  if (options.warning) {
    for (const Finding& finding : warnings) options.warning(finding);
  }
  products = find_products(instances);
  references = find_external_references(instances, products);
}

}  // namespace Kessel
