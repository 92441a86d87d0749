// What the reader says where a checked run ends.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "kessel/errors.h"

namespace Kessel {

/// The header is not closed; `offset` is where the input ended.
Finding no_header_end(std::uint64_t offset);

/// Nothing, not even the end of its line, stands behind the header.
Finding no_data(std::uint64_t offset);

/// The second reading takes some of the header for data; the line at `offset` ends it.
Finding header_as_data(std::uint64_t offset);

/// The input ended inside a text that is no record and begins at `offset`; no ";" closes it.
Finding unclosed_text(std::uint64_t offset);

/// The same of a record with the number `instance`, which lacks its ";" alone where it `is_whole`.
Finding unclosed_record(std::uint32_t instance, bool is_whole, std::uint64_t offset);

/// A line, the header, or what stands in front of a ";" is longer than `limit` bytes.
Finding too_long(std::uint64_t limit, std::uint64_t offset);

/// The store needs `needed` bytes for a record with the number `instance`, which is at `offset`.
Finding too_much_memory(std::uint64_t needed, std::uint64_t limit, std::uint32_t instance,
                        std::uint64_t offset);

/// How far the reading of a file has come.
struct BytesRead {
  std::uint64_t done = 0;
  std::uint64_t total = 0;  ///< size of the file; 0 where it is not known
};

/// The records that have been read need `needed` bytes of memory: those of a file's beginning, from
/// which the whole is estimated, or all.
Finding records_need_memory(std::uint64_t needed, std::uint64_t limit, const BytesRead& read = {});

/// The records of a file, and of as many as were read `before` with it, are too many for a limit
/// that holds for all.
Finding files_need_memory(std::size_t before, std::uint64_t limit);

/// There are more records than indices; the first of those is at `offset`.
Finding too_many_records(std::uint64_t offset);

/// The second reading does not find what the first one did; it came to `offset`.
Finding input_changed(std::uint64_t offset);

/// Reading failed; the reason is what the system says.
Finding unreadable_file(std::string_view reason);

}  // namespace Kessel
