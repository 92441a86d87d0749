// Checks the product structure.
#include "check/structure_check.h"

#include <algorithm>
#include <map>
#include <string>
#include <vector>

#include "check/cycles.h"
#include "structure/discovery.h"
#include "structure/links.h"

namespace Kessel {

namespace {

using enum FindingKind;

/// The parts and who is whose component, all as instance numbers.
class Structure {
 public:
  Structure(const Store& store, const RecordPlaces& places, FindingList& findings)
      : store_(store), places_(places), findings_(findings), parts_(find_part_numbers(store)) {}

  void check() {
    if (parts_.empty()) {
      findings_.add(no_part, {}, 0,
                    "There is nothing to split: no product definition leads to a product or a "
                    "shape.");
    } else if (parts_.size() == 1) {
      findings_.add(one_part, places_[parts_.front()], parts_.front(),
                    "There is nothing to split: this is the only part.");
    } else {
      read_usages();
      find_cycles();
      find_root();
      for (const std::uint32_t part : parts_) look_for_name(part);
    }
  }

 private:
  bool is_part(std::uint32_t number) const {
    return std::binary_search(parts_.begin(), parts_.end(), number);
  }

  void read_usages() {
    for (const std::string_view type : LINK_TYPES) {
      for (const unsigned usage : store_.get_ids(type)) {
        const auto references = store_.at(usage)->references();
        if (references.size() < 2) {
          findings_.add(unused_usage, places_[usage], usage,
                        "The usage does not refer to an assembly and a component.");
        } else if (!is_part(references[0]) || !is_part(references[1])) {
          const std::uint32_t other = is_part(references[0]) ? references[1] : references[0];
          findings_.add(unused_usage, places_[usage], usage,
                        "The usage joins no two parts: #" + std::to_string(other) + " is none.");
        } else {
          components_[references[0]].push_back(references[1]);
          used_.push_back(references[1]);
        }
      }
    }
  }

  void find_cycles() {
    CycleSearch search(store_.entities.size(), [&](std::uint32_t part) {
      const auto found = components_.find(part);
      return found == components_.end() ? std::span<const std::uint32_t>()
                                        : std::span<const std::uint32_t>(found->second);
    });
    for (const std::uint32_t part : parts_) search.visit(part);
    for (const Cycle& cycle : search.cycles()) {
      std::string sentence = "The part #" + std::to_string(cycle.lowest);
      if (cycle.size == 1) {
        sentence += " is a component of itself.";
      } else {
        sentence += " and " + with_commas(cycle.size - 1) +
                    (cycle.size == 2 ? " other" : " others") +
                    " are components of each other in a circle.";
      }
      findings_.add(usage_cycle, places_[cycle.lowest], cycle.lowest, std::move(sentence));
    }
  }

  void find_root() {
    std::sort(used_.begin(), used_.end());
    used_.erase(std::unique(used_.begin(), used_.end()), used_.end());
    if (used_.size() < parts_.size()) return;
    findings_.add(no_root, {}, 0,
                  "Every part is a component of another one: there is no root, and no file shows "
                  "how the parts fit together.");
  }

  /// A part's file is named after the number behind the first reference of its first reference.
  void look_for_name(std::uint32_t part) {
    std::uint32_t number = part;
    const Entity* record = store_.at(part);
    for (int step = 0; step < 2 && record != nullptr; ++step) {
      number = record->refer_any() ? record->references().front() : 0;
      record = store_.at(number);
    }
    if (record != nullptr) return;
    findings_.add(part_without_name, places_[part], part,
                  "The part #" + std::to_string(part) +
                      " leads to no product after which its file could be named; the file cannot "
                      "be written.");
  }

  const Store& store_;
  const RecordPlaces& places_;
  FindingList& findings_;
  std::vector<std::uint32_t> parts_;  // ascending
  std::map<std::uint32_t, std::vector<std::uint32_t>> components_;
  std::vector<std::uint32_t> used_;
};

}  // namespace

void check_structure(const Store& store, const RecordPlaces& places, FindingList& findings) {
  Structure(store, places, findings).check();
}

}  // namespace Kessel
