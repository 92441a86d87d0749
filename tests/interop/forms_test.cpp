// Forms of assemblies that real systems write, or may: whoever follows the references of a split
// sees what the input shows, or what it means where the kernel misreads it.
#include <gtest/gtest.h>

#include <algorithm>
#include <ostream>

#include "assemblies/form_maker.h"
#include "interop/kernel_reader.h"
#include "kessel/splitter.h"
#include "support/scratch_folder.h"
#include "support/split_run.h"

namespace Kessel::test {

void PrintTo(const AssemblyForm& form, std::ostream* out) {
  *out << form.name;
}

namespace {

namespace fs = std::filesystem;

/// The free shapes by name. The kernel reads files that are referred to first, so that parts at the
/// top come in front of an assembly that the root's file holds itself.
std::vector<DocumentShape> shapes_by_name(const fs::path& path) {
  std::vector<DocumentShape> shapes = read_free_shapes(path);
  std::stable_sort(shapes.begin(), shapes.end(),
                   [](const auto& a, const auto& b) { return a.name < b.name; });
  return shapes;
}

class SplitForm : public testing::TestWithParam<AssemblyForm> {};

TEST_P(SplitForm, OpensAsItIsMeant) {
  const AssemblyForm& form = GetParam();
  const ScratchFolder folder;
  const fs::path in = folder.write("in.stp", form.text());
  const fs::path meant = form.meant ? folder.write("meant.stp", form.meant()) : in;
  const std::vector<DocumentShape> shapes = shapes_by_name(meant);
  EXPECT_GT(count_solids(shapes), 0);
  for (const AssemblyStyle style : {AssemblyStyle::nested, AssemblyStyle::lean}) {
    SCOPED_TRACE(style == AssemblyStyle::lean ? "lean" : "nested");
    const fs::path out = folder / (style == AssemblyStyle::lean ? "lean" : "nested");
    const fs::path root = split_paths(in, out, {.assemblies = style}).at(0);
    EXPECT_EQ(differences(shapes, shapes_by_name(root)), "");
    EXPECT_EQ(differences(read_remarks(meant), read_remarks(root)), "");
  }
}

INSTANTIATE_TEST_SUITE_P(Forms, SplitForm, testing::ValuesIn(assembly_forms()),
                         [](const auto& test) { return test.param.name; });

}  // namespace
}  // namespace Kessel::test
