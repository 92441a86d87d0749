#include "sameness/text_hash.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

#include "instances/collectors.h"

namespace Kessel::Sameness {
namespace {

void expect_same(const std::vector<std::string_view>& texts) {
  for (const std::string_view text : texts) {
    EXPECT_EQ(text_hash(text), text_hash(texts.front())) << text;
  }
}

void expect_different(const std::vector<std::string_view>& texts) {
  for (std::size_t i = 0; i < texts.size(); ++i) {
    for (std::size_t j = 0; j < i; ++j) {
      EXPECT_NE(text_hash(texts[i]), text_hash(texts[j])) << texts[i] << " and " << texts[j];
    }
  }
}

TEST(TextHash, RealsByTheirValues) {
  expect_same({"A(1.)", "A(1.0)", "A(1.E0)", "A(10.E-1)", "A(0.1E+01)", "A(+1.)", "A(001.)",
               "A(.1E1)", "A(1.0000000000000000000000000000E+00)", "A(1.e0)"});
  expect_same({"A(0.)", "A(-0.)", "A(0.0E5)", "A(000.E-7)"});
  expect_same({"A(1234567890123456789012.)", "A(1.234567890123456789012E21)"});
  expect_same({"A(-12.5)", "A(-125.E-1)"});
  expect_different({"A(1.)", "A(-1.)", "A(10.)", "A(0.1)", "A(1.1)", "A(1.0000000000000000000001)",
                    "A(1.0000000000000000000002)", "A(1.E400)", "A(1.E401)", "A(0.)", "A(12.)",
                    "A(1.2)", "A(120.)", "A(1.02)", "A(1.234567890123456789)",
                    "A(1.2345678901234567895)", "A(1.23456789012345678905)"});
}

TEST(TextHash, IntegersAreNoReals) {
  expect_same({"A(7)", "A(+7)", "A(007)"});
  expect_different({"A(7)", "A(7.)", "A(-7)", "A(70)", "A(77)", "A(0)", "A($)"});
}

TEST(TextHash, StringsByWhatTheySay) {
  expect_same({"A('Tür')", "A('T\\X\\FCr')", "A('T\\X2\\00FC\\X0\\r')", "A('T\\S\\|r')",
               "A('T\\X4\\000000FC\\X0\\r')", "A('T\xFCr')"});
  expect_same({"A('bolt')", "A('bo\\X\\6Ct')", "A('bo\nlt')"});
  expect_different({"A('')", "A(' ')", "A('a')", "A('A')", "A('a''')", "A('a\\\\')", "A($)", "A(a)",
                    "A('bolt')", "A('bolt '))", "A('12345678')", "A('123456789')"});
}

TEST(TextHash, BlanksAndCommentsSayNothing) {
  expect_same({"A(1.,'b',#3,(.T.,*))", " A ( 1. , 'b'\n,\t#77 /* no ) ' */ ,(.T./**/,*))",
               "A(1.,'b',#0003,(.T.,*))\r\n"});
}

TEST(TextHash, StructureMatters) {
  expect_different({"A(#1,#2)", "A(#1)", "A((#1),#2)", "A((#1,#2))", "A(#1,$)", "A(#1,*)",
                    "B(#1,#2)", "A(#1,B(#2))", "A()", "(A()B(#1,#2))", "(A(#1)B(#2))",
                    "A(\"0F\",#1)", "A(.X.,#1)", "A(#1,.X.)"});
}

TEST(TextHash, AListOfACollectorIsASet) {
  const auto hash = [](std::string_view body) { return text_hash(body, collected_lists(body)); };
  EXPECT_EQ(hash("SHAPE_REPRESENTATION('',(#1,#2,#3),#4)"),
            hash("SHAPE_REPRESENTATION('',(#9),#4)"));
  EXPECT_NE(hash("SHAPE_REPRESENTATION('',(#1,#2,#3),#4)"),
            hash("SHAPE_REPRESENTATION('x',(#1,#2,#3),#4)"));
  EXPECT_NE(hash("SHAPE_REPRESENTATION('',(#1),#4)"), hash("SHAPE_REPRESENTATION('',(#1),$)"));
}

}  // namespace
}  // namespace Kessel::Sameness
