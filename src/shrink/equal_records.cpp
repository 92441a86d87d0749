#include "shrink/equal_records.h"

#include <algorithm>
#include <bit>
#include <utility>
#include <vector>

#include "sameness/hash.h"
#include "sameness/in_use.h"
#include "sameness/order.h"
#include "sameness/text_hash.h"
#include "sameness/values.h"

namespace Kessel::Shrink {

namespace {

using Sameness::combined;

/// Finds records by what they say: a table without a second copy of that.
class Known {
 public:
  /// For at most so many records.
  explicit Known(std::size_t records)
      : places_(std::bit_ceil(records * 2 + 2), NO_RECORD), mask_(places_.size() - 1) {}

  /// The record that was met before with this hash and `is_equal`, else `record`, which is known
  /// from now on.
  template <class IsEqual>
  Index meet(Index record, std::uint64_t hash, IsEqual is_equal) {
    for (std::size_t at = static_cast<std::size_t>(hash) & mask_;; at = (at + 1) & mask_) {
      if (places_[at] == NO_RECORD) return places_[at] = record;
      if (is_equal(places_[at])) return places_[at];
    }
  }

 private:
  Column<Index> places_;
  std::size_t mask_;
};

class EqualRecords {
 public:
  EqualRecords(const Instances& instances, const ValueTexts& texts)
      : instances_(instances),
        texts_(texts),
        order_(Sameness::order_of(instances)),
        is_mergeable_(Sameness::mergeable(instances, order_)) {}

  Column<Index> find() {
    find_classes();
    if (keep_apart()) find_classes();
    return firsts();
  }

 private:
  /// Puts each record into the class of those that it may become one with: `classes_` has the
  /// member that was met first, each record behind what it refers to.
  void find_classes() {
    classes_ = Column<Index>(instances_.size());
    std::size_t count = 0;
    for (Index record = 0; record < instances_.size(); ++record) {
      classes_[record] = record;
      count += is_mergeable_[record] ? 1 : 0;
    }
    Known known(count);
    for (const Index record : order_.records) {
      if (!is_mergeable_[record]) continue;
      classes_[record] =
          known.meet(record, hash_of(record), [&](Index other) { return is_equal(record, other); });
    }
  }

  std::uint64_t hash_of(Index record) const {
    std::uint64_t hash = texts_[record];
    for (const Reference reference : instances_.references(record)) {
      hash = combined(hash, classes_[reference.record()]);
    }
    return hash;
  }

  bool is_equal(Index a, Index b) const {
    if (texts_[a] != texts_[b] || instances_.type(a) != instances_.type(b)) return false;
    const auto of_a = instances_.references(a);
    const auto of_b = instances_.references(b);
    return std::equal(
        of_a.begin(), of_a.end(), of_b.begin(), of_b.end(),
        [this](Reference x, Reference y) { return classes_[x.record()] == classes_[y.record()]; });
  }

  /// Takes those out that must not be one with another to which the same record refers: all but
  /// the first of them. Returns whether there are any.
  bool keep_apart() {
    struct Referred {
      Index of_class;
      std::uint32_t place;
      Index record;
    };
    std::vector<bool> may_repeat;
    for (TypeId type = 0; type < instances_.types().size(); ++type) {
      may_repeat.push_back(Sameness::may_repeat(instances_.types(), type));
    }
    std::vector<Referred> referred;
    std::vector<Index> apart;
    for (Index user = 0; user < instances_.size(); ++user) {
      if (may_repeat[instances_.type(user)]) continue;
      referred.clear();
      for (const Reference reference : instances_.references(user)) {
        const Index to = reference.record();
        if (to == NO_RECORD || !is_mergeable_[to]) continue;
        referred.push_back({classes_[to], static_cast<std::uint32_t>(referred.size()), to});
      }
      if (referred.size() < 2) continue;
      std::sort(referred.begin(), referred.end(), [](const Referred& a, const Referred& b) {
        return std::pair(a.of_class, a.place) < std::pair(b.of_class, b.place);
      });
      Index first = NO_RECORD;
      for (std::size_t i = 0; i < referred.size(); ++i) {
        const bool begins = i == 0 || referred[i].of_class != referred[i - 1].of_class;
        if (begins) first = referred[i].record;
        if (referred[i].record != first) apart.push_back(referred[i].record);
      }
    }
    for (const Index record : apart) is_mergeable_[record] = false;
    return !apart.empty();
  }

  /// Classes by their first members in the order of the file.
  Column<Index> firsts() {
    Column<Index> first_of_class(instances_.size(), NO_RECORD);
    for (Index record = 0; record < instances_.size(); ++record) {
      Index& first = first_of_class[classes_[record]];
      if (first == NO_RECORD) first = record;
      classes_[record] = first;
    }
    return std::move(classes_);
  }

  const Instances& instances_;
  const ValueTexts& texts_;
  const Sameness::Order order_;
  Column<bool> is_mergeable_;
  Column<Index> classes_;
};

}  // namespace

void ValueTexts::add(const Instances& instances, Index index, const Exchange::Record& record) {
  while (texts_.size() < index) texts_.push_back(0);  // Entries are no values here.
  const TypeId type = instances.type(index);
  if (type >= is_value_.size()) is_value_.resize(type + 1, -1);
  if (is_value_[type] < 0) {
    is_value_[type] =
        Sameness::worth_of(instances.types(), type) != Sameness::Worth::identity ? 1 : 0;
  }
  texts_.push_back(is_value_[type] != 0 ? Sameness::text_hash(record.body) : 0);
}

Column<Index> equal_records(const Instances& instances, const ValueTexts& texts) {
  return EqualRecords(instances, texts).find();
}

}  // namespace Kessel::Shrink
