// Tells assemblies from parts with geometry, finds or makes the root, and names every file.
#pragma once

#include "model/store.h"

namespace Kessel {

/// Classifies every part, gives it its file's name, and finds or generates the root. Prints two
/// lines on standard error where there is none. Throws `std::out_of_range` "invalid vector
/// subscript" over a reference beyond the store.
void find_parts_types(Store& store);

/// Makes every part a leaf whose own shape carries geometry. A shape definition representation that
/// leads to no part is passed over before its representation is looked at; a representation that is
/// not there counts as one without geometry.
void classify_by_geometry(Store& store);

/// Makes a part that stands for no record the root, and the last in the list.
void generate_root(Store& store);

}  // namespace Kessel
