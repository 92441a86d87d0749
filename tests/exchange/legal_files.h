// Makes exchange files that are legal in every respect and use every production of the grammar (ISO
// 10303-21, edition 3), however unusual.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace Kessel::test {

/// What stands in a statement of a section.
struct LegalStatement {
  std::string section;               ///< "HEADER", "ANCHOR", "REFERENCE" or "DATA"
  std::string number;                ///< of a record, without zeros in front; else empty
  std::vector<std::string> tokens;   ///< all of it; of a record what stands behind the "="
  std::vector<std::string> names;    ///< the numbers it refers to, without zeros in front
  std::vector<std::string> strings;  ///< what its strings say, UTF-8
  bool operator==(const LegalStatement&) const = default;
};

struct LegalFile {
  std::string text;
  std::vector<LegalStatement> statements;
};

/// Another file for each seed, the same on every machine.
LegalFile legal_file(std::uint32_t seed);

}  // namespace Kessel::test
