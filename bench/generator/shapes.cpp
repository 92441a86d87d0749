// The table of shapes, and the frame of a generated file.

#include "shapes.h"

#include <array>
#include <string>

namespace Kessel::bench {
namespace {

constexpr std::array SHAPES = {
    Shape{"bodies", "leaf parts", 3600, "bodies of some 600 records, nine parts to a sub-assembly",
          "bodies.step", Spacing::wide, write_bodies},
    Shape{"small-parts", "parts", 20000, "boxes of about 200 records directly under one assembly",
          "small-parts.step", Spacing::tight, write_small_parts},
    Shape{"shared", "parts", 2000, "300 records shared by all parts, whose own records take turns",
          "shared.step", Spacing::tight, write_shared},
    Shape{"long-records", "faces", 200000,
          "one shell of all faces, one presentation record of as many styled items",
          "long-records.step", Spacing::tight, write_long_records},
    Shape{"one-layer", "parts", 4000, "parts of one point that share their placement and a layer",
          "one-layer.step", Spacing::tight, write_one_layer},
    Shape{"ladder", "levels", 60, "every assembly uses the next one twice", "ladder.step",
          Spacing::tight, write_ladder},
    Shape{"mapped", "mapped items", 20000, "mapped items over nested representation maps",
          "mapped.step", Spacing::tight, write_mapped},
    Shape{"example", "nothing", 1, "a desk lamp, the project's example", "desk-lamp.step",
          Spacing::tight, write_example},
    Shape{"vice", "nothing", 1, "a bench vice, on which the styles differ", "bench-vice.step",
          Spacing::tight, write_vice},
    Shape{"own-bodies", "branches", 2, "sub-assemblies with bodies of their own", "own-bodies.step",
          Spacing::tight, write_own_bodies},
    Shape{"shared-levels", "levels", 3, "one component used at every level", "shared-levels.step",
          Spacing::tight, write_shared_levels},
    Shape{"root-bodies", "components", 2, "a top assembly with a solid among its items",
          "root-bodies.step", Spacing::tight, write_root_bodies},
    Shape{"root-detached-bodies", "components", 2, "a top assembly with a solid attached to it",
          "root-detached-bodies.step", Spacing::tight, write_root_detached_bodies},
    Shape{"several-roots", "top assemblies", 2, "several assemblies at the top",
          "several-roots.step", Spacing::tight, write_several_roots},
    Shape{"several-usages", "usages", 5, "one component used many times", "several-usages.step",
          Spacing::tight, write_several_usages},
    Shape{"equal-names", "sub-assemblies", 2, "products with equal names", "equal-names.step",
          Spacing::tight, write_equal_names},
    Shape{"odd-names", "parts", 25, "names in other scripts, with slashes and quotes",
          "odd-names.step", Spacing::tight, write_odd_names},
    Shape{"detached", "sub-assemblies", 2, "solids attached through relationships", "detached.step",
          Spacing::tight, write_detached},
};

}  // namespace

std::span<const Shape> shapes() {
  return SHAPES;
}

const Shape* find_shape(std::string_view name) {
  for (const Shape& shape : SHAPES)
    if (shape.name == name) return &shape;
  return nullptr;
}

void write_file(std::ostream& out, const Shape& shape, std::uint32_t size, std::uint64_t seed) {
  StepWriter writer(out, shape.spacing);
  Random random(seed);
  writer.begin_file(shape.file_name, "Generated assembly: " + std::string(shape.summary));
  shape.write(writer, random, size);
  writer.end_file();
}

}  // namespace Kessel::bench
