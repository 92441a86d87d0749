// What is said where memory ends: how far the reading came, and what the whole may need.
#include "findings/refusals.h"

#include <gtest/gtest.h>

#include <cstdint>

namespace Kessel::test {
namespace {

TEST(Refusals, MemoryForTheBeginningTellsWhatTheWholeMayNeed) {
  const struct {
    std::uint64_t needed;
    std::uint64_t limit;
    BytesRead read;
    const char* sentence;
  } CASES[] = {
      {1'001'000,
       1'000'000,
       {250'000, 1'000'000},
       "The first 250,000 of 1,000,000 bytes of the file take 1,001,000 bytes of memory, and the "
       "limit is 1,000,000; all may take about 4,100,000."},
      {99,
       98,
       {99, 100},
       "The first 99 of 100 bytes of the file take 99 bytes of memory, and the limit is 98; all "
       "may "
       "take about 100."},
      {UINT64_MAX / 2,
       1,
       {1, UINT64_MAX},
       "The first 1 of 18,446,744,073,709,551,615 bytes of the file take "
       "9,223,372,036,854,775,807 bytes of memory, and the limit is 1; all may take about "
       "1,000,000,000,000,000,000."},
      // All is read, or nothing yet, or nobody knows how much there is.
      {2'000,
       1'000,
       {5, 5},
       "The records need at least 2,000 bytes of memory, and the limit is 1,000."},
      {2'000,
       1'000,
       {0, 5},
       "The records need at least 2,000 bytes of memory, and the limit is 1,000."},
      {2'000,
       1'000,
       {5, 0},
       "The records need at least 2,000 bytes of memory, and the limit is 1,000."},
  };
  for (const auto& row : CASES) {
    const Finding finding = records_need_memory(row.needed, row.limit, row.read);
    EXPECT_EQ(finding.kind, FindingKind::memory_limit);
    EXPECT_EQ(finding.sentence, row.sentence);
  }
}

TEST(Refusals, MemoryForSeveralFilesNamesTheLimitOfAll) {
  EXPECT_EQ(files_need_memory(1, 5'000).sentence,
            "With those of the file read before it, the records of this file need more memory than "
            "the limit of 5,000 bytes.");
  EXPECT_EQ(
      files_need_memory(1'200, 5'000).sentence,
      "With those of the 1,200 files read before it, the records of this file need more memory "
      "than the limit of 5,000 bytes.");
}

}  // namespace
}  // namespace Kessel::test
