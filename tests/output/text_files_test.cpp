#include "output/text_files.h"

#include <gtest/gtest.h>

#include <fstream>
#include <sstream>

#include "kessel/errors.h"
#include "support/scratch_folder.h"

namespace Kessel::test {
namespace {

std::string content(const std::filesystem::path& path) {
  std::ifstream in(path, std::ios::binary);
  std::ostringstream text;
  text << in.rdbuf();
  return text.str();
}

std::vector<std::filesystem::path> paths(const ScratchFolder& folder, std::size_t count) {
  std::vector<std::filesystem::path> paths;
  for (std::size_t i = 0; i < count; ++i) paths.push_back(folder / (std::to_string(i) + ".txt"));
  return paths;
}

TEST(TextFiles, KeepTheOrderOfEachFileAndTheirSizes) {
  const ScratchFolder folder;
  TextFiles files(paths(folder, 2));
  files.write(0, "a");
  files.write(1, "x");
  files.write(0, "b");
  EXPECT_EQ(files.size(0), 2u);
  files.finish();
  EXPECT_EQ(content(files.path(0)), "ab");
  EXPECT_EQ(content(files.path(1)), "x");
}

TEST(TextFiles, ManyFilesAndMoreTextThanIsHeld) {
  const ScratchFolder folder;
  constexpr std::size_t COUNT = 120;  // more than may be open
  TextFiles files(paths(folder, COUNT));
  std::vector<std::string> expected(COUNT);
  for (int round = 0; round < 60; ++round) {
    for (std::size_t i = 0; i < COUNT; ++i) {
      // Some are cold for most of the time, and some get little at all.
      if (i % 3 == 0 && round % 20 != 0) continue;
      const std::string piece(i % 5 == 0 ? 10 : 3000, static_cast<char>('a' + (round + i) % 26));
      files.write(i, piece);
      expected[i] += piece;
    }
  }
  files.finish();
  for (std::size_t i = 0; i < COUNT; ++i) EXPECT_EQ(content(files.path(i)), expected[i]) << i;
}

TEST(TextFiles, SayWhichFileCannotBeOpened) {
  const ScratchFolder folder;
  TextFiles files({folder / "no" / "folder.txt"});
  files.write(0, "a");
  try {
    files.finish();
    FAIL() << "nothing was thrown";
  } catch (const OutputError& error) {
    EXPECT_EQ(error.path(), folder / "no" / "folder.txt");
    EXPECT_EQ(error.reason(), std::errc::no_such_file_or_directory);
  }
}

TEST(TextFiles, SayWhichFileCannotBeWritten) {
  TextFiles files({"/dev/full"});
  files.write(0, std::string(100000, 'x'));
  try {
    files.finish();
    FAIL() << "nothing was thrown";
  } catch (const OutputError& error) {
    EXPECT_EQ(error.reason(), std::errc::no_space_on_device);
  }
}

}  // namespace
}  // namespace Kessel::test
