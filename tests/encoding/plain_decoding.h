// The decoder done the plain way: edit one string in place, stage by stage.
#pragma once

#include <string>
#include <string_view>

namespace Kessel::test::plain {

/// What `decode_step_to_utf8` returns for `in`.
std::string decode_in_place(std::string_view in);

}  // namespace Kessel::test::plain
