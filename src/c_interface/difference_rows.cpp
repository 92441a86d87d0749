#include "c_interface/difference_rows.h"

namespace Kessel {

namespace {

/// A line for each parameter.
std::string changes_of(const ChangedRecord& record) {
  std::string text;
  for (const ChangedParameter& parameter : record.parameters) {
    text += parameter.keyword + " " + std::to_string(parameter.place) + ": " + parameter.in_a +
            " -> " + parameter.in_b + "\n";
  }
  return text;
}

}  // namespace

DifferenceRows::DifferenceRows(const Difference& difference) {
  for (const ProductDifference& product : difference.products) {
    kessel_difference frame = {};
    frame.product_id = keep(product.id);
    frame.product_name = keep(product.name);
    frame.changes = "";
    for (const TypeDifference& type : product.types) {
      frame.type = keep(type.type);
      add(frame, type);
    }
  }
}

void DifferenceRows::add(const kessel_difference& frame, const TypeDifference& type) {
  kessel_difference row = frame;
  row.kind = KESSEL_ONLY_IN_A;
  for (const std::uint64_t number : type.only_in_a) {
    row.in_a = number;
    rows_.push_back(row);
  }
  row = frame;
  row.kind = KESSEL_ONLY_IN_B;
  for (const std::uint64_t number : type.only_in_b) {
    row.in_b = number;
    rows_.push_back(row);
  }
  row.kind = KESSEL_CHANGED;
  for (const ChangedRecord& record : type.changed) {
    row.in_a = record.in_a;
    row.in_b = record.in_b;
    row.changes = record.parameters.empty() ? "" : keep(changes_of(record));
    rows_.push_back(row);
  }
}

}  // namespace Kessel
