// Reads one exchange file into a store.
#pragma once

#include <filesystem>
#include <memory>

#include "kessel/options.h"
#include "model/store.h"

namespace Kessel {

/// Reads the header and the records of `path`. Throws `std::invalid_argument` "Failed to open input
/// file." and `std::bad_alloc`; does not return for the two kinds of input for which `Run` does
/// not.
std::unique_ptr<Store> parse_file(const std::filesystem::path& path,
                                  const Options& options = Options::classic());

/// The same for a checked run, in the options' reading: throws `InputError` where it would read for
/// ever, or where the standard reading stops, and where the store or a text would take more than
/// the options' memory limit.
std::unique_ptr<Store> parse_file_checked(const std::filesystem::path& path,
                                          const Options& options);

}  // namespace Kessel
