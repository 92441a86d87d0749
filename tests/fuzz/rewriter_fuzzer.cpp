// Any text as a record of a store in which three parts hold different instances.
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "fuzz/expect.h"
#include "kessel/entity.h"
#include "reader/references.h"
#include "writer/hand_made_store.h"
#include "writer/plain_rewriting.h"
#include "writer/rewrite.h"

namespace Kessel::test {
namespace {

/// Instances 1 to 40 and some with more digits; every number has another length in each part.
class World {
 public:
  World() {
    for (int i = 0; i < 3; ++i) parts_.push_back(store_.add_part());
    std::vector<std::uint32_t> ids = {99, 100, 101, 999, 4711, 99'999, 1'000'000};
    for (std::uint32_t id = 1; id <= 40; ++id) ids.push_back(id);
    for (const std::uint32_t id : ids) {
      store_.add_record(id);
      if (id % 2 == 1) store_.hold(id, parts_[0], id == 1 ? 1 : id / 2 + 1);
      if (id % 3 != 0) store_.hold(id, parts_[1], id + 99'990);
      if (id % 5 != 0) store_.hold(id, parts_[2], 4'294'967'295U - id);
    }
  }
  const HandMadeStore& store() const { return store_; }
  const std::vector<Part*>& parts() const { return parts_; }

 private:
  HandMadeStore store_;
  std::vector<Part*> parts_;
};

/// The plain way takes the square of the references, and a text cannot have more "#" than this.
bool is_small(std::string_view text) {
  return text.size() <= 4096;
}

void check_references(std::string_view text) {
  std::vector<std::uint32_t> fast;
  std::vector<std::uint32_t> plainly;
  const auto to = [text](std::vector<std::uint32_t>& found) {
    return [&found, text](std::uint32_t number, const char* begin, const char* end) {
      expect(begin > text.data() && begin[-1] == '#', "a reference stands behind #");
      expect(begin < end && end <= text.data() + text.size(), "a reference stands in the text");
      found.push_back(number);
    };
  };
  expect(for_each_reference(text, to(fast)) == for_each_reference_plainly(text, to(plainly)),
         "both find a malformed reference or none does");
  expect(fast == plainly, "the fast way finds the same references");
  expect(fast == plain::references_in(text), "the plainest way finds the same references");
}

void check_rewriting(const World& world, const std::string& record) {
  const HandMadeStore& store = world.store();
  Slots slots = store.slots();
  const std::vector<std::uint32_t> references = plain::references_in(record);
  Entity entity;
  for (std::size_t i = 1; i < references.size(); ++i) entity.add_reference(references[i]);
  for (Part* part : world.parts()) {
    const auto plainly =
        plain::outcome_of([&] { return plain::rewrite_references(record, slots, part); });
    expect(plain::outcome_of([&] { return store.rewritten(record, part); }) == plainly,
           "rewritten as if edited in place");
    const auto presentation = plain::outcome_of(
        [&] { return plain::rewrite_presentation_items(record, entity, slots, part); });
    expect(plain::outcome_of([&] { return store.rewritten_presentation(record, entity, part); }) ==
               presentation,
           "a presentation record rewritten as if edited in place");
    const Entity* own = slots[references.front()];
    if (own == nullptr || !own->part_numbers.contains(part)) continue;
    expect(
        plain::outcome_of([&] { return store.rewritten_with_references(record, part); }) == plainly,
        "a whole record with known references");
    expect(plain::outcome_of([&] { return store.rewritten_on_the_way(record, part); }) == plainly,
           "a whole record on the way");
    const auto by_layout = store.rewritten_by_layout(record, part);
    expect(!by_layout || plain::outcome_of([&] { return *by_layout; }) == plainly,
           "a whole record by its layout");
  }
}

void check_context(const std::string& record) {
  HandMadeStore store;
  for (const std::string_view type : {"GEOMETRIC_REPRESENTATION_CONTEXT", ""}) {
    const std::string made = make_context_external(record, store.add_record(1, {}, type));
    expect(made == record || made.find("'external'") != std::string::npos,
           "a context is made external or left alone");
  }
}

}  // namespace
}  // namespace Kessel::test

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace Kessel::test;
  static const World world;
  std::string record(reinterpret_cast<const char*>(data), size);
  check_references(record);
  if (!is_small(record)) return 0;
  // Records come out of the cutter, and into the store with a number that it has.
  const std::vector<std::uint32_t> references = plain::references_in(record);
  if (!record.starts_with('#') || references.empty() ||
      references.front() >= world.store().slots().size()) {
    record.insert(0, "#1=");
  }
  if (record.back() != ')') record += ')';
  check_rewriting(world, record);
  check_context(record);
  return 0;
}
