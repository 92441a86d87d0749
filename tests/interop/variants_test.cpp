// However a file is written, the kernel reads its split as that of the plain form.
#include <gtest/gtest.h>

#include <filesystem>
#include <map>
#include <set>
#include <stdexcept>
#include <string>
#include <tuple>
#include <vector>

#include "exchange/variants/form.h"
#include "exchange/variants/variants.h"
#include "interop/assemblies.h"
#include "interop/kernel_reader.h"
#include "kessel/errors.h"
#include "support/scratch_folder.h"
#include "support/split_run.h"

namespace Kessel::test {
namespace {

namespace fs = std::filesystem;

using VariantsCase = std::tuple<AssemblySource, AssemblyStyle>;

class ReadVariants : public testing::TestWithParam<VariantsCase> {
 protected:
  /// What the kernel finds in the root's file of a split of `text`.
  std::vector<DocumentShape> shapes_of(const std::string& text) {
    fs::remove_all("out");
    fs::remove("roots.txt");
    Options options;
    options.assemblies = std::get<AssemblyStyle>(GetParam());
    return read_free_shapes(
        split_paths(folder_.write("in.stp", text), folder_ / "out", options).at(0));
  }

  /// The same of the plain form, once for all variants with these names.
  const std::vector<DocumentShape>& shapes_of_plain_form(const Variant& variant, const Form& form) {
    const auto [found, is_new] = plain_.try_emplace(variant.suffix_value);
    if (is_new) found->second = shapes_of(plain_form(variant, form));
    return found->second;
  }

  const ScratchFolder folder_;

 private:
  std::map<std::string, std::vector<DocumentShape>> plain_;
};

/// Whether the kernel finds something else in the input, too, than in its plain form: it knows
/// print control directives between words only, has its own way with two spellings of names, and
/// lists components in the order of the records.
bool has_own_meaning(const Variant& variant) {
  static const std::set<std::string> NAMES = {
      "print control in a name", "Latin-1 in a name",  "shifted apostrophe doubled in a name",
      "shuffled records",        "records in reverse", "shuffled records and numbers",
  };
  return NAMES.contains(variant.name);
}

TEST_P(ReadVariants, AsThePlainForm) {
  const auto& [source, assemblies] = GetParam();
  const fs::path path = file_of(source, folder_);
  if (path.empty()) GTEST_SKIP() << why_no_sample();
  const Form form = form_of(plain_form(read_file(path)));
  for (const Variant& variant : variants()) {
    const Rewritten rewriting = rewritten(variant, form);
    try {
      const std::vector<DocumentShape> shapes = shapes_of(rewriting.text);
      EXPECT_EQ(differences(has_own_meaning(variant) ? read_free_shapes(folder_ / "in.stp")
                                                     : shapes_of_plain_form(variant, form),
                            shapes),
                "")
          << variant.name;
    } catch (const InputError& error) {
      // The classic style has no room for such numbers.
      EXPECT_EQ(error.finding().kind, FindingKind::record_number_too_large) << variant.name;
      EXPECT_EQ(assemblies, AssemblyStyle::classic) << variant.name;
    } catch (const std::runtime_error&) {
      // Records stand in the files as in the input, which it does not read then either.
      EXPECT_THROW(read_free_shapes(folder_ / "in.stp"), std::runtime_error) << variant.name;
    }
  }
}

std::string name_of_variants_case(const testing::TestParamInfo<VariantsCase>& test) {
  const auto& [source, assemblies] = test.param;
  const std::string style = assemblies == AssemblyStyle::classic ? "_classic"
                            : assemblies == AssemblyStyle::lean  ? "_lean"
                                                                 : "_nested";
  return test_name(source) + style;
}

INSTANTIATE_TEST_SUITE_P(Assemblies, ReadVariants,
                         testing::Combine(testing::Values(AssemblySource{"as1-oc-214.stp"},
                                                          AssemblySource{"desk-lamp.step"},
                                                          AssemblySource{"several-usages", 5}),
                                          testing::Values(AssemblyStyle::classic,
                                                          AssemblyStyle::lean,
                                                          AssemblyStyle::nested)),
                         name_of_variants_case);

}  // namespace
}  // namespace Kessel::test
