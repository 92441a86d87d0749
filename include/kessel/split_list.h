// The list of what a split wrote, by which later commands know what is theirs.
#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "kessel/export.h"

namespace Kessel {

/// The list's name in the output folder. No part's file is called so.
inline constexpr const char* SPLIT_LIST = "velkstep-split.json";

/// A file that stands in the list. Texts are UTF-8.
struct ListedFile {
  std::string name;          ///< in the folder, without a path
  std::uint64_t record = 0;  ///< instance number of the product definition; 0 where there is none
  std::string id;            ///< of the product
  std::string product;       ///< the product's name
  std::uint64_t bytes = 0;
  std::uint64_t hash = 0;  ///< XXH64 of its bytes, seed 0
};

/// What a split in the styles lean and nested says about itself, in the file SPLIT_LIST of its
/// output folder. docs/output-files.md has its form, which is JSON.
struct SplitList {
  std::string program;  ///< what wrote it: "velkstep" and the version
  // The choices, in the words of the command line.
  std::string assemblies;
  std::string names;
  std::string reading;
  std::string input;              ///< the input's name, without a path
  std::uint64_t input_bytes = 0;  ///< its size
  std::string root;               ///< the name of the root's file
  std::vector<ListedFile> files;  ///< the root's first
};

/// What has become of a listed file.
enum class ListedState {
  unchanged,  ///< a regular file with the bytes that were written
  changed,    ///< anything else of that name
  missing,    ///< there is nothing of that name
};

/// Reads the list of the split in `folder`; nothing where there is none. Whoever wrote it, no name
/// in it leads out of the folder.
///
/// Throws `InputError` (`FindingKind::wrong_split_list`) where something of that name is there and
/// is no such list, a link among them, and `std::bad_alloc`.
KESSEL_EXPORT std::optional<SplitList> read_split_list(const std::filesystem::path& folder);

/// Writes the list into `folder`, in place of one that is there. Throws `OutputError` where that
/// cannot be.
KESSEL_EXPORT void write_split_list(const SplitList& list, const std::filesystem::path& folder);

/// What has become of `file` in `folder`. Reads it where its size is the same. Follows no link.
KESSEL_EXPORT ListedState state_of(const ListedFile& file, const std::filesystem::path& folder);

/// The entry of a file in `folder` that stands for no product. Throws `OutputError` where it cannot
/// be read.
KESSEL_EXPORT ListedFile list_file(const std::string& name, const std::filesystem::path& folder);

}  // namespace Kessel
