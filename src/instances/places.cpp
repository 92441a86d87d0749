#include "instances/places.h"

#include <algorithm>
#include <array>

#include "exchange/reader.h"
#include "findings/finding_kinds.h"
#include "findings/finding_list.h"

namespace Kessel {

namespace {

/// Keeps the text of one record.
class RecordKeeper final : public Exchange::Listener {
 public:
  /// `skip` records stand in front of it.
  explicit RecordKeeper(Index skip) : skip_(skip) {}

  void record(const Exchange::Record& record) override {
    take(record.body, record.mentions, record.offset);
  }
  void entry(Exchange::Section, const Exchange::Statement& entry,
             std::span<const Exchange::Mention> mentions) override {
    if (begins_with_name(entry, mentions)) {
      record(record_of(entry, mentions));
    } else {
      take(entry.text, mentions, entry.offset);
    }
  }

  PlacedText take_text() { return std::move(text_); }

 private:
  void take(std::string_view body, std::span<const Exchange::Mention> mentions,
            std::uint64_t offset) {
    if (skip_-- != 0) return;
    text_.body = body;
    for (const Exchange::Mention& mention : mentions) text_.mentions.push_back(mention.number);
    text_.offset = offset;
  }

  Index skip_;
  PlacedText text_;
};

Finding warning_about(const Instances& instances, Index record, const PlacedText& text,
                      FindingKind kind, std::string sentence) {
  Finding finding = make_finding(kind, std::move(sentence), text.offset, instances.number(record));
  finding.severity = Severity::warning;
  return finding;
}

/// "#5 refers to #9, which is not there."
std::string missing_sentence(const Instances& instances, Index record, const PlacedText& text) {
  constexpr std::size_t MOST_NAMED = 3;
  std::vector<std::uint64_t> missing;
  for (const std::uint64_t number : text.mentions) {
    const bool is_new = std::find(missing.begin(), missing.end(), number) == missing.end();
    if (is_new && instances.find(number) == NO_RECORD) missing.push_back(number);
  }
  const std::uint64_t number = instances.number(record);
  std::string sentence =
      number == 0 ? "This refers to " : "#" + std::to_string(number) + " refers to ";
  const std::size_t named = missing.size() <= MOST_NAMED ? missing.size() : MOST_NAMED - 1;
  for (std::size_t i = 0; i < named; ++i) {
    const bool is_last = i + 1 == missing.size();
    if (i != 0) sentence += is_last ? " and " : ", ";
    sentence += "#" + std::to_string(missing[i]);
  }
  if (named < missing.size()) sentence += " and " + with_commas(missing.size() - named) + " others";
  return sentence + (missing.size() == 1 ? ", which is not there." : ", which are not there.");
}

/// Lines while a text is passed over piece by piece.
struct LineCount {
  std::uint64_t offset = 0;
  std::uint64_t line = 1;
  std::uint64_t line_begin = 0;

  void pass(std::string_view piece) {
    line += static_cast<std::uint64_t>(std::count(piece.begin(), piece.end(), '\n'));
    const std::size_t last = piece.rfind('\n');
    if (last != std::string_view::npos) line_begin = offset + last + 1;
    offset += piece.size();
  }
};

}  // namespace

PlacedText read_again(std::istream& in, const Instances& instances, Index record) {
  const Instances::Place place = instances.place_near(record);
  const Index skip = record - place.record;
  RecordKeeper keeper(skip);
  read_records_at(in, place.offset, instances.section(place.record), skip + 1, keeper);
  return keeper.take_text();
}

Finding warning_at(std::istream& in, const Instances& instances, Index record, FindingKind kind,
                   std::string sentence) {
  return warning_about(instances, record, read_again(in, instances, record), kind,
                       std::move(sentence));
}

std::vector<Finding> missing_instances(std::istream& in, const Instances& instances) {
  std::vector<Finding> findings;
  if (instances.missing_references() == 0) return findings;
  constexpr std::uint64_t MOST = FindingList::MOST_OF_A_KIND;
  for (Index record = 0; record < instances.size(); ++record) {
    const auto references = instances.references(record);
    const bool misses = std::any_of(references.begin(), references.end(), [](Reference reference) {
      return reference.record() == NO_RECORD;
    });
    if (!misses || instances.type(record) == TypeTable::REPEATED) continue;
    if (findings.size() > MOST) {
      ++findings.back().count;
      continue;
    }
    const PlacedText text = read_again(in, instances, record);
    findings.push_back(warning_about(instances, record, text, FindingKind::missing_instance,
                                     missing_sentence(instances, record, text)));
  }
  return findings;
}

void locate(std::istream& in, std::vector<Finding>& findings) {
  std::vector<Finding*> in_order;
  for (Finding& finding : findings) {
    if (finding.offset != 0) in_order.push_back(&finding);
  }
  std::sort(in_order.begin(), in_order.end(),
            [](const Finding* a, const Finding* b) { return a->offset < b->offset; });
  in.clear();
  in.seekg(0);
  std::array<char, 65536> block;
  LineCount counted;
  auto next = in_order.begin();
  while (next != in_order.end() && in.good()) {
    in.read(block.data(), block.size());
    std::string_view rest(block.data(), static_cast<std::size_t>(in.gcount()));
    for (; next != in_order.end() && (*next)->offset <= counted.offset + rest.size(); ++next) {
      const auto length = static_cast<std::size_t>((*next)->offset - counted.offset);
      counted.pass(rest.substr(0, length));
      rest.remove_prefix(length);
      (*next)->line = counted.line;
      (*next)->column = counted.offset - counted.line_begin + 1;
    }
    counted.pass(rest);
  }
}

}  // namespace Kessel
