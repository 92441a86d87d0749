#include "output/split_writer.h"

#include <algorithm>
#include <optional>
#include <unordered_map>

#include "encoding/time_stamp.h"
#include "exchange/digits.h"
#include "exchange/reader.h"
#include "findings/progress_reporter.h"
#include "instances/laid_out_input.h"
#include "kessel/encoding.h"
#include "output/axes_off_origin.h"
#include "output/file_frame.h"
#include "output/file_numbers.h"
#include "output/later_definitions.h"
#include "output/links.h"
#include "output/made_places.h"
#include "output/made_records.h"
#include "output/renumbered_text.h"
#include "output/run_copy.h"
#include "output/shared_lists.h"
#include "output/text_files.h"

namespace Kessel {

namespace {

using Exchange::Section;

/// "0123456789abcdef"
std::string hexadecimal(std::uint64_t number) {
  constexpr char DIGITS[] = "0123456789abcdef";
  std::string text(16, '0');
  for (std::size_t i = text.size(); i-- > 0; number >>= 4) text[i] = DIGITS[number & 15];
  return text;
}

/// Copies each record into its files while the input is read again.
class SplitWriter {
 public:
  SplitWriter(std::istream& in, const SplitToWrite& split, const Options& options)
      : split_(split),
        instances_(split.instances),
        stands_(split.placement.stands),
        numbers_(split.instances, split.placement),
        files_(split.paths),
        sections_(section_parameters(split.instances)),
        tails_(split.placement.files.size()),
        open_sections_(split.placement.files.size()),
        documents_(split.placement.files.size()),
        axes_(split.instances, split.products, split.placement),
        later_(later_definitions(split.products, split.placement)),
        closely_(records_to_see()),
        reporter_(options, Stage::writing, size_for_progress(in, options)),
        input_(in, split.layout),
        runs_(input_, instances_, numbers_) {
    begin_files();
    make_links();
  }

  void write_all() {
    const auto sections = instances_.sections();
    for (std::size_t i = 0; i < sections.size(); ++i) {
      section_ = sections[i].section;
      const Index end = i + 1 < sections.size() ? sections[i + 1].first : instances_.size();
      if (section_ == Section::data) {
        ++data_sections_;
        write_records(sections[i].first, end);
      } else {
        for (Index entry = sections[i].first; entry < end; ++entry) write_entry(entry);
      }
    }
    input_.require_unchanged();
  }

  std::vector<FileFigures> finish() {
    for (FileId file = 0; file < tails_.size(); ++file) {
      if (!is_written(file)) continue;
      open_section(file, Section::data, last_section());
      MadeRecords made(numbers_, file);
      axes_.make(file, numbers_, made);
      tails_[file] += made.take();
      files_.write(file, tails_[file]);
      files_.write(file, "ENDSEC;\nEND-ISO-10303-21;\n");
    }
    files_.finish();
    std::vector<FileFigures> figures;
    for (FileId file = 0; file < tails_.size(); ++file) {
      FileFigures& of_file = figures.emplace_back();
      if (!is_written(file)) continue;
      of_file = {numbers_.last(file), files_.size(file), files_.hash(file)};
    }
    reporter_.report_end();
    return figures;
  }

 private:
  /// Which section of a file is open: none yet, or one of the input's.
  struct OpenSection {
    bool is_open = false;
    Section kind = Section::header;
    std::size_t data_section = 0;
  };

  bool is_written(FileId file) const { return !split_.paths[file].empty(); }
  std::size_t last_section() const { return sections_.size() - 1; }
  std::size_t data_section() const { return std::min(data_sections_ - 1, last_section()); }

  void begin_files() {
    const HeaderForm form(instances_.header(), current_time_stamp(), sections_.size() == 1);
    for (FileId file = 0; file < tails_.size(); ++file) {
      if (is_written(file)) files_.write(file, form.with_name(split_.names[file]));
    }
  }

  void open_section(FileId file, Section kind, std::size_t data_section) {
    OpenSection& open = open_sections_[file];
    if (open.is_open && open.kind == kind && open.data_section == data_section) return;
    open_next_section(file, kind, data_section);
  }

  [[gnu::noinline]] void open_next_section(FileId file, Section kind, std::size_t data_section) {
    OpenSection& open = open_sections_[file];
    if (open.is_open) files_.write(file, "ENDSEC;\n");
    const bool is_first_data = kind == Section::data && !(open.is_open && open.kind == kind);
    open = {true, kind, data_section};
    if (kind == Section::anchor) files_.write(file, "ANCHOR;\n");
    if (kind == Section::reference) files_.write(file, "REFERENCE;\n");
    if (kind != Section::data) return;
    files_.write(file, "DATA" + sections_[data_section] + ";\n");
    if (!is_first_data || !split_.id) return;
    files_.write(file, "/* velkstep split " + hexadecimal(*split_.id) +
                           ": the number in front of a record is its number in the file that was "
                           "split */\n");
  }

  void write_records(Index first, Index end) {
    auto seen = std::lower_bound(closely_.begin(), closely_.end(), first);
    for (Index record = first; record < end;) {
      while (seen != closely_.end() && *seen < record) ++seen;
      const Index limit = seen == closely_.end() ? end : std::min(end, *seen);
      // Fast path: nearly all records stand in one file, beside others of that file.
      const Index end_of_run = stands_.end_of_run(record, limit);
      if (end_of_run != record) {
        write_run(record, end_of_run);
        record = end_of_run;
      } else {
        write_closely(record, seen != closely_.end() && *seen == record);
        ++record;
      }
    }
  }

  void write_run(Index first, Index end) {
    const FileId file = stands_.of(first).front().file();
    if (!is_written(file)) return runs_.pass_over(first, end);
    open_section(file, section_, data_section());
    // The average of what was read until now tells what will come.
    const std::uint64_t expected =
        (input_.offset() / (first + std::uint64_t{1}) + 1) * (end - first);
    runs_.begin({first, end, numbers_.of_single(first), file});
    while (!runs_.is_done()) {
      files_.fill(file, runs_.room(), static_cast<std::size_t>(expected),
                  [&](char* out, const char* limit) { return runs_.copy(out, limit); });
      if (reporter_.is_due(input_.offset())) reporter_.report(input_.offset());
    }
  }

  /// The records that must not be copied with others, ascending.
  std::vector<Index> records_to_see() const {
    std::vector<Index> records = axes_.wanted();
    for (const TextEdit& edit : split_.edits.all()) records.push_back(edit.record);
    for (const auto& definitions : later_) {
      records.insert(records.end(), definitions.begin(), definitions.end());
    }
    std::sort(records.begin(), records.end());
    return records;
  }

  /// A record that stands in several files or none, gets another text, or is to be seen.
  void write_closely(Index index, bool is_seen) {
    input_.next();
    const Exchange::Record& record = input_.take_record(instances_.references(index).size());
    if (is_seen) axes_.show(index, record.body);
    if (const auto edits = split_.edits.of(index); !edits.empty()) {
      const EditedText edited(record.text, record.body, record.mentions, edits);
      Exchange::Record other = record;
      other.text = edited.text();
      other.behind_number = edited.text().data() + (record.behind_number - record.text.data());
      other.body = edited.body();
      other.mentions = edited.mentions();
      write(other, index);
    } else {
      write(record, index);
    }
    if (reporter_.is_due(record.offset)) reporter_.report(record.offset);
  }

  void write_entry(Index index) {
    input_.next();
    const LaidOutInput::Entry entry = input_.take_entry();
    std::span<const Exchange::Mention> mentions = entry.mentions;
    const bool defines = instances_.type(index) == TypeTable::REFERENCE_ENTRY &&
                         begins_with_name(entry.statement, mentions);
    const std::string_view whole = entry.statement.text;
    const EditedText edited(whole, whole, mentions, split_.edits.of(index));
    std::string_view text = edited.text();
    mentions = edited.mentions();
    if (defines) {
      text.remove_prefix(static_cast<std::size_t>(mentions.front().end - text.data()));
      mentions = mentions.subspan(1);
    }
    const MentioningText rest{text, mentions, instances_.references(index)};
    for (const Stand stand : stands_.of(index)) {
      const FileId file = stand.file();
      if (!is_written(file)) continue;
      open_section(file, section_, 0);
      std::string line;
      if (defines) line = "#" + std::to_string(numbers_.of(index, file));
      files_.write(file, line + renumbered(rest, numbers_, file) + ";\n");
    }
  }

  void write(const Exchange::Record& record, Index index) {
    const std::span<const Stand> stands = stands_.of(index);
    const MentioningText body{record.body, record.mentions, instances_.references(index)};
    if (stands.size() != 1) return write_shared(record, body, index, stands);
    const FileId file = stands.front().file();
    if (!is_written(file)) return;
    open_section(file, section_, data_section());
    if (is_later(index, file)) return write_later(record, body, {}, index, file);
    write_whole(record, body, {}, numbers_.of_single(index), file);
  }

  bool is_later(Index index, FileId file) const {
    return !later_[file].empty() &&
           std::binary_search(later_[file].begin(), later_[file].end(), index);
  }

  /// Writes the record as it is behind all others.
  void write_later(const Exchange::Record& record, const MentioningText& body,
                   std::string_view mark, Index index, FileId file) {
    tails_[file].append(mark).append("#").append(std::to_string(numbers_.of(index, file)));
    tails_[file].append(record.behind_number, record.body.data());
    tails_[file].append(renumbered(body, numbers_, file)).append(";\n");
  }

  /// Writes the record with its text, `mark` in front.
  void write_whole(const Exchange::Record& record, const MentioningText& body,
                   std::string_view mark, std::uint32_t number, FileId file) {
    const char* const behind_number = record.behind_number;
    const MentioningText rest{
        record.text.substr(static_cast<std::size_t>(behind_number - record.text.data())),
        body.mentions, body.references};
    constexpr std::size_t FRAME = 32;  // "#", the number, and ";" with a line feed
    files_.write(file, mark.size() + renumbering_room(rest) + FRAME, [&](char* out) {
      out = std::copy(mark.begin(), mark.end(), out);
      *out++ = '#';
      out = Exchange::write_number(out, number);
      out = renumbered(rest, numbers_, file, out);
      *out++ = ';';
      *out++ = '\n';
      return out;
    });
  }

  void write_shared(const Exchange::Record& record, const MentioningText& body, Index index,
                    std::span<const Stand> stands) {
    const bool is_needed = std::any_of(stands.begin(), stands.end(),
                                       [&](Stand stand) { return is_written(stand.file()); });
    if (!is_needed) return;
    const bool collects = instances_.types().collects(instances_.type(index));
    std::optional<SharedLists> lists;
    if (collects) lists.emplace(body, instances_, split_.placement, index);
    const std::string number = std::to_string(record.number);
    const std::string mark = split_.id && stands.size() > 1 ? "/*" + number + "*/" : "";
    for (const Stand stand : stands) {
      const FileId file = stand.file();
      if (!is_written(file)) continue;
      open_section(file, section_, data_section());
      const std::uint32_t in_file = numbers_.of(index, file);
      if (stand.role() == Role::stand_in || documents_[file].contains(index)) {
        files_.write(file, (split_.id ? "/*~" + number + "*/#" : "#") + std::to_string(in_file) +
                               "=" + worded_anew(body, index, file) + ";\n");
      } else if (lists && lists->is_shortened(file)) {
        const std::string equals(record.behind_number, record.body.data());
        files_.write(file, mark + "#" + std::to_string(in_file) + equals +
                               lists->body(numbers_, file) + ";\n");
      } else if (is_later(index, file)) {
        write_later(record, body, mark, index, file);
      } else {
        write_whole(record, body, mark, in_file, file);
      }
    }
  }

  std::string worded_anew(const MentioningText& body, Index index, FileId file) {
    if (const auto document = documents_[file].find(index); document != documents_[file].end()) {
      return documented_definition_body(body, numbers_, file, document->second);
    }
    if (has_keyword_ending(index, "_CONTEXT")) return external_context_body(body, numbers_, file);
    if (!has_keyword_ending(index, "REPRESENTATION")) return std::string(ITEM_STAND_IN);
    MadeRecords made(numbers_, file);
    std::string text = placeholder_body(body, instances_, numbers_, file, made);
    tails_[file] += made.take();
    return text;
  }

  bool has_keyword_ending(Index index, std::string_view ending) const {
    const auto& keywords = instances_.types().keywords(instances_.type(index));
    return std::any_of(keywords.begin(), keywords.end(),
                       [&](std::string_view keyword) { return keyword.ends_with(ending); });
  }

  void make_links() {
    const std::vector<std::string> names = schemas(instances_.header());
    const LinkForm form = link_form(names);
    const std::string format = data_format(names);
    for (FileId file = 0; file < tails_.size(); ++file) {
      if (!is_written(file)) continue;
      MadeRecords made(numbers_, file);
      Links links(made, form, format);
      for (const ProductId id : split_.placement.files[file].links) {
        const Product& component = split_.products.products[id];
        const auto name_of = [&](Index record) {
          return "#" + std::to_string(numbers_.of(record, file));
        };
        const auto& shown = component.representations;
        const std::string document =
            links.add(fspath_to_utf8(split_.paths[split_.placement.file_of[id]].filename()),
                      name_of(component.definition), shown.empty() ? "" : name_of(shown.front()));
        if (document.empty()) continue;
        documents_[file].emplace(component.definition, document);
      }
      make_places(instances_, split_.products, split_.placement, numbers_, file, made);
      tails_[file] = made.take();
    }
  }

  const SplitToWrite& split_;
  const Instances& instances_;
  const FileSets& stands_;
  FileNumbers numbers_;
  TextFiles files_;
  std::vector<std::string> sections_;  // parameters of DATA
  std::vector<std::string> tails_;     // by file: what the split made
  std::vector<OpenSection> open_sections_;
  // By file: definitions that get a document, and its name in the file.
  std::vector<std::unordered_map<Index, std::string>> documents_;
  AxesOffOrigin axes_;
  std::vector<std::vector<Index>> later_;  // by file: definitions that stand behind
  std::vector<Index> closely_;
  ProgressReporter reporter_;
  LaidOutInput input_;
  RunCopy runs_;
  Section section_ = Section::header;
  std::size_t data_sections_ = 0;
};

}  // namespace

std::vector<FileFigures> write_split(std::istream& in, const SplitToWrite& split,
                                     const Options& options) {
  SplitWriter writer(in, split, options);
  writer.write_all();
  return writer.finish();
}

}  // namespace Kessel
