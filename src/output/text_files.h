// Many files that are written piece by piece.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string_view>
#include <vector>

#include "split_list/xxh64.h"

namespace Kessel {

/// Gathers text per file, and passes it on in larger pieces with few files open at a time:
/// consecutive records often go to different files, and opening a file again for each would cost
/// more than all the rest. Files that were not written to for a while are passed on first, since
/// they are often complete.
///
/// Every function throws OutputError as soon as a file cannot be opened, written or closed.
class TextFiles {
 public:
  /// Files that may be open at the same time.
  static constexpr std::size_t MOST_OPEN = 50;

  /// Text is appended to files that are there already.
  explicit TextFiles(std::vector<std::filesystem::path> paths);

  const std::filesystem::path& path(std::size_t file) const { return paths_[file]; }

  /// Adds to `file` what `put(char* out)` writes at `out`, where `room` bytes are free; it returns
  /// the end.
  template <class Put>
  void write(std::size_t file, std::size_t room, Put put) {
    fill(file, room, room, [&](char* out, const char*) { return put(out); });
  }
  /// Adds to `file` what `put(char* out, const char* end)` writes from `out` to `end`, where at
  /// least `room` bytes are free, and more where so much is `expected`; it returns the end of what
  /// it wrote.
  template <class Put>
  void fill(std::size_t file, std::size_t room, std::size_t expected, Put put) {
    Pending& pending = pending_[file];
    if (pending.room - pending.size < room) {
      make_room(pending, std::max(room, std::min(expected, ENOUGH)));
    }
    char* const out = pending.bytes.get() + pending.size;
    const std::size_t end = std::min(pending.room, std::max(pending.size + room, ENOUGH));
    const auto added = static_cast<std::size_t>(put(out, pending.bytes.get() + end) - out);
    pending.size += added;
    held_ += added;
    written_ += added;
    pending.last_written = written_;
    if (pending.size >= ENOUGH) pass_on(file);
    if (written_ >= next_look_) look_for_cold_files();
  }
  void write(std::size_t file, std::string_view text) {
    write(file, text.size(), [&](char* out) { return std::copy(text.begin(), text.end(), out); });
  }

  /// Passes on all that is held, and closes the files.
  void finish();

  /// What the file holds hashes to, if it was not there before; of use when all is passed on.
  std::uint64_t hash(std::size_t file) const { return pending_[file].hash.value(); }

  /// Bytes that were added to `file`.
  std::uint64_t size(std::size_t file) const {
    return pending_[file].passed_on + pending_[file].size;
  }

 private:
  static constexpr std::size_t ENOUGH = std::size_t{256} * 1024;

  struct Pending {
    std::unique_ptr<char[]> bytes;
    std::size_t size = 0;
    std::size_t room = 0;
    std::uint64_t passed_on = 0;
    std::uint64_t last_written = 0;  // written_ after its last piece
    std::unique_ptr<std::ofstream> stream;
    Xxh64 hash;
  };
  void make_room(Pending& pending, std::size_t room);
  void pass_on(std::size_t file);
  void pass_on_all();
  void look_for_cold_files();
  void open(std::size_t file);
  void close(std::size_t file);

  std::vector<std::filesystem::path> paths_;
  std::vector<Pending> pending_;
  std::deque<std::size_t> opened_;  // in the order in which they were opened
  std::uint64_t held_ = 0;          // bytes that were not passed on
  std::uint64_t written_ = 0;       // bytes that were added
  std::uint64_t next_look_;
  std::uint64_t most_held_;
};

}  // namespace Kessel
