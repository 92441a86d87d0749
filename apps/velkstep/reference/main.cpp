// Writes the manual page and the shells' completions: PROGRAM MAN_TEMPLATE FOLDER
#include <exception>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <sstream>
#include <string>

#include "arguments/description.h"
#include "reference/completions.h"
#include "reference/man_page.h"

namespace {

std::string read(const std::filesystem::path& path) {
  std::ostringstream text;
  text << std::ifstream(path).rdbuf();
  return text.str();
}

bool write(const std::filesystem::path& path, const std::string& text) {
  std::filesystem::create_directories(path.parent_path());
  std::ofstream out(path);
  out << text;
  return out.flush().good();
}

/// Returns whether every file was written.
bool write_reference(const std::filesystem::path& man_template,
                     const std::filesystem::path& folder) {
  const auto commands = Velkstep::describe_command_line();
  return write(folder / "velkstep.1", man_page(read(man_template), commands)) &&
         write(folder / "velkstep.bash", bash_completion(commands)) &&
         write(folder / "_velkstep", zsh_completion(commands)) &&
         write(folder / "velkstep.fish", fish_completion(commands));
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 3) {
    std::cerr << "usage: " << argv[0] << " MAN_TEMPLATE FOLDER\n";
    return 2;
  }
  try {
    if (write_reference(argv[1], argv[2])) return 0;
    std::cerr << argv[2] << ": cannot be written\n";
  } catch (const std::exception& error) {
    std::cerr << error.what() << '\n';
  }
  return 1;
}
