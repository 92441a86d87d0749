// Splits, read back by a CAD kernel: whoever follows the references sees the assembly as it was.
#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <ostream>

#include "instances/loader.h"
#include "interop/assemblies.h"
#include "interop/kernel_reader.h"
#include "interop/kernel_writer.h"
#include "kessel/splitter.h"
#include "splitter/placed_names.h"
#include "support/scratch_folder.h"
#include "support/split_run.h"

namespace Kessel::test {
namespace {

namespace fs = std::filesystem;

/// Splits `in` into the folder "out" of `folder` and returns the files, the root's first.
std::vector<fs::path> split(const fs::path& in, const Options& options,
                            const ScratchFolder& folder) {
  return split_paths(in, folder / "out", options);
}

auto name_of_case = [](const auto& test) { return test_name(test.param); };

/// What a reader sees of the root differently: tree, names, figures, colours of faces, layers,
/// validation properties.
std::string differences_of_root(const fs::path& in, const Options& options,
                                const ScratchFolder& folder) {
  const auto files = split(in, options, folder);
  if (files.empty()) return "";  // One part, with what it shows by mapped items.
  const fs::path root = files.at(0);
  return differences(read_free_shapes(in), read_free_shapes(root)) +
         differences(read_remarks(in), read_remarks(root));
}

class LeanSplit : public testing::TestWithParam<AssemblySource> {};
class NestedSplit : public testing::TestWithParam<AssemblySource> {};

TEST_P(LeanSplit, RootOpensAsTheOriginal) {
  const ScratchFolder folder;
  const fs::path in = file_of(GetParam(), folder);
  if (in.empty()) GTEST_SKIP() << why_no_sample();
  EXPECT_EQ(differences_of_root(in, {.assemblies = AssemblyStyle::lean}, folder), "");
}

TEST_P(NestedSplit, RootOpensAsTheOriginal) {
  const ScratchFolder folder;
  const fs::path in = file_of(GetParam(), folder);
  if (in.empty()) GTEST_SKIP() << why_no_sample();
  EXPECT_EQ(differences_of_root(in, {.assemblies = AssemblyStyle::nested}, folder), "");
}

class KernelDocument : public testing::TestWithParam<std::string> {};

TEST_P(KernelDocument, RootsOfSplitsOpenAsTheOriginal) {
  const ScratchFolder folder;
  const fs::path in = folder / "in.step";
  write_kernel_document(GetParam(), in);
  for (const AssemblyStyle style : {AssemblyStyle::nested, AssemblyStyle::lean}) {
    const fs::path out = folder / (style == AssemblyStyle::lean ? "lean" : "nested");
    const fs::path root = split_paths(in, out, {.assemblies = style}).at(0);
    EXPECT_EQ(differences(read_free_shapes(in), read_free_shapes(root)) +
                  differences(read_remarks(in), read_remarks(root)),
              "");
  }
}

INSTANTIATE_TEST_SUITE_P(Kernel, KernelDocument, testing::ValuesIn(kernel_documents()),
                         [](const auto& test) { return test.param; });

/// How the assembly below says where its components are.
enum class RackForm : std::uint8_t {
  mapped_items,     ///< with usages that nothing places
  views,            ///< the same, and each part has a second definition
  tied_shapes,      ///< by places of representations that are tied to those of the parts
  same_place,       ///< by relationships without a transformation
  same_but_origin,  ///< the same, of parts without placements
};

/// Writes an assembly of two parts of the kernel's, which shows one twice and the other once.
class Rack {
 public:
  Rack(const ScratchFolder& folder, RackForm form, int step) : folder_(folder), form_(form) {
    write_kernel_document("parts_alone", folder / "parts.step");
    text_ = read_file(folder / "parts.step");
    text_.resize(text_.rfind("ENDSEC;"));
    std::ifstream in(folder / "parts.step", std::ios::binary);
    load_instances(in, instances_);
    parts_ = find_products(instances_);
    const Index context =
        instances_.references(parts_.products.at(0).representations.at(0)).back().record();
    context_ = name(context);
    const std::string product = add("PRODUCT('rack','rack','',())");
    const std::string version = add("PRODUCT_DEFINITION_FORMATION('',''," + product + ")");
    rack_ = add("PRODUCT_DEFINITION('design',''," + version + ",$)");
    for (const std::size_t part : {0, 1}) shapes_.push_back(shape_of(parts_.products.at(part)));
    std::string items = placement(0);
    int x = 0;
    for (const std::size_t part : {0, 1, 0}) items += use(part, x += step);
    const std::string link = add("PRODUCT_DEFINITION_SHAPE('',''," + rack_ + ")");
    text_ += shape_ + "=SHAPE_REPRESENTATION('',(" + items + ")," + context_ + ");\n";
    add("SHAPE_DEFINITION_REPRESENTATION(" + link + "," + shape_ + ")");
  }

  fs::path write() const {
    return folder_.write("rack.step", text_ + "ENDSEC;\nEND-ISO-10303-21;\n");
  }

 private:
  std::string add(const std::string& body) {
    text_ += "#" + std::to_string(++last_) + "=" + body + ";\n";
    return "#" + std::to_string(last_);
  }
  std::string name(Index record) const { return "#" + std::to_string(instances_.number(record)); }
  std::string placement(int x) {
    return add("AXIS2_PLACEMENT_3D(''," +
               add("CARTESIAN_POINT('',(" + std::to_string(x) + ".,0.,0.))") + ",$,$)");
  }
  void replace(const std::string& what, const std::string& by) {
    text_.replace(text_.find(what), what.size(), by);
  }

  /// The representation that usages of the part show.
  std::string shape_of(const Product& part) {
    const ShapeLink& link = part.links.at(0);
    const std::string shown = name(link.representation);
    if (form_ == RackForm::views) {
      const std::string view = add("PRODUCT_DEFINITION('view',''," + name(part.formation) + ",$)");
      add("SHAPE_DEFINITION_REPRESENTATION(" + add("PRODUCT_DEFINITION_SHAPE('',''," + view + ")") +
          "," + shown + ")");
    }
    if (form_ == RackForm::tied_shapes) {
      const std::string plain =
          add("SHAPE_REPRESENTATION('',(" + placement(0) + ")," + context_ + ")");
      replace("(" + name(link.shape) + "," + shown + ")",
              "(" + name(link.shape) + "," + plain + ")");
      add("SHAPE_REPRESENTATION_RELATIONSHIP('',''," + plain + "," + shown + ")");
    }
    if (form_ == RackForm::same_but_origin) {
      for (const Reference item : instances_.references(link.representation)) {
        if (item.is_listed() && is_placement(instances_, item.record())) {
          replace("(" + name(item.record()) + ",", "(");
        }
      }
    }
    return shown;
  }

  /// A usage of the part; returns what the rack's representation has for it, behind a comma.
  std::string use(std::size_t part, int x) {
    const std::string& shown = shapes_.at(part);
    const std::string usage =
        add("NEXT_ASSEMBLY_USAGE_OCCURRENCE('" + std::to_string(++usages_) + "','',''," + rack_ +
            "," + name(parts_.products.at(part).definition) + ",$)");
    if (form_ == RackForm::same_place || form_ == RackForm::same_but_origin) {
      add("SHAPE_REPRESENTATION_RELATIONSHIP('',''," + shape_ + "," + shown + ")");
      return "";
    }
    if (form_ == RackForm::tied_shapes) {
      const std::string place = placement(x);
      const std::string transformation =
          add("ITEM_DEFINED_TRANSFORMATION('',''," + placement(0) + "," + place + ")");
      const std::string relationship =
          add("(REPRESENTATION_RELATIONSHIP('',"
              "''," +
              shown + "," + shape_ + ")REPRESENTATION_RELATIONSHIP_WITH_TRANSFORMATION(" +
              transformation + ")SHAPE_REPRESENTATION_RELATIONSHIP())");
      add("CONTEXT_DEPENDENT_SHAPE_REPRESENTATION(" + relationship + "," +
          add("PRODUCT_DEFINITION_SHAPE('',''," + usage + ")") + ")");
      return "," + place;
    }
    const std::string map = add("REPRESENTATION_MAP(" + placement(0) + "," + shown + ")");
    return "," + add("MAPPED_ITEM(''," + map + "," + placement(x) + ")");
  }

  const ScratchFolder& folder_;
  RackForm form_;
  std::string text_;
  Instances instances_;
  Products parts_;
  int last_ = 9'000'000;
  int usages_ = 0;
  std::string context_;
  std::vector<std::string> shapes_;
  const std::string shape_ = "#8999999";  // its representation
  std::string rack_;                      // its definition
};

class RackInForm : public testing::TestWithParam<RackForm> {};

/// The kernel takes mapped items and tied representations for nameless solids, and misses some of
/// them; behind a split they are what they are, and where they would be if they were all mapped.
TEST_P(RackInForm, ShowsItsComponentsWhereTheyAreAndByTheirNames) {
  const RackForm form = GetParam();
  const bool is_same_place = form == RackForm::same_place || form == RackForm::same_but_origin;
  const ScratchFolder folder;
  const int step = is_same_place ? 0 : 50;
  std::vector<DocumentShape> expected =
      read_free_shapes(Rack(folder, RackForm::mapped_items, step).write());
  ASSERT_EQ(expected.size(), 1u);
  const fs::path in = Rack(folder, form, step).write();
  for (const AssemblyStyle style : {AssemblyStyle::nested, AssemblyStyle::lean}) {
    const fs::path out = folder / (style == AssemblyStyle::lean ? "lean" : "nested");
    const auto files = split_paths(in, out, {.assemblies = style});
    EXPECT_EQ(files.size(), 3u);
    const std::vector<DocumentShape> after = read_free_shapes(files.at(0));
    ASSERT_EQ(after.size(), 1u);
    EXPECT_EQ(whole_tree(after[0]), "rack\n  1 -> left\n  2 -> right\n  3 -> left\n");
    EXPECT_EQ(after[0].figures.solids, 3);
    expected[0].tree = after[0].tree;
    EXPECT_EQ(differences(expected, after), "");
  }
}

INSTANTIATE_TEST_SUITE_P(Kernel, RackInForm,
                         testing::Values(RackForm::mapped_items, RackForm::views,
                                         RackForm::tied_shapes, RackForm::same_place,
                                         RackForm::same_but_origin));

/// The file names of the assemblies that other assemblies use.
std::vector<fs::path> sub_assembly_names(const fs::path& in) {
  std::ifstream file(in, std::ios::binary);
  Instances instances;
  load_instances(file, instances);
  const Products products = find_products(instances);
  const Placement placement = place_records(instances, products, AssemblyStyle::nested);
  const auto all = placed_names(instances, products, placement, NameStyle::product);
  std::vector<fs::path> names;
  for (FileId id = 1; id < placement.files.size(); ++id) {
    if (!placement.files[id].links.empty()) names.push_back(all[id]);
  }
  return names;
}

TEST_P(NestedSplit, FilesOfSubAssembliesOpenAsTheyAreInTheOriginal) {
  const ScratchFolder folder;
  const fs::path in = file_of(GetParam(), folder);
  if (in.empty()) GTEST_SKIP() << why_no_sample();
  split(in, {.assemblies = AssemblyStyle::nested}, folder);
  std::vector<DocumentShape> originals = read_assemblies(in);
  for (const fs::path& name : sub_assembly_names(in)) {
    SCOPED_TRACE(name);
    const std::vector<DocumentShape> shapes = read_free_shapes(folder / "out" / name);
    ASSERT_EQ(shapes.size(), 1u);
    const DocumentShape& shape = shapes.front();
    // Names need not be unique; each original stands for one file.
    std::string why = "no assembly has the name " + shape.name;
    const auto match = std::find_if(originals.begin(), originals.end(), [&](const auto& original) {
      if (original.name != shape.name) return false;
      why = differences(original, shape);
      return why.empty();
    });
    if (match == originals.end()) {
      ADD_FAILURE() << why;
    } else {
      originals.erase(match);
    }
  }
}

INSTANTIATE_TEST_SUITE_P(Assemblies, LeanSplit, testing::ValuesIn(every_assembly()), name_of_case);
INSTANTIATE_TEST_SUITE_P(Assemblies, NestedSplit, testing::ValuesIn(every_assembly()),
                         name_of_case);

class ClassicSplit : public testing::TestWithParam<AssemblySource> {};

TEST_P(ClassicSplit, RootOpensAsTheOriginal) {
  const ScratchFolder folder;
  const fs::path in = file_of(GetParam(), folder);
  if (in.empty()) GTEST_SKIP() << why_no_sample();
  const fs::path root = split(in, {.assemblies = AssemblyStyle::classic}, folder).at(0);
  EXPECT_EQ(differences(read_free_shapes(in), read_free_shapes(root)), "");
}

INSTANTIATE_TEST_SUITE_P(
    Assemblies, ClassicSplit,
    testing::Values(AssemblySource{"as1-oc-214.stp"}, AssemblySource{"as1-tu-203.stp"},
                    AssemblySource{"cube-inch.step"}, AssemblySource{"desk-lamp.step"},
                    AssemblySource{"dm1-id-214.stp"}, AssemblySource{"dm1-pe-214.stp"}),
    name_of_case);

/// A split whose root opens with other shapes than the original, and what a reader finds in both.
struct KnownChange {
  AssemblySource source;
  AssemblyStyle style;
  std::size_t free_shapes;  ///< of the root; the original has one
  int solids_before;
  int solids;
};

void PrintTo(const KnownChange& change, std::ostream* out) {
  PrintTo(change.source, out);
}

class SplitWithKnownChange : public testing::TestWithParam<KnownChange> {};

TEST_P(SplitWithKnownChange, RootOpensWithSoManyShapes) {
  const KnownChange& expected = GetParam();
  const ScratchFolder folder;
  const fs::path in = file_of(expected.source, folder);
  if (in.empty()) GTEST_SKIP() << why_no_sample();
  const fs::path root = split(in, {.assemblies = expected.style}, folder).at(0);
  const std::vector<DocumentShape> before = read_free_shapes(in);
  const std::vector<DocumentShape> after = read_free_shapes(root);
  EXPECT_EQ(before.size(), 1u);
  EXPECT_EQ(count_solids(before), expected.solids_before);
  EXPECT_EQ(after.size(), expected.free_shapes);
  EXPECT_EQ(count_solids(after), expected.solids);
}

/// A split whose files are called after products.
struct NamedSplit {
  AssemblySource source;
  AssemblyStyle style;
  NameStyle names;
};

void PrintTo(const NamedSplit& split, std::ostream* out) {
  PrintTo(split.source, out);
}

class SplitAfterProducts : public testing::TestWithParam<NamedSplit> {};

TEST_P(SplitAfterProducts, RootOpensAsTheOriginal) {
  const auto& [source, style, names] = GetParam();
  const ScratchFolder folder;
  const fs::path in = file_of(source, folder);
  if (in.empty()) GTEST_SKIP() << why_no_sample();
  const fs::path root = split(in, {.assemblies = style, .names = names}, folder).at(0);
  EXPECT_EQ(differences(read_free_shapes(in), read_free_shapes(root)), "");
}

/// Names and styles do not depend on each other: assemblies whose names matter, in every way.
std::vector<NamedSplit> splits_after_products() {
  const AssemblySource sources[] = {{"odd-names", 25},
                                    {"equal-names", 2},
                                    {"desk-lamp.step"},
                                    {"dm1-pe-214.stp"},
                                    {"filament-sensor.step"}};
  std::vector<NamedSplit> splits;
  for (const AssemblySource& source : sources) {
    for (const AssemblyStyle style : {AssemblyStyle::lean, AssemblyStyle::nested}) {
      splits.push_back({source, style, NameStyle::product});
      splits.push_back({source, style, NameStyle::product_unicode});
    }
  }
  return splits;
}

std::string name_of_named_split(const testing::TestParamInfo<NamedSplit>& test) {
  const auto& [source, style, names] = test.param;
  return test_name(source) + (style == AssemblyStyle::nested ? "_nested" : "_lean") +
         (names == NameStyle::product ? "_ascii" : "_unicode");
}

INSTANTIATE_TEST_SUITE_P(Assemblies, SplitAfterProducts, testing::ValuesIn(splits_after_products()),
                         name_of_named_split);

constexpr AssemblyStyle CLASSIC = AssemblyStyle::classic;

// Classic: where a component's solid hangs on its shape by a relationship, the root repeats it, and
// a reader finds it again as a free shape at the origin.
INSTANTIATE_TEST_SUITE_P(DetachedSolids, SplitWithKnownChange,
                         testing::Values(KnownChange{{"as1-pe-203.stp"}, CLASSIC, 6, 18, 23},
                                         KnownChange{{"din-mount.step"}, CLASSIC, 4, 8, 11},
                                         KnownChange{{"exhaust-plate.step"}, CLASSIC, 5, 19, 23},
                                         KnownChange{{"filament-sensor.step"}, CLASSIC, 9, 19, 30},
                                         KnownChange{{"spool-ramp.step"}, CLASSIC, 3, 2, 4},
                                         KnownChange{{"toolhead-mount.step"}, CLASSIC, 12, 12, 24},
                                         KnownChange{{"detached", 2}, CLASSIC, 4, 7, 10}),
                         [](const auto& test) { return test_name(test.param.source); });

}  // namespace
}  // namespace Kessel::test
