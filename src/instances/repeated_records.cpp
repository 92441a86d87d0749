#include "instances/repeated_records.h"

#include <map>
#include <set>
#include <span>
#include <string>
#include <string_view>

#include "exchange/lexer.h"
#include "exchange/reader.h"
#include "findings/finding_kinds.h"
#include "kessel/errors.h"

namespace Kessel {

namespace {

/// Keeps the bodies of first records until their others come.
class TextComparison final : public Exchange::Listener {
 public:
  TextComparison(const std::vector<Repeated>& repeated, std::uint64_t memory)
      : repeated_(repeated), next_(repeated.begin()), memory_(memory) {
    for (const Repeated& pair : repeated) bodies_.try_emplace(pair.first);
  }

  void record(const Exchange::Record& record) override { take(record); }

  void entry(Exchange::Section, const Exchange::Statement& entry,
             std::span<const Exchange::Mention> mentions) override {
    if (begins_with_name(entry, mentions)) {
      take(record_of(entry, mentions));
    } else {
      ++index_;
    }
  }

  std::vector<Finding> take_warnings() { return std::move(warnings_); }

 private:
  void take(const Exchange::Record& record) {
    const Index index = index_++;
    if (const auto first = bodies_.find(index); first != bodies_.end()) {
      keep(first->second, record.body);
    } else if (next_ != repeated_.end() && next_->second == index) {
      compare(bodies_.at(next_->first), record);
      ++next_;
    }
  }

  void keep(std::string& body, std::string_view text) {
    if (text.size() > memory_) {
      throw InputError(make_finding(
          FindingKind::memory_limit,
          "More text stands under repeated instance numbers than the memory limit allows."));
    }
    memory_ -= text.size();
    body = text;
  }

  void compare(std::string_view first, const Exchange::Record& second) {
    const std::string name = "#" + std::to_string(second.number);
    const auto instance = second.number;
    if (first != second.body) {
      throw InputError(make_finding(FindingKind::two_texts_of_a_number,
                                    name + " has stood for another record already.", second.offset,
                                    instance));
    }
    warnings_.push_back(
        make_finding(FindingKind::same_text_twice,
                     name + " has been there already, with the same text; it is taken once.",
                     second.offset, instance));
  }

  const std::vector<Repeated>& repeated_;
  std::vector<Repeated>::const_iterator next_;
  std::uint64_t memory_;
  std::map<Index, std::string> bodies_;  // by the index of a first record
  std::vector<Finding> warnings_;
  Index index_ = 0;
};

}  // namespace

std::vector<Finding> compare_repeated(std::istream& in, const std::vector<Repeated>& repeated,
                                      std::uint64_t memory) {
  if (repeated.empty()) return {};
  TextComparison comparison(repeated, memory);
  Exchange::Limits limits;
  limits.scrutiny = Exchange::Scrutiny::none;
  read_exchange_file(in, limits, comparison);
  return comparison.take_warnings();
}

namespace {

/// The same for texts that say the same: without comments, blanks and zeros in front of numbers.
std::string bare(std::string_view text) {
  using Exchange::WordKind;
  std::string words;
  Exchange::Lexer lexer(text);
  for (Exchange::Word word = lexer.next(); word.kind != WordKind::end; word = lexer.next()) {
    if (word.kind == WordKind::instance || word.kind == WordKind::value) {
      words += word.text.front() + std::to_string(Exchange::number_in(word.text));
    } else {
      words += word.text;
    }
    words += ' ';
  }
  return words;
}

}  // namespace

std::vector<Index> repeated_lines(const Instances& instances) {
  std::vector<Index> repeated;
  std::set<std::string> known;
  for (const Index record : instances.kept()) {
    const bool is_line = instances.type(record) < TypeTable::FIRST_OF_RECORDS;
    if (!is_line || instances.number(record) != 0) continue;
    if (!known.insert(bare(instances.kept_body(record))).second) repeated.push_back(record);
  }
  return repeated;
}

}  // namespace Kessel
