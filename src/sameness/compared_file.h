// A file that is compared, as far as it is read.
#pragma once

#include <filesystem>
#include <fstream>
#include <functional>
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

/// Fills in the rest, once the records and what they say by themselves are there.
void complete(ComparedFile& file);

/// Reads `in` into `file`. Throws InputError, whose finding names the file.
void read_file(const std::filesystem::path& in, ComparedFile& file, const Options& options);

/// Reads the body (Exchange::Record::body) of a record once more.
using BodyReader = std::function<std::string(Index)>;

/// One for records of `instances`, which were read from `in` and must outlive it. It throws as
/// open_file().
BodyReader body_reader(const std::filesystem::path& in, const Instances& instances);

/// The schemas that the header names.
std::vector<std::string> schemas_of(const Instances& instances);

/// Opens a regular file. Throws InputError, see read_file().
std::ifstream open_file(const std::filesystem::path& in);

}  // namespace Kessel::Sameness
