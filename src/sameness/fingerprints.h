// What each record of a file says, as hashes.
#pragma once

#include <cstdint>
#include <istream>

#include "instances/column.h"
#include "instances/instances.h"
#include "instances/loader.h"
#include "sameness/order.h"
#include "sameness/text_hash.h"
#include "sameness/values.h"

namespace Kessel::Sameness {

/// Hashes of all records of one file, which tell whether two say the same, in one file or in two.
/// Hashes of equal records are equal; those of others differ but for a chance of one in 2^64.
/// About 18 bytes a record.
struct Fingerprints {
  /// Of the record's own text, see text_hash().
  Column<std::uint64_t> text;
  /// Of that and of all that it refers to, at any depth; the items of a collector's list as a set.
  /// Neither numbers nor the order of the file matter. Of records in a circle, what stands in the
  /// circle counts by its type, text, and its neighbours along a few references.
  Column<std::uint64_t> structure;
  /// What each record is worth as it is used in this file: geometry that others mean as an item,
  /// what stands in a collector's list, and what is part of a circle bears identity.
  Column<Worth> worth;
  /// Whether it is a value, and leads to values only.
  Column<bool> is_pure;

  std::uint64_t bytes() const {
    return text.bytes() + structure.bytes() + worth.bytes() + is_pure.bytes();
  }
};

/// Takes Fingerprints::text while a file is read.
class TextLoader {
 public:
  /// Of records of `instances`, which must outlive it.
  explicit TextLoader(const Instances& instances)
      : instances_(instances), hash_(instances.types()) {}

  /// Appends that of the record which was entered under `index`; of what was entered in front of it
  /// and is no record 0, until complete().
  void add(Index index, std::string_view body, Column<std::uint64_t>& text) {
    while (text.size() < index) text.push_back(0);
    text.push_back(hash_.of(instances_.type(index), body));
  }

 private:
  const Instances& instances_;
  RecordHash hash_;
};

/// Reads a file into `instances` and takes the hash of each record's text on the way.
class FingerprintLoader : public InstanceLoader {
 public:
  /// Both must outlive it; `options` and `total` are as for InstanceLoader.
  FingerprintLoader(Instances& instances, Fingerprints& fingerprints, const Options& options,
                    std::uint64_t total = 0)
      : InstanceLoader(instances, options, total), texts_(instances), fingerprints_(fingerprints) {}

 protected:
  void added(Index index, const Exchange::Record& record) override {
    texts_.add(index, record.body, fingerprints_.text);
  }

 private:
  TextLoader texts_;
  Fingerprints& fingerprints_;
};

/// Fills in the rest, once the file is read.
void complete(Fingerprints& fingerprints, const Instances& instances, const Order& order);

}  // namespace Kessel::Sameness
