// The order of the checks.
#include "kessel/check.h"

#include <cerrno>
#include <fstream>
#include <string>
#include <system_error>

#include "check/finding_list.h"
#include "check/input_file.h"
#include "check/reference_check.h"
#include "check/signature.h"
#include "check/structure_check.h"
#include "check/text_check.h"
#include "model/finding_kinds.h"
#include "reader/refusals.h"

namespace Kessel {

namespace {

std::string first_bytes(std::istream& in) {
  std::string head(HEAD_SIZE, '\0');
  in.read(head.data(), static_cast<std::streamsize>(head.size()));
  head.resize(static_cast<std::size_t>(in.gcount()));
  return head;
}

void check_file(const std::filesystem::path& in, const Options& options, FindingList& findings) {
  if (auto finding = find_no_regular_file(in)) return findings.add(std::move(*finding));
  errno = 0;
  std::ifstream file(in, std::ios::in | std::ios::binary);
  if (!file.is_open()) {
    const std::error_code reason(errno != 0 ? errno : EIO, std::generic_category());
    return findings.add(unreadable_file("cannot be opened: " + reason.message()));
  }
  const std::string head = first_bytes(file);
  if (file.bad()) return findings.add(unreadable_file("cannot be read"));
  if (head.empty()) {
    return findings.add(make_finding(FindingKind::empty_file, "The file is empty."));
  }
  file.clear();
  file.seekg(0);

  const auto no_exchange_file = recognise(head);
  if (no_exchange_file) findings.add(*no_exchange_file);

  File store{std::filesystem::path()};
  TextCheck text(file, store, findings, options.memory_limit);
  if (!text.read(no_exchange_file.has_value())) return;
  check_references(store, text.places(), findings);
  check_structure(store, text.places(), findings);
}

}  // namespace

std::vector<Finding> check(const std::filesystem::path& in, const Options& options) {
  FindingList findings;
  check_file(in, options, findings);
  return findings.take();
}

}  // namespace Kessel
