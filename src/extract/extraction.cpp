#include "extract/extraction.h"

#include <algorithm>
#include <numeric>
#include <stdexcept>
#include <system_error>
#include <utility>

#include "encoding/utf8_path.h"
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
#include "output/own_input.h"
#include "output/placement_findings.h"
#include "output/split_writer.h"
#include "placement/bodies.h"
#include "products/file_names.h"
#include "shrink/shrinking.h"

namespace Kessel {

namespace {

namespace fs = std::filesystem;

Options split_options(const ExtractOptions& options) {
  Options same;
  same.memory_limit = options.memory_limit;
  same.names = options.names;
  same.follow_outside = options.follow_outside;
  same.readable = options.readable;
  same.input_folder = options.input_folder;
  same.progress = options.progress;
  same.warning = options.warning;
  return same;
}

/// A file for what is to be shrunk into `out`.
fs::path fresh_path_beside(const fs::path& out, std::vector<std::unique_ptr<FreshFile>>& fresh) {
  fresh.push_back(std::make_unique<FreshFile>(out.parent_path()));
  if (fresh.back()->error()) throw OutputError(out, fresh.back()->error());
  fresh.back()->hand_over();
  return fresh.back()->path();
}

/// Whether the record stands in one of the files.
template <class Asked>
bool stands_in(const Placement& placement, Index record, const std::vector<Asked>& asked) {
  const std::span<const Stand> stands = placement.stands.of(record);
  return std::any_of(stands.begin(), stands.end(), [&](Stand stand) {
    return std::any_of(asked.begin(), asked.end(),
                       [&](const Asked& one) { return one.file == stand.file(); });
  });
}

}  // namespace

std::unique_ptr<FollowedInput> followed_input(const fs::path& in, const ExtractOptions& options) {
  if (!options.follow_references) return nullptr;
  return std::make_unique<FollowedInput>(in, split_options(options));
}

Extraction::Extraction(const fs::path& in, const ExtractOptions& options)
    : options_(options),
      followed_(followed_input(in, options)),
      path_(followed_ ? followed_->path() : in),
      split_options_(followed_ ? followed_->options_for_path() : split_options(options)),
      from_(without_links(folder_of_references(in, split_options_))),
      stamp_(path_),
      in_(open_input(path_)) {
  inputs_ = followed_ ? followed_->files() : std::vector<fs::path>{in};
  load();
  products_ = find_products(instances_);
  references_ = find_external_references(instances_, products_);
  names_.emplace(instances_, products_);
}

void Extraction::load() {
  LayoutLoader loader(instances_, layout_, split_options_, size_for_progress(in_, split_options_));
  load_with(in_, loader, split_options_);
  for (Finding& finding : missing_instances(in_, instances_)) {
    loader.warnings().add(std::move(finding));
  }
  if (!split_options_.warning) return;
  std::vector<Finding> warnings = loader.warnings().take();
  locate(in_, warnings);
  for (const Finding& finding : warnings) split_options_.warning(finding);
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
    return products_.products[product].stands_with == NO_PRODUCT;
  });
  const std::vector<fs::path> given =
      file_names(instances_, products_, order, options_.names, names_of_targets(references_));
  file_names_.resize(order.size());
  for (std::size_t i = 0; i < order.size(); ++i) file_names_[order[i]] = given[i];
}

void Extraction::ask(ProductId product, const fs::path& out) {
  const FilePlan plan = plan_extraction(products_, product);
  const auto last = static_cast<FileId>(plan.files.size() - 1);
  pieces_.push_back({product, false, {{last, out}}, {}});
}

void Extraction::ask_bodies(ProductId product, const fs::path& outdir) {
  const std::string stem = utf8_of_path(file_name(product).stem());
  const std::size_t count = bodies_of(instances_, products_, product).size();
  Pieces pieces{product, true, {}, {}};
  for (FileId file = 1; file <= count; ++file) {
    const std::string name = body_names_.take(stem + " body " + std::to_string(file));
    pieces.asked.push_back({file, outdir / path_of_utf8(name)});
  }
  pieces_.push_back(std::move(pieces));
}

Placement Extraction::place(const Pieces& pieces) {
  ProgressReporter sorting(split_options_, Stage::sorting, 1);
  FilePlan plan = pieces.are_bodies ? plan_bodies(products_, pieces.product,
                                                  bodies_of(instances_, products_, pieces.product))
                                    : plan_extraction(products_, pieces.product);
  Placement placement = place_records(instances_, products_, std::move(plan));
  sorting.report_end();
  return placement;
}

std::vector<ExtractedFile> Extraction::write() {
  if (options_.copy_references) find_copies();
  for (const Pieces& pieces : pieces_) write_files(pieces);
  if (copies_) write_copies();
  // Copies first, so that nothing refers to what is not there yet.
  for (std::size_t i = finished_.size(); i-- > 0;) {
    const std::uint64_t bytes = finished_[i]->finish();
    if (i < files_.size()) files_[i].bytes = bytes;
  }
  return std::move(files_);
}

/// For all that was asked for, before anything is written, since the copies share one folder.
void Extraction::find_copies() {
  if (references_.empty()) return;
  const fs::path to = folder_of(pieces_.front().asked.front().out);
  copies_.emplace(from_, to, split_options_);
  std::vector<std::string> taken;
  for (Pieces& pieces : pieces_) {
    for (const Asked& one : pieces.asked) taken.push_back(utf8_of_path(one.out.filename()));
    find_copies_for(pieces);
  }
  for (const fs::path& in : inputs_) {
    if (without_links(in).parent_path() == to) taken.push_back(utf8_of_path(in.filename()));
  }
  copies_->give_names(taken);
}

/// Of files that these refer to, no others.
void Extraction::find_copies_for(Pieces& pieces) {
  std::size_t copy = copies_->count();
  copies_->add(references_in(place(pieces), pieces.asked));
  for (; copy < copies_->count(); ++copy) pieces.copies.push_back(copy);
}

std::vector<ExternalReference> Extraction::references_in(const Placement& placement,
                                                         const std::vector<Asked>& asked) const {
  std::vector<ExternalReference> found;
  for (const ExternalReference& reference : references_) {
    if (stands_in(placement, reference.document, asked)) found.push_back(reference);
  }
  return found;
}

/// A product is at the top of its file, so what closes a circle is nowhere.
std::vector<Finding> Extraction::usages_left_out(const Placement& placement,
                                                 const std::vector<Asked>& asked) {
  std::vector<Finding> findings;
  for (const Usage& usage : products_.usages) {
    if (!usage.closes_circle || stands_in(placement, usage.record, asked)) continue;
    const FileId file = placement.file_of[usage.assembly];
    const bool concerns =
        std::any_of(asked.begin(), asked.end(), [&](const Asked& one) { return one.file == file; });
    if (!concerns) continue;
    findings.push_back(warning_at(in_, instances_, usage.record, FindingKind::usage_cycle,
                                  "The component of the usage #" +
                                      std::to_string(instances_.number(usage.record)) +
                                      " leads back to its assembly; the usage is left out."));
  }
  return findings;
}

void Extraction::warn(const Placement& placement, const std::vector<Asked>& asked) {
  if (!split_options_.warning) return;
  std::vector<Finding> findings = usages_left_out(placement, asked);
  for (const PlacementWarning& warning : placement.warnings) {
    const bool concerns = std::any_of(asked.begin(), asked.end(),
                                      [&](const Asked& one) { return one.file == warning.file; });
    if (concerns) findings.push_back(finding_for(in_, instances_, warning));
  }
  // Who asked for copies knows where the rest is.
  for (Finding& finding : reference_warnings(in_, instances_, references_in(placement, asked),
                                             from_, !options_.copy_references)) {
    findings.push_back(std::move(finding));
  }
  locate(in_, findings);
  for (const Finding& finding : findings) split_options_.warning(finding);
}

void Extraction::refuse_to_replace_inputs(const fs::path& out) const {
  for (const fs::path& in : inputs_) refuse_to_replace(in, out);
  refuse_to_replace_targets(from_, references_, out);
}

/// From where names of other files in `out` are seen, without links.
fs::path Extraction::folder_of(const fs::path& out) const {
  return without_links(options_.output_folder.empty() ? fs::absolute(out).parent_path()
                                                      : options_.output_folder);
}

TextEdits Extraction::edits_for(const fs::path& out) const {
  if (copies_) return copies_->edits_of_input();
  return TextEdits(repoint(references_, from_, folder_of(out)));
}

void Extraction::write_files(const Pieces& pieces) {
  const Placement placement = place(pieces);
  const std::vector<Asked>& asked = pieces.asked;
  warn(placement, asked);
  SplitToWrite split{instances_, layout_, products_, placement, std::nullopt, {}, {}};
  split.paths.resize(placement.files.size());
  split.names.resize(placement.files.size());
  const std::size_t first = finished_.size();
  std::vector<std::unique_ptr<FreshFile>> whole;  // what is to be shrunk
  for (const Asked& one : asked) {
    refuse_to_replace_inputs(one.out);
    finished_.push_back(std::make_unique<FinishedFile>(one.out, options_.replace));
    split.paths[one.file] =
        options_.shrink ? fresh_path_beside(one.out, whole) : finished_.back()->hand_over();
    split.names[one.file] = fspath_to_utf8(one.out.filename());
  }
  split.edits = edits_for(asked.front().out);
  const std::vector<FileFigures> figures = write_pieces(split, asked);
  for (std::size_t i = 0; i < asked.size(); ++i) {
    const Index body = placement.files[asked[i].file].body;
    const std::uint64_t records = options_.shrink ? shrink_into(*whole[i], *finished_[first + i])
                                                  : figures[asked[i].file].records;
    files_.push_back({asked[i].out,
                      (*names_)[pieces.product],
                      body == NO_RECORD ? 0 : instances_.number(body),
                      records,
                      0,
                      {}});
  }
  if (!copies_) return;
  for (const std::size_t copy : pieces.copies) {
    files_[first].copies.push_back(asked.front().out.parent_path() /
                                   path_of_utf8(copies_->name(copy)));
  }
}

void Extraction::write_copies() {
  for (std::size_t i = 0; i < copies_->count(); ++i) {
    const fs::path out =
        pieces_.front().asked.front().out.parent_path() / path_of_utf8(copies_->name(i));
    refuse_to_replace_inputs(out);
    finished_.push_back(std::make_unique<FinishedFile>(out, options_.replace));
    copies_->write(i, finished_.back()->stream());
  }
}

std::vector<FileFigures> Extraction::write_pieces(const SplitToWrite& split,
                                                  const std::vector<Asked>& asked) {
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
  return figures;
}

/// Returns how many records there are then.
std::uint64_t Extraction::shrink_into(const FreshFile& whole, FinishedFile& file) const {
  ShrinkOptions options;
  options.memory_limit = options_.memory_limit;
  options.progress = options_.progress;
  options.renumber = true;
  return Shrink::shrink_into(whole.path(), file.stream(), options).records_after;
}

}  // namespace Kessel
