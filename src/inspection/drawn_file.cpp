#include "inspection/drawn_file.h"

#include <algorithm>
#include <string>
#include <utility>

#include "findings/finding_kinds.h"
#include "findings/finding_list.h"
#include "findings/input_file.h"
#include "findings/named_errors.h"
#include "geometry/draw_products.h"
#include "geometry/part_lines.h"
#include "inspection/assembly.h"
#include "instances/loader.h"
#include "kessel/errors.h"

namespace Kessel {

namespace {

[[noreturn]] void refuse_for_memory(std::uint64_t limit) {
  throw InputError(make_finding(FindingKind::memory_limit,
                                "The records and their geometry need more memory than the limit "
                                "of " +
                                    with_commas(limit) + " bytes."));
}

/// Keeps what geometry is read from, too.
class DrawingLoader final : public InstanceLoader {
 public:
  DrawingLoader(Instances& instances, Geometry::GeometryRecords& records, const Options& options,
                std::uint64_t total, FindingList& warnings)
      : InstanceLoader(instances, options, total),
        instances_(instances),
        records_(records),
        limit_(options.memory_limit),
        warnings_(warnings) {}
  void warning(const Finding& finding) override { warnings_.add(finding); }

 private:
  void added(Index index, const Exchange::Record& record) override {
    records_.add(index, record.body);
    if (limit_ == Options::NO_LIMIT || instances_.bytes() + records_.bytes() <= limit_) return;
    refuse_for_memory(limit_);
  }

  const Instances& instances_;
  Geometry::GeometryRecords& records_;
  std::uint64_t limit_;
  FindingList& warnings_;
};

/// Bytes of what is known of the parts.
std::uint64_t bytes_of(const Assembly& assembly) {
  std::uint64_t sum = 0;
  for (const PartInfo& part : assembly.parts) {
    sum += sizeof part + (part.components.capacity() + part.used_in.capacity()) * sizeof(PartUse);
    for (const std::string* text : {&part.id, &part.name, &part.description, &part.external_file}) {
      sum += text->capacity();
    }
    sum += part.file.native().capacity() * sizeof(std::filesystem::path::value_type);
  }
  return sum;
}

/// A generated root has its tops where they are, and the unit of the first one.
DrawnPart draw_generated_root(const Products& products, const std::vector<DrawnPart>& parts) {
  DrawnPart root;
  for (const ProductId top : products.tops) {
    const DrawnPart& drawn = parts[top];
    if (root.unit_metres <= 0) {
      root.unit = drawn.unit;
      root.unit_metres = drawn.unit_metres;
    }
    PlacedComponent& component = root.components.emplace_back();
    component.part = top;
    if (drawn.unit_metres <= 0) continue;
    const double scale = drawn.unit_metres / root.unit_metres;
    for (std::size_t i = 0; i < 12; i += 5) component.matrix.rows[i] = scale;
  }
  return root;
}

}  // namespace

DrawnFile::DrawnFile(const std::filesystem::path& in, const DrawingOptions& fineness,
                     const Options& options, FindingList* warnings) {
  with_named_errors(in, [&] {
    if (options.follow_references) {
      const FollowedInput whole(in, options);
      draw(whole.path(), fineness, whole.options_for_path(), &whole, warnings);
    } else {
      draw(in, fineness, options, nullptr, warnings);
    }
  });
}

void DrawnFile::draw(const std::filesystem::path& in, const DrawingOptions& fineness,
                     const Options& options, const FollowedInput* whole, FindingList* warnings) {
  Geometry::GeometryRecords records(file.instances);
  FindingList heard;
  DrawingLoader loader(file.instances, records, options, size_of_file(in),
                       warnings != nullptr ? *warnings : heard);
  file.read(in, options, loader);
  tell_warnings(in, file.instances, heard, options);
  if (whole != nullptr) {
    file.files = whole->files();
    file.doubts = whole->doubts();
  }
  drawing.assembly = assembly_of(file, options);
  const std::size_t count = file.products.products.size();
  // The products have the same texts and lists once more.
  const std::uint64_t held =
      file.instances.bytes() + records.bytes() + 2 * bytes_of(drawing.assembly);
  const std::uint64_t left = options.memory_limit - std::min(options.memory_limit, held);
  const auto done = [&](std::size_t parts) {
    if (options.progress) options.progress({Stage::sorting, parts, count});
  };
  try {
    drawing.parts = Geometry::draw_products(records, file.products, fineness, left, done);
  } catch (const Geometry::NoRoom&) {
    refuse_for_memory(options.memory_limit);
  }
  if (drawing.assembly.parts.size() > count) {
    drawing.parts.push_back(draw_generated_root(file.products, drawing.parts));
  }
}

Drawing read_drawing(const std::filesystem::path& in, const DrawingOptions& drawing,
                     const Options& options) {
  return std::move(DrawnFile(in, drawing, options).drawing);
}

}  // namespace Kessel
