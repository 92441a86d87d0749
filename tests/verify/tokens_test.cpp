// Words of records.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "verify/tokens.h"

namespace Kessel::test {
namespace {

/// The words of `text`, each behind a letter for its kind, with "|" between.
std::string words(std::string_view text) {
  std::vector<Token> tokens;
  take_apart(text, tokens);
  std::string all;
  for (const Token& token : tokens) {
    all += (all.empty() ? "" : "|");
    all += "rskvm?"[static_cast<int>(token.kind)];
    all += token.text;
  }
  return all;
}

bool well_formed(std::string_view text) {
  std::vector<Token> tokens;
  take_apart(text, tokens);
  return is_well_formed(tokens);
}

TEST(Tokens, OfEachKind) {
  EXPECT_EQ(words("#1=A_B2('x',#2,$,*,1.5E-3,-7,.T.,\"0FF\",(),!USER(1))"),
            "r#1|m=|kA_B2|m(|s'x'|m,|r#2|m,|v$|m,|v*|m,|v1.5E-3|m,|v-7|m,|v.T.|m,|v\"0FF\"|m,|m(|m)"
            "|m,|k!USER|m(|v1|m)|m)");
}

TEST(Tokens, WhiteSpaceAndCommentsAreNone) {
  EXPECT_EQ(words(" #1 \n=\tA /* ( ' */ (\v)\f\r"), "r#1|m=|kA|m(|m)");
}

TEST(Tokens, StringsHoldDoubledApostrophesAndAllElse) {
  EXPECT_EQ(words("'it''s' '' '''' 'a /* #1 */\n'"), "s'it''s'|s''|s''''|s'a /* #1 */\n'");
}

TEST(Tokens, WhatIsNotClosedIsOneStrayWord) {
  EXPECT_EQ(words("A 'b c"), "kA|?'b c");
  EXPECT_EQ(words("A 'b''"), "kA|?'b''");
  EXPECT_EQ(words("A /* b c"), "kA|?/* b c");
  EXPECT_EQ(words("A \"0"), "kA|?\"0");
}

TEST(Tokens, PointThatBeginsNoValueIsStray) {
  EXPECT_EQ(words("A .T"), "kA|?.|kT");
  EXPECT_EQ(words("''.'',#7,.."), "s''|?.|s''|m,|r#7|m,|?.|?.");
}

TEST(Tokens, NumberSignWithoutANumberIsStray) {
  EXPECT_EQ(words("# #0 #x #4294967296 #4294967295"), "?#|?#0|?#|kx|?#4294967296|r#4294967295");
}

TEST(Tokens, ReferencesAreTheSameByTheirNumber) {
  std::vector<Token> tokens;
  take_apart("#7 #007 #8 '7' '07'", tokens);
  EXPECT_TRUE(tokens[0] == tokens[1]);
  EXPECT_FALSE(tokens[0] == tokens[2]);
  EXPECT_FALSE(tokens[3] == tokens[4]);
}

TEST(WellFormed, Records) {
  EXPECT_TRUE(well_formed("#1=A()"));
  EXPECT_TRUE(well_formed("#1=A('',#2,(1,(2,())),B(3))"));
  EXPECT_TRUE(well_formed("#1=(A()B(1)C('',$))"));
}

TEST(WellFormed, OtherTexts) {
  for (const char* text :
       {"",         "#1",       "#1=",        "#1=A",       "#1=A(",        "#1=A())",   "A()",
        "#1 A()",   "#1=()",    "#1=(A)",     "#1=(A()",    "#1=(A(),B())", "#1=A()B()", "#1=A(,)",
        "#1=A(1,)", "#1=A(,1)", "#1=A(1 2)",  "#1=A(1(2))", "#1=A(B)",      "#1=A(B,1)", "#1=A(=)",
        "#1=A(;)",  "#1=A('x)", "#1=A((1)2)", "#0=A()"}) {
    EXPECT_FALSE(well_formed(text)) << text;
  }
}

TEST(WellFormed, NestingOfAnyDepth) {
  const std::string open(1'000'000, '(');
  const std::string close(1'000'000, ')');
  EXPECT_TRUE(well_formed("#1=A" + open + close));
  EXPECT_FALSE(well_formed("#1=A" + open + close + ")"));
}

}  // namespace
}  // namespace Kessel::test
