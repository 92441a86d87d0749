// A file that is compared, as far as it is read.
#pragma once

#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "instances/instances.h"
#include "kessel/options.h"
#include "products/products.h"
#include "sameness/fingerprints.h"
#include "sameness/order.h"

namespace Kessel::Sameness {

struct ComparedFile {
  Instances instances;
  Fingerprints fingerprints;
  Order order;
  Products products;
};

/// Reads `in` into `file`. Throws InputError, whose finding names the file.
void read_file(const std::filesystem::path& in, ComparedFile& file, const Options& options);

/// The schemas that the header names.
std::vector<std::string> schemas_of(const Instances& instances);

/// Opens a regular file. Throws InputError, see read_file().
std::ifstream open_file(const std::filesystem::path& in);

}  // namespace Kessel::Sameness
