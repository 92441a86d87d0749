// Any bytes as the input of whole runs, against a plain splitter.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "fuzz/expect.h"
#include "kessel/check.h"
#include "kessel/errors.h"
#include "kessel/part.h"
#include "kessel/splitter.h"
#include "kessel/verify.h"
#include "pipeline/same_outcome.h"
#include "round_trip/round_trip.h"
#include "support/scratch_folder.h"
#include "support/split_run.h"

namespace Kessel::test {
namespace {

constexpr std::uint64_t MEMORY = 256 << 20;

void check_classic(const std::string& input, const naive::Outcome& expected) {
  const SplitRun run = split_text(input);
  expect(run.result == expected.result, "the list is the plain one");
  expect(run.messages == expected.messages, "the messages are the plain ones");
  expect(run.exception == expected.exception, "the exception is the plain one");
  expect(run.roots_txt == expected.roots_txt, "roots.txt is the plain one");
  expect(run.files == expected.files, "the files are the plain ones");
}

/// Whether every statement of the file at `path` is one that a reader takes as it stands.
void check_written(const std::filesystem::path& path) {
  const std::string text = read_file(path);
  expect(text.starts_with("ISO-10303-21;\n"), "a file begins as exchange files do");
  expect(text.ends_with("ENDSEC;\nEND-ISO-10303-21;\n"), "a file ends as exchange files do");
  for (const Finding& finding : check(path)) {
    switch (finding.kind) {
      case FindingKind::no_part:
      case FindingKind::unused_usage:
      case FindingKind::usage_cycle:
      case FindingKind::part_without_name:
        break;  // A part's file is no assembly, and an assembly's may hold usages' ends only.
      default:
        expect(false, finding.sentence);
    }
  }
}

/// Joins the files of the split again and compares them with the input, however odd that is: what
/// can be read and split in lean or nested comes out whole. Classic splits may lose and double, and
/// only must be told about.
void check_joined(AssemblyStyle assemblies) {
  if (assemblies == AssemblyStyle::classic) {
    if (std::filesystem::exists("roots.txt")) std::filesystem::rename("roots.txt", "out/roots.txt");
    verify("in.stp", "out");
    return;
  }
  for (const std::string& fault : round_trip_faults("in.stp", assemblies, false)) {
    expect(false, fault);
  }
}

/// Runs in the style `assemblies` and makes sure that it ends as it may. Returns the finding over
/// which the input was refused.
std::optional<FindingKind> check_checked(AssemblyStyle assemblies, NameStyle names, bool is_clean) {
  Options options;
  options.assemblies = assemblies;
  options.names = names;
  options.memory_limit = MEMORY;
  if (assemblies == AssemblyStyle::classic) options.reading = Reading::classic;
  std::filesystem::remove_all("out");
  const CapturedErrors captured;
  try {
    for (const WrittenFile& file : split("in.stp", "out", options)) {
      expect(std::filesystem::file_size(file.path) == file.bytes, "the size is as it says");
      if (is_clean) check_written(file.path);
    }
    check_joined(assemblies);
  } catch (const InputError& error) {
    return error.finding().kind;
  } catch (const OutputError&) {
    expect(!is_clean, "the files of a clean input can be written");
  } catch (const std::out_of_range& error) {
    // The check does not know whether an assembly's file holds what its references must point at.
    expect(!is_clean || std::string_view(error.what()) == "invalid map<K, T> key",
           "a clean input leads to no other exception");
  }
  return std::nullopt;
}

}  // namespace
}  // namespace Kessel::test

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace Kessel;
  using namespace Kessel::test;
  static const ScratchFolder folder;
  const std::string input(reinterpret_cast<const char*>(data), size);

  bool is_large = false;
  std::optional<naive::Outcome> expected;
  try {
    expected = expected_outcome(input);
  } catch (const std::logic_error&) {
    is_large = true;  // Thousands of millions of slots.
  }
  if (expected) check_classic(input, *expected);

  folder.write("in.stp", input);
  Options options;
  options.memory_limit = MEMORY;
  const bool is_clean = check("in.stp", options).empty();
  for (const AssemblyStyle assemblies :
       {AssemblyStyle::classic, AssemblyStyle::lean, AssemblyStyle::nested}) {
    const NameStyle names =
        assemblies == AssemblyStyle::classic ? NameStyle::record : NameStyle::product_unicode;
    const auto refused = check_checked(assemblies, names, is_clean);
    if (refused == FindingKind::memory_limit) continue;
    if (assemblies != AssemblyStyle::classic) {
      expect(!refused || !is_clean, "a clean input is not refused");
      continue;
    }
    expect(is_large || refused.has_value() == !expected.has_value(),
           "refused are exactly the inputs on which a run would not end");
  }
  std::filesystem::remove_all("out");
  std::filesystem::remove("roots.txt");
  return 0;
}
