// Errors leave the library with the path of the file that they are about.
#pragma once

#include <filesystem>
#include <utility>

#include "encoding/utf8_path.h"
#include "kessel/errors.h"
#include "kessel/extract.h"

namespace Kessel {

/// Returns what `work` returns. An InputError that it throws without a path leaves with that of the
/// file that its finding names, seen from `folder`, or else with `in`; a PartError with `in`.
template <class Work>
auto with_named_errors(const std::filesystem::path& in, const std::filesystem::path& folder,
                       Work&& work) {
  try {
    return std::forward<Work>(work)();
  } catch (const InputError& error) {
    if (!error.path().empty()) throw;
    const std::string& file = error.finding().file;
    throw InputError(error.finding(), file.empty() ? in : folder / path_of_utf8(file));
  } catch (const PartError& error) {
    if (!error.path().empty()) throw;
    throw PartError(error.sentence(), error.candidates(), in);
  }
}

/// The same where other files are seen from the folder of `in`.
template <class Work>
auto with_named_errors(const std::filesystem::path& in, Work&& work) {
  return with_named_errors(in, in.parent_path(), std::forward<Work>(work));
}

}  // namespace Kessel
