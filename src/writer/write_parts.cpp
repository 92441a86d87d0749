// Writes every part's file: frames around the records that the part holds.
#include <algorithm>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>
#include <utility>
#include <vector>

#include "kessel/file.h"
#include "model/slots.h"
#include "reader/record_cutter.h"
#include "reader/text.h"
#include "structure/reachability.h"
#include "writer/external_reference.h"
#include "writer/frame.h"
#include "writer/gathered_output.h"
#include "writer/rewrite.h"

namespace Kessel {

namespace {

/// Writes input records into the files of the parts that hold them.
class RecordWriter {
 public:
  RecordWriter(Slots slots, GatheredOutput& output, AssemblyStyle style)
      : slots_(slots), output_(output), style_(style), search_(slots) {}

  /// Writes one record, as RecordCutter gives it, under the numbers of each part's file.
  void write(std::string_view record) {
    const char* p = record.data();
    const char* const end = p + record.size();
    p = find_reference(p, end);
    if (p == nullptr) return;
    const std::uint32_t id = read_number(++p, end);
    if (id == 0) return;
    const Entity* entity = slot_at(slots_, id);
    if (entity == nullptr || entity->part_numbers.empty()) return;
    const bool presentation = entity->type().find(PRESENTATION) != std::string_view::npos;
    if (entity->part_numbers.size() == 1 && !presentation && record.size() <= SHORT_RECORD) {
      write_to_only_part(record, *entity->part_numbers.begin()->first);
    } else {
      write_to_each_part(record, *entity, presentation);
    }
  }

 private:
  static constexpr std::string_view PRESENTATION =
      "MECHANICAL_DESIGN_GEOMETRIC_PRESENTATION_REPRESENTATION";
  static constexpr std::string_view RECORD_END = ";\n";
  /// Up to here, room for the worst case is cheaper than counting the references first.
  static constexpr std::size_t SHORT_RECORD = 4096;

  /// Fast path: nearly every record goes into one file, with no change but the numbers.
  void write_to_only_part(std::string_view record, Part& part) {
    output_.write_in_place(part, rewriting_room(record) + RECORD_END.size(), [&](char* out) {
      return end_record(rewrite_references(record, slots_, &part, out));
    });
  }

  void write_to_each_part(std::string_view record, const Entity& entity, bool presentation) {
    find_references(record, references_);
    const bool shared = entity.part_numbers.size() > 1;
    const std::string_view type = entity.type();
    for (const auto [part, number] : entity.part_numbers) {
      std::string_view text = record;
      const std::vector<Reference>* references = &references_;
      if (shared && type == "SHAPE_DEFINITION_REPRESENTATION") {
        if (const auto file = file_to_refer_to(*part, entity)) {
          write_external_reference(*part, entity, *file);
        }
      } else if (shared && part->part_kind != LEAF_PART &&
                 type == "GEOMETRIC_REPRESENTATION_CONTEXT") {
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
        output_.write_in_place(*part, room, [&, part = part](char* out) {
          return end_record(rewrite_references(text, *references, slots_, part, out));
        });
      }
    }
  }

  static char* end_record(char* out) {
    return std::copy(RECORD_END.begin(), RECORD_END.end(), out);
  }

  /// The component whose file a reference block in front of `link`, a shape definition
  /// representation, names in `part`'s file: no value for no block, null for a block that names no
  /// file. Nested, every file but the component's own refers to it; else every assembly does, to
  /// the first leaf part that holds the link.
  std::optional<const Part*> file_to_refer_to(const Part& part, const Entity& link) {
    if (style_ == AssemblyStyle::nested) {
      const Part* owner = defined_part(slots_, search_, link);
      if (owner == nullptr || owner == &part) return std::nullopt;
      return owner;
    }
    if (part.part_kind == LEAF_PART) return std::nullopt;
    return first_leaf(link);
  }

  void write_external_reference(Part& part, const Entity& link, const Part* component) {
    output_.write(part, [&](std::string& out) {
      out += make_external_reference(slots_, search_, &part, link, component);
    });
  }

  Slots slots_;
  GatheredOutput& output_;
  AssemblyStyle style_;
  ReachabilitySearch search_;
  std::vector<Reference> references_;
  std::string external_text_;
  std::vector<Reference> external_references_;
};

}  // namespace

void File::write_parts(std::filesystem::path outdir) {
  write_parts(std::move(outdir), AssemblyStyle::classic);
}

/// While the files are written, each part's `path` has `outdir` in front.
// NOLINTNEXTLINE(performance-unnecessary-value-param): the interface takes paths by value.
void File::write_parts(std::filesystem::path outdir, AssemblyStyle style) {
  input_.seekg(0);
  if (input_.fail()) throw std::runtime_error("Unable to change pos indicator");
  std::error_code error;
  std::filesystem::create_directories(outdir, error);
  if (error) throw std::filesystem::filesystem_error("create_directories", outdir, error);

  GatheredOutput output(parts_);
  // The only part of its file was never named and has no file; its records are still rewritten.
  if (parts_.size() == 1 && parts_.front()->path.empty()) output.discard(*parts_.front());

  for (Part* part : parts_) part->path = outdir / part->path;
  for (Part* part : parts_) {
    std::ostream& file = output.begin(*part, first_line_ + "\n");
    file << make_file_header(header_, part->get_encoded_filepath(), current_time_stamp())
         << "\nDATA;\n";
  }

  RecordWriter writer(entities_, output, style);
  RecordCutter cutter(input_);
  for (;;) {
    const std::string_view record = cutter.next_record();
    if (record.empty()) break;
    writer.write(record);
  }

  const std::string frame_end = "ENDSEC;\nEND-" + first_line_ + "\n";
  for (Part* part : parts_) {
    output.write(*part, [&](std::string& out) { out += frame_end; });
  }
  output.finish();
  for (Part* part : parts_) part->path = part->path.filename();
}

}  // namespace Kessel
