// Text on its way to many files: gathered, but in the end the same bytes.
#include "writer/gathered_output.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <memory>
#include <random>
#include <stdexcept>
#include <string>
#include <string_view>
#include <system_error>
#include <utility>
#include <vector>

#include "support/scratch_folder.h"
#include "support/split_run.h"

namespace Kessel::test {
namespace {

constexpr std::size_t KIB = 1024;

class GatheredOutputTest : public testing::Test {
 protected:
  ~GatheredOutputTest() override { Part::free_statics(); }

  /// Makes parts whose files are called "0", "1", ...
  void make_parts(std::size_t count) {
    for (std::size_t i = 0; i < count; ++i) {
      owned_.push_back(std::make_unique<Part>("PRODUCT_DEFINITION"));
      owned_.back()->path = std::to_string(i);
      owned_.back()->list_position = static_cast<std::uint32_t>(i);
      parts_.push_back(owned_.back().get());
    }
  }

  void write(GatheredOutput& output, std::size_t part, std::string_view text) {
    output.write(*parts_[part], [&](std::string& out) { out += text; });
  }

  /// How many parts' files were opened so far; nothing was passed on to the others.
  std::size_t files_opened() const {
    std::size_t count = 0;
    for (const Part* part : parts_) count += std::filesystem::exists(part->path) ? 1 : 0;
    return count;
  }

  /// The text of each part's file, "" where there is none. Closes the files.
  std::vector<std::string> files() {
    Part::free_statics();
    std::vector<std::string> texts;
    for (const Part* part : parts_) {
      texts.push_back(std::filesystem::exists(part->path) ? read_file(part->path) : "");
    }
    return texts;
  }

  ScratchFolder folder_;
  std::vector<std::unique_ptr<Part>> owned_;
  std::vector<Part*> parts_;
};

TEST_F(GatheredOutputTest, PiecesOfEachPartKeepTheirOrder) {
  make_parts(2);
  GatheredOutput output(parts_);
  output.begin(*parts_[0], "begin 0\n") << "more 0\n";
  output.begin(*parts_[1], "begin 1\n") << "more 1\n";
  write(output, 1, "a\n");
  write(output, 0, "b\n");
  write(output, 1, "c\n");
  output.finish();
  EXPECT_EQ(files(), (std::vector<std::string>{"begin 0\nmore 0\nb\n", "begin 1\nmore 1\na\nc\n"}));
}

TEST_F(GatheredOutputTest, PiecesMayComeAfterFinishing) {
  make_parts(1);
  GatheredOutput output(parts_);
  write(output, 0, "a");
  output.finish();
  write(output, 0, "b");
  output.finish();
  EXPECT_EQ(files(), std::vector<std::string>{"ab"});
}

TEST_F(GatheredOutputTest, WhatIsHeldIsPassedOnAtTheEndOfTheObject) {
  make_parts(2);
  {
    GatheredOutput output(parts_);
    write(output, 1, "kept");
    EXPECT_EQ(files_opened(), 0u);
  }
  EXPECT_EQ(files(), (std::vector<std::string>{"", "kept"}));
  EXPECT_FALSE(std::filesystem::exists("0"));  // No text, no file.
}

TEST_F(GatheredOutputTest, DiscardedPartGetsNoFile) {
  make_parts(2);
  GatheredOutput output(parts_);
  output.discard(*parts_[0]);
  std::ostream& stream = output.begin(*parts_[0], "begin");
  stream << "more";
  write(output, 0, "piece");
  write(output, 0, std::string(300 * KIB, 'x'));
  write(output, 1, "other");
  output.finish();
  EXPECT_EQ(&stream, &parts_[0]->stream);
  EXPECT_FALSE(std::filesystem::exists("0"));
  EXPECT_EQ(files(), (std::vector<std::string>{"", "other"}));
}

TEST_F(GatheredOutputTest, FileThatCannotBeOpenedIsReportedOncePerPiece) {
  make_parts(2);
  parts_[0]->path = "missing/0";
  const std::string line = "Could not open missing/0\n";
  GatheredOutput output(parts_);
  EXPECT_EQ(printed_by([&] { output.begin(*parts_[0], "begin") << "more" << 1; }), line);
  EXPECT_EQ(printed_by([&] { write(output, 0, "a"); }), line);
  EXPECT_EQ(printed_by([&] { write(output, 1, "b"); }), "");
  EXPECT_EQ(printed_by([&] { write(output, 0, "c"); }), line);
  EXPECT_EQ(printed_by([&] { output.finish(); }), "");
  EXPECT_EQ(files(), (std::vector<std::string>{"", "b"}));
}

TEST_F(GatheredOutputTest, FileThatCanBeOpenedLaterGetsThePiecesFromThenOn) {
  make_parts(1);
  parts_[0]->path = "late/0";
  GatheredOutput output(parts_);
  EXPECT_EQ(printed_by([&] { output.begin(*parts_[0], "begin"); }), "Could not open late/0\n");
  std::filesystem::create_directory("late");
  write(output, 0, "a");
  write(output, 0, "b");
  output.finish();
  EXPECT_EQ(files(), std::vector<std::string>{"ab"});
}

TEST_F(GatheredOutputTest, PieceThatThrowsAddsNothingAndEarlierOnesAreWritten) {
  make_parts(2);
  const auto run = [&] {
    GatheredOutput output(parts_);
    write(output, 0, "one\n");
    write(output, 1, "two\n");
    output.write(*parts_[0], [](std::string& out) {
      out += "half of thr";
      throw std::out_of_range("invalid vector subscript");
    });
  };
  EXPECT_THROW(run(), std::out_of_range);
  EXPECT_EQ(files(), (std::vector<std::string>{"one\n", "two\n"}));
}

TEST_F(GatheredOutputTest, FilesAreNotOpenedForEverySmallPiece) {
  make_parts(60);
  GatheredOutput output(parts_);
  for (int i = 0; i < 6000; ++i) write(output, static_cast<std::size_t>(i) % 60, "a small piece\n");
  EXPECT_EQ(files_opened(), 0u);
  output.finish();
  EXPECT_EQ(files_opened(), 60u);
}

TEST_F(GatheredOutputTest, TextThatOutgrowsItsRoomMovesAsAWhole) {
  make_parts(12);
  std::vector<std::string> expected(12);
  GatheredOutput output(parts_);
  const auto give = [&](std::size_t part, const std::string& text) {
    write(output, part, text);
    expected[part] += text;
  };
  for (std::size_t part = 0; part < 12; ++part) give(part, "a few records that all share\n");
  // One part after the other grows while those before it get cold and leave their rooms.
  for (std::size_t part = 0; part < 12; ++part) {
    for (int i = 0; i < 20'000; ++i) {
      give(part, std::to_string(i) + " of " + std::to_string(part) + std::string(80, '.') + "\n");
    }
    give(11 - part, "in between\n");
  }
  output.finish();
  EXPECT_TRUE(files() == expected);
}

TEST_F(GatheredOutputTest, LargePieceIsNotHeld) {
  make_parts(2);
  GatheredOutput output(parts_);
  write(output, 0, "held");
  write(output, 1, std::string(1024 * KIB, 'x'));
  EXPECT_EQ(files_opened(), 1u);
  EXPECT_GE(std::filesystem::file_size("1"), 1000 * KIB);
}

/// Gives pieces to parts in turn and expects that what is neither in a file nor in a stream's
/// buffer stays within `limit`.
class HeldText : public GatheredOutputTest,
                 public testing::WithParamInterface<std::pair<std::size_t, std::size_t>> {};

TEST_P(HeldText, NeverExceedsItsLimit) {
  const auto [part_count, limit] = GetParam();
  constexpr std::size_t PIECE = 512;
  constexpr std::size_t STREAM_BUFFERS = 50 * 8 * KIB;
  make_parts(part_count);
  const std::string piece(PIECE, 'x');
  const std::size_t between_looks = limit / 16;
  GatheredOutput output(parts_);
  std::size_t most = 0;
  for (std::size_t written = PIECE; written <= 2 * limit; written += PIECE) {
    write(output, written / PIECE % part_count, piece);
    if (written % between_looks != 0) continue;
    std::size_t held = written;
    for (const Part* part : parts_) {
      std::error_code none;
      const auto size = std::filesystem::file_size(part->path, none);
      if (!none) held -= size;
    }
    most = std::max(most, held);
  }
  EXPECT_LE(most, limit + between_looks + STREAM_BUFFERS);
}

INSTANTIATE_TEST_SUITE_P(PartsAndLimit, HeldText,
                         testing::Values(std::pair(20UL, 4096 * KIB), std::pair(512UL, 8192 * KIB),
                                         std::pair(5000UL, 65536 * KIB)));

TEST_F(GatheredOutputTest, ManyFilesInAnyOrderComeOutAsIfWrittenAtOnce) {
  make_parts(120);
  std::mt19937 engine(7);
  std::vector<std::string> expected(parts_.size());
  GatheredOutput output(parts_);
  for (std::size_t i = 0; i < parts_.size(); ++i) {
    output.begin(*parts_[i], "begin\n");
    expected[i] = "begin\n";
  }
  for (int i = 0; i < 20000; ++i) {
    const std::size_t part = engine() % parts_.size();
    const std::size_t length = engine() % (i % 1000 == 0 ? 300 * KIB : 300);
    const std::string piece = std::to_string(i) + std::string(length, '.') + "\n";
    write(output, part, piece);
    expected[part] += piece;
  }
  output.finish();
  EXPECT_TRUE(files() == expected);
}

}  // namespace
}  // namespace Kessel::test
