#include "inspection/inspected_file.h"

#include <fstream>
#include <vector>

#include "external/targets.h"
#include "findings/input_file.h"
#include "instances/noting_loader.h"
#include "instances/places.h"
#include "kessel/errors.h"

namespace Kessel {

void tell_warnings(const std::filesystem::path& in, const Instances& instances,
                   FindingList& warnings, const Options& options) {
  if (!options.warning) return;
  std::ifstream file(in, std::ios::in | std::ios::binary);
  for (const Finding& finding : missing_instances(file, instances)) warnings.add(finding);
  std::vector<Finding> all = warnings.take();
  locate(file, all);
  for (const Finding& finding : all) options.warning(finding);
}

InspectedFile::InspectedFile(const std::filesystem::path& in, const Options& options) {
  if (options.follow_references) {
    const FollowedInput whole(in, options);
    *this = InspectedFile(whole.path(), whole.options_for_path());
    files = whole.files();
    doubts = whole.doubts();
    return;
  }
  FindingList warnings;
  read(in, options, warnings);
  tell_warnings(in, instances, warnings, options);
}

void InspectedFile::read(const std::filesystem::path& in, const Options& options,
                         FindingList& warnings) {
  NotingLoader loader(instances, options, warnings, size_of_file(in));
  read(in, options, loader);
}

void InspectedFile::read(const std::filesystem::path& in, const Options& options,
                         InstanceLoader& loader) {
  files = {in};
  folder = folder_of_references(in, options);
  std::ifstream file = open_input(in);
  load_with(file, loader, options);
  products = find_products(instances);
  references = find_external_references(instances, products);
}

}  // namespace Kessel
