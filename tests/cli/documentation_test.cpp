// What docs/output-files.md shows is what comes out.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <nlohmann/json.hpp>
#include <sstream>
#include <string>
#include <vector>

#include "cli/run_process.h"
#include "shapes.h"
#include "support/scratch_folder.h"

namespace Kessel::test {
namespace {

namespace fs = std::filesystem;

/// The words of the first line of `page` that begins with "    velkstep ", without "velkstep".
std::vector<std::string> command_in(const std::string& page) {
  const std::string mark = "\n    velkstep ";
  const std::size_t begin = page.find(mark) + mark.size();
  std::istringstream line(page.substr(begin, page.find('\n', begin) - begin));
  std::vector<std::string> words;
  for (std::string word; line >> word;) words.push_back(word);
  return words;
}

/// The text between the fences around the block that begins with `begin`.
std::string block_in(const std::string& page, const std::string& begin) {
  const std::size_t at = page.find("```\n" + begin);
  if (at == std::string::npos) return {};
  return page.substr(at + 4, page.find("```", at + 4) - at - 4);
}

TEST(Documentation, ReferenceBlockStandsInTheFileThatThePageNames) {
  const fs::path project = PROJECT_FOLDER;
  const std::string page = read_file(project / "docs/output-files.md");
  std::vector<std::string> words = command_in(page);
  ASSERT_EQ(words.size(), 3u);
  words[1] =
      (project / words[1]).string();  // The page names the example from the project's folder.

  const ScratchFolder folder;
  EXPECT_EQ(run_velkstep(words).exit_code, 0);
  const std::string block = block_in(page, "/*~*/#78=DOCUMENT_TYPE");
  EXPECT_EQ(std::count(block.begin(), block.end(), '\n'), 16);
  EXPECT_NE(read_file("lamp/Arm.stp").find(block), std::string::npos) << block;
}

/// A list without what is another one in each run, and without what stands between its ends.
nlohmann::json list_in(const std::string& text) {
  nlohmann::json list = nlohmann::json::parse(text);
  nlohmann::json& files = list["files"];
  for (nlohmann::json& file : files) file.erase("hash");
  files.back().erase("bytes");  // The page's, which is no matter of this one.
  files = {files.front(), files.back()};
  return list;
}

TEST(Documentation, ListOfASplitIsAsThePageShowsIt) {
  const std::string page = read_file(fs::path(PROJECT_FOLDER) / "docs/output-files.md");
  const std::size_t begin = page.find("```json\n") + 8;
  const ScratchFolder folder;
  fs::copy(VELKSTEP_EXAMPLE, "lamp.step");
  EXPECT_EQ(run_velkstep({"report", "lamp.step"}).exit_code, 0);
  EXPECT_EQ(list_in(page.substr(begin, page.find("```", begin) - begin)),
            list_in(read_file("lamp/velkstep-split.json")));
}

TEST(Documentation, ExamplesAreWhatTheGeneratorWrites) {
  for (const char* name : {"vice", "example"}) {
    const bench::Shape& shape = *bench::find_shape(name);
    std::ostringstream out;
    bench::write_file(out, shape, 1, 1);
    EXPECT_EQ(out.str(), read_file(fs::path(PROJECT_FOLDER) / "examples" / shape.file_name));
  }
}

}  // namespace
}  // namespace Kessel::test
