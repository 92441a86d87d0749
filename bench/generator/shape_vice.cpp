// An example on which the styles differ: a bench vice whose assemblies have bodies of their own.

#include <string_view>
#include <vector>

#include "management.h"
#include "polyhedron.h"
#include "polyhedron_solid.h"
#include "shapes.h"
#include "simple_parts.h"
#include "turned_solid.h"

namespace Kessel::bench {
namespace {

// Writes the parts and assemblies of the vice, one method each.
class BenchVice {
 public:
  explicit BenchVice(StepWriter& out) : out_(out), contexts_(write_product_contexts(out)) {}

  // The vice is its bed, a body of its own, with a fixed jaw and a slide. Somebody has approved it.
  void write() {
    // Its solid hangs on its shape by a relationship.
    const Component jaw = write_box_part(out_, contexts_, "Jaw plate", {10.0, WIDTH, JAW_HEIGHT},
                                         STEEL, SolidLink::detached);
    const Component slide = write_slide(jaw);
    const Component vice = assembly_with_box("Bench vice",
                                             {usage_at(jaw, "Jaw plate:1", {20.0, 0.0, BED_HEIGHT}),
                                              usage_at(slide, "Slide:1", {60.0, 0.0, BED_HEIGHT})},
                                             {}, {160.0, WIDTH, BED_HEIGHT}, SolidLink::direct);
    const InstanceId person = write_person(out_, "1", vice.definition);
    const InstanceId date = write_date(out_, 17, vice.definition);
    write_approval(out_, "1", person, date, vice.definition);
  }

 private:
  // Lengths of the vice, in millimetres.
  static constexpr double WIDTH = 60.0;
  static constexpr double BED_HEIGHT = 30.0;
  static constexpr double JAW_HEIGHT = 30.0;
  static constexpr double SPINDLE_LENGTH = 100.0;
  static constexpr double HANDLE_LENGTH = 120.0;

  static constexpr Colour CAST_BLUE{0.12, 0.25, 0.5};
  static constexpr Colour STEEL{0.7, 0.72, 0.75};
  static constexpr Colour BRASS{0.85, 0.7, 0.3};
  static constexpr Colour RED{0.78, 0.12, 0.1};

  static constexpr Vec3 UP{0.0, 0.0, 1.0};
  static constexpr Vec3 ACROSS{0.0, 1.0, 0.0};
  static constexpr Vec3 FORWARD{1.0, 0.0, 0.0};

  // The slide is a block, which hangs on its shape by a relationship, with what moves along.
  Component write_slide(const Component& jaw) {
    const double middle = WIDTH / 2.0;
    const double height = JAW_HEIGHT / 2.0;
    const InstanceId context = write_own_context(out_);
    // The ";" ends no record: it stands in a string.
    const std::string_view name = "Spindle; Tr 16x4";
    const Solid rod = write_turned_solid(out_, name, {}, cylinder_profile(8.0, SPINDLE_LENGTH));
    const Component spindle = write_solid_part(out_, contexts_, context, name, rod, BRASS);
    const Component handle = write_handle();
    const Usage pointing_forward{spindle, "Spindle:1", {{30.0, middle, height}, FORWARD, UP}};
    const Usage lying_across{
        handle,
        "Handle:1",
        {{34.0 + SPINDLE_LENGTH, middle - HANDLE_LENGTH / 2.0, height}, ACROSS, FORWARD}};
    return assembly_with_box("Slide",
                             {usage_at(jaw, "Jaw plate:2", {}), pointing_forward, lying_across},
                             {10.0, 0.0, 0.0}, {20.0, WIDTH, JAW_HEIGHT}, SolidLink::detached);
  }

  // One end of the handle has another colour than the rest.
  Component write_handle() {
    const InstanceId context = write_own_context(out_);
    const Solid rod = write_turned_solid(out_, "Handle", {}, cylinder_profile(4.0, HANDLE_LENGTH));
    const Component handle = write_part(out_, contexts_, context, "Handle", list(rod.brep));
    const InstanceId whole = write_styled_item(out_, write_style(out_, STEEL), rod.brep);
    const InstanceId style_of_end = write_style(out_, RED);
    const InstanceId end = write_overriding_item(out_, style_of_end, rod.faces.back(), whole);
    write_presentation(out_, context, list(whole, end));
    return handle;
  }

  // An assembly that has a box of its own beside its components.
  Component assembly_with_box(std::string_view name, const std::vector<Usage>& usages,
                              const Vec3& position, const Vec3& size, SolidLink link) {
    const InstanceId context = write_own_context(out_);
    const Solid solid = write_polyhedron(out_, name, box(shifted_to(position), size));
    Component assembly;
    if (link == SolidLink::direct) {
      assembly = write_assembly(out_, contexts_, context, name, usages, list(solid.brep));
    } else {
      assembly = write_assembly(out_, contexts_, context, name, usages);
      attach_solids(out_, assembly, context, list(solid.brep));
    }
    const InstanceId style = write_style(out_, CAST_BLUE);
    write_presentation(out_, context, list(write_styled_item(out_, style, solid.brep)));
    return assembly;
  }

  StepWriter& out_;
  ProductContexts contexts_;
};

}  // namespace

void write_vice(StepWriter& out, Random& /*random*/, std::uint32_t /*size*/) {
  BenchVice(out).write();
}

}  // namespace Kessel::bench
