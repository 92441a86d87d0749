// Why a run refuses an input.
#include "check/refusal.h"

#include <fstream>
#include <optional>
#include <string>
#include <vector>

#include "exchange/faults.h"
#include "exchange/signature.h"
#include "instances/places.h"

namespace Kessel {

namespace {

/// What the file is, where that is none to be read.
std::optional<Finding> find_other_file(std::istream& in) {
  std::string head(HEAD_SIZE, '\0');
  in.read(head.data(), static_cast<std::streamsize>(head.size()));
  if (in.bad()) return std::nullopt;
  head.resize(static_cast<std::size_t>(in.gcount()));
  if (head.empty()) return Exchange::empty_file();
  return recognise(head);
}

/// Whether `kind` is no matter of what the file holds.
bool is_for_itself(FindingKind kind) {
  return kind == FindingKind::memory_limit || kind == FindingKind::unreadable;
}

}  // namespace

Finding explain(const Finding& refused, const std::filesystem::path& in) {
  std::ifstream file(in, std::ios::binary);
  if (!is_for_itself(refused.kind)) {
    if (auto other = find_other_file(file)) return *other;
  }
  std::vector<Finding> found{refused};
  locate(file, found);
  return found.front();
}

}  // namespace Kessel
