// The rewriting of records done the plain way: edit the text in place, one reference at a time.
#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "kessel/entity.h"
#include "kessel/part.h"
#include "model/slots.h"

namespace Kessel::test::plain {

/// All references of `text` outside string literals, up to the first malformed one.
std::vector<std::uint32_t> references_in(std::string_view text);

std::string rewrite_references(std::string text, Slots slots, Part* part);

/// The record whose references are `record`'s, rewritten with a new item list. Falls back on
/// `rewrite_references` where the text has no item list.
std::string rewrite_presentation_items(const std::string& text, const Entity& record, Slots slots,
                                       Part* part);

/// What `rewrite`, plain or not, returns, or the text of its exception: a new number may be read as
/// an input number that is beyond the store.
template <class Rewrite>
std::string outcome_of(Rewrite rewrite) {
  try {
    return rewrite();
  } catch (const std::out_of_range& error) {
    return std::string("out_of_range: ") + error.what();
  }
}

}  // namespace Kessel::test::plain
