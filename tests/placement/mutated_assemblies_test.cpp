// What must hold of every placement, on files that no system has written: records of small
// assemblies refer to wrong ones, say nothing any more, or stand there twice.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>
#include <random>
#include <sstream>

#include "instances/loader.h"
#include "interop/assemblies.h"
#include "placement/check_placement.h"
#include "support/effort.h"

namespace Kessel::test {
namespace {

/// The text of a file, cut into its records.
class MutableFile {
 public:
  explicit MutableFile(const std::string& text) {
    const std::size_t data = text.find("DATA;") + 5;
    const std::size_t end = text.rfind("ENDSEC;");
    head_ = text.substr(0, data);
    bool is_in_string = false;
    std::size_t begin = data;
    for (std::size_t at = data; at < end; ++at) {
      if (text[at] == '\'') is_in_string = !is_in_string;
      if (text[at] != ';' || is_in_string) continue;
      records_.push_back(text.substr(begin, at - begin));
      begin = at + 1;
    }
  }

  std::string mutated(std::mt19937& random) const {
    std::vector<std::string> records = records_;
    const std::size_t count = 1 + random() % 8;
    for (std::size_t i = 0; i < count; ++i) mutate(records, random);
    std::string text = head_;
    for (const std::string& record : records) text.append(record).append(";");
    return text + "\nENDSEC;\nEND-ISO-10303-21;\n";
  }

 private:
  static void mutate(std::vector<std::string>& records, std::mt19937& random) {
    std::string& record = records[random() % records.size()];
    const std::size_t body = record.find('=') + 1;
    switch (random() % 4) {
      case 0:
        record = record.substr(0, body) + "DUMMY()";
        break;
      case 1:
        records.push_back("\n#" + std::to_string(5'000'000 + records.size()) + "=" +
                          std::string(record, body));
        break;
      default:
        refer_elsewhere(record, body, number_of(records[random() % records.size()]), random);
    }
  }

  static std::string number_of(const std::string& record) {
    const std::size_t begin = record.find('#');
    return record.substr(begin, record.find_first_not_of("0123456789", begin + 1) - begin);
  }

  static void refer_elsewhere(std::string& record, std::size_t body, const std::string& target,
                              std::mt19937& random) {
    std::vector<std::size_t> names;
    for (std::size_t at = body; at < record.size(); ++at) {
      if (record[at] == '#') names.push_back(at);
    }
    if (names.empty()) return;
    const std::size_t begin = names[random() % names.size()];
    const std::size_t end = record.find_first_not_of("0123456789", begin + 1);
    record.replace(begin, end - begin, random() % 20 == 0 ? "#999999999" : target);
  }

  std::string head_;
  std::vector<std::string> records_;
};

class MutatedAssembly : public testing::TestWithParam<AssemblySource> {};

TEST_P(MutatedAssembly, IsPlacedAllTheSame) {
  const ScratchFolder folder;
  const std::filesystem::path path = file_of(GetParam(), folder);
  if (path.empty()) GTEST_SKIP() << why_no_sample();
  std::ifstream in(path, std::ios::binary);
  std::ostringstream text;
  text << in.rdbuf();
  const MutableFile file(text.str());
  constexpr unsigned SEEDS = 60;
  for (unsigned seed = 0; seed < tries(SEEDS); ++seed) {
    SCOPED_TRACE(seed);
    std::mt19937 random(seed);
    std::istringstream mutated(file.mutated(random));
    Instances instances;
    load_instances(mutated, instances);
    const Products products = find_products(instances);
    for (const AssemblyStyle style : {AssemblyStyle::lean, AssemblyStyle::nested}) {
      const Placement placement = place_records(instances, products, style);
      EXPECT_THAT(check_placement(instances, products, placement), testing::IsEmpty());
    }
  }
}

INSTANTIATE_TEST_SUITE_P(
    Assemblies, MutatedAssembly,
    testing::Values(AssemblySource{"abstract-pca.step"}, AssemblySource{"mapped-ap242.stp"},
                    AssemblySource{"cube-inch.step"}, AssemblySource{"dm1-id-214.stp"},
                    AssemblySource{"transformer-ap242.step"}, AssemblySource{"desk-lamp.step"},
                    AssemblySource{"detached", 2}, AssemblySource{"ladder", 4},
                    AssemblySource{"mapped", 6}, AssemblySource{"own-bodies", 2},
                    AssemblySource{"several-roots", 2}, AssemblySource{"shared-levels", 3}),
    [](const auto& test) { return test_name(test.param); });

}  // namespace
}  // namespace Kessel::test
