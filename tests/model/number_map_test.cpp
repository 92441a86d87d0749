// The ordered map from parts to instance numbers.
#include "kessel/number_map.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <functional>
#include <iterator>
#include <stdexcept>
#include <type_traits>
#include <utility>
#include <vector>

namespace Kessel::test {
namespace {

struct Owner {
  std::uint32_t list_position;
};
using Map = NumberMap<Owner>;
using Entries = std::vector<std::pair<Owner*, std::uint32_t>>;

static_assert(sizeof(Map) == 16);

Entries entries_of(const Map& map) {
  Entries entries;
  for (const auto [owner, number] : map.entries()) entries.emplace_back(owner, number);
  return entries;
}

bool every_owner(Owner*) {
  return true;
}

/// Gives out the numbers from 101 on, and remembers to whom.
struct Numbering {
  std::vector<Owner*> asked;
  std::uint32_t operator()(Owner* owner) {
    asked.push_back(owner);
    return 100 + static_cast<std::uint32_t>(asked.size());
  }
};

/// With maps that nobody has asked for an entry, and with maps that somebody has.
class NumberMapTest : public testing::TestWithParam<bool> {
 protected:
  static Map map_of(const Entries& entries) {
    Map map;
    if (GetParam()) map.begin();
    for (const auto& [owner, number] : entries) map.add(owner, number);
    return map;
  }

  // In memory the other way round than in the list.
  Owner owners[4] = {{3}, {2}, {1}, {0}};
  Owner* const a = &owners[3];
  Owner* const b = &owners[2];
  Owner* const c = &owners[1];
  Owner* const d = &owners[0];
};

TEST_P(NumberMapTest, NewMapIsEmpty) {
  const Map map;
  EXPECT_TRUE(map.empty());
  EXPECT_EQ(map.size(), 0u);
  EXPECT_TRUE(map.begin() == map.end());
  EXPECT_TRUE(map.find(a) == map.end());
  EXPECT_FALSE(map.contains(a));
  EXPECT_EQ(map.number_or_zero(a), 0u);
}

TEST_P(NumberMapTest, EntriesAscendByPositionWhateverTheOrderOfInsertionAndAddresses) {
  for (const Entries& order :
       {Entries{{a, 1}, {b, 2}, {c, 3}, {d, 4}}, Entries{{d, 4}, {c, 3}, {b, 2}, {a, 1}},
        Entries{{b, 2}, {d, 4}, {a, 1}, {c, 3}}}) {
    EXPECT_EQ(entries_of(map_of(order)), (Entries{{a, 1}, {b, 2}, {c, 3}, {d, 4}}));
  }
}

TEST_P(NumberMapTest, OwnersOfOnePositionAscendByAddress) {
  Owner same[3] = {{7}, {7}, {7}};
  EXPECT_EQ(entries_of(map_of({{&same[1], 2}, {&same[2], 3}, {&same[0], 1}})),
            (Entries{{&same[0], 1}, {&same[1], 2}, {&same[2], 3}}));
}

TEST_P(NumberMapTest, AddingSaysWhetherTheOwnerIsNewAndKeepsTheNumberThatIsThere) {
  Map map = map_of({});
  for (const auto& [owner, number] : Entries{{c, 3}, {a, 1}, {b, 2}}) {
    EXPECT_TRUE(map.add(owner, number));
    EXPECT_FALSE(map.add(owner, 9));
  }
  EXPECT_EQ(entries_of(map), (Entries{{a, 1}, {b, 2}, {c, 3}}));
}

TEST_P(NumberMapTest, EntriesAreFoundByTheirOwner) {
  for (const Entries& entries : {Entries{{b, 2}}, Entries{{b, 2}, {d, 4}}}) {
    const Map map = map_of(entries);
    for (const auto& [owner, number] : entries) {
      EXPECT_EQ(map.find(owner)->first, owner);
      EXPECT_EQ(map.find(owner)->second, number);
      EXPECT_EQ(map.count(owner), 1u);
      EXPECT_TRUE(map.contains(owner));
      EXPECT_EQ(map.at(owner), number);
      EXPECT_EQ(map.number_or_zero(owner), number);
    }
    for (Owner* owner : {a, c}) {
      EXPECT_TRUE(map.find(owner) == map.end());
      EXPECT_FALSE(map.contains(owner));
      EXPECT_EQ(map.number_or_zero(owner), 0u);
    }
  }
}

TEST_P(NumberMapTest, MissingOwnerThrowsWhereItsNumberIsAskedFor) {
  for (const Entries& entries : {Entries{}, Entries{{b, 2}}, Entries{{b, 2}, {d, 4}}}) {
    const Map map = map_of(entries);
    for (Owner* owner : {a, c}) {
      try {
        map.at(owner);
        FAIL() << "has a number";
      } catch (const std::out_of_range& error) {
        EXPECT_STREQ(error.what(), "invalid map<K, T> key");
      }
    }
  }
}

TEST_P(NumberMapTest, ZeroIsANumberLikeOthers) {
  for (const Entries& entries : {Entries{{b, 0}}, Entries{{b, 0}, {d, 0}}}) {
    const Map map = map_of(entries);
    EXPECT_EQ(map.at(b), 0u);
    EXPECT_TRUE(map.contains(b));
    EXPECT_EQ(entries_of(map), entries);
  }
}

TEST_P(NumberMapTest, IteratorsWalkByBothForms) {
  const Map map = map_of({{a, 1}, {b, 2}});
  auto entry = map.begin();
  EXPECT_EQ((entry++)->first, a);
  EXPECT_EQ(entry->second, 2u);
  EXPECT_TRUE(++entry == map.end());
}

TEST_P(NumberMapTest, MoveTakesTheEntriesAndLeavesNone) {
  for (const Entries& entries : {Entries{}, Entries{{b, 2}}, Entries{{a, 1}, {b, 2}, {d, 4}}}) {
    Map source = map_of(entries);
    const Map map(std::move(source));
    EXPECT_EQ(entries_of(map), entries);
    EXPECT_EQ(entries_of(source), Entries());
    source.add(c, 3);
    EXPECT_EQ(entries_of(source), (Entries{{c, 3}}));
    EXPECT_EQ(entries_of(map), entries);
  }
}

TEST_P(NumberMapTest, MoveAssignmentReplacesTheEntries) {
  for (const Entries& before : {Entries{}, Entries{{c, 3}}, Entries{{c, 3}, {d, 4}}}) {
    for (const Entries& entries : {Entries{}, Entries{{b, 2}}, Entries{{a, 1}, {b, 2}}}) {
      Map map = map_of(before);
      map = map_of(entries);
      EXPECT_EQ(entries_of(map), entries);
    }
  }
}

TEST_P(NumberMapTest, AdoptedOwnersGetTheirNextNumbersInOrder) {
  Map map = map_of({{b, 2}});
  Numbering next_number;
  EXPECT_TRUE(
      map.adopt(map_of({{d, 14}, {a, 11}, {b, 12}, {c, 13}}), every_owner, std::ref(next_number)));
  EXPECT_EQ(entries_of(map), (Entries{{a, 101}, {b, 2}, {c, 102}, {d, 103}}));
  EXPECT_EQ(next_number.asked, (std::vector<Owner*>{a, c, d}));
}

TEST_P(NumberMapTest, NothingIsAdoptedThatIsThereOrNotAccepted) {
  struct Row {
    Entries own;
    Entries source;
    Owner* refused;
  };
  const std::vector<Row> rows = {
      {{}, {}, nullptr},
      {{}, {{a, 11}}, a},
      {{{a, 1}}, {}, nullptr},
      {{{a, 1}}, {{a, 11}}, nullptr},
      {{{a, 1}}, {{b, 12}}, b},
      {{{a, 1}, {b, 2}}, {{b, 12}}, nullptr},
      {{{a, 1}, {b, 2}}, {{a, 11}, {b, 12}, {c, 13}}, c},
  };
  for (const auto& [own, source, refused] : rows) {
    Map map = map_of(own);
    Numbering next_number;
    EXPECT_FALSE(map.adopt(
        map_of(source), [no = refused](Owner* owner) { return owner != no; },
        std::ref(next_number)));
    EXPECT_EQ(entries_of(map), own);
    EXPECT_EQ(next_number.asked, std::vector<Owner*>());
  }
}

TEST_P(NumberMapTest, RefusedOwnersDrawNoNumber) {
  Map map = map_of({});
  Numbering next_number;
  EXPECT_TRUE(map.adopt(
      map_of({{a, 1}, {b, 2}, {c, 3}}), [&](Owner* owner) { return owner != b; },
      std::ref(next_number)));
  EXPECT_EQ(entries_of(map), (Entries{{a, 101}, {c, 102}}));
  EXPECT_EQ(next_number.asked, (std::vector<Owner*>{a, c}));
}

TEST_P(NumberMapTest, MapAdoptsNothingFromItself) {
  for (const Entries& entries : {Entries{}, Entries{{b, 2}}, Entries{{a, 1}, {b, 2}}}) {
    Map map = map_of(entries);
    Numbering next_number;
    EXPECT_FALSE(map.adopt(map, every_owner, std::ref(next_number)));
    EXPECT_EQ(entries_of(map), entries);
    EXPECT_EQ(next_number.asked, std::vector<Owner*>());
  }
}

TEST_P(NumberMapTest, CopyHasTheSameEntriesAndIsAnother) {
  for (const Entries& entries : {Entries{}, Entries{{b, 2}}, Entries{{a, 1}, {b, 2}, {d, 4}}}) {
    const Map source = map_of(entries);
    Map copy(source);
    EXPECT_EQ(entries_of(copy), entries);
    EXPECT_TRUE(copy == source);
    copy.add(c, 3);
    EXPECT_FALSE(copy == source);
    EXPECT_EQ(entries_of(source), entries);
    copy = source;
    EXPECT_EQ(entries_of(copy), entries);
  }
}

TEST_P(NumberMapTest, EntriesStayWhereTheyAreOnceSomebodyAskedForThem) {
  Map map = map_of({{b, 2}, {d, 4}});
  std::uint32_t& number = map.at(b);
  Map other = map_of({{a, 11}, {c, 13}});
  EXPECT_TRUE(map.adopt(other, every_owner, [](Owner*) { return 7u; }));
  const Map moved(std::move(map));
  number = 20;
  EXPECT_EQ(entries_of(moved), (Entries{{a, 7}, {b, 20}, {c, 7}, {d, 4}}));
  EXPECT_EQ(&moved.find(b)->second, &number);
}

TEST_P(NumberMapTest, ErasedAndClearedEntriesAreGone) {
  Map map = map_of({{a, 1}, {b, 2}, {c, 3}});
  EXPECT_EQ(map.erase(b), 1u);
  EXPECT_EQ(map.erase(b), 0u);
  EXPECT_EQ(entries_of(map), (Entries{{a, 1}, {c, 3}}));
  EXPECT_EQ(map.number_or_zero(b), 0u);
  map.clear();
  EXPECT_TRUE(map.empty());
  EXPECT_TRUE(map.add(d, 4));
  EXPECT_EQ(entries_of(map), (Entries{{d, 4}}));
}

INSTANTIATE_TEST_SUITE_P(Form, NumberMapTest, testing::Bool(),
                         [](const auto& form) { return form.param ? "Asked" : "NotAsked"; });

}  // namespace
}  // namespace Kessel::test
