// A second reading by what the first one noted: the same texts and names, and no other file's.
#include "output/laid_out_input.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "kessel/errors.h"
#include "output/counting_number.h"
#include "output/layout_loader.h"
#include "support/loaded_text.h"

namespace Kessel::test {
namespace {

/// A text and the numbers in it, with the places of their digits.
struct Seen {
  std::string text;
  std::string body;
  std::uint64_t number = 0;
  std::uint64_t offset = 0;
  std::vector<std::uint64_t> numbers;
  std::vector<std::pair<std::ptrdiff_t, std::ptrdiff_t>> places;

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

/// Loads, and keeps all that a listener is told.
class FirstReading final : public LayoutLoader {
 public:
  using LayoutLoader::LayoutLoader;
  std::vector<Seen> seen;

 protected:
  void added(Index index, const Exchange::Record& record) override {
    LayoutLoader::added(index, record);
    seen.push_back(seen_in(record));
  }
  void added_entry(Index index, const Exchange::Statement& entry,
                   std::span<const Exchange::Mention> mentions) override {
    LayoutLoader::added_entry(index, entry, mentions);
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
  }

  /// What a second reading of `text` gives.
  std::vector<Seen> read_again(const std::string& text) const {
    std::istringstream in(text);
    LaidOutInput input(in, layout);
    std::vector<Seen> again;
    for (Index record = 0; record < instances.size(); ++record) {
      input.next();
      const TypeId type = instances.type(record);
      if (type == TypeTable::ANCHOR_ENTRY || type == TypeTable::REFERENCE_ENTRY) {
        const LaidOutInput::Entry entry = input.take_entry();
        again.push_back(seen_in(entry.statement, entry.mentions));
      } else {
        again.push_back(seen_in(input.take_record(instances.references(record).size())));
      }
    }
    return again;
  }

  Instances instances;
  TextLayout layout;
  std::vector<Seen> seen;
};

std::string with_sections(const std::string& records) {
  std::string text = exchange_file(records);
  text.insert(text.find("DATA;"),
              "ANCHOR;\n<a>=#1;\n /* #8 */ <b>=(#0002,'#3') ;\nENDSEC;\n"
              "REFERENCE;\n#7=<other.stp#x>;\n#8 = <no.stp#name>;\nENDSEC;\n");
  return text;
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
}

TEST(LaidOutInput, NoticesThatTheFileHasChanged) {
  const std::string text = exchange_file("#1=A(#2);\n#2=B('x',#1);\n");
  const Loaded loaded(text);
  ASSERT_EQ(loaded.read_again(text), loaded.seen);
  const auto is_noticed = [&](const std::string& other) {
    EXPECT_THROW(static_cast<void>(loaded.read_again(other)), InputError) << other;
  };
  std::string moved = text;
  moved.insert(moved.find("#2=B"), " ");
  is_noticed(moved);
  std::string another = text;
  another.replace(another.find("#1);"), 4, "$1);");
  is_noticed(another);
  is_noticed(text.substr(0, text.find("#1);")));
  is_noticed("");
}

TEST(CountingNumber, CountsAsNumbersAreWritten) {
  for (const std::uint32_t first : {1U, 7U, 95U, 9'990U, 999'999U, 99'999'990U, 4'294'967'270U}) {
    CountingNumber number(first);
    for (std::uint32_t i = 0; i < 25; ++i) {
      char text[CountingNumber::ROOM + 8];
      EXPECT_EQ(std::string(text, number.write(text)), std::to_string(first + i));
    }
  }
}

}  // namespace
}  // namespace Kessel::test
