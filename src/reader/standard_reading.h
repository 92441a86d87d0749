// Reads an input into a host's store as the standard has it.
#pragma once

#include "kessel/options.h"
#include "model/store.h"

namespace Kessel {

/// Reads the header and the records of `store.input`. The header is laid out as the classic reading
/// has it wherever that sees the same. Throws `InputError`, its finding with its line, where the
/// reading stops, where a number is beyond 32 bits, where two records have one number, and where
/// the store, with what it notes of the records' places, or a text would take more than the
/// options' memory limit. Warnings go to the options'.
void read_as_standard(Store& store, const Options& options);

}  // namespace Kessel
