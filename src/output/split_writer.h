// Writes the files of a split.
#pragma once

#include <cstdint>
#include <filesystem>
#include <istream>
#include <optional>
#include <string>
#include <vector>

#include "external/text_edits.h"
#include "instances/instances.h"
#include "instances/text_layout.h"
#include "kessel/options.h"
#include "placement/placement.h"
#include "products/products.h"

namespace Kessel {

/// What is written, and where to. What it refers to must outlive the writing.
struct SplitToWrite {
  const Instances& instances;
  const TextLayout& layout;  ///< of the same file
  const Products& products;
  const Placement& placement;
  /// Tells inputs apart; none where what is written is not meant to be joined: it has no marks
  /// then.
  std::optional<std::uint64_t> id;
  std::vector<std::filesystem::path> paths;  ///< by file; one without a path is not written
  std::vector<std::string> names;            ///< what the headers say, by file, UTF-8
  TextEdits edits = {};                      ///< other texts for strings of the input
};

/// A file that was written.
struct FileFigures {
  std::uint32_t records = 0;
  std::uint64_t bytes = 0;
  std::uint64_t hash = 0;  ///< XXH64 of the bytes
};

/// Reads the input of `split.instances` again from `in` and writes the files. Throws OutputError
/// when a file cannot be written whole, and InputError when the input is not the same any more.
///
/// The marks: behind "DATA;" a comment names the split. A record that stands in several files, be
/// it a line of a reference section, has its number in the input in a comment in front, `/*12*/`;
/// one with another text than the input's, `/*~12*/`; and one that the split made, `/*~*/`.
std::vector<FileFigures> write_split(std::istream& in, const SplitToWrite& split,
                                     const Options& options);

}  // namespace Kessel
