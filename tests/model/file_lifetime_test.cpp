// What the store frees, and when.
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "kessel/file.h"
#include "support/file_internals.h"

namespace Kessel::test {
namespace {

using Log = std::vector<std::string>;

/// A record, or part, that notes its end.
template <class Record>
struct Probe : Record {
  Probe(Log& log_, std::string name_)
      : Record(std::string_view()), log(log_), name(std::move(name_)) {}
  ~Probe() override { log.push_back(name); }
  Log& log;
  std::string name;
};
using RecordProbe = Probe<EntityWithType>;
using PartProbe = Probe<Part>;

RecordProbe* store_probe(File& file, unsigned id, Log& log, const std::string& name) {
  return FileInternals::store<RecordProbe>(file, id, log, name);
}

TEST(FileLifetime, RecordsAreFreedOnceEachInTheOrderOfTheirNumbers) {
  Log log;
  {
    File file("");
    FileInternals::make_room(file, 3'000'000);
    store_probe(file, 3'000'000, log, "#3000000");
    store_probe(file, 70'000, log, "#70000");
    store_probe(file, 2, log, "#2");
    store_probe(file, 1, log, "#1");
    EXPECT_EQ(log, Log());
  }
  EXPECT_EQ(log, (Log{"#1", "#2", "#70000", "#3000000"}));
}

TEST(FileLifetime, ReplacedRecordIsFreedAtOnceAndOnlyOnce) {
  Log log;
  {
    File file("");
    store_probe(file, 5, log, "older");
    store_probe(file, 5, log, "newer");
    EXPECT_EQ(log, (Log{"older"}));
    file.create_entity(5);
    EXPECT_EQ(log, (Log{"older", "newer"}));
  }
  EXPECT_EQ(log, (Log{"older", "newer"}));
}

TEST(FileLifetime, GeneratedRootIsFreedAfterTheRecords) {
  Log log;
  {
    File file("");
    store_probe(file, 5, log, "#5");
    FileInternals::root(file) = std::make_unique<PartProbe>(log, "root").release();
    FileInternals::root_generated(file) = true;
  }
  EXPECT_EQ(log, (Log{"#5", "root"}));
}

TEST(FileLifetime, RootAmongTheRecordsIsFreedOnce) {
  Log log;
  {
    File file("");
    PartProbe* part = FileInternals::store<PartProbe>(file, 5, log, "#5");
    FileInternals::add_part(file, part);
    FileInternals::root(file) = part;
  }
  EXPECT_EQ(log, (Log{"#5"}));
}

TEST(FileLifetime, PartsOnTheListAloneAreNotFreed) {
  Log log;
  PartProbe part(log, "part");
  {
    File file("");
    FileInternals::add_part(file, &part);
  }
  EXPECT_EQ(log, Log());
}

}  // namespace
}  // namespace Kessel::test
