// An assembly two of whose parts are in other files.
#pragma once

#include <string>

#include "splitter/small_inputs.h"
#include "support/product_records.h"

namespace Kessel::test {

/// References to the file `name` for the definition #`definition`, numbered from `number` on.
inline std::string reference(int number, const std::string& name, int definition) {
  const auto at = [&](int i) { return "#" + std::to_string(number + i); };
  return at(0) + "=DOCUMENT_FILE('" + name + "','about it','',$,'',$);\n" + at(1) +
         "=EXTERNAL_SOURCE(IDENTIFIER(''));\n" + at(2) +
         "=APPLIED_EXTERNAL_IDENTIFICATION_ASSIGNMENT( '" + name + "' ,$," + at(1) + ",(" + at(0) +
         "));\n" + at(3) + "=APPLIED_DOCUMENT_REFERENCE(" + at(0) + ",'',(#" +
         std::to_string(definition) + "));\n";
}

/// The whole #10 with a part #20 of its own and the parts #30 and #40, which are in other files.
inline const std::string REFERRING =
    SHARED_RECORDS + product_records(10, "whole", "#3") + product_records(20, "own", "#3,#50") +
    solid_records(50) + product_records(30, "lid", "#3") + product_records(40, "hinge", "#3") +
    usage_record(60, 10, 20) + usage_record(61, 10, 30) + usage_record(62, 10, 40) +
    reference(70, "lid.stp", 30) + reference(80, "T\\X2\\00FC\\X0\\r/hinge.stp", 40);

/// A file with one product and its solid.
inline std::string part_in_a_file(const std::string& name) {
  return exchange_file(SHARED_RECORDS + product_records(10, name, "#3,#50") + solid_records(50));
}

}  // namespace Kessel::test
