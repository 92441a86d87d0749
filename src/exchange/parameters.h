// Takes the body of a record apart into its parameters.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

namespace Kessel::Exchange {

/// The parameters of one entity, as they stand; views into the text they were taken from. Blanks
/// and comments around a parameter are not part of it.
using Parameters = std::vector<std::string_view>;

/// A partial record of a complex instance, or the only one of a simple one.
struct PartialRecord {
  std::string_view keyword;
  std::string_view list;  ///< its parameters with their parentheses
};

/// The partial records of `body`, which is Record::body. Text that breaks off gives what is there.
std::vector<PartialRecord> partial_records(std::string_view body);

/// The items of a list "(a,(b,c),'d')"; none for what is no list.
Parameters items_of(std::string_view list);

/// The parameters of the simple record `body`, or of the partial record `keyword` where it is a
/// complex one; none where that has no such record.
Parameters parameters_of(std::string_view body, std::string_view keyword);

/// Parameter `i`, counted from 0; empty when there are fewer.
std::string_view parameter(const Parameters& parameters, std::size_t i);

/// The number of the instance name that is the whole of `parameter`; 0 for all else.
std::uint64_t instance_of(std::string_view parameter);

}  // namespace Kessel::Exchange
