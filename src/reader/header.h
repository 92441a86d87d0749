// What a header is to the second reading.
#pragma once

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

}  // namespace Kessel
