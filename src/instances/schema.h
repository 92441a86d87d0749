// Which schema a file obeys.
#pragma once

#include <string>

#include "instances/instances.h"
#include "kessel/finding.h"

namespace Kessel {

/// The name of the first schema in the header (ISO 10303-21, 8.2.3), without what stands behind it
/// in braces; empty where there is none.
std::string schema_of(const Instances& instances);

/// What is said of a file of `schema` that one of the schema `expected` refers to.
Finding other_schema(const std::string& schema, const std::string& expected);

}  // namespace Kessel
