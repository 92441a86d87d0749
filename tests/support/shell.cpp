#include "support/shell.h"

#include <array>
#include <cstddef>
#include <cstdio>

namespace Kessel::test {

ShellRun run_in_shell(const std::string& command) {
  FILE* pipe = ::popen(command.c_str(), "r");
  if (pipe == nullptr) return {"", -1};
  std::string printed;
  std::array<char, 4096> buffer{};
  std::size_t count = 0;
  while ((count = std::fread(buffer.data(), 1, buffer.size(), pipe)) > 0) {
    printed.append(buffer.data(), count);
  }
  return {printed, ::pclose(pipe)};
}

}  // namespace Kessel::test
