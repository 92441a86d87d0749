// The order of the checks.
#include "kessel/check.h"

#include <fstream>
#include <string>
#include <utility>

#include "check/record_checks.h"
#include "external/targets.h"
#include "findings/finding_list.h"
#include "findings/input_file.h"
#include "findings/progress_reporter.h"
#include "instances/noting_loader.h"
#include "instances/places.h"
#include "kessel/errors.h"
#include "products/products.h"

namespace Kessel {

namespace {

std::vector<Finding> read_and_check(std::istream& in, const std::filesystem::path& folder,
                                    const Options& options) {
  FindingList findings;
  Instances instances;
  NotingLoader loader(instances, options, findings, size_for_progress(in, options));
  bool is_read = true;
  try {
    load_with(in, loader, options);
  } catch (const InputError& error) {
    findings.add(error.finding());
    is_read = false;
  }
  if (is_read) {
    check_records(in, instances, find_products(instances), folder, findings);
  }
  std::vector<Finding> found = findings.take();
  locate(in, found);
  return found;
}

}  // namespace

std::vector<Finding> check(const std::filesystem::path& in, const Options& options) {
  try {
    std::ifstream file = open_input(in);
    return read_and_check(file, folder_of_references(in, options), options);
  } catch (const InputError& error) {
    return {error.finding()};
  }
}

}  // namespace Kessel
