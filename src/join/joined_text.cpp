#include "join/joined_text.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <unordered_map>
#include <vector>

#include "exchange/lexer.h"
#include "exchange/parameters.h"
#include "external/text_edits.h"
#include "instances/collectors.h"

namespace Kessel {

namespace {

using Exchange::Mention;

/// The mentions that stand in `text`, a part of the text that all stand in.
std::span<const Mention> mentions_in(std::string_view text, std::span<const Mention> mentions) {
  const auto first = std::partition_point(mentions.begin(), mentions.end(),
                                          [&](const Mention& m) { return m.begin < text.data(); });
  const auto end = std::partition_point(
      first, mentions.end(), [&](const Mention& m) { return m.begin < text.data() + text.size(); });
  return {first, end};
}

std::vector<Mention> mentions_of(std::string_view text) {
  std::vector<Mention> mentions;
  Exchange::Lexer lexer(text);
  for (auto word = lexer.next(); word.kind != Exchange::WordKind::end; word = lexer.next()) {
    if (word.kind != Exchange::WordKind::instance) continue;
    mentions.push_back({Exchange::number_in(word.text), word.text.data() + 1,
                        word.text.data() + word.text.size()});
  }
  return mentions;
}

}  // namespace

bool rewrites_list(const JoinedFile& file, const JoinedLists& lists, Node node, Index record) {
  return !lists.more_of(node).empty() ||
         (!file.references.empty() && file.instances.types().collects(file.instances.type(record)));
}

void JoinedText::append_body(Index index, std::string_view text, std::string_view body,
                             std::span<const Mention> mentions, std::string& out) {
  const auto edits = file_.edits.of(index);
  if (edits.empty()) return append_edited(index, body, mentions, out);
  const EditedText edited(text, body, mentions, edits);
  append_edited(index, edited.body(), edited.mentions(), out);
}

void JoinedText::append_body(Index index, std::string_view body, std::string& out) {
  append_body(index, body, body, mentions_of(body), out);
}

void JoinedText::append_edited(Index index, std::string_view body,
                               std::span<const Mention> mentions, std::string& out) {
  const Node node = records_.node(position_, index);
  if (rewrites_list(file_, lists_, node, index)) {
    append_collector(body, mentions, lists_.more_of(node), out);
  } else {
    append(body, mentions, out);
  }
}

void append_digits(std::uint64_t number, std::string& out) {
  std::array<char, 20> digits;
  const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), number).ptr;
  out.append(digits.data(), static_cast<std::size_t>(end - digits.data()));
}

void JoinedText::append_number(std::uint64_t number, std::string& out) {
  const Index record = file_.instances.find(number);
  const std::uint64_t joined =
      record == NO_RECORD ? 0 : numbering_.of(records_.node(position_, record));
  append_digits(joined != 0 ? joined : numbering_.of_missing(position_, number), out);
}

void JoinedText::append(std::string_view text, std::span<const Mention> mentions,
                        std::string& out) {
  const char* at = text.data();
  for (const Mention& mention : mentions) {
    out.append(at, static_cast<std::size_t>(mention.begin - at));
    append_number(mention.number, out);
    at = mention.end;
  }
  out.append(at, static_cast<std::size_t>(text.data() + text.size() - at));
}

/// Of the list go items that are not written and those that have become one with an item in front;
/// `more` comes to its end.
void JoinedText::append_collector(std::string_view body, std::span<const Mention> mentions,
                                  std::span<const Node> more, std::string& out) {
  std::string_view rest = body;
  for (const std::string_view list : collected_lists(body)) {
    const auto front = rest.substr(0, static_cast<std::size_t>(list.data() - rest.data()));
    append(front, mentions_in(front, mentions), out);
    append_list(list, mentions_in(list, mentions), more, out);
    more = {};
    rest.remove_prefix(front.size() + list.size());
  }
  append(rest, mentions_in(rest, mentions), out);
}

void JoinedText::append_list(std::string_view list, std::span<const Mention> mentions,
                             std::span<const Node> more, std::string& out) {
  std::unordered_map<Node, Index> met;  // texts, and the first record that has become one with each
  char separator = '(';
  for (const std::string_view item : Exchange::items_of(list)) {
    const Index record = file_.instances.find(Exchange::instance_of(item));
    if (record != NO_RECORD) {
      const Node node = records_.node(position_, record);
      if (numbering_.of(node) == 0) continue;
      if (met.emplace(records_.text_of(node), record).first->second != record) continue;
    }
    out += separator;
    append(item, mentions_in(item, mentions), out);
    separator = ',';
  }
  for (const Node node : more) {
    if (numbering_.of(node) == 0) continue;
    out.append(1, separator).append(1, '#');
    append_digits(numbering_.of(node), out);
    separator = ',';
  }
  if (separator == '(') out += '(';
  out += ')';
}

void JoinedText::append_entry(Index entry, std::string& out) {
  const std::string_view line = file_.instances.kept_body(entry);
  const EditedText edited(line, line, {}, file_.edits.of(entry));
  append(edited.text(), mentions_of(edited.text()), out);
}

}  // namespace Kessel
