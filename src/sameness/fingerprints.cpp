#include "sameness/fingerprints.h"

#include <algorithm>
#include <string_view>
#include <vector>

#include "sameness/hash.h"
#include "sameness/in_use.h"

namespace Kessel::Sameness {

namespace {

/// Stands for what a record of a circle refers to in the circle.
constexpr std::uint64_t IN_CIRCLE = mixed(0x6369'7263);
/// How far records of a circle look along it. The same for all circles, so that equal ones compare.
constexpr int CIRCLE_STEPS = 8;

/// The lines of anchor and reference sections, which a loader does not show.
void hash_entries(Fingerprints& fingerprints, const Instances& instances) {
  while (fingerprints.text.size() < instances.size()) fingerprints.text.push_back(0);
  for (const Index record : instances.kept()) {
    const TypeId type = instances.type(record);
    if (type != TypeTable::ANCHOR_ENTRY && type != TypeTable::REFERENCE_ENTRY) continue;
    std::string_view text = instances.kept_body(record);
    // "#12=<...>": the number is the record's own name.
    if (text.starts_with('#')) text.remove_prefix(std::min(text.find('='), text.size()));
    fingerprints.text[record] = text_hash(text);
  }
}

void find_worth(Fingerprints& fingerprints, const Instances& instances, const Order& order) {
  fingerprints.worth = worth_in_use(instances);
  for (const auto& [begin, end] : order.circles) {
    for (Index i = begin; i < end; ++i) {
      fingerprints.worth[order.records[i]] = Worth::identity;
    }
  }
}

void find_pure(Fingerprints& fingerprints, const Instances& instances, const Order& order) {
  Column<bool>& is_pure = fingerprints.is_pure;
  is_pure = Column<bool>(instances.size());
  for (const Index record : order.records) {
    if (fingerprints.worth[record] == Worth::identity) continue;
    const auto references = instances.references(record);
    is_pure[record] = std::all_of(references.begin(), references.end(), [&](Reference reference) {
      return reference.record() == NO_RECORD || is_pure[reference.record()];
    });
  }
}

/// Hashes what a record says from its text and from what `hash_below` gives for those that it
/// refers to.
class StructureHash {
 public:
  template <class HashBelow>
  std::uint64_t of(std::uint64_t text, std::span<const Reference> references,
                   HashBelow hash_below) {
    std::uint64_t hash = text;
    set_.clear();
    for (const Reference reference : references) {
      const std::uint64_t below =
          reference.record() == NO_RECORD ? MISSING : hash_below(reference.record());
      if (reference.is_listed()) {
        set_.push_back(below);
      } else {
        hash = combined(hash, below);
      }
    }
    if (set_.empty()) return hash;
    std::sort(set_.begin(), set_.end());
    set_.erase(std::unique(set_.begin(), set_.end()), set_.end());
    for (const std::uint64_t below : set_) hash = combined(hash, below);
    return combined(hash, set_.size());
  }

 private:
  std::vector<std::uint64_t> set_;
};

class Structures {
 public:
  Structures(Fingerprints& fingerprints, const Instances& instances, const Order& order)
      : text_(fingerprints.text),
        structure_(fingerprints.structure),
        instances_(instances),
        order_(order) {
    structure_ = Column<std::uint64_t>(instances.size());
  }

  void take() {
    auto circle = order_.circles.begin();
    for (Index i = 0; i < order_.records.size();) {
      if (circle != order_.circles.end() && circle->first == i) {
        take_circle(order_.records.part(circle->first, circle->second));
        i = (circle++)->second;
      } else {
        const Index record = order_.records[i++];
        structure_[record] = hash_.of(text_[record], instances_.references(record),
                                      [this](Index below) { return structure_[below]; });
      }
    }
  }

 private:
  /// First by what stands outside of the circle, then by what the neighbours are, and theirs.
  void take_circle(std::span<const Index> circle) {
    for (const Index record : circle) structure_[record] = IN_CIRCLE;
    std::vector<std::uint64_t> next(circle.size());
    for (int step = 0; step <= CIRCLE_STEPS; ++step) {
      for (std::size_t i = 0; i < circle.size(); ++i) {
        next[i] = hash_.of(text_[circle[i]], instances_.references(circle[i]),
                           [this](Index below) { return structure_[below]; });
      }
      for (std::size_t i = 0; i < circle.size(); ++i) structure_[circle[i]] = next[i];
    }
  }

  const Column<std::uint64_t>& text_;
  Column<std::uint64_t>& structure_;
  const Instances& instances_;
  const Order& order_;
  StructureHash hash_;
};

}  // namespace

void complete(Fingerprints& fingerprints, const Instances& instances, const Order& order) {
  hash_entries(fingerprints, instances);
  find_worth(fingerprints, instances, order);
  find_pure(fingerprints, instances, order);
  Structures(fingerprints, instances, order).take();
}

}  // namespace Kessel::Sameness
