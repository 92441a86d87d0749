// The same input gives the same bytes, wherever the system puts memory.
#include <gtest/gtest.h>

#include <filesystem>
#include <map>
#include <string>

#include "cli/run_process.h"
#include "splitter/small_inputs.h"
#include "support/folder_tree.h"
#include "support/scratch_folder.h"

namespace Kessel::test {
namespace {

namespace fs = std::filesystem;

/// What one run prints and writes, by file name; time stamps replaced.
std::map<std::string, std::string> outcome_of(const fs::path& in, const std::string& style,
                                              bool random_addresses) {
  const ScratchFolder folder;
  const ProcessRun run =
      run_velkstep({"split", style, in, "out"}, {.random_addresses = random_addresses});
  EXPECT_EQ(run.exit_code, 0);
  std::map<std::string, std::string> outcome = {{"printed", run.out}, {"errors", run.errors}};
  outcome.merge(tree_of("out"));
  return outcome;
}

const std::string CLASSIC = "--classic";
const std::string NESTED = "--assemblies=nested";

void expect_same_bytes(const fs::path& in) {
  for (const std::string& style : {CLASSIC, NESTED}) {
    SCOPED_TRACE(style);
    const auto first = outcome_of(in, style, false);
    for (int run = 0; run < 3; ++run) {
      const auto again = outcome_of(in, style, true);
      ASSERT_EQ(again.size(), first.size());
      for (const auto& [name, text] : first) EXPECT_TRUE(again.at(name) == text) << name;
    }
  }
}

/// Many products that share one shape representation, and nothing that joins them.
std::string products_of_one_shape() {
  std::string records =
      "#1=SHAPE_REPRESENTATION('',(#2),#3);\n"
      "#2=MANIFOLD_SOLID_BREP('',$);\n"
      "#3=GEOMETRIC_REPRESENTATION_CONTEXT('id','3D',3);\n";
  for (int i = 1; i <= 30; ++i) {
    const auto name = [i](int k) { return "#" + std::to_string(10 * i + k); };
    records += name(0) + "=PRODUCT('','','',());\n";
    records += name(1) + "=PRODUCT_DEFINITION_FORMATION('',''," + name(0) + ");\n";
    records += name(2) + "=PRODUCT_DEFINITION('',''," + name(1) + ",$);\n";
    records += name(3) + "=PRODUCT_DEFINITION_SHAPE('',''," + name(2) + ");\n";
    records += name(4) + "=SHAPE_DEFINITION_REPRESENTATION(" + name(3) + ",#1);\n";
  }
  return exchange_file(records);
}

TEST(SameBytes, PartsThatShareInstances) {
  const ScratchFolder folder;
  const fs::path in = folder.write("in.stp", products_of_one_shape());
  expect_same_bytes(in);

  // Every link is shared with all parts before its own: each block names the first of the list.
  const std::string root = outcome_of(in, CLASSIC, true).at("Root.stp");
  std::size_t blocks = 0;
  const std::string document = "=DOCUMENT_FILE('";
  for (std::size_t at = root.find(document); at != std::string::npos;
       at = root.find(document, at + 1)) {
    ++blocks;
    EXPECT_EQ(root.substr(at + document.size(), 12), "#10_part.stp");
  }
  EXPECT_EQ(blocks, 30u);
}

TEST(SameBytes, RealAssemblies) {
  const fs::path samples = samples_folder();
  if (samples.empty()) GTEST_SKIP() << why_no_sample();
  for (const char* sample : {"as1-oc-214.stp", "as1-tu-203.stp", "dm1-id-214.stp"}) {
    SCOPED_TRACE(sample);
    expect_same_bytes(samples / sample);
  }
}

}  // namespace
}  // namespace Kessel::test
