// The texts of records in the joined file.
#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <string_view>

#include "exchange/reader.h"
#include "join/joined_lists.h"
#include "join/numbering.h"

namespace Kessel {

/// Whether items may go from the list of the file's record, which is `node`, or come into it.
bool rewrites_list(const JoinedFile& file, const JoinedLists& lists, Node node, Index record);

/// Appends `number` in decimal.
void append_digits(std::uint64_t number, std::string& out);

/// Rewrites the texts of one file's records.
class JoinedText {
 public:
  /// Of the file at position `file`. All must outlive it.
  JoinedText(const FileSet& files, std::size_t file, const Records& records,
             const JoinedLists& lists, Numbering& numbering)
      : file_(files[file]),
        position_(file),
        records_(records),
        lists_(lists),
        numbering_(numbering) {}

  /// Appends the body of the record `index`, which is `body`, the end of `text`, in which
  /// `mentions` stand: with the numbers of the joined file, its edits and what its list gains and
  /// loses.
  void append_body(Index index, std::string_view text, std::string_view body,
                   std::span<const Exchange::Mention> mentions, std::string& out);
  /// The same, where nobody knows the mentions.
  void append_body(Index index, std::string_view body, std::string& out);

  /// The same for a line of an anchor or reference section.
  void append_entry(Index entry, std::string& out);

 private:
  void append_edited(Index index, std::string_view body,
                     std::span<const Exchange::Mention> mentions, std::string& out);
  void append(std::string_view text, std::span<const Exchange::Mention> mentions, std::string& out);
  void append_collector(std::string_view body, std::span<const Exchange::Mention> mentions,
                        std::span<const Node> more, std::string& out);
  void append_list(std::string_view list, std::span<const Exchange::Mention> mentions,
                   std::span<const Node> more, std::string& out);
  void append_number(std::uint64_t number, std::string& out);

  const JoinedFile& file_;
  const std::size_t position_;
  const Records& records_;
  const JoinedLists& lists_;
  Numbering& numbering_;
};

}  // namespace Kessel
