// Where the instance names stand in the texts of a file's records.
#pragma once

#include <cstdint>
#include <cstring>
#include <span>

#include "exchange/reader.h"
#include "instances/column.h"

namespace Kessel {

/// An instance name in a text: how far its digits stand behind what was looked at before, and how
/// many there are.
struct NamePlace {
  std::uint64_t gap = 0;
  std::uint64_t digits = 0;
};

/// Notes while a file is read where its records' texts are and where the names stand in them, so
/// that who reads it again needs not look for them. About 6 bytes a record.
///
/// For each text, all of them in the order of the file: the place of its own name, counted from the
/// end of the text in front; the size of what is behind that; and the places of the names there,
/// each counted from the one in front. A line of an anchor or reference section has an own name
/// without digits at its beginning, and all of its names are behind that; how many these are stands
/// in front of them. Likewise for a record whose names nobody else counts; there one more bit tells
/// whether it is plain.
class TextLayout {
 public:
  void add(const Exchange::Record& record) {
    end_record(put_record(begin_text(record.mentions.size()), record), record);
  }

  /// The same for who has no other word of how many names are in it.
  void add_counted(const Exchange::Record& record) {
    std::uint8_t* const out = put_record(begin_text(record.mentions.size()), record);
    end_record(put_size(out, NameCount(record).packed), record);
  }

  /// How many names a record has behind its own, and what Statement::is_plain says of it.
  struct NameCount {
    explicit NameCount(const Exchange::Record& record)
        : packed(std::uint64_t{record.mentions.size()} << 1 | (record.is_plain ? 1U : 0U)) {}
    explicit NameCount(std::uint64_t taken) : packed(taken) {}
    std::size_t names() const { return static_cast<std::size_t>(packed >> 1); }
    bool is_plain() const { return (packed & 1) != 0; }
    std::uint64_t packed;
  };

  void add_entry(const Exchange::Statement& entry, std::span<const Exchange::Mention> mentions) {
    std::uint8_t* out = begin_text(mentions.size());
    out = put_place(out, entry.offset - end_, 0);
    out = put_size(out, entry.text.size());
    out = put_size(out, mentions.size());
    out = put_places(out, entry.text.data(), mentions);
    end_text(out, entry.offset + entry.text.size());
  }

  std::uint64_t bytes() const { return bytes_.bytes(); }

  /// Reads what was noted, in the same order.
  class Cursor {
   public:
    explicit Cursor(const TextLayout& layout)
        : at_(layout.bytes_.begin()), end_(layout.bytes_.end()) {}

    bool is_at_end() const { return at_ == end_; }

    NamePlace take_place() {
      const std::uint8_t packed = *at_++;
      if (packed > MOST_GAP) return {std::uint64_t{packed} & MOST_GAP, std::uint64_t{packed} >> 5};
      const std::uint64_t gap = take_size();
      return {gap, take_size()};
    }
    std::uint64_t take_size() {
      const std::uint8_t small = *at_++;
      if (small != LARGE) return small;
      std::uint64_t size = 0;
      std::memcpy(&size, at_, sizeof size);
      at_ += sizeof size;
      return size;
    }

   private:
    const std::uint8_t* at_;
    const std::uint8_t* end_;
  };

 private:
  // A place is one byte where it can: digits in front of five bits of the gap. Without digits, gap
  // and digits follow as sizes. A size is one byte, or LARGE and eight.
  static constexpr std::uint64_t MOST_GAP = 31;
  static constexpr std::uint64_t MOST_DIGITS = 7;
  static constexpr std::uint8_t LARGE = 255;
  static constexpr std::size_t MOST_OF_SIZE = 9;
  static constexpr std::size_t MOST_OF_PLACE = 1 + 2 * MOST_OF_SIZE;

  std::uint8_t* begin_text(std::size_t names) {
    return bytes_.room_for((names + 1) * MOST_OF_PLACE + 2 * MOST_OF_SIZE);
  }
  void end_text(const std::uint8_t* out, std::uint64_t end) {
    bytes_.end_at(out);
    end_ = end;
  }

  /// All but the names.
  std::uint8_t* put_record(std::uint8_t* out, const Exchange::Record& record) const {
    // The text begins with "#", and ends without blanks.
    const char* const digits = record.text.data() + 1;
    const char* const end = record.text.data() + record.text.size();
    out = put_place(out, record.offset + 1 - end_,
                    static_cast<std::uint64_t>(record.behind_number - digits));
    return put_size(out, static_cast<std::uint64_t>(end - record.behind_number));
  }
  void end_record(std::uint8_t* out, const Exchange::Record& record) {
    end_text(put_places(out, record.behind_number, record.mentions),
             record.offset + record.text.size());
  }

  static std::uint8_t* put_size(std::uint8_t* out, std::uint64_t size) {
    if (size < LARGE) {
      *out = static_cast<std::uint8_t>(size);
      return out + 1;
    }
    *out++ = LARGE;
    std::memcpy(out, &size, sizeof size);
    return out + sizeof size;
  }
  static std::uint8_t* put_place(std::uint8_t* out, std::uint64_t gap, std::uint64_t digits) {
    if (gap <= MOST_GAP && digits - 1 < MOST_DIGITS) {
      *out = static_cast<std::uint8_t>(digits << 5 | gap);
      return out + 1;
    }
    *out++ = 0;
    return put_size(put_size(out, gap), digits);
  }
  static std::uint8_t* put_places(std::uint8_t* out, const char* from,
                                  std::span<const Exchange::Mention> mentions) {
    for (const Exchange::Mention& mention : mentions) {
      out = put_place(out, static_cast<std::uint64_t>(mention.begin - from),
                      static_cast<std::uint64_t>(mention.end - mention.begin));
      from = mention.end;
    }
    return out;
  }

  Column<std::uint8_t> bytes_;
  std::uint64_t end_ = 0;  // the offset behind the last text
};

}  // namespace Kessel
