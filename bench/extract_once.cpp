// Extracts one part through the library, and does nothing else: the process that figures of extract
// are taken of.
//
//     extract_once IN PART OUT
#include <cstdio>
#include <exception>

#include "kessel/extract.h"

int main(int argc, char** argv) {
  if (argc != 4) {
    std::fputs("usage: extract_once IN PART OUT\n", stderr);
    return 2;
  }
  try {
    std::printf("%s\n", Kessel::extract(argv[1], argv[2], argv[3]).part.path.c_str());
  } catch (const std::exception& error) {
    std::fprintf(stderr, "extract_once: %s\n", error.what());
    return 1;
  }
  return 0;
}
