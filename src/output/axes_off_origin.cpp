#include "output/axes_off_origin.h"

#include <algorithm>
#include <string>

#include "exchange/parameters.h"
#include "exchange/values.h"

namespace Kessel {

namespace {

constexpr std::string_view AXIS = "AXIS2_PLACEMENT_3D";
constexpr std::string_view TRANSFORMATION = "ITEM_DEFINED_TRANSFORMATION";

/// Where transformations between items stand, by the items.
class Transformations {
 public:
  Transformations(const Instances& instances, const FileSets& stands) {
    for (const Index record : instances.kept_with(TRANSFORMATION)) {
      for (const Reference item : instances.references(record)) {
        if (item.record() == NO_RECORD) continue;
        std::vector<FileId>& files = files_of_[item.record()];
        for (const Stand stand : stands.of(record)) {
          // Nearly always those of one item stand in one file.
          if (files.empty() || files.back() != stand.file()) files.push_back(stand.file());
        }
      }
    }
    for (auto& [item, files] : files_of_) std::sort(files.begin(), files.end());
  }

  /// Whether one that stands in `file` is from or to `axis`.
  bool place_by(Index axis, FileId file) const {
    const auto found = files_of_.find(axis);
    return found != files_of_.end() &&
           std::binary_search(found->second.begin(), found->second.end(), file);
  }

 private:
  std::unordered_map<Index, std::vector<FileId>> files_of_;
};

void sort_out(std::vector<Index>& records) {
  std::sort(records.begin(), records.end());
  records.erase(std::unique(records.begin(), records.end()), records.end());
}

/// The axes among the items of the product's representations, each once.
std::vector<Index> axes_of(const Instances& instances, const Product& product) {
  std::vector<Index> axes;
  for (const auto* list : {&product.representations, &product.tied}) {
    for (const Index representation : *list) {
      for (const Reference item : instances.references(representation)) {
        if (item.record() == NO_RECORD || !item.is_listed()) continue;
        if (instances.is(item.record(), AXIS)) axes.push_back(item.record());
      }
    }
  }
  sort_out(axes);
  return axes;
}

}  // namespace

AxesOffOrigin::AxesOffOrigin(const Instances& instances, const Products& products,
                             const Placement& placement)
    : instances_(instances), axes_(placement.files.size()) {
  if (placement.keeps_others_out) return;
  const std::vector<bool> is_used = used_products(products);
  const Transformations transformations(instances, placement.stands);
  for (FileId file = 0; file < axes_.size(); ++file) {
    const ProductId top = placement.files[file].top;
    if (top == NO_PRODUCT || !is_used[top]) continue;
    axes_[file] = axes_of(instances, products.products[top]);
    std::erase_if(axes_[file], [&](Index axis) {
      return !placement.stands.has(axis, file) || transformations.place_by(axis, file);
    });
    for (const Index axis : axes_[file]) {
      wanted_.push_back(axis);
      for (const Reference part : instances.references(axis)) {
        if (part.record() != NO_RECORD) wanted_.push_back(part.record());
      }
    }
  }
  sort_out(wanted_);
}

void AxesOffOrigin::show(Index record, std::string_view body) {
  if (instances_.is(record, AXIS)) {
    const Exchange::Parameters parameters = Exchange::parameters_of(body, AXIS);
    const auto part = [&](std::size_t i) {
      const std::uint64_t number = Exchange::instance_of(Exchange::parameter(parameters, i));
      return number == 0 ? NO_RECORD : instances_.find(number);
    };
    shown_[record] = {part(1), part(2), part(3)};
    return;
  }
  for (const std::string_view keyword : {"CARTESIAN_POINT", "DIRECTION"}) {
    if (!instances_.is(record, keyword)) continue;
    const auto items =
        Exchange::items_of(Exchange::parameter(Exchange::parameters_of(body, keyword), 1));
    Triple triple{};
    if (items.size() != triple.size()) continue;
    std::transform(items.begin(), items.end(), triple.begin(), number_value);
    triples_[record] = triple;
  }
}

const AxesOffOrigin::Triple* AxesOffOrigin::triple_of(Index record) const {
  const auto found = triples_.find(record);
  return found == triples_.end() ? nullptr : &found->second;
}

/// What cannot be read is elsewhere: then one record too many is made, and no shape is moved.
bool AxesOffOrigin::is_at_origin(Index axis) const {
  const auto found = shown_.find(axis);
  if (found == shown_.end()) return false;
  const auto points_along = [&](Index direction, std::size_t i) {
    if (direction == NO_RECORD) return true;
    const Triple* const ratios = triple_of(direction);
    return ratios != nullptr && (*ratios)[i] > 0 && (*ratios)[(i + 1) % 3] == 0 &&
           (*ratios)[(i + 2) % 3] == 0;
  };
  const Triple* const point = triple_of(found->second.point);
  return point != nullptr && *point == Triple{} && points_along(found->second.axis, 2) &&
         points_along(found->second.direction, 0);
}

void AxesOffOrigin::make(FileId file, const FileNumbers& numbers, MadeRecords& made) const {
  for (const Index axis : axes_[file]) {
    if (is_at_origin(axis)) continue;
    const std::string name = "#" + std::to_string(numbers.of(axis, file));
    made.add(TRANSFORMATION, "'',''," + name + "," + name);
  }
}

}  // namespace Kessel
