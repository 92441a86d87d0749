// The command that writes a generated assembly to a file or to standard output.

#include <CLI/CLI.hpp>
#include <cstdint>
#include <cstdlib>
#include <fstream>
#include <iostream>
#include <string>

#include "shapes.h"

namespace {

// Returns the list of shapes for the help text.
std::string list_of_shapes() {
  std::string text = "Shapes, with what SIZE counts and its typical value:\n";
  for (const auto& shape : Kessel::bench::shapes()) {
    text += "  " + std::string(shape.name) + " (" + std::string(shape.size_unit) + ", " +
            std::to_string(shape.typical_size) + "): " + std::string(shape.summary) + "\n";
  }
  return text;
}

// Writes the file and returns whether that succeeded.
bool write_to(std::ostream& out, const Kessel::bench::Shape& shape, std::uint32_t size,
              std::uint64_t seed) {
  Kessel::bench::write_file(out, shape, size, seed);
  out.flush();
  return out.good();
}

}  // namespace

int main(int argc, char** argv) {
  CLI::App app(
      "Writes a generated STEP assembly (ISO 10303-21, AP214). Equal arguments give equal "
      "bytes.",
      "generate_assembly");
  app.footer(list_of_shapes());
  std::string shape_name;
  std::uint32_t size = 1;
  std::uint64_t seed = 1;
  std::string file;
  app.add_option("SHAPE", shape_name, "What to write; see the list below")
      ->required()
      ->check([](const std::string& name) {
        return Kessel::bench::find_shape(name) == nullptr ? "unknown shape: " + name
                                                          : std::string();
      });
  app.add_option("SIZE", size, "How large it is")
      ->required()
      ->check(CLI::Range(std::uint32_t{1}, std::uint32_t{100'000'000}));
  app.add_option("--seed", seed, "Start of the random numbers")->capture_default_str();
  app.add_option("-o,--output", file, "File to write; standard output without it");
  CLI11_PARSE(app, argc, argv);

  const Kessel::bench::Shape& shape = *Kessel::bench::find_shape(shape_name);
  bool written = false;
  if (file.empty()) {
    written = write_to(std::cout, shape, size, seed);
  } else {
    std::ofstream out(file, std::ios::binary | std::ios::trunc);
    written = out.is_open() && write_to(out, shape, size, seed);
  }
  if (written) return EXIT_SUCCESS;
  std::cerr << "generate_assembly: cannot write " << (file.empty() ? "standard output" : file)
            << '\n';
  return EXIT_FAILURE;
}
