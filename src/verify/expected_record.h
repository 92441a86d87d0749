// What a record of the input is in a part's file.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "kessel/entity.h"
#include "kessel/part.h"
#include "verify/placed_input.h"
#include "verify/tokens.h"

namespace Kessel {

/// Derives the words that records have in the file of one part, from their words in the input.
class ExpectedRecord {
 public:
  ExpectedRecord(const PlacedInput& input, Part& part) : input_(input), part_(part) {}

  /// The words of the input's record `id`, which `words` are, in the part's file, where `number` is
  /// its own. Every reference becomes the number that its record has there; one to a record that
  /// is not there goes, and with it the comma in front of it or, where it is the first of its list,
  /// the one right behind it. Of presentations the list names all records that there are, be they
  /// referred to in the list or not. A context that an assembly shares is called 'external'. Valid
  /// until the next call.
  const std::vector<Token>& derive(std::uint32_t id, std::uint32_t number,
                                   const std::vector<Token>& words);

 private:
  void add(const std::vector<Token>& words, std::size_t begin, std::size_t end);
  void add_items(const std::vector<Token>& words);
  void take_back_to_separator();

  const PlacedInput& input_;
  Part& part_;
  std::vector<Token> expected_;
};

}  // namespace Kessel
