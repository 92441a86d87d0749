#include "exchange/comments.h"

#include <algorithm>

#include "exchange/characters.h"
#include "exchange/literals.h"

namespace Kessel::Exchange {

namespace {

/// The position behind the comment or print control directive at `at`; `at` where there is none.
std::size_t behind_remark(std::string_view text, std::size_t at) {
  if (begins_comment(text, at)) return behind_comment(text, at);
  return begins_print_control(text, at) ? at + 3 : at;
}

}  // namespace

bool has_comments(std::string_view text) {
  // Fast path: nearly no text has a byte that begins one.
  if (text.find_first_of("/\\") == std::string_view::npos) return false;
  for (std::size_t at = 0; at < text.size();) {
    if (behind_remark(text, at) != at) return true;
    at = text[at] == '\'' ? std::min(behind_string(text, at), text.size()) : at + 1;
  }
  return false;
}

std::string without_comments(std::string_view text) {
  std::string bare;
  for (std::size_t at = 0; at < text.size();) {
    const std::size_t begin = at;
    if (const std::size_t behind = behind_remark(text, at); behind != at) {
      at = behind;
      bare += ' ';
      continue;
    }
    at = text[at] == '\'' ? std::min(behind_string(text, at), text.size()) : at + 1;
    bare += text.substr(begin, at - begin);
  }
  return bare;
}

}  // namespace Kessel::Exchange
