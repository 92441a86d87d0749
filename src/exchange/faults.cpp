#include "exchange/faults.h"

#include <string>
#include <utility>

namespace Kessel::Exchange {

namespace {

Finding make(FindingKind kind, Severity severity, std::string sentence, std::uint64_t offset,
             std::uint64_t instance = 0) {
  Finding finding;
  finding.kind = kind;
  finding.severity = severity;
  finding.sentence = std::move(sentence);
  finding.offset = offset;
  if (offset == 0) finding.line = finding.column = 1;  // Those of all else have to be counted.
  finding.instance = instance;
  return finding;
}

Finding error(FindingKind kind, std::string sentence, std::uint64_t offset,
              std::uint64_t instance = 0) {
  return make(kind, Severity::error, std::move(sentence), offset, instance);
}

Finding warning(FindingKind kind, std::string sentence, std::uint64_t offset,
                std::uint64_t instance = 0) {
  return make(kind, Severity::warning, std::move(sentence), offset, instance);
}

}  // namespace

Finding empty_file() {
  Finding finding = error(FindingKind::empty_file, "The file is empty.", 0);
  finding.line = finding.column = 0;
  return finding;
}

Finding unclosed_text(std::string_view text, std::uint64_t offset) {
  return text.starts_with('#')
             ? error(FindingKind::unclosed_record,
                     "No \";\" closes this record up to the end of the file.", offset)
             : error(FindingKind::unclosed_text,
                     "No \";\" closes this text up to the end of the file.", offset);
}

Finding unclosed_string(const Statement& statement) {
  return error(FindingKind::unclosed_string,
               "A string in this statement is not closed up to the end of the file.",
               statement.offset);
}

Finding unclosed_comment(std::uint64_t offset) {
  return error(FindingKind::unclosed_comment,
               "A comment here or in this statement is not closed up to the end of the file.",
               offset);
}

Finding unclosed_list(const Record& record) {
  return error(FindingKind::unclosed_list, "A \"(\" in this record is not closed.", record.offset,
               record.number);
}

Finding unclosed_record(const Statement& statement) {
  return error(FindingKind::unclosed_record,
               "A record begins in this statement; a \";\" is missing in front of it.",
               statement.offset);
}

Finding unclosed_section(std::string_view section, std::uint64_t offset) {
  return error(FindingKind::unclosed_section,
               "The " + std::string(section) + " section is not closed by \"ENDSEC;\".", offset);
}

Finding statement_too_long(std::uint64_t offset) {
  return error(
      FindingKind::memory_limit,
      "What stands here in front of the next \";\" is longer than the memory limit allows.",
      offset);
}

Finding missing_header(std::uint64_t offset) {
  return error(FindingKind::missing_header, "The header section, \"HEADER;\", should begin here.",
               offset);
}

Finding record_outside_data(const Statement& statement) {
  return error(FindingKind::skipped_text,
               "A record stands here, outside of the data section; \"DATA;\" may be missing.",
               statement.offset);
}

Finding too_large_number(const Statement& statement) {
  return error(FindingKind::record_number_too_large,
               "An instance number here is above 18446744073709551615.", statement.offset);
}

Finding unsupported_scope(const Record& record) {
  return error(FindingKind::unsupported_scope,
               "This record has a scope (\"&SCOPE\"), which is not supported.", record.offset,
               record.number);
}

Finding empty_statement(std::uint64_t offset) {
  return warning(FindingKind::empty_statement, "Nothing stands in front of this \";\".", offset);
}

Finding passed_over(const Statement& statement) {
  return warning(FindingKind::skipped_text,
                 "This text is no record and no section's begin or end; it is left out.",
                 statement.offset);
}

Finding missing_end(std::uint64_t offset) {
  return warning(FindingKind::missing_end, "\"END-ISO-10303-21;\" is missing.", offset);
}

Finding text_behind_end(std::uint64_t offset) {
  return warning(FindingKind::text_after_end,
                 "Text stands behind \"END-ISO-10303-21;\"; it is left out.", offset);
}

Finding dropped_signature(std::uint64_t offset) {
  return warning(FindingKind::signature_dropped,
                 "The file is signed; the signature is left out, since it does not sign what is "
                 "written.",
                 offset);
}

Finding unusual_record(const Record& record, std::string_view what) {
  return warning(FindingKind::unusual_record, std::string(what), record.offset, record.number);
}

Finding lone_backslash(const Statement& statement, std::uint64_t number) {
  return warning(FindingKind::lone_backslash,
                 "A string has a \"\\\" that begins no directive and is not doubled.",
                 statement.offset, number);
}

Finding foreign_bytes(const Statement& statement, std::uint64_t number) {
  return warning(FindingKind::not_utf8, "Bytes here are neither ASCII nor UTF-8.", statement.offset,
                 number);
}

}  // namespace Kessel::Exchange
