// Splits one file through the library, and does nothing else: the process that whole-run figures
// are taken of.
//
//     split_once IN OUTDIR
#include <cstdio>
#include <exception>

#include "kessel/splitter.h"

int main(int argc, char** argv) {
  if (argc != 3) {
    std::fputs("usage: split_once IN OUTDIR\n", stderr);
    return 2;
  }
  try {
    std::printf("%zu\n", Kessel::Run(argv[1], argv[2]).size());
  } catch (const std::exception& error) {
    std::fprintf(stderr, "split_once: %s\n", error.what());
    return 1;
  }
  return 0;
}
