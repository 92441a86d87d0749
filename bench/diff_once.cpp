// Compares two files through the library, and does nothing else: the process that figures of diff
// are taken of.
//
//     diff_once A B
#include <cstdio>
#include <exception>

#include "kessel/diff.h"

int main(int argc, char** argv) {
  if (argc != 3) {
    std::fputs("usage: diff_once A B\n", stderr);
    return 2;
  }
  try {
    const Kessel::Difference difference = Kessel::diff(argv[1], argv[2]);
    std::puts(difference.is_same ? "same" : "different");
  } catch (const std::exception& error) {
    std::fprintf(stderr, "diff_once: %s\n", error.what());
    return 1;
  }
  return 0;
}
