// Lets the CAD kernel write assemblies in its manner: colours of occurrences at every level,
// layers, names, bodies of every kind.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace Kessel::test {

/// What the kernel's documents are called.
std::vector<std::string> kernel_documents();

/// Writes the document `name` as an exchange file. Throws `std::runtime_error` when the kernel
/// cannot.
void write_kernel_document(const std::string& name, const std::filesystem::path& path);

}  // namespace Kessel::test
