// The files that an input refers to, copied into the folder of its split.
#pragma once

#include <cstdint>
#include <filesystem>
#include <map>
#include <string>
#include <vector>

#include "external/external_references.h"
#include "external/text_edits.h"
#include "kessel/options.h"
#include "kessel/splitter.h"

namespace Kessel {

/// Knows the files that references lead to, and those that these refer to in turn, each once, and
/// what they are called as copies: as they are, or "name (2).stp" where that is taken. A copy says
/// what its original says, but for names of other files.
class CopiedReferences {
 public:
  /// For `references` of an input in the folder `from`, whose split lies in `to`: both absolute and
  /// without links. Reads the files. Throws InputError for one that cannot be read, and, without
  /// Options::follow_outside, for those outside of `from`, all of which it names.
  CopiedReferences(const std::vector<ExternalReference>& references,
                   const std::filesystem::path& from, const std::filesystem::path& to,
                   const Options& options);

  /// For the input itself.
  const TextEdits& edits_of_input() const { return edits_of_input_; }
  /// What the copies are called, those apart that lie there already.
  std::vector<std::string> new_names() const;
  /// Writes the copies into `outdir`. Throws InputError where an original cannot be read any more,
  /// OutputError where a copy cannot be written whole.
  std::vector<WrittenFile> write(const std::filesystem::path& outdir) const;

 private:
  struct Copy {
    std::filesystem::path path;  // of the original, without links
    std::string name;            // in the folder of the split
    bool is_in_place = false;    // It lies there already.
    std::vector<ExternalReference> references;
    TextEdits edits;
  };
  using Places = std::map<std::filesystem::path, std::size_t>;

  void enter(const std::vector<ExternalReference>& references, const std::filesystem::path& folder);
  void load(Copy& copy) const;
  std::string unused_name(const std::filesystem::path& path);
  TextEdits edits_for(const std::vector<ExternalReference>& references,
                      const std::filesystem::path& folder) const;

  const std::filesystem::path from_;
  const std::filesystem::path to_;
  const Options& options_;
  std::vector<Copy> copies_;
  Places places_;  // of copies, by path
  std::map<std::string, std::uint32_t> taken_;
  std::vector<std::string> outside_;
  TextEdits edits_of_input_;
};

}  // namespace Kessel
