// The records of all files that are joined, and what becomes of each.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "instances/column.h"
#include "join/file_set.h"

namespace Kessel {

/// A record of one of the files: they are counted through, file by file.
using Node = std::uint32_t;
inline constexpr Node NO_JOINED = 0xFFFF'FFFF;

/// What a record's text is worth. Of records that become one, the first of the least value gives
/// the text.
enum class Standing : std::uint8_t {
  whole,        ///< says all that there is to say
  counterpart,  ///< stands for one in another file; only its list may say more than that
  stand_in,     ///< stands for one in another file and says nothing more
  made,         ///< made by a split: not written, unless something needs it
  gone,         ///< not written
};

/// Which records become one, which of them gives the text, and what is not written. First records
/// are united and their standings set; settle() then finds the texts.
class Records {
 public:
  explicit Records(const FileSet& files);

  Node size() const { return static_cast<Node>(leaders_.size()); }
  /// The record `index` of the file `file`.
  Node node(std::size_t file, Index index) const { return firsts_[file] + index; }
  std::size_t file_of(Node node) const;
  Index index_of(Node node) const { return node - firsts_[file_of(node)]; }

  Standing standing(Node node) const { return standings_[node]; }
  void set_standing(Node node, Standing standing) { standings_[node] = standing; }

  /// Makes two records one.
  void unite(Node a, Node b);
  /// The record that stands for all that have become one with `node`. Changes with unite().
  Node leader(Node node);

  /// Ends the uniting.
  void settle();
  /// After settle(): which record's text is written for `node`.
  Node text_of(Node node) const { return leaders_[node]; }
  bool is_text(Node node) const { return leaders_[node] == node; }
  /// Whether `node` is written.
  bool is_written(Node node) const { return is_text(node) && standings_[node] < Standing::made; }
  /// Records that became one with others, ascending by text_of(), then by themselves.
  const std::vector<Node>& united() const { return united_; }

 private:
  std::vector<Node> firsts_;  // of each file, and the end
  Column<Node> leaders_;
  Column<Standing> standings_;
  std::vector<Node> united_;
};

}  // namespace Kessel
