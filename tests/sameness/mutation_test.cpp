// Thousands of small changes, each of which must be found, and rewritings, which must not.
#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "kessel/diff.h"
#include "sameness/plain_file.h"
#include "sameness/plain_matcher.h"
#include "sameness/rewriting.h"
#include "support/effort.h"
#include "support/scratch_folder.h"

namespace Kessel::test {
namespace {

class Compared {
 public:
  explicit Compared(const PlainFile& file) { folder_.write("a.stp", put_together(file)); }

  Difference with(const std::string& text) const {
    folder_.write("b.stp", text);
    return diff("a.stp", "b.stp");
  }

 private:
  ScratchFolder folder_;
};

/// Whether anything is listed.
bool says_where(const Difference& difference) {
  for (const ProductDifference& product : difference.products) {
    for (const TypeDifference& type : product.types) {
      if (!type.only_in_a.empty() || !type.only_in_b.empty() || !type.changed.empty()) return true;
    }
  }
  return false;
}

struct Sample {
  std::string name;
  std::uint64_t mutations;
};

class Samples : public testing::TestWithParam<Sample> {
 protected:
  static PlainFile load() { return take_apart(read_file(samples_folder() / GetParam().name)); }
};

TEST_P(Samples, RewritingsSayTheSame) {
  if (samples_folder().empty()) GTEST_SKIP() << why_no_sample();
  const PlainFile file = load();
  const Compared compared(file);
  for (std::uint64_t seed = 0; seed < tries(1); ++seed) {
    Random random(seed);
    const Difference difference = compared.with(respelled(shuffled(file, random), random));
    EXPECT_TRUE(difference.is_same && difference.is_certain) << "seed " << seed;
    EXPECT_TRUE(difference.products.empty());
  }
}

TEST_P(Samples, EveryMutationIsFound) {
  if (samples_folder().empty()) GTEST_SKIP() << why_no_sample();
  const PlainFile file = load();
  const Compared compared(file);
  for (std::uint64_t seed = 0; seed < tries(GetParam().mutations); ++seed) {
    Random random(seed);
    PlainFile mutant = file;
    const std::string what = mutate(mutant, random);
    const Difference difference = compared.with(put_together(shuffled(mutant, random)));
    EXPECT_TRUE(difference.is_certain) << what;
    if (difference.is_same) {
      EXPECT_TRUE(match(file, mutant)) << "seed " << seed << ": " << what;
    } else {
      EXPECT_TRUE(says_where(difference)) << "seed " << seed << ": " << what;
    }
  }
}

/// A small file in which much is alike: vertices and edges at random, records that refer to each
/// other in circles, sets, values that say the same, references to nothing.
PlainFile random_file(Random& random) {
  const auto below = [&random](std::size_t end) {
    return static_cast<std::size_t>(random() % end);
  };
  const std::size_t count = 8 + below(14);
  const auto some = [&] { return "#" + std::to_string(1 + below(count + 1)); };
  std::string text;
  for (std::size_t i = 1; i <= count; ++i) {
    const std::string records[] = {
        "CARTESIAN_POINT('',(0.,0.))",
        "VERTEX_POINT(''," + some() + ")",
        "VERTEX_POINT('',#1)",
        "EDGE_CURVE(''," + some() + "," + some() + ",$,.T.)",
        "EDGE_LOOP('',(" + some() + "," + some() + "))",
        "SHAPE_REPRESENTATION('',(" + some() + "," + some() + "," + some() + "),#2)",
        "STYLED_ITEM('',(" + some() + ")," + some() + ")",
        "COLOUR_RGB('',1.,0.,0.)",
        "PRESENTATION_STYLE_ASSIGNMENT((" + some() + "))",
        "LINE(''," + some() + "," + some() + ")",
        "PRESENTATION_LAYER_ASSIGNMENT('','',(" + some() + "," + some() + "))",
        "WIDGET(" + some() + ",(" + some() + "),'')",
    };
    text += "#" + std::to_string(i) + "=" + records[below(std::size(records))] + ";\n";
  }
  return take_apart(file_of(text));
}

TEST(Mutations, OfSmallFilesAreFoundIfAndOnlyIfTheyMatter) {
  std::uint64_t same = 0;
  std::uint64_t count = 0;
  for (std::uint64_t seed = 0; seed < tries(100); ++seed) {
    Random random(seed);
    const PlainFile file = random_file(random);
    const Compared compared(file);
    for (int i = 0; i < 20; ++i, ++count) {
      PlainFile mutant = file;
      std::string what = i == 0 ? "nothing" : mutate(mutant, random);
      if (i % 4 == 3) what += " and " + mutate(mutant, random);
      const Difference difference = compared.with(put_together(shuffled(mutant, random)));
      same += difference.is_same ? 1 : 0;
      ASSERT_TRUE(difference.is_certain);
      ASSERT_EQ(difference.is_same, match(file, mutant))
          << "seed " << seed << ": " << what << "\n"
          << put_together(file) << put_together(mutant);
      ASSERT_NE(difference.is_same, says_where(difference)) << "seed " << seed << ": " << what;
    }
  }
  EXPECT_GT(same, count / 20);  // Some of the changes do not matter.
  EXPECT_LT(same, count / 2);
}

/// Vertices that say the same, and edges between them, two at each vertex or three.
PlainFile regular_graph(std::size_t vertices, std::size_t degree, Random& random) {
  std::vector<std::size_t> ends;
  for (std::size_t i = 0; i < vertices * degree; ++i) ends.push_back(i / degree + 1);
  std::shuffle(ends.begin(), ends.end(), random);
  std::string text;
  for (std::size_t i = 1; i <= vertices; ++i)
    text += "#" + std::to_string(i) + "=VERTEX_POINT('',$);\n";
  for (std::size_t i = 0; i + 1 < ends.size(); i += 2) {
    text += "#" + std::to_string(100 + i) + "=CONNECTED('',(#" + std::to_string(ends[i]) + "));\n";
    text += "#" + std::to_string(101 + i) + "=EDGE(#" + std::to_string(100 + i) + ",#" +
            std::to_string(ends[i + 1]) + ");\n";
  }
  return take_apart(file_of(text));
}

TEST(Mutations, GraphsThatLookAlikeAllOverAreToldApart) {
  std::uint64_t same = 0;
  for (std::uint64_t seed = 0; seed < tries(120); ++seed) {
    Random random(seed);
    const std::size_t degree = 2 + seed % 2;
    const std::size_t vertices = degree == 2 ? 5 : 4;
    const PlainFile a = regular_graph(vertices, degree, random);
    const PlainFile b = regular_graph(vertices, degree, random);
    const Difference difference = Compared(a).with(put_together(shuffled(b, random)));
    ASSERT_TRUE(difference.is_certain);
    ASSERT_EQ(difference.is_same, match(a, b)) << put_together(a) << put_together(b);
    ASSERT_NE(difference.is_same, says_where(difference)) << put_together(a) << put_together(b);
    same += difference.is_same ? 1U : 0U;
  }
  EXPECT_GT(same, tries(5));
  EXPECT_LT(same, tries(60));
}

INSTANTIATE_TEST_SUITE_P(Real, Samples,
                         testing::Values(Sample{"cube-inch.step", 100},
                                         Sample{"io1-tu-203.stp", 50}, Sample{"dm1-pe-214.stp", 30},
                                         Sample{"dm1-id-214.stp", 30}, Sample{"as1-oc-214.stp", 3}),
                         [](const auto& sample) {
                           std::string name = sample.param.name;
                           for (char& c : name) c = std::isalnum(c) ? c : '_';
                           return name;
                         });

}  // namespace
}  // namespace Kessel::test
