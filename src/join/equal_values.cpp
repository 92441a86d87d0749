#include "join/equal_values.h"

#include <algorithm>
#include <map>
#include <vector>

#include "join/digest.h"
#include "join/origins.h"
#include "sameness/in_use.h"

namespace Kessel {

namespace {

/// Sums up what the values of one file say, including what they refer to.
class ValueDigests {
 public:
  ValueDigests(const JoinedFile& file, std::size_t position, Records& records)
      : file_(file), position_(position), records_(records), states_(file.values.size()) {}

  /// Of the value at `place` in JoinedFile::values.
  Digest of(std::size_t place) { return expanded(place, 0).says; }

 private:
  /// Values are less deep; what is deeper is told apart by itself.
  static constexpr int DEEPEST = 32;

  struct State {
    enum class Kind : char { fresh, open, known } kind = Kind::fresh;
    Digest says;
  };

  const State& expanded(std::size_t place, int depth) {
    State& state = states_[place];
    if (state.kind == State::Kind::known) return state;
    state.kind = State::Kind::open;
    Digest says = file_.values[place].says;
    for (const Reference reference : file_.instances.references(file_.values[place].record)) {
      const Index record = reference.record();
      if (record == NO_RECORD) continue;
      const std::size_t value = find(record);
      const bool is_told = value != NONE && depth < DEEPEST;
      if (is_told && states_[value].kind != State::Kind::open) {
        says.add(expanded(value, depth + 1).says);
      } else {
        says.add(std::uint64_t{records_.leader(records_.node(position_, record))});
      }
    }
    state = {State::Kind::known, says};
    return state;
  }

  static constexpr std::size_t NONE = ~std::size_t{0};
  std::size_t find(Index record) const {
    const auto place =
        std::lower_bound(file_.values.begin(), file_.values.end(), record,
                         [](const JoinedFile::Value& one, Index at) { return one.record < at; });
    if (place == file_.values.end() || place->record != record) return NONE;
    return static_cast<std::size_t>(place - file_.values.begin());
  }

  const JoinedFile& file_;
  const std::size_t position_;
  Records& records_;
  std::vector<State> states_;
};

}  // namespace

void unite_equal_values(const FileSet& files, Records& records) {
  const std::vector<Origin> origins = origins_of(files);
  if (origins.size() < 2) return;
  std::map<Digest, std::vector<Node>> known;
  for (const Origin& origin : origins) {
    std::map<Digest, std::size_t> counts;
    std::vector<std::pair<Node, Node>> equal;
    for (const std::size_t i : origin) {
      const Column<Sameness::Worth> worth = Sameness::worth_in_use(files[i].instances);
      ValueDigests digests(files[i], i, records);
      for (std::size_t place = 0; place < files[i].values.size(); ++place) {
        const Index record = files[i].values[place].record;
        const Node node = records.node(i, record);
        const bool is_first = records.leader(node) == node;
        if (!is_first || records.standing(node) != Standing::whole) continue;
        if (worth[record] == Sameness::Worth::identity) continue;
        const Digest says = digests.of(place);
        std::vector<Node>& same = known[says];
        const std::size_t count = counts[says]++;
        if (count < same.size()) {
          equal.emplace_back(same[count], node);
        } else {
          same.push_back(node);
        }
      }
    }
    // Only now, so that what values refer to has told them apart in one way for the whole file.
    for (const auto& [first, second] : equal) records.unite(first, second);
  }
}

}  // namespace Kessel
