#include "splitter/split_by_placement.h"

#include <algorithm>
#include <bit>
#include <cerrno>
#include <cstring>
#include <fstream>
#include <optional>
#include <stdexcept>
#include <system_error>

#include "findings/finding_kinds.h"
#include "findings/finding_list.h"
#include "findings/input_file.h"
#include "findings/refusals.h"
#include "instances/loader.h"
#include "instances/places.h"
#include "kessel/encoding.h"
#include "kessel/errors.h"
#include "model/progress_reporter.h"
#include "output/input_stamp.h"
#include "output/placement_findings.h"
#include "output/split_writer.h"
#include "placement/placement.h"
#include "products/products.h"
#include "shrink/equal_records.h"
#include "splitter/fresh_files.h"
#include "splitter/placed_names.h"
#include "splitter/root_list.h"

namespace Kessel {

namespace {

namespace fs = std::filesystem;

/// Tells inputs apart by their records' texts.
class TextHash {
 public:
  void add(std::string_view text) {
    const char* at = text.data();
    const char* const end = at + text.size();
    if (text.size() >= 16) {
      for (; end - at > 16; at += 16) mix(word_at(at), word_at(at + 8));
      mix(word_at(end - 16), word_at(end - 8));  // Some bytes twice, in one step.
    } else {
      for (; at != end; ++at) mix(static_cast<unsigned char>(*at), 0);
    }
    mix(text.size(), 0);
  }
  std::uint64_t value() const { return state_ ^ (state_ >> 29); }

 private:
  static std::uint64_t word_at(const char* at) {
    std::uint64_t word = 0;
    std::memcpy(&word, at, sizeof word);
    return word;
  }
  void mix(std::uint64_t first, std::uint64_t second) {
    state_ = (std::rotl(state_, 29) ^ first) * 0x9E37'79B9'7F4A'7C15;
    state_ = (std::rotl(state_, 29) ^ second) * 0xC2B2'AE3D'27D4'EB4F;
  }
  std::uint64_t state_ = 0x1003'0210;
};

/// Loads, hashes the texts, and keeps what it is warned of.
class SplitLoader final : public InstanceLoader {
 public:
  SplitLoader(Instances& instances, const Options& options, std::uint64_t total)
      : InstanceLoader(instances, options, total), instances_(instances) {
    if (options.shrink) values_.emplace();
  }
  void warning(const Finding& finding) override { warnings_.add(finding); }
  /// What records that may become one say, where that was asked for.
  const std::optional<Shrink::ValueTexts>& values() const { return values_; }
  std::uint64_t hash() const { return hash_.value(); }
  FindingList& warnings() { return warnings_; }

 protected:
  void added(Index index, const Exchange::Record& record) override {
    hash_.add(record.text);
    if (values_) values_->add(instances_, index, record);
  }

 private:
  const Instances& instances_;
  std::optional<Shrink::ValueTexts> values_;
  TextHash hash_;
  FindingList warnings_;
};

void require_products(const Products& products, const Placement& placement,
                      std::vector<Finding>& warnings) {
  if (products.products.empty()) {
    warnings.push_back(make_finding(FindingKind::no_part, "The file holds no product."));
  } else if (products.products.size() == 1) {
    warnings.push_back(make_finding(FindingKind::one_part, "The file holds one product only."));
  } else if (placement.files.size() < 2) {
    warnings.push_back(make_finding(FindingKind::one_part,
                                    "The file holds one product only, and what it is made of."));
  }
}

/// Leaves the name of the root's file to the host, in the working directory.
void write_root_list(const std::string& name) {
  errno = 0;
  std::ofstream list(ROOT_LIST);
  list << name << '\n';
  list.close();
  if (list.fail()) {
    throw OutputError(ROOT_LIST, {errno != 0 ? errno : EIO, std::generic_category()});
  }
}

void create_folder(const fs::path& outdir) {
  std::error_code error;
  fs::create_directories(outdir, error);
  if (error) throw fs::filesystem_error("create_directories", outdir, error);
}

/// One split, step by step.
class PlacedSplit {
 public:
  PlacedSplit(const fs::path& in, const fs::path& outdir, const Options& options)
      : path_(in), outdir_(outdir), options_(options), in_(in, std::ios::binary) {
    if (!in_.is_open()) throw std::invalid_argument("Failed to open input file.");
  }

  std::vector<WrittenFile> run() {
    const InputStamp before(path_);
    load();
    ProgressReporter sorting(options_, Stage::sorting, 2);
    products_ = find_products(instances_);
    sorting.report(1);
    placement_ = place_records(instances_, products_, options_.assemblies);
    sorting.report_end();
    warn();
    if (placement_.files.size() < 2) return {};
    names_ = placed_names(instances_, products_, placement_, options_.names);
    for (const fs::path& name : names_) require_fresh_file(outdir_ / name);
    require_fresh_root_list(path_);
    write_root_list(fspath_to_utf8(names_.front()));
    std::vector<WrittenFile> files = write();
    if (InputStamp(path_) != before) throw InputError(input_changed(0));
    return files;
  }

 private:
  void load() {
    SplitLoader loader(instances_, options_, size_for_progress(in_, options_));
    load_with(in_, loader, options_);
    id_ = loader.hash();
    for (Finding& finding : missing_instances(in_, instances_)) {
      loader.warnings().add(std::move(finding));
    }
    warnings_ = loader.warnings().take();
    if (loader.values()) instances_.make_one(Shrink::equal_records(instances_, *loader.values()));
  }

  void warn() {
    if (!options_.warning) return;
    for (const PlacementWarning& warning : placement_.warnings) {
      warnings_.push_back(finding_for(in_, instances_, warning));
    }
    require_products(products_, placement_, warnings_);
    set_lines(in_, warnings_);
    for (const Finding& finding : warnings_) options_.warning(finding);
  }

  std::vector<WrittenFile> write() {
    create_folder(outdir_);
    SplitToWrite split{instances_, products_, placement_, id_, {}, {}};
    for (const fs::path& name : names_) {
      split.paths.push_back(outdir_ / name);
      split.names.push_back(fspath_to_utf8(options_.folder_in_headers.value_or("") / name));
    }
    in_.clear();
    in_.seekg(0);  // The second reading's progress is measured from here.
    const std::vector<FileFigures> figures = write_split(in_, split, options_);
    std::vector<WrittenFile> files;
    for (FileId file = 0; file < figures.size(); ++file) {
      files.push_back({split.paths[file].lexically_normal(), record_of(file), figures[file].records,
                       figures[file].bytes});
    }
    std::stable_sort(files.begin() + 1, files.end(),
                     [](const auto& a, const auto& b) { return a.part < b.part; });
    return files;
  }

  /// The number of the definition that the file is named after.
  std::uint32_t record_of(FileId file) const {
    const ProductId top = placement_.files[file].top;
    if (top == NO_PRODUCT) return 0;
    const std::uint64_t number = instances_.number(products_.products[top].definition);
    return static_cast<std::uint32_t>(number > UINT32_MAX ? 0 : number);
  }

  const fs::path& path_;
  const fs::path& outdir_;
  const Options& options_;
  std::ifstream in_;
  Instances instances_;
  std::uint64_t id_ = 0;
  std::vector<Finding> warnings_;
  Products products_;
  Placement placement_;
  std::vector<fs::path> names_;
};

}  // namespace

std::vector<WrittenFile> split_by_placement(const fs::path& in, const fs::path& outdir,
                                            const Options& options) {
  if (const auto finding = find_no_regular_file(in)) throw InputError(*finding);
  return PlacedSplit(in, outdir, options).run();
}

}  // namespace Kessel
