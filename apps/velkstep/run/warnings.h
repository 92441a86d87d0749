// What the library warns of while a command works on an input.
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "kessel/options.h"

namespace Velkstep {

/// Adds up warnings, to mention them in one line.
class Warnings {
 public:
  void add(const Kessel::Finding& warning);

  /// Has `options` tell it, as long as it lives, of what the library warns.
  void listen(Kessel::Options& options);

  /// The same for a file that the user does not know, into which a part of the input was extracted:
  /// places there are not told, and nothing of a kind that is known already from the input.
  void listen_to_part(Kessel::Options& options);

  /// Prints how many there were in the input that the user called `argument`, and in lines of their
  /// own which file is missing that it refers to, and what check does not know or what is left out,
  /// the first of each kind; nothing for none.
  void mention(const std::string& argument) const;

  /// Why a split has one file only, the copy of its input: it holds one part
  /// (`FindingKind::one_part`) or none (`no_part`). That does not count among the others.
  std::optional<Kessel::FindingKind> why_copied() const { return why_copied_; }

 private:
  struct Group {
    std::uint64_t count = 0;
    Kessel::Finding first;
  };

  std::uint64_t count_ = 0;
  std::set<Kessel::FindingKind> kinds_;        // of all
  std::vector<Kessel::Finding> missing_;       // files that the input refers to
  std::map<Kessel::FindingKind, Group> told_;  // told by their own sentences
  std::optional<Kessel::FindingKind> why_copied_;
};

}  // namespace Velkstep
