// What parts' files are called.
#pragma once

#include "kessel/part.h"
#include "model/slots.h"
#include "model/store.h"

namespace Kessel {

/// What `Part::resolve_name` does.
void resolve_name(Part& part, Slots slots);

/// Names files after products, in the store's style, through `decode`; null stands for
/// `decode_step_to_utf8`. Parts have their record names already; one whose product has no usable
/// name is called "part 12" after its number, and a generated root keeps the name that it has.
void name_after_products(Store& store, std::string (*decode)(std::string_view));

}  // namespace Kessel
