#include "external/text_edits.h"

#include <algorithm>
#include <tuple>
#include <utility>

#include "exchange/parameters.h"
#include "exchange/string_value.h"
#include "external/resource.h"

namespace Kessel {

namespace {

/// The string literal in a parameter: itself, or what is in a typed one such as IDENTIFIER('x').
std::string_view literal_in(std::string_view parameter) {
  if (parameter.starts_with('\'')) return parameter;
  const auto partial = Exchange::partial_records(parameter);
  if (partial.size() != 1) return {};
  const auto typed = Exchange::parameter(Exchange::items_of(partial.front().list), 0);
  return typed.starts_with('\'') ? typed : std::string_view();
}

/// What an edit replaces, and the words that come there; an empty view where it finds nothing.
std::pair<std::string_view, std::string> replaced(std::string_view body, const TextEdit& edit) {
  if (edit.keyword.empty()) return {resource_in(body).file, edit.text};
  const auto parameters = Exchange::parameters_of(body, edit.keyword);
  return {literal_in(Exchange::parameter(parameters, edit.parameter)),
          Exchange::string_literal(edit.text)};
}

}  // namespace

TextEdits::TextEdits(std::vector<TextEdit> edits) : edits_(std::move(edits)) {
  const auto place = [](const TextEdit& edit) {
    return std::tuple(edit.record, edit.keyword, edit.parameter);
  };
  std::stable_sort(edits_.begin(), edits_.end(),
                   [&](const TextEdit& a, const TextEdit& b) { return place(a) < place(b); });
  edits_.erase(
      std::unique(edits_.begin(), edits_.end(),
                  [&](const TextEdit& a, const TextEdit& b) { return place(a) == place(b); }),
      edits_.end());
}

std::span<const TextEdit> TextEdits::of(Index record) const {
  if (edits_.empty()) return {};
  const auto first = std::partition_point(
      edits_.begin(), edits_.end(), [&](const TextEdit& edit) { return edit.record < record; });
  const auto end = std::partition_point(
      first, edits_.end(), [&](const TextEdit& edit) { return edit.record == record; });
  return {first, end};
}

std::vector<Replacement> replacements(std::string_view body, std::span<const TextEdit> edits) {
  std::vector<Replacement> all;
  for (const TextEdit& edit : edits) {
    auto [piece, text] = replaced(body, edit);
    if (piece.empty()) continue;
    const auto begin = static_cast<std::size_t>(piece.data() - body.data());
    all.push_back({begin, begin + piece.size(), std::move(text)});
  }
  std::sort(all.begin(), all.end(),
            [](const Replacement& a, const Replacement& b) { return a.begin < b.begin; });
  return all;
}

EditedText::EditedText(std::string_view text, std::string_view body,
                       std::span<const Exchange::Mention> mentions, std::span<const TextEdit> edits)
    : body_(text.size() - body.size()) {
  const std::vector<Replacement> all = replacements(body, edits);
  struct Moved {
    std::uint64_t number;
    std::size_t begin;
    std::size_t end;
  };
  std::vector<Moved> places;  // Of mentions in text_, which still moves.
  std::size_t copied = 0;     // of `text`
  std::size_t next = 0;       // of `all`
  const auto copy_to = [&](std::size_t place) {
    for (; next < all.size() && body_ + all[next].begin < place; ++next) {
      text_.append(text, copied, body_ + all[next].begin - copied).append(all[next].text);
      copied = body_ + all[next].end;
    }
    text_.append(text, copied, place - copied);
    copied = place;
  };
  for (const Exchange::Mention& mention : mentions) {
    copy_to(static_cast<std::size_t>(mention.begin - text.data()));
    const std::size_t begin = text_.size();
    copy_to(static_cast<std::size_t>(mention.end - text.data()));
    places.push_back({mention.number, begin, text_.size()});
  }
  copy_to(text.size());
  for (const Moved& place : places) {
    mentions_.push_back({place.number, text_.data() + place.begin, text_.data() + place.end});
  }
}

}  // namespace Kessel
