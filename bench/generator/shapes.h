// The assemblies that the generator can write.

#pragma once

#include <cstdint>
#include <ostream>
#include <span>
#include <string_view>

#include "random.h"
#include "step_writer.h"

namespace Kessel::bench {

// One kind of assembly.
struct Shape {
  std::string_view name;       // as on the command line
  std::string_view size_unit;  // what its size counts
  std::uint32_t typical_size;
  std::string_view summary;    // what the file holds, in one line
  std::string_view file_name;  // the name in the header section
  Spacing spacing;
  void (*write)(StepWriter& out, Random& random, std::uint32_t size);  // writes the data section
};

// Returns all shapes, in the order in which a help text lists them.
std::span<const Shape> shapes();

// Returns the shape called `name`, or null when there is none.
const Shape* find_shape(std::string_view name);

// Writes the whole file of `shape` with `size` (at least 1) to `out`; equal arguments give equal
// bytes.
void write_file(std::ostream& out, const Shape& shape, std::uint32_t size, std::uint64_t seed);

// The writers of the data sections, one per shape; what `size` counts stands in the table of
// `shapes()`.

// Parts with bodies of some 600 records, nine to a sub-assembly, under one assembly.
void write_bodies(StepWriter& out, Random& random, std::uint32_t size);

// Boxes directly under one assembly.
void write_small_parts(StepWriter& out, Random& random, std::uint32_t size);

// Parts that share 300 records; their own records take turns.
void write_shared(StepWriter& out, Random& random, std::uint32_t size);

// One shell of `size` faces and one presentation record of `size` styled items over 100 parts.
void write_long_records(StepWriter& out, Random& random, std::uint32_t size);

// Parts of one point that share their placement, all on one layer.
void write_one_layer(StepWriter& out, Random& random, std::uint32_t size);

// Levels of assemblies, each of which uses the next one twice.
void write_ladder(StepWriter& out, Random& random, std::uint32_t size);

// Mapped items over nested representation maps, in panels with a small assembly around them.
void write_mapped(StepWriter& out, Random& random, std::uint32_t size);

// The desk lamp of the examples folder; the size is ignored.
void write_example(StepWriter& out, Random& random, std::uint32_t size);

// The bench vice of the examples folder; the size is ignored.
void write_vice(StepWriter& out, Random& random, std::uint32_t size);

// Assemblies at two levels with bodies of their own, direct and detached.
void write_own_bodies(StepWriter& out, Random& random, std::uint32_t size);

// One component used at every level of a chain of assemblies.
void write_shared_levels(StepWriter& out, Random& random, std::uint32_t size);

// A top assembly whose representation holds a solid beside its placements.
void write_root_bodies(StepWriter& out, Random& random, std::uint32_t size);

// A top assembly with a solid attached through a relationship.
void write_root_detached_bodies(StepWriter& out, Random& random, std::uint32_t size);

// Several assemblies at the top.
void write_several_roots(StepWriter& out, Random& random, std::uint32_t size);

// One component used many times by one assembly.
void write_several_usages(StepWriter& out, Random& random, std::uint32_t size);

// Parts and assemblies with equal names, and with names that differ in case only.
void write_equal_names(StepWriter& out, Random& random, std::uint32_t size);

// Names in other scripts, with quotes, slashes and whatever else a file name cannot hold.
void write_odd_names(StepWriter& out, Random& random, std::uint32_t size);

// Components and sub-assemblies whose solids hang on relationships.
void write_detached(StepWriter& out, Random& random, std::uint32_t size);

}  // namespace Kessel::bench
