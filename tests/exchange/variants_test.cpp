// However a file is written, the library loads what it says.
#include <gtest/gtest.h>

#include <filesystem>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "exchange/variants/form.h"
#include "exchange/variants/meaning.h"
#include "exchange/variants/variants.h"
#include "support/scratch_folder.h"

#ifdef HAS_ASSEMBLY_SHAPES
#include "generator/shapes.h"
#endif

namespace Kessel::test {
namespace {

/// What a variant makes of what a file says: PRODUCT records with other strings.
Meaning with_suffix(Meaning meaning, const std::string& suffix) {
  for (auto& [number, words] : meaning.records) {
    if (words.at(0) != "PRODUCT") continue;
    for (std::string& word : words) {
      if (word.starts_with('\'')) word += suffix;
    }
  }
  return meaning;
}

void expect_the_same_in_all_variants(const std::string& file) {
  const std::string plain = plain_form(file);
  const Form form = form_of(plain);
  const Meaning meaning = meaning_of(plain);
  ASSERT_FALSE(meaning.records.empty());
  ASSERT_EQ(meaning.records, meaning_of(file).records);
  for (const Variant& variant : variants()) {
    const Rewritten rewriting = rewritten(variant, form);
    ASSERT_EQ(rewriting.text == plain, variant.name == "plain") << variant.name;
    const Meaning found = meaning_of(rewriting.text, rewriting.plain_numbers);
    const Meaning expected = with_suffix(meaning, variant.suffix_value);
    ASSERT_EQ(found.header, expected.header) << variant.name;
    ASSERT_EQ(found.records.size(), expected.records.size()) << variant.name;
    for (const auto& [number, words] : expected.records) {
      const auto same = found.records.find(number);
      ASSERT_TRUE(same != found.records.end()) << variant.name << ": #" << number;
      ASSERT_EQ(same->second, words) << variant.name << ": #" << number;
    }
  }
}

TEST(Variants, HaveNamesOfTheirOwn) {
  std::set<std::string> names;
  for (const Variant& variant : variants()) {
    EXPECT_TRUE(names.insert(variant.name).second) << variant.name;
  }
  EXPECT_GE(names.size(), 45u);
}

TEST(Variants, OfTheExampleSayTheSame) {
  expect_the_same_in_all_variants(
      read_file(std::filesystem::path(PROJECT_FOLDER) / "examples/desk-lamp.step"));
}

#ifdef HAS_ASSEMBLY_SHAPES
TEST(Variants, OfAGeneratedAssemblySayTheSame) {
  std::ostringstream out;
  bench::write_file(out, *bench::find_shape("shared"), 6, 1);
  expect_the_same_in_all_variants(out.str());
}
#endif

TEST(Variants, OfARealAssemblySayTheSame) {
  const std::filesystem::path folder = samples_folder();
  if (folder.empty()) GTEST_SKIP() << "no samples";
  expect_the_same_in_all_variants(read_file(folder / "as1-oc-214.stp"));
}

}  // namespace
}  // namespace Kessel::test
