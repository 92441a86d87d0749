// One reading tells what the readings for one thing each tell.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "inspection/products.h"
#include "kessel/check.h"
#include "kessel/errors.h"
#include "kessel/overview.h"
#include "support/scratch_folder.h"

namespace Kessel::test {
namespace {

namespace fs = std::filesystem;

void put(std::ostream& out, const std::vector<PartUse>& uses) {
  for (const PartUse& use : uses) {
    out << ' ' << use.part << 'x' << use.count << (use.closes_cycle ? "!" : "");
  }
  out << '\n';
}

std::string all_of(const Assembly& assembly) {
  std::ostringstream out;
  for (const PartInfo& part : assembly.parts) {
    out << part.record << ' ' << part.id << '|' << part.name << '|' << part.description << '|'
        << static_cast<int>(part.role) << '|' << part.file << '|' << part.external_file << '|'
        << part.total << '\n';
    put(out, part.components);
    put(out, part.used_in);
  }
  for (const std::size_t root : assembly.roots) out << "root " << root << '\n';
  out << "depth " << assembly.depth;
  return out.str();
}

std::string all_of(const Summary& summary) {
  std::ostringstream out;
  const Header& header = summary.header;
  out << header.name << '|' << header.time_stamp << '|' << header.originating_system << '|'
      << header.preprocessor_version << '|' << header.authors.size() << '|' << header.schemas.size()
      << '\n'
      << summary.bytes << ' ' << summary.records << ' ' << summary.parts << ' '
      << summary.assemblies << ' ' << summary.assemblies_with_bodies << ' ' << summary.depth;
  for (const TypeCount& type : summary.types) out << '\n' << type.type << ' ' << type.records;
  for (const auto* units : {&summary.length_units, &summary.plane_angle_units}) {
    for (const UnitUse& unit : *units) {
      out << '\n' << unit.name << ' ' << unit.factor << ' ' << unit.contexts;
    }
  }
  for (const ReferencedFile& file : summary.references) {
    out << '\n' << file.name << ' ' << file.references << ' ' << file.is_there;
  }
  return out.str();
}

std::string all_of(const std::vector<Finding>& findings) {
  std::ostringstream out;
  for (const Finding& finding : findings) {
    out << name_of(finding.kind) << ' ' << static_cast<int>(finding.severity) << ' '
        << finding.offset << ' ' << finding.line << ':' << finding.column << ' ' << finding.instance
        << ' ' << finding.count << ' ' << finding.sentence << '\n';
  }
  return out.str();
}

std::string all_of(const std::vector<DrawnPart>& parts) {
  std::ostringstream out;
  out << std::hexfloat;
  for (const DrawnPart& part : parts) {
    out << part.unit << ' ' << part.unit_metres << ' ' << part.dropped << '\n';
    for (const DrawnLine& line : part.lines) {
      out << line.record << ' ' << line.colour << ' ' << line.first << ' ' << line.count << '\n';
    }
    for (const Point3& point : part.points) out << point[0] << point[1] << point[2] << '\n';
    for (const PlacedComponent& component : part.components) {
      out << component.part << ' ' << component.usage << ' ' << component.colour
          << component.is_placed << component.is_hidden << component.closes_cycle;
      for (const double number : component.matrix.rows) out << ' ' << number;
      out << '\n';
    }
    out << part.styled.size() << '\n';
  }
  return out.str();
}

void expect_same(const fs::path& in, const Options& options) {
  SCOPED_TRACE(in);
  const Drawing drawing = read_drawing(in, {}, options);
  for (const bool draws : {true, false}) {
    using Lines = std::optional<DrawingOptions>;
    const Overview all = read_overview(in, draws ? Lines(DrawingOptions()) : Lines(), options);
    EXPECT_EQ(all_of(all.summary), all_of(read_summary(in, options)));
    EXPECT_EQ(all_of(all.findings), all_of(check(in, options)));
    EXPECT_EQ(all_of(all.drawing.assembly), all_of(read_assembly(in, options)));
    EXPECT_EQ(all.is_drawn, draws);
    EXPECT_EQ(all_of(all.drawing.parts), draws ? all_of(drawing.parts) : "");
  }
}

TEST(Overview, IsWhatEachReadingTells) {
  const ScratchFolder scratch;
  // A usage of nothing, a name that is no string, a record twice, one that is missing, a circle.
  const std::string odd =
      product(1, "'a','b',$") + product(11, "'c','d',$") + shape(21, 3, true) +
      "#101=NEXT_ASSEMBLY_USAGE_OCCURRENCE('','','',#999,#3,$);\n" +
      "#102=CARTESIAN_POINT('a\\b',(1.,2.,3.));\n#102=CARTESIAN_POINT('a\\b',(1.,2.,3.));\n"
      "#103=X(#104);\n#104=X(#103);\n";
  const fs::path in = scratch.write("odd.stp", exchange_file(odd));
  EXPECT_GE(check(in).size(), 4u);
  expect_same(in, {});
  std::string warned;
  Options options;
  options.warning = [&](const Finding& finding) { warned += finding.sentence; };
  read_overview(in, DrawingOptions(), options);
  EXPECT_EQ(warned, "");
  const fs::path empty = scratch.write("empty.stp", exchange_file(""));
  expect_same(empty, {});
}

TEST(Overview, OfRealAssemblies) {
  if (samples_folder().empty()) GTEST_SKIP() << why_no_sample();
  for (const char* sample : {"as1-oc-214.stp", "as1-pe-203.stp", "dm1-id-214.stp"}) {
    expect_same(samples_folder() / sample, {});
  }
}

TEST(Overview, FollowsReferencesAndChecksTheInputItself) {
  const fs::path in = samples_folder().parent_path() / "samples-external/s1_pe_214.stp";
  if (!fs::exists(in)) GTEST_SKIP() << why_no_sample();
  Options options;
  options.follow_references = true;
  expect_same(in, options);
  const std::string written = read_summary(in).header.time_stamp;
  EXPECT_FALSE(written.empty());
  EXPECT_EQ(read_summary(in, options).header.time_stamp, written);
}

TEST(Overview, HasNoLinesWhereTheyDoNotFit) {
  const ScratchFolder scratch;
  std::string records = product(1, "'a','b',$") + shape(21, 3, true);
  for (int i = 101; i < 60101; ++i) {
    records += "#" + std::to_string(i) + "=CARTESIAN_POINT('',(1.,2.,3.));\n";
  }
  const fs::path in = scratch.write("points.stp", exchange_file(records));
  Options options;
  options.memory_limit = 2'000'000;
  EXPECT_THROW(read_drawing(in, {}, options), InputError);
  const Overview all = read_overview(in, DrawingOptions(), options);
  EXPECT_FALSE(all.is_drawn);
  EXPECT_TRUE(all.drawing.parts.empty());
  EXPECT_EQ(all_of(all.drawing.assembly), all_of(read_assembly(in, options)));
  options.memory_limit = 10'000;
  EXPECT_THROW(read_overview(in, DrawingOptions(), options), InputError);
}

}  // namespace
}  // namespace Kessel::test
