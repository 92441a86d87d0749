#include "sameness/compared_file.h"

#include <fstream>
#include <memory>
#include <utility>
#include <vector>

#include "encoding/utf8_path.h"
#include "exchange/parameters.h"
#include "exchange/string_value.h"
#include "findings/finding_list.h"
#include "findings/input_file.h"
#include "findings/progress_reporter.h"
#include "instances/places.h"
#include "kessel/errors.h"

namespace Kessel::Sameness {

namespace {

void set_file(Finding& finding, const std::filesystem::path& in) {
  finding.file = utf8_of_path(in);
}

[[noreturn]] void refuse(Finding finding, const std::filesystem::path& in) {
  set_file(finding, in);
  throw InputError(finding, in);
}

/// Loads, and keeps what it is warned of.
class WarnedFingerprintLoader final : public FingerprintLoader {
 public:
  using FingerprintLoader::FingerprintLoader;
  void warning(const Finding& finding) override { warnings_.add(finding); }
  std::vector<Finding> take_warnings() { return warnings_.take(); }

 private:
  FindingList warnings_;
};

/// Tells `options.warning`, of which file.
void warn(std::istream& stream, const std::filesystem::path& in, std::vector<Finding> warnings,
          const Options& options) {
  if (!options.warning) return;
  locate(stream, warnings);
  for (Finding& warning : warnings) {
    set_file(warning, in);
    options.warning(warning);
  }
}

}  // namespace

std::ifstream open_file(const std::filesystem::path& in) {
  try {
    return open_input(in);
  } catch (const InputError& error) {
    refuse(error.finding(), in);
  }
}

void read_file(const std::filesystem::path& in, ComparedFile& file, const Options& options) {
  std::ifstream stream = open_file(in);
  try {
    WarnedFingerprintLoader loader(file.instances, file.fingerprints, options,
                                   size_for_progress(stream, options));
    load_with(stream, loader, options);
    warn(stream, in, loader.take_warnings(), options);
  } catch (const InputError& error) {
    refuse(error.finding(), in);
  }
  complete(file);
}

void complete(ComparedFile& file) {
  file.order = order_of(file.instances);
  complete(file.fingerprints, file.instances, file.order);
  file.products = find_products(file.instances);
}

BodyReader body_reader(const std::filesystem::path& in, const Instances& instances) {
  auto stream = std::make_shared<std::ifstream>();
  return [in, &instances, stream](Index record) {
    if (!stream->is_open()) *stream = open_file(in);
    return read_again(*stream, instances, record).body;
  };
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
