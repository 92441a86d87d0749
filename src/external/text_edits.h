// Other texts for strings in records.
#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "exchange/reader.h"
#include "external/external_references.h"

namespace Kessel {

/// The text that a string, or the file of a resource, is to have.
struct TextEdit {
  Index record = NO_RECORD;
  std::string_view keyword = {};  // as in FileName
  std::size_t parameter = 0;
  std::string text;  ///< UTF-8; of a resource a URI, relative or not
};

/// The edits of one file, by record.
class TextEdits {
 public:
  TextEdits() = default;
  /// Of edits for one place the first counts.
  explicit TextEdits(std::vector<TextEdit> edits);

  bool empty() const { return edits_.empty(); }
  std::span<const TextEdit> of(Index record) const;
  const std::vector<TextEdit>& all() const { return edits_; }

 private:
  std::vector<TextEdit> edits_;  // ascending by record
};

/// A piece of a text, and what stands in its place.
struct Replacement {
  std::size_t begin = 0;
  std::size_t end = 0;
  std::string text;
};

/// What `edits`, all of one record, replace in `body` (Exchange::Record::body, or the line of a
/// reference section), by ascending place.
std::vector<Replacement> replacements(std::string_view body, std::span<const TextEdit> edits);

/// The text of a record or entry with replacements in it, and the instance names in that.
class EditedText {
 public:
  /// `body` is the end of `text`, and `mentions` stand in it.
  EditedText(std::string_view text, std::string_view body,
             std::span<const Exchange::Mention> mentions, std::span<const TextEdit> edits);
  EditedText(const EditedText&) = delete;
  EditedText& operator=(const EditedText&) = delete;

  std::string_view text() const { return text_; }
  std::string_view body() const { return std::string_view(text_).substr(body_); }
  std::span<const Exchange::Mention> mentions() const { return mentions_; }

 private:
  std::string text_;
  std::size_t body_;
  std::vector<Exchange::Mention> mentions_;
};

}  // namespace Kessel
