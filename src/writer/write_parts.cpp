// Writes every part's file: frames around the records that the part holds.
#include "writer/write_parts.h"

#include <algorithm>
#include <filesystem>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <system_error>
#include <utility>
#include <vector>

#include "encoding/string_body.h"
#include "encoding/time_stamp.h"
#include "exchange/comments.h"
#include "findings/progress_reporter.h"
#include "findings/refusals.h"
#include "instances/laid_out_input.h"
#include "kessel/encoding.h"
#include "kessel/errors.h"
#include "model/slots.h"
#include "reader/record_cutter.h"
#include "structure/reachability.h"
#include "writer/external_reference.h"
#include "writer/file_header.h"
#include "writer/gathered_output.h"
#include "writer/rewrite.h"

namespace Kessel {

namespace {

/// Makes an exchange string's body of UTF-8 text.
using StringEncoder = std::string (*)(std::string_view);

/// How paths are written into files. Names of records are ASCII, and outputs depend on what becomes
/// of the folder in front of them; names of products are written as the standard has it.
StringEncoder encoder_of_names(NameStyle names) {
  return names == NameStyle::record ? encode_utf8_to_step : encode_string_body;
}

/// Writes input records into the files of the parts that hold them.
class RecordWriter {
 public:
  static_assert(RecordCutter::PADDING >= PIECE_BLOCK && LaidOutInput::PADDING >= PIECE_BLOCK);

  RecordWriter(Slots slots, GatheredOutput& output, StringEncoder encode)
      : slots_(slots), output_(output), encode_(encode), search_(slots) {}

  /// Writes one record, as RecordCutter gives it, under the numbers of each part's file.
  void write(std::string_view record) {
    const std::optional<TextReference> own = first_reference(record);
    if (!own) return;
    const Entity* entity = slot_at(slots_, own->number);
    if (entity == nullptr || entity->part_numbers.empty()) return;
    if (goes_into_one_file(*entity) && record.size() <= SHORT_RECORD) {
      const auto [part, number] = entity->part_numbers.front();
      write_to_only_part(record, *own, *part, number);
    } else {
      find_references(record, references_);
      write_to_each_part(record, *entity);
    }
  }

  /// The same for the record of a standard reading that `input` is at.
  void write(LaidOutInput& input) {
    const TextLayout::NameCount count = input.take_count();
    const std::uint64_t number = input.number();
    if (number >= slots_.size()) throw InputError(input_changed(input.offset()));
    const Entity* entity = slots_[static_cast<std::size_t>(number)];
    if (entity == nullptr || entity->part_numbers.empty()) return input.pass_over(count.names());
    if (count.is_plain() && write_to_only_part(input, *entity, count.names())) return;
    write(input.take_record(count), *entity);
  }

 private:
  static constexpr std::string_view PRESENTATION =
      "MECHANICAL_DESIGN_GEOMETRIC_PRESENTATION_REPRESENTATION";
  static constexpr std::string_view RECORD_END = ";\n";
  /// Up to here, room for the worst case is cheaper than counting the references first.
  static constexpr std::size_t SHORT_RECORD = 4096;
  /// The texts of thousands of parts are far apart in memory: so many are called for in advance.
  static constexpr int EXPECTED_AHEAD = 4;

  /// The same where the references were not found yet.
  void write_to_only_part(std::string_view record, const TextReference& own, Part& part,
                          std::uint32_t number) {
    output_.write_in_place(part, rewriting_room(record) + RECORD_END.size(), [&](char* out) {
      return end_record(rewrite_record(record, own, number, slots_, &part, out));
    });
  }

  /// Whether the record goes into one file with no change but the numbers.
  static bool goes_into_one_file(const Entity& entity) {
    return entity.part_numbers.size() == 1 && !is_presentation(entity);
  }

  /// Fast path: nearly every record does, and that file holds all that it refers to. Returns
  /// whether it is so; else nothing was taken.
  bool write_to_only_part(LaidOutInput& input, const Entity& entity, std::size_t names) {
    if (!goes_into_one_file(entity)) return false;
    const auto [part, number] = entity.part_numbers.front();
    // Names that are no numbers of this style are none of the references.
    if (entity.references().size() != names || !find_numbers(entity, part)) return false;
    const std::size_t room = rewriting_room(input, names) + RECORD_END.size();
    output_.write_in_place(*part, room, [&, number = number](char* out) {
      return end_record(rewrite_record(input, number, numbers_, out));
    });
    return true;
  }

  /// Finds the numbers in `part`'s file of all that `entity` refers to. Returns false where it
  /// lacks one, or has it under the number 0.
  bool find_numbers(const Entity& entity, Part* part) {
    numbers_.clear();
    for (const std::uint32_t reference : entity.references()) {
      const Entity* const other = slot_at(slots_, reference);
      const std::uint32_t number = other == nullptr ? 0 : other->part_numbers.number_or_zero(part);
      if (number == 0) return false;
      numbers_.push_back(number);
    }
    return true;
  }

  /// The long way for a record of a standard reading.
  void write(const Exchange::Record& record, const Entity& entity) {
    if (record.is_plain && has_common_numbers(record)) return write(record.text);
    if (is_remade(entity) || loses_reference(record, entity)) {
      const std::string bare = Exchange::without_comments(record.text);
      find_all_references(bare, references_);
      write_to_each_part(bare, entity);
    } else {
      find_references(record, references_);
      write_to_each_part(record.text, entity);
    }
  }

  static bool has_common_numbers(const Exchange::Record& record) {
    return std::all_of(
        record.mentions.begin(), record.mentions.end(),
        [](const Exchange::Mention& mention) { return mention.number <= UINT32_MAX; });
  }

  static bool is_presentation(const Entity& entity) {
    return entity.type().find(PRESENTATION) != std::string_view::npos;
  }
  static bool is_context(const Entity& entity) {
    return entity.type() == "GEOMETRIC_REPRESENTATION_CONTEXT";
  }
  /// Whether more than numbers changes, by the places of parentheses and commas in the text.
  static bool is_remade(const Entity& entity) {
    return is_presentation(entity) || is_context(entity);
  }

  /// Whether a file of the record lacks something that it refers to. Such a reference is cut out up
  /// to a parenthesis or comma in front of it, which must be none in a comment.
  bool loses_reference(const Exchange::Record& record, const Entity& entity) const {
    const auto is_lost = [&](const Exchange::Mention& mention) {
      if (mention.number == 0 || mention.number > UINT32_MAX) return false;
      const Entity* other = slot_at(slots_, static_cast<std::uint32_t>(mention.number));
      if (other == nullptr) return true;
      for (const auto [part, number] : entity.part_numbers.entries()) {
        if (!other->part_numbers.contains(part)) return true;
      }
      return false;
    };
    return std::any_of(record.mentions.begin(), record.mentions.end(), is_lost);
  }

  /// Writes a record whose references are in `references_`.
  void write_to_each_part(std::string_view record, const Entity& entity) {
    const bool shared = entity.part_numbers.size() > 1;
    const bool presentation = is_presentation(entity);
    const bool link = shared && entity.type() == "SHAPE_DEFINITION_REPRESENTATION";
    const bool context = shared && is_context(entity);
    auto [expected, last] = entity.part_numbers.entries();
    const auto expect_next = [&, &expected = expected, &last = last] {
      if (expected != last) output_.expect(*(*expected++).owner);
    };
    for (int i = 0; i < EXPECTED_AHEAD; ++i) expect_next();
    for (const auto [part, number] : entity.part_numbers.entries()) {
      expect_next();
      std::string_view text = record;
      const std::vector<TextReference>* references = &references_;
      const bool assembly = part->part_kind != LEAF_PART;
      if (link && assembly) {
        write_external_reference(*part, entity);
      } else if (context && assembly) {
        external_text_ = make_context_external(std::string(record), entity);
        find_references(external_text_, external_references_);
        text = external_text_;
        references = &external_references_;
      }
      if (presentation) {
        output_.write(*part, [&, part = part](std::string& out) {
          rewrite_presentation_items(text, *references, entity, slots_, part, out);
          out += RECORD_END;
        });
      } else {
        const std::size_t room = rewriting_room(text, *references) + RECORD_END.size();
        output_.write_in_place(*part, room, [&, part = part, number = number](char* out) {
          return end_record(rewrite_record(text, *references, number, slots_, part, out));
        });
      }
    }
  }

  static char* end_record(char* out) {
    return std::copy(RECORD_END.begin(), RECORD_END.end(), out);
  }

  /// Writes the block in front of `link`, a shape definition representation, that names in an
  /// assembly's file the first leaf part that holds the link, or no file where none does.
  void write_external_reference(Part& part, const Entity& link) {
    output_.write(part, [&](std::string& out) {
      const Part* component = first_leaf(link);
      const std::string name = component == nullptr ? "" : encode_(component->get_utf8_filename());
      out += make_external_reference(slots_, search_, &part, link, name);
    });
  }

  Slots slots_;
  GatheredOutput& output_;
  StringEncoder encode_;
  ReachabilitySearch search_;
  std::vector<TextReference> references_;
  std::vector<std::uint32_t> numbers_;
  std::string external_text_;
  std::vector<TextReference> external_references_;
};

/// The second reading of the classic kind.
void write_records(Store& store, const Options& options, RecordWriter& writer) {
  ProgressReporter reporter(options, Stage::writing, size_for_progress(store.input, options));
  RecordCutter cutter(store.input);
  for (;;) {
    const std::string_view record = cutter.read_record();
    if (record.empty()) break;
    if (store.checked && cutter.input_ended()) throw InputError(input_changed(cutter.offset()));
    writer.write(record);
    if (reporter.is_due(cutter.offset())) reporter.report(cutter.offset());
  }
  if (store.checked &&
      (store.input.bad() || (store.read_up_to && cutter.offset() != *store.read_up_to))) {
    throw InputError(input_changed(cutter.offset()));
  }
  reporter.report_end();
}

/// The same of the standard kind: by what the first one has noted.
void write_laid_out_records(Store& store, const Options& options, RecordWriter& writer) {
  ProgressReporter reporter(options, Stage::writing, size_for_progress(store.input, options));
  std::set<std::uint32_t> left = store.repeated;  // what of it was not written yet
  const auto was_written = [&](std::uint64_t number) {
    const auto id = static_cast<std::uint32_t>(number);
    return store.repeated.contains(id) && left.erase(id) == 0;
  };
  LaidOutInput input(store.input, *store.layout);
  while (!input.is_at_end()) {
    input.next();
    if (!store.repeated.empty() && was_written(input.number())) {
      input.pass_over(input.take_count().names());
    } else {
      writer.write(input);
    }
    if (reporter.is_due(input.offset())) reporter.report(input.offset());
  }
  input.require_unchanged();
  reporter.report_end();
}

}  // namespace

/// While the files are written, each part's `path` has `outdir` in front.
void write_parts(Store& store, const std::filesystem::path& outdir, const Options& options) {
  store.input.seekg(0);
  if (store.input.fail()) throw std::runtime_error("Unable to change pos indicator");
  std::error_code error;
  std::filesystem::create_directories(outdir, error);
  if (error) throw std::filesystem::filesystem_error("create_directories", outdir, error);

  GatheredOutput output(store.parts, store.checked);
  // The only part of its file was never named and has no file; its records are still rewritten.
  if (store.parts.size() == 1 && store.parts.front()->path.empty())
    output.discard(*store.parts.front());

  const StringEncoder encode = encoder_of_names(options.names);
  for (Part* part : store.parts) part->path = outdir / part->path;
  for (Part* part : store.parts) {
    std::ostream& file = output.begin(*part, store.first_line + "\n");
    const std::string name =
        options.folder_in_headers
            ? fspath_to_utf8(*options.folder_in_headers / part->path.filename())
            : part->get_utf8_filepath();
    file << make_file_header(store.header, encode(name), current_time_stamp()) << "\nDATA;\n";
    output.make_sure_of(*part);
  }

  RecordWriter writer(store.entities, output, encode);
  if (store.reading == Reading::standard) {
    write_laid_out_records(store, options, writer);
  } else {
    write_records(store, options, writer);
  }

  const std::string frame_end = "ENDSEC;\nEND-" + store.first_line + "\n";
  for (Part* part : store.parts) {
    output.write(*part, [&](std::string& out) { out += frame_end; });
  }
  output.finish();
  for (Part* part : store.parts) part->path = part->path.filename();
}

}  // namespace Kessel
