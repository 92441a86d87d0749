#include "instances/places.h"

#include <algorithm>
#include <array>

#include "exchange/reader.h"
#include "exchange/statement_cutter.h"
#include "model/finding_kinds.h"

namespace Kessel {

namespace {

/// Missing instances of so many records are told one by one.
constexpr std::size_t MOST_TOLD = 20;

/// Whether a statement between two records is one itself.
bool is_entry(const Exchange::Statement& statement) {
  return statement.text.starts_with('#') || statement.text.starts_with('<');
}

}  // namespace

PlacedText read_again(std::istream& in, const Instances& instances, Index record) {
  std::uint32_t skip = 0;
  const std::uint64_t offset = instances.offset_near(record, skip);
  in.clear();
  in.seekg(static_cast<std::streamoff>(offset));
  Exchange::StatementCutter cutter(in, offset);
  cutter.know_resources(instances.type(record) == TypeTable::ANCHOR_ENTRY ||
                        instances.type(record) == TypeTable::REFERENCE_ENTRY);
  PlacedText text;
  while (cutter.next(Exchange::Scrutiny::none) == Exchange::Cut::statement) {
    const Exchange::Statement& statement = cutter.statement();
    if (!is_entry(statement) || skip-- != 0) continue;
    text.offset = statement.offset;
    text.body = statement.text.starts_with('#') && !cutter.mentions().empty()
                    ? record_of(statement, cutter.mentions()).body
                    : statement.text;
    break;
  }
  return text;
}

std::vector<Finding> missing_instances(std::istream& in, const Instances& instances) {
  std::vector<Finding> findings;
  if (instances.missing_references() == 0) return findings;
  for (Index record = 0; record < instances.size(); ++record) {
    const auto references = instances.references(record);
    const bool misses = std::any_of(references.begin(), references.end(), [](Reference reference) {
      return reference.record() == NO_RECORD;
    });
    if (!misses || instances.type(record) == TypeTable::REPEATED) continue;
    Finding finding =
        make_finding(FindingKind::missing_instance,
                     "This record refers to an instance that the file does not have.");
    finding.severity = Severity::warning;
    const std::uint64_t number = instances.number(record);
    finding.instance = static_cast<std::uint32_t>(number > UINT32_MAX ? 0 : number);
    if (findings.size() <= MOST_TOLD) finding.offset = read_again(in, instances, record).offset;
    findings.push_back(std::move(finding));
    if (findings.size() > MOST_TOLD + 1) {
      findings.pop_back();
      ++findings.back().count;
    }
  }
  return findings;
}

void set_lines(std::istream& in, std::vector<Finding>& findings) {
  std::vector<Finding*> in_order;
  for (Finding& finding : findings) in_order.push_back(&finding);
  std::sort(in_order.begin(), in_order.end(),
            [](const Finding* a, const Finding* b) { return a->offset < b->offset; });
  in.clear();
  in.seekg(0);
  std::array<char, 65536> block;
  std::uint64_t passed = 0;
  std::uint64_t line = 1;
  auto next = in_order.begin();
  while (next != in_order.end() && in.good()) {
    in.read(block.data(), block.size());
    const auto count = static_cast<std::uint64_t>(in.gcount());
    auto counted = block.begin();
    for (; next != in_order.end() && (*next)->offset <= passed + count; ++next) {
      const auto here = block.begin() + static_cast<std::ptrdiff_t>((*next)->offset - passed);
      line += static_cast<std::uint64_t>(std::count(counted, here, '\n'));
      counted = here;
      (*next)->line = line;
    }
    line += static_cast<std::uint64_t>(
        std::count(counted, block.begin() + static_cast<std::ptrdiff_t>(count), '\n'));
    passed += count;
  }
}

}  // namespace Kessel
