// What the records of a file say, whatever their numbers are.
#pragma once

#include <algorithm>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <string>
#include <unordered_map>
#include <vector>

#include "instances/collectors.h"
#include "instances/loader.h"

namespace Kessel::test {

/// The records of a file, each with a hash of its text and of all that it leads to. The lists of
/// collectors are left out of it, and stand beside it.
class SaidRecords {
 public:
  explicit SaidRecords(const std::filesystem::path& path) {
    std::ifstream in(path, std::ios::binary);
    const Options options;  // The loader refers to it.
    TextLoader loader(instances, *this, options);
    load_with(in, loader, options);
    hashes_.resize(instances.size());
    states_.resize(instances.size());
    for (Index record = 0; record < instances.size(); ++record) said(record);
  }

  /// Records of `other` that say nothing that one of these says: their numbers there. A list may
  /// have fewer items.
  std::vector<std::uint64_t> not_said(const SaidRecords& other) const {
    std::unordered_map<std::uint64_t, std::vector<Index>> by_hash;
    for (Index record = 0; record < instances.size(); ++record) {
      by_hash[hashes_[record]].push_back(record);
    }
    std::vector<std::uint64_t> unsaid;
    for (Index record = 0; record < other.instances.size(); ++record) {
      const auto found = by_hash.find(other.hashes_[record]);
      const std::vector<std::uint64_t> items = other.items(record);
      const bool is_said =
          found != by_hash.end() &&
          std::any_of(found->second.begin(), found->second.end(), [&](Index same) {
            const std::vector<std::uint64_t> all = this->items(same);
            return std::includes(all.begin(), all.end(), items.begin(), items.end());
          });
      if (!is_said) unsaid.push_back(other.instances.number(record));
    }
    return unsaid;
  }

  Instances instances;

 private:
  class TextLoader final : public InstanceLoader {
   public:
    TextLoader(Instances& instances, SaidRecords& said, const Options& options)
        : InstanceLoader(instances, options), said_(said) {}

   protected:
    void added(Index index, const Exchange::Record& record) override {
      std::string text;
      const auto lists = collected_lists(record.body);
      const char* from = record.body.data();
      const auto skip = [&](const char* begin, const char* end) {
        if (begin < from) return;  // In a list that is skipped as a whole.
        text.append(from, begin);
        from = end;
      };
      std::vector<std::pair<const char*, const char*>> gaps;
      for (const auto list : lists) gaps.emplace_back(list.data(), list.data() + list.size());
      for (const auto& mention : record.mentions) gaps.emplace_back(mention.begin, mention.end);
      std::sort(gaps.begin(), gaps.end());
      for (const auto& [begin, end] : gaps) skip(begin, end);
      text.append(from, record.body.data() + record.body.size());
      said_.texts_.resize(index);  // Lines of other sections have no text here.
      said_.texts_.push_back(std::hash<std::string>()(text));
    }

   private:
    SaidRecords& said_;
  };

  std::uint64_t said(Index record) {
    if (states_[record] == 2) return hashes_[record];
    if (states_[record] == 1) return 1;  // A circle.
    states_[record] = 1;
    std::uint64_t hash = record < texts_.size() ? texts_[record] : 0;
    for (const Reference reference : instances.references(record)) {
      if (reference.is_listed()) continue;
      const std::uint64_t other = reference.record() == NO_RECORD ? 2 : said(reference.record());
      hash = (hash ^ other) * 0x9E37'79B9'7F4A'7C15;
      hash ^= hash >> 29;
    }
    states_[record] = 2;
    return hashes_[record] = hash;
  }

  std::vector<std::uint64_t> items(Index record) const {
    std::vector<std::uint64_t> items;
    for (const Reference reference : instances.references(record)) {
      if (reference.is_listed() && reference.record() != NO_RECORD) {
        items.push_back(hashes_[reference.record()]);
      }
    }
    std::sort(items.begin(), items.end());
    return items;
  }

  std::vector<std::uint64_t> texts_;
  std::vector<std::uint64_t> hashes_;
  std::vector<char> states_;
};

}  // namespace Kessel::test
