// The encoder done the plain way: unit by unit over ICU's UTF-16.
#pragma once

#include <string>
#include <string_view>

namespace Kessel::test::plain {

/// What `encode_utf8_to_step` returns for `utf8`.
std::string encode_unit_by_unit(std::string_view utf8);

}  // namespace Kessel::test::plain
