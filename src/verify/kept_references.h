// References of the input to files that are no part of the split.
#pragma once

#include <filesystem>
#include <set>
#include <vector>

#include "external/external_references.h"
#include "external/text_edits.h"
#include "join/joining.h"
#include "kessel/options.h"
#include "sameness/compared_file.h"
#include "verify/said_by_files.h"

namespace Kessel {

/// Makes names of other files comparable: seen from the input's folder and from the split's they
/// are different texts for the same file, and one file may be named in several wordings. Both sides
/// get the path of the file in place of the text, so that what differs then leads elsewhere. A copy
/// in the split's folder counts as the file of the input that says the same.
class KeptReferences {
 public:
  /// Of the input, which lies in `folder`, and of the split of it in `outdir`. Other files are read
  /// where `options.readable` says.
  KeptReferences(const Sameness::ComparedFile& input, const std::filesystem::path& folder,
                 const std::filesystem::path& outdir, const Joining& joining,
                 const Options& options);

  /// Gives names in the input the texts to compare, where the split has files with such references.
  void edit(Sameness::ComparedFile& input);
  /// The same of the split's files.
  void edit(Joining& joining);

 private:
  TextEdits edits_for(const std::vector<ExternalReference>& references,
                      const std::filesystem::path& folder);
  const std::filesystem::path& original_of(const std::filesystem::path& file);

  const std::vector<ExternalReference> of_input_;
  const std::filesystem::path folder_;
  const std::filesystem::path outdir_;
  std::vector<std::filesystem::path> originals_;  // to which the input refers, without links
  bool has_copies_ = false;
  SaidByFiles said_;
};

/// Whether a file of the split has references that stay.
bool has_kept_references(const Joining& joining);

/// The files to which kept references lead, and those that these refer to in turn, as far as they
/// can be read, which is where `options.readable` says: paths without links.
std::set<std::filesystem::path> files_behind_kept_references(const Joining& joining,
                                                             const Options& options);

}  // namespace Kessel
