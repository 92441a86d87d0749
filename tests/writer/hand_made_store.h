// A store put together by hand: records, parts, and who holds what under which number.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "kessel/part.h"
#include "model/slots.h"
#include "model/store.h"

namespace Kessel::test {

/// Records and parts without an input file. The parts belong to the object and outlive no call.
class HandMadeStore {
 public:
  HandMadeStore() : file_("no such file") {}

  /// Adds a part behind those that are there.
  Part* add_part(PartKind kind = LEAF_PART, const std::string& path = {});

  /// Makes the record `id`, without a type name unless one is given.
  Entity& add_record(std::uint32_t id, const std::vector<std::uint32_t>& references = {},
                     std::string_view type = {});

  /// Makes `part` hold record `id`, which is made if need be, as `number`.
  void hold(std::uint32_t id, Part* part, std::uint32_t number);

  /// The record `text`, rewritten for `part` like any record.
  std::string rewritten(std::string_view text, Part* part) const;

  /// The record `text`, which `part` holds, by each of the two fast paths for whole records: with
  /// its references found before and on the way.
  std::string rewritten_with_references(std::string_view text, Part* part) const;
  std::string rewritten_on_the_way(std::string_view text, Part* part) const;
  /// The same for a record of a standard reading, by what that has noted of it. No value where the
  /// text is none that this is for: all that it refers to is there and held, and "#" means nothing
  /// else.
  std::optional<std::string> rewritten_by_layout(std::string_view text, Part* part) const;

  /// The record `text` of `record`, rewritten for `part` as a presentation record.
  std::string rewritten_presentation(std::string_view text, const Entity& record, Part* part) const;

  Slots slots() const { return file_.entities; }

 private:
  Store file_;
  std::vector<std::unique_ptr<Part>> parts_;
};

}  // namespace Kessel::test
