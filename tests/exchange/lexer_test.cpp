#include "exchange/lexer.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

namespace Kessel::Exchange {
namespace {

using enum WordKind;
using Words = std::vector<std::pair<WordKind, std::string>>;

Words words_of(std::string_view text) {
  Words words;
  Lexer lexer(text);
  for (Word word = lexer.next(); word.kind != end; word = lexer.next()) {
    words.emplace_back(word.kind, word.text);
  }
  return words;
}

TEST(Lexer, TakesARecordApart) {
  EXPECT_EQ(words_of("#12=PRODUCT('a',$,*,(#3,.T.),1,2.5E-3);"),
            (Words{{instance, "#12"}, {equals, "="},        {keyword, "PRODUCT"}, {open, "("},
                   {string, "'a'"},   {comma, ","},         {unset, "$"},         {comma, ","},
                   {derived, "*"},    {comma, ","},         {open, "("},          {instance, "#3"},
                   {comma, ","},      {enumeration, ".T."}, {close, ")"},         {comma, ","},
                   {integer, "1"},    {comma, ","},         {real, "2.5E-3"},     {close, ")"},
                   {semicolon, ";"}}));
}

TEST(Lexer, PassesOverBlanksCommentsAndPrintControlDirectives) {
  EXPECT_EQ(words_of(" \t\r\n\v\f/* #1 'it's */\\N\\A/**/\\F\\ /***/\\N\\(/*/ */)/* not closed"),
            (Words{{keyword, "A"}, {open, "("}, {close, ")"}}));
}

TEST(Lexer, GivesTheEndHoweverOftenItIsAsked) {
  Lexer lexer("A ");
  EXPECT_EQ(lexer.next().text, "A");
  EXPECT_EQ(lexer.position(), 1u);
  for (int i = 0; i < 3; ++i) {
    EXPECT_EQ(lexer.next().kind, end);
    EXPECT_EQ(lexer.position(), 2u);
  }
  EXPECT_EQ(Lexer("").next().kind, end);
}

TEST(Lexer, BeginsAnywhere) {
  Lexer lexer("#12=A", 4);
  EXPECT_EQ(lexer.next().text, "A");
}

TEST(Lexer, KnowsAllNames) {
  EXPECT_EQ(words_of("#0012 @7 #PI @E_1 # @"), (Words{{instance, "#0012"},
                                                      {value, "@7"},
                                                      {constant, "#PI"},
                                                      {constant, "@E_1"},
                                                      {other, "#"},
                                                      {other, "@"}}));
}

TEST(Lexer, KnowsUserDefinedAndSmallKeywords) {
  EXPECT_EQ(words_of("!MINE A1_B _X part !"), (Words{{keyword, "!MINE"},
                                                     {keyword, "A1_B"},
                                                     {keyword, "_X"},
                                                     {keyword, "part"},
                                                     {other, "!"}}));
  EXPECT_EQ(words_of("END-ISO-10303-21;"),
            (Words{{keyword, "END-ISO-10303-21"}, {semicolon, ";"}}));
}

TEST(Lexer, KnowsNumbersOfEveryForm) {
  EXPECT_EQ(words_of("0 -12 +3 007 1. -1.5 +1.E+05 0.e-3 1.5D3 .5 - +"), (Words{{integer, "0"},
                                                                                {integer, "-12"},
                                                                                {integer, "+3"},
                                                                                {integer, "007"},
                                                                                {real, "1."},
                                                                                {real, "-1.5"},
                                                                                {real, "+1.E+05"},
                                                                                {real, "0.e-3"},
                                                                                {real, "1.5D3"},
                                                                                {real, ".5"},
                                                                                {other, "-"},
                                                                                {other, "+"}}));
  EXPECT_EQ(words_of("3-4"), (Words{{integer, "3"}, {integer, "-4"}}));
}

TEST(Lexer, KnowsBinariesEnumerationsAndResources) {
  EXPECT_EQ(words_of(R"("0" "1F3a" .UNSET_1. <http://a/b;c='d'/*e*/#f>)"),
            (Words{{binary, "\"0\""},
                   {binary, "\"1F3a\""},
                   {enumeration, ".UNSET_1."},
                   {resource, "<http://a/b;c='d'/*e*/#f>"}}));
}

TEST(Lexer, LetsNoLiteralThatNothingClosesTakeInAnother) {
  EXPECT_EQ(words_of("(.T,'a.b')"), (Words{{open, "("},
                                           {other, "."},
                                           {keyword, "T"},
                                           {comma, ","},
                                           {string, "'a.b'"},
                                           {close, ")"}}));
  EXPECT_EQ(words_of("\"0,'\"'"),
            (Words{{other, "\""}, {integer, "0"}, {comma, ","}, {string, "'\"'"}}));
  EXPECT_EQ(words_of("<A"), (Words{{other, "<"}, {keyword, "A"}}));
  EXPECT_EQ(words_of("A,'b"), (Words{{keyword, "A"}, {comma, ","}, {other, "'b"}}));
}

TEST(Lexer, GivesOtherBytesOneByOne) {
  EXPECT_EQ(words_of("{:}&\xFF"),
            (Words{{other, "{"}, {other, ":"}, {other, "}"}, {other, "&"}, {other, "\xFF"}}));
}

TEST(NumberIn, ReadsUpTo64Bits) {
  EXPECT_EQ(number_in("#12"), 12u);
  EXPECT_EQ(number_in("@007"), 7u);
  EXPECT_EQ(number_in("#18446744073709551615"), 18446744073709551615u);
  EXPECT_EQ(number_in("#0000000000000000000000000000012"), 12u);
  EXPECT_EQ(number_in("#18446744073709551616"), 0u);
  EXPECT_EQ(number_in("#"), 0u);
  EXPECT_EQ(number_in(""), 0u);
  EXPECT_EQ(number_in("#12A"), 0u);
}

}  // namespace
}  // namespace Kessel::Exchange
