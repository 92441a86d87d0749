// Whether two exchange files say the same, and where they do not.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

#include "kessel/export.h"
#include "kessel/options.h"

namespace Kessel {

/// A parameter that says something else in two records that correspond.
struct ChangedParameter {
  std::string keyword;    ///< of the record; in a complex instance of the partial record
  std::size_t place = 0;  ///< among the parameters of that, from 1
  /// The parameter as it stands in each file, an exchange string's body bytes included; cut behind
  /// 200 bytes. Empty where the record has no such parameter. Where both are equal, a reference in
  /// it leads to another record.
  std::string in_a;
  std::string in_b;
};

/// A record of A and the one of B that corresponds to it, which say different things.
struct ChangedRecord {
  std::uint64_t in_a = 0;  ///< instance number in A; 0 for an anchor
  std::uint64_t in_b = 0;  ///< instance number in B
  /// In order of appearance. Looked up for the first 10,000 changed records of A; empty for others.
  std::vector<ChangedParameter> parameters;
};

/// What differs among the records of one type.
struct TypeDifference {
  std::string type;  ///< "PRODUCT"; of complex instances the keywords with a blank between them
  std::vector<std::uint64_t> only_in_a;  ///< instance numbers, in the order of the file
  std::vector<std::uint64_t> only_in_b;
  std::vector<ChangedRecord> changed;  ///< in the order of A
};

/// What differs in one product.
struct ProductDifference {
  std::string id;                     ///< of the PRODUCT (ISO 10303-41), decoded, UTF-8
  std::string name;                   ///< likewise
  std::uint64_t definition_in_a = 0;  ///< number of the PRODUCT_DEFINITION; 0 where A has none
  std::uint64_t definition_in_b = 0;
  std::vector<TypeDifference> types;  ///< by type, ascending
};

/// What two files, A and B, say differently.
struct Difference {
  /// Whether they say the same.
  bool is_same = true;
  /// Whether that is certain. It is not for files so symmetrical all over that only trying out all
  /// combinations could tell; those count as the same. No file of real parts is like that.
  bool is_certain = true;
  /// The schemas that the headers name (FILE_SCHEMA, ISO 10303-21, 8.2.3), decoded, in their order.
  std::vector<std::string> schemas_in_a;
  std::vector<std::string> schemas_in_b;
  std::uint64_t records_in_a = 0;
  std::uint64_t records_in_b = 0;
  /// The products in which something differs, by their definitions in A, then those that only B
  /// has; last, without id, name and definitions, what belongs to no product or to several.
  std::vector<ProductDifference> products;
};

/// Compares what the exchange files `a` and `b` (ISO 10303-21, every edition) say. Numbers, the
/// order of records, blanks, comments and the spelling of numbers and strings do not matter, nor
/// does anything in the header but the schemas.
///
/// Records that bear identity correspond one to one, by what they say, whom they refer to and who
/// refers to them: two files say the same where there is an isomorphism. Values, which are no more
/// than what they say (points, directions, curves, surfaces, units, colours, persons, dates), count
/// once however many copies there are. The lists of collectors (items of a representation or a
/// layer, what is approved) are sets. A body that two products share equals one in each.
///
/// Which records differ is told as briefly as a linear search finds: a record that says something
/// else but stands in the same place is changed, not one less and one more.
///
/// Of the options the memory limit, which goes for each file, the progress and the warnings matter:
/// `reading` is both files together, `sorting` the comparison in steps; `warning` is told what
/// about the reading of a file deserves a look, with that file (`Finding::file`, UTF-8). Time and
/// memory are about linear in the records; some 90 bytes a record. Writes and prints nothing. Works
/// on the caller's thread.
///
/// Throws `InputError` for a file that cannot be read to its end or does not fit into memory; its
/// finding names the file (`Finding::file`, UTF-8). Throws `std::bad_alloc`.
KESSEL_EXPORT Difference diff(const std::filesystem::path& a, const std::filesystem::path& b,
                              const Options& options = Options());

}  // namespace Kessel
