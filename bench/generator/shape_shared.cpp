// Shared: parts with many records in common, whose own records take turns in the file.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <sstream>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "polyhedron_solid.h"
#include "shapes.h"
#include "shared_records.h"
#include "simple_parts.h"

namespace Kessel::bench {
namespace {

// The records of one part, as text, and where the next of them starts.
struct RecordQueue {
  std::string text;
  std::size_t next = 0;

  bool empty() const { return next == text.size(); }

  // Returns the next record with its line end.
  std::string_view take() {
    const std::size_t end = text.find(";\n", next) + 2;
    const std::string_view record = std::string_view(text).substr(next, end - next);
    next = end;
    return record;
  }
};

Component write_sharing_part(StepWriter& out, Random& random, const SharedRecords& shared,
                             const std::string& name) {
  const Vec3 edges{random.length(5.0, 50.0), random.length(5.0, 50.0), random.length(5.0, 50.0)};
  const Solid solid = write_polyhedron(out, name, box({}, edges));
  return write_part(out, shared.contexts, shared.geometric_context, name,
                    list(solid.brep, shared.datum));
}

}  // namespace

void write_shared(StepWriter& out, Random& random, std::uint32_t size) {
  const SharedRecords shared = write_shared_records(out);
  // Part i has the numbers first + i, first + i + size, ...: numbers rise through the file although
  // each part is written as a whole first. All parts have equally many records.
  const InstanceId first = out.reserve();
  std::vector<RecordQueue> queues;
  std::vector<Usage> usages;
  std::uint64_t last_number = first.number;
  for (std::uint32_t i = 0; i < size; ++i) {
    std::ostringstream text;
    StepWriter part_out(text, Spacing::tight, {first.number + i, size});
    const std::string name = "Part " + std::to_string(i + 1);
    const Component part = write_sharing_part(part_out, random, shared, name);
    usages.push_back(usage_at(part, name, {60.0 * i, 0.0, 0.0}));
    last_number = part_out.reserve().number - size;
    part_out.flush();
    queues.push_back({std::move(text).str()});
  }
  while (std::any_of(queues.begin(), queues.end(),
                     [](const RecordQueue& queue) { return !queue.empty(); })) {
    for (RecordQueue& queue : queues)
      if (!queue.empty()) out.append_records(queue.take());
  }
  out.reserve_block(last_number - first.number);
  write_assembly(out, shared.contexts, shared.geometric_context, "Sharing parts", usages);
}

}  // namespace Kessel::bench
