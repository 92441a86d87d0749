// The block of records by which an assembly's file points at a component's file.
#pragma once

#include <string>
#include <string_view>

#include "kessel/part.h"
#include "model/slots.h"
#include "structure/leaf.h"
#include "structure/reachability.h"

namespace Kessel {

/// The eleven records (ISO 10303-21 text, each with ";" and a line end) that attach the file called
/// `file_name` (an exchange-string body) to `target`'s copies of a component's shape representation
/// and product definition, as an external document reference (ISO 10303-41). `link` is the shape
/// definition representation that `target` shares with the component.
///
/// Takes eleven numbers from `target->last_instance_number`. `search` runs over `slots`.
/// Throws `std::out_of_range`: "invalid map<K, T> key" when `target` does not hold the
/// representation or the definition, or there is none; "invalid vector subscript" over a reference
/// beyond the store. Numbers taken until then stay taken.
std::string make_external_reference(Slots slots, ReachabilitySearch& search, Part* target,
                                    const Entity& link, std::string_view file_name);

}  // namespace Kessel
