// velkstep extract: what it prints, writes and returns.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <signal.h>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "cli/run_process.h"
#include "join/joined_folder.h"
#include "shapes.h"
#include "support/folder_tree.h"
#include "support/product_records.h"
#include "support/scratch_folder.h"

namespace Kessel::test {
namespace {

namespace fs = std::filesystem;
using Names = std::set<std::string>;

/// A car with two bolts of one name, one of which has two solids.
class ExtractCommand : public testing::Test {
 protected:
  ExtractCommand() {
    folder_.write("in.stp", whole_file(SHARED_RECORDS + product_records(10, "car", "#3") +
                                       product_records(20, "bolt", "#3,#40,#50") +
                                       product_records(30, "bolt", "#3") + solid_records(40) +
                                       solid_records(50) + usage_record(100, 10, 20) +
                                       usage_record(101, 10, 30)));
  }

  static void expect(std::vector<std::string> arguments, int exit_code, const std::string& out,
                     const std::string& errors) {
    arguments.insert(arguments.begin(), "extract");
    const ProcessRun run = run_velkstep(arguments);
    EXPECT_EQ(run.exit_code, exit_code);
    EXPECT_EQ(run.out, out);
    EXPECT_EQ(run.errors, errors);
  }

  ScratchFolder folder_;
};

TEST_F(ExtractCommand, OnePartBecomesOneFile) {
  expect({"in.stp", "--part", "#20", "-o", "one.stp"}, 0, "one.stp: 14 records\n", "");
  expect({"--quiet", "in.stp", "--part=car", "--output=car.stp"}, 0, "", "");
  EXPECT_EQ(names_in("."), (Names{"car.stp", "in.stp", "one.stp"}));
  EXPECT_EQ(read_file("one.stp").find("'car'"), std::string::npos);
}

TEST_F(ExtractCommand, SeveralPartsGoIntoAFolder) {
  expect({"in.stp", "--part", "#20", "--part", "#30", "-o", "out"}, 0,
         "out/bolt.stp: 14 records\nout/bolt (2).stp: 10 records\n", "");
  EXPECT_EQ(names_in("out"), (Names{"bolt (2).stp", "bolt.stp"}));
  expect({"in.stp", "--part", "#20", "--names=record", "-o", "out"}, 0,
         "out/#21_part.stp: 14 records\n", "");
  expect({"in.stp", "--part", "#20", "--bodies", "-o", "bodies"}, 0,
         "bodies/bolt body 1.stp: 12 records\nbodies/bolt body 2.stp: 12 records\n", "");
}

TEST_F(ExtractCommand, List) {
  expect({"in.stp", "--list"}, 0,
         "Number  Name  Id       Path\n"
         "#10     car   id car   car\n"
         "#20     bolt  id bolt  car/bolt\n"
         "#30     bolt  id bolt  car/bolt\n",
         "");
  const ProcessRun run = run_velkstep({"extract", "in.stp", "--list", "--json"});
  EXPECT_EQ(run.exit_code, 0);
  const nlohmann::json list = nlohmann::json::parse(run.out);
  EXPECT_EQ(list["parts"].size(), 3u);
  EXPECT_EQ(
      list["parts"][1],
      nlohmann::json({{"record", 20}, {"id", "id bolt"}, {"name", "bolt"}, {"path", "car/bolt"}}));
}

TEST_F(ExtractCommand, Json) {
  const ProcessRun run =
      run_velkstep({"extract", "--json", "in.stp", "--part=#20", "--bodies", "-o", "out"});
  EXPECT_EQ(run.exit_code, 0);
  const auto file = [](const char* name, int body) {
    return nlohmann::json({{"record", 20},
                           {"id", "id bolt"},
                           {"name", "bolt"},
                           {"path", "car/bolt"},
                           {"file", name},
                           {"body", body},
                           {"records", 12},
                           {"bytes", fs::file_size(name)},
                           {"copies", nlohmann::json::array()}});
  };
  EXPECT_EQ(nlohmann::json::parse(run.out),
            nlohmann::json(
                {{"format", 1},
                 {"input", "in.stp"},
                 {"output", "out"},
                 {"files", {file("out/bolt body 1.stp", 40), file("out/bolt body 2.stp", 50)}}}));
}

TEST_F(ExtractCommand, AmbiguousAndUnknownNames) {
  expect({"in.stp", "--part", "bolt", "-o", "one.stp"}, 1, "",
         "velkstep: in.stp: There are 2 parts called \"bolt\": #20 (car/bolt), #30 (car/bolt); say "
         "which one by its number. velkstep extract in.stp --list lists all.\n");
  expect({"in.stp", "--part", "bolts", "-o", "one.stp"}, 1, "",
         "velkstep: in.stp: There is no part called \"bolts\"; similar are #20 (car/bolt), #30 "
         "(car/bolt). velkstep extract in.stp --list lists all.\n");
  EXPECT_EQ(names_in("."), Names{"in.stp"});
}

TEST_F(ExtractCommand, TheInputMayStandBehindAPart) {
  expect({"--part", "car", "in.stp", "-o", "one.stp"}, 0, "one.stp: 28 records\n", "");
}

TEST_F(ExtractCommand, NothingIsReplacedUnlessAsked) {
  folder_.write("one.stp", "precious");
  expect({"in.stp", "--part", "car", "-o", "one.stp"}, 1, "",
         "velkstep: one.stp: is there already; --force replaces it\n");
  EXPECT_EQ(read_file("one.stp"), "precious");
  expect({"in.stp", "--part", "car", "-o", "one.stp", "--force"}, 0, "one.stp: 28 records\n", "");
  expect({"in.stp", "--part", "car", "-o", "in.stp", "--force"}, 1, "",
         "velkstep: in.stp: is the input; choose another name\n");
}

TEST_F(ExtractCommand, SplitOfAPartIsThatOfTheExtractedFile) {
  folder_.write(
      "deep.stp",
      whole_file(SHARED_RECORDS + product_records(10, "car", "#3") +
                 product_records(20, "wheel", "#3") + product_records(30, "tyre", "#40") +
                 product_records(50, "door", "#3") + solid_records(40) + usage_record(100, 10, 20) +
                 usage_record(101, 20, 30) + usage_record(102, 10, 50)));
  EXPECT_EQ(run_velkstep({"extract", "deep.stp", "--part", "wheel", "-o", "part.stp"}).exit_code,
            0);
  EXPECT_EQ(run_velkstep({"split", "part.stp", "-o", "expected"}).exit_code, 0);
  const ProcessRun run = run_velkstep({"split", "deep.stp", "--part", "wheel", "-o", "out"});
  EXPECT_EQ(run.exit_code, 0) << run.errors;
  EXPECT_EQ(run.out, "out/wheel.stp\nout/tyre.stp\n");
  EXPECT_EQ(read_file("out/tyre.stp").find("car"), std::string::npos);
  EXPECT_EQ(without_time_stamps(read_file("out/wheel.stp")),
            without_time_stamps(read_file("expected/wheel.stp")));
  EXPECT_EQ(without_time_stamps(read_file("out/tyre.stp")),
            without_time_stamps(read_file("expected/tyre.stp")));
  // Several parts have folders of their own.
  EXPECT_EQ(
      run_velkstep({"split", "deep.stp", "--part=wheel", "--part=#10", "-o", "both"}).exit_code, 0);
  EXPECT_TRUE(names_in("both/wheel").contains("wheel.stp"));
  EXPECT_TRUE(names_in("both/#10").contains("car.stp"));
  const ProcessRun unknown = run_velkstep({"split", "deep.stp", "--part", "weel", "-o", "no"});
  EXPECT_EQ(unknown.exit_code, 1);
  EXPECT_EQ(unknown.errors,
            "velkstep: deep.stp: There is no part called \"weel\"; similar is #20 (car/wheel). "
            "velkstep extract deep.stp --list lists all.\n");
  EXPECT_FALSE(fs::exists("no"));
}

TEST_F(ExtractCommand, WrongUsage) {
  for (const std::vector<std::string>& arguments :
       std::vector<std::vector<std::string>>{{"extract", "in.stp"},
                                             {"extract", "in.stp", "--part", "car"},
                                             {"extract", "in.stp", "-o", "one.stp"},
                                             {"extract", "in.stp", "--list", "--part", "car"},
                                             {"extract", "--part", "car", "-o", "one.stp"}}) {
    const ProcessRun run = run_velkstep(arguments);
    EXPECT_EQ(run.exit_code, 2) << run.errors;
    EXPECT_NE(run.errors, "");
  }
  EXPECT_EQ(names_in("."), Names{"in.stp"});
}

TEST_F(ExtractCommand, UnusableInput) {
  expect({"nowhere.stp", "--part", "car", "-o", "one.stp"}, 1, "",
         "velkstep: nowhere.stp: The file cannot be opened: No such file or directory. Check its "
         "name.\n");
  folder_.write("cut.stp", "ISO-10303-21;\nHEADER;\nENDSEC;\nDATA;\n#1=A('");
  const ProcessRun run = run_velkstep({"extract", "cut.stp", "--part", "car", "-o", "one.stp"});
  EXPECT_EQ(run.exit_code, 1);
  EXPECT_TRUE(run.errors.starts_with("velkstep: cut.stp:5:1: ")) << run.errors;
}

TEST(ExtractInterruption, SignalsToStopLeaveNothingBehind) {
  const ScratchFolder folder;
  std::ofstream out("in.stp", std::ios::binary);
  bench::write_file(out, *bench::find_shape("bodies"), 90, 1);
  out.close();
  const std::vector<std::string> list = {"extract", "in.stp", "--list", "--json"};
  const auto parts = nlohmann::json::parse(run_velkstep(list).out)["parts"];
  std::vector<std::string> all = {"extract", "in.stp", "-o", "out"};
  for (std::size_t i = 0; i < parts.size() && i < 6; ++i) {
    all.push_back("--part=#" + std::to_string(parts[i]["record"].get<int>()));
  }
  const auto begin = std::chrono::steady_clock::now();
  EXPECT_EQ(run_velkstep(all).exit_code, 0);
  const auto lasts = std::chrono::steady_clock::now() - begin;
  fs::remove_all("out");
  int stopped = 0;
  for (int i = 0; i < 5; ++i) {
    const int signal = i % 2 == 0 ? SIGINT : SIGTERM;
    const ProcessRun run = run_velkstep(all, {.signal = signal, .signal_after = lasts * i / 5});
    if (run.exit_code != 0) {
      EXPECT_EQ(run.exit_code, -signal);
      EXPECT_EQ(run.out, "");
      ++stopped;
    } else {
      fs::remove_all("out");
    }
    EXPECT_EQ(names_in("."), Names{"in.stp"});
  }
  EXPECT_GT(stopped, 0);
}

}  // namespace
}  // namespace Kessel::test
