#include "round_trip/round_trip.h"

#include <exception>
#include <fstream>

#include "instances/loader.h"
#include "join/joined_data.h"
#include "kessel/diff.h"
#include "kessel/join.h"
#include "kessel/splitter.h"
#include "kessel/verify.h"
#include "placement/check_placement.h"
#include "support/scratch_folder.h"

namespace Kessel::test {

namespace fs = std::filesystem;

namespace {

/// Records of a file, and what its reading warns of.
struct Reading {
  explicit Reading(const fs::path& path) {
    std::ifstream in(path, std::ios::binary);
    for (const Finding& finding : load_instances(in, instances)) {
      warnings.push_back(finding.sentence);
    }
  }
  Instances instances;
  std::vector<std::string> warnings;
};

/// One split of one input, and all that is wrong with it.
class RoundTrip {
 public:
  RoundTrip(const fs::path& in, AssemblyStyle assemblies, bool is_sound)
      : in_(in), input_(in), is_sound_(is_sound) {
    options_.assemblies = assemblies;
  }

  std::vector<std::string> run() {
    check_placing();
    const std::vector<WrittenFile> files = split_into("split");
    if (files.empty()) return std::move(faults_);
    try {
      for (const WrittenFile& file : files) check_file(file.path);
      check_joined(files.front().path);
      check_verified();
      check_again(files);
    } catch (const std::exception& error) {
      say(error.what());
    }
    return std::move(faults_);
  }

 private:
  void say(const std::string& fault) { faults_.push_back(fault); }

  void check_placing() {
    const Products products = find_products(input_.instances);
    const Placement placement = place_records(input_.instances, products, options_.assemblies);
    for (std::string& sentence : check_placement(input_.instances, products, placement)) {
      say("placement: " + std::move(sentence));
    }
    if (!is_sound_) return;
    for (std::string& sentence : check_remarks(input_.instances, products, placement)) {
      say("placement: " + std::move(sentence));
    }
  }

  std::vector<WrittenFile> split_into(const fs::path& folder) {
    fs::remove_all(folder);
    fs::remove("roots.txt");
    std::vector<WrittenFile> files = split(in_, folder, options_);
    if (!files.empty()) fs::rename("roots.txt", folder / "roots.txt");
    return files;
  }

  void check_file(const fs::path& path) {
    const Reading written(path);
    const std::string name = path.filename().string();
    if (input_.warnings.empty()) {
      for (const std::string& warning : written.warnings) say(name + ": " + warning);
    }
    if (input_.instances.missing_references() == 0 && written.instances.missing_references() != 0) {
      say(name + " has references that lead nowhere");
    }
    if (written.instances.size() == 0) say(name + " is empty");
  }

  void check_joined(const fs::path& root) {
    JoinOptions options;
    options.replace = true;
    // What the input refers to need not be there; seen from the split it is outside.
    options.allow_missing = true;
    options.follow_outside = true;
    join(root, "joined.stp", options);
    if (const std::string fault = difference_of_data(root, "joined.stp", options); !fault.empty()) {
      say("joined, what is written and what is compared differ: " + fault);
    }
    const Difference difference = diff(in_, "joined.stp");
    if (difference.is_same) return;
    say("joined, the files say something else");
    for (const ProductDifference& product : difference.products) {
      for (const TypeDifference& type : product.types) say_difference(product.name, type);
    }
  }

  void say_difference(const std::string& product, const TypeDifference& type) {
    const auto say_one = [&](const std::string& what) {
      say("'" + product + "' " + type.type + ": " + what);
    };
    for (const std::uint64_t number : type.only_in_a) say_one("lost #" + std::to_string(number));
    for (const std::uint64_t number : type.only_in_b) say_one("new #" + std::to_string(number));
    for (const ChangedRecord& record : type.changed) {
      std::string what = "changed #" + std::to_string(record.in_a);
      for (const ChangedParameter& parameter : record.parameters) {
        what += ", " + parameter.in_a + " became " + parameter.in_b;
      }
      say_one(what);
    }
  }

  void check_verified() {
    for (const Finding& finding : verify(in_, "split").findings) {
      say("verify: " + finding.file + ": " + finding.sentence);
    }
  }

  void check_again(const std::vector<WrittenFile>& files) {
    const std::vector<WrittenFile> again = split_into("again");
    if (again.size() != files.size()) return say("split again, there are other files");
    for (std::size_t i = 0; i < files.size(); ++i) {
      const auto text = [](const WrittenFile& file) {
        return without_time_stamps(read_file(file.path));
      };
      const bool is_same =
          files[i].path.filename() == again[i].path.filename() && text(files[i]) == text(again[i]);
      if (!is_same) say("split again, " + files[i].path.filename().string() + " is another");
    }
  }

  const fs::path in_;
  const Reading input_;
  const bool is_sound_;
  Options options_;
  std::vector<std::string> faults_;
};

}  // namespace

std::vector<std::string> round_trip_faults(const fs::path& in, AssemblyStyle assemblies,
                                           bool is_sound) {
  return RoundTrip(in, assemblies, is_sound).run();
}

}  // namespace Kessel::test
