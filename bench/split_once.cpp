// Splits one file through the library, and does nothing else: the process that whole-run figures
// are taken of.
//
//     split_once [--checked|--limited] IN OUTDIR
//
// --checked: with the checked form; --limited: the same with a memory limit of 64 GiB.
#include <cstddef>
#include <cstdio>
#include <exception>
#include <string_view>

#include "kessel/splitter.h"

namespace {

/// How many files were written.
std::size_t run(std::string_view form, const char* in, const char* outdir) {
  if (form == "--checked") return Kessel::split(in, outdir).size();
  if (form == "--limited") return Kessel::split(in, outdir, {.memory_limit = 64ULL << 30U}).size();
  return Kessel::Run(in, outdir).size();
}

}  // namespace

int main(int argc, char** argv) {
  const std::string_view form = argc == 4 ? argv[1] : "";
  if (argc != 3 && form != "--checked" && form != "--limited") {
    std::fputs("usage: split_once [--checked|--limited] IN OUTDIR\n", stderr);
    return 2;
  }
  try {
    std::printf("%zu\n", run(form, argv[argc - 2], argv[argc - 1]));
  } catch (const std::exception& error) {
    std::fprintf(stderr, "split_once: %s\n", error.what());
    return 1;
  }
  return 0;
}
