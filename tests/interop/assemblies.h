// The assemblies that splits are tried on: real ones, the project's example, generated ones.
#pragma once

#include <cstdint>
#include <filesystem>
#include <iosfwd>
#include <string>
#include <vector>

#include "support/scratch_folder.h"

namespace Kessel::test {

/// Where an assembly comes from.
struct AssemblySource {
  std::string name;        ///< a sample's or example's file, or one of the generator's shapes
  std::uint32_t size = 0;  ///< of a generated shape; 0 for a file
};

void PrintTo(const AssemblySource& source, std::ostream* out);

/// A name for a test with this assembly, such as "as1_oc_214" or "ladder_4".
std::string test_name(const AssemblySource& source);

/// All samples of more than one part, the example, and small generated shapes.
std::vector<AssemblySource> all_assemblies();

/// The same, and samples that are hard: styles of usages, mapped items, management data, a
/// skeleton. For splits by placement.
std::vector<AssemblySource> every_assembly();

/// The assembly's file, which is written into `folder` if it is generated; an empty path when it is
/// a sample that is not there.
std::filesystem::path file_of(const AssemblySource& source, const ScratchFolder& folder);

}  // namespace Kessel::test
