// Enters all that stands nowhere yet.
#include <algorithm>
#include <unordered_set>

#include "placement/placing.h"

namespace Kessel {

namespace {

/// What has to be entered into a file so that a record stands there whole.
struct Needed {
  std::vector<Index> records;
  std::uint64_t definitions = 0;  ///< of products among them
  bool has_foreign_shape = false;
  bool is_too_much = false;  ///< more than was asked for; not all is here

  bool is_less_than(const Needed& other) const {
    if (is_too_much) return false;
    return definitions != other.definitions ? definitions < other.definitions
                                            : records.size() < other.records.size();
  }
};

class LeftOvers {
 public:
  explicit LeftOvers(Placing& placing)
      : placing_(placing), instances_(placing.instances), classes_(placing.classes) {}

  /// What only a collector leads to that stands in one file stands there, too.
  void place_items() {
    for (const Index record : placing_.others) {
      const auto places = placing_.stands.of(record);
      if (places.size() != 1 || !placing_.collects(record)) continue;
      const FileId file = places.front().file();
      for (const Reference item : instances_.references(record)) {
        if (item.record() == NO_RECORD || !item.is_listed() || !is_left(item.record())) continue;
        if (!classes_.is_free(item.record())) continue;
        const Needed all = needed(item.record(), file, NO_LIMIT);
        if (!placing_.keeps_others_out(file) || is_nobodys(all)) enter(all, record, file);
      }
    }
  }

  /// Those first that nothing left over refers to: they bring along what they refer to.
  void place_all() {
    for (const Usage& usage : placing_.products.usages) {
      if (usage.closes_circle) place_circle(usage);
    }
    std::vector<Index> left;
    for (const Index record : placing_.others) {
      if (is_left(record)) left.push_back(record);
    }
    std::unordered_set<Index> wanted;
    for (const Index record : left) {
      for (const Reference reference : instances_.references(record)) {
        const Index other = reference.record();
        if (other != NO_RECORD && other != record && is_left(other)) wanted.insert(other);
      }
    }
    for (const Index record : left) {
      if (!wanted.contains(record)) place(record);
    }
    for (const Index record : left) place(record);
  }

  /// Every item of a collector stands with the collector somewhere.
  void complete_lists() {
    for (const Index record : placing_.others) {
      if (classes_.has(record, OWNED) || !placing_.collects(record)) continue;
      if (placing_.is_repeated(record)) continue;
      for (const Reference reference : instances_.references(record)) {
        if (reference.record() != NO_RECORD && reference.is_listed()) {
          join_item(record, reference.record());
        }
      }
    }
  }

 private:
  bool is_left(Index record) const {
    return !placing_.stands.is_placed(record) && !placing_.is_repeated(record);
  }

  void place_circle(const Usage& usage) {
    placing_.placement.warnings.push_back({PlacementWarning::Kind::closes_circle, usage.record, 0});
    const auto to_root = [&](Index record) { enter(needed(record, 0, NO_LIMIT), record, 0); };
    to_root(usage.record);
    for (const Index record : usage.shapes) to_root(record);
    for (const Index record : usage.placements) to_root(record);
    for (const Index record : usage.relationships) to_root(record);
    for (const ShapeLink& link : usage.links) to_root(link.link);
  }

  void place(Index record) {
    if (!is_left(record)) return;
    FileId best_file = 0;
    Needed best = needed(record, 0, NO_LIMIT);
    if (classes_.has(record, BOUND)) {
      for (const FileId file : candidates(best)) {
        Needed some = needed(record, file, 4 * best.records.size() + 64);
        if (placing_.keeps_others_out(file)) {
          if (is_nobodys(some)) enter(some, record, file);
          continue;
        }
        if (!some.is_less_than(best)) continue;
        best = std::move(some);
        best_file = file;
      }
    }
    if (is_left(record)) enter(best, record, best_file);
  }

  /// Whether what is needed is of no other product, plain placements and their parts aside.
  bool is_nobodys(const Needed& all) const {
    return !all.is_too_much && !all.has_foreign_shape &&
           std::none_of(all.records.begin(), all.records.end(),
                        [&](Index record) { return classes_.has(record, DEFINING | SHOWING); });
  }

  /// Other assemblies' files in which something stands that the root lacks. A few will do.
  std::vector<FileId> candidates(const Needed& lacking) const {
    constexpr std::size_t MOST = 16;
    std::vector<FileId> files;
    for (const Index record : lacking.records) {
      if (!classes_.has(record, OWNED | USED | BOUND) || classes_.has(record, SOFT)) continue;
      for (const Stand stand : placing_.stands.of(record)) {
        if (files.size() == MOST) break;
        if (stand.file() == 0) continue;
        if (placing_.has_components(stand.file()) || placing_.keeps_others_out(stand.file())) {
          files.push_back(stand.file());
        }
      }
    }
    std::sort(files.begin(), files.end());
    files.erase(std::unique(files.begin(), files.end()), files.end());
    return files;
  }

  /// What `record` lacks in `file`; gives up beyond `limit` records.
  Needed needed(Index record, FileId file, std::uint64_t limit) const {
    Needed all;
    std::unordered_set<Index> seen;
    const auto enter = [&](Index other) {
      if (placing_.stands.has(other, file) || !seen.insert(other).second) return;
      all.records.push_back(other);
      if (classes_.has(other, DEFINING) && classes_.has(other, IDENTITY)) ++all.definitions;
    };
    enter(record);
    for (std::size_t next = 0; next < all.records.size(); ++next) {
      if (all.records.size() > limit) {
        all.is_too_much = true;
        break;
      }
      const Index at = all.records[next];
      if (placing_.is_placeholder(at, file)) {
        for (const Reference reference : instances_.references(at)) {
          if (reference.record() != NO_RECORD && !reference.is_listed()) enter(reference.record());
        }
        continue;
      }
      if (placing_.is_shape(at)) all.has_foreign_shape = true;
      const bool shares_out = placing_.collects(at) && !classes_.has(at, OWNED) &&
                              std::any_of(instances_.references(at).begin(),
                                          instances_.references(at).end(), [&](Reference r) {
                                            return r.is_listed() && r.record() != NO_RECORD &&
                                                   placing_.stands.has(r.record(), file);
                                          });
      for (const Reference reference : instances_.references(at)) {
        const Index other = reference.record();
        if (other == NO_RECORD) continue;
        if (shares_out && reference.is_listed() && placing_.stands.is_placed(other)) continue;
        enter(other);
      }
    }
    return all;
  }

  void enter(const Needed& all, Index for_record, FileId file) {
    std::vector<Index> placeholders;
    for (const Index record : all.records) {
      const bool is_placeholder = placing_.is_placeholder(record, file);
      if (is_placeholder) placeholders.push_back(record);
      const bool is_foreign = classes_.has(record, OWNED) && !classes_.has(record, SOFT);
      placing_.stands.add(record, file,
                          is_placeholder ? Role::stand_in
                          : is_foreign   ? Role::guest
                                         : Role::own);
    }
    placing_.give_placements(file, placeholders);
    if (all.has_foreign_shape) {
      placing_.placement.warnings.push_back(
          {PlacementWarning::Kind::foreign_shape, for_record, file});
    }
  }

  /// Where no file has both: the collector goes to a file of the item if it needs nothing bound
  /// there, else the item to a file of the collector.
  void join_item(Index collector, Index item) {
    for (const Stand stand : placing_.stands.of(item)) {
      if (placing_.stands.has(collector, stand.file())) return;
    }
    for (const Stand stand : placing_.stands.of(item)) {
      const FileId file = stand.file();
      const Needed all = needed(collector, file, NO_LIMIT);
      const bool is_easy = std::none_of(all.records.begin(), all.records.end(), [&](Index record) {
        return record != collector && classes_.has(record, OWNED | USED | BOUND) &&
               !classes_.has(record, SOFT);
      });
      if (is_easy) return enter(all, collector, file);
    }
    const auto places = placing_.stands.of(collector);
    if (places.empty()) return;
    const FileId file = places.front().file();
    if (placing_.keeps_others_out(file)) {
      enter(needed(collector, 0, NO_LIMIT), collector, 0);
      enter(needed(item, 0, NO_LIMIT), collector, 0);
    } else {
      enter(needed(item, file, NO_LIMIT), collector, file);
    }
  }

  static constexpr std::uint64_t NO_LIMIT = ~std::uint64_t{0};

  Placing& placing_;
  const Instances& instances_;
  Classes& classes_;
};

}  // namespace

void place_left_overs(Placing& placing) {
  LeftOvers left(placing);
  left.place_items();
  left.place_all();
  if (!placing.products.products.empty()) left.complete_lists();
}

}  // namespace Kessel
