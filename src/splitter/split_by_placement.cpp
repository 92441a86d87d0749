#include "splitter/split_by_placement.h"

#include <algorithm>
#include <bit>
#include <cerrno>
#include <cstring>
#include <fstream>
#include <numeric>
#include <optional>
#include <stdexcept>
#include <system_error>

#include "encoding/utf8_path.h"
#include "external/copied_references.h"
#include "external/external_references.h"
#include "external/reference_warnings.h"
#include "external/repointing.h"
#include "external/targets.h"
#include "findings/finding_kinds.h"
#include "findings/input_file.h"
#include "findings/progress_reporter.h"
#include "findings/refusals.h"
#include "instances/layout_loader.h"
#include "instances/places.h"
#include "kessel/encoding.h"
#include "kessel/errors.h"
#include "kessel/split_list.h"
#include "output/input_stamp.h"
#include "output/placement_findings.h"
#include "output/split_writer.h"
#include "output/whole_copy.h"
#include "placement/placement.h"
#include "products/products.h"
#include "shrink/equal_records.h"
#include "split_list/program.h"
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
    std::uint64_t state = state_;
    if (text.size() >= 16) {
      const auto take = [&] {
        state = mixed(state, word_at(at), word_at(at + 8));
        at += 16;
      };
      while (end - at > 32) {
        take();
        take();
      }
      if (end - at > 16) take();
      state = mixed(state, word_at(end - 16), word_at(end - 8));  // Some bytes twice, in one step.
    } else {
      for (; at != end; ++at) state = mixed(state, static_cast<unsigned char>(*at), 0);
    }
    state_ = mixed(state, text.size(), 0);
  }
  std::uint64_t value() const { return state_ ^ (state_ >> 29); }

 private:
  static std::uint64_t word_at(const char* at) {
    std::uint64_t word = 0;
    std::memcpy(&word, at, sizeof word);
    return word;
  }
  static std::uint64_t mixed(std::uint64_t state, std::uint64_t first, std::uint64_t second) {
    state = (std::rotl(state, 29) ^ first) * 0x9E37'79B9'7F4A'7C15;
    return (std::rotl(state, 29) ^ second) * 0xC2B2'AE3D'27D4'EB4F;
  }
  std::uint64_t state_ = 0x1003'0210;
};

/// Hashes the texts while it loads.
class SplitLoader final : public LayoutLoader {
 public:
  SplitLoader(Instances& instances, TextLayout& layout, const Options& options, std::uint64_t total)
      : LayoutLoader(instances, layout, options, total), instances_(instances) {
    if (options.shrink) values_.emplace();
  }
  /// What records that may become one say, where that was asked for.
  const std::optional<Shrink::ValueTexts>& values() const { return values_; }
  std::uint64_t hash() const { return hash_.value(); }

 protected:
  void added(Index index, const Exchange::Record& record) override {
    LayoutLoader::added(index, record);
    hash_.add(record.text);
    if (values_) values_->add(instances_, index, record);
  }

 private:
  const Instances& instances_;
  std::optional<Shrink::ValueTexts> values_;
  TextHash hash_;
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

/// The words of the command line.
const char* word_of(AssemblyStyle style) {
  return style == AssemblyStyle::nested ? "nested" : "lean";
}

const char* word_of(NameStyle style) {
  switch (style) {
    case NameStyle::record:
      return "record";
    case NameStyle::product:
      return "product";
    case NameStyle::product_unicode:
      return "product-unicode";
  }
  return "";
}

void create_folder(const fs::path& outdir) {
  std::error_code error;
  fs::create_directories(outdir, error);
  if (error) throw OutputError(outdir, error);
}

/// One split, step by step.
class PlacedSplit {
 public:
  PlacedSplit(const fs::path& in, const fs::path& outdir, const Options& options,
              const std::vector<std::string>& taken)
      : path_(in), outdir_(outdir), options_(options), taken_(taken), in_(open_input(in)) {}

  std::vector<WrittenFile> run() {
    const InputStamp before(path_);
    load();
    ProgressReporter sorting(options_, Stage::sorting, 2);
    products_ = find_products(instances_);
    references_ = find_external_references(instances_, products_);
    sorting.report(1);
    placement_ = place_records(instances_, products_, options_.assemblies);
    sorting.report_end();
    warn();
    from_ = without_links(folder_of_references(path_, options_));
    to_ = without_links(options_.output_folder.empty() ? outdir_ : options_.output_folder);
    if (options_.copy_references) {
      copies_.emplace(from_, to_, options_);
      copies_->add(references_);
      copies_->give_names(names_that_stay());
    }
    name_files();
    for (const fs::path& name : names_) require_fresh_file(paths_.emplace_back(outdir_ / name));
    require_fresh_file(outdir_ / SPLIT_LIST);
    require_fresh_root_list(path_);
    if (!write_root_list(fspath_to_utf8(names_.front()))) {
      throw OutputError(ROOT_LIST, {errno != 0 ? errno : EIO, std::generic_category()});
    }
    const std::vector<FileFigures> figures = write();
    std::vector<WrittenFile> copies = write_copies();
    if (InputStamp(path_) != before) throw InputError(input_changed(0));
    SplitList list = list_of(figures, before.size);
    for (const WrittenFile& copy : copies) {
      list.files.push_back(list_file(fspath_to_utf8(copy.path.filename()), outdir_));
    }
    write_split_list(list, outdir_);
    std::vector<WrittenFile> files = summary_of(figures);
    for (WrittenFile& copy : copies) files.push_back(std::move(copy));
    return files;
  }

 private:
  void load() {
    SplitLoader loader(instances_, layout_, options_, size_for_progress(in_, options_));
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
    for (Finding& finding :
         reference_warnings(in_, instances_, references_, folder_of_references(path_, options_),
                            !options_.copy_references)) {
      warnings_.push_back(std::move(finding));
    }
    require_products(products_, placement_, warnings_);
    locate(in_, warnings_);
    for (const Finding& finding : warnings_) options_.warning(finding);
  }

  /// What the input is called, whatever bytes that may be.
  std::string input_name() const {
    return options_.input_name.empty() ? path_.filename().string() : options_.input_name;
  }

  /// No copy takes the place of the input.
  std::vector<std::string> names_that_stay() const {
    if (from_ != to_) return {};
    return {utf8_of_path(path_.filename())};
  }

  void name_files() {
    // No file takes the name of one that the input refers to, nor that of a copy.
    std::vector<std::string> referred = names_of_targets(references_);
    referred.insert(referred.end(), taken_.begin(), taken_.end());
    if (copies_) {
      for (std::size_t i = 0; i < copies_->count(); ++i) {
        referred.push_back(copies_->name(i));
        require_fresh_file(outdir_ / path_of_utf8(copies_->name(i)));
      }
    }
    names_ = placed_names(instances_, products_, placement_, options_.names, referred);
    if (products_.products.empty()) names_ = {name_after(input_name(), options_.names)};
  }

  std::vector<FileFigures> write() {
    create_folder(outdir_);
    in_.clear();
    in_.seekg(0);  // The second reading's progress is measured from here.
    TextEdits edits =
        copies_ ? copies_->edits_of_input() : TextEdits(repoint(references_, from_, to_));
    if (names_.size() == 1 && edits.empty()) {
      return {copy_whole(in_, paths_.front(), instances_.size(), options_)};
    }
    std::vector<std::string> in_headers;
    const fs::path folder = options_.folder_in_headers.value_or("");
    for (const fs::path& name : names_) in_headers.push_back(fspath_to_utf8(folder / name));
    return write_split(in_,
                       {instances_, layout_, products_, placement_, id_, paths_,
                        std::move(in_headers), std::move(edits)},
                       options_);
  }

  std::vector<WrittenFile> write_copies() const {
    std::vector<WrittenFile> files;
    for (std::size_t i = 0; copies_ && i < copies_->count(); ++i) {
      const fs::path path = outdir_ / path_of_utf8(copies_->name(i));
      errno = 0;
      std::ofstream out(path, std::ios::out | std::ios::binary);
      const std::uint32_t records = copies_->write(i, out);
      const auto size =
          static_cast<std::uint64_t>(out ? static_cast<std::streamoff>(out.tellp()) : 0);
      out.close();
      if (!out) throw OutputError(path, {errno != 0 ? errno : EIO, std::generic_category()});
      files.push_back({path.lexically_normal(), 0, records, size, true});
    }
    return files;
  }

  /// The files in the order in which they are told: the root's first, the others by record.
  std::vector<FileId> told_order() const {
    std::vector<FileId> order(names_.size());
    std::iota(order.begin(), order.end(), FileId{0});
    std::stable_sort(order.begin() + 1, order.end(),
                     [&](FileId a, FileId b) { return record_of(a) < record_of(b); });
    return order;
  }

  std::vector<WrittenFile> summary_of(const std::vector<FileFigures>& figures) const {
    std::vector<WrittenFile> files;
    const fs::path folder = paths_.front().lexically_normal().parent_path();
    for (const FileId file : told_order()) {
      files.push_back({folder / names_[file], record_of(file), figures[file].records,
                       figures[file].bytes, false});
    }
    return files;
  }

  SplitList list_of(const std::vector<FileFigures>& figures, std::uint64_t input_bytes) const {
    SplitList list = {.program = program_name(),
                      .assemblies = word_of(options_.assemblies),
                      .names = word_of(options_.names),
                      .reading = "standard",
                      .input = input_name(),
                      .input_bytes = input_bytes,
                      .root = fspath_to_utf8(names_.front()),
                      .files = {}};
    for (const FileId file : told_order()) {
      ListedFile& listed = list.files.emplace_back();
      listed.name = fspath_to_utf8(names_[file]);
      listed.record = record_of(file);
      listed.bytes = figures[file].bytes;
      listed.hash = figures[file].hash;
      const ProductId top = placement_.files[file].top;
      if (top == NO_PRODUCT) continue;
      listed.id = products_.products[top].id;
      listed.product = products_.products[top].name;
    }
    return list;
  }

  /// The number of the definition that the file is named after.
  std::uint64_t record_of(FileId file) const {
    const ProductId top = placement_.files[file].top;
    return top == NO_PRODUCT ? 0 : instances_.number(products_.products[top].definition);
  }

  const fs::path& path_;
  const fs::path& outdir_;
  const Options& options_;
  const std::vector<std::string>& taken_;
  std::ifstream in_;
  Instances instances_;
  TextLayout layout_;
  std::uint64_t id_ = 0;
  std::vector<Finding> warnings_;
  Products products_;
  std::vector<ExternalReference> references_;
  Placement placement_;
  std::vector<fs::path> names_;  // of the files, and where they are written
  std::vector<fs::path> paths_;
  fs::path from_;  // The folders from which references are seen: the input's and the split's.
  fs::path to_;
  std::optional<CopiedReferences> copies_;
};

}  // namespace

std::vector<WrittenFile> split_by_placement(const fs::path& in, const fs::path& outdir,
                                            const Options& options,
                                            const std::vector<std::string>& taken) {
  return PlacedSplit(in, outdir, options, taken).run();
}

}  // namespace Kessel
