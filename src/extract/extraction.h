// Takes parts out of one file, step by step.
#pragma once

#include <filesystem>
#include <fstream>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "external/copied_references.h"
#include "external/external_references.h"
#include "extract/part_names.h"
#include "instances/instances.h"
#include "instances/text_layout.h"
#include "join/followed_input.h"
#include "kessel/extract.h"
#include "naming/unique_names.h"
#include "output/finished_file.h"
#include "output/fresh_file.h"
#include "output/input_stamp.h"
#include "output/split_writer.h"
#include "placement/placement.h"
#include "products/products.h"

namespace Kessel {

/// The input with all that it refers to, where the options ask for that; else null.
std::unique_ptr<FollowedInput> followed_input(const std::filesystem::path& in,
                                              const ExtractOptions& options);

/// One input, read once, and the files that are made of it. What its functions throw is what
/// extract() throws; files that were not finished are gone with it.
class Extraction {
 public:
  /// Reads the input. Both arguments must outlive it.
  Extraction(const std::filesystem::path& in, const ExtractOptions& options);

  ProductId find(const std::string& part) const { return names_->find(part); }
  /// Throws PartError where the product has no bodies of its own.
  void require_bodies(ProductId product) const;

  /// What a split calls the product's file.
  std::filesystem::path file_name(ProductId product);

  /// Asks for the product and all below it, as `out`.
  void ask(ProductId product, const std::filesystem::path& out);
  /// Asks for a file for each of its bodies, in `outdir`.
  void ask_bodies(ProductId product, const std::filesystem::path& outdir);

  /// Writes what was asked for, all into one folder, and moves it to its place.
  std::vector<ExtractedFile> write();

 private:
  /// A file of a placement that is to be written.
  struct Asked {
    FileId file;
    std::filesystem::path out;
  };
  /// Files of one placement.
  struct Pieces {
    ProductId product;
    bool are_bodies;
    std::vector<Asked> asked;
    std::vector<std::size_t> copies;  ///< that are made for these files, in `copies_`
  };
  void load();
  void name_files();
  Placement place(const Pieces& pieces);
  void find_copies();
  void write_files(const Pieces& pieces);
  void find_copies_for(Pieces& pieces);
  std::vector<ExternalReference> references_in(const Placement& placement,
                                               const std::vector<Asked>& asked) const;
  void write_copies();
  std::vector<Finding> usages_left_out(const Placement& placement, const std::vector<Asked>& asked);
  void warn(const Placement& placement, const std::vector<Asked>& asked);
  std::vector<FileFigures> write_pieces(const SplitToWrite& split, const std::vector<Asked>& asked);
  /// No file may take the place of one that is read, nor of one that is referred to.
  void refuse_to_replace_inputs(const std::filesystem::path& out) const;
  std::filesystem::path folder_of(const std::filesystem::path& out) const;
  TextEdits edits_for(const std::filesystem::path& out) const;
  std::uint64_t shrink_into(const FreshFile& whole, FinishedFile& file) const;

  const ExtractOptions& options_;
  const std::unique_ptr<FollowedInput> followed_;
  std::vector<std::filesystem::path> inputs_;  // that no output may replace
  const std::filesystem::path path_;           // of what is read
  const Options split_options_;                // as far as they matter to a split
  const std::filesystem::path from_;  // the folder from which the input's references are seen
  InputStamp stamp_;
  std::ifstream in_;
  Instances instances_;
  TextLayout layout_;
  Products products_;
  std::vector<ExternalReference> references_;
  std::optional<PartNames> names_;
  std::vector<std::filesystem::path> file_names_;  // by product, once they are wanted
  UniqueNames body_names_;
  std::vector<Pieces> pieces_;  // that were asked for
  std::optional<CopiedReferences> copies_;
  std::vector<std::unique_ptr<FinishedFile>> finished_;  // of files_, then copies
  std::vector<ExtractedFile> files_;
};

}  // namespace Kessel
