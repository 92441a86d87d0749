// The project's own example: a desk lamp of nine parts and four sub-assemblies.

#include <string_view>
#include <vector>

#include "polyhedron.h"
#include "polyhedron_solid.h"
#include "shapes.h"
#include "simple_parts.h"
#include "turned_solid.h"

namespace Kessel::bench {
namespace {

// Lengths of the lamp, in millimetres.
constexpr double FOOT_HEIGHT = 4.0;
constexpr double BASE_HEIGHT = 15.0;
constexpr double COLUMN_HEIGHT = 320.0;
constexpr double ARM_LENGTH = 220.0;  // from pivot to pivot
constexpr double ARM_WIDTH = 12.0;
constexpr double PIN_LENGTH = 12.0;
constexpr double SOCKET_HEIGHT = 45.0;
constexpr double SHADE_WALL = 2.0;

constexpr Colour BLACK{0.05, 0.05, 0.05};
constexpr Colour GRAPHITE{0.25, 0.26, 0.28};
constexpr Colour STEEL{0.7, 0.72, 0.75};
constexpr Colour RED{0.78, 0.12, 0.1};
constexpr Colour IVORY{0.93, 0.91, 0.84};
constexpr Colour WARM_WHITE{1.0, 0.95, 0.8};

// Directions without rounding: the sides of the triangles 3-4-5 and 7-24-25.
constexpr Vec3 LOWER_ARM_DIRECTION{0.6, 0.0, 0.8};
constexpr Vec3 LOWER_ARM_UP{-0.8, 0.0, 0.6};
constexpr Vec3 UPPER_ARM_DIRECTION{0.96, 0.0, 0.28};
constexpr Vec3 UPPER_ARM_UP{-0.28, 0.0, 0.96};
constexpr Vec3 DOWN{0.0, 0.0, -1.0};
constexpr Vec3 ACROSS{0.0, 1.0, 0.0};
constexpr Vec3 FORWARD{1.0, 0.0, 0.0};

// Writes the parts and assemblies of the lamp, one method each.
class DeskLamp {
 public:
  explicit DeskLamp(StepWriter& out) : out_(out), contexts_(write_product_contexts(out)) {}

  void write() {
    const Component pin = turned_part("Pivot pin", STEEL,
                                      {{0.0, 0.0},
                                       {7.0, 0.0},
                                       {7.0, PIN_LENGTH - 3.0},
                                       {10.0, PIN_LENGTH - 3.0},
                                       {10.0, PIN_LENGTH},
                                       {0.0, PIN_LENGTH}});
    const Component stand = write_stand();
    const Component boom = write_boom(pin);
    const Component rocker_switch = box_part("Rocker switch", RED, {18.0, 12.0, 6.0});
    const double base_top = FOOT_HEIGHT + BASE_HEIGHT;
    assembly("Desk lamp", {usage_at(stand, "Stand:1", {}),
                           usage_at(boom, "Boom:1", {0.0, 0.0, base_top + COLUMN_HEIGHT + 10.0}),
                           usage_at(rocker_switch, "Rocker switch:1", {40.0, -6.0, base_top})});
  }

 private:
  Component write_stand() {
    const Component foot = turned_part("Rubber foot", BLACK, cylinder_profile(8.0, FOOT_HEIGHT));
    const Component base = turned_part(
        "Base", GRAPHITE,
        {{0.0, 0.0}, {90.0, 0.0}, {90.0, 10.0}, {82.0, BASE_HEIGHT}, {0.0, BASE_HEIGHT}});
    const Component column = turned_part("Column", STEEL, cylinder_profile(9.0, COLUMN_HEIGHT));
    return assembly("Stand", {usage_at(base, "Base:1", {0.0, 0.0, FOOT_HEIGHT}),
                              usage_at(foot, "Rubber foot:1", {55.0, 55.0, 0.0}),
                              usage_at(foot, "Rubber foot:2", {-55.0, 55.0, 0.0}),
                              usage_at(foot, "Rubber foot:3", {-55.0, -55.0, 0.0}),
                              usage_at(foot, "Rubber foot:4", {55.0, -55.0, 0.0}),
                              usage_at(column, "Column:1", {0.0, 0.0, FOOT_HEIGHT + BASE_HEIGHT})});
  }

  // The boom is two equal arms, side by side at the middle pivot, and the head at the end.
  Component write_boom(const Component& pin) {
    const Component arm = write_arm(pin);
    const Component head = write_head(pin);
    const double side_step = ARM_WIDTH + PIN_LENGTH;
    const Vec3 middle = ARM_LENGTH * LOWER_ARM_DIRECTION + side_step * ACROSS;
    const Vec3 end = middle + ARM_LENGTH * UPPER_ARM_DIRECTION + side_step * ACROSS;
    const Usage lower{arm, "Arm:1", {{}, LOWER_ARM_UP, LOWER_ARM_DIRECTION}};
    const Usage upper{arm, "Arm:2", {middle, UPPER_ARM_UP, UPPER_ARM_DIRECTION}};
    const Usage lamp_head{head, "Head:1", {end, DOWN, FORWARD}};
    return assembly("Boom", {lower, upper, lamp_head});
  }

  // An arm lies along its x axis, from pivot to pivot; its pins stand on its side.
  Component write_arm(const Component& pin) {
    const double overhang = 10.0;
    const Component beam =
        box_part("Arm beam", GRAPHITE, {ARM_LENGTH + 2.0 * overhang, ARM_WIDTH, 2.0 * overhang});
    const Usage first{pin, "Pivot pin:1", {{0.0, ARM_WIDTH, 0.0}, ACROSS, FORWARD}};
    const Usage second{pin, "Pivot pin:2", {{ARM_LENGTH, ARM_WIDTH, 0.0}, ACROSS, FORWARD}};
    return assembly("Arm",
                    {usage_at(beam, "Arm beam:1", {-overhang, 0.0, -overhang}), first, second});
  }

  // The head hangs along its z axis, which points down in the lamp.
  Component write_head(const Component& pin) {
    const Component socket = turned_part(
        "Socket", IVORY,
        {{0.0, 0.0}, {20.0, 0.0}, {20.0, 35.0}, {14.0, SOCKET_HEIGHT}, {0.0, SOCKET_HEIGHT}});
    // A cup with a conical wall: up the outside, over the rim, down the inside.
    const Component shade = turned_part("Shade", RED,
                                        {{0.0, 0.0},
                                         {30.0, 0.0},
                                         {75.0, 110.0},
                                         {73.0, 110.0},
                                         {29.0, SHADE_WALL},
                                         {0.0, SHADE_WALL}});
    const Component bulb = turned_part("Bulb", WARM_WHITE,
                                       {{0.0, 0.0},
                                        {13.0, 0.0},
                                        {13.0, 25.0},
                                        {28.0, 55.0},
                                        {28.0, 70.0},
                                        {14.0, 85.0},
                                        {0.0, 85.0}});
    const Usage sideways{pin, "Pivot pin:1", {{0.0, 20.0, 15.0}, ACROSS, FORWARD}};
    return assembly("Head", {usage_at(socket, "Socket:1", {}), sideways,
                             usage_at(shade, "Shade:1", {0.0, 0.0, SOCKET_HEIGHT}),
                             usage_at(bulb, "Bulb:1", {0.0, 0.0, SOCKET_HEIGHT + SHADE_WALL})});
  }

  Component turned_part(std::string_view name, const Colour& colour,
                        const std::vector<ProfilePoint>& profile) {
    const InstanceId geometric_context = write_own_context(out_);
    const Solid solid = write_turned_solid(out_, name, {}, profile);
    return write_solid_part(out_, contexts_, geometric_context, name, solid, colour);
  }

  Component box_part(std::string_view name, const Colour& colour, const Vec3& size) {
    return write_box_part(out_, contexts_, name, size, colour);
  }

  Component assembly(std::string_view name, const std::vector<Usage>& usages) {
    const InstanceId geometric_context = write_own_context(out_);
    return write_assembly(out_, contexts_, geometric_context, name, usages);
  }

  StepWriter& out_;
  ProductContexts contexts_;
};

}  // namespace

void write_example(StepWriter& out, Random& /*random*/, std::uint32_t /*size*/) {
  DeskLamp(out).write();
}

}  // namespace Kessel::bench
