#include "extract/fresh_folder.h"

#include <system_error>

#include "kessel/errors.h"

namespace Kessel {

FreshFolder::FreshFolder(const std::filesystem::path& folder) {
  std::error_code error;
  std::filesystem::path missing = folder;
  for (; !missing.empty() && !std::filesystem::exists(missing, error);
       missing = missing.parent_path()) {
    if (missing.has_filename()) made_.push_back(missing);
  }
  std::filesystem::create_directories(folder, error);
  if (error) throw OutputError(folder, error);
}

FreshFolder::~FreshFolder() {
  std::error_code ignored;
  for (const std::filesystem::path& folder : made_) std::filesystem::remove(folder, ignored);
}

}  // namespace Kessel
