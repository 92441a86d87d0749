// Rewriting in one pass against the plain way, on records that chance writes.
#include <gtest/gtest.h>

#include <cstdint>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "writer/hand_made_store.h"
#include "writer/plain_rewriting.h"
#include "writer/rewrite.h"

namespace Kessel::test {
namespace {

/// Draws numbers the same way everywhere, unlike the standard distributions.
class Dice {
 public:
  explicit Dice(std::uint32_t seed) : engine_(seed) {}
  std::size_t below(std::size_t limit) { return engine_() % limit; }
  bool one_in(std::size_t chances) { return below(chances) == 0; }
  template <class T>
  const T& pick(const std::vector<T>& from) {
    return from[below(from.size())];
  }

 private:
  std::mt19937 engine_;
};

/// Instances of which each part holds some, with one to ten digits on both sides.
const std::vector<std::uint32_t> IDS = {1, 2, 3, 7, 10, 42, 99, 100, 4711, 99999, 1000000};

void fill(HandMadeStore& store, const std::vector<Part*>& parts, Dice& dice) {
  const std::vector<std::uint32_t> numbers = {1, 5, 10, 12, 345, 9999, 123456, 4294967295U};
  for (const std::uint32_t id : IDS) {
    if (dice.one_in(8)) continue;  // No such record.
    store.add_record(id);
    for (Part* part : parts) {
      if (!dice.one_in(3)) store.hold(id, part, dice.pick(numbers));
    }
  }
}

/// Writes one record, well-formed or nearly so.
class RecordWriter {
 public:
  explicit RecordWriter(Dice& dice) : dice_(dice) {}

  std::string record() {
    text_.clear();
    reference();
    text_ += dice_.one_in(6) ? " = " : "=";
    keyword();
    attributes(0);
    if (dice_.one_in(8)) attributes(0);
    if (dice_.one_in(12)) text_ += ",)";
    if (text_.back() != ')') text_ += ")";
    return text_;
  }

 private:
  void keyword() {
    static const std::vector<std::string> NAMES = {"A", "B_C", "", "X(Y)", ")", "N((", "M#", "K,"};
    text_ += dice_.one_in(10) ? dice_.pick(NAMES) : "PRESENTATION";
  }

  void attributes(int depth) {
    if (!dice_.one_in(25)) text_ += "(";
    for (std::size_t left = dice_.below(6); left > 0; --left) {
      attribute(depth);
      if (left > 1 || dice_.one_in(15)) text_ += dice_.one_in(10) ? " , " : ",";
    }
    if (!dice_.one_in(25)) text_ += ")";
  }

  void attribute(int depth) {
    switch (dice_.below(depth > 2 ? 7 : 9)) {
      case 0:
        literal();
        break;
      case 1:
        text_ += dice_.pick<std::string>({"$", "*", "3.5", ".T.", "", "/*#*/", " "});
        break;
      case 2:
        if (dice_.one_in(6)) {
          text_ += dice_.pick<std::string>({"#", "#0", "#x", "#4294967296", "#00", "'", "(", ")"});
        }
        break;
      case 7:
        text_ += dice_.one_in(4) ? "LENGTH" : "";
        [[fallthrough]];
      case 8:
        attributes(depth + 1);
        break;
      default:
        reference();
        if (dice_.one_in(20)) reference();
    }
  }

  void literal() {
    static const std::vector<std::string> PIECES = {"a", "''", "#3", ",", "(", ")", "#", " ", "x1"};
    text_ += "'";
    for (std::size_t left = dice_.below(5); left > 0; --left) text_ += dice_.pick(PIECES);
    text_ += "'";
  }

  void reference() {
    text_ += "#";
    if (dice_.one_in(10)) text_ += std::string(1 + dice_.below(3), '0');
    text_ += std::to_string(dice_.pick(IDS));
    if (dice_.one_in(10)) text_ += " ";
  }

  Dice& dice_;
  std::string text_;
};

class RewritingComparison : public testing::TestWithParam<std::uint32_t> {
 protected:
  static constexpr int RECORDS = 1500;

  RewritingComparison() {
    for (int i = 0; i < 3; ++i) parts_.push_back(store_.add_part());
    fill(store_, parts_, dice_);
  }

  Dice dice_{GetParam()};
  HandMadeStore store_;
  std::vector<Part*> parts_;
};

TEST_P(RewritingComparison, RecordsComeOutAsIfEditedInPlace) {
  RecordWriter writer(dice_);
  for (int i = 0; i < RECORDS; ++i) {
    const std::string record = writer.record();
    for (Part* part : parts_) {
      ASSERT_EQ(store_.rewritten(record, part),
                plain::rewrite_references(record, store_.slots(), part))
          << record;
    }
  }
}

TEST_P(RewritingComparison, WholeRecordsComeOutAsIfEditedInPlace) {
  RecordWriter writer(dice_);
  int held = 0;
  int laid_out = 0;
  for (int i = 0; i < RECORDS; ++i) {
    const std::string record = writer.record();
    const std::uint32_t own = plain::references_in(record).front();
    for (Part* part : parts_) {
      const Entity* entity = store_.slots()[own];
      if (entity == nullptr || !entity->part_numbers.contains(part)) continue;
      ++held;
      const std::string expected = plain::rewrite_references(record, store_.slots(), part);
      ASSERT_EQ(store_.rewritten_with_references(record, part), expected) << record;
      ASSERT_EQ(store_.rewritten_on_the_way(record, part), expected) << record;
      const auto by_layout = store_.rewritten_by_layout(record, part);
      ASSERT_EQ(by_layout.value_or(expected), expected) << record;
      laid_out += by_layout ? 1 : 0;
    }
  }
  EXPECT_GT(held, RECORDS / 2);
  EXPECT_GT(laid_out, RECORDS / 20);
}

TEST_P(RewritingComparison, PresentationRecordsComeOutAsIfEditedInPlace) {
  RecordWriter writer(dice_);
  int with_items = 0;
  for (int i = 0; i < RECORDS; ++i) {
    const std::string text = writer.record();
    std::vector<std::uint32_t> references = plain::references_in(text);
    references.erase(references.begin());
    // Now and then the slot holds another record of the same number, whose references count.
    if (dice_.one_in(10)) references = {dice_.pick(IDS), dice_.pick(IDS)};
    Entity record;
    for (const std::uint32_t id : references) record.add_reference(id);
    for (Part* part : parts_) {
      const std::string expected = plain::outcome_of(
          [&] { return plain::rewrite_presentation_items(text, record, store_.slots(), part); });
      ASSERT_EQ(
          plain::outcome_of([&] { return store_.rewritten_presentation(text, record, part); }),
          expected)
          << text;
      with_items += expected != plain::rewrite_references(text, store_.slots(), part);
    }
  }
  EXPECT_GT(with_items, RECORDS / 2) << "too few records have an item list";
}

INSTANTIATE_TEST_SUITE_P(Seeds, RewritingComparison, testing::Range(1U, 13U));

TEST(LongPieces, OfEveryLengthAreCopiedWhole) {
  HandMadeStore store;
  Part* part = store.add_part();
  store.hold(1, part, 54321);
  store.hold(2, part, 7);
  std::string piece;
  for (int length = 0; length < 150; ++length) {
    const std::string middle = "=A('" + piece + "',";
    const std::string rest = ",'" + piece + "')";
    const std::string expected = "#54321" + middle + "#7" + rest;
    EXPECT_EQ(store.rewritten_with_references("#1" + middle + "#2" + rest, part), expected);
    EXPECT_EQ(store.rewritten_on_the_way("#1" + middle + "#2" + rest, part), expected);
    EXPECT_EQ(store.rewritten_by_layout("#1" + middle + "#2" + rest, part), expected);
    piece += static_cast<char>('A' + length % 26);
  }
}

TEST(LongRecords, ComeOutAsIfEditedInPlace) {
  HandMadeStore store;
  Part* part = store.add_part();
  std::string record = "#1=SHELL('',(";
  std::string expected = "#1=SHELL('',(";
  store.hold(1, part, 1);
  std::uint32_t next = 1;
  for (std::uint32_t id = 2; id < 100'002; ++id) {
    record += (id == 2 ? "#" : ",#") + std::to_string(id);
    if (id % 3 != 0) continue;
    store.hold(id, part, ++next);
    expected += (next == 2 ? "#" : ",#") + std::to_string(next);
  }
  EXPECT_TRUE(store.rewritten(record + "))", part) == expected + "))");
}

}  // namespace
}  // namespace Kessel::test
