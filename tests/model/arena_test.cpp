// Memory for records, handed out front to back.
#include "model/arena.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

namespace Kessel::test {
namespace {

TEST(Arena, MemoryIsAlignedToEight) {
  Arena arena;
  for (const std::size_t size : {1u, 7u, 8u, 9u, 12u, 300'000u, 3u}) {
    EXPECT_EQ(reinterpret_cast<std::uintptr_t>(arena.allocate(size)) % 8, 0u) << size;
  }
}

/// Pieces of memory that are filled, and have to stay so.
class FilledPieces {
 public:
  void add(std::size_t size) {
    const char filling = static_cast<char>(pieces_.size() % 251);
    pieces_.push_back({static_cast<char*>(arena_.allocate(size)), size, filling});
    std::memset(pieces_.back().memory, filling, size);
  }
  void expect_intact() const {
    for (const auto& [memory, size, filling] : pieces_) {
      ASSERT_EQ(std::string(memory, size), std::string(size, filling));
    }
  }

 private:
  struct Piece {
    char* memory;
    std::size_t size;
    char filling;
  };
  Arena arena_;
  std::vector<Piece> pieces_;
};

TEST(Arena, PiecesOfAnySizeNeitherOverlapNorMove) {
  FilledPieces pieces;
  for (std::size_t i = 0; i < 10'000; ++i) pieces.add(1 + i * 7 % 90);
  pieces.add(1'000'000);  // Larger than a block, twice.
  pieces.add(1'000'000);
  for (std::size_t i = 0; i < 10'000; ++i) pieces.add(1 + i * 11 % 90);
  pieces.expect_intact();
}

TEST(Arena, PiecesOfOneSizeFillTheBlocksToTheirEnds) {
  for (const std::size_t size : {8u, 16u, 24u, 40u, 56u, 64u, 72u, 1'000u, 262'144u}) {
    SCOPED_TRACE(size);
    FilledPieces pieces;
    for (std::size_t filled = 0; filled < 600'000; filled += size) pieces.add(size);
    pieces.expect_intact();
  }
}

TEST(Arena, NeighboursStandNextToEachOther) {
  Arena arena;
  auto* first = static_cast<char*>(arena.allocate(12));
  auto* second = static_cast<char*>(arena.allocate(8));
  EXPECT_EQ(second - first, 16);
}

TEST(Arena, ObjectsAreMadeFromTheirArguments) {
  struct Point {
    Point(int x_, std::vector<int>&& y_) : x(x_), y(std::move(y_)) {}
    int x;
    std::vector<int> y;
  };
  Arena arena;
  auto* point = arena.make<Point>(3, std::vector<int>{4, 5});
  EXPECT_EQ(point->x, 3);
  EXPECT_EQ(point->y, (std::vector<int>{4, 5}));
  point->~Point();
}

TEST(Arena, CountsTheBytesThatItTook) {
  constexpr std::uint64_t BLOCK = 256 * 1024;
  Arena arena;
  EXPECT_EQ(arena.bytes(), 0u);
  arena.allocate(8);
  EXPECT_EQ(arena.bytes(), BLOCK);
  arena.allocate(BLOCK - 8);
  EXPECT_EQ(arena.bytes(), BLOCK);
  arena.allocate(1);
  EXPECT_EQ(arena.bytes(), 2 * BLOCK);
  arena.allocate(2 * BLOCK);
  EXPECT_EQ(arena.bytes(), 4 * BLOCK);
}

}  // namespace
}  // namespace Kessel::test
