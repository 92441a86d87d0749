// What parts can be called by those who ask for one.
#include "extract/part_names.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/loaded_text.h"
#include "support/product_records.h"

namespace Kessel::test {
namespace {

using testing::ElementsAre;

/// A car with wheels, each with a bolt; another bolt that the car has itself; a name with "/", and
/// a part without a name.
class PartNamesTest : public testing::Test {
 protected:
  PartNamesTest()
      : file_(SHARED_RECORDS + product_records(10, "car", "#3") +
              product_records(20, "wheel", "#3") + product_records(30, "bolt", "#3") +
              product_records(40, "bolt", "#3") + product_records(50, "left/right", "#3") +
              "#60=PRODUCT_DEFINITION('design','',$,#1);\n" + placed_usage_records(100, 10, 20) +
              placed_usage_records(110, 20, 30) + placed_usage_records(120, 10, 40) +
              placed_usage_records(130, 20, 50) + usage_record(140, 50, 60)),
        products_(find_products(file_.instances)),
        names_(file_.instances, products_) {}

  std::uint64_t number_of(std::string_view what) const {
    return file_.instances.number(products_.products[names_.find(what)].definition);
  }
  std::string refusal(std::string_view what) const {
    try {
      names_.find(what);
    } catch (const PartError& error) {
      return error.what();
    }
    return "found";
  }

  LoadedText file_;
  Products products_;
  PartNames names_;
};

TEST_F(PartNamesTest, NamesIdsAndNumbers) {
  EXPECT_EQ(number_of("wheel"), 20u);
  EXPECT_EQ(number_of("id wheel"), 20u);
  EXPECT_EQ(number_of("#20"), 20u);
  EXPECT_EQ(number_of("#60"), 60u);
  EXPECT_EQ(number_of("left/right"), 50u);
}

TEST_F(PartNamesTest, PathsBeginAtATop) {
  EXPECT_EQ(number_of("car/bolt"), 40u);
  EXPECT_EQ(number_of("car/wheel/bolt"), 30u);
  EXPECT_EQ(number_of("id car/#20/bolt"), 30u);
  EXPECT_EQ(number_of("car/wheel/left/right"), 50u);
  EXPECT_EQ(number_of("car/wheel/left/right/#60"), 60u);
  EXPECT_EQ(refusal("wheel/bolt"),
            "There is no part called \"wheel/bolt\"; similar are #30 (car/wheel/bolt), #40 "
            "(car/bolt).");
}

TEST_F(PartNamesTest, AmbiguousNamesListTheCandidates) {
  EXPECT_EQ(
      refusal("bolt"),
      "There are 2 parts called \"bolt\": #30 (car/wheel/bolt), #40 (car/bolt); say which one "
      "by its number.");
  try {
    names_.find("bolt");
  } catch (const PartError& error) {
    ASSERT_EQ(error.candidates().size(), 2u);
    EXPECT_EQ(error.candidates()[0].record, 30u);
    EXPECT_EQ(error.candidates()[0].id, "id bolt");
    EXPECT_EQ(error.candidates()[0].name, "bolt");
    EXPECT_EQ(error.candidates()[1].path, "car/bolt");
  }
}

TEST_F(PartNamesTest, UnknownNamesListSimilarOnes) {
  EXPECT_EQ(refusal("Wheell"), "There is no part called \"Wheell\"; similar is #20 (car/wheel).");
  EXPECT_EQ(refusal("20"), "There is no part called \"20\"; similar is #20 (car/wheel).");
  EXPECT_EQ(refusal("shell"), "There is no part called \"shell\".");
  EXPECT_EQ(refusal("xyz"), "There is no part called \"xyz\".");
  EXPECT_EQ(refusal(""), "There is no part called \"\".");
  EXPECT_EQ(refusal("#21"), "There is no part called \"#21\".");
  EXPECT_EQ(refusal("#99999999999999999999"), "There is no part called \"#99999999999999999999\".");
}

TEST_F(PartNamesTest, PathsOfAll) {
  std::vector<std::string> paths;
  for (ProductId product = 0; product < products_.products.size(); ++product) {
    paths.push_back(names_[product].path);
  }
  EXPECT_THAT(paths, ElementsAre("car", "car/wheel", "car/wheel/bolt", "car/bolt",
                                 "car/wheel/left/right", "car/wheel/left/right/#60"));
}

TEST(PartNames, CirclesEnd) {
  LoadedText file(SHARED_RECORDS + product_records(10, "a", "#3") + product_records(20, "b", "#3") +
                  placed_usage_records(100, 10, 20) + placed_usage_records(110, 20, 10));
  const Products products = find_products(file.instances);
  const PartNames names(file.instances, products);
  EXPECT_EQ(names[names.find("b")].path, "a/b");
  EXPECT_EQ(names.find("a/b"), names.find("b"));
  EXPECT_THROW(names.find("a/b/a"), PartError);
}

}  // namespace
}  // namespace Kessel::test
