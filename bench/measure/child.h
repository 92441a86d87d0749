// Runs another program and tells what it cost.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

namespace Kessel::bench {

/// What one process cost.
struct Cost {
  double seconds = 0;             ///< from its start to its end
  double cpu_seconds = 0;         ///< processor time, its own and the kernel's for it
  std::uint64_t peak_memory = 0;  ///< bytes resident at most
};

/// Runs `command` (a program's path and its arguments) in `folder` and waits for its end. Its
/// standard output goes to the file `output`, or nowhere when that is empty.
///
/// The peak is never below what this process holds, since the child starts as a copy of it: keep
/// little in memory here. Throws `std::runtime_error` when the program cannot be run or fails.
Cost run_child(const std::vector<std::string>& command, const std::filesystem::path& folder,
               const std::filesystem::path& output = {});

/// The path of the program `name` among the folders of PATH; empty when there is none.
std::filesystem::path find_on_path(const std::string& name);

}  // namespace Kessel::bench
