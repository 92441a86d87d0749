#include "extract/extraction.h"

#include <algorithm>
#include <numeric>
#include <stdexcept>
#include <system_error>

#include "findings/input_file.h"
#include "findings/refusals.h"
#include "instances/places.h"
#include "kessel/encoding.h"
#include "kessel/errors.h"
#include "model/progress_reporter.h"
#include "output/layout_loader.h"
#include "output/placement_findings.h"
#include "output/split_writer.h"
#include "placement/bodies.h"
#include "products/file_names.h"

namespace Kessel {

namespace {

namespace fs = std::filesystem;

Options split_options(const ExtractOptions& options) {
  Options same;
  same.memory_limit = options.memory_limit;
  same.names = options.names;
  same.progress = options.progress;
  same.warning = options.warning;
  return same;
}

/// What was opened before it is known to be no regular file might wait for ever.
const fs::path& require_regular_file(const fs::path& in) {
  if (const auto finding = find_no_regular_file(in)) throw InputError(*finding);
  return in;
}

void refuse_to_replace_input(const fs::path& in, const fs::path& out) {
  std::error_code ignored;  // What cannot be compared is not the same.
  if (fs::equivalent(in, out, ignored)) {
    throw OutputError(out, std::make_error_code(std::errc::file_exists));
  }
}

}  // namespace

Extraction::Extraction(const fs::path& in, const ExtractOptions& options)
    : path_(require_regular_file(in)),
      options_(options),
      split_options_(split_options(options)),
      stamp_(in),
      in_(in, std::ios::in | std::ios::binary) {
  if (!in_.is_open()) throw std::invalid_argument("Failed to open input file.");
  load();
  products_ = find_products(instances_);
  names_.emplace(instances_, products_);
}

void Extraction::load() {
  LayoutLoader loader(instances_, layout_, split_options_, size_for_progress(in_, split_options_));
  load_with(in_, loader, split_options_);
  for (Finding& finding : missing_instances(in_, instances_)) {
    loader.warnings().add(std::move(finding));
  }
  if (!options_.warning) return;
  std::vector<Finding> warnings = loader.warnings().take();
  locate(in_, warnings);
  for (const Finding& finding : warnings) options_.warning(finding);
}

void Extraction::require_bodies(ProductId product) const {
  if (!bodies_of(instances_, products_, product).empty()) return;
  const NamedPart part = (*names_)[product];
  throw PartError(
      "The part #" + std::to_string(part.record) + " (" + part.path + ") has no bodies of its own.",
      {part});
}

fs::path Extraction::file_name(ProductId product) {
  if (file_names_.empty()) name_files();
  return file_names_[product];
}

/// Names are given out as in a split of all; products that have no file there come last.
void Extraction::name_files() {
  std::vector<ProductId> order(products_.products.size());
  std::iota(order.begin(), order.end(), ProductId{0});
  std::stable_partition(order.begin(), order.end(), [&](ProductId product) {
    return products_.products[product].shown_by == NO_PRODUCT;
  });
  const std::vector<fs::path> given = file_names(instances_, products_, order, options_.names);
  file_names_.resize(order.size());
  for (std::size_t i = 0; i < order.size(); ++i) file_names_[order[i]] = given[i];
}

void Extraction::write(ProductId product, const fs::path& out) {
  const Placement placement = place(plan_extraction(products_, product));
  const auto last = static_cast<FileId>(placement.files.size() - 1);
  write_files(product, placement, {{last, out}});
}

void Extraction::write_bodies(ProductId product, const fs::path& outdir) {
  const std::vector<Index> bodies = bodies_of(instances_, products_, product);
  const std::u8string stem = file_name(product).stem().u8string();
  const Placement placement = place(plan_bodies(products_, product, bodies));
  std::vector<Asked> asked;
  for (FileId file = 1; file < placement.files.size(); ++file) {
    const std::string name =
        body_names_.take(std::string(stem.begin(), stem.end()) + " body " + std::to_string(file));
    asked.push_back({file, outdir / std::u8string(name.begin(), name.end())});
  }
  write_files(product, placement, asked);
}

Placement Extraction::place(FilePlan plan) {
  ProgressReporter sorting(split_options_, Stage::sorting, 1);
  Placement placement = place_records(instances_, products_, std::move(plan));
  sorting.report_end();
  return placement;
}

void Extraction::warn(const Placement& placement, const std::vector<Asked>& asked) {
  if (!options_.warning) return;
  std::vector<Finding> findings;
  for (const PlacementWarning& warning : placement.warnings) {
    const bool concerns = std::any_of(asked.begin(), asked.end(),
                                      [&](const Asked& one) { return one.file == warning.file; });
    if (concerns) findings.push_back(finding_for(in_, instances_, warning));
  }
  locate(in_, findings);
  for (const Finding& finding : findings) options_.warning(finding);
}

void Extraction::write_files(ProductId product, const Placement& placement,
                             const std::vector<Asked>& asked) {
  warn(placement, asked);
  SplitToWrite split{instances_, layout_, products_, placement, std::nullopt, {}, {}};
  split.paths.resize(placement.files.size());
  split.names.resize(placement.files.size());
  for (const Asked& one : asked) {
    refuse_to_replace_input(path_, one.out);
    finished_.push_back(std::make_unique<FinishedFile>(one.out, options_.replace));
    split.paths[one.file] = finished_.back()->hand_over();
    split.names[one.file] = fspath_to_utf8(one.out.filename());
  }
  in_.clear();
  in_.seekg(0);  // The second reading's progress is measured from here.
  std::vector<FileFigures> figures;
  try {
    figures = write_split(in_, split, split_options_);
  } catch (const OutputError& error) {
    // It is the name that was asked for that cannot be written.
    for (const Asked& one : asked) {
      if (split.paths[one.file] == error.path()) throw OutputError(one.out, error.reason());
    }
    throw;
  }
  if (InputStamp(path_) != stamp_) throw InputError(input_changed(0));
  for (const Asked& one : asked) {
    const Index body = placement.files[one.file].body;
    files_.push_back({one.out, (*names_)[product], body == NO_RECORD ? 0 : instances_.number(body),
                      figures[one.file].records, figures[one.file].bytes});
  }
}

std::vector<ExtractedFile> Extraction::finish() {
  for (const auto& file : finished_) file->finish();
  return std::move(files_);
}

}  // namespace Kessel
