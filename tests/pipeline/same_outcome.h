// The splitter beside a plain one that does every step the slow, obvious way.
#pragma once

#include <optional>
#include <string>

#include "naive/naive_splitter.h"

namespace Kessel::test {

/// What the plain splitter leaves of `input`; nothing when a run would not return.
std::optional<naive::Outcome> expected_outcome(const std::string& input);

/// Expects that the splitter leaves exactly `expected`: files, messages, exception, list,
/// roots.txt.
void expect_outcome(const std::string& input, const naive::Outcome& expected);

}  // namespace Kessel::test
