// What a header is to the second reading.
#pragma once

#include <cstddef>
#include <istream>
#include <string_view>

namespace Kessel {

/// The writer reads the header once more, as it reads data. What it takes it for:
enum class SecondReading {
  passed_over,    ///< text without records, as it should be
  end_of_data,    ///< a ";" behind another one ends the data before it has begun
  records,        ///< it holds a record
  begin_of_data,  ///< it begins a record, which what stands behind the header has to complete
};

/// What the second reading takes a header for.
SecondReading read_again(std::string_view first_line, std::string_view header);

/// Whether the second reading of an input without records, from its very beginning, ends: at an
/// empty piece, or over a number that is beyond a store of `store_size` slots.
bool second_reading_ends(std::istream& input, std::size_t store_size, std::size_t memory_limit);

}  // namespace Kessel
