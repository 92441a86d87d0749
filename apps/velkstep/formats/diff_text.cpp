#include "formats/diff_text.h"

#include <cstdint>
#include <vector>

#include "text/counted.h"
#include "text/terminal.h"

namespace Velkstep {

namespace {

using Kessel::ChangedParameter;
using Kessel::ChangedRecord;
using Kessel::Difference;
using Kessel::ProductDifference;
using Kessel::TypeDifference;

/// Records of each kind.
struct Counts {
  std::uint64_t only_in_a = 0;
  std::uint64_t only_in_b = 0;
  std::uint64_t changed = 0;

  void add(const Counts& others) {
    only_in_a += others.only_in_a;
    only_in_b += others.only_in_b;
    changed += others.changed;
  }
};

Counts counts_of(const ProductDifference& product) {
  Counts counts;
  for (const TypeDifference& type : product.types) {
    counts.add({type.only_in_a.size(), type.only_in_b.size(), type.changed.size()});
  }
  return counts;
}

std::string sentence(const Counts& counts) {
  return grouped(counts.only_in_a) + " only in A, " + grouped(counts.only_in_b) + " only in B, " +
         grouped(counts.changed) + " changed";
}

std::string product_title(const ProductDifference& product) {
  if (product.definition_in_a == 0 && product.definition_in_b == 0) return "Of no one product";
  std::string title = printable(product.name.empty() ? product.id : product.name);
  if (title.empty()) title = "A product without a name";
  if (product.definition_in_b == 0) return title + " (only in A)";
  return product.definition_in_a == 0 ? title + " (only in B)" : title;
}

std::string number(std::uint64_t record) {
  return record == 0 ? "" : "#" + std::to_string(record) + " ";
}

/// A parameter as one line.
std::string shown(std::string_view parameter) {
  std::string line;
  for (const char c : parameter) {
    if (c != '\n' && c != '\r') line += c;
  }
  return line.empty() ? "nothing" : printable(line);
}

std::string changed_text(const std::string& type, const ChangedRecord& record) {
  std::string text = "  ~ " + number(record.in_a) + type;
  if (record.in_b != record.in_a) text += " (#" + std::to_string(record.in_b) + " in B)";
  text += '\n';
  for (const ChangedParameter& parameter : record.parameters) {
    text += "      parameter " + std::to_string(parameter.place);
    if (parameter.keyword != type) text += " of " + printable(parameter.keyword);
    text += ": " + shown(parameter.in_a) + " -> " + shown(parameter.in_b) + '\n';
  }
  return text;
}

std::string type_text(const TypeDifference& difference) {
  std::string text;
  const std::string type = printable(difference.type);
  for (const std::uint64_t record : difference.only_in_a) {
    text += "  - " + number(record) + type + '\n';
  }
  for (const std::uint64_t record : difference.only_in_b) {
    text += "  + " + number(record) + type + '\n';
  }
  for (const ChangedRecord& record : difference.changed) text += changed_text(type, record);
  return text;
}

std::string listed(const std::vector<std::string>& schemas) {
  std::string text;
  for (const std::string& schema : schemas) text += (text.empty() ? "" : ", ") + printable(schema);
  return text.empty() ? "none" : text;
}

std::string schemas_text(const Difference& difference) {
  if (difference.schemas_in_a == difference.schemas_in_b) return {};
  return "Schemas: " + listed(difference.schemas_in_a) + " -> " + listed(difference.schemas_in_b) +
         '\n';
}

}  // namespace

std::string diff_text(const Difference& difference) {
  std::string text = schemas_text(difference);
  for (const ProductDifference& product : difference.products) {
    text += product_title(product) + ":\n";
    for (const TypeDifference& type : product.types) text += type_text(type);
  }
  return text;
}

std::string diff_summary(const Difference& difference) {
  if (difference.is_same) {
    return "the same: " + counted(difference.records_in_a, "record", "records") + " in A, " +
           grouped(difference.records_in_b) + " in B\n";
  }
  std::string text = schemas_text(difference);
  Counts all;
  for (const ProductDifference& product : difference.products) {
    const Counts counts = counts_of(product);
    text += product_title(product) + ": " + sentence(counts) + '\n';
    all.add(counts);
  }
  return text + "different: " + sentence(all) + '\n';
}

}  // namespace Velkstep
