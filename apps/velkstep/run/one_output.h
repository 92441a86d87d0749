// What commands that write one file have in common.
#pragma once

#include <filesystem>
#include <string>

namespace Velkstep {

/// Throws UnusableOutput where `out` is the file that the argument `in` names, which no option may
/// replace. Its copy or what is unpacked of it is another file to the library.
void refuse_to_replace(const std::string& in, const std::filesystem::path& out);

}  // namespace Velkstep
