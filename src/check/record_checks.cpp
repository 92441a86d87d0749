#include "check/record_checks.h"

#include "check/reference_check.h"
#include "check/structure_check.h"

namespace Kessel {

void check_records(std::istream& in, const Instances& instances, const Products& products,
                   const std::filesystem::path& folder, FindingList& findings) {
  check_references(in, instances, findings);
  check_structure(in, instances, products, folder, findings);
}

}  // namespace Kessel
