// Any bytes as an input file, for everything that reads and writes nothing.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "fuzz/expect.h"
#include "kessel/assembly.h"
#include "kessel/check.h"
#include "kessel/summary.h"
#include "reader/plain_cutting.h"
#include "support/scratch_folder.h"

namespace Kessel::test {
namespace {

/// More than any file of a few kilobytes needs unless an instance number is a large one.
constexpr std::uint64_t MEMORY = 256 << 20;

void check_cutting(const std::string& text) {
  for (const int lines : {0, 1, 2}) {
    expect(cut(text, lines) == plain::cut(text, lines), "cut as piece by piece");
  }
}

bool is_ascii(std::string_view text) {
  return std::all_of(text.begin(), text.end(), [](char c) { return c >= ' ' && c <= '~'; });
}

void check_findings(const std::string& text) {
  Options options;
  options.memory_limit = MEMORY;
  std::uint64_t offset = 0;
  std::uint64_t line = 1;
  for (const Finding& finding : check("in.stp", options)) {
    expect(!finding.sentence.empty() && is_ascii(finding.sentence), "a sentence is plain ASCII");
    expect(!name_of(finding.kind).empty(), "a kind has a name");
    expect(finding.count >= 1, "a finding stands for one at least");
    if (finding.line == 0) continue;
    expect(finding.offset >= offset && finding.offset <= text.size(), "findings are in order");
    for (; offset < finding.offset; ++offset) line += text[offset] == '\n' ? 1 : 0;
    expect(finding.line == line, "the line is that of the offset");
  }
}

/// Calls `read`, which may refuse the file with one sentence.
template <class Read>
void check_refusal(Read read) {
  try {
    read();
  } catch (const std::runtime_error& error) {
    expect(is_ascii(error.what()) && *error.what() != '\0', "a refusal is one sentence");
  } catch (const std::out_of_range& error) {
    expect(std::string_view(error.what()) == "invalid vector subscript", "beyond the store only");
  }
}

}  // namespace
}  // namespace Kessel::test

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace Kessel;
  using namespace Kessel::test;
  static const ScratchFolder folder;
  const std::string text(reinterpret_cast<const char*>(data), size);
  folder.write("in.stp", text);
  check_cutting(text);
  check_findings(text);
  check_refusal([] { read_assembly("in.stp"); });
  check_refusal([] { read_summary("in.stp"); });
  return 0;
}
