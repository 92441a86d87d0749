// Bytes as text.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace Velkstep {

/// The bytes in base 64 (RFC 4648, 4), with padding.
std::string base64(const std::vector<std::uint8_t>& bytes);

}  // namespace Velkstep
