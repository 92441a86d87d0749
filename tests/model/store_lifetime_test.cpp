// What the store frees, and when.
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "model/store.h"

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

RecordProbe* store_probe(Store& file, unsigned id, Log& log, const std::string& name) {
  return file.put<RecordProbe>(id, log, name);
}

TEST(StoreLifetime, RecordsAreFreedOnceEachInTheOrderOfTheirNumbers) {
  Log log;
  {
    Store file("");
    file.make_room(3'000'000);
    store_probe(file, 3'000'000, log, "#3000000");
    store_probe(file, 70'000, log, "#70000");
    store_probe(file, 2, log, "#2");
    store_probe(file, 1, log, "#1");
    EXPECT_EQ(log, Log());
  }
  EXPECT_EQ(log, (Log{"#1", "#2", "#70000", "#3000000"}));
}

TEST(StoreLifetime, RecordThatNobodyHasSeenIsFreedWhenAnotherReplacesIt) {
  Log log;
  {
    Store file("");
    store_probe(file, 5, log, "older");
    store_probe(file, 5, log, "newer");
    EXPECT_EQ(log, (Log{"older"}));
  }
  EXPECT_EQ(log, (Log{"older", "newer"}));
}

TEST(StoreLifetime, RecordThatAHostReplacesLivesAsLongAsTheStore) {
  Log log;
  {
    Store file("");
    store_probe(file, 5, log, "older");
    file.create_entity(5);
    file.create_entity(5, "PRODUCT");
    EXPECT_EQ(log, Log());
  }
  EXPECT_EQ(log, (Log{"older"}));
}

TEST(StoreLifetime, GeneratedRootIsFreedAfterTheRecords) {
  Log log;
  {
    Store file("");
    store_probe(file, 5, log, "#5");
    file.root = std::make_unique<PartProbe>(log, "root").release();
    file.root_generated = true;
  }
  EXPECT_EQ(log, (Log{"#5", "root"}));
}

TEST(StoreLifetime, RootAmongTheRecordsIsFreedOnce) {
  Log log;
  {
    Store file("");
    PartProbe* part = file.put<PartProbe>(5, log, "#5");
    file.add_part(part);
    file.root = part;
  }
  EXPECT_EQ(log, (Log{"#5"}));
}

TEST(StoreLifetime, PartsOnTheListAloneAreNotFreed) {
  Log log;
  PartProbe part(log, "part");
  {
    Store file("");
    file.add_part(&part);
  }
  EXPECT_EQ(log, Log());
}

}  // namespace
}  // namespace Kessel::test
