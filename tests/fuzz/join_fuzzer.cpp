// Any bytes as files that refer to each other, joined.
//
// A line "=====" begins another file: the first is the root, the others are called a.stp, b.stp,
// ...
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>
#include <vector>

#include "fuzz/expect.h"
#include "instances/loader.h"
#include "kessel/diff.h"
#include "kessel/errors.h"
#include "kessel/join.h"
#include "support/scratch_folder.h"

namespace Kessel::test {
namespace {

constexpr std::uint64_t MEMORY = 256 << 20;
constexpr std::size_t MOST_FILES = 6;

/// Writes the files of `input`, and returns their names.
std::vector<std::string> write_files(const ScratchFolder& folder, std::string_view input) {
  constexpr std::string_view SEPARATOR = "\n=====\n";
  std::vector<std::string> names;
  for (;;) {
    const std::size_t end = input.find(SEPARATOR);
    names.push_back(names.empty()
                        ? "root.stp"
                        : std::string(1, static_cast<char>('a' + names.size() - 1)) + ".stp");
    folder.write(names.back(), input.substr(0, end));
    if (end == std::string_view::npos || names.size() == MOST_FILES) return names;
    input.remove_prefix(end + SEPARATOR.size());
  }
}

/// How many references of the file lead nowhere.
std::uint64_t missing_references(const std::filesystem::path& path) {
  Instances instances;
  std::ifstream in(path, std::ios::in | std::ios::binary);
  load_instances(in, instances);
  return instances.missing_references();
}

void check_joined(const Joined& joined) {
  std::uint64_t missing = 0;
  for (const JoinedInput& input : joined.inputs) missing += missing_references(input.path);
  const std::uint64_t left = missing_references("out.stp");
  expect(left == 0 || missing != 0, "no reference leads nowhere that did not before");
  expect(std::filesystem::file_size("out.stp") == joined.bytes, "the size is as it says");
  if (joined.inputs.size() > 1) return;
  Options options;
  options.memory_limit = MEMORY;
  // Several data sections have become one, and stand-ins have lost what was made for them.
  if (joined.warnings.empty() &&
      read_file("root.stp").find("velkstep split") == std::string::npos) {
    expect(diff("root.stp", "out.stp", options).is_same, "a file alone stays as it is");
  }
}

}  // namespace
}  // namespace Kessel::test

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace Kessel;
  using namespace Kessel::test;
  static const ScratchFolder folder;
  const std::vector<std::string> names =
      write_files(folder, {reinterpret_cast<const char*>(data), size});
  JoinOptions options;
  options.memory_limit = MEMORY;
  options.replace = true;
  for (const bool is_lenient : {false, true}) {
    options.allow_missing = is_lenient;
    options.allow_mixed_schemas = is_lenient;
    try {
      check_joined(join("root.stp", "out.stp", options));
    } catch (const InputError& error) {
      expect(!std::string_view(error.what()).empty(), "a refusal has a sentence");
    }
  }
  for (const std::string& name : names) std::filesystem::remove(name);
  return 0;
}
