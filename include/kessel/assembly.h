// The product structure of an exchange file, as plain data.
#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

#include "kessel/export.h"
#include "kessel/options.h"

namespace Kessel {

/// What a part is in the product structure.
enum class PartRole {
  part,                  ///< has no components
  assembly,              ///< has components and no geometry of its own; a generated root too
  assembly_with_bodies,  ///< has components, and its own shape carries geometry
};

/// How often one part uses another directly.
struct PartUse {
  std::size_t part = 0;     ///< index of the other part in `Assembly::parts`
  std::uint64_t count = 0;  ///< usages (ISO 10303-44), each of which counts as one
  /// Whether the component leads back to the part that uses it. Such uses are left out of totals
  /// and depth, and without them no walk along components comes to a part that it is in.
  bool closes_cycle = false;
};

/// What is known of one part: a product definition (ISO 10303-41) that has a shape or a place in
/// the structure. Texts are valid UTF-8, decoded from exchange strings (ISO 10303-21, 6.4.3); bytes
/// that are not UTF-8 are taken as ISO 8859-1.
struct PartInfo {
  std::uint64_t record = 0;  ///< instance number; 0 for a generated root, which has no record
  std::string id;            ///< the product's id; empty where the part leads to no product
  std::string name;          ///< the product's name
  std::string description;   ///< the product's description
  PartRole role = PartRole::part;
  std::filesystem::path file;  ///< the name that a split gives its file; empty for none
  /// The file that holds its shape where this one refers to another for it (external document
  /// reference, ISO 10303-41): its name as seen from this file's folder, UTF-8; empty for none.
  std::string external_file;
  std::vector<PartUse> components;  ///< each one once, in the order in which it is first used
  std::vector<PartUse> used_in;     ///< the parts that have it as a component, in list order
  /// How often it occurs in the whole, counted along every path from the roots, each of which
  /// occurs once. Does not go beyond 2^64 - 1, which therefore means that or more.
  std::uint64_t total = 0;
};

/// The parts of one file and how they are put together. Owns everything that it holds.
struct Assembly {
  /// In the order of the file, a generated root last.
  std::vector<PartInfo> parts;
  /// Indices of the parts where the structure begins: one where there are parts, the only top or
  /// the generated root above several. It leads to every part. Of parts that contain each other,
  /// and that no other part contains, one is a top.
  std::vector<std::size_t> roots;
  /// Levels of parts: 1 for parts alone, 0 without parts. A generated root is no level.
  std::size_t depth = 0;
};

/// Reads the product structure of the exchange file `in` (ISO 10303-21, clear text), which is read
/// once. `options` are those of the split that the parts' file names are for; the memory limit
/// counts, and `warning` is told what about the reading deserves a look.
///
/// Prints nothing and writes nothing. A file without parts, with one part alone, with several tops
/// (which get a generated root, as in a split), or with parts that contain each other is no error.
///
/// Throws `InputError` (`kessel/errors.h`) with the finding that check() gives for what cannot be
/// opened, is no regular file, cannot be read to its end or takes more than the memory limit, and
/// `std::bad_alloc`. Works on the caller's thread.
KESSEL_EXPORT Assembly read_assembly(const std::filesystem::path& in,
                                     const Options& options = Options());

}  // namespace Kessel
