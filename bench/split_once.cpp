// Splits one file through the library, and does nothing else: the process that whole-run figures
// are taken of.
//
//     split_once [--checked|--limited] IN OUTDIR
//
// --checked: with the checked form; --limited: the same with a memory limit of 64 GiB.
#include <cstdio>
#include <exception>
#include <filesystem>
#include <string_view>
#include <vector>

#include "kessel/splitter.h"

namespace {

std::vector<std::filesystem::path> run(std::string_view form, const char* in, const char* outdir) {
  if (form == "--checked") return Kessel::Run(in, outdir, Kessel::Options());
  if (form == "--limited") return Kessel::Run(in, outdir, {.memory_limit = 64ULL << 30U});
  return Kessel::Run(in, outdir);
}

}  // namespace

int main(int argc, char** argv) {
  const std::string_view form = argc == 4 ? argv[1] : "";
  if (argc != 3 && form != "--checked" && form != "--limited") {
    std::fputs("usage: split_once [--checked|--limited] IN OUTDIR\n", stderr);
    return 2;
  }
  try {
    std::printf("%zu\n", run(form, argv[argc - 2], argv[argc - 1]).size());
  } catch (const std::exception& error) {
    std::fprintf(stderr, "split_once: %s\n", error.what());
    return 1;
  }
  return 0;
}
