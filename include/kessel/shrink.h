// Makes an exchange file smaller: what it says twice, it says once.
#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>

#include "kessel/export.h"
#include "kessel/finding.h"
#include "kessel/options.h"

namespace Kessel {

/// Choices for shrinking.
struct ShrinkOptions {
  /// Bytes that may be kept of the file; as Options::memory_limit.
  std::uint64_t memory_limit = Options::NO_LIMIT;
  /// Whether records go to which nothing leads that says something by itself: values, geometry,
  /// topology, solids and contexts that no other record uses. `diff` tells them as lost.
  bool drop_unreachable = false;
  /// Whether records are numbered from 1 without gaps. Otherwise each keeps its number, so that
  /// comparing the files line by line shows what became of it.
  bool renumber = false;
  /// Whether an output that is there already is replaced; devices and pipes never are.
  bool replace = false;
  /// Told how far it has come, as Options::progress.
  std::function<void(const Progress&)> progress = {};
  /// Told what a person should know about the input, as Options::warning.
  std::function<void(const Finding&)> warning = {};
};

/// What became of a file. Records are counted with the lines of anchor and reference sections.
struct Shrunk {
  std::uint64_t records_before = 0;
  std::uint64_t records_after = 0;
  std::uint64_t unreachable = 0;  ///< of those that went: nothing led to them
  std::uint64_t bytes_before = 0;
  std::uint64_t bytes_after = 0;
};

/// Reads the exchange file `in` and writes `out`, in which records that say the same are one, the
/// first of them: values (units, colours, styles, persons, organisations, dates, ...) and geometry
/// without identity of its own (points, directions, placements, curves, surfaces; ISO 10303-42),
/// where what they refer to has become one, too. Numbers count by value, strings decoded.
///
/// Never one become: products, representations, contexts, topology and whatever else bears
/// identity; items of a representation; targets of a style, layer, invisibility, anchor, attribute
/// or item's identification; geometry that a record of an unknown type uses; records that stand in
/// a circle or refer to nothing; and two to which one record refers, unless that may refer to one
/// record twice, as a polyline. `diff` calls both files the same, and shrinking `out` changes
/// nothing. Records whose text and references are the same but for a chance of one in 2^64 count as
/// such.
///
/// The header, the sections and the texts of the records that stay are copied as they stand, but
/// for references; comments between records, and what stands behind the last section, are not.
///
/// `out` appears when it is finished, or not at all; it is written beside itself under another name
/// that begins with a dot. Prints nothing. Time and memory are linear in the records: about 70
/// bytes a record. Works on the caller's thread.
///
/// Throws `InputError` for a file that cannot be read to its end, does not fit into memory, or was
/// changed meanwhile. Throws `OutputError` where `out` cannot be written, is there already and not
/// to be replaced, is a folder, or is `in` itself; and `std::bad_alloc`.
KESSEL_EXPORT Shrunk shrink(const std::filesystem::path& in, const std::filesystem::path& out,
                            const ShrinkOptions& options = {});

}  // namespace Kessel
