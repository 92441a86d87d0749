// Any bytes as an exchange file, for the reader and the store of instances.
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <sstream>
#include <string>
#include <vector>

#include "exchange/compare_readings.h"
#include "exchange/event_log.h"
#include "fuzz/expect.h"
#include "instances/instances.h"
#include "instances/loader.h"
#include "instances/places.h"
#include "instances/users.h"
#include "kessel/errors.h"

namespace Kessel::test {
namespace {

/// More than any file of a few kilobytes needs.
constexpr std::uint64_t MEMORY = 16 << 20;

void check_readings(const std::string& text) {
  const std::string difference = difference_of_readings(text, 1 + text.size() * 7 % 300);
  if (!difference.empty()) std::fprintf(stderr, "%s\n", difference.c_str());
  expect(difference.empty(), "read as the plain reader reads it");
}

void check_references(const Instances& instances, Index record) {
  const Users users(instances);
  for (const Reference reference : instances.references(record)) {
    if (reference.record() == NO_RECORD) continue;
    expect(reference.record() < instances.size(), "references lead to records");
    bool is_user = false;
    for (const Index user : users.of(reference.record())) is_user |= user == record;
    expect(is_user, "who refers is a user");
  }
}

void check_store(std::istringstream& in, const Instances& instances) {
  std::uint64_t offset = 0;
  for (Index record = 0; record < instances.size(); ++record) {
    const PlacedText text = read_again(in, instances, record);
    expect(text.offset > offset, "records are read again where they stand");
    offset = text.offset;
    const std::string_view kept = instances.kept_body(record);
    if (!kept.empty() && instances.section(record) == Exchange::Section::data) {
      expect(kept == text.body, "the text that is kept stands in the file");
    }
    if (record < 20) check_references(instances, record);
  }
}

void check_loading(const std::string& text) {
  std::istringstream in(text);
  Instances instances;
  Options options;
  options.memory_limit = MEMORY;
  const std::vector<std::string> log = event_log(text);
  const bool is_readable = log.empty() || !log.back().starts_with("error ");
  try {
    const std::vector<Finding> warnings = load_instances(in, instances, options);
    expect(is_readable, "what ends with an error is not loaded");
    std::uint64_t before = 0;
    for (const Finding& warning : warnings) {
      expect(warning.severity == Severity::warning, "what is loaded has warnings only");
      expect(warning.offset >= before && warning.line > 0, "warnings are in order, with lines");
      before = warning.offset;
    }
  } catch (const InputError& error) {
    expect(!is_readable || error.finding().kind == FindingKind::two_texts_of_a_number,
           "what can be read is loaded");
    return;
  }
  check_store(in, instances);
}

}  // namespace
}  // namespace Kessel::test

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string text(reinterpret_cast<const char*>(data), size);
  Kessel::test::check_readings(text);
  Kessel::test::check_loading(text);
  return 0;
}
