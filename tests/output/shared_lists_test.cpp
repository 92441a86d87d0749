#include "output/shared_lists.h"

#include <gtest/gtest.h>

#include <ctime>
#include <string>

#include "support/loaded_text.h"

namespace Kessel::test {
namespace {

/// Very many: what takes the product of two such numbers takes half a minute and more.
constexpr FileId MANY = 100'000;

std::string name(std::uint64_t number) {
  return "#" + std::to_string(number);
}

/// Seconds of the processor that `work` takes.
template <class Work>
double seconds_of(Work work) {
  const std::clock_t begin = std::clock();
  work();
  return static_cast<double>(std::clock() - begin) / CLOCKS_PER_SEC;
}

constexpr double A_MOMENT = 5;

Placement placed(const LoadedText& file) {
  Placement placement;
  placement.stands = FileSets(file.instances.size());
  return placement;
}

TEST(SharedLists, AListInVeryManyFilesTakesItsItemsIntoOneEach) {
  std::string items;
  std::string records;
  for (FileId i = 0; i < MANY; ++i) {
    items += (i == 0 ? "" : ",") + name(i + 2);
    records += name(i + 2) + "=A();\n";
  }
  const std::string body = "PRESENTATION_LAYER_ASSIGNMENT('','',(" + items + "))";
  const LoadedText file("#1=" + body + ";\n" + records);
  Placement placement = placed(file);
  for (FileId i = 0; i < MANY; ++i) {
    placement.stands.add(file.at(1), i, Role::own);
    placement.stands.add(file.at(i + 2), i, Role::own);
  }
  const MentioningText text{body, {}, {}};
  EXPECT_LT(seconds_of([&] {
              const SharedLists lists(text, file.instances, placement, file.at(1));
              for (const FileId i : {FileId{0}, MANY / 2, MANY - 1}) {
                EXPECT_TRUE(lists.is_shortened(i));
              }
            }),
            A_MOMENT);
}

TEST(SharedLists, AnItemInVeryManyFilesStandsInTheListsOfEach) {
  const std::string body = "SHAPE_REPRESENTATION('',(#1,#2),$)";
  std::string records = "#1=A();\n#2=A();\n";
  for (FileId i = 0; i < MANY; ++i) records += name(i + 3) + "=" + body + ";\n";
  const LoadedText file(records);
  Placement placement = placed(file);
  placement.stands.add(file.at(2), MANY - 1, Role::own);
  for (FileId i = 0; i < MANY; ++i) {
    placement.stands.add(file.at(1), i, Role::own);
    placement.stands.add(file.at(i + 3), i, Role::own);
  }
  const MentioningText text{body, {}, {}};
  EXPECT_LT(seconds_of([&] {
              for (FileId i = 0; i < MANY; ++i) {
                const SharedLists lists(text, file.instances, placement, file.at(i + 3));
                EXPECT_EQ(lists.is_shortened(i), i != MANY - 1);
              }
            }),
            A_MOMENT);
}

}  // namespace
}  // namespace Kessel::test
