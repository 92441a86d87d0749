// Loads a file that is to be written again.
#pragma once

#include "findings/finding_list.h"
#include "instances/loader.h"
#include "instances/text_layout.h"

namespace Kessel {

/// Loads, notes where texts and names stand, and keeps what it is warned of.
class LayoutLoader : public InstanceLoader {
 public:
  /// What is filled must outlive the object.
  LayoutLoader(Instances& instances, TextLayout& layout, const Options& options,
               std::uint64_t total = 0)
      : InstanceLoader(instances, options, total), layout_(layout) {}

  void warning(const Finding& finding) override { warnings_.add(finding); }
  FindingList& warnings() { return warnings_; }

 protected:
  void added(Index, const Exchange::Record& record) override { layout_.add(record); }
  void added_entry(Index, const Exchange::Statement& entry,
                   std::span<const Exchange::Mention> mentions) override {
    layout_.add_entry(entry, mentions);
  }
  std::uint64_t further_bytes() const override { return layout_.bytes(); }

 private:
  TextLayout& layout_;
  FindingList warnings_;
};

}  // namespace Kessel
