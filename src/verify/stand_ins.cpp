#include "verify/stand_ins.h"

#include <algorithm>
#include <fstream>
#include <string>
#include <vector>

#include "exchange/parameters.h"
#include "findings/finding_kinds.h"
#include "instances/places.h"

namespace Kessel {

namespace {

/// Whether `parameter` says nothing where `whole` says something: an empty list, or nothing at all.
bool is_emptied(std::string_view parameter, std::string_view whole) {
  const bool is_empty =
      parameter.empty() || (parameter.starts_with('(') && Exchange::items_of(parameter).empty());
  const bool was_empty =
      whole.empty() || (whole.starts_with('(') && Exchange::items_of(whole).empty());
  return is_empty && !was_empty;
}

/// What is wrong with `body` beside `whole`, for which it stands; empty where nothing is.
std::string fault_of(std::string_view body, std::string_view whole) {
  const auto partial = Exchange::partial_records(body);
  const auto expected = Exchange::partial_records(whole);
  // A split may let a plainer type stand for one that demands items of its own.
  if (partial.size() != expected.size()) return {};
  for (std::size_t i = 0; i < partial.size(); ++i) {
    const Exchange::Parameters parameters = Exchange::items_of(partial[i].list);
    const Exchange::Parameters of_whole = Exchange::items_of(expected[i].list);
    const bool is_same_type = partial[i].keyword == expected[i].keyword;
    if (is_same_type && parameters.size() != of_whole.size()) {
      return "has another number of parameters than";
    }
    // A type that is derived from another begins with the parameters of that.
    const std::size_t common = std::min(parameters.size(), of_whole.size());
    for (std::size_t at = 0; at < common; ++at) {
      if (is_emptied(parameters[at], of_whole[at])) {
        return "has an empty parameter that is not empty in";
      }
    }
  }
  return {};
}

/// Reads records again.
class Rereading {
 public:
  explicit Rereading(const FileSet& files) : files_(files) {}

  PlacedText read(std::size_t file, Index record) {
    std::ifstream in(files_[file].path, std::ios::in | std::ios::binary);
    return read_again(in, files_[file].instances, record);
  }

 private:
  const FileSet& files_;
};

}  // namespace

void check_stand_ins(const Joining& joining, FindingList& findings) {
  const Records& records = joining.records();
  Rereading texts(joining.files());
  for (const Node node : records.united()) {
    if (records.is_text(node)) continue;
    const Standing standing = records.standing(node);
    if (standing != Standing::stand_in && standing != Standing::counterpart) continue;
    const Node whole = records.text_of(node);
    const std::size_t file = records.file_of(node);
    const JoinedFile& own = joining.files()[file];
    const Index record = records.index_of(node);
    const PlacedText text = texts.read(file, record);
    const std::string fault =
        fault_of(text.body, texts.read(records.file_of(whole), records.index_of(whole)).body);
    if (fault.empty()) continue;
    const std::uint64_t number = own.instances.number(record);
    findings.begin_file(own.name);
    findings.add(make_finding(
        FindingKind::changed_record,
        "#" + std::to_string(number) + " " + fault + " the record for which it stands.",
        text.offset, number));
  }
}

}  // namespace Kessel
