// Bytes that one reading of an input leaves for the next.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

namespace Kessel {

/// Pieces of bytes, which are written one behind the other and read in the same order. What is
/// written stays where it is.
class Tape {
 public:
  /// Bytes that a piece may have.
  static constexpr std::size_t MOST_AT_ONCE = 64;

  bool empty() const { return blocks_.empty(); }

  /// Where the next piece is written to.
  std::uint8_t* room() {
    if (static_cast<std::size_t>(end_ - at_) < MOST_AT_ONCE) add_block();
    return at_;
  }
  /// Ends a piece, which begins at the last room() and ends at `end`.
  void wrote(std::uint8_t* end) { at_ = end; }

  /// Goes through the pieces of a tape that is complete and outlives it.
  class Reader {
   public:
    explicit Reader(const Tape& tape) : tape_(&tape) {}

    /// The next piece; a zero where there is none any more.
    const std::uint8_t* piece() {
      if (at_ == end_ && !begin_block()) return &NOTHING;
      return at_;
    }
    /// Passes over the piece, which has so many bytes.
    void pass(std::size_t size) {
      if (at_ != end_) at_ += size;
    }

   private:
    static constexpr std::uint8_t NOTHING = 0;

    bool begin_block() {
      if (next_ == tape_->blocks_.size()) return false;
      const Block& block = tape_->blocks_[next_++];
      at_ = block.bytes.get();
      end_ = next_ == tape_->blocks_.size() ? tape_->at_ : at_ + block.used;
      return at_ != end_;
    }

    const Tape* tape_;
    std::size_t next_ = 0;
    const std::uint8_t* at_ = nullptr;
    const std::uint8_t* end_ = nullptr;
  };

 private:
  static constexpr std::size_t BLOCK_SIZE = std::size_t{64} * 1024;
  struct Block {
    std::unique_ptr<std::uint8_t[]> bytes;
    std::size_t used = 0;  // not known yet of the last one
  };

  void add_block() {
    if (!blocks_.empty()) {
      Block& last = blocks_.back();
      last.used = static_cast<std::size_t>(at_ - last.bytes.get());
    }
    blocks_.push_back({std::make_unique_for_overwrite<std::uint8_t[]>(BLOCK_SIZE)});
    at_ = blocks_.back().bytes.get();
    end_ = at_ + BLOCK_SIZE;
  }

  std::vector<Block> blocks_;
  std::uint8_t* at_ = nullptr;
  std::uint8_t* end_ = nullptr;
};

}  // namespace Kessel
