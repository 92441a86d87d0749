#include "verify/reference_block.h"

#include <cstddef>
#include <iterator>
#include <string>

#include "verify/string_value.h"

namespace Kessel {

namespace {

// #1 to #11 are the block's own records, #12 is the component's shape and #13 its definition; '@'
// is the name of its file.
constexpr std::string_view BLOCK[] = {
    "#1=DOCUMENT_TYPE('geometry')",
    "#2=DOCUMENT_FILE('@','','',#1,'',$)",
    "#3=DOCUMENT_REPRESENTATION_TYPE('digital',#2)",
    "#4=EXTERNAL_SOURCE(IDENTIFIER(''))",
    "#5=IDENTIFICATION_ROLE('external document id and location',$)",
    "#6=APPLIED_EXTERNAL_IDENTIFICATION_ASSIGNMENT('@',#5,#4,(#2))",
    "#7=PROPERTY_DEFINITION('external definition','',#2)",
    "#8=PROPERTY_DEFINITION_REPRESENTATION(#7,#12)",
    "#9=APPLIED_DOCUMENT_REFERENCE(#2,'',(#13))",
    "#10=OBJECT_ROLE('mandatory',$)",
    "#11=ROLE_ASSOCIATION(#10,#9)",
};
static_assert(std::size(BLOCK) == BLOCK_RECORDS);

constexpr std::uint32_t SHAPE = 12;
constexpr std::uint32_t DEFINITION = 13;

bool is_name(const Token& word) {
  return word.kind == Token::Kind::string && word.text == "'@'";
}

bool says(const Token& word, std::string_view text) {
  if (word.kind != Token::Kind::string) return false;
  return string_value(word.text.substr(1, word.text.size() - 2)) == text;
}

}  // namespace

BlockMatch match_block(const std::vector<Token>& words, std::uint32_t index,
                       const PlacedBlock& block, std::uint32_t first, std::string_view file_name) {
  std::vector<Token> form;
  take_apart(BLOCK[index], form);
  if (words.size() != form.size()) return BlockMatch::other;
  bool same_name = true;
  for (std::size_t at = 0; at < form.size(); ++at) {
    Token word = form[at];
    if (is_name(word)) {
      if (words[at].kind != Token::Kind::string) return BlockMatch::other;
      same_name &= says(words[at], file_name);
      continue;
    }
    if (word.kind == Token::Kind::reference) {
      word.number = word.number == SHAPE        ? block.shape
                    : word.number == DEFINITION ? block.definition
                                                : first + word.number - 1;
    }
    if (!(words[at] == word)) return BlockMatch::other;
  }
  return same_name ? BlockMatch::same : BlockMatch::other_name;
}

}  // namespace Kessel
