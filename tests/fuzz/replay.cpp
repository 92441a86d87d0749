// Gives a fuzzer the inputs that are stored for it, without the fuzzing engine: replay FOLDER
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <string>

#include "support/scratch_folder.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

int main(int, char** argv) {
  int inputs = 0;
  for (const auto& entry : std::filesystem::directory_iterator(argv[1])) {
    std::printf("%s\n", entry.path().filename().c_str());
    std::fflush(stdout);
    const std::string input = Kessel::test::read_file(entry.path());
    LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(input.data()), input.size());
    ++inputs;
  }
  return inputs == 0;
}
