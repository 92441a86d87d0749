// Files that move, and move back where that is not kept.
#pragma once

#include <filesystem>
#include <utility>
#include <vector>

namespace Velkstep {

/// Renames; fails with EEXIST in `errno` when there is something called `to`.
bool rename_to_new(const std::filesystem::path& from, const std::filesystem::path& to);

/// Files that were renamed. Neither a move nor taking it back ever replaces anything.
class Moves {
 public:
  using Paths = std::vector<std::pair<std::filesystem::path, std::filesystem::path>>;

  Moves() = default;
  Moves(const Moves&) = delete;
  Moves& operator=(const Moves&) = delete;

  /// False, with the reason in `errno`, where it cannot be; EEXIST when there is something called
  /// `to`.
  bool move(const std::filesystem::path& from, const std::filesystem::path& to);
  /// Counts as moves what was moved with its folder.
  void add(Paths&& moved) noexcept { done_ = std::move(moved); }
  /// The last one first.
  void take_back() noexcept;

 private:
  Paths done_;
};

}  // namespace Velkstep
