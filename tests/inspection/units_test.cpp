// The units that contexts assign.
#include "inspection/units.h"

#include <gtest/gtest.h>

#include <sstream>

#include "instances/loader.h"
#include "splitter/small_inputs.h"

namespace Kessel::test {
namespace {

/// Sums up the units of some records, one per line.
Summary units_of(const std::string& records) {
  std::string data;
  std::istringstream lines(records);
  for (std::string line; std::getline(lines, line);) data += line + ";\n";
  std::istringstream in(exchange_file(data));
  Instances instances;
  load_instances(in, instances);
  Summary summary;
  sum_up_units(instances, summary);
  return summary;
}

/// Such as "INCH=0.0254 (2), metre=1 (1)".
std::string text_of(const std::vector<UnitUse>& uses) {
  std::ostringstream text;
  text.precision(17);
  for (const UnitUse& use : uses) {
    if (text.tellp() != 0) text << ", ";
    text << use.name << '=' << use.factor << " (" << use.contexts << ')';
  }
  return text.str();
}

std::string lengths_of(const std::string& records) {
  return text_of(units_of(records).length_units);
}

const std::string CONTEXT =
    "#1=(GEOMETRIC_REPRESENTATION_CONTEXT(3)GLOBAL_UNIT_ASSIGNED_CONTEXT((#2,#3))"
    "REPRESENTATION_CONTEXT('',''))\n";

TEST(Units, SiUnitsWithAndWithoutPrefix) {
  const Summary summary = units_of(CONTEXT +
                                   "#2=(LENGTH_UNIT()NAMED_UNIT(*)SI_UNIT(.MILLI.,.METRE.))\n"
                                   "#3=(NAMED_UNIT(*)PLANE_ANGLE_UNIT()SI_UNIT($,.RADIAN.))\n");
  std::ostringstream expected;
  EXPECT_EQ(text_of(summary.length_units), "millimetre=0.001 (1)");
  EXPECT_EQ(text_of(summary.plane_angle_units), "radian=1 (1)");
}

TEST(Units, EveryPrefixIsAPowerOfTen) {
  const std::pair<const char*, double> PREFIXES[] = {
      {"EXA", 1e18},  {"PETA", 1e15},  {"TERA", 1e12},   {"GIGA", 1e9},
      {"MEGA", 1e6},  {"KILO", 1e3},   {"HECTO", 1e2},   {"DECA", 1e1},
      {"DECI", 1e-1}, {"CENTI", 1e-2}, {"MILLI", 1e-3},  {"MICRO", 1e-6},
      {"NANO", 1e-9}, {"PICO", 1e-12}, {"FEMTO", 1e-15}, {"ATTO", 1e-18},
  };
  for (const auto& [prefix, factor] : PREFIXES) {
    const Summary summary =
        units_of(CONTEXT + "#2=(LENGTH_UNIT()NAMED_UNIT(*)SI_UNIT(." + prefix + ".,.METRE.))\n");
    ASSERT_EQ(summary.length_units.size(), 1u) << prefix;
    EXPECT_EQ(summary.length_units[0].factor, factor) << prefix;
  }
}

TEST(Units, ConversionBasedUnitsGoByTheirMeasure) {
  const Summary summary =
      units_of(CONTEXT +
               "#2=(CONVERSION_BASED_UNIT('INCH',#4)LENGTH_UNIT()NAMED_UNIT(#9))\n"
               "#3=(CONVERSION_BASED_UNIT('DEGREE',#6)NAMED_UNIT(#9)PLANE_ANGLE_UNIT())\n"
               "#4=LENGTH_MEASURE_WITH_UNIT(LENGTH_MEASURE(2.54E1),#5)\n"
               "#5=(LENGTH_UNIT()NAMED_UNIT(*)SI_UNIT(.MILLI.,.METRE.))\n"
               "#6=PLANE_ANGLE_MEASURE_WITH_UNIT(PLANE_ANGLE_MEASURE(1.745329251994E-2),#7)\n"
               "#7=(NAMED_UNIT(*)PLANE_ANGLE_UNIT()SI_UNIT($,.RADIAN.))\n");
  ASSERT_EQ(summary.length_units.size(), 1u);
  EXPECT_EQ(summary.length_units[0].name, "INCH");
  EXPECT_EQ(summary.length_units[0].factor, 0.0254);  // Exactly, not 25.4 times a rounded 0.001.
  ASSERT_EQ(summary.plane_angle_units.size(), 1u);
  EXPECT_EQ(summary.plane_angle_units[0].name, "DEGREE");
  EXPECT_EQ(summary.plane_angle_units[0].factor, 1.745329251994E-2);
}

TEST(Units, MeasureMayBeUntypedOrComplex) {
  const std::string inch = "#2=(CONVERSION_BASED_UNIT('in',#4)LENGTH_UNIT()NAMED_UNIT(#9))\n";
  const std::string metre = "#5=(LENGTH_UNIT()NAMED_UNIT(*)SI_UNIT($,.METRE.))\n";
  EXPECT_EQ(lengths_of(CONTEXT + inch + "#4=LENGTH_MEASURE_WITH_UNIT(0.5,#5)\n" + metre),
            "in=0.5 (1)");
  EXPECT_EQ(lengths_of(CONTEXT + inch +
                       "#4=(LENGTH_MEASURE_WITH_UNIT()MEASURE_REPRESENTATION_ITEM()"
                       "MEASURE_WITH_UNIT(LENGTH_MEASURE(0.25),#5)REPRESENTATION_ITEM('x'))\n" +
                       metre),
            "in=0.25 (1)");
}

TEST(Units, ConversionsMayFollowEachOther) {
  EXPECT_EQ(
      lengths_of(CONTEXT + "#2=(CONVERSION_BASED_UNIT('FOOT',#4)LENGTH_UNIT()NAMED_UNIT(#9))\n"
                           "#4=LENGTH_MEASURE_WITH_UNIT(LENGTH_MEASURE(4.),#5)\n"
                           "#5=(CONVERSION_BASED_UNIT('HAND',#6)LENGTH_UNIT()NAMED_UNIT(#9))\n"
                           "#6=LENGTH_MEASURE_WITH_UNIT(LENGTH_MEASURE(25.),#7)\n"
                           "#7=(LENGTH_UNIT()NAMED_UNIT(*)SI_UNIT(.CENTI.,.METRE.))\n"),
      "FOOT=1 (1)");
}

TEST(Units, ConversionsThatLeadNowhereHaveNoFactor) {
  const std::string unit = "#2=(CONVERSION_BASED_UNIT('u',#4)LENGTH_UNIT()NAMED_UNIT(#9))\n";
  EXPECT_EQ(lengths_of(CONTEXT + unit), "u=0 (1)");
  EXPECT_EQ(lengths_of(CONTEXT + unit + "#4=LENGTH_MEASURE_WITH_UNIT(2.,#2)\n"), "u=0 (1)");
  EXPECT_EQ(lengths_of(CONTEXT + unit + "#4=LENGTH_MEASURE_WITH_UNIT(2.,#7)\n"), "u=0 (1)");
  EXPECT_EQ(lengths_of(CONTEXT + unit +
                       "#4=LENGTH_MEASURE_WITH_UNIT(1.E308,#5)\n"
                       "#5=(LENGTH_UNIT()NAMED_UNIT(*)SI_UNIT(.EXA.,.METRE.))\n"),
            "u=0 (1)");
}

TEST(Units, UnitsOfNoContextAndOfOtherKindsDoNotCount) {
  const Summary summary = units_of(CONTEXT +
                                   "#2=(NAMED_UNIT(*)SI_UNIT($,.STERADIAN.)SOLID_ANGLE_UNIT())\n"
                                   "#8=(LENGTH_UNIT()NAMED_UNIT(*)SI_UNIT(.MILLI.,.METRE.))\n");
  EXPECT_EQ(text_of(summary.length_units), "");
  EXPECT_EQ(text_of(summary.plane_angle_units), "");
}

TEST(Units, MostUsedComesFirst) {
  EXPECT_EQ(lengths_of("#11=(GLOBAL_UNIT_ASSIGNED_CONTEXT((#2))REPRESENTATION_CONTEXT('',''))\n"
                       "#12=(GLOBAL_UNIT_ASSIGNED_CONTEXT((#3))REPRESENTATION_CONTEXT('',''))\n"
                       "#13=(GLOBAL_UNIT_ASSIGNED_CONTEXT((#4))REPRESENTATION_CONTEXT('',''))\n"
                       "#2=(LENGTH_UNIT()NAMED_UNIT(*)SI_UNIT(.KILO.,.METRE.))\n"
                       "#3=(LENGTH_UNIT()NAMED_UNIT(*)SI_UNIT($,.METRE.))\n"
                       "#4=(LENGTH_UNIT() NAMED_UNIT(*) SI_UNIT($,.METRE.))\n"),
            "metre=1 (2), kilometre=1000 (1)");
}

}  // namespace
}  // namespace Kessel::test
