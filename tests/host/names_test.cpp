// What the headers show can be named, called and linked.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <filesystem>
#include <map>
#include <queue>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "kessel/encoding.h"
#include "kessel/file.h"
#include "kessel/splitter.h"
#include "splitter/small_inputs.h"
#include "support/scratch_folder.h"

namespace Kessel::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;
using Paths = std::vector<std::filesystem::path>;

TEST(HostNames, FunctionsHaveOneFormAndCanBePointedAt) {
  const auto run = &Kessel::Run;
  const auto from = &File::from;
  const auto extract_parts = &File::extract_parts;

  const ScratchFolder folder;
  folder.write("in.stp", exchange_file(BOX_WITH_LID));
  EXPECT_EQ(run("in.stp", "a"), (Paths{"a/#1_part.stp", "a/#4_part.stp"}));
  File* file = from("in.stp", decode_step_to_utf8);
  (file->*extract_parts)("b");
  Part::free_statics();
  delete file;
  for (const std::string name : {"#1_part.stp", "#4_part.stp"}) {
    EXPECT_EQ(without_time_stamps(read_file("a/" + name)).substr(200),
              without_time_stamps(read_file("b/" + name)).substr(200));
  }
}

TEST(HostNames, StaticsOfPartAreThere) {
  std::map<std::filesystem::path, std::uint32_t>& names = Part::_filenames;
  std::queue<Part*>& opened = Part::_opened_files;
  const std::uint64_t& most = Part::MAX_OPENED_FILE;
  EXPECT_EQ(most, 50u);

  const ScratchFolder folder;
  folder.write("in.stp", exchange_file(BOX_WITH_LID));
  File* file = File::from("in.stp", decode_step_to_utf8);
  file->extract_parts("out");
  EXPECT_THAT(names, ElementsAre(Pair("#1_part", 1), Pair("#4_part", 1)));
  ASSERT_EQ(opened.size(), 2u);
  EXPECT_EQ(opened.front(), file->parts().front());
  Part::free_statics();
  EXPECT_THAT(names, IsEmpty());
  EXPECT_TRUE(opened.empty());
  delete file;
}

TEST(HostNames, RecordMovesIntoARecordOfItsOwnKind) {
  Part part("PRODUCT_DEFINITION");
  EntityWithAttr first("PRODUCT", "a name");
  first.add_reference(7);
  first.part_numbers[&part] = 3;

  EntityWithAttr second(std::move(first));
  EXPECT_EQ(second.type(), "PRODUCT");
  EXPECT_EQ(second.attribute(), "a name");
  EXPECT_THAT(second.get_references(), ElementsAre(7));
  EXPECT_THAT(second.part_numbers, ElementsAre(Pair(&part, 3)));
  EXPECT_THAT(first.get_references(), IsEmpty());  // NOLINT(bugprone-use-after-move)
  EXPECT_THAT(first.part_numbers, IsEmpty());
  EXPECT_EQ(first.attribute(), "a name");

  EntityWithType third(std::move(second));  // From a derived kind.
  EXPECT_EQ(third.type(), "PRODUCT");
  EXPECT_EQ(third.attribute(), "");
  EXPECT_THAT(third.get_references(), ElementsAre(7));

  EntityWithType fourth(std::move(third));
  EXPECT_EQ(fourth.type(), "PRODUCT");
  EXPECT_THAT(fourth.get_references(), ElementsAre(7));
  EXPECT_THAT(fourth.part_numbers, ElementsAre(Pair(&part, 3)));
  EXPECT_THAT(third.get_references(), IsEmpty());  // NOLINT(bugprone-use-after-move)
}

}  // namespace
}  // namespace Kessel::test
