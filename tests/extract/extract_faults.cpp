#include "extract/extract_faults.h"

#include <map>
#include <set>
#include <string_view>

#include "extract/said_records.h"
#include "kessel/diff.h"
#include "kessel/extract.h"
#include "kessel/join.h"
#include "kessel/splitter.h"
#include "placement/check_placement.h"
#include "products/structure.h"
#include "support/scratch_folder.h"

namespace Kessel::test {

namespace fs = std::filesystem;

namespace {

class Extractions {
 public:
  Extractions(const fs::path& in, bool same_as_split, bool is_sound)
      : in_(in),
        same_as_split_(same_as_split),
        is_sound_(is_sound),
        input_(in),
        products_(find_products(input_.instances)) {
    Options options;
    options.assemblies = AssemblyStyle::nested;
    options.names = NameStyle::product;
    options.warning = [&](const Finding& finding) {
      has_foreign_shapes_ = has_foreign_shapes_ || finding.kind == FindingKind::foreign_shape;
    };
    fs::remove_all("split");
    for (const WrittenFile& file : split(in, "split", options)) split_[file.part] = file.path;
    fs::remove("roots.txt");
  }

  std::vector<std::string> check() {
    for (ProductId product = 0; product < products_.products.size(); ++product) {
      check_product(product);
    }
    return std::move(faults_);
  }

 private:
  void say(const std::string& fault) { faults_.push_back(asked_ + " " + fault); }

  void check_product(ProductId product) {
    asked_ = "#" + std::to_string(input_.instances.number(products_.products[product].definition));
    check_placing(product);
    ExtractOptions options;
    options.replace = true;
    const ExtractedFile file = extract(in_, asked_, "out.stp", options);
    const SaidRecords out("out.stp");
    if (file.records != numbered(out.instances)) say("has another number of records than was said");
    if (file.bytes != fs::file_size("out.stp")) say("has another size than was said");
    if (input_.instances.missing_references() == 0 && out.instances.missing_references() != 0) {
      say("has references that lead nowhere");
    }
    for (const std::uint64_t number : input_.not_said(out)) {
      say("has #" + std::to_string(number) + ", which the input does not have");
    }
    check_products(product, out.instances);
    const std::string text = read_file("out.stp");
    if (text.find("velkstep") != text.npos || has_marked_record(text)) say("has marks");
    check_split(product);
  }

  /// Whether a comment stands right in front of a record.
  static bool has_marked_record(std::string_view text) {
    constexpr std::string_view BETWEEN = "*/#";
    for (auto at = text.find(BETWEEN); at != text.npos; at = text.find(BETWEEN, at + 1)) {
      const auto behind = text.find_first_not_of("0123456789", at + BETWEEN.size());
      if (behind != text.npos && text[behind] == '=') return true;
    }
    return false;
  }

  /// How many records there are, anchors apart.
  static std::uint64_t numbered(const Instances& instances) {
    std::uint64_t count = 0;
    for (Index record = 0; record < instances.size(); ++record) {
      if (instances.type(record) != TypeTable::ANCHOR_ENTRY) ++count;
    }
    return count;
  }

  void check_placing(ProductId product) {
    const Placement placement =
        place_records(input_.instances, products_, plan_extraction(products_, product));
    for (std::string& sentence : check_placement(input_.instances, products_, placement)) {
      say("placement: " + std::move(sentence));
    }
    if (is_sound_) {
      for (std::string& sentence : check_remarks(input_.instances, products_, placement)) {
        say("placement: " + std::move(sentence));
      }
    }
    const auto last = static_cast<FileId>(placement.files.size() - 1);
    for (Index record = 0; record < input_.instances.size(); ++record) {
      const Stand* const stand = placement.stands.find(record, last);
      if (stand == nullptr || stand->role() == Role::own) continue;
      // What places a component may consist of the same records as another product's shape.
      if (stand->role() == Role::stand_in || !is_part_of_placement(record)) {
        say("has #" + std::to_string(input_.instances.number(record)) + " of another product");
      }
    }
  }

  bool is_part_of_placement(Index record) const {
    return is_placement(input_.instances, record) ||
           input_.instances.is(record, "CARTESIAN_POINT") ||
           input_.instances.is(record, "DIRECTION");
  }

  std::set<ProductId> all_below(ProductId product) const {
    std::set<ProductId> below;
    std::vector<ProductId> open{product};
    while (!open.empty()) {
      const ProductId next = open.back();
      open.pop_back();
      if (!below.insert(next).second) continue;
      for (const auto usage : products_.products[next].usages) {
        const Usage& used = products_.usages[usage];
        if (!used.closes_circle) open.push_back(used.component);
      }
      for (const auto& mapped : products_.products[next].mapped) open.push_back(mapped.product);
    }
    // Other views stand with them.
    for (ProductId id = 0; id < products_.products.size(); ++id) {
      if (below.contains(products_.products[id].stands_with)) below.insert(id);
    }
    return below;
  }

  std::multiset<std::string> names_below(ProductId product) const {
    const std::set<ProductId> below = all_below(product);
    std::multiset<std::string> names;
    const auto is_below = [&](ProductId one) { return below.contains(one); };
    for (const ProductId one : below) {
      if (is_product_without_users(one) || is_used_by(one, is_below)) {
        names.insert(name_of(products_.products[one]));
      }
    }
    return names;
  }
  /// A definition without a shape or a place in the structure is no product.
  bool is_product_without_users(ProductId product) const {
    return !products_.products[product].links.empty() || products_.is_assembly(product);
  }
  template <class IsBelow>
  bool is_used_by(ProductId product, IsBelow is_below) const {
    return std::any_of(products_.usages.begin(), products_.usages.end(), [&](const Usage& usage) {
      return usage.component == product && is_below(usage.assembly);
    });
  }
  static std::string name_of(const Product& product) {
    return product.id + "|" + product.name + "|" + product.version;
  }

  void check_products(ProductId product, const Instances& out) {
    const Products products = find_products(out);
    if (products.products.empty() && !is_product_without_users(product)) return;
    if (names_in(products) != names_below(product)) say("has other products than those below it");
    const std::string name = name_of(products_.products[product]);
    if (products.tops.size() != 1) {
      say("has " + std::to_string(products.tops.size()) + " tops");
    } else if (name_of(products.products[products.tops.front()]) != name) {
      say("has another top");
    }
  }

  static std::multiset<std::string> names_in(const Products& products) {
    std::multiset<std::string> names;
    for (const Product& one : products.products) names.insert(name_of(one));
    return names;
  }

  static std::size_t definitions_in(const fs::path& path) {
    std::ifstream in(path, std::ios::binary);
    Instances instances;
    load_instances(in, instances);
    std::size_t count = 0;
    for (Index record = 0; record < instances.size(); ++record) {
      if (is_definition(instances, record)) ++count;
    }
    return count;
  }

  bool has_circle_below(ProductId product) const {
    const std::set<ProductId> below = all_below(product);
    return std::any_of(products_.usages.begin(), products_.usages.end(), [&](const Usage& usage) {
      return usage.closes_circle && below.contains(usage.assembly);
    });
  }

  /// Nothing may be lacking. There may be more: what needs records that in the files of a split
  /// stand together elsewhere, or nowhere.
  void check_split(ProductId product) {
    if (has_foreign_shapes_ || has_circle_below(product)) return;
    const auto found = split_.find(input_.instances.number(products_.products[product].definition));
    if (found == split_.end()) return;
    JoinOptions options;
    options.replace = true;
    options.allow_missing = true;  // What the input refers to need not be there.
    options.follow_outside = true;
    for (const Finding& warning : join(found->second, "joined.stp", options).warnings) {
      // It holds something for which it needs another product's placeholder.
      if (warning.kind == FindingKind::stand_in_left) return;
    }
    if (definitions_in("joined.stp") != definitions_in("out.stp")) return;
    const Difference difference = diff("joined.stp", "out.stp");
    for (const ProductDifference& one : difference.products) {
      for (const TypeDifference& type : one.types) say_difference(one.name, type);
    }
    if (same_as_split_ && !difference.is_same) say("says something else than the split");
    if (!difference.is_same && difference.products.empty()) say("says something else");
  }

  void say_difference(const std::string& product, const TypeDifference& type) {
    const std::string what = "'" + product + "' " + type.type + " ";
    for (const auto number : type.only_in_a)
      say(what + "lacks the split's #" + std::to_string(number));
    for (const ChangedRecord& record : type.changed) {
      std::string changes;
      for (const ChangedParameter& parameter : record.parameters) {
        changes += ", " + parameter.in_a + " is " + parameter.in_b;
      }
      say(what + "has another #" + std::to_string(record.in_b) + changes);
    }
  }

  const fs::path in_;
  const bool same_as_split_;
  const bool is_sound_;
  const SaidRecords input_;
  const Products products_;
  std::map<std::uint64_t, fs::path> split_;  // by definition
  bool has_foreign_shapes_ = false;
  std::string asked_;
  std::vector<std::string> faults_;
};

}  // namespace

std::vector<std::string> extract_faults(const fs::path& in, bool same_as_split, bool is_sound) {
  return Extractions(in, same_as_split, is_sound).check();
}

}  // namespace Kessel::test
