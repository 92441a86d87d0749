#include "placement/check_placement.h"

#include <algorithm>
#include <unordered_map>
#include <unordered_set>

namespace Kessel {

namespace {

class Check {
 public:
  Check(const Instances& instances, const Products& products, const Placement& placement)
      : instances_(instances), products_(products), placement_(placement) {}

  std::vector<std::string> run() {
    for (Index record = 0; record < instances_.size(); ++record) {
      if (instances_.type(record) == TypeTable::REPEATED) {
        if (!placement_.stands.of(record).empty()) say(record, "is a repetition with a file");
        continue;
      }
      check_record(record);
    }
    check_bodies();
    check_files();
    return std::move(sentences_);
  }

 private:
  void say(Index record, const std::string& what) {
    std::string& sentence = sentences_.emplace_back("#");
    sentence += std::to_string(instances_.number(record)) + " " + what;
  }
  void say(FileId file, Index record, const std::string& what) {
    std::string where = "in file ";
    where += std::to_string(file) + " " + what;
    say(record, where);
  }

  void check_record(Index record) {
    const auto stands = placement_.stands.of(record);
    const bool is_whole = std::any_of(stands.begin(), stands.end(),
                                      [](Stand stand) { return stand.role() != Role::stand_in; });
    if (!is_whole) say(record, "stands whole in no file");
    FileId before = 0;
    for (std::size_t i = 0; i < stands.size(); ++i) {
      if (i != 0 && stands[i].file() <= before) say(record, "has files out of order");
      before = stands[i].file();
      if (before >= placement_.files.size()) say(record, "stands in a file that is not there");
      if (!is_styled_stand_in(record, stands[i])) check_closed(record, stands[i]);
    }
    if (instances_.types().collects(instances_.type(record))) check_list(record);
  }

  /// What stands for an item that a style names; placeholders and contexts are other stand-ins.
  bool is_styled_stand_in(Index record, Stand stand) const {
    const auto& keywords = instances_.types().keywords(instances_.type(record));
    return stand.role() == Role::stand_in &&
           std::none_of(keywords.begin(), keywords.end(), [](std::string_view k) {
             return k.ends_with("REPRESENTATION") || k.ends_with("_CONTEXT");
           });
  }

  void check_closed(Index record, Stand stand) {
    bool has_items = false;
    bool keeps_items = false;
    for (const Reference reference : instances_.references(record)) {
      if (reference.record() == NO_RECORD) continue;
      const bool is_there = placement_.stands.has(reference.record(), stand.file());
      if (reference.is_listed()) {
        has_items = true;
        keeps_items = keeps_items || is_there;
      } else if (!is_there) {
        say(stand.file(), record,
            "lacks #" + std::to_string(instances_.number(reference.record())));
      }
    }
    if (has_items && !keeps_items && stand.role() != Role::stand_in) {
      say(stand.file(), record, "has an empty list");
    }
  }

  void check_list(Index record) {
    for (const Reference reference : instances_.references(record)) {
      if (reference.record() == NO_RECORD || !reference.is_listed()) continue;
      const auto stands = placement_.stands.of(reference.record());
      const bool are_together = std::any_of(stands.begin(), stands.end(), [&](Stand stand) {
        const Stand* const with = placement_.stands.find(record, stand.file());
        return with != nullptr && with->role() != Role::stand_in;
      });
      if (!are_together) {
        say(record, "has #" + std::to_string(instances_.number(reference.record())) +
                        " in its list in no file");
      }
    }
  }

  /// Solids stand in the files of those products whose shapes lead to them, and in no other.
  void check_bodies() {
    std::unordered_map<Index, std::unordered_set<FileId>> homes;
    for (ProductId id = 0; id < products_.products.size(); ++id) add_homes(id, homes);
    const std::unordered_set<Index> identities = below_definitions();
    const bool has_excuses =
        std::any_of(placement_.warnings.begin(), placement_.warnings.end(),
                    [](const PlacementWarning& warning) {
                      return warning.kind == PlacementWarning::Kind::foreign_shape;
                    });
    for (const auto& [body, files] : homes) {
      for (const FileId file : files) {
        const Stand* const stand = placement_.stands.find(body, file);
        if (stand != nullptr && stand->role() != Role::stand_in) continue;
        say(file, body, "is a body that is missing");
      }
      if (has_excuses || identities.contains(body)) continue;
      for (const Stand stand : placement_.stands.of(body)) {
        if (stand.role() == Role::stand_in || files.contains(stand.file())) continue;
        say(stand.file(), body, "is another product's body");
      }
    }
  }

  /// What definitions lead to goes wherever they go; in sound files no body is among it.
  std::unordered_set<Index> below_definitions() const {
    std::vector<Index> open;
    for (const Product& product : products_.products) {
      open.push_back(product.definition);
      open.insert(open.end(), product.shapes.begin(), product.shapes.end());
    }
    std::unordered_set<Index> seen(open.begin(), open.end());
    while (!open.empty()) {
      const Index record = open.back();
      open.pop_back();
      for (const Reference reference : instances_.references(record)) {
        const Index other = reference.record();
        if (other != NO_RECORD && seen.insert(other).second) open.push_back(other);
      }
    }
    return seen;
  }

  bool is_solid(Index record) const {
    const auto& keywords = instances_.types().keywords(instances_.type(record));
    return std::any_of(keywords.begin(), keywords.end(), [](std::string_view k) {
      return k.ends_with("_BREP") || k == "BREP_WITH_VOIDS" || k.ends_with("SURFACE_MODEL");
    });
  }

  /// What says what a product is and has, and those that it shows by mapped items: these stand
  /// whole with it.
  std::vector<Index> core_of(ProductId id) const {
    std::vector<Index> core;
    std::vector<ProductId> shown{id};
    std::unordered_set<ProductId> seen{id};
    for (std::size_t i = 0; i < shown.size(); ++i) {
      const Product& product = products_.products[shown[i]];
      core.push_back(product.definition);
      core.insert(core.end(), product.shapes.begin(), product.shapes.end());
      for (const ShapeLink& link : product.links) core.push_back(link.link);
      core.insert(core.end(), product.tied.begin(), product.tied.end());
      core.insert(core.end(), product.ties.begin(), product.ties.end());
      for (const MappedProduct& mapped : product.mapped) {
        if (seen.insert(mapped.product).second) shown.push_back(mapped.product);
      }
    }
    return core;
  }

  /// The solids that a product's definition and representations lead to. Where they lead to
  /// another's representation, which is a placeholder, they lead no further.
  void add_homes(ProductId id, std::unordered_map<Index, std::unordered_set<FileId>>& homes) {
    const FileId file = placement_.file_of[id];
    std::vector<Index> open = core_of(id);
    std::unordered_set<Index> seen(open.begin(), open.end());
    while (!open.empty()) {
      const Index record = open.back();
      open.pop_back();
      if (is_solid(record)) homes[record].insert(file);
      const Stand* const stand = placement_.stands.find(record, file);
      if (stand == nullptr || stand->role() != Role::own) continue;
      for (const Reference reference : instances_.references(record)) {
        const Index other = reference.record();
        if (other != NO_RECORD && seen.insert(other).second) open.push_back(other);
      }
    }
  }

  void check_files() {
    if (placement_.files.empty()) sentences_.push_back("There is no root file.");
    std::vector<bool> has_records(placement_.files.size());
    for (Index record = 0; record < instances_.size(); ++record) {
      for (const Stand stand : placement_.stands.of(record)) has_records[stand.file()] = true;
    }
    for (FileId file = 0; file < placement_.files.size(); ++file) {
      const std::string name = "File " + std::to_string(file);
      if (!has_records[file] && instances_.size() != 0) sentences_.push_back(name + " is empty.");
      if (file != 0 && placement_.files[file].products.empty()) {
        sentences_.push_back(name + " is no product's.");
      }
      for (const ProductId product : placement_.files[file].products) {
        if (placement_.file_of[product] != file) sentences_.push_back(name + " is not its own.");
      }
      for (const ProductId link : placement_.files[file].links) check_link(file, link);
    }
    for (const Usage& usage : products_.usages) check_usage(usage);
  }

  void check_link(FileId file, ProductId link) {
    const Product& component = products_.products[link];
    if (placement_.file_of[link] == file) sentences_.push_back("A file refers to itself.");
    if (!placement_.stands.has(component.definition, file)) {
      say(file, component.definition, "is missing, though its file is referred to");
    }
    for (const Index representation : component.representations) {
      if (!placement_.stands.has(representation, file)) {
        say(file, representation, "is missing, though its file is referred to");
      }
    }
  }

  void check_usage(const Usage& usage) {
    const FileId file = usage.closes_circle ? 0 : placement_.file_of[usage.assembly];
    if (!placement_.stands.has(usage.record, file)) say(file, usage.record, "is a missing usage");
    for (const Index record : usage.placements) {
      if (!placement_.stands.has(record, file)) say(file, record, "is a missing place of a usage");
    }
    const FileId component = placement_.file_of[usage.component];
    if (usage.closes_circle || component == file) return;
    const auto& links = placement_.files[file].links;
    if (std::find(links.begin(), links.end(), usage.component) == links.end()) {
      say(file, usage.record, "has no link to its component's file");
    }
  }

  const Instances& instances_;
  const Products& products_;
  const Placement& placement_;
  std::vector<std::string> sentences_;
};

}  // namespace

std::vector<std::string> check_placement(const Instances& instances, const Products& products,
                                         const Placement& placement) {
  return Check(instances, products, placement).run();
}

}  // namespace Kessel
