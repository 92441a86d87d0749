// A host of the installed library: splits a file and lists what was written.
#include <kessel/splitter.h>

#include <iostream>

int main(int argc, char** argv) {
  if (argc != 3) return 2;
  for (const auto& file : Kessel::Run(argv[1], argv[2])) std::cout << file.string() << '\n';
}
