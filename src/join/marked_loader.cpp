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
  // Most records have nothing but a line feed in front.
  if (file_.split && record.lead.size() > 2) {
    const Mark mark = mark_in(record.lead);
    if (mark.kind != Mark::Kind::none) {
      const bool is_whole = mark.kind == Mark::Kind::whole;
      file_.marked.push_back({index, mark, is_whole ? digest_of(record.body) : Digest()});
    }
  }
  if (takes_texts_) texts_.add(index, record.body, file_.texts);
  if (is_value(file_.instances.type(index))) {
    file_.values.push_back({index, digest_of(record.body)});
  }
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
