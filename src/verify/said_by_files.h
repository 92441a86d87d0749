// Whether files that others refer to say the same.
#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <map>
#include <utility>
#include <vector>

namespace Kessel {

/// Sums up files, each read once. A file says what its header and its records say in their order,
/// but for names that lead to other files, and what those files say.
class SaidByFiles {
 public:
  /// Files are read where `readable` says (Options::readable).
  explicit SaidByFiles(
      std::function<std::filesystem::path(const std::filesystem::path&)> readable = {})
      : readable_(std::move(readable)) {}

  /// Whether both are exchange files that say the same. Paths are without links.
  bool is_same(const std::filesystem::path& a, const std::filesystem::path& b);

 private:
  /// 0 where it is no exchange file that can be read.
  std::uint64_t said_by(const std::filesystem::path& path);
  std::uint64_t sum_up(const std::filesystem::path& path);

  const std::function<std::filesystem::path(const std::filesystem::path&)> readable_;
  std::map<std::filesystem::path, std::uint64_t> known_;
  std::vector<std::filesystem::path> way_;  // to what is being summed up
};

}  // namespace Kessel
