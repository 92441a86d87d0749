// The order of the checks.
#include "kessel/verify.h"

#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <system_error>

#include "check/refusal.h"
#include "findings/finding_kinds.h"
#include "findings/finding_list.h"
#include "findings/input_file.h"
#include "findings/refusals.h"
#include "kessel/errors.h"
#include "verify/file_check.h"
#include "verify/folder.h"
#include "verify/placed_input.h"
#include "verify/reference_block.h"

namespace Kessel {

namespace {

namespace fs = std::filesystem;

/// The input with its records placed, or the finding that it cannot be split.
std::unique_ptr<PlacedInput> place(const fs::path& in, const Options& options,
                                   FindingList& findings) {
  if (auto finding = find_no_regular_file(in)) {
    findings.add(std::move(*finding));
    return nullptr;
  }
  try {
    return std::make_unique<PlacedInput>(in, options);
  } catch (const InputError& error) {
    findings.add(explain(error.finding(), in, options));
  } catch (const std::invalid_argument&) {
    findings.add(unreadable_file("cannot be opened"));
  } catch (const std::out_of_range&) {
    findings.add(make_finding(FindingKind::instance_beyond_store,
                              "A record refers to an instance far beyond the highest number that "
                              "is there; a split fails over it."));
  }
  return nullptr;
}

/// More bytes than any file of the split has.
std::uint64_t most_bytes(const PlacedInput& input, std::uint64_t size_of_input, const Part& part) {
  // A reference of two bytes may become one of eleven; a block's records and names are short.
  constexpr std::uint64_t GROWTH = 6;
  constexpr std::uint64_t RECORDS_OF_BLOCK = 16384;
  return GROWTH * size_of_input + RECORDS_OF_BLOCK * (1 + input.blocks_of(part).size());
}

void check_files(PlacedInput& input, std::uint64_t size_of_input, const OutputFolder& folder,
                 FindingList& findings, Verification& verification) {
  std::string text;
  for (Part* part : input.parts()) {
    findings.begin_file(part->path.empty() ? "." : part->get_utf8_filename());
    if (!folder.holds(*part)) {
      findings.add(folder.why_not(*part));
      continue;
    }
    if (auto finding = folder.read(*part, most_bytes(input, size_of_input, *part), text)) {
      findings.add(std::move(*finding));
      continue;
    }
    ++verification.files;
    verification.records += FileCheck(input, folder, *part, text, findings).check();
  }
}

void verify_split(const fs::path& in, const fs::path& outdir, const Options& options,
                  FindingList& findings, Verification& verification) {
  const std::unique_ptr<PlacedInput> input = place(in, options, findings);
  if (input == nullptr) return;
  if (input->parts().size() < 2) {
    const bool none = input->parts().empty();
    findings.add(make_finding(none ? FindingKind::no_part : FindingKind::one_part,
                              none ? "There is nothing to split: no product definition leads to a "
                                     "product or a shape."
                                   : "There is nothing to split: there is only one part."));
    return;
  }
  std::error_code unknown;
  const std::uintmax_t size = fs::file_size(in, unknown);
  const OutputFolder folder(outdir, input->parts());
  if (!folder.check_others(input->file().root, findings)) return;
  try {
    check_files(*input, unknown ? 0 : size, folder, findings, verification);
  } catch (const InputError& error) {
    findings.begin_file({});
    findings.add(error.finding());
  }
}

}  // namespace

Verification verify(const fs::path& in, const fs::path& outdir, const Options& options) {
  Options quiet = options;
  quiet.progress = {};
  Verification verification;
  FindingList findings;
  verify_split(in, outdir, quiet, findings, verification);
  verification.findings = findings.take();
  return verification;
}

}  // namespace Kessel
