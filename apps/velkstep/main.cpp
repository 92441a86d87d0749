// The command line: arguments in, exit code out.
#include <CLI/CLI.hpp>
#include <exception>
#include <iostream>
#include <map>
#include <string>

#include "exit_codes.h"
#include "split_command.h"

namespace {

constexpr const char* EXIT_CODES =
    "Exit codes:\n"
    "  0  done\n"
    "  1  failed; one line on standard error says why\n"
    "  2  wrong usage\n"
    "  3  nothing to split: the file holds one part or none";

const std::map<std::string, Kessel::AssemblyStyle> ASSEMBLY_STYLES = {
    {"classic", Kessel::AssemblyStyle::classic},
    {"lean", Kessel::AssemblyStyle::lean},
    {"nested", Kessel::AssemblyStyle::nested},
};

int run(int argc, char** argv) {
  CLI::App app("Splits STEP assemblies (ISO 10303-21 files) into one file per part.", "velkstep");
  app.set_version_flag("--version", "velkstep " VELKSTEP_VERSION);
  app.require_subcommand(1);
  app.footer(EXIT_CODES);

  std::string in;
  std::string outdir;
  CLI::App* split = app.add_subcommand("split", "Split IN into one file per part under OUTDIR");
  split->add_option("IN", in, "The exchange file to split")->required();
  split->add_option("OUTDIR", outdir, "The folder for the files; created as needed")->required();
  Kessel::Options options;
  split
      ->add_option(
          "--assemblies", options.assemblies,
          "What an assembly's file holds: classic (the root has the whole "
          "structure), lean (and no geometry of components), nested (each opens by itself)")
      ->transform(CLI::CheckedTransformer(ASSEMBLY_STYLES))
      ->default_str("classic");
  split->footer(EXIT_CODES);

  try {
    app.parse(argc, argv);
  } catch (const CLI::ParseError& error) {
    return app.exit(error) == 0 ? Velkstep::EXIT_DONE : Velkstep::EXIT_WRONG_USAGE;
  }
  return Velkstep::split(in, outdir, options);
}

}  // namespace

int main(int argc, char** argv) {
  try {
    return run(argc, argv);
  } catch (const std::exception& error) {
    std::cerr << "velkstep: " << error.what() << '\n';
    return Velkstep::EXIT_FAILED;
  }
}
