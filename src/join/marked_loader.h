// Loads a file that is to be joined.
#pragma once

#include <optional>
#include <vector>

#include "instances/loader.h"
#include "join/joined_file.h"
#include "sameness/fingerprints.h"

namespace Kessel {

/// Fills `file.instances`, and notes marks and values on the way, and what records say where it
/// `takes_texts`.
class MarkedLoader final : public InstanceLoader {
 public:
  /// `file` and `options` must outlive it; `total` is as for InstanceLoader.
  MarkedLoader(JoinedFile& file, bool takes_texts, const Options& options, std::uint64_t total);

  /// Keeps what is said of text behind the file's end, which nothing else of a result tells.
  void warning(const Finding& finding) override;
  const std::optional<Finding>& text_after_end() const { return text_after_end_; }

 private:
  void added(Index index, const Exchange::Record& record) override;
  bool is_value(TypeId type);

  JoinedFile& file_;
  const bool takes_texts_;
  Sameness::TextLoader texts_;
  bool knows_split_ = false;
  std::optional<Finding> text_after_end_;
  std::vector<signed char> values_;  // by type: -1 not known yet
};

}  // namespace Kessel
