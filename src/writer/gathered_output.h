// Text on its way to the parts' files.
#pragma once

#include <algorithm>
#include <cstddef>
#include <memory>
#include <ostream>
#include <string>
#include <vector>

#include "kessel/part.h"

namespace Kessel {

/// Gathers text per part and passes it on to `Part::output` in larger pieces.
///
/// Consecutive records often go to different files, of which only a few can be open at once:
/// without gathering, a file would be opened again for every record. Parts that were not written to
/// for a while are passed on first, since they are often complete; all are when what is held
/// reaches a limit, which is larger for more parts, so that each keeps a worthwhile share, and
/// never above a fixed total. The text of each file and its order are those of passing every piece
/// on at once, which is what happens to the pieces of a part that is not in the list.
class GatheredOutput {
 public:
  /// For the parts of one file, which must outlive the object. With `must_succeed`, the functions
  /// below throw OutputError as soon as a file could not be opened, written or closed.
  explicit GatheredOutput(const std::vector<Part*>& parts, bool must_succeed = false);
  GatheredOutput(const GatheredOutput&) = delete;
  GatheredOutput& operator=(const GatheredOutput&) = delete;
  /// Passes on what was gathered, also when an exception ends the run.
  ~GatheredOutput();

  /// Passes on everything that is still held. Where all must succeed, closes the files as well.
  void finish();

  /// Nothing that is written to `part` from now on goes anywhere.
  void discard(const Part& part);

  /// Opens `part`'s file by passing `text` on at once and returns its stream, for more. Where that
  /// fails, every later piece is passed on at once as well: each attempt to open the file reports
  /// its failure.
  std::ostream& begin(Part& part, const std::string& text);

  /// Notices when the last write to the stream that `begin` returned has failed.
  void make_sure_of(Part& part) const;
  /// Says that a piece for `part` comes soon, so that the place for it is fetched until then.
  void expect(const Part& part) const {
    if (!is_listed(part)) return;
    const Text& text = pending_[part.list_position].text;
    __builtin_prefetch(text.bytes.get() + text.size, 1);
  }

  /// Adds one piece of text to `part`: whatever `append(std::string&)` appends. When it throws,
  /// nothing was added.
  template <class Append>
  void write(Part& part, Append append) {
    piece_.clear();
    append(piece_);
    write_in_place(part, piece_.size(),
                   [this](char* out) { return std::copy(piece_.begin(), piece_.end(), out); });
  }

  /// Adds one piece of text to `part`: what `put(char* out)` writes at `out`, where `room` bytes
  /// are free; it returns the end. When it throws, nothing was added.
  template <class Put>
  void write_in_place(Part& part, std::size_t room, Put put) {
    if (!is_listed(part)) return write_at_once(part, room, put);
    Pending& pending = pending_[part.list_position];
    if (pending.text.room - pending.text.size < room) make_room(pending.text, room);
    char* const out = pending.text.bytes.get() + pending.text.size;
    const auto added = static_cast<std::size_t>(put(out) - out);
    pending.text.size += added;
    written_ += added;
    pending.last_written = written_;
    if (pending.text.size >= pending.enough) pass_on(part, pending);
    if (written_ >= next_look_) look_for_cold_parts();
  }

 private:
  static constexpr std::size_t MAX_PER_PART = std::size_t{256} * 1024;

  /// Bytes that grow at the end. Unlike a string, it leaves room that was made uninitialised.
  struct Text {
    std::unique_ptr<char[]> bytes;
    std::size_t size = 0;
    std::size_t room = 0;
  };
  struct Pending {
    Text text;
    std::size_t enough = MAX_PER_PART;  // a text of this size is passed on
    bool discard = false;
    std::size_t last_written = 0;  // written_ after its last piece
  };
  /// Whether the part is one of the file's, rather than one that a host made.
  bool is_listed(const Part& part) const {
    return part.list_position < parts_.size() && parts_[part.list_position] == &part;
  }
  template <class Put>
  void write_at_once(Part& part, std::size_t room, Put put) {
    at_once_.resize(room);
    at_once_.resize(static_cast<std::size_t>(put(at_once_.data()) - at_once_.data()));
    part.output(at_once_);
  }
  void pass_on(Part& part, Pending& pending);
  void pass_on_all();
  void look_for_cold_parts();
  void make_room(Text& text, std::size_t room);
  void give_back_room(Text& text);

  const std::vector<Part*>& parts_;
  bool must_succeed_;
  std::vector<Pending> pending_;  // by position in the list of parts
  std::vector<Text> spare_;       // empty texts with room, for the next parts
  std::string piece_;             // scratch of write()
  std::string at_once_;           // scratch of write_at_once()
  std::size_t written_ = 0;       // bytes added since the beginning
  std::size_t passed_on_ = 0;     // bytes of them that are not in pending_ any more
  std::size_t next_look_;         // value of written_ at which to look for cold parts
  std::size_t max_held_;
};

}  // namespace Kessel
