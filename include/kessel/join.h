// Joins files that refer to each other into one.
#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <vector>

#include "kessel/export.h"
#include "kessel/finding.h"
#include "kessel/options.h"

namespace Kessel {

/// Choices for joining.
struct JoinOptions {
  /// Bytes that may be kept of all files together; as Options::memory_limit otherwise.
  std::uint64_t memory_limit = Options::NO_LIMIT;
  /// Whether a file in another folder than the root's, or in one below that, may be read.
  bool follow_outside = false;
  /// Whether references stay whose files are not there; else those are an error.
  bool allow_missing = false;
  /// Whether files may obey other schemas than the root; the output obeys the root's. Else such
  /// files are an error. What stands behind a schema's name in braces makes no difference.
  bool allow_mixed_schemas = false;
  /// Whether records of the result that say the same become one, as `shrink` does
  /// (kessel/shrink.h). What was joined is then written twice, first under another name beside
  /// `out`; it is read, sorted and written once more.
  bool shrink = false;
  /// Where `root` stands for a file elsewhere, as a copy of what cannot be read twice does: the
  /// path of that, which need not be there. References start from its folder, and findings have its
  /// name.
  std::filesystem::path stands_for = {};
  /// Asked of every file where what it says can be read as plain text: of a compressed one, where
  /// that was unpacked to, or else the same path. May throw `InputError`. What it names must stay
  /// as it is until `join` returns. Null where all files are read where they are.
  std::function<std::filesystem::path(const std::filesystem::path&)> readable = {};
  /// Whether an output that is there already is replaced; devices and pipes never are.
  bool replace = false;
  /// Told how far it has come, as Options::progress; the total of Stage::reading grows with the
  /// files that are found.
  std::function<void(const Progress&)> progress = {};
};

/// A file that was read.
struct JoinedInput {
  std::filesystem::path path;
  std::uint64_t records = 0;
};

/// What was joined.
struct Joined {
  std::vector<JoinedInput> inputs;  ///< the root first, the others as references lead to them
  std::uint64_t records = 0;        ///< in the output
  std::uint64_t bytes = 0;          ///< of the output
  /// What about the result may deserve a look; `Finding::file` is the name of the file, seen from
  /// the root's folder, UTF-8.
  std::vector<Finding> warnings;
};

/// Reads the exchange file `root`, or where that is a folder the root's file of the split in it, as
/// its list says (`kessel/split_list.h`) or else its "roots.txt", and the files that it refers to
/// through any number of levels (external document references, ISO 10303-41, of managed documents
/// as well; the 'cad_filename' documents of ISO 10303-203; names of anchors in reference sections,
/// ISO 10303-21, 11), each of them once, and writes one exchange file `out` that holds what all of
/// them say and refers to no other: each component's definition and shape take the place of what
/// stood for them, reference blocks go, records are numbered from 1.
///
/// Files of one split that were left as they are join to exactly the records that were split: marks
/// say where each came from. Otherwise, records of different files become one only where they are
/// the ends of a reference, or values that say the same (units, colours, styles, persons, dates,
/// ...); definitions, contexts and shapes stay apart.
///
/// `out` appears when it is finished, or not at all; it is written beside itself under another name
/// that begins with a dot. Prints nothing. Time is linear in the files, memory in their records:
/// about 40 bytes for each.
///
/// Throws `InputError` for a file that cannot be read (its finding has the file's name), for files
/// that are missing or lie outside of the root's folder (one finding names all of them), that refer
/// to each other in a circle, that obey another schema than the root, or that hold nothing that the
/// reference could mean, and for one that was changed meanwhile. A reference that stays, since
/// nothing is missed there, is written as it is seen from the output's folder. Throws `OutputError`
/// where `out` cannot be written, is there already and not to be replaced, is a folder, or is one
/// of the inputs; and `std::bad_alloc`.
KESSEL_EXPORT Joined join(const std::filesystem::path& root, const std::filesystem::path& out,
                          const JoinOptions& options = {});

}  // namespace Kessel
