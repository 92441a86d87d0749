#include "verify/differences.h"

#include <string>
#include <string_view>
#include <vector>

#include "exchange/characters.h"
#include "findings/finding_kinds.h"

namespace Kessel {

namespace {

/// The beginning of a parameter in quotation marks, with single blanks for all that are in it.
std::string shown_parameter(const std::string& parameter) {
  std::string text;
  for (const char c : parameter) {
    const bool is_blank = Exchange::is_blank(c);
    if (!is_blank || (!text.empty() && text.back() != ' ')) text += is_blank ? ' ' : c;
  }
  return Kessel::quoted(text);
}

std::string hash_and(std::uint64_t number) {
  return "#" + std::to_string(number);
}

/// "parameter 2 of NAME says X in place of Y" for the first parameter that is known to differ.
std::string what_changed(const ChangedRecord& changed) {
  if (changed.parameters.empty()) return "says something else";
  const ChangedParameter& first = changed.parameters.front();
  const std::string where = "parameter " + std::to_string(first.place) + " of " + first.keyword;
  if (first.in_a == first.in_b) return where + " leads to another record";
  return where + " is " + shown_parameter(first.in_b) + " in place of " +
         shown_parameter(first.in_a);
}

class DifferenceReport {
 public:
  DifferenceReport(const Joining& joining, FindingList& findings)
      : joining_(joining), findings_(findings), nodes_(joining.nodes_by_number()) {}

  void add(const Difference& difference) {
    if (difference.schemas_in_a != difference.schemas_in_b) {
      findings_.begin_file(joining_.files().root().name);
      findings_.add(make_finding(FindingKind::wrong_header,
                                 "The root's file names other schemas than the input."));
    }
    findings_.begin_file({});
    for_each_type(difference, [&](const TypeDifference& type) { add_missing(type); });
    for (std::size_t file = 0; file < joining_.files().size(); ++file) {
      findings_.begin_file(joining_.files()[file].name);
      for_each_type(difference, [&](const TypeDifference& type) { add_others(type, file); });
    }
  }

 private:
  template <class Add>
  static void for_each_type(const Difference& difference, Add add) {
    for (const ProductDifference& product : difference.products) {
      for (const TypeDifference& type : product.types) add(type);
    }
  }

  void add_missing(const TypeDifference& type) {
    for (const std::uint64_t number : type.only_in_a) {
      findings_.add(make_finding(FindingKind::missing_record,
                                 hash_and(number) + " (" + type.type + ") is in no file.", 0,
                                 number));
    }
  }

  /// Those of one file, so that a file's findings stand together.
  void add_others(const TypeDifference& type, std::size_t file) {
    for (const std::uint64_t joined : type.only_in_b) {
      if (file_of(joined) != file) continue;
      const std::uint64_t number = number_in_file(joined);
      findings_.add(make_finding(
          FindingKind::foreign_record,
          hash_and(number) + " (" + type.type + ") is not in the input, or there less often.", 0,
          number));
    }
    for (const ChangedRecord& changed : type.changed) {
      if (file_of(changed.in_b) != file) continue;
      const std::uint64_t number = number_in_file(changed.in_b);
      findings_.add(make_finding(FindingKind::changed_record,
                                 hash_and(number) + ", the input's " + hash_and(changed.in_a) +
                                     ": " + what_changed(changed) + ".",
                                 0, number));
    }
  }

  /// Where a record of the joined file comes from; what has no number there, from the root.
  std::size_t file_of(std::uint64_t joined) const {
    return joined == 0 || joined > nodes_.size() ? 0
                                                 : joining_.records().file_of(nodes_[joined - 1]);
  }
  std::uint64_t number_in_file(std::uint64_t joined) const {
    if (joined == 0 || joined > nodes_.size()) return 0;
    const Node node = nodes_[joined - 1];
    return joining_.files()[joining_.records().file_of(node)].instances.number(
        joining_.records().index_of(node));
  }

  const Joining& joining_;
  FindingList& findings_;
  std::vector<Node> nodes_;
};

}  // namespace

void add_differences(const Difference& difference, const Joining& joining, FindingList& findings) {
  DifferenceReport(joining, findings).add(difference);
}

}  // namespace Kessel
