#include "join/residue.h"

#include <map>
#include <memory>
#include <set>
#include <vector>

#include "instances/users.h"

namespace Kessel {

namespace {

class Residue {
 public:
  Residue(const FileSet& files, const JoinedLists& lists, Records& records)
      : files_(files), lists_(lists), records_(records) {}

  void remove(const Documents& documents) {
    remove_repeated();
    remove_with_users(documents);
    keep_what_is_needed();
    if (!documents.empty()) remove_what_nobody_needs(documents);
  }

 private:
  template <class Look>
  void for_each_node(Look look) const {
    for (std::size_t file = 0; file < files_.size(); ++file) {
      const Index count = files_[file].instances.size();
      for (Index record = 0; record < count; ++record) look(file, record);
    }
  }

  /// Calls `look` with the text of everything that the record refers to, its list's additions
  /// included.
  template <class Look>
  void for_each_target(std::size_t file, Index record, Look look) const {
    for (const Reference reference : files_[file].instances.references(record)) {
      if (reference.record() == NO_RECORD) continue;
      look(records_.text_of(records_.node(file, reference.record())));
    }
    for (const Node item : lists_.more_of(records_.node(file, record))) look(item);
  }

  bool is_gone(Node node) const { return records_.standing(node) == Standing::gone; }

  void remove_repeated() {
    for_each_node([&](std::size_t file, Index record) {
      if (files_[file].instances.type(record) == TypeTable::REPEATED) {
        records_.set_standing(records_.node(file, record), Standing::gone);
      }
    });
  }

  /// A record means nothing without what it refers to, but for the items of a collector's list:
  /// that goes with the last of them.
  void remove_with_users(const Documents& documents) {
    std::vector<Node> gone;
    for (const Node document : documents) {
      remove(document, gone);
      while (!gone.empty()) {
        const Node node = gone.back();
        gone.pop_back();
        const std::size_t file = records_.file_of(node);
        for (const Index user : users_in(file).of(records_.index_of(node))) {
          const Node of_it = records_.node(file, user);
          if (loses_its_meaning(records_.text_of(of_it))) remove(of_it, gone);
        }
      }
    }
    users_.clear();
  }

  const Users& users_in(std::size_t file) {
    std::unique_ptr<Users>& users = users_[file];
    if (!users) users = std::make_unique<Users>(files_[file].instances);
    return *users;
  }

  /// Removes what `node` has become. Who refers to it is to be looked at in its file and in that of
  /// its text.
  void remove(Node node, std::vector<Node>& gone) {
    const Node text = records_.text_of(node);
    if (is_gone(text)) return;
    records_.set_standing(text, Standing::gone);
    gone.push_back(text);
    if (text != node) gone.push_back(node);
  }

  bool loses_its_meaning(Node text) const {
    const std::size_t file = records_.file_of(text);
    bool has_items = false;
    bool lost_items = false;
    for (const Reference reference : files_[file].instances.references(records_.index_of(text))) {
      if (reference.record() == NO_RECORD) continue;
      const bool gone = is_gone(records_.text_of(records_.node(file, reference.record())));
      if (gone && !reference.is_listed()) return true;
      lost_items |= gone;
      has_items |= !gone && reference.is_listed();
    }
    for (const Node item : lists_.more_of(text)) (is_gone(item) ? lost_items : has_items) = true;
    return lost_items && !has_items;
  }

  /// What was made is written where something that is written refers to it.
  void keep_what_is_needed() {
    std::vector<Node> needed;
    const auto need = [&](Node target) {
      if (records_.standing(target) != Standing::made) return;
      records_.set_standing(target, Standing::whole);
      needed.push_back(target);
    };
    for_each_node([&](std::size_t file, Index record) {
      if (records_.is_written(records_.node(file, record))) for_each_target(file, record, need);
    });
    while (!needed.empty()) {
      const Node node = needed.back();
      needed.pop_back();
      for_each_target(records_.file_of(node), records_.index_of(node), need);
    }
  }

  /// By file: whether it has one of the documents, or a file of the same split has.
  std::vector<bool> files_that_refer(const Documents& documents) const {
    std::vector<bool> refers(files_.size());
    std::set<std::uint64_t> splits;
    for (const Node document : documents) {
      const std::size_t file = records_.file_of(document);
      refers[file] = true;
      if (files_[file].split) splits.insert(*files_[file].split);
    }
    for (std::size_t i = 0; i < files_.size(); ++i) {
      if (files_[i].split && splits.contains(*files_[i].split)) refers[i] = true;
    }
    return refers;
  }

  /// Removes what had users in a file that refers to others, and has none left.
  void remove_what_nobody_needs(const Documents& documents) {
    Column<std::uint32_t> users(records_.size());
    for_each_node([&](std::size_t file, Index record) {
      if (!records_.is_written(records_.node(file, record))) return;
      for_each_target(file, record, [&](Node target) { ++users[target]; });
    });
    const std::vector<bool> refers = files_that_refer(documents);
    std::vector<Node> unused;
    const auto look = [&](Node target) {
      if (users[target] == 0 && records_.is_written(target) && refers[records_.file_of(target)]) {
        records_.set_standing(target, Standing::gone);
        unused.push_back(target);
      }
    };
    for_each_node([&](std::size_t file, Index record) {
      const Node node = records_.node(file, record);
      const bool replaced =
          !records_.is_text(node) && records_.standing(node) == Standing::counterpart;
      if (refers[file] && (replaced || is_gone(node))) for_each_target(file, record, look);
      while (!unused.empty()) {
        const Node last = unused.back();
        unused.pop_back();
        for_each_target(records_.file_of(last), records_.index_of(last), [&](Node target) {
          if (users[target] > 0) --users[target];
          look(target);
        });
      }
    });
  }

  const FileSet& files_;
  const JoinedLists& lists_;
  Records& records_;
  std::map<std::size_t, std::unique_ptr<Users>> users_;  // by file
};

}  // namespace

void remove_residue(const FileSet& files, const Documents& documents, const JoinedLists& lists,
                    Records& records) {
  Residue(files, lists, records).remove(documents);
}

}  // namespace Kessel
