// The time as exchange files have it.
#pragma once

#include <string>

namespace Kessel {

/// The current time in UTC as ISO 8601 has it: 2026-11-16T02:45:07+00:00.
std::string current_time_stamp();

}  // namespace Kessel
