// The texts of records in the joined file.
#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <string_view>

#include "exchange/reader.h"
#include "join/numbering.h"

namespace Kessel {

/// Rewrites the texts of one file's records.
class JoinedText {
 public:
  /// Of the file at position `file`. All must outlive it.
  JoinedText(const FileSet& files, std::size_t file, const Records& records, Numbering& numbering)
      : instances_(files[file].instances), file_(file), records_(records), numbering_(numbering) {}

  /// Appends `text`, in which `mentions` stand, with the numbers of the joined file.
  void append(std::string_view text, std::span<const Exchange::Mention> mentions, std::string& out);

  /// The same for the body of a collector: of its list go items that are not written and those
  /// that have become one with an item in front; `more` comes to its end.
  void append_collector(std::string_view body, std::span<const Exchange::Mention> mentions,
                        std::span<const Node> more, std::string& out);

  /// The same for a line of an anchor or reference section, as it stands.
  void append_entry(std::string_view entry, std::string& out);

 private:
  void append_list(std::string_view list, std::span<const Exchange::Mention> mentions,
                   std::span<const Node> more, std::string& out);
  void append_number(std::uint64_t number, std::string& out);

  const Instances& instances_;
  const std::size_t file_;
  const Records& records_;
  Numbering& numbering_;
};

}  // namespace Kessel
