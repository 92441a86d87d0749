#include "exchange/faults.h"

#include <gtest/gtest.h>

#include <set>
#include <string>

namespace Kessel::Exchange {
namespace {

Statement statement_at(std::uint64_t offset) {
  Statement statement;
  statement.offset = offset;
  return statement;
}

Record record_at(std::uint64_t offset, std::uint64_t number) {
  Record record;
  record.offset = offset;
  record.number = number;
  return record;
}

TEST(Faults, HaveOneSentenceEach) {
  const Finding all[] = {
      empty_file(),
      unclosed_text("A", 7),
      unclosed_text("#1", 7),
      unclosed_string(statement_at(7)),
      unclosed_comment(7),
      unclosed_list(record_at(7, 1)),
      unclosed_record(statement_at(7)),
      unclosed_section("DATA", 7),
      statement_too_long(7),
      missing_header(7),
      record_outside_data(statement_at(7)),
      too_large_number(statement_at(7)),
      unsupported_scope(record_at(7, 1)),
      empty_statement(7),
      passed_over(statement_at(7)),
      missing_end(7),
      text_behind_end(7),
      dropped_signature(7),
      unusual_record(record_at(7, 1), "It is unusual."),
      lone_backslash(statement_at(7), 1),
      foreign_bytes(statement_at(7), 1),
  };
  std::set<std::string> sentences;
  int errors = 0;
  for (const Finding& finding : all) {
    EXPECT_TRUE(sentences.insert(finding.sentence).second) << finding.sentence;
    EXPECT_TRUE(finding.sentence.ends_with('.')) << finding.sentence;
    EXPECT_EQ(finding.offset, finding.kind == FindingKind::empty_file ? 0u : 7u);
    EXPECT_EQ(finding.line, 0u);
    errors += finding.severity == Severity::error ? 1 : 0;
  }
  EXPECT_EQ(errors, 13);
}

TEST(Faults, AtTheBeginningAreOnTheFirstLine) {
  EXPECT_EQ(missing_header(0).line, 1u);
  EXPECT_EQ(empty_file().line, 0u) << "it is about the whole file";
}

TEST(Faults, NameInstancesWhateverTheirNumbers) {
  EXPECT_EQ(unclosed_list(record_at(7, 4294967296)).instance, 4294967296u);
  EXPECT_EQ(foreign_bytes(statement_at(7), 12).instance, 12u);
}

TEST(Faults, SayWhatIsNotClosed) {
  EXPECT_EQ(unclosed_text("#1=A", 3).kind, FindingKind::unclosed_record);
  EXPECT_EQ(unclosed_text("A", 3).kind, FindingKind::unclosed_text);
  EXPECT_EQ(unclosed_section("ANCHOR", 3).sentence,
            "The ANCHOR section is not closed by \"ENDSEC;\".");
}

}  // namespace
}  // namespace Kessel::Exchange
