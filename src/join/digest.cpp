#include "join/digest.h"

#include <vector>

#include "exchange/lexer.h"
#include "instances/collectors.h"

namespace Kessel {

Digest digest_of(std::string_view body) {
  using Exchange::WordKind;
  const std::vector<std::string_view> lists = collected_lists(body);
  auto list = lists.begin();
  Digest digest;
  Exchange::Lexer lexer(body);
  for (;;) {
    const Exchange::Word word = lexer.next();
    if (word.kind == WordKind::end) return digest;
    if (list != lists.end() && word.text.data() == list->data()) {
      const auto end = static_cast<std::size_t>(list->data() + list->size() - body.data());
      lexer = Exchange::Lexer(body, end);
      ++list;
      continue;
    }
    digest.add(word.kind == WordKind::instance ? std::string_view("#") : word.text);
  }
}

}  // namespace Kessel
