// However a file is written, its split says what that of the plain form says.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <map>
#include <sstream>
#include <string>
#include <tuple>
#include <vector>

#include "exchange/variants/form.h"
#include "exchange/variants/variants.h"
#include "interop/assemblies.h"
#include "kessel/diff.h"
#include "kessel/errors.h"
#include "kessel/splitter.h"
#include "support/scratch_folder.h"

namespace Kessel::test {
namespace {

namespace fs = std::filesystem;

/// Takes the anchor and reference sections out of the file `path`, one statement a line as splits
/// write them. Returns how many entries they had.
std::size_t drop_entries(const fs::path& path) {
  std::istringstream in(read_file(path));
  std::string text;
  std::size_t entries = 0;
  bool is_inside = false;
  for (std::string line; std::getline(in, line);) {
    const bool begins = line == "ANCHOR;" || line == "REFERENCE;";
    if (!begins && !is_inside) text += line + '\n';
    if (!begins && is_inside && line != "ENDSEC;") ++entries;
    is_inside = begins || (is_inside && line != "ENDSEC;");
  }
  if (entries != 0) std::ofstream(path, std::ios::binary) << text;
  return entries;
}

/// What the file `b` says else than `a`.
std::vector<std::string> differences_of_files(const fs::path& a, const fs::path& b) {
  const Difference difference = diff(a, b);
  std::vector<std::string> faults;
  if (!difference.is_certain) faults.push_back("uncertain");
  if (difference.schemas_in_a != difference.schemas_in_b) faults.push_back("other schemas");
  if (difference.records_in_a != difference.records_in_b) faults.push_back("other records");
  for (const ProductDifference& product : difference.products) {
    for (const TypeDifference& type : product.types) {
      faults.push_back(product.name + ": " + type.type);
    }
  }
  return faults;
}

/// The files of a split, by their names.
std::vector<std::string> names_of(const std::vector<WrittenFile>& files) {
  std::vector<std::string> names;
  for (const WrittenFile& file : files) names.push_back(file.path.filename().string());
  std::sort(names.begin() + (names.empty() ? 0 : 1), names.end());  // The root's stays in front.
  return names;
}

using Case = std::tuple<AssemblySource, AssemblyStyle>;

class SplitOfVariants : public testing::TestWithParam<Case> {
 protected:
  /// Splits a file into a folder of that name.
  std::vector<std::string> split_text(const std::string& text, const std::string& folder) {
    fs::remove_all(folder);
    Options options;
    options.assemblies = std::get<AssemblyStyle>(GetParam());
    const auto names = names_of(split(folder_.write("in.stp", text), folder, options));
    fs::remove("roots.txt");
    return names;
  }

  /// The same for the plain form, which is split once for all variants with these names.
  const std::vector<std::string>& split_plain_form(const Variant& variant, const Form& form,
                                                   const std::string& folder) {
    const auto [found, is_new] = plain_.try_emplace(folder);
    if (is_new) found->second = split_text(plain_form(variant, form), folder);
    return found->second;
  }

  const ScratchFolder folder_;

 private:
  std::map<std::string, std::vector<std::string>> plain_;
};

/// Whether the variant has anchors or references to other files besides.
bool adds_entries(const Variant& variant) {
  return variant.name.find("anchor") != std::string::npos ||
         variant.name.find("reference section") != std::string::npos;
}

/// Whether the classic style has no room for the numbers.
bool has_large_numbers(const Rewritten& rewriting) {
  return std::any_of(rewriting.plain_numbers.begin(), rewriting.plain_numbers.end(),
                     [](const auto& number) { return std::stoull(number.first) > 0xFFFF'FFFF; });
}

TEST_P(SplitOfVariants, SaysWhatThatOfThePlainFormSays) {
  const auto& [source, assemblies] = GetParam();
  const fs::path path = file_of(source, folder_);
  if (path.empty()) GTEST_SKIP() << why_no_sample();
  const Form form = form_of(plain_form(read_file(path)));
  for (const Variant& variant : variants()) {
    SCOPED_TRACE(variant.name);
    const Rewritten rewriting = rewritten(variant, form);
    if (assemblies == AssemblyStyle::classic && has_large_numbers(rewriting)) {
      EXPECT_THROW(split_text(rewriting.text, "variant"), InputError);
      continue;
    }
    const std::string plain =
        "plain" + std::to_string(std::hash<std::string>()(variant.suffix_value));
    const auto names = split_text(rewriting.text, "variant");
    ASSERT_EQ(names, split_plain_form(variant, form, plain));
    ASSERT_GT(names.size(), 1u);
    std::size_t entries = 0;
    for (const std::string& name : names) {
      const fs::path file = fs::path("variant") / name;
      entries += drop_entries(file);
      EXPECT_THAT(differences_of_files(fs::path(plain) / name, file), testing::IsEmpty()) << name;
    }
    EXPECT_EQ(entries != 0, adds_entries(variant) && assemblies != AssemblyStyle::classic);
  }
}

std::string name_of_case(const testing::TestParamInfo<Case>& test) {
  const auto& [source, assemblies] = test.param;
  const char* const style = assemblies == AssemblyStyle::classic ? "_classic"
                            : assemblies == AssemblyStyle::lean  ? "_lean"
                                                                 : "_nested";
  return test_name(source) + style;
}

constexpr AssemblyStyle STYLES[] = {AssemblyStyle::classic, AssemblyStyle::lean,
                                    AssemblyStyle::nested};

INSTANTIATE_TEST_SUITE_P(Few, SplitOfVariants,
                         testing::Combine(testing::Values(AssemblySource{"bench-vice.step"}),
                                          testing::ValuesIn(STYLES)),
                         name_of_case);
INSTANTIATE_TEST_SUITE_P(Others, SplitOfVariants,
                         testing::Combine(testing::Values(AssemblySource{"as1-oc-214.stp"},
                                                          AssemblySource{"desk-lamp.step"},
                                                          AssemblySource{"several-usages", 5}),
                                          testing::ValuesIn(STYLES)),
                         name_of_case);

}  // namespace
}  // namespace Kessel::test
