// The table of the kinds of findings.
#include "findings/finding_kinds.h"

#include <cstddef>
#include <iterator>
#include <utility>

namespace Kessel {

namespace {

struct KindRow {
  FindingKind kind;
  const char* name;
  Severity severity;
};

namespace Rows {
using enum FindingKind;
using enum Severity;

// In the order of FindingKind.
constexpr KindRow KINDS[] = {
    {unreadable, "unreadable", error},
    {empty_file, "empty_file", error},
    {compressed, "compressed", error},
    {other_encoding, "other_encoding", error},
    {binary, "binary", error},
    {not_an_exchange_file, "not_an_exchange_file", error},
    {first_line, "first_line", warning},
    {header_without_end, "header_without_end", error},
    {nothing_after_header, "nothing_after_header", error},
    {header_is_read_as_data, "header_is_read_as_data", error},
    {unclosed_text, "unclosed_text", error},
    {unclosed_record, "unclosed_record", error},
    {text_after_end, "text_after_end", error},
    {missing_end, "missing_end", warning},
    {changed_while_read, "changed_while_read", error},
    {record_number_too_large, "record_number_too_large", error},
    {skipped_text, "skipped_text", warning},
    {not_utf8, "not_utf8", warning},
    {memory_limit, "memory_limit", error},
    {unclosed_string, "unclosed_string", error},
    {unclosed_comment, "unclosed_comment", error},
    {unclosed_list, "unclosed_list", error},
    {unclosed_section, "unclosed_section", error},
    {missing_header, "missing_header", error},
    {unsupported_scope, "unsupported_scope", error},
    {two_texts_of_a_number, "two_texts_of_a_number", error},
    {same_text_twice, "same_text_twice", warning},
    {empty_statement, "empty_statement", warning},
    {signature_dropped, "signature_dropped", warning},
    {unusual_record, "unusual_record", warning},
    {lone_backslash, "lone_backslash", warning},
    {missing_instance, "missing_instance", error},
    {instance_beyond_store, "instance_beyond_store", error},
    {reference_cycle, "reference_cycle", warning},
    {unused_usage, "unused_usage", warning},
    {usage_cycle, "usage_cycle", error},
    {part_without_name, "part_without_name", error},
    {foreign_shape, "foreign_shape", warning},
    {occurrence_style, "occurrence_style", warning},
    {unfollowed_file, "unfollowed_file", warning},
    {no_part, "no_part", warning},
    {one_part, "one_part", warning},
    {missing_file, "missing_file", error},
    {wrong_header, "wrong_header", error},
    {missing_record, "missing_record", error},
    {foreign_record, "foreign_record", error},
    {changed_record, "changed_record", error},
    {unresolved_reference, "unresolved_reference", error},
    {missing_root_list, "missing_root_list", warning},
    {wrong_root_list, "wrong_root_list", error},
    {foreign_file, "foreign_file", warning},
    {missing_listed_file, "missing_listed_file", warning},
    {changed_listed_file, "changed_listed_file", warning},
    {wrong_split_list, "wrong_split_list", warning},
    {missing_target, "missing_target", error},
    {target_outside, "target_outside", error},
    {file_cycle, "file_cycle", error},
    {mixed_schemas, "mixed_schemas", error},
    {unknown_component, "unknown_component", error},
    {copies_differ, "copies_differ", warning},
    {stand_in_left, "stand_in_left", warning},
    {shape_elsewhere, "shape_elsewhere", warning},
};
}  // namespace Rows

constexpr const KindRow& row_of(FindingKind kind) {
  return Rows::KINDS[static_cast<std::size_t>(kind)];
}

constexpr bool rows_are_in_order() {
  for (std::size_t i = 0; i < std::size(Rows::KINDS); ++i) {
    if (Rows::KINDS[i].kind != static_cast<FindingKind>(i)) return false;
  }
  return Rows::KINDS[std::size(Rows::KINDS) - 1].kind == FindingKind::shape_elsewhere;
}
static_assert(rows_are_in_order());

}  // namespace

std::string_view name_of(FindingKind kind) {
  return row_of(kind).name;
}

Severity severity_of(FindingKind kind) {
  return row_of(kind).severity;
}

Finding make_finding(FindingKind kind, std::string sentence, std::uint64_t offset,
                     std::uint64_t instance) {
  return {kind, severity_of(kind), std::move(sentence), offset, 0, 0, instance, 1};
}

}  // namespace Kessel
