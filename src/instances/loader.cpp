#include "instances/loader.h"

#include <algorithm>
#include <iterator>
#include <string>

#include "exchange/characters.h"
#include "exchange/parameters.h"
#include "findings/finding_kinds.h"
#include "findings/finding_list.h"
#include "findings/refusals.h"
#include "instances/collectors.h"
#include "instances/kept_types.h"
#include "instances/noting_loader.h"
#include "instances/places.h"
#include "instances/repeated_records.h"
#include "kessel/errors.h"

namespace Kessel {

namespace {

/// Whether what stands between two items is no more than a comma and blanks, or at an end of the
/// list, where `commas` is 0, blanks.
bool is_gap(const char* begin, const char* end, int commas) {
  for (; begin != end; ++begin) {
    if (*begin == ',') {
      if (commas-- == 0) return false;
    } else if (!Exchange::is_blank(*begin)) {
      return false;
    }
  }
  return commas == 0;
}

/// Whether the list is seen at once to have these items, and no other: nearly every list.
bool are_all_items(std::string_view list, std::span<const Exchange::Mention> mentions) {
  if (!list.ends_with(')')) return false;
  const char* from = list.data() + 1;
  for (const Exchange::Mention& mention : mentions) {
    if (!is_gap(from, mention.begin - 1, &mention == mentions.data() ? 0 : 1)) return false;
    from = mention.end;
  }
  return is_gap(from, list.data() + list.size() - 1, 0);
}

/// Where the digits of items of the list begin that are instances, and nothing more.
std::vector<const char*> begins_of_items(std::string_view list) {
  std::vector<const char*> begins;
  for (const std::string_view item : Exchange::items_of(list)) {
    if (!item.empty() && Exchange::instance_of(item) != 0) begins.push_back(item.data() + 1);
  }
  return begins;
}

/// The mentions, in order, that stand in `text`.
std::span<const Exchange::Mention> mentions_in(std::string_view text,
                                               std::span<const Exchange::Mention> mentions) {
  const auto at = [&](const char* place) {
    return std::partition_point(mentions.begin(), mentions.end(),
                                [&](const auto& mention) { return mention.begin < place; });
  };
  return {at(text.data()), at(text.data() + text.size())};
}

}  // namespace

InstanceLoader::InstanceLoader(Instances& instances, const Options& options, std::uint64_t total)
    : instances_(instances),
      reporter_(options, Stage::reading, total),
      read_{0, total},
      memory_limit_(options.memory_limit) {}

void InstanceLoader::header_entity(const Exchange::Statement& entity) {
  const std::string& text = instances_.header_.emplace_back(entity.text);
  instances_.frame_bytes_ += text.capacity() + sizeof text;
  require_memory();
}

void InstanceLoader::begin_section(Exchange::Section section, std::string_view parameters) {
  if (section == Exchange::Section::header) return;
  instances_.sections_.push_back({instances_.size(), section});
  if (section != Exchange::Section::data) return;
  const auto& data = instances_.data_sections_.emplace_back(
      Instances::DataSection{instances_.size(), std::string(parameters)});
  instances_.frame_bytes_ += data.parameters.capacity() + sizeof data;
  require_memory();
}

[[gnu::always_inline]] inline Index InstanceLoader::begin_record(TypeId type, std::uint64_t number,
                                                                 std::uint64_t offset) {
  Instances& all = instances_;
  const Index index = all.size();
  if (index % Instances::BLOCK == 0) begin_block(offset);
  if (memory_limit_ != Options::NO_LIMIT) {
    read_.done = offset;
    require_memory();
  }
  all.types_.push_into_room(type);
  const bool is_large = number >= Instances::LARGE_NUMBER;
  all.numbers_.push_into_room(is_large ? Instances::LARGE_NUMBER
                                       : static_cast<std::uint32_t>(number));
  if (is_large) [[unlikely]]
    all.large_numbers_.push_back({index, number});
  all.first_references_.push_into_room(
      static_cast<std::uint32_t>(all.references_.size() - references_of_block_));
  return index;
}

/// Begins the next records that have their places from the first of them.
void InstanceLoader::begin_block(std::uint64_t offset) {
  Instances& all = instances_;
  static_assert(NO_RECORD % Instances::BLOCK == Instances::BLOCK - 1);
  if (all.size() == NO_RECORD + 1 - Instances::BLOCK) throw InputError(too_many_records(offset));
  all.types_.room_for(Instances::BLOCK);
  all.numbers_.room_for(Instances::BLOCK);
  all.first_references_.room_for(Instances::BLOCK);
  references_of_block_ = all.references_.size();
  all.block_references_.push_back(references_of_block_);
  all.block_offsets_.push_back(offset);
}

inline void InstanceLoader::note_number(std::uint64_t number) {
  smallest_ = std::min(smallest_, number);
  largest_ = std::max(largest_, number);
}

/// Until the numbers are resolved, a reference holds the number, and no mark: the marks of
/// collectors' lists wait in a list of their own.
inline void InstanceLoader::add_references(std::span<const Exchange::Mention> mentions) {
  Column<Reference>& references = instances_.references_;
  Reference* out = references.room_for(mentions.size());
  for (const Exchange::Mention& mention : mentions) {
    if (mention.number > UINT32_MAX) {
      const auto place = static_cast<std::uint64_t>(out - references.begin());
      large_references_.push_back({place, mention.number});
    }
    *out++ = Reference::unresolved(static_cast<std::uint32_t>(mention.number));
  }
  references.end_at(out);
}

void InstanceLoader::record(const Exchange::Record& record) {
  const TypeId type = instances_.type_table_.type_of(record);
  const Index index = begin_record(type, record.number, record.offset);
  note_number(record.number);
  const int look = look_at(type);
  if ((look & LISTS) != 0) note_listed(record);
  add_references(record.mentions);
  if ((look & WHOLE_TEXT) != 0) keep(index, record.body);
  added(index, record);
  if (reporter_.is_due(record.offset)) reporter_.report(record.offset);
}

void InstanceLoader::entry(Exchange::Section section, const Exchange::Statement& entry,
                           std::span<const Exchange::Mention> mentions) {
  // A line of a reference section defines the instance that it begins with.
  const bool defines = section == Exchange::Section::reference && begins_with_name(entry, mentions);
  const std::uint64_t number = defines ? mentions.front().number : 0;
  const TypeId type =
      section == Exchange::Section::anchor ? TypeTable::ANCHOR_ENTRY : TypeTable::REFERENCE_ENTRY;
  const Index index = begin_record(type, number, entry.offset);
  if (defines) note_number(number);
  add_references(defines ? mentions.subspan(1) : mentions);
  keep(index, entry.text);
  added_entry(index, entry, mentions);
}

/// Notes which of the references that are added next are items of a collector's list. Those in an
/// item that is more than a reference, such as a list, are none: nobody could leave them out.
void InstanceLoader::note_listed(const Exchange::Record& record) {
  const std::uint64_t first = instances_.references_.size();
  const std::span<const Exchange::Mention> mentions = record.mentions;
  for (const std::string_view list : collected_lists(record.body)) {
    const auto in_list = mentions_in(list, mentions);
    const bool are_items = are_all_items(list, in_list);
    const std::vector<const char*> begins =
        are_items ? std::vector<const char*>() : begins_of_items(list);
    for (const Exchange::Mention& mention : in_list) {
      if (!are_items && !std::binary_search(begins.begin(), begins.end(), mention.begin)) continue;
      listed_.push_back(first + static_cast<std::uint64_t>(&mention - mentions.data()));
    }
  }
}

void InstanceLoader::keep(Index index, std::string_view body) {
  instances_.keep(index, std::string(body));
}

std::uint64_t InstanceLoader::needed_memory() const {
  return instances_.bytes() + listed_.bytes() + large_references_.bytes() +
         repeated_.capacity() * sizeof(Repeated) + further_bytes();
}

/// Throws where what is held, and `more` bytes, are above the limit.
void InstanceLoader::require_memory(std::uint64_t more) const {
  const std::uint64_t needed = needed_memory() + more;
  if (needed > memory_limit_) throw InputError(records_need_memory(needed, memory_limit_, read_));
}

int InstanceLoader::learn_look(TypeId type) {
  if (type >= looks_.size()) looks_.resize(type + 1, UNKNOWN);
  const auto& keywords = instances_.type_table_.keywords(type);
  const bool keeps = std::any_of(keywords.begin(), keywords.end(), keeps_text_of);
  const bool collects = instances_.type_table_.collects(type);
  return looks_[type] = static_cast<signed char>((collects ? LISTS : NOTHING) |
                                                 (keeps ? WHOLE_TEXT : NOTHING));
}

void InstanceLoader::finish(std::istream& in) {
  reporter_.report_end();
  read_.done = read_.total;
  enter_numbers();
  resolve();
  drop_repeated(in);
  drop_repeated_lines(in);
}

void InstanceLoader::enter_numbers() {
  Instances& all = instances_;
  if (smallest_ > largest_) return;  // No record has a number.
  require_memory(NumberIndex::bytes_for(all.size(), smallest_, largest_));
  all.index_ = NumberIndex(all.size(), smallest_, largest_);
  const std::span<const TypeId> types = all.record_types();
  for (Index record = 0; record < types.size(); ++record) {
    const std::uint64_t number = all.number(record);
    // Anchors have none, nor have the values (ISO 10303-21, 11) of a reference section.
    const bool is_named = types[record] >= TypeTable::FIRST_OF_RECORDS ||
                          (types[record] != TypeTable::ANCHOR_ENTRY &&
                           (types[record] != TypeTable::REFERENCE_ENTRY || number != 0));
    if (is_named) all.index_.enter(number, record);
  }
  repeated_ = all.index_.finish();
}

/// Turns numbers into records. The memory of both is the same.
void InstanceLoader::resolve() {
  Column<Reference>& references = instances_.references_;
  for (Reference& reference : references) {
    reference = Reference(instances_.find(reference.number()), false);
  }
  for (const LargeReference& large : large_references_) {
    references[large.place] = Reference(instances_.find(large.number), false);
  }
  instances_.missing_references_ += static_cast<std::uint64_t>(
      std::count_if(references.begin(), references.end(),
                    [](Reference reference) { return reference.record() == NO_RECORD; }));
  for (const std::uint64_t i : listed_) references[i] = Reference(references[i].record(), true);
  listed_ = {};
  large_references_ = {};
}

/// Of two records under one number, the second is nothing where it says the same.
void InstanceLoader::drop_repeated(std::istream& in) {
  Instances& all = instances_;
  const std::uint64_t free = memory_limit_ - std::min(memory_limit_, needed_memory());
  const std::vector<Finding> warnings = compare_repeated(in, repeated_, free);
  for (const Repeated& repeated : repeated_) all.drop(repeated.second);
  for (const Finding& finding : warnings) warning(finding);
}

void InstanceLoader::drop_repeated_lines(std::istream& in) {
  for (const Index line : repeated_lines(instances_)) {
    warning(warning_at(in, instances_, line, FindingKind::same_text_twice,
                       "This line has been there already; it is taken once."));
    instances_.drop(line);
  }
}

std::vector<Finding> load_instances(std::istream& in, Instances& instances,
                                    const Options& options) {
  FindingList noted;
  NotingLoader loader(instances, options, noted, size_for_progress(in, options));
  load_with(in, loader, options);
  for (Finding& finding : missing_instances(in, instances)) noted.add(std::move(finding));
  std::vector<Finding> warnings = noted.take();
  locate(in, warnings);
  return warnings;
}

void load_with(std::istream& in, InstanceLoader& loader, const Options& options) {
  const Exchange::Limits limits{options.memory_limit};
  try {
    const Exchange::Ending ending = read_exchange_file(in, limits, loader);
    if (in.bad()) {
      throw InputError(
          make_finding(FindingKind::unreadable, "The file cannot be read to its end."));
    }
    if (ending.error) throw InputError(*ending.error);
    loader.finish(in);
  } catch (const InputError& error) {
    std::vector<Finding> finding{error.finding()};
    locate(in, finding);
    throw InputError(finding.front());
  }
}

}  // namespace Kessel
