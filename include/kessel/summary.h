// What an exchange file says about itself, and what is in it, as plain data.
#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

#include "kessel/export.h"
#include "kessel/options.h"

namespace Kessel {

/// The fields of the header section (ISO 10303-21, 8): texts as in `PartInfo`, empty where the
/// file gives none. Empty texts in lists are kept.
struct Header {
  std::vector<std::string> description;
  std::string implementation_level;
  std::string name;
  std::string time_stamp;  ///< as it is written, usually ISO 8601
  std::vector<std::string> authors;
  std::vector<std::string> organisations;
  std::string preprocessor_version;
  std::string originating_system;
  std::string authorisation;
  std::vector<std::string> schemas;
};

/// How many records have one type.
struct TypeCount {
  std::string type;  ///< the keyword; those of a complex instance with a space between them
  std::uint64_t records = 0;
};

/// One unit that geometry is measured in.
struct UnitUse {
  /// "millimetre" for an SI unit, otherwise the name that the file gives it, such as "INCH".
  std::string name;
  double factor = 0;           ///< its size in metres or radians; 0 where the file does not say
  std::uint64_t contexts = 0;  ///< geometric contexts that assign it
};

/// Another file that the file refers to: by documents of components (external document reference,
/// ISO 10303-41), or by names in its reference section (ISO 10303-21, 11).
struct ReferencedFile {
  std::string name;              ///< as seen from the file's folder, UTF-8
  std::uint64_t references = 0;  ///< how many lead there
  bool is_there = false;         ///< as a regular file
};

/// Counts and header of one exchange file. Owns everything that it holds.
struct Summary {
  Header header;
  std::uint64_t bytes = 0;       ///< size of the file; 0 where the system cannot say
  std::uint64_t records = 0;     ///< instances of the data section
  std::vector<TypeCount> types;  ///< the most frequent first, equally frequent ones by name
  std::size_t parts = 0;         ///< parts without components
  std::size_t assemblies = 0;    ///< parts with components; a generated root does not count
  std::size_t assemblies_with_bodies = 0;  ///< those of them that have geometry of their own
  std::size_t depth = 0;                   ///< `Assembly::depth`
  std::vector<UnitUse> length_units;       ///< in metres, the one of most contexts first
  std::vector<UnitUse> plane_angle_units;  ///< in radians, likewise
  std::vector<ReferencedFile> references;  ///< each file once, in the order in which it is met
};

/// Reads the exchange file `in` once and sums it up. Of the options the memory limit and
/// `warning` matter.
/// Prints, writes and throws as `read_assembly`.
KESSEL_EXPORT Summary read_summary(const std::filesystem::path& in, const Options& options = {});

}  // namespace Kessel
