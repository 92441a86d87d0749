// velkstep report: what it prints and writes, and what data its page holds.
#include <gtest/gtest.h>

#include <filesystem>
#include <nlohmann/json.hpp>
#include <set>
#include <string>

#include "cli/run_process.h"
#include "kessel/split_list.h"
#include "splitter/small_inputs.h"
#include "support/folder_tree.h"
#include "support/scratch_folder.h"

namespace Kessel::test {
namespace {

namespace fs = std::filesystem;
using Json = nlohmann::json;

/// The text of the page's data element, up to the first thing that ends it for a browser.
std::string data_text(const std::string& page) {
  const std::string begin = R"(<script type="application/json" id="data">)";
  const std::size_t at = page.find(begin);
  if (at == std::string::npos) return {};
  const std::size_t from = at + begin.size();
  return page.substr(from, page.find("</script", from) - from);
}

std::size_t occurrences(const std::string& text, const std::string& what) {
  std::size_t count = 0;
  for (std::size_t at = text.find(what); at != std::string::npos; at = text.find(what, at + 1)) {
    ++count;
  }
  return count;
}

class ReportCommand : public testing::Test {
 protected:
  void write_box() { folder_.write("in.stp", exchange_file(BOX_WITH_LID)); }

  ScratchFolder folder_;
};

TEST_F(ReportCommand, SplitsAndPrintsThePath) {
  write_box();
  const ProcessRun run = run_velkstep({"report", "in.stp", "./out/."});
  EXPECT_EQ(run.exit_code, 0);
  EXPECT_EQ(run.out, "out/report.html\n");
  EXPECT_EQ(run.errors, "");
  EXPECT_TRUE(read_file("out/report.html").starts_with("<!doctype html>\n"));
  const auto list = read_split_list("out");
  ASSERT_TRUE(list.has_value());
  ASSERT_EQ(list->files.size(), 3u);
  EXPECT_EQ(list->files[2].name, "report.html");
  EXPECT_EQ(list->files[2].record, 0u);
  EXPECT_EQ(state_of(list->files[2], "out"), ListedState::unchanged);
  EXPECT_EQ(run_velkstep({"split", "in.stp", "split"}).exit_code, 0);
  EXPECT_EQ(differences(tree_of("out"), tree_of("split")),
            (std::set<std::string>{"report.html", SPLIT_LIST}));
}

TEST_F(ReportCommand, QuietPrintsNothing) {
  write_box();
  const ProcessRun run = run_velkstep({"report", "--quiet", "in.stp", "out"});
  EXPECT_EQ(run.exit_code, 0);
  EXPECT_EQ(run.out + run.errors, "");
  EXPECT_TRUE(fs::exists("out/report.html"));
}

TEST_F(ReportCommand, DataHoldsPartsFilesAndUses) {
  write_box();
  ASSERT_EQ(run_velkstep({"report", "in.stp", "out"}).exit_code, 0);
  const Json expected = Json::parse(R"({
    "input": "in.stp", "assemblies": "nested", "names": "product", "roots": [0],
    "header": {"system": "", "preprocessor": "", "authors": ["me"], "organisations": ["us"],
               "time": "then", "schemas": ["AUTOMOTIVE_DESIGN"], "units": [], "records": 12},
    "findings": [], "pictures": "drawn", "colours": [],
    "parts": [
      {"record": "3", "id": "box", "name": "box", "kind": "assembly", "file": "box.stp",
       "total": "1", "components": [{"part": 1, "count": 1}], "used_in": [], "placed": [1],
       "placements": "AACAPwAAAAAAAAAAAAAAAAAAAAAAAIA/AAAAAAAAAAAAAAAAAAAAAAAAgD8AAAAA"},
      {"record": "6", "id": "lid", "name": "lid", "kind": "part", "file": "lid.stp",
       "total": "1", "components": [], "used_in": [{"part": 0, "count": 1}]}]})");
  Json data = Json::parse(data_text(read_file("out/report.html")));
  for (Json& part : data["parts"]) {
    const std::string file = read_file("out/" + part["file"].get<std::string>());
    EXPECT_EQ(part["bytes"], file.size());
    EXPECT_EQ(part["records"], occurrences(file, "\n#") + occurrences(file, "*/#"));
    part.erase("bytes");
    part.erase("records");
  }
  EXPECT_EQ(data["header"]["bytes"], fs::file_size("in.stp"));
  data["header"].erase("bytes");
  EXPECT_EQ(data, expected);
}

TEST_F(ReportCommand, PicturesAreLinesInTheirBoxesAndPlaces) {
  ASSERT_EQ(run_velkstep({"report", VELKSTEP_EXAMPLE, "out"}).exit_code, 0);
  const Json data = Json::parse(data_text(read_file("out/report.html")));
  EXPECT_EQ(data["colours"].size(), 6U);
  for (const Json& part : data["parts"]) {
    const bool is_assembly = part["kind"] == "assembly";
    EXPECT_EQ(part["unit"], "millimetre") << part;
    EXPECT_EQ(part["box"].size(), 6U) << part;
    EXPECT_EQ(part.contains("lines"), !is_assembly) << part;
    if (is_assembly) {
      std::size_t uses = 0;
      for (const Json& use : part["components"]) uses += use["count"].get<std::size_t>();
      EXPECT_EQ(part["placed"].size(), uses) << part;
      EXPECT_EQ(part["placements"].get<std::string>().size(), 64 * uses) << part;
    } else {
      EXPECT_EQ(part["frame"], part["box"]) << part;
    }
  }
}

TEST_F(ReportCommand, NoPicturesLeavesThemOut) {
  ASSERT_EQ(run_velkstep({"report", "--no-pictures", VELKSTEP_EXAMPLE, "out"}).exit_code, 0);
  const Json data = Json::parse(data_text(read_file("out/report.html")));
  EXPECT_EQ(data["pictures"], "not asked");
  EXPECT_FALSE(data.contains("colours"));
  for (const Json& part : data["parts"]) {
    for (const char* const key : {"box", "unit", "frame", "lines", "colour", "placements"}) {
      EXPECT_FALSE(part.contains(key)) << part;
    }
  }
}

TEST_F(ReportCommand, FindingsOfTheInputAreInTheData) {
  folder_.write("in.stp", exchange_file(std::string(BOX_WITH_LID) + "#99=NOTE(#98);\n"));
  ASSERT_EQ(run_velkstep({"report", "in.stp", "out"}).exit_code, 0);
  const Json data = Json::parse(data_text(read_file("out/report.html")));
  ASSERT_EQ(data["findings"].size(), 1U) << data["findings"];
  EXPECT_EQ(data["findings"][0]["severity"], "warning");
  EXPECT_NE(data["findings"][0]["sentence"].get<std::string>().find("#98"), std::string::npos);
}

TEST_F(ReportCommand, SizesAreThoseOfTheFiles) {
  ASSERT_EQ(run_velkstep({"report", VELKSTEP_EXAMPLE, "out"}).exit_code, 0);
  const Json data = Json::parse(data_text(read_file("out/report.html")));
  ASSERT_EQ(data["parts"].size(), 14U);
  for (const Json& part : data["parts"]) {
    EXPECT_EQ(part["bytes"], fs::file_size("out/" + part["file"].get<std::string>())) << part;
  }
}

TEST_F(ReportCommand, UsesThatCloseACycleSayIt) {
  folder_.write("in.stp", exchange_file(CYCLE));
  ASSERT_EQ(run_velkstep({"report", "in.stp", "out"}).exit_code, 0);
  const Json data = Json::parse(data_text(read_file("out/report.html")));
  EXPECT_EQ(data["roots"], Json::parse("[0]"));
  EXPECT_EQ(data["parts"][0]["components"], Json::parse(R"([{"part": 1, "count": 1}])"));
  EXPECT_EQ(data["parts"][1]["components"],
            Json::parse(R"([{"part": 0, "count": 1, "closes_cycle": true}])"));
}

TEST_F(ReportCommand, NamesStayDataWhateverTheyHold) {
  const std::string name = "</script><script>alert(1)</script><!--&quot";
  std::string records(BOX_WITH_LID);
  const std::string plain = "'box','box'";
  records.replace(records.find(plain), plain.size(), "'" + name + "','" + name + "'");
  folder_.write("in.stp", exchange_file(records));
  folder_.write("box.stp", exchange_file(BOX_WITH_LID));
  ASSERT_EQ(run_velkstep({"report", "box.stp", "box"}).exit_code, 0);
  ASSERT_EQ(run_velkstep({"report", "in.stp", "out"}).exit_code, 0);
  const std::string page = read_file("out/report.html");
  const std::string text = data_text(page);
  EXPECT_EQ(Json::parse(text)["parts"][0]["name"], name);
  EXPECT_EQ(text.find('<'), std::string::npos);
  EXPECT_EQ(occurrences(page, "<script"), occurrences(read_file("box/report.html"), "<script"));
}

TEST_F(ReportCommand, PageNamesNothingToLoad) {
  write_box();
  ASSERT_EQ(run_velkstep({"report", "in.stp", "out"}).exit_code, 0);
  const std::string page = read_file("out/report.html");
  for (const char* text :
       {"http:", "https:", "url(", "@import", " src=", "fetch(", "@DATA@", "@STYLE@", "@SCRIPT@"}) {
    EXPECT_EQ(page.find(text), std::string::npos) << text;
  }
  EXPECT_EQ(occurrences(page, "default-src 'none'"), 1U);
}

TEST_F(ReportCommand, PageThatIsThereIsReplacedWithForceOnly) {
  write_box();
  fs::create_directory("out");
  folder_.write("out/report.html", "mine");
  EXPECT_EQ(run_velkstep({"report", "in.stp", "out"}).exit_code, 1);
  EXPECT_EQ(read_file("out/report.html"), "mine");
  EXPECT_FALSE(fs::exists("out/box.stp"));
  EXPECT_EQ(run_velkstep({"report", "--force", "in.stp", "out"}).exit_code, 0);
  EXPECT_TRUE(read_file("out/report.html").starts_with("<!doctype html>\n"));
}

TEST_F(ReportCommand, OnePartIsNothingToReportToHosts) {
  folder_.write("in.stp", exchange_file(LID_ALONE));
  const ProcessRun run = run_velkstep({"report", "--classic", "in.stp", "out"});
  EXPECT_EQ(run.exit_code, 3);
  EXPECT_EQ(run.out, "");
  EXPECT_EQ(run.errors,
            std::string(ONLY_ONE_PART) +
                "velkstep: in.stp: holds one part or none, of which a classic split makes nothing; "
                "without --classic it is copied\n");
  EXPECT_FALSE(fs::exists("out/report.html"));
}

}  // namespace
}  // namespace Kessel::test
