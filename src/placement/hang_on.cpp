// Enters what leads to records that stand in files.
#include <algorithm>
#include <string_view>
#include <unordered_map>

#include "placement/placing.h"

namespace Kessel {

namespace {

/// Goes through all records that nobody owns or uses, those that they refer to first.
class HangingOn {
 public:
  explicit HangingOn(Placing& placing)
      : placing_(placing),
        classes_(placing.classes),
        states_(placing.instances.size()),
        is_made_of_plain_(made_of_plain_geometry(placing.instances.types())),
        has_users_(placing.instances.size()) {
    if (placing.has_bodies_apart()) find_aspects();
    find_users();
  }

  void run() {
    for (const Index record : placing_.others) {
      if (is_open_question(record)) visit(record);
    }
  }

 private:
  enum class State : std::uint8_t { unseen, open, done };
  struct Step {
    Index record;
    std::size_t next;
  };

  /// Where the bodies of a part stand apart, an aspect of its shape stands with those bodies that
  /// it is an aspect of, which usages of items say (ISO 10303-41).
  void find_aspects() {
    for (Index record = 0; record < placing_.instances.size(); ++record) {
      if (!is_item_usage(record)) continue;
      const auto references = placing_.instances.references(record);
      if (references.empty() || references.front().record() == NO_RECORD) continue;
      std::vector<FileId>& files = files_of_aspects_[references.front().record()];
      for (const Reference item : references.subspan(1)) {
        if (item.record() == NO_RECORD || classes_.has(item.record(), SOFT | SHOWING)) continue;
        for (const Stand stand : placing_.stands.of(item.record())) files.push_back(stand.file());
      }
    }
    for (auto& [aspect, files] : files_of_aspects_) std::sort(files.begin(), files.end());
  }

  bool is_item_usage(Index record) const {
    const auto& keywords = placing_.instances.types().keywords(placing_.instances.type(record));
    return std::any_of(keywords.begin(), keywords.end(), [](std::string_view keyword) {
      return keyword == "GEOMETRIC_ITEM_SPECIFIC_USAGE" ||
             keyword.ends_with("ITEM_IDENTIFIED_REPRESENTATION_USAGE");
    });
  }

  bool is_open_question(Index record) const {
    return !classes_.has(record, SOFT | OWNED | USED) && states_[record] == State::unseen &&
           !placing_.is_repeated(record);
  }

  void visit(Index first) {
    open(first);
    while (!path_.empty()) {
      Step& step = path_.back();
      const auto references = placing_.instances.references(step.record);
      if (step.next == references.size()) {
        const Index record = step.record;
        path_.pop_back();
        states_[record] = State::done;
        decide(record);
        continue;
      }
      const Index other = references[step.next++].record();
      if (other != NO_RECORD && is_open_question(other)) open(other);
    }
  }

  void open(Index record) {
    states_[record] = State::open;
    path_.push_back({record, 0});
  }

  void find_users() {
    for (const Index record : placing_.others) {
      if (classes_.has(record, SOFT)) continue;
      for (const Reference reference : placing_.instances.references(record)) {
        if (reference.record() != NO_RECORD) has_users_[reference.record()] = true;
      }
    }
  }

  /// Whether `record` stands where `other` does, since it refers to that. Geometry that somebody
  /// uses stands with whoever that is, and not with the shapes that it shares points with.
  bool is_bound_by(Index other, Index record) const {
    if (!classes_.has(other, OWNED | USED | BOUND) || classes_.has(other, SOFT)) return false;
    return !is_made_of_plain_[placing_.instances.type(record)] || !has_users_[record] ||
           !is_plain_geometry(placing_.instances, other);
  }

  void decide(Index record) {
    find_bonds(record);
    if (fixed_.empty() && listed_.empty()) return;
    classes_.give(record, BOUND);
    if (placing_.stands.is_placed(record)) return;
    find_files();
    keep_files_of_aspect(record);
    find_brought(record);
    for (const FileId file : files_) {
      placing_.stands.add(record, file, Role::own);
      for (const Index other : brought_) placing_.bring(other, file);
    }
  }

  /// What `record` stands with. A shape that nobody owns is not bound by the placements, maybe of
  /// others, that it is listed with.
  void find_bonds(Index record) {
    fixed_.clear();
    listed_.clear();
    bool lists_free = false;
    for (const Reference reference : placing_.instances.references(record)) {
      const Index other = reference.record();
      if (other == NO_RECORD) continue;
      if (is_bound_by(other, record)) {
        (reference.is_listed() ? listed_ : fixed_).push_back(other);
      } else if (reference.is_listed()) {
        lists_free = lists_free || !is_plain_geometry(placing_.instances, other);
      }
    }
    if (!lists_free) return;
    std::erase_if(listed_, [&](Index item) { return is_plain_geometry(placing_.instances, item); });
  }

  /// The files in which all fixed references stand, and one of the listed ones if there are any.
  /// One of all these must be the file's own, unless that is so nowhere.
  void find_files() {
    files_.clear();
    // Fast path: a style of one face.
    if (fixed_.size() == 1 && listed_.empty()) {
      const auto stands = placing_.stands.of(fixed_.front());
      if (stands.size() == 1) {
        files_.push_back(stands.front().file());
        return;
      }
    }
    take_files(true);
    if (files_.empty()) take_files(false);
  }

  void take_files(bool must_own) {
    candidates_.clear();
    const auto add_candidates = [&](Index record) {
      for (const Stand stand : placing_.stands.of(record)) {
        if (!must_own || stand.role() == Role::own) candidates_.push_back(stand.file());
      }
    };
    for (const Index record : fixed_) add_candidates(record);
    for (const Index record : listed_) add_candidates(record);
    std::sort(candidates_.begin(), candidates_.end());
    candidates_.erase(std::unique(candidates_.begin(), candidates_.end()), candidates_.end());
    std::erase_if(candidates_, [&](FileId file) {
      return std::any_of(fixed_.begin(), fixed_.end(),
                         [&](Index record) { return !placing_.stands.has(record, file); });
    });
    if (!listed_.empty() && !fixed_.empty()) keep_files_of_items();
    files_ = candidates_;
  }

  void keep_files_of_aspect(Index record) {
    const auto found = files_of_aspects_.find(record);
    if (found == files_of_aspects_.end()) return;
    std::erase_if(files_, [&](FileId file) {
      return !std::binary_search(found->second.begin(), found->second.end(), file);
    });
  }

  void keep_files_of_items() {
    item_files_.clear();
    for (const Index record : listed_) {
      for (const Stand stand : placing_.stands.of(record)) item_files_.push_back(stand.file());
    }
    std::sort(item_files_.begin(), item_files_.end());
    std::erase_if(candidates_, [&](FileId file) {
      return !std::binary_search(item_files_.begin(), item_files_.end(), file);
    });
  }

  /// What comes along with `record`, once for all files: a list may be as long as they are many.
  /// Free items of a list with others come by themselves, or else are left over.
  void find_brought(Index record) {
    brought_.clear();
    for (const Reference reference : placing_.instances.references(record)) {
      const Index other = reference.record();
      if (other == NO_RECORD) continue;
      if (is_bound_by(other, record) && !(reference.is_listed() && listed_.empty())) continue;
      if (reference.is_listed() && !listed_.empty() && !classes_.has(other, SOFT)) continue;
      brought_.push_back(other);
    }
  }

  Placing& placing_;
  Classes& classes_;
  std::vector<State> states_;
  TypeSet is_made_of_plain_;
  std::vector<bool> has_users_;  // by record: others than contexts
  std::unordered_map<Index, std::vector<FileId>> files_of_aspects_;
  std::vector<Step> path_;
  std::vector<Index> fixed_;
  std::vector<Index> listed_;
  std::vector<FileId> files_;
  std::vector<FileId> candidates_;
  std::vector<Index> brought_;
  std::vector<FileId> item_files_;
};

}  // namespace

void hang_on(Placing& placing) {
  if (placing.products.products.empty()) return;
  HangingOn(placing).run();
}

}  // namespace Kessel
