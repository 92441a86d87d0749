// velkstep tree --dot: the text, and what Graphviz draws from it.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "cli/run_process.h"
#include "inspection/products.h"
#include "support/scratch_folder.h"
#include "support/shell.h"

namespace Kessel::test {
namespace {

std::string dot_of(const std::string& records, std::vector<std::string> options = {}) {
  const ScratchFolder folder;
  folder.write("in.stp", exchange_file(records));
  options.insert(options.begin(), {"tree", "--dot", "in.stp"});
  const ProcessRun run = run_velkstep(options);
  EXPECT_EQ(run.exit_code, 0);
  EXPECT_EQ(run.errors, "");
  return run.out;
}

const std::string BEGIN =
    "digraph \"in.stp\" {\n"
    "  graph [rankdir=LR, charset=\"UTF-8\"];\n"
    "  node [shape=box, fontname=\"sans-serif\"];\n";

TEST(TreeDot, EachPartIsANodeAndEachUseAnEdge) {
  EXPECT_EQ(dot_of(product(1, "'No. 1','a',''") + product(11, "'b','b',''") +
                   product(21, "'c','c',''") + usage(30, 3, 13) + usage(31, 13, 23) +
                   usage(32, 13, 23) + usage(33, 3, 23) + shape(40, 13, true)),
            BEGIN +
                "  p0 [label=\"a\\nNo. 1\\n#3\", shape=folder];\n"
                "  p1 [label=\"b\\n#13\", shape=box3d];\n"
                "  p2 [label=\"c\\n#23\"];\n"
                "  p0 -> p1;\n"
                "  p0 -> p2;\n"
                "  p1 -> p2 [label=\"×2\"];\n"
                "}\n");
}

TEST(TreeDot, UseThatClosesACycleIsDashed) {
  EXPECT_EQ(dot_of(std::string(CYCLE) + usage(20, 6, 3)),
            BEGIN +
                "  p0 [label=\"hen\\n#3\", shape=folder];\n"
                "  p1 [label=\"egg\\n#6\", shape=folder];\n"
                "  p0 -> p1;\n"
                "  p1 -> p0 [label=\"×2\", style=dashed];\n"
                "}\n");
}

TEST(TreeDot, DepthLeavesOutWhatIsFurtherFromTheRoot) {
  // a holds b and c; b holds c and d.
  const std::string records = product(1, "'a','a',''") + product(11, "'b','b',''") +
                              product(21, "'c','c',''") + product(31, "'d','d',''") +
                              usage(41, 3, 13) + usage(42, 3, 23) + usage(43, 13, 23) +
                              usage(44, 13, 33);
  EXPECT_EQ(dot_of(records, {"--depth=1"}), BEGIN +
                                                "  p0 [label=\"a\\n#3\", shape=folder];\n"
                                                "  p1 [label=\"b\\n#13\", shape=folder];\n"
                                                "  p2 [label=\"c\\n#23\"];\n"
                                                "  p0 -> p1;\n"
                                                "  p0 -> p2;\n"
                                                "  p1 -> p2;\n"
                                                "}\n");
  EXPECT_EQ(dot_of(records, {"--depth=0"}), BEGIN + "  p0 [label=\"a\\n#3\", shape=folder];\n}\n");
}

TEST(TreeDot, FileWithoutPartsIsAnEmptyGraph) {
  const ScratchFolder folder;
  folder.write("in.stp", exchange_file(""));
  EXPECT_EQ(run_velkstep({"tree", "--dot", "in.stp"}).out, BEGIN + "}\n");
}

/// What Graphviz draws as SVG; empty when it fails.
std::string drawn(const std::string& dot) {
  const ScratchFolder folder;
  folder.write("in.dot", dot);
  const std::string svg = run_in_shell("'" VELKSTEP_DOT "' -Tsvg in.dot 2>errors.txt").out;
  EXPECT_EQ(read_file("errors.txt"), "");
  return svg;
}

std::size_t count_of(const std::string& text, const std::string& part) {
  std::size_t count = 0;
  for (std::size_t at = 0; (at = text.find(part, at)) != std::string::npos; ++at) ++count;
  return count;
}

/// The texts of the drawing, character entities resolved.
std::vector<std::string> texts_in(const std::string& svg) {
  const std::pair<std::string, std::string> ENTITIES[] = {
      {"&lt;", "<"},  {"&gt;", ">"},   {"&quot;", "\""}, {"&#39;", "'"},
      {"&#45;", "-"}, {"&#160;", " "}, {"&amp;", "&"}};
  std::vector<std::string> texts;
  for (std::size_t at = 0; (at = svg.find("<text ", at)) != std::string::npos;) {
    const std::size_t begin = svg.find('>', at) + 1;
    at = svg.find("</text>", begin);
    std::string text = svg.substr(begin, at - begin);
    for (const auto& [entity, character] : ENTITIES) {
      for (std::size_t i = 0; (i = text.find(entity, i)) != std::string::npos; ++i) {
        text.replace(i, entity.size(), character);
      }
    }
    texts.push_back(text);
  }
  return texts;
}

TEST(TreeDot, GraphvizDrawsTheExample) {
  if (std::string(VELKSTEP_DOT).empty()) GTEST_SKIP() << "no Graphviz";
  const std::string svg = drawn(run_velkstep({"tree", "--dot", VELKSTEP_EXAMPLE}).out);
  EXPECT_EQ(count_of(svg, "class=\"node\""), 14u);
  EXPECT_EQ(count_of(svg, "class=\"edge\""), 14u);
  EXPECT_EQ(count_of(svg, ">Desk lamp</text>"), 1u);
  EXPECT_EQ(count_of(svg, ">×4</text>"), 1u);
  EXPECT_EQ(count_of(svg, ">×2</text>"), 2u);
}

TEST(TreeDot, GraphvizShowsNamesAsTheyAre) {
  if (std::string(VELKSTEP_DOT).empty()) GTEST_SKIP() << "no Graphviz";
  const std::vector<std::pair<std::string, std::string>> NAMES = {
      {"say \"hi\"", "say \"hi\""},
      {"a\\\\nb \\\\N \\\\", "a\\nb \\N \\"},
      {"R&D &amp\\X2\\003B\\X0\\ &#65\\X2\\003B\\X0\\", "R&D &amp; &#65;"},
      {"<b>bold</b>", "<b>bold</b>"},
      {"} x -> y [", "} x -> y ["},
      {"\\X2\\30CD30B8\\X0\\ \xF0\x9F\x94\xA9", "ネジ 🔩"},
      {"esc\x1B[31m", "esc\xEF\xBF\xBD[31m"},
  };
  std::string records = product(1, "'root','root',''");
  int number = 11;
  for (const auto& [written, shown] : NAMES) {
    records += product(number, "'','" + written + "',''") + usage(number + 500, 3, number + 2);
    number += 10;
  }
  const std::vector<std::string> texts = texts_in(drawn(dot_of(records)));
  for (const auto& [written, shown] : NAMES) {
    EXPECT_EQ(std::count(texts.begin(), texts.end(), shown), 1) << shown;
  }
  EXPECT_EQ(texts.size(), 2 * (NAMES.size() + 1));
}

}  // namespace
}  // namespace Kessel::test
