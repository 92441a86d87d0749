#include "join/marked_loader.h"

#include "sameness/values.h"

namespace Kessel {

MarkedLoader::MarkedLoader(JoinedFile& file, bool takes_texts, const Options& options,
                           std::uint64_t total)
    : InstanceLoader(file.instances, options, total),
      file_(file),
      takes_texts_(takes_texts),
      texts_(file.instances) {}

void MarkedLoader::warning(const Finding& finding) {
  if (finding.kind == FindingKind::text_after_end) text_after_end_ = finding;
}

void MarkedLoader::added(Index index, const Exchange::Record& record) {
  if (!knows_split_) {
    file_.split = split_in(record.lead);
    knows_split_ = true;
  }
  if (file_.split) note_mark(index, record, record.body);
  if (takes_texts_) texts_.add(index, record.body, file_.texts);
  if (is_value(file_.instances.type(index))) {
    file_.values.push_back({index, digest_of(record.body)});
  }
}

/// Whose file it is is known only when the data begins.
void MarkedLoader::added_entry(Index index, const Exchange::Statement& entry,
                               std::span<const Exchange::Mention> /*mentions*/) {
  if (file_.instances.type(index) == TypeTable::REFERENCE_ENTRY)
    note_mark(index, entry, entry.text);
}

void MarkedLoader::note_mark(Index index, const Exchange::Statement& statement,
                             std::string_view body) {
  // Most statements have nothing but a line feed in front.
  if (statement.lead.size() <= 2) return;
  const Mark mark = mark_in(statement.lead);
  if (mark.kind == Mark::Kind::none) return;
  const bool is_whole = mark.kind == Mark::Kind::whole;
  file_.marked.push_back({index, mark, is_whole ? digest_of(body) : Digest()});
}

bool MarkedLoader::is_value(TypeId type) {
  if (type >= values_.size()) values_.resize(type + 1, -1);
  if (values_[type] < 0) {
    const Sameness::Worth worth = Sameness::worth_of(file_.instances.types(), type);
    values_[type] = worth != Sameness::Worth::identity && worth != Sameness::Worth::geometry;
  }
  return values_[type] != 0;
}

}  // namespace Kessel
