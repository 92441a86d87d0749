// The files that an input refers to, copied into the folder of what is made of it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <map>
#include <ostream>
#include <set>
#include <string>
#include <vector>

#include "external/external_references.h"
#include "external/text_edits.h"
#include "kessel/options.h"

namespace Kessel {

/// Knows the files that references lead to, and those that these refer to in turn, each once, and
/// what they are called as copies: as they are, or "name (2).stp" where that is taken. Those that
/// lie in the folder already stay as they are. A copy says what its original says, but for names of
/// other files: where it has none that change it is the same bytes, and else plain text.
class CopiedReferences {
 public:
  /// For an input in the folder `from`, what is made of which lies in `to`: both absolute and
  /// without links. `options` must outlive it.
  CopiedReferences(const std::filesystem::path& from, const std::filesystem::path& to,
                   const Options& options)
      : from_(from), to_(to), options_(options) {}

  /// Adds what `references` of the input lead to. Reads the files. Throws InputError for one that
  /// cannot be read, and, without Options::follow_outside, for those outside of `from`, all of
  /// which it names.
  void add(const std::vector<ExternalReference>& references);
  /// Gives the copies their names, and none that is one of `taken` but for case. Once, after all
  /// were added.
  void give_names(const std::vector<std::string>& taken);

  /// How many copies are to be written of what was added until now, in the order of that.
  std::size_t count() const { return written_.size(); }
  /// What the copy at `place` is called, UTF-8; after give_names().
  const std::string& name(std::size_t place) const { return copies_[written_[place]].name; }
  /// For the input itself; after give_names().
  const TextEdits& edits_of_input() const { return edits_of_input_; }

  /// Writes the copy at `place`, and returns how many records it has. Throws InputError where the
  /// original cannot be read any more; whether the copy was written whole, the stream knows.
  std::uint32_t write(std::size_t place, std::ostream& out) const;

 private:
  struct Copy {
    std::filesystem::path path;      // of the original, without links
    std::filesystem::path readable;  // where that can be read as plain text
    std::string name;                // in the folder of the copies
    bool is_in_place = false;        // It lies there already.
    std::vector<ExternalReference> references;
    TextEdits edits;
  };
  using Places = std::map<std::filesystem::path, std::size_t>;

  void enter(const std::vector<ExternalReference>& references, const std::filesystem::path& folder);
  void load(Copy& copy) const;
  void require_below() const;
  TextEdits edits_for(const std::vector<ExternalReference>& references,
                      const std::filesystem::path& folder) const;

  const std::filesystem::path from_;
  const std::filesystem::path to_;
  const Options& options_;
  std::vector<ExternalReference> references_;  // of the input
  std::vector<Copy> copies_;
  Places places_;                     // of copies, by path
  std::vector<std::size_t> written_;  // of copies: those that do not lie there
  std::set<std::string> names_;       // that are given away, caseless
  std::vector<std::string> outside_;
  TextEdits edits_of_input_;
};

}  // namespace Kessel
