// Numbers for people to read.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace Velkstep {

/// A number with a comma between groups of three digits. The library has the same for its
/// sentences, behind the public interface, which is no place for it.
std::string grouped(std::uint64_t number);

/// "1 file", "2,345 files": the number, and the word for one or for many.
std::string counted(std::uint64_t count, std::string_view one, std::string_view many);

}  // namespace Velkstep
