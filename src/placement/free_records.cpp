// Enters what leads to nothing owned and nobody refers to.
#include <algorithm>
#include <unordered_map>

#include "placement/placing.h"

namespace Kessel {

namespace {

// Who, when and as what (ISO 10303-41): what they take part in is about something else.
constexpr Keywords::Row PARTICIPANTS[] = {
    {Keywords::Match::exactly, "PERSON"},
    {Keywords::Match::exactly, "ORGANIZATION"},
    {Keywords::Match::exactly, "PERSON_AND_ORGANIZATION"},
    {Keywords::Match::ending, "ADDRESS"},
    {Keywords::Match::ending, "_DATE"},
    {Keywords::Match::exactly, "DATE_AND_TIME"},
    {Keywords::Match::exactly, "LOCAL_TIME"},
    {Keywords::Match::ending, "_ROLE"},
    {Keywords::Match::ending, "_STATUS"},
};

/// A free record that nobody refers to, and the records that say where it stands.
struct FreeTop {
  Index record;
  bool needs_all;  ///< else one of them is enough
  std::vector<Index> deciders;
  std::vector<Index> brought;  ///< comes along into every file
};

class FreeTops {
 public:
  explicit FreeTops(Placing& placing)
      : placing_(placing),
        classes_(placing.classes),
        takes_part_(types_in(PARTICIPANTS, placing.instances.types())),
        uses_(placing.instances.size()) {
    count_uses();
  }

  std::vector<FreeTop> find() {
    std::vector<FreeTop> tops;
    for (const Index record : placing_.others) {
      if (!is_free(record) || classes_.has(record, NEEDED)) continue;
      if (placing_.stands.is_placed(record)) continue;
      tops.push_back(make_top(record));
    }
    return tops;
  }

 private:
  bool is_free(Index record) const {
    return classes_.is_free(record) && !placing_.is_repeated(record);
  }

  bool is_anchor(Index record) const {
    return placing_.instances.type(record) == TypeTable::ANCHOR_ENTRY;
  }

  void count_uses() {
    for (const Index record : placing_.others) {
      if (is_anchor(record)) continue;  // It is where its instance is, which does not need it.
      const bool is_soft = classes_.has(record, SOFT);
      for (const Reference reference : placing_.instances.references(record)) {
        const Index other = reference.record();
        if (other == NO_RECORD || !is_free(other)) continue;
        ++uses_[other];
        if (!is_soft) classes_.give(other, NEEDED);
      }
    }
  }

  /// An assignment stands where one of its items does. Anything else stands where the rarest of
  /// those records stand that others want, too, persons and the like apart: else one who has
  /// approved everything would spread every approval into every file. What speaks of contexts alone
  /// stands where they do.
  FreeTop make_top(Index record) const {
    FreeTop top{record, true, {}, {}};
    std::vector<Index> soft;
    for (const Reference reference : placing_.instances.references(record)) {
      if (reference.record() == NO_RECORD) continue;
      if (classes_.has(reference.record(), SOFT)) {
        soft.push_back(reference.record());
      } else if (reference.is_listed() || is_anchor(record)) {
        top.needs_all = false;
        top.deciders.push_back(reference.record());
      }
    }
    for (const Reference reference : placing_.instances.references(record)) {
      if (reference.record() == NO_RECORD || (reference.is_listed() && !top.needs_all)) continue;
      top.brought.push_back(reference.record());
    }
    if (top.needs_all) top.deciders = rarest(standing(subjects(shared_below(record))));
    if (top.deciders.empty()) top.deciders = soft;
    return top;
  }

  /// The first records below `record` that others refer to as well.
  std::vector<Index> shared_below(Index record) const {
    std::unordered_map<Index, std::uint32_t> met;  // how often, coming from what is exclusive
    std::vector<Index> open{record};
    while (!open.empty()) {
      const Index next = open.back();
      open.pop_back();
      for (const Reference reference : placing_.instances.references(next)) {
        const Index other = reference.record();
        if (other == NO_RECORD || !is_free(other)) continue;
        if (++met[other] == uses_[other]) open.push_back(other);
      }
    }
    std::vector<Index> shared;
    for (const auto& [other, times] : met) {
      if (times != uses_[other]) shared.push_back(other);
    }
    std::sort(shared.begin(), shared.end());
    return shared;
  }

  /// Those that are more than participants; all where none is.
  std::vector<Index> subjects(std::vector<Index> records) const {
    const auto takes_part = [&](Index record) {
      return takes_part_[placing_.instances.type(record)] != 0;
    };
    if (!std::all_of(records.begin(), records.end(), takes_part)) {
      std::erase_if(records, takes_part);
    }
    return records;
  }

  /// Those that stand somewhere already; all where none does.
  std::vector<Index> standing(const std::vector<Index>& records) const {
    std::vector<Index> placed;
    for (const Index record : records) {
      if (placing_.stands.is_placed(record)) placed.push_back(record);
    }
    return placed.empty() ? records : placed;
  }

  std::vector<Index> rarest(std::vector<Index> records) const {
    std::uint32_t least = UINT32_MAX;
    for (const Index record : records) least = std::min(least, uses_[record]);
    std::erase_if(records, [&](Index record) { return uses_[record] != least; });
    return records;
  }

  Placing& placing_;
  Classes& classes_;
  TypeSet takes_part_;          // by type
  Column<std::uint32_t> uses_;  // of free records
};

std::vector<FileId> files_for(const Placing& placing, const FreeTop& top) {
  std::vector<FileId> files;
  for (const Index decider : top.deciders) {
    for (const Stand stand : placing.stands.of(decider)) files.push_back(stand.file());
    if (top.needs_all) break;
  }
  std::sort(files.begin(), files.end());
  files.erase(std::unique(files.begin(), files.end()), files.end());
  if (!top.needs_all) return files;
  std::erase_if(files, [&](FileId file) {
    return std::any_of(top.deciders.begin(), top.deciders.end(),
                       [&](Index record) { return !placing.stands.has(record, file); });
  });
  return files;
}

/// Enters the top, if it does not stand there yet.
bool place(Placing& placing, const FreeTop& top, FileId file) {
  if (!placing.stands.add(top.record, file, Role::own)) return false;
  for (const Index record : top.brought) placing.bring(record, file);
  return true;
}

}  // namespace

/// What one record brings along may decide about another: goes round until nothing is new.
void place_free_records(Placing& placing) {
  if (placing.products.products.empty()) return;
  const std::vector<FreeTop> tops = FreeTops(placing).find();
  constexpr int MAX_ROUNDS = 16;
  bool is_new = true;
  for (int round = 0; is_new && round < MAX_ROUNDS; ++round) {
    is_new = false;
    for (const FreeTop& top : tops) {
      for (const FileId file : files_for(placing, top)) {
        is_new = place(placing, top, file) || is_new;
      }
    }
  }
}

}  // namespace Kessel
