// velkstep info: text and JSON, one input and several.
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <string>

#include "cli/run_process.h"
#include "inspection/products.h"
#include "support/scratch_folder.h"

namespace Kessel::test {
namespace {

using Json = nlohmann::json;

const std::string UNITS =
    "#31=(GLOBAL_UNIT_ASSIGNED_CONTEXT((#33,#34))REPRESENTATION_CONTEXT('',''));\n"
    "#32=(GLOBAL_UNIT_ASSIGNED_CONTEXT((#35))REPRESENTATION_CONTEXT('',''));\n"
    "#33=(LENGTH_UNIT()NAMED_UNIT(*)SI_UNIT(.MILLI.,.METRE.));\n"
    "#34=(NAMED_UNIT(*)PLANE_ANGLE_UNIT()SI_UNIT($,.RADIAN.));\n"
    "#35=(CONVERSION_BASED_UNIT('INCH',#36)LENGTH_UNIT()NAMED_UNIT(#39));\n"
    "#36=LENGTH_MEASURE_WITH_UNIT(LENGTH_MEASURE(25.4),#33);\n";

const std::string ONE_WARNING = "velkstep: in.stp: 1 warning; velkstep check in.stp lists it\n";

TEST(InfoCommand, PrintsHeaderAndCounts) {
  const ScratchFolder folder;
  folder.write("in.stp", exchange_file(std::string(BOX_WITH_LID) + UNITS));
  const ProcessRun run = run_velkstep({"info", "in.stp"});
  EXPECT_EQ(run.exit_code, 0);
  EXPECT_EQ(run.errors, ONE_WARNING) << "#39 is missing";
  EXPECT_EQ(run.out,
            "in.stp\n"
            "  Name                in.stp\n"
            "  Description         small\n"
            "  Time                then\n"
            "  Authors             me\n"
            "  Organisations       us\n"
            "  Schema              AUTOMOTIVE_DESIGN\n"
            "  Implementation      2;1\n"
            "  Size                1,055 bytes\n"
            "  Records             18 of 14 types\n"
            "  Most frequent       2  GLOBAL_UNIT_ASSIGNED_CONTEXT REPRESENTATION_CONTEXT\n"
            "                      2  PRODUCT\n"
            "                      2  PRODUCT_DEFINITION\n"
            "                      2  PRODUCT_DEFINITION_FORMATION\n"
            "                      1  CONVERSION_BASED_UNIT LENGTH_UNIT NAMED_UNIT\n"
            "                      1  GEOMETRIC_REPRESENTATION_CONTEXT\n"
            "                      1  LENGTH_MEASURE_WITH_UNIT\n"
            "                      1  LENGTH_UNIT NAMED_UNIT SI_UNIT\n"
            "                      1  MANIFOLD_SOLID_BREP\n"
            "                      1  NAMED_UNIT PLANE_ANGLE_UNIT SI_UNIT\n"
            "  Parts               1\n"
            "  Assemblies          1\n"
            "  Depth               2 levels\n"
            "  Length              INCH (0.0254 m) in 1 context, "
            "millimetre (0.001 m) in 1 context\n"
            "  Plane angle         radian\n");
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator("."), {}), 1);
}

TEST(InfoCommand, SpacesAloneAreNotShown) {
  const ScratchFolder folder;
  std::string text = exchange_file(BOX_WITH_LID);
  text.replace(text.find("('me')"), 6, "(' ')");
  text.replace(text.find("('us')"), 6, "('  us ')");
  folder.write("in.stp", text);
  const std::string out = run_velkstep({"info", "in.stp"}).out;
  EXPECT_NE(out.find("  Time                then\n  Organisations       us\n"), std::string::npos)
      << out;
}

TEST(InfoCommand, CountsAssembliesWithBodies) {
  const ScratchFolder folder;
  folder.write("in.stp", exchange_file(product(1, "'a','a',''") + product(11, "'b','b',''") +
                                       usage(20, 3, 13) + shape(30, 3, true)));
  const std::string out = run_velkstep({"info", "in.stp"}).out;
  EXPECT_NE(out.find("\n  Assemblies          1, 1 with bodies of their own\n"), std::string::npos)
      << out;
}

TEST(InfoCommand, PrintsOneObjectAsJson) {
  const ScratchFolder folder;
  folder.write("in.stp", exchange_file(std::string(BOX_WITH_LID) + UNITS));
  const ProcessRun run = run_velkstep({"info", "--json", "in.stp"});
  EXPECT_EQ(run.exit_code, 0);
  EXPECT_EQ(run.errors, ONE_WARNING);
  EXPECT_EQ(run.out.find('\n'), run.out.size() - 1);
  EXPECT_EQ(Json::parse(run.out), Json::parse(R"({
    "format": 1, "input": "in.stp", "bytes": 1055,
    "header": {
      "description": ["small"], "implementation_level": "2;1", "name": "in.stp",
      "time_stamp": "then", "authors": ["me"], "organisations": ["us"],
      "preprocessor_version": "", "originating_system": "", "authorisation": "",
      "schemas": ["AUTOMOTIVE_DESIGN"]},
    "records": 18, "types": 14,
    "most_frequent": [
      {"type": "GLOBAL_UNIT_ASSIGNED_CONTEXT REPRESENTATION_CONTEXT", "records": 2},
      {"type": "PRODUCT", "records": 2},
      {"type": "PRODUCT_DEFINITION", "records": 2},
      {"type": "PRODUCT_DEFINITION_FORMATION", "records": 2},
      {"type": "CONVERSION_BASED_UNIT LENGTH_UNIT NAMED_UNIT", "records": 1},
      {"type": "GEOMETRIC_REPRESENTATION_CONTEXT", "records": 1},
      {"type": "LENGTH_MEASURE_WITH_UNIT", "records": 1},
      {"type": "LENGTH_UNIT NAMED_UNIT SI_UNIT", "records": 1},
      {"type": "MANIFOLD_SOLID_BREP", "records": 1},
      {"type": "NAMED_UNIT PLANE_ANGLE_UNIT SI_UNIT", "records": 1}],
    "parts": 1, "assemblies": 1, "assemblies_with_bodies": 0, "depth": 2,
    "length_units": [
      {"name": "INCH", "metres": 0.0254, "contexts": 1},
      {"name": "millimetre", "metres": 0.001, "contexts": 1}],
    "plane_angle_units": [{"name": "radian", "radians": 1.0, "contexts": 1}],
    "external_files": []
  })"));
}

TEST(InfoCommand, UnitOfUnknownSizeHasNone) {
  const ScratchFolder folder;
  folder.write("in.stp", exchange_file("#1=(GLOBAL_UNIT_ASSIGNED_CONTEXT((#2)));\n"
                                       "#2=(CONVERSION_BASED_UNIT('ell',#9)LENGTH_UNIT());\n"));
  const Json info = Json::parse(run_velkstep({"info", "--json", "in.stp"}).out);
  EXPECT_EQ(info["length_units"],
            Json::parse(R"([{"name": "ell", "metres": null, "contexts": 1}])"));
  const std::string out = run_velkstep({"info", "in.stp"}).out;
  EXPECT_NE(out.find("\n  Length              ell\n"), std::string::npos) << out;
}

TEST(InfoCommand, SeveralInputsFollowEachOther) {
  const ScratchFolder folder;
  folder.write("a.stp", exchange_file(BOX_WITH_LID));
  folder.write("b.stp", exchange_file(LID_ALONE));
  const std::string a = run_velkstep({"info", "a.stp"}).out;
  const std::string b = run_velkstep({"info", "b.stp"}).out;
  EXPECT_EQ(run_velkstep({"info", "a.stp", "b.stp"}).out, a + "\n" + b);
  const std::string a_json = run_velkstep({"info", "--json", "a.stp"}).out;
  const std::string b_json = run_velkstep({"info", "--json", "b.stp"}).out;
  EXPECT_EQ(run_velkstep({"info", "--json", "a.stp", "b.stp"}).out, a_json + b_json);
}

TEST(InfoCommand, InputThatFailsDoesNotKeepOthersFromBeingShown) {
  const ScratchFolder folder;
  folder.write("a.stp", exchange_file(BOX_WITH_LID));
  folder.write("b.stp", "ISO-10303-21;\nHEADER;\n");
  const ProcessRun run = run_velkstep({"info", "missing.stp", "b.stp", "a.stp"});
  EXPECT_EQ(run.exit_code, 1);
  EXPECT_EQ(run.out, run_velkstep({"info", "a.stp"}).out);
  EXPECT_EQ(
      run.errors,
      "velkstep: missing.stp: The file cannot be opened: No such file or directory. Check its "
      "name.\n"
      "velkstep: b.stp:3:1: The HEADER section is not closed by \"ENDSEC;\". The file may be cut "
      "off or damaged: copy or export it again.\n"
      "velkstep: 3 inputs: 1 done, 2 failed\n");
}

TEST(InfoCommand, NeedsAnInput) {
  EXPECT_EQ(run_velkstep({"info"}).exit_code, 2);
  EXPECT_EQ(run_velkstep({"info", "--xml", VELKSTEP_EXAMPLE}).exit_code, 2);
}

}  // namespace
}  // namespace Kessel::test
