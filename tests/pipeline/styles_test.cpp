// What holds for the files of each style, whatever the assembly: every file is complete in itself,
// and names files that are there. Of classic also where geometry stands.
#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <memory>
#include <ostream>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "association/associate.h"
#include "interop/assemblies.h"
#include "kessel/encoding.h"
#include "kessel/splitter.h"
#include "model/store.h"
#include "reader/parse_file.h"
#include "structure/process_parts.h"
#include "support/scratch_folder.h"

namespace Kessel::test {
namespace {

namespace fs = std::filesystem;

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

/// Whether a classic split of `in` puts geometric instances into files of both kinds.
bool repeats_geometry(const fs::path& in) {
  const std::unique_ptr<Store> file = parse_file(in);
  process_parts(*file, decode_step_to_utf8);
  associate_entities(*file);
  Part::free_statics();
  for (const Instance& instance : instances_of(in)) {
    const bool geometric =
        std::any_of(instance.types.begin(), instance.types.end(),
                    [](const std::string& type) { return GEOMETRY.contains(type); });
    const Entity* entity = geometric ? file->at(instance.number) : nullptr;
    if (entity == nullptr) continue;
    bool in_assembly = false;
    bool in_leaf = false;
    for (const auto [part, number] : entity->part_numbers.entries()) {
      (part->part_kind == ASSEMBLY_PART ? in_assembly : in_leaf) = true;
    }
    if (in_assembly && in_leaf) return true;
  }
  return false;
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
  using enum AssemblyStyle;
  return style == classic ? "classic" : style == lean ? "lean" : "nested";
}

struct Case {
  AssemblySource source;
  AssemblyStyle style;
};

void PrintTo(const Case& example, std::ostream* out) {
  *out << test_name(example.source) << ' ' << style_name(example.style);
}

/// An assembly in a style; `in_` is empty for a sample that is not there.
class EveryStyle : public testing::TestWithParam<Case> {
 protected:
  void SetUp() override {
    in_ = file_of(GetParam().source, folder_);
    if (in_.empty()) GTEST_SKIP() << why_no_sample();
  }

  ScratchFolder folder_;
  fs::path in_;
};

TEST_P(EveryStyle, FilesAreCompleteAndReferenceBlocksNameWrittenFiles) {
  const auto files = split(in_, folder_ / "out", {.assemblies = GetParam().style});
  std::set<std::string> referred;
  for (const WrittenFile& file : files) {
    const std::vector<Instance> instances = instances_of(file.path);
    EXPECT_EQ(flaws_of(instances), "") << file.path.filename();
    referred.merge(referred_files(instances));
  }
  EXPECT_FALSE(referred.empty());
  std::set<std::string> missing;
  for (const std::string& name : referred) {
    if (!fs::is_regular_file(folder_ / "out" / decode_step_to_utf8(name))) missing.insert(name);
  }
  EXPECT_EQ(missing, std::set<std::string>{});
}

// The solids of these hang on their components' shapes by relationships, which take every part, the
// root too.
const std::set<std::string> DETACHED = {
    "as1-pe-203.stp",     "bench-vice.step",      "detached",        "din-mount.step",
    "exhaust-plate.step", "filament-sensor.step", "spool-ramp.step", "toolhead-mount.step",
};

class Classic : public testing::TestWithParam<AssemblySource> {};

TEST_P(Classic, OnlyDetachedGeometryStandsInAssembliesAndInLeaves) {
  const ScratchFolder folder;
  const fs::path in = file_of(GetParam(), folder);
  if (in.empty()) GTEST_SKIP() << why_no_sample();
  EXPECT_EQ(repeats_geometry(in), DETACHED.contains(GetParam().name));
}

/// Every assembly in each of the styles.
std::vector<Case> cases() {
  std::vector<Case> all;
  for (const AssemblySource& source : all_assemblies()) {
    for (const AssemblyStyle style :
         {AssemblyStyle::classic, AssemblyStyle::lean, AssemblyStyle::nested}) {
      all.push_back({source, style});
    }
  }
  return all;
}

INSTANTIATE_TEST_SUITE_P(Assemblies, EveryStyle, testing::ValuesIn(cases()),
                         [](const testing::TestParamInfo<Case>& test) {
                           return test_name(test.param.source) + "_" + style_name(test.param.style);
                         });
INSTANTIATE_TEST_SUITE_P(Assemblies, Classic, testing::ValuesIn(all_assemblies()),
                         [](const testing::TestParamInfo<AssemblySource>& test) {
                           return test_name(test.param);
                         });

}  // namespace
}  // namespace Kessel::test
