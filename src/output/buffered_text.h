// Text on its way to a stream.
#pragma once

#include <cstddef>
#include <ostream>
#include <string>

namespace Kessel {

/// Thrown where a stream takes no more text, so that there is no use in reading on.
struct OutputFailed {};

/// Collects text and hands it to a stream, which must outlive it, in blocks.
class BufferedText {
 public:
  explicit BufferedText(std::ostream& out) : out_(out) {}
  std::string& text() { return text_; }
  void flush_if_long() {
    if (text_.size() >= BLOCK) flush();
  }
  /// Throws OutputFailed.
  void flush() {
    out_.write(text_.data(), static_cast<std::streamsize>(text_.size()));
    text_.clear();
    if (!out_) throw OutputFailed();
  }

 private:
  static constexpr std::size_t BLOCK = std::size_t{1} << 18;

  std::ostream& out_;
  std::string text_;
};

}  // namespace Kessel
