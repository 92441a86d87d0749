// The map from parts to instance numbers against a std::map ordered by position.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <map>
#include <random>
#include <tuple>
#include <utility>
#include <vector>

#include "kessel/number_map.h"
#include "support/effort.h"

namespace Kessel::test {
namespace {

struct Owner {
  std::uint32_t list_position;
};

struct ByPosition {
  bool operator()(const Owner* a, const Owner* b) const {
    return std::tuple(a->list_position, a) < std::tuple(b->list_position, b);
  }
};
using PlainMap = std::map<Owner*, std::uint32_t, ByPosition>;
using Entries = std::vector<std::pair<Owner*, std::uint32_t>>;

/// Gives each owner the numbers 1, 2, 3, ... and notes every one that was drawn.
class Numbering {
 public:
  std::uint32_t operator()(Owner* owner) {
    const std::uint32_t number = ++last_[owner];
    drawn_.emplace_back(owner, number);
    return number;
  }
  const Entries& drawn() const { return drawn_; }

 private:
  std::map<Owner*, std::uint32_t> last_;
  Entries drawn_;
};

/// A map and its plain twin, which every operation changes alike.
struct Twins {
  NumberMap<Owner> map;
  PlainMap plain;

  void add(Owner* owner, std::uint32_t number) {
    ASSERT_EQ(map.add(owner, number), plain.emplace(owner, number).second);
  }

  /// `modulus` and `residue` choose the owners that are not accepted.
  void adopt(const Twins& source, std::uint32_t modulus, std::uint32_t residue) {
    const auto accept = [&](const Owner* owner) {
      return owner->list_position % modulus != residue;
    };
    Numbering next_number;
    const bool adopted =
        map.adopt(source.map, accept, [&](Owner* owner) { return next_number(owner); });
    Numbering plain_next_number;
    bool plain_adopted = false;
    for (const auto& [owner, number] : PlainMap(source.plain)) {
      if (!accept(owner) || plain.contains(owner)) continue;
      plain.emplace(owner, plain_next_number(owner));
      plain_adopted = true;
    }
    ASSERT_EQ(adopted, plain_adopted);
    ASSERT_EQ(next_number.drawn(), plain_next_number.drawn());
  }

  void expect_alike() const {
    Entries entries;
    for (const auto [owner, number] : map.entries()) entries.emplace_back(owner, number);
    ASSERT_EQ(entries, Entries(plain.begin(), plain.end()));
    ASSERT_EQ(map.size(), plain.size());
    ASSERT_EQ(map.empty(), plain.empty());
  }

  void expect_same_answer(Owner* owner) const {
    const auto plain_entry = plain.find(owner);
    const bool there = plain_entry != plain.end();
    ASSERT_EQ(map.contains(owner), there);
    ASSERT_EQ(map.number_or_zero(owner), there ? plain_entry->second : 0);
  }
};

/// Owners whose positions have nothing to do with their addresses; every eighth position is shared.
class Owners {
 public:
  Owners(std::size_t count, std::mt19937& random) : owners_(count), random_(random) {
    for (std::size_t i = 0; i < count; ++i) {
      owners_[i].list_position = static_cast<std::uint32_t>(i % 8 == 7 ? i - 1 : i);
    }
    std::shuffle(owners_.begin(), owners_.end(), random);
  }
  Owner* any() { return &owners_[random_() % owners_.size()]; }
  std::size_t size() const { return owners_.size(); }

  Twins twins(std::size_t size) {
    Twins twins;
    while (twins.plain.size() < size)
      twins.add(any(), static_cast<std::uint32_t>(random_() % 1'000));
    return twins;
  }

 private:
  std::vector<Owner> owners_;
  std::mt19937& random_;
};

TEST(NumberMapComparison, AdoptionIsInsertionOneByOneForAllSizes) {
  std::mt19937 random(2101);
  Owners owners(700, random);
  constexpr std::size_t SIZES[] = {0, 1, 2, 3, 4, 5, 7, 8, 9, 16, 17, 33, 64, 100, 300, 500};
  for (const std::size_t own : SIZES) {
    for (const std::size_t source : SIZES) {
      for (const std::uint32_t modulus : {1'000u, 2u, 5u, 1u}) {
        SCOPED_TRACE(testing::Message() << source << " into " << own << ", modulus " << modulus);
        Twins target = owners.twins(own);
        target.adopt(owners.twins(source), modulus, 0);
        target.expect_alike();
        target.add(owners.any(), 5);  // The block has the room that it should have.
        target.add(owners.any(), 6);
        target.expect_alike();
        if (HasFatalFailure()) return;
      }
    }
  }
}

TEST(NumberMapComparison, AdoptionOfPartlyKnownOwnersIsInsertionOneByOne) {
  std::mt19937 random(2102);
  Owners owners(400, random);
  for (std::uint64_t round = 0; round < tries(400); ++round) {
    SCOPED_TRACE(round);
    Twins source = owners.twins(random() % 300);
    Twins target;
    for (const auto& [owner, number] : source.plain) {
      if (random() % 10 != 0) target.add(owner, number + 1'000);
    }
    for (std::size_t more = random() % 50; more > 0; --more) target.add(owners.any(), 7);
    target.adopt(source, 1'000, 999);
    target.expect_alike();
    if (HasFatalFailure()) return;
  }
}

TEST(NumberMapComparison, RandomOperationsLeaveTheSameEntries) {
  for (const std::size_t count : {1u, 2u, 3u, 10u, 60u, 500u}) {
    SCOPED_TRACE(count);
    std::mt19937 random(2103 + static_cast<unsigned>(count));
    Owners owners(count, random);
    std::array<Twins, 4> maps;
    for (std::uint64_t round = 0; round < tries(4'000); ++round) {
      SCOPED_TRACE(round);
      Twins& map = maps[random() % maps.size()];
      Twins& other = maps[random() % maps.size()];
      switch (random() % 12) {
        case 0:
        case 1:
          map.adopt(other, 2 + static_cast<std::uint32_t>(random() % 5), 1);
          break;
        case 2: {
          Twins moved{std::move(map.map), std::exchange(map.plain, {})};
          map.expect_alike();  // Empty, and still of use.
          map.map = std::move(moved.map);
          map.plain = std::move(moved.plain);
          break;
        }
        case 3:
          if (&map == &other) break;
          map.map = std::move(other.map);
          map.plain = std::move(other.plain);
          other = Twins();
          break;
        case 4:
          if (random() % 20 == 0) map = Twins();
          break;
        case 5:  // From now on its entries stay where they are.
          if (random() % 40 == 0) map.map.begin();
          break;
        default:
          map.add(owners.any(), static_cast<std::uint32_t>(random() % 1'000));
      }
      map.expect_alike();
      other.expect_alike();
      for (int i = 0; i < 4; ++i) map.expect_same_answer(owners.any());
      if (HasFatalFailure()) return;
    }
  }
}

}  // namespace
}  // namespace Kessel::test
