// The reader against a plain one, and against files whose content is known.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <map>
#include <random>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include "exchange/compare_readings.h"
#include "exchange/event_log.h"
#include "exchange/legal_files.h"
#include "exchange/lexer.h"
#include "exchange/plain_reader.h"
#include "exchange/reader.h"
#include "exchange/string_value.h"
#include "support/effort.h"
#include "support/scratch_folder.h"

namespace Kessel::test {
namespace {

using namespace Exchange;

constexpr std::uint32_t SEEDS = 1000;

std::string number_of(std::string_view name) {
  return std::to_string(number_in(name));
}

/// What a reading and the lexer make of a file, in the form of the generator's.
class Collector final : public Listener {
 public:
  void header_entity(const Statement& entity) override { begin("HEADER", entity.text, {}); }
  void record(const Record& record) override {
    begin("DATA", record.body, record.mentions);
    statements.back().number = std::to_string(record.number);
  }
  void entry(Section section, const Statement& entry, std::span<const Mention> mentions) override {
    begin(section == Section::anchor ? "ANCHOR" : "REFERENCE", entry.text, mentions);
  }
  void warning(const Finding& finding) override { ADD_FAILURE() << finding.sentence; }

  std::vector<LegalStatement> statements;

 private:
  void begin(const std::string& section, std::string_view text, std::span<const Mention> mentions) {
    LegalStatement& statement = statements.emplace_back();
    statement.section = section;
    Lexer lexer(text);
    std::vector<std::string> names;
    for (Word word = lexer.next(); word.kind != WordKind::end; word = lexer.next()) {
      EXPECT_TRUE(word.kind != WordKind::other || word.text == "{" || word.text == "}" ||
                  word.text == ":")
          << word.text;
      statement.tokens.emplace_back(word.text);
      if (word.kind == WordKind::string) statement.strings.push_back(string_value(word.text));
      if (word.kind == WordKind::instance) names.push_back(number_of(word.text));
    }
    for (const Mention& mention : mentions) {
      statement.names.push_back(std::to_string(mention.number));
    }
    if (section == "HEADER") statement.names = names;
    EXPECT_EQ(statement.names, names);
  }
};

TEST(LegalFiles, AreLegal) {
  for (std::uint32_t seed = 0; seed < tries(SEEDS); ++seed) {
    const LegalFile file = legal_file(seed);
    ASSERT_TRUE(plain::is_legal(file.text)) << seed << '\n' << file.text;
  }
}

TEST(LegalFiles, LoseNothing) {
  for (std::uint32_t seed = 0; seed < tries(SEEDS); ++seed) {
    const LegalFile file = legal_file(seed);
    std::istringstream in(file.text);
    Collector collector;
    const Ending ending = read_exchange_file(in, {}, collector);
    ASSERT_FALSE(ending.error) << seed << ": " << ending.error->sentence;
    ASSERT_EQ(collector.statements.size(), file.statements.size()) << seed;
    for (std::size_t i = 0; i < file.statements.size(); ++i) {
      const LegalStatement& expected = file.statements[i];
      const LegalStatement& found = collector.statements[i];
      ASSERT_EQ(found.section, expected.section) << seed;
      ASSERT_EQ(found.number, expected.number) << seed;
      ASSERT_EQ(found.tokens, expected.tokens) << seed;
      ASSERT_EQ(found.names, expected.names) << seed;
      ASSERT_EQ(found.strings, expected.strings) << seed;
    }
    ASSERT_FALSE(HasFailure()) << seed;
  }
}

TEST(LegalFiles, AreReadAsThePlainReaderReadsThem) {
  for (std::uint32_t seed = 0; seed < tries(SEEDS); ++seed) {
    ASSERT_EQ(difference_of_readings(legal_file(seed).text, 1 + seed % 300), "") << seed;
  }
}

struct JudgedFile {
  const char* front;      ///< in front of everything
  const char* in_header;  ///< behind FILE_NAME
  const char* sections;   ///< behind the header
  bool is_legal;
};

const JudgedFile JUDGED_FILES[] = {
    {" \\N\\", "", "DATA;#1=A();ENDSEC;", true},
    // A word of the grammar is no keyword of the header.
    {"", "DATA('x',('S'));", "DATA;#1=A();ENDSEC;", false},
    // No resource is empty.
    {"", "", "ANCHOR;<>='a';<b>='>';ENDSEC;DATA;ENDSEC;", false},
};

TEST(LegalFiles, AreToldFromOthers) {
  for (const JudgedFile& file : JUDGED_FILES) {
    const std::string text = file.front +
                             std::string(
                                 "ISO-10303-21;HEADER;FILE_DESCRIPTION((''),'2;1');"
                                 "FILE_NAME('','',(''),(''),'','','');") +
                             file.in_header + "FILE_SCHEMA(('S'));ENDSEC;" + file.sections +
                             "END-ISO-10303-21;";
    EXPECT_EQ(plain::is_legal(text), file.is_legal) << text;
    EXPECT_EQ(difference_of_readings(text, 64), "") << text;
  }
}

/// Changes a few places of a text.
std::string mutated(std::string text, std::mt19937& random) {
  constexpr std::string_view INSERTS[] = {
      "'",
      "''",
      ";",
      ";;",
      "/*",
      "*/",
      "(",
      ")",
      "#",
      "#0",
      "#00012",
      "#18446744073709551616",
      "\\S\\'",
      "\\S\\''",
      "\\S\\'''",
      "\\",
      "\\N\\",
      "<",
      ">",
      "ENDSEC;",
      "DATA;",
      "DATA",
      "ANCHOR;",
      "REFERENCE;",
      "END-ISO-10303-21;",
      "HEADER;",
      "\xFF",
      "\xC3\xA4",
      "\"",
      "=",
      "\n",
      "&SCOPE",
      "\\X2\\00",
      "\\X2\\00E4\\X0\\",
      "+",
      "/",
      "\0",
      "#1=A();",
      ".T",
      "!",
  };
  for (unsigned changes = 1 + static_cast<unsigned>(random() % 4); changes > 0; --changes) {
    const std::size_t at = random() % (text.size() + 1);
    switch (random() % 4) {
      case 0:
        text.erase(at, 1 + random() % 3);
        break;
      case 1:
        text.erase(at, random() % 200);
        break;
      default:
        text.insert(at, INSERTS[random() % std::size(INSERTS)]);
    }
  }
  return text;
}

TEST(MutatedFiles, AreReadAsThePlainReaderReadsThem) {
  std::mt19937 random(12);
  for (std::uint32_t seed = 0; seed < tries(SEEDS); ++seed) {
    const std::string text = mutated(legal_file(seed).text, random);
    ASSERT_EQ(difference_of_readings(text, 1 + seed % 300), "") << seed << '\n' << text;
  }
}

TEST(MutatedFiles, OfRealAssembliesAreReadAsThePlainReaderReadsThem) {
  std::vector<std::filesystem::path> files{std::filesystem::path(PROJECT_FOLDER) /
                                           "examples/desk-lamp.step"};
  if (const auto samples = samples_folder(); !samples.empty()) {
    for (const char* name : {"cube-inch.step", "dm1-id-214.stp", "io1-tu-203.stp"}) {
      files.push_back(samples / name);
    }
  }
  std::mt19937 random(21);
  for (const auto& path : files) {
    const std::string text = read_file(path);
    ASSERT_EQ(difference_of_readings(text, 4096), "") << path;
    for (std::size_t i = 0; i < tries(60); ++i) {
      // Most of it away, so that the whole of a change is met.
      std::string some = mutated(text, random);
      if (i % 2 == 0) some.erase(random() % some.size(), random() % some.size());
      ASSERT_EQ(difference_of_readings(some, 64 + i * 31), "") << path << ' ' << i;
    }
  }
}

}  // namespace
}  // namespace Kessel::test
