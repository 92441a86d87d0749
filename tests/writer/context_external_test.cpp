// The context type of a representation context that an assembly's file shares.
#include <gtest/gtest.h>

#include <string>

#include "writer/rewrite.h"

namespace Kessel::test {
namespace {

std::string simple(const std::string& text) {
  return make_context_external(text, EntityWithType("GEOMETRIC_REPRESENTATION_CONTEXT"));
}

std::string complex(const std::string& text) {
  return make_context_external(
      text, EntityWithType("GEOMETRIC_REPRESENTATION_CONTEXT(3) REPRESENTATION_CONTEXT('','')"));
}

TEST(ContextExternal, SimpleInstanceGetsItAsSecondAttribute) {
  EXPECT_EQ(simple("#4=GEOMETRIC_REPRESENTATION_CONTEXT('id','3D',3)"),
            "#4=GEOMETRIC_REPRESENTATION_CONTEXT('id','external',3)");
}

TEST(ContextExternal, WhatStandsBetweenTheFirstTwoCommasGoes) {
  EXPECT_EQ(simple("#4=GEOMETRIC_REPRESENTATION_CONTEXT('id', $ ,3,4)"),
            "#4=GEOMETRIC_REPRESENTATION_CONTEXT('id','external',3,4)");
  EXPECT_EQ(simple("#4=GEOMETRIC_REPRESENTATION_CONTEXT('id',,3)"),
            "#4=GEOMETRIC_REPRESENTATION_CONTEXT('id','external',3)");
  EXPECT_EQ(simple("#4=GEOMETRIC_REPRESENTATION_CONTEXT('a,b','3D',3)"),
            "#4=GEOMETRIC_REPRESENTATION_CONTEXT('a,'external','3D',3)");
}

TEST(ContextExternal, SimpleInstanceWithFewerThanTwoCommasStays) {
  for (const char* text :
       {"#4=GEOMETRIC_REPRESENTATION_CONTEXT('id','3D')",
        "#4=GEOMETRIC_REPRESENTATION_CONTEXT('id')", "#4=GEOMETRIC_REPRESENTATION_CONTEXT()", ""}) {
    EXPECT_EQ(simple(text), text);
  }
}

TEST(ContextExternal, ComplexInstanceGetsItIntoItsRepresentationContext) {
  EXPECT_EQ(complex("#4=(GEOMETRIC_REPRESENTATION_CONTEXT(3)"
                    "GLOBAL_UNIT_ASSIGNED_CONTEXT((#1,#2))REPRESENTATION_CONTEXT('id','3D'))"),
            "#4=(GEOMETRIC_REPRESENTATION_CONTEXT(3)"
            "GLOBAL_UNIT_ASSIGNED_CONTEXT((#1,#2))REPRESENTATION_CONTEXT('id','external'))");
}

TEST(ContextExternal, ComplexInstanceMayNameItsRepresentationContextFirst) {
  EXPECT_EQ(complex("#4=(REPRESENTATION_CONTEXT('id','3D')GEOMETRIC_REPRESENTATION_CONTEXT(3))"),
            "#4=(REPRESENTATION_CONTEXT('id','external')GEOMETRIC_REPRESENTATION_CONTEXT(3))");
}

TEST(ContextExternal, ComplexInstanceIsSearchedFromItsRepresentationContextOn) {
  EXPECT_EQ(complex("#4=(A(1,2)REPRESENTATION_CONTEXT('f(x)','3D')B(3,4))"),
            "#4=(A(1,2)REPRESENTATION_CONTEXT('f(x)','external')B(3,4))");
  // The text is not parsed: the next comma may be another entity's.
  EXPECT_EQ(complex("#4=(A(1,2)REPRESENTATION_CONTEXT()B(3,4))"),
            "#4=(A(1,2)REPRESENTATION_CONTEXT()B(3,'external'))");
}

TEST(ContextExternal, ComplexInstanceWithoutTheAttributeStays) {
  for (const char* text : {
           "#4=(GEOMETRIC_REPRESENTATION_CONTEXT(3,4)PARAMETRIC_REPRESENTATION_CONTEXT(5,6))",
           "#4=(GEOMETRIC_REPRESENTATION_CONTEXT(3)REPRESENTATION_CONTEXT('id'))",
           "#4=(GEOMETRIC_REPRESENTATION_CONTEXT(3)REPRESENTATION_CONTEXT('id','3D'",
           "#4=(GEOMETRIC_REPRESENTATION_CONTEXT(3)REPRESENTATION_CONTEXT ('id','3D'))",
           "",
       }) {
    EXPECT_EQ(complex(text), text);
  }
}

}  // namespace
}  // namespace Kessel::test
