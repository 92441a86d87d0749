// Does one thing with files through the library, and nothing else: the process that its figures are
// taken of.
//
//     work_once split IN OUTDIR | diff A B | join ROOT OUT | verify IN OUTDIR | shrink IN OUT
//
// Files are split in the style lean, with "roots.txt" in OUTDIR.
#include <cstdio>
#include <exception>
#include <filesystem>
#include <string_view>

#include "kessel/diff.h"
#include "kessel/join.h"
#include "kessel/shrink.h"
#include "kessel/splitter.h"
#include "kessel/verify.h"

namespace {

namespace fs = std::filesystem;

int split(const fs::path& in, const fs::path& outdir) {
  const fs::path input = fs::absolute(in);
  fs::create_directory(outdir);
  fs::current_path(outdir);
  Kessel::Options options;
  options.assemblies = Kessel::AssemblyStyle::lean;
  std::printf("%zu files\n", Kessel::split(input, ".", options).size());
  return 0;
}

int diff(const fs::path& a, const fs::path& b) {
  const bool is_same = Kessel::diff(a, b).is_same;
  std::puts(is_same ? "same" : "different");
  return is_same ? 0 : 1;
}

int join(const fs::path& root, const fs::path& out) {
  Kessel::JoinOptions options;
  options.replace = true;
  std::printf("%zu records\n", static_cast<std::size_t>(Kessel::join(root, out, options).records));
  return 0;
}

int verify(const fs::path& in, const fs::path& outdir) {
  const std::size_t findings = Kessel::verify(in, outdir).findings.size();
  std::printf("%zu findings\n", findings);
  return findings == 0 ? 0 : 1;
}

int shrink(const fs::path& in, const fs::path& out) {
  Kessel::ShrinkOptions options;
  options.replace = true;
  const Kessel::Shrunk shrunk = Kessel::shrink(in, out, options);
  std::printf(
      "%.3f of the records, %.3f of the bytes\n",
      static_cast<double>(shrunk.records_after) / static_cast<double>(shrunk.records_before),
      static_cast<double>(shrunk.bytes_after) / static_cast<double>(shrunk.bytes_before));
  return 0;
}

struct Work {
  std::string_view name;
  int (*run)(const fs::path&, const fs::path&);
};
constexpr Work WORKS[] = {
    {"split", split}, {"diff", diff}, {"join", join}, {"verify", verify}, {"shrink", shrink}};

}  // namespace

int main(int argc, char** argv) {
  try {
    for (const Work& work : WORKS) {
      if (argc == 4 && work.name == argv[1]) return work.run(argv[2], argv[3]);
    }
    std::fputs("usage: work_once split|diff|join|verify|shrink PATH PATH\n", stderr);
    return 2;
  } catch (const std::exception& error) {
    std::fprintf(stderr, "work_once: %s\n", error.what());
    return 1;
  }
}
