#include "sameness/order.h"

#include <algorithm>

namespace Kessel::Sameness {

namespace {

/// Finds strongly connected records, as Tarjan does, without calling itself.
class Walk {
 public:
  explicit Walk(const Instances& instances)
      : instances_(instances), reached_(instances.size()), lowest_(instances.size()) {}

  Order take() {
    for (Index record = 0; record < instances_.size(); ++record) {
      if (reached_[record] == 0) walk_from(record);
    }
    return std::move(order_);
  }

 private:
  static constexpr std::uint32_t DONE = UINT32_MAX;
  struct Step {
    Index record;
    std::uint32_t next;  // of its references
  };

  void enter(Index record) {
    reached_[record] = lowest_[record] = ++count_;
    open_.push_back(record);
    path_.push_back({record, 0});
  }

  void walk_from(Index first) {
    enter(first);
    while (!path_.empty()) {
      Step& step = path_.back();
      const auto references = instances_.references(step.record);
      if (step.next < references.size()) {
        follow(step.record, references[step.next++].record());
        continue;
      }
      const Index record = step.record;
      path_.pop_back();
      if (!path_.empty()) lower(path_.back().record, lowest_[record]);
      if (lowest_[record] == reached_[record]) close(record);
    }
  }

  void follow(Index from, Index to) {
    if (to == NO_RECORD) return;
    if (to == from) refers_to_itself_ = from;
    if (reached_[to] == 0) {
      enter(to);
    } else if (reached_[to] != DONE) {
      lower(from, reached_[to]);
    }
  }

  void lower(Index record, std::uint32_t to) { lowest_[record] = std::min(lowest_[record], to); }

  /// All that was opened since `record` is a circle, or `record` alone.
  void close(Index record) {
    const Index begin = static_cast<Index>(order_.records.size());
    Index last = NO_RECORD;
    do {
      last = open_.back();
      open_.pop_back();
      reached_[last] = DONE;
      order_.records.push_back(last);
    } while (last != record);
    const Index end = static_cast<Index>(order_.records.size());
    if (end - begin > 1 || is_its_own(record)) order_.circles.emplace_back(begin, end);
  }

  bool is_its_own(Index record) const {
    if (refers_to_itself_ == NO_RECORD) return false;
    const auto references = instances_.references(record);
    return std::any_of(references.begin(), references.end(),
                       [&](Reference reference) { return reference.record() == record; });
  }

  const Instances& instances_;
  Column<std::uint32_t> reached_;  // when, from 1; 0 for not yet
  Column<std::uint32_t> lowest_;
  std::vector<Index> open_;
  std::vector<Step> path_;
  Index refers_to_itself_ = NO_RECORD;  // one that does
  std::uint32_t count_ = 0;
  Order order_;
};

}  // namespace

Order order_of(const Instances& instances) {
  return Walk(instances).take();
}

}  // namespace Kessel::Sameness
