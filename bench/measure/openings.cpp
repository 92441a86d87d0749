// Counts openings in strace's list of system calls.
#include "measure/openings.h"

#include <fstream>
#include <string>

#include "measure/child.h"

namespace Kessel::bench {

namespace {

/// Whether the line tells of a file in `folder` that was opened for writing.
bool opens_for_writing(const std::string& line, const std::string& folder) {
  const bool failed = line.find(" = -1 ") != std::string::npos;
  return !failed && line.find("\"" + folder + "/") != std::string::npos &&
         (line.find("O_WRONLY") != std::string::npos || line.find("O_RDWR") != std::string::npos ||
          line.starts_with("creat("));
}

}  // namespace

std::optional<Openings> count_openings(const Workshop& workshop, const Programs& programs,
                                       const Input& input) {
  const std::filesystem::path strace = find_on_path("strace");
  if (strace.empty()) return std::nullopt;

  const std::filesystem::path folder = workshop.fresh("split.out");
  const std::filesystem::path calls = workshop.fresh("calls.txt");
  run_child({strace, "-o", calls, "-e", "trace=open,openat,creat", programs.split_once, input.path,
             folder},
            workshop.folder());
  Openings openings;
  openings.written = look_into(folder);
  std::ifstream lines(calls);
  for (std::string line; std::getline(lines, line);) {
    if (opens_for_writing(line, folder.string())) ++openings.count;
  }
  std::filesystem::remove_all(folder);
  std::filesystem::remove(calls);
  return openings;
}

}  // namespace Kessel::bench
