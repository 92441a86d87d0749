#include "shrink/shrinking.h"

#include <fstream>
#include <utility>
#include <vector>

#include "findings/finding_list.h"
#include "findings/input_file.h"
#include "findings/progress_reporter.h"
#include "findings/refusals.h"
#include "instances/loader.h"
#include "instances/places.h"
#include "kessel/errors.h"
#include "output/input_stamp.h"
#include "shrink/equal_records.h"
#include "shrink/shrunk_writer.h"
#include "shrink/unreachable.h"

namespace Kessel::Shrink {

namespace {

namespace fs = std::filesystem;

/// Loads, takes in the texts of values, and keeps what it is warned of.
class ValueLoader final : public InstanceLoader {
 public:
  ValueLoader(Instances& instances, const Options& options, std::uint64_t total)
      : InstanceLoader(instances, options, total), instances_(instances) {}

  void warning(const Finding& finding) override { warnings_.add(finding); }
  FindingList& warnings() { return warnings_; }
  const ValueTexts& texts() const { return texts_; }

 protected:
  void added(Index index, const Exchange::Record& record) override {
    texts_.add(instances_, index, record);
  }

 private:
  const Instances& instances_;
  ValueTexts texts_;
  FindingList warnings_;
};

class Shrinking {
 public:
  Shrinking(const fs::path& in, const ShrinkOptions& options)
      : path_(in), drop_(options.drop_unreachable), renumber_(options.renumber) {
    options_.memory_limit = options.memory_limit;
    options_.progress = options.progress;
    options_.warning = options.warning;
  }

  Shrunk run(std::ostream& out) {
    std::ifstream in = open_input(path_);
    const InputStamp before(path_);
    shrunk_.bytes_before = before.size;
    load(in);
    Survivors survivors(instances_, renumber_);
    shrunk_.records_after = survivors.count();
    in.clear();
    in.seekg(0);
    write_shrunk(in, instances_, survivors, out, options_);
    if (InputStamp(path_) != before) throw InputError(input_changed(0));
    return shrunk_;
  }

 private:
  /// Reads the file, and makes one what says the same.
  void load(std::istream& in) {
    ValueLoader loader(instances_, options_, size_for_progress(in, options_));
    load_with(in, loader, options_);
    if (options_.warning) warn(in, loader.warnings());
    shrunk_.records_before = instances_.size();
    ProgressReporter sorting(options_, Stage::sorting, 2);
    instances_.make_one(equal_records(instances_, loader.texts()));
    sorting.report(1);
    if (drop_) {
      const std::vector<Index> unreachable = unreachable_records(instances_);
      for (const Index record : unreachable) instances_.drop(record);
      shrunk_.unreachable = unreachable.size();
    }
    sorting.report_end();
  }

  void warn(std::istream& in, FindingList& found) {
    for (Finding& finding : missing_instances(in, instances_)) found.add(std::move(finding));
    std::vector<Finding> warnings = found.take();
    locate(in, warnings);
    for (const Finding& finding : warnings) options_.warning(finding);
  }

  const fs::path& path_;
  const bool drop_;
  const bool renumber_;
  Options options_;
  Instances instances_;
  Shrunk shrunk_;
};

}  // namespace

Shrunk shrink_into(const fs::path& in, std::ostream& out, const ShrinkOptions& options) {
  return Shrinking(in, options).run(out);
}

}  // namespace Kessel::Shrink
