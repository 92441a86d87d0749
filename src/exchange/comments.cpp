#include "exchange/comments.h"

#include <algorithm>

#include "exchange/characters.h"
#include "exchange/literals.h"

namespace Kessel::Exchange {

std::string without_comments(std::string_view text) {
  std::string bare;
  for (std::size_t at = 0; at < text.size();) {
    const std::size_t begin = at;
    if (begins_comment(text, at)) {
      at = behind_comment(text, at);
      bare += ' ';
      continue;
    }
    at = text[at] == '\'' ? std::min(behind_string(text, at), text.size()) : at + 1;
    bare += text.substr(begin, at - begin);
  }
  return bare;
}

}  // namespace Kessel::Exchange
