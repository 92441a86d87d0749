// What holds for the files of each style, whatever the assembly: where geometry stands, that
// nothing is lost, that every file is complete in itself.
#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <ostream>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "association/associate.h"
#include "interop/assemblies.h"
#include "kessel/encoding.h"
#include "model/store.h"
#include "reader/parse_file.h"
#include "structure/process_parts.h"
#include "support/scratch_folder.h"
#include "writer/write_parts.h"

namespace Kessel::test {
namespace {

namespace fs = std::filesystem;

constexpr AssemblyStyle CLASSIC = AssemblyStyle::classic;
constexpr AssemblyStyle LEAN = AssemblyStyle::lean;
constexpr AssemblyStyle NESTED = AssemblyStyle::nested;

/// One instance of a data section, as far as the tests look at it.
struct Instance {
  unsigned number = 0;
  std::set<std::string> types;  ///< several for a complex instance
  std::vector<unsigned> references;
  std::string first_string;  ///< as it stands between the apostrophes
};

/// Reads the instances of an exchange file the obvious way.
class InstanceScanner {
 public:
  explicit InstanceScanner(std::string_view text) : text_(text) {
    at_ = std::min(text_.find("DATA;"), text_.size());
  }

  std::vector<Instance> all() {
    std::vector<Instance> instances;
    std::size_t strings = 0;
    bool defines = true;  // whether the next number is the instance's own
    for (; at_ < text_.size(); ++at_) {
      const char c = text_[at_];
      if (c == '\'') {
        const std::string value = take_string();
        if (strings++ == 0 && !instances.empty()) instances.back().first_string = value;
      } else if (c == ';') {
        defines = true;
        strings = 0;
      } else if (c == '#') {
        const unsigned number = take_number();
        if (defines) {
          instances.push_back(
              {.number = number, .types = {}, .references = {}, .first_string = {}});
        } else {
          instances.back().references.push_back(number);
        }
        defines = false;
      } else if (std::isupper(static_cast<unsigned char>(c)) != 0) {
        const std::string keyword = take_keyword();
        if (!defines && !is_enumeration_) instances.back().types.insert(keyword);
      }
      if (at_ < text_.size()) is_enumeration_ = text_[at_] == '.';
    }
    return instances;
  }

 private:
  /// Leaves at_ at the last character of what it takes, as the next two do.
  std::string take_string() {
    const std::size_t begin = ++at_;
    at_ = std::min(text_.find('\'', begin), text_.size());
    return std::string(text_.substr(begin, at_ - begin));
  }

  unsigned take_number() {
    unsigned number = 0;
    while (at_ + 1 < text_.size() &&
           std::isdigit(static_cast<unsigned char>(text_[at_ + 1])) != 0) {
      number = 10 * number + static_cast<unsigned>(text_[++at_] - '0');
    }
    return number;
  }

  std::string take_keyword() {
    const std::size_t begin = at_;
    const auto goes_on = [&](char c) {
      return std::isalnum(static_cast<unsigned char>(c)) != 0 || c == '_';
    };
    while (at_ + 1 < text_.size() && goes_on(text_[at_ + 1])) ++at_;
    return std::string(text_.substr(begin, at_ + 1 - begin));
  }

  std::string_view text_;
  std::size_t at_;
  bool is_enumeration_ = false;
};

std::vector<Instance> instances_of(const fs::path& path) {
  return InstanceScanner(read_file(path)).all();
}

/// What a body is made of. Points, directions and placements are not here: assemblies have theirs.
const std::set<std::string_view> GEOMETRY = {
    "ADVANCED_FACE",
    "BREP_WITH_VOIDS",
    "B_SPLINE_CURVE",
    "B_SPLINE_CURVE_WITH_KNOTS",
    "B_SPLINE_SURFACE",
    "B_SPLINE_SURFACE_WITH_KNOTS",
    "CIRCLE",
    "CLOSED_SHELL",
    "CONICAL_SURFACE",
    "CYLINDRICAL_SURFACE",
    "EDGE_CURVE",
    "EDGE_LOOP",
    "ELLIPSE",
    "FACE_BOUND",
    "FACE_OUTER_BOUND",
    "FACETED_BREP",
    "GEOMETRIC_CURVE_SET",
    "LINE",
    "MANIFOLD_SOLID_BREP",
    "OPEN_SHELL",
    "ORIENTED_EDGE",
    "PCURVE",
    "PLANE",
    "POLY_LOOP",
    "SEAM_CURVE",
    "SHELL_BASED_SURFACE_MODEL",
    "SPHERICAL_SURFACE",
    "SURFACE_CURVE",
    "SURFACE_OF_LINEAR_EXTRUSION",
    "SURFACE_OF_REVOLUTION",
    "TOROIDAL_SURFACE",
    "VECTOR",
    "VERTEX_LOOP",
    "VERTEX_POINT",
};

/// A file after its split into the folder "out".
class Split {
 public:
  Split(const fs::path& in, AssemblyStyle style, const ScratchFolder& folder)
      : out_(folder / "out"), file_(parse_file(in)) {
    process_parts(*file_, decode_step_to_utf8);
    associate_entities(*file_, {.assemblies = style});
    write_parts(*file_, out_, {.assemblies = style});
    Part::free_statics();
  }

  const Store& file() const { return *file_; }

  /// The paths of all files, in the order of the parts.
  std::vector<fs::path> paths() const {
    std::vector<fs::path> paths;
    for (const Part* part : file_->parts) paths.push_back(out_ / part->path);
    return paths;
  }

  /// The numbers of the original's instances that stand in some file.
  std::set<unsigned> written() const {
    std::set<unsigned> numbers;
    file_->entities.for_each_in_use([&](std::size_t number, const Entity* entity) {
      if (entity == nullptr || entity->part_numbers.empty()) return;
      numbers.insert(static_cast<unsigned>(number));
    });
    return numbers;
  }

 private:
  fs::path out_;
  std::unique_ptr<Store> file_;
};

/// How many geometric instances of the original stand in files of both kinds, by type.
std::map<std::string, int> geometry_in_both(const fs::path& in, const Store& file,
                                            const std::function<bool(const Part&)>& is_assembly) {
  std::map<std::string, int> both;
  for (const Instance& instance : instances_of(in)) {
    const Entity* entity = file.at(instance.number);
    if (entity == nullptr) continue;
    bool in_assembly = false;
    bool in_leaf = false;
    for (const auto& [part, number] : entity->part_numbers) {
      (is_assembly(*part) ? in_assembly : in_leaf) = true;
    }
    if (!in_assembly || !in_leaf) continue;
    for (const std::string& type : instance.types) {
      if (GEOMETRY.contains(type)) ++both[type];
    }
  }
  return both;
}

bool is_assembly_part(const Part& part) {
  return part.part_kind == ASSEMBLY_PART;
}

/// A line for everything that is wrong with a written file: numbers defined twice, references to
/// instances that it lacks.
std::string flaws_of(const std::vector<Instance>& instances) {
  std::string flaws;
  std::set<unsigned> defined;
  for (const Instance& instance : instances) {
    if (!defined.insert(instance.number).second) {
      flaws += "#" + std::to_string(instance.number) + " is defined twice\n";
    }
  }
  for (const Instance& instance : instances) {
    for (const unsigned reference : instance.references) {
      if (defined.contains(reference)) continue;
      flaws += "#" + std::to_string(instance.number) + " refers to #" + std::to_string(reference) +
               ", which is not there\n";
    }
  }
  return flaws;
}

/// The file names that reference blocks give, as they stand there.
std::set<std::string> referred_files(const std::vector<Instance>& instances) {
  std::set<std::string> names;
  for (const Instance& instance : instances) {
    if (instance.types.contains("DOCUMENT_FILE")) names.insert(instance.first_string);
  }
  return names;
}

std::string style_name(AssemblyStyle style) {
  return style == CLASSIC ? "classic" : style == LEAN ? "lean" : "nested";
}

struct Case {
  AssemblySource source;
  AssemblyStyle style;
};

void PrintTo(const Case& example, std::ostream* out) {
  *out << test_name(example.source) << ' ' << style_name(example.style);
}

/// An assembly in a style; `in_` is empty for a sample that is not there.
class Styles : public testing::TestWithParam<Case> {
 protected:
  void SetUp() override {
    in_ = file_of(GetParam().source, folder_);
    if (in_.empty()) GTEST_SKIP() << why_no_sample();
  }

  AssemblyStyle style() const { return GetParam().style; }

  ScratchFolder folder_;
  fs::path in_;
};

class EveryStyle : public Styles {};
class LeanAndNested : public Styles {};
class NestedStyle : public Styles {};
class ClassicStyle : public Styles {};

TEST_P(EveryStyle, FilesAreCompleteInThemselves) {
  const Split split(in_, style(), folder_);
  for (const fs::path& path : split.paths()) {
    EXPECT_EQ(flaws_of(instances_of(path)), "") << path.filename();
  }
}

TEST_P(EveryStyle, ReferenceBlocksNameWrittenFiles) {
  const Split split(in_, style(), folder_);
  std::set<std::string> referred;
  for (const fs::path& path : split.paths()) referred.merge(referred_files(instances_of(path)));
  EXPECT_FALSE(referred.empty());
  std::set<std::string> missing;
  for (const std::string& name : referred) {
    if (!fs::is_regular_file(folder_ / "out" / decode_step_to_utf8(name))) missing.insert(name);
  }
  EXPECT_EQ(missing, std::set<std::string>{});
}

TEST_P(LeanAndNested, GeometryStandsInAssembliesOrInLeaves) {
  const Split split(in_, style(), folder_);
  EXPECT_EQ(geometry_in_both(in_, split.file(), is_assembly_part), (std::map<std::string, int>{}));
}

TEST_P(LeanAndNested, WriteEveryRecordThatClassicWrites) {
  const Split split(in_, style(), folder_);
  const ScratchFolder other;
  const Split classic(in_, CLASSIC, other);
  const std::set<unsigned> written = split.written();
  std::set<unsigned> lost;
  for (const unsigned number : classic.written()) {
    if (!written.contains(number)) lost.insert(number);
  }
  EXPECT_EQ(lost, std::set<unsigned>{});
}

TEST_P(NestedStyle, AssembliesShareNoGeometryWithTheirComponents) {
  const Split split(in_, style(), folder_);
  const auto has_components = [](const Part& part) { return !part.children.empty(); };
  EXPECT_EQ(geometry_in_both(in_, split.file(), has_components), (std::map<std::string, int>{}));
}

// The solids of these hang on their components' shapes by relationships, which take every part, the
// root too.
const std::set<std::string> DETACHED = {
    "as1-pe-203.stp",       "detached",        "din-mount.step",      "exhaust-plate.step",
    "filament-sensor.step", "spool-ramp.step", "toolhead-mount.step",
};

TEST_P(ClassicStyle, OnlyDetachedGeometryStandsInAssembliesAndInLeaves) {
  const Split split(in_, style(), folder_);
  const bool repeats = !geometry_in_both(in_, split.file(), is_assembly_part).empty();
  EXPECT_EQ(repeats, DETACHED.contains(GetParam().source.name));
}

std::string case_name(const testing::TestParamInfo<Case>& test) {
  return test_name(test.param.source) + "_" + style_name(test.param.style);
}

/// Every assembly in each of the styles.
std::vector<Case> cases(std::initializer_list<AssemblyStyle> styles) {
  std::vector<Case> all;
  for (const AssemblySource& source : all_assemblies()) {
    for (const AssemblyStyle style : styles) all.push_back({source, style});
  }
  return all;
}

INSTANTIATE_TEST_SUITE_P(Assemblies, EveryStyle, testing::ValuesIn(cases({CLASSIC, LEAN, NESTED})),
                         case_name);
INSTANTIATE_TEST_SUITE_P(Assemblies, LeanAndNested, testing::ValuesIn(cases({LEAN, NESTED})),
                         case_name);
INSTANTIATE_TEST_SUITE_P(Assemblies, NestedStyle, testing::ValuesIn(cases({NESTED})), case_name);
INSTANTIATE_TEST_SUITE_P(Assemblies, ClassicStyle, testing::ValuesIn(cases({CLASSIC})), case_name);

}  // namespace
}  // namespace Kessel::test
