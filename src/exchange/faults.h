// What the reader says where it stops, and what it warns of.
#pragma once

#include <cstdint>
#include <string_view>

#include "exchange/reader.h"
#include "kessel/finding.h"

namespace Kessel::Exchange {

// Errors. `offset` is where what is not closed begins.
Finding empty_file();
Finding unclosed_text(std::string_view text, std::uint64_t offset);
Finding unclosed_string(const Statement& statement);
Finding unclosed_comment(std::uint64_t offset);
Finding unclosed_list(const Record& record);
Finding unclosed_record(const Statement& statement);
Finding unclosed_section(std::string_view section, std::uint64_t offset);
Finding statement_too_long(std::uint64_t offset);
Finding missing_header(std::uint64_t offset);
Finding record_outside_data(const Statement& statement);
Finding too_large_number(const Statement& statement);
Finding unsupported_scope(const Record& record);

// Warnings.
Finding empty_statement(std::uint64_t offset);
Finding passed_over(const Statement& statement);
Finding missing_end(std::uint64_t offset);
Finding text_behind_end(std::uint64_t offset);
Finding dropped_signature(std::uint64_t offset);
Finding unusual_record(const Record& record, std::string_view what);
// Where a record is concerned, `number` is its.
Finding lone_backslash(const Statement& statement, std::uint64_t number);
Finding foreign_bytes(const Statement& statement, std::uint64_t number);

}  // namespace Kessel::Exchange
