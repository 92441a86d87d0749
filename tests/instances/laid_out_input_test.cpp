// A second reading by what the first one noted: the same texts and names, and no other file's.
#include "instances/laid_out_input.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "instances/layout_loader.h"
#include "kessel/errors.h"
#include "support/loaded_text.h"

namespace Kessel::test {
namespace {

/// A text and the numbers in it, with the places of their digits.
struct Seen {
  std::string text;
  std::string body;
  std::uint64_t number = 0;
  std::uint64_t offset = 0;
  bool is_plain = true;  // where names are counted
  std::vector<std::uint64_t> numbers;
  std::vector<std::pair<std::size_t, std::size_t>> places;

  bool operator==(const Seen&) const = default;
};

void add_mentions(Seen& seen, std::string_view text, std::span<const Exchange::Mention> mentions) {
  for (const Exchange::Mention& mention : mentions) {
    seen.numbers.push_back(mention.number);
    seen.places.emplace_back(mention.begin - text.data(), mention.end - text.data());
  }
}

Seen seen_in(const Exchange::Record& record) {
  Seen seen;
  seen.text = record.text;
  seen.body = record.body;
  seen.number = record.number;
  seen.offset = record.offset;
  add_mentions(seen, record.text, record.mentions);
  return seen;
}

Seen seen_in(const Exchange::Statement& entry, std::span<const Exchange::Mention> mentions) {
  Seen seen;
  seen.text = entry.text;
  seen.offset = entry.offset;
  add_mentions(seen, entry.text, mentions);
  return seen;
}

/// Whether the texts are what `file` has in their places, and the numbers what is said there.
bool stands_in(const std::string& file, const Seen& seen) {
  if (file.substr(seen.offset, seen.text.size()) != seen.text) return false;
  for (std::size_t i = 0; i < seen.numbers.size(); ++i) {
    const auto [begin, end] = seen.places[i];
    const std::string digits = seen.text.substr(begin, end - begin);
    if (begin == 0 || seen.text[begin - 1] != '#') return false;
    if (digits.find_first_not_of("0123456789") != std::string::npos) return false;
    if (end < seen.text.size() && seen.text[end] >= '0' && seen.text[end] <= '9') return false;
    // Numbers that are too large are none.
    const bool is_small = digits.size() < 20;
    if (seen.numbers[i] != (is_small && !digits.empty() ? std::stoull(digits) : 0)) return false;
  }
  return true;
}

/// Loads, and keeps all that a listener is told.
class FirstReading final : public LayoutLoader {
 public:
  using LayoutLoader::LayoutLoader;
  std::vector<Seen> seen;
  TextLayout counted;

 protected:
  void added(Index index, const Exchange::Record& record) override {
    LayoutLoader::added(index, record);
    counted.add_counted(record);
    seen.push_back(seen_in(record));
    seen.back().is_plain = record.is_plain;
  }
  void added_entry(Index index, const Exchange::Statement& entry,
                   std::span<const Exchange::Mention> mentions) override {
    LayoutLoader::added_entry(index, entry, mentions);
    counted.add_entry(entry, mentions);
    seen.push_back(seen_in(entry, mentions));
  }
};

struct Loaded {
  explicit Loaded(const std::string& text) {
    std::istringstream in(text);
    const Options options;
    FirstReading loader(instances, layout, options);
    load_with(in, loader, options);
    seen = std::move(loader.seen);
    counted = std::move(loader.counted);
  }

  /// What a second reading of `text` gives.
  std::vector<Seen> read_again(const std::string& text,
                               std::size_t block_size = LaidOutInput::BLOCK_SIZE) const {
    std::istringstream in(text);
    LaidOutInput input(in, layout, block_size);
    std::vector<Seen> again;
    for (Index record = 0; record < instances.size(); ++record) {
      input.next();
      if (is_entry(record)) {
        const LaidOutInput::Entry entry = input.take_entry();
        again.push_back(seen_in(entry.statement, entry.mentions));
      } else {
        again.push_back(seen_in(input.take_record(instances.references(record).size())));
        again.back().is_plain = seen[record].is_plain;  // It does not tell.
      }
    }
    EXPECT_TRUE(input.is_at_end());
    return again;
  }

  /// The same where nobody else knows how many names there are.
  std::vector<Seen> read_counted_again(const std::string& text,
                                       std::size_t block_size = LaidOutInput::BLOCK_SIZE) const {
    std::istringstream in(text);
    LaidOutInput input(in, counted, block_size);
    std::vector<Seen> again;
    while (!input.is_at_end()) {
      input.next();
      if (is_entry(static_cast<Index>(again.size()))) {
        const LaidOutInput::Entry entry = input.take_entry();
        again.push_back(seen_in(entry.statement, entry.mentions));
      } else {
        const Exchange::Record record = input.take_record(input.take_count());
        again.push_back(seen_in(record));
        again.back().is_plain = record.is_plain;
      }
    }
    return again;
  }

  bool is_entry(Index record) const {
    const TypeId type = instances.type(record);
    return type == TypeTable::ANCHOR_ENTRY || type == TypeTable::REFERENCE_ENTRY;
  }

  Instances instances;
  TextLayout layout;
  TextLayout counted;
  std::vector<Seen> seen;
};

std::string with_sections(const std::string& records) {
  std::string text = exchange_file(records);
  text.insert(text.find("DATA;"),
              "ANCHOR;\n<a>=#1;\n /* #8 */ <b>=(#0002,'#3') ;\nENDSEC;\n"
              "REFERENCE;\n#7=<other.stp#x>;\n#8 = <no.stp#name>;\nENDSEC;\n");
  return text;
}

/// Short and long texts, many names and none, leads, comments, constants, numbers that say nothing,
/// and what is no record.
std::string with_all_kinds() {
  std::string names;
  for (int i = 0; i < 40; ++i) names += ",#1";
  return with_sections(
      "#1=A();\n#22 = B ( #1, '#2;', #0000333 ) ;\r\n  #333=(C(#1)D(#22));;"
      "/* c */#4=E(/*#5*/#1);#5=F(#PI,#0,#1);#6=G('\\S\\';',#1);?;        "
      "#9=H(#1);#10=I(" +
      std::string(240, ' ') + "#1,#123456789);#11=J(#1" + names +
      ");ENDSEC;DATA('b',('c'));#12=K(#9,#8);");
}

TEST(LaidOutInput, GivesTheTextsOfTheFirstReading) {
  const std::string blanks(300, ' ');
  const std::string a_block(std::size_t{400} * 1024, 'x');
  const std::string text = with_sections(
      "#1=A('#5;''',#2,\r\n\t#0002/* #9; */,#18446744073709551615,#0,#12345678);\n" + blanks +
      "/* ; #4 */#12345678 = B(" + blanks + "#1" + blanks + ") ;#3=C('" + a_block + "',#2);/*" +
      a_block + "*/\n#4=D();\n#5=(E(#1)F('" + std::string(33, 'y') + "',#2)G());\n");
  const Loaded loaded(text);
  ASSERT_EQ(loaded.seen.size(), 9U);
  EXPECT_EQ(loaded.read_again(text), loaded.seen);
  EXPECT_EQ(loaded.read_counted_again(text), loaded.seen);
}

TEST(LaidOutInput, DoesNotDependOnHowManyBytesAreReadAtOnce) {
  const std::string text = with_all_kinds();
  const Loaded loaded(text);
  ASSERT_EQ(loaded.seen.size(), 14U);
  for (const std::size_t block_size : {1, 2, 7, 64, 300, 1 << 18}) {
    EXPECT_EQ(loaded.read_again(text, block_size), loaded.seen) << block_size;
    EXPECT_EQ(loaded.read_counted_again(text, block_size), loaded.seen) << block_size;
  }
}

TEST(LaidOutInput, NoticesThatTheFileIsCutOff) {
  const std::string text = with_all_kinds();
  const Loaded loaded(text);
  const std::size_t needed = loaded.seen.back().offset + loaded.seen.back().text.size();
  for (std::size_t size = 0; size < text.size(); ++size) {
    const std::string part = text.substr(0, size);
    if (size < needed) {
      ASSERT_THROW(static_cast<void>(loaded.read_counted_again(part)), InputError) << size;
      ASSERT_THROW(static_cast<void>(loaded.read_again(part, 7)), InputError) << size;
    } else {
      ASSERT_EQ(loaded.read_counted_again(part), loaded.seen) << size;
    }
  }
}

/// Whatever is changed: it is noticed, or does not make the texts and numbers wrong that are read.
TEST(LaidOutInput, GivesNothingThatIsNotInAFileThatHasChanged) {
  const std::string text = with_all_kinds();
  const Loaded loaded(text);
  std::size_t noticed = 0;
  const auto expect_truth = [&](const std::string& other, std::size_t at) {
    try {
      for (const Seen& seen : loaded.read_counted_again(other)) {
        ASSERT_TRUE(stands_in(other, seen)) << at << ": " << seen.text;
      }
    } catch (const InputError& error) {
      ++noticed;
      EXPECT_EQ(error.finding().kind, FindingKind::changed_while_read);
    }
  };
  for (std::size_t i = 0; i < text.size(); ++i) {
    std::string other = text;
    for (const char c : {'#', '0', '9', 'x', '\0', '\xFF'}) {
      other[i] = c;
      expect_truth(other, i);
    }
    other.erase(i, 1);
    expect_truth(other, i);
    other = text;
    other.insert(i, " ");
    expect_truth(other, i);
  }
  EXPECT_GT(noticed, text.size());
}

}  // namespace
}  // namespace Kessel::test
