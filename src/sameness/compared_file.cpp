#include "sameness/compared_file.h"

#include <cerrno>
#include <fstream>
#include <system_error>
#include <utility>

#include "exchange/parameters.h"
#include "exchange/string_value.h"
#include "findings/input_file.h"
#include "findings/refusals.h"
#include "instances/places.h"
#include "kessel/errors.h"
#include "model/progress_reporter.h"

namespace Kessel::Sameness {

namespace {

std::string utf8_of(const std::filesystem::path& path) {
  const std::u8string name = path.u8string();
  return {name.begin(), name.end()};
}

[[noreturn]] void refuse(Finding finding, const std::filesystem::path& in) {
  finding.file = utf8_of(in);
  throw InputError(finding);
}

/// Tells the host what the reading found, and which references lead nowhere.
void warn(std::istream& stream, const std::filesystem::path& in, const Instances& instances,
          FindingList& found, const Options& options) {
  for (Finding& finding : missing_instances(stream, instances)) found.add(std::move(finding));
  std::vector<Finding> warnings = found.take();
  set_lines(stream, warnings);
  for (Finding& finding : warnings) {
    finding.file = utf8_of(in);
    options.warning(finding);
  }
}

}  // namespace

std::ifstream open_file(const std::filesystem::path& in) {
  if (auto finding = find_no_regular_file(in)) refuse(std::move(*finding), in);
  errno = 0;
  std::ifstream file(in, std::ios::in | std::ios::binary);
  if (!file.is_open()) {
    const std::error_code reason(errno != 0 ? errno : EIO, std::generic_category());
    refuse(unreadable_file("cannot be opened: " + reason.message()), in);
  }
  return file;
}

void read_file(const std::filesystem::path& in, ComparedFile& file, const Options& options) {
  std::ifstream stream = open_file(in);
  try {
    FingerprintLoader loader(file.instances, file.fingerprints, options,
                             size_for_progress(stream, options));
    load_with(stream, loader, options);
    if (options.warning) warn(stream, in, file.instances, loader.warnings(), options);
  } catch (const InputError& error) {
    refuse(error.finding(), in);
  }
  file.order = order_of(file.instances);
  complete(file.fingerprints, file.instances, file.order);
  file.products = find_products(file.instances);
}

std::vector<std::string> schemas_of(const Instances& instances) {
  std::vector<std::string> schemas;
  for (const std::string& entity : instances.header()) {
    for (const Exchange::PartialRecord& record : Exchange::partial_records(entity)) {
      if (record.keyword != "FILE_SCHEMA") continue;
      for (const std::string_view list : Exchange::items_of(record.list)) {
        for (const std::string_view name : Exchange::items_of(list)) {
          schemas.push_back(Exchange::string_value(name));
        }
      }
    }
  }
  return schemas;
}

}  // namespace Kessel::Sameness
