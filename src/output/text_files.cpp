#include "output/text_files.h"

#include <cerrno>
#include <system_error>
#include <utility>

#include "kessel/errors.h"

namespace Kessel {

namespace {

constexpr std::uint64_t KIB = 1024;
constexpr std::uint64_t MIB = 1024 * KIB;

/// A file is cold when this much was written to others since its last piece.
constexpr std::uint64_t COLD_AFTER = 4 * MIB;
/// A text that is smaller waits for more, also when its file is cold.
constexpr std::size_t LEAST_COLD_TEXT = 4 * KIB;
constexpr std::size_t LEAST_ROOM = 256;

[[noreturn]] void fail(const std::filesystem::path& path) {
  throw OutputError(path, {errno != 0 ? errno : EIO, std::generic_category()});
}

}  // namespace

TextFiles::TextFiles(std::vector<std::filesystem::path> paths)
    : paths_(std::move(paths)),
      pending_(paths_.size()),
      next_look_(COLD_AFTER),
      most_held_(std::clamp(paths_.size() * 16 * KIB, 4 * MIB, 64 * MIB)) {}

void TextFiles::make_room(Pending& pending, std::size_t room) {
  const std::size_t larger = std::max({LEAST_ROOM, 4 * pending.room, pending.size + room});
  auto bytes = std::make_unique_for_overwrite<char[]>(larger);
  std::copy_n(pending.bytes.get(), pending.size, bytes.get());
  pending.bytes = std::move(bytes);
  pending.room = larger;
}

void TextFiles::open(std::size_t file) {
  Pending& pending = pending_[file];
  if (pending.stream != nullptr) return;
  if (opened_.size() == MOST_OPEN) close(opened_.front());
  errno = 0;
  pending.stream = std::make_unique<std::ofstream>(paths_[file], std::ios::app | std::ios::binary);
  opened_.push_back(file);
  if (!pending.stream->is_open()) fail(paths_[file]);
}

void TextFiles::close(std::size_t file) {
  const std::unique_ptr<std::ofstream> stream = std::move(pending_[file].stream);
  opened_.erase(std::find(opened_.begin(), opened_.end(), file));
  errno = 0;
  stream->close();
  if (stream->fail()) fail(paths_[file]);
}

void TextFiles::pass_on(std::size_t file) {
  open(file);
  Pending& pending = pending_[file];
  errno = 0;
  pending.stream->write(pending.bytes.get(), static_cast<std::streamsize>(pending.size));
  if (pending.stream->fail()) fail(paths_[file]);
  pending.hash.add({pending.bytes.get(), pending.size});
  held_ -= pending.size;
  pending.passed_on += pending.size;
  pending.size = 0;
}

void TextFiles::pass_on_all() {
  for (std::size_t file = 0; file < pending_.size(); ++file) {
    if (pending_[file].size != 0) pass_on(file);
    pending_[file].bytes.reset();
    pending_[file].room = 0;
  }
}

void TextFiles::look_for_cold_files() {
  for (std::size_t file = 0; file < pending_.size(); ++file) {
    Pending& pending = pending_[file];
    if (pending.last_written + COLD_AFTER > written_) continue;
    if (pending.size >= LEAST_COLD_TEXT) pass_on(file);
    if (pending.size != 0) continue;
    pending.bytes.reset();
    pending.room = 0;
  }
  if (held_ + COLD_AFTER > most_held_) pass_on_all();
  next_look_ = written_ + COLD_AFTER;
}

void TextFiles::finish() {
  pass_on_all();
  while (!opened_.empty()) close(opened_.front());
}

}  // namespace Kessel
