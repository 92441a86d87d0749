#include "products/file_names.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "support/loaded_text.h"
#include "support/product_records.h"

namespace Kessel::test {
namespace {

/// A product: PRODUCT #n with these first two parameters, version #n+1, definition #n+2, shape
/// #n+3.
std::string called(int n, const std::string& id_and_name) {
  const auto at = [n](int i) { return "#" + std::to_string(n + i); };
  return at(0) + "=PRODUCT(" + id_and_name + ",'',());\n" + at(1) +
         "=PRODUCT_DEFINITION_FORMATION('',''," + at(0) + ");\n" + at(2) +
         "=PRODUCT_DEFINITION('',''," + at(1) + ",$);\n" + at(3) +
         "=PRODUCT_DEFINITION_SHAPE('',''," + at(2) + ");\n" + at(4) +
         "=SHAPE_DEFINITION_REPRESENTATION(" + at(3) + ",#1);\n";
}

/// The names of the products of `records`, and of a root above them.
std::vector<std::string> named(const std::string& records, NameStyle style) {
  const LoadedText file("#1=SHAPE_REPRESENTATION('',(),$);\n" + records);
  const Products all = find_products(file.instances);
  std::vector<ProductId> ids;
  for (ProductId id = 0; id < all.products.size(); ++id) ids.push_back(id);
  ids.push_back(NO_PRODUCT);
  std::vector<std::string> names;
  for (const auto& path : file_names(file.instances, all, ids, style)) {
    const std::u8string name = path.u8string();
    names.emplace_back(name.begin(), name.end());
  }
  return names;
}

using Names = std::vector<std::string>;

const std::string PRODUCTS_WITH_NAMES =
    called(10, "'K-1','bolt'") + called(20, "'K-2','Bolt'") + called(30, "'K-3',''") +
    called(40, "'K-4',$") + called(50, "'K-5','?'") + called(60, "'',''") + called(70, "'#','-'") +
    called(80, "'K-8','#744'") + called(90, "'K-9','\\X2\\652F\\X0\\'") + called(100, "'K','Root'");

TEST(FileNames, AreProductsNamesThenIdsThenNumbers) {
  EXPECT_EQ(named(PRODUCTS_WITH_NAMES, NameStyle::product),
            (Names{"bolt.stp", "Bolt (2).stp", "K-3.stp", "K-4.stp", "K-5.stp", "part 60.stp",
                   "part 70.stp", "_744.stp", "U652F.stp", "Root.stp", "Root (2).stp"}));
}

TEST(FileNames, MayHaveAnyCharacters) {
  EXPECT_EQ(named(PRODUCTS_WITH_NAMES, NameStyle::product_unicode),
            (Names{"bolt.stp", "Bolt (2).stp", "K-3.stp", "K-4.stp", "K-5.stp", "part 60.stp",
                   "part 70.stp", "_744.stp", "支.stp", "Root.stp", "Root (2).stp"}));
}

TEST(FileNames, HaveOneExtension) {
  const std::string records = called(10, "'K-1','lid.step'") + called(20, "'K-2','Lid.STP'") +
                              called(30, "'K-3','lid'") + called(40, "'K-4.stp',''") +
                              called(50, "'','.stp'");
  for (const NameStyle style : {NameStyle::product, NameStyle::product_unicode}) {
    EXPECT_EQ(named(records, style),
              (Names{"lid.stp", "Lid (2).stp", "lid (3).stp", "K-4.stp", "_stp.stp", "Root.stp"}));
  }
}

TEST(FileNames, AreNumbersOnRequest) {
  EXPECT_EQ(named(called(10, "'K-1','bolt'") + called(20, "'K-2','nut'") +
                      "#30=PRODUCT_DEFINITION('','',#11,$);\n"
                      "#31=PRODUCT_DEFINITION_SHAPE('','',#30);\n"
                      "#32=SHAPE_DEFINITION_REPRESENTATION(#31,#1);\n",
                  NameStyle::record),
            (Names{"#10_part.stp", "#20_part.stp", "#10_part_(2)_.stp", "Root.stp"}));
}

}  // namespace
}  // namespace Kessel::test
