#include "instances/loader.h"

#include <algorithm>
#include <string>

#include "check/finding_list.h"
#include "instances/collectors.h"
#include "instances/places.h"
#include "kessel/errors.h"
#include "model/finding_kinds.h"

namespace Kessel {

namespace {

enum class Match : std::uint8_t { containing, ending };

struct Row {
  Match match;
  std::string_view name;
};

using enum Match;

// The types whose texts are kept: those that say which products there are, how they are put
// together, what they are called and where their shapes are, and in which units.
constexpr Row KEPT[] = {
    {containing, "PRODUCT"},
    {containing, "USAGE"},
    {containing, "REPRESENTATION_RELATIONSHIP"},
    {containing, "PROPERTY_DEFINITION"},
    {containing, "DOCUMENT"},
    {containing, "EXTERNAL"},
    {containing, "UNIT"},
    {containing, "TRANSFORMATION"},
    {ending, "SHAPE_REPRESENTATION"},
    {ending, "DEFINITION_REPRESENTATION"},
    {ending, "REPRESENTATION_CONTEXT"},
    {ending, "REPRESENTATION_MAP"},
    {ending, "MAPPED_ITEM"},
    {ending, "IDENTIFICATION_ROLE"},
    {ending, "ID_ATTRIBUTE"},
    {ending, "NAME_ATTRIBUTE"},
    {ending, "DESCRIPTION_ATTRIBUTE"},
};

bool is_kept(std::string_view keyword) {
  return std::any_of(std::begin(KEPT), std::end(KEPT), [&](const Row& row) {
    return row.match == containing ? keyword.find(row.name) != std::string_view::npos
                                   : keyword.ends_with(row.name);
  });
}

bool stands_in(const char* place, const std::vector<std::string_view>& texts) {
  return std::any_of(texts.begin(), texts.end(), [&](std::string_view text) {
    return place >= text.data() && place < text.data() + text.size();
  });
}

}  // namespace

InstanceLoader::InstanceLoader(Instances& instances, const Options& options, std::uint64_t total)
    : instances_(instances),
      reporter_(options, Stage::reading, total),
      memory_limit_(options.memory_limit) {}

void InstanceLoader::header_entity(const Exchange::Statement& entity) {
  instances_.header_.emplace_back(entity.text);
}

void InstanceLoader::begin_section(Exchange::Section section, std::string_view parameters) {
  if (section == Exchange::Section::data) {
    instances_.data_sections_.push_back({instances_.size(), std::string(parameters)});
  }
}

void InstanceLoader::record(const Exchange::Record& record) {
  const TypeId type = instances_.type_table_.type_of(record);
  const Index index = begin_record(type, record.number, record.offset);
  const bool collects = instances_.type_table_.collects(type);
  add_references(record.mentions, collects ? record.body : std::string_view());
  if (keeps_text(type)) keep(index, record.body);
  added(index, record);
  if (reporter_.is_due(record.offset)) reporter_.report(record.offset);
}

void InstanceLoader::entry(Exchange::Section section, const Exchange::Statement& entry,
                           std::span<const Exchange::Mention> mentions) {
  // A line of a reference section defines the instance that it begins with.
  const bool defines =
      section == Exchange::Section::reference && !mentions.empty() && entry.text.starts_with('#');
  const std::uint64_t number = defines ? mentions.front().number : 0;
  const TypeId type =
      section == Exchange::Section::anchor ? TypeTable::ANCHOR_ENTRY : TypeTable::REFERENCE_ENTRY;
  const Index index = begin_record(type, number, entry.offset);
  add_references(defines ? mentions.subspan(1) : mentions, {});
  keep(index, entry.text);
}

Index InstanceLoader::begin_record(TypeId type, std::uint64_t number, std::uint64_t offset) {
  Instances& all = instances_;
  const Index index = all.size();
  if (index == NO_RECORD - 1) {
    throw InputError(make_finding(FindingKind::memory_limit,
                                  "The file has more records than can be told apart.", offset));
  }
  if (index % Instances::BLOCK == 0) {
    references_of_block_ = all.references_.size();
    all.block_references_.push_back(references_of_block_);
    all.block_offsets_.push_back(offset);
    if (memory_limit_ != Options::NO_LIMIT) require_memory();
  }
  all.types_.push_back(type);
  if (number >= Instances::LARGE_NUMBER) {
    all.large_numbers_.emplace(index, number);
    all.numbers_.push_back(Instances::LARGE_NUMBER);
  } else {
    all.numbers_.push_back(static_cast<std::uint32_t>(number));
  }
  all.first_references_.push_back(
      static_cast<std::uint32_t>(all.references_.size() - references_of_block_));
  largest_ = std::max(largest_, number);
  return index;
}

/// Until the numbers are resolved, a reference holds the number, and no mark: the marks of
/// collectors' lists wait in a list of their own.
void InstanceLoader::add_references(std::span<const Exchange::Mention> mentions,
                                    std::string_view collector_body) {
  std::vector<std::string_view> lists;
  if (!collector_body.empty()) lists = collected_lists(collector_body);
  Column<Reference>& references = instances_.references_;
  for (const Exchange::Mention& mention : mentions) {
    if (!lists.empty() && stands_in(mention.begin, lists)) listed_.push_back(references.size());
    if (mention.number > UINT32_MAX) large_references_.emplace(references.size(), mention.number);
    references.push_back(Reference::unresolved(static_cast<std::uint32_t>(mention.number)));
  }
}

void InstanceLoader::keep(Index index, std::string_view body) {
  instances_.kept_.push_back(index);
  const std::string& text = instances_.kept_texts_.emplace_back(body);
  instances_.kept_bodies_.push_back(text);
  instances_.kept_bytes_ += text.capacity() + 64;
}

void InstanceLoader::require_memory() {
  const std::uint64_t needed = instances_.bytes() + listed_.bytes();
  if (needed <= memory_limit_) return;
  throw InputError(
      make_finding(FindingKind::memory_limit, "The records need " + std::to_string(needed) +
                                                  " bytes of memory, and the limit is " +
                                                  std::to_string(memory_limit_) + "."));
}

bool InstanceLoader::keeps_text(TypeId type) {
  if (type >= keeps_.size()) keeps_.resize(type + 1, -1);
  if (keeps_[type] < 0) {
    const auto& keywords = instances_.type_table_.keywords(type);
    keeps_[type] = std::any_of(keywords.begin(), keywords.end(), is_kept);
  }
  return keeps_[type] != 0;
}

void InstanceLoader::finish(std::istream& in) {
  reporter_.report_end();
  Instances& all = instances_;
  all.index_ = NumberIndex(all.size(), largest_);
  for (Index record = 0; record < all.size(); ++record) {
    if (all.types_[record] == TypeTable::ANCHOR_ENTRY) continue;
    const Index first = all.index_.enter(all.number(record), record);
    if (first != NO_RECORD) repeated_.push_back({first, record});
  }
  if (memory_limit_ != Options::NO_LIMIT) require_memory();
  resolve();
  compare_repeated(in);
}

/// Turns numbers into records. The memory of both is the same.
void InstanceLoader::resolve() {
  Column<Reference>& references = instances_.references_;
  auto large = large_references_.begin();
  for (std::uint64_t i = 0; i < references.size(); ++i) {
    std::uint64_t number = references[i].number();
    if (large != large_references_.end() && large->first == i) number = (large++)->second;
    references[i] = Reference(instances_.find(number), false);
  }
  for (const std::uint64_t i : listed_) references[i] = Reference(references[i].record(), true);
  listed_ = {};
  for (const Reference& reference : references) {
    instances_.missing_references_ += reference.record() == NO_RECORD ? 1 : 0;
  }
}

/// Of two records under one number, the second is nothing where it says the same, else an error.
void InstanceLoader::compare_repeated(std::istream& in) {
  for (const Repeated& repeated : repeated_) {
    const PlacedText first = read_again(in, instances_, repeated.first);
    const PlacedText second = read_again(in, instances_, repeated.second);
    const std::uint64_t number = instances_.number(repeated.first);
    const auto instance = static_cast<std::uint32_t>(number > UINT32_MAX ? 0 : number);
    if (first.body != second.body) {
      throw InputError(
          make_finding(FindingKind::two_texts_of_a_number,
                       "#" + std::to_string(number) + " has stood for another record already.",
                       second.offset, 0, instance));
    }
    instances_.types_[repeated.second] = TypeTable::REPEATED;
    const auto references = instances_.references(repeated.second);
    for (std::size_t i = 0; i < references.size(); ++i) {
      instances_.references_[static_cast<std::size_t>(references.data() -
                                                      instances_.references_.begin()) +
                             i] = Reference();
    }
    warning(make_finding(FindingKind::same_text_twice,
                         "#" + std::to_string(number) +
                             " has been there already, with the same text; it is taken once.",
                         second.offset, 0, instance));
  }
}

namespace {

/// Loads, and keeps what it is warned of.
class WarnedLoader final : public InstanceLoader {
 public:
  using InstanceLoader::InstanceLoader;
  void warning(const Finding& finding) override { warnings_.add(finding); }
  FindingList& warnings() { return warnings_; }

 private:
  FindingList warnings_;
};

}  // namespace

std::vector<Finding> load_instances(std::istream& in, Instances& instances,
                                    const Options& options) {
  WarnedLoader loader(instances, options, size_for_progress(in, options));
  load_with(in, loader, options);
  for (Finding& finding : missing_instances(in, instances))
    loader.warnings().add(std::move(finding));
  std::vector<Finding> warnings = loader.warnings().take();
  set_lines(in, warnings);
  return warnings;
}

void load_with(std::istream& in, InstanceLoader& loader, const Options& options) {
  const Exchange::Limits limits{options.memory_limit};
  try {
    const Exchange::Ending ending = read_exchange_file(in, limits, loader);
    if (ending.error) throw InputError(*ending.error);
    if (in.bad())
      throw InputError(
          make_finding(FindingKind::unreadable, "The file cannot be read to its end."));
    loader.finish(in);
  } catch (const InputError& error) {
    std::vector<Finding> finding{error.finding()};
    set_lines(in, finding);
    throw InputError(finding.front());
  }
}

}  // namespace Kessel
