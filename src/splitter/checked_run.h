// A run that ends, and that says so when a file was not written whole.
#pragma once

#include <filesystem>
#include <vector>

#include "kessel/options.h"
#include "kessel/splitter.h"
#include "model/store.h"

namespace Kessel {

/// One run from `in` into an output folder. The arguments must outlive it.
class CheckedRun {
 public:
  CheckedRun(const std::filesystem::path& in, const Options& options)
      : in_(in), options_(options) {}

  /// What `split` does.
  std::vector<WrittenFile> write_to(const std::filesystem::path& outdir);

 private:
  std::unique_ptr<Store> read() const;

  const std::filesystem::path& in_;
  const Options& options_;
};

}  // namespace Kessel
