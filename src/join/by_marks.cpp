#include "join/by_marks.h"

#include <algorithm>
#include <string>
#include <tuple>

#include "findings/finding_kinds.h"
#include "findings/finding_list.h"

namespace Kessel {

namespace {

/// What is written of a record is `text`, which stands in `file`; null where it has no mark.
const JoinedFile::Marked* marked(const JoinedFile& file, Index record) {
  const auto place =
      std::lower_bound(file.marked.begin(), file.marked.end(), record,
                       [](const JoinedFile::Marked& one, Index at) { return one.record < at; });
  return place == file.marked.end() || place->record != record ? nullptr : &*place;
}

/// Compares two copies of a record.
class Copies {
 public:
  Copies(const FileSet& files, const Records& records) : files_(files), records_(records) {}

  /// Whether `node` says what its text says, where both are copies of one record.
  bool agree(Node node, const JoinedFile::Marked& copy) const {
    const Node text = records_.text_of(node);
    const JoinedFile& file = files_[records_.file_of(node)];
    const JoinedFile& other = files_[records_.file_of(text)];
    if (!file.is_of_split_of(other)) return true;
    const JoinedFile::Marked* const first = marked(other, records_.index_of(text));
    if (first == nullptr || first->mark.kind != Mark::Kind::whole) return true;
    return first->says == copy.says && unlisted(node) == unlisted(text);
  }

 private:
  /// What a record refers to outside of collectors' lists.
  std::vector<Node> unlisted(Node node) const {
    std::vector<Node> nodes;
    const std::size_t file = records_.file_of(node);
    for (const Reference reference : files_[file].instances.references(records_.index_of(node))) {
      if (reference.is_listed()) continue;
      nodes.push_back(reference.record() == NO_RECORD
                          ? NO_JOINED
                          : records_.text_of(records_.node(file, reference.record())));
    }
    return nodes;
  }

  const FileSet& files_;
  const Records& records_;
};

Finding doubt(FindingKind kind, const Instances& instances, Index record, const char* sentence) {
  const std::uint64_t number = instances.number(record);
  return make_finding(kind, "#" + std::to_string(number) + sentence, 0, number);
}

}  // namespace

void unite_by_marks(const FileSet& files, Records& records) {
  std::vector<std::tuple<std::uint64_t, std::uint64_t, Node>> numbers;  // split, number, record
  for (std::size_t i = 0; i < files.size(); ++i) {
    for (const JoinedFile::Marked& marked : files[i].marked) {
      const Node node = records.node(i, marked.record);
      if (marked.mark.kind == Mark::Kind::made) {
        records.set_standing(node, Standing::made);
        continue;
      }
      if (marked.mark.kind == Mark::Kind::stand_in) records.set_standing(node, Standing::stand_in);
      numbers.emplace_back(*files[i].split, marked.mark.number, node);
    }
  }
  std::sort(numbers.begin(), numbers.end());
  for (std::size_t i = 1; i < numbers.size(); ++i) {
    const auto& [split, number, node] = numbers[i];
    const auto& [split_before, number_before, before] = numbers[i - 1];
    if (split == split_before && number == number_before) records.unite(before, node);
  }
}

std::vector<Finding> doubts_about_marks(const FileSet& files, const Records& records) {
  const Copies copies(files, records);
  FindingList findings;
  for (std::size_t i = 0; i < files.size(); ++i) {
    findings.begin_file(files[i].name);
    for (const JoinedFile::Marked& marked : files[i].marked) {
      const Node node = records.node(i, marked.record);
      if (marked.mark.kind == Mark::Kind::whole && !records.is_text(node) &&
          !copies.agree(node, marked)) {
        findings.add(doubt(FindingKind::copies_differ, files[i].instances, marked.record,
                           " says something else than its copy in another file, which is taken."));
      }
      if (marked.mark.kind == Mark::Kind::stand_in && records.is_text(node) &&
          records.standing(node) == Standing::stand_in) {
        findings.add(doubt(FindingKind::stand_in_left, files[i].instances, marked.record,
                           " stands for a record that no file holds; it is taken itself."));
      }
    }
  }
  return findings.take();
}

}  // namespace Kessel
