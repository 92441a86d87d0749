#include "join/joined_records.h"

#include <algorithm>
#include <set>
#include <string>
#include <utility>

#include "instances/instance_builder.h"
#include "join/joined_text.h"
#include "sameness/text_hash.h"

namespace Kessel {

namespace {

/// Enters what is written of one file.
class FileRecords {
 public:
  FileRecords(const FileSet& files, std::size_t file, const Records& records,
              const JoinedLists& lists, Numbering& numbering, InstanceBuilder& builder,
              Column<std::uint64_t>& texts)
      : file_(files[file]),
        position_(file),
        records_(records),
        lists_(lists),
        numbering_(numbering),
        builder_(builder),
        texts_(texts),
        text_(files, file, records, lists, numbering) {
    builder_.begin_file(file_.instances.types());
  }

  void enter_numbered() {
    auto kept = file_.instances.kept().begin();
    const auto end = file_.instances.kept().end();
    for (Index record = 0; record < file_.instances.size(); ++record) {
      const bool is_kept = kept != end && *kept == record;
      if (is_kept) ++kept;
      if (!is_written(record) || type(record) == TypeTable::ANCHOR_ENTRY) continue;
      enter(record);
      if (is_kept) keep(record);
    }
  }

  /// The lines of anchors that are not in `known` yet.
  void enter_anchors(std::set<std::string>& known) {
    for (const Index entry : file_.instances.kept()) {
      if (type(entry) != TypeTable::ANCHOR_ENTRY || !is_written(entry)) continue;
      std::string line;
      text_.append_entry(entry, line);
      if (!known.insert(line).second) continue;
      enter(entry);
      builder_.keep(std::move(line));
    }
  }

 private:
  TypeId type(Index record) const { return file_.instances.type(record); }
  bool is_written(Index record) const {
    return records_.is_written(records_.node(position_, record));
  }

  /// An instance called #0 gets another number, lines that define no instance have none.
  bool has_number(Index record) const {
    const bool is_record = type(record) >= TypeTable::FIRST_OF_RECORDS;
    return is_record || file_.instances.number(record) != 0;
  }

  void enter(Index record) {
    builder_.begin_record(type(record), has_number(record));
    texts_.push_back(record < file_.texts.size() ? file_.texts[record] : 0);
    const Node node = records_.node(position_, record);
    const bool loses_items = rewrites_list(file_, lists_, node, record);
    for (const Reference reference : file_.instances.references(record)) {
      const std::uint64_t number =
          reference.record() == NO_RECORD
              ? 0
              : numbering_.of(records_.node(position_, reference.record()));
      const bool is_gone = number == 0 && reference.record() != NO_RECORD;
      if (is_gone && reference.is_listed() && loses_items) continue;
      builder_.refer(Reference(index_of(number), reference.is_listed()));
    }
    for (const Node item : lists_.more_of(node)) {
      if (numbering_.of(item) != 0) builder_.refer(Reference(index_of(numbering_.of(item)), true));
    }
  }

  static Index index_of(std::uint64_t number) {
    return number == 0 ? NO_RECORD : static_cast<Index>(number - 1);
  }

  void keep(Index record) {
    std::string text;
    if (type(record) == TypeTable::REFERENCE_ENTRY) {
      text_.append_entry(record, text);
    } else {
      text_.append_body(record, file_.instances.kept_body(record), text);
      if (!file_.edits.of(record).empty()) {
        texts_.back() = Sameness::RecordHash(file_.instances.types()).of(type(record), text);
      }
    }
    builder_.keep(std::move(text));
  }

  const JoinedFile& file_;
  const std::size_t position_;
  const Records& records_;
  const JoinedLists& lists_;
  Numbering& numbering_;
  InstanceBuilder& builder_;
  Column<std::uint64_t>& texts_;
  JoinedText text_;
};

}  // namespace

void make_joined_records(const FileSet& files, const Records& records, const JoinedLists& lists,
                         Numbering& numbering, std::uint64_t memory_limit, Instances& instances,
                         Column<std::uint64_t>& texts) {
  InstanceBuilder builder(instances, memory_limit);
  builder.take_header(files.root().instances.header());
  builder.begin_section(Exchange::Section::data, {});
  for (std::size_t i = 0; i < files.size(); ++i) {
    FileRecords(files, i, records, lists, numbering, builder, texts).enter_numbered();
  }
  std::set<std::string> anchors;
  for (std::size_t i = 0; i < files.size(); ++i) {
    FileRecords(files, i, records, lists, numbering, builder, texts).enter_anchors(anchors);
  }
  builder.finish();
}

}  // namespace Kessel
