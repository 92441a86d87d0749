// velkstep tree --json, parsed.
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <string>

#include "cli/run_process.h"
#include "inspection/products.h"
#include "support/scratch_folder.h"

namespace Kessel::test {
namespace {

using Json = nlohmann::json;

/// The object that is printed for an exchange file with these records, in one line.
Json tree_json_of(const std::string& records, const std::string& errors = "") {
  const ScratchFolder folder;
  folder.write("in.stp", exchange_file(records));
  const ProcessRun run = run_velkstep({"tree", "--json", "in.stp"});
  EXPECT_EQ(run.exit_code, 0);
  EXPECT_EQ(run.errors, errors);
  EXPECT_EQ(run.out.find('\n'), run.out.size() - 1);
  return Json::parse(run.out);
}

TEST(TreeJson, BoxWithLid) {
  EXPECT_EQ(tree_json_of(std::string(BOX_WITH_LID)), Json::parse(R"({
    "format": 1, "input": "in.stp", "depth": 2, "roots": [0],
    "parts": [
      {"record": 3, "id": "box", "name": "box", "description": "", "kind": "assembly",
       "file": "box.stp", "external_file": null, "total": 1,
       "components": [{"part": 1, "count": 1, "closes_cycle": false}], "used_in": []},
      {"record": 6, "id": "lid", "name": "lid", "description": "", "kind": "part",
       "file": "lid.stp", "external_file": null, "total": 1, "components": [],
       "used_in": [{"part": 0, "count": 1, "closes_cycle": false}]}
    ]})"));
}

TEST(TreeJson, GeneratedRootHasNoRecordAndAssembliesMayHaveBodies) {
  const Json tree = tree_json_of(product(1, "'a','a',''") + product(11, "'b','b',''") +
                                 product(41, "'c','c',''") + usage(20, 3, 13) + shape(30, 3, true) +
                                 shape(50, 43, true));
  EXPECT_EQ(tree["roots"], Json({3}));
  EXPECT_EQ(tree["parts"][0]["kind"], "assembly with bodies");
  EXPECT_EQ(tree["parts"][3]["record"], nullptr);
  EXPECT_EQ(tree["parts"][3]["file"], "Root.stp");
  EXPECT_EQ(tree["parts"][3]["kind"], "assembly");
}

TEST(TreeJson, OnePartAloneHasAFile) {
  const Json tree = tree_json_of(std::string(LID_ALONE) + shape(10, 6, true));
  EXPECT_EQ(tree["parts"].size(), 1u);
  EXPECT_EQ(tree["parts"][0]["file"], "lid.stp");
}

TEST(TreeJson, FileWithoutPartsHasEmptyLists) {
  const ScratchFolder folder;
  folder.write("in.stp", exchange_file(""));
  const Json tree = Json::parse(run_velkstep({"tree", "--json", "in.stp"}).out);
  EXPECT_EQ(tree, Json::parse(R"({"format":1,"input":"in.stp","depth":0,"roots":[],"parts":[]})"));
}

TEST(TreeJson, UseThatClosesACycleIsMarked) {
  const Json tree = tree_json_of(std::string(CYCLE));
  EXPECT_FALSE(tree["parts"][0]["components"][0]["closes_cycle"]);
  EXPECT_TRUE(tree["parts"][1]["components"][0]["closes_cycle"]);
}

TEST(TreeJson, LargestTotalIsExact) {
  std::string records;
  for (int i = 0; i <= 70; ++i) records += product(10 * i + 1, "'p','p',''");
  for (int i = 0; i < 70; ++i) {
    records += usage(1000 + 2 * i, 10 * i + 3, 10 * i + 13);
    records += usage(1001 + 2 * i, 10 * i + 3, 10 * i + 13);
  }
  const Json tree = tree_json_of(records);
  EXPECT_EQ(tree["parts"][60]["total"], std::uint64_t{1} << 60);
  EXPECT_EQ(tree["parts"][70]["total"], UINT64_MAX);
}

TEST(TreeJson, LargestNumberIsExact) {
  std::string records(BOX_WITH_LID);
  for (std::size_t at; (at = records.find("#6")) != std::string::npos;) {
    records.replace(at, 2, "#18446744073709551615");
  }
  EXPECT_EQ(tree_json_of(records)["parts"][1]["record"], UINT64_MAX);
}

TEST(TreeJson, TextsAreKeptAndEscaped) {
  const Json tree = tree_json_of(product(1, "'\"q\" \\X2\\30CD\\X0\\','it''s \x1B[31m',$") +
                                     product(11, "'caf\xE9','\xC2\x9B\x7F','\xF0\x9F\x94\xA9'") +
                                     usage(20, 3, 13),
                                 "velkstep: in.stp: 1 warning; velkstep check in.stp lists it\n");
  EXPECT_EQ(tree["parts"][0]["id"], "\"q\" ネ");
  EXPECT_EQ(tree["parts"][0]["name"], "it's \x1B[31m");
  EXPECT_EQ(tree["parts"][1]["id"], "café");
  EXPECT_EQ(tree["parts"][1]["name"], "\xC2\x9B\x7F");
  EXPECT_EQ(tree["parts"][1]["description"], "🔩");
}

TEST(TreeJson, NameOfTheInputMayBeAnyBytes) {
  const ScratchFolder folder;
  const std::string name = "caf\xE9\x1B.stp";
  folder.write(name, exchange_file(BOX_WITH_LID));
  const ProcessRun run = run_velkstep({"tree", "--json", name});
  EXPECT_EQ(run.exit_code, 0);
  EXPECT_EQ(Json::parse(run.out)["input"], "caf\xEF\xBF\xBD\x1B.stp");
}

}  // namespace
}  // namespace Kessel::test
