// What the records of a file say, apart from how they are written and numbered.
#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace Kessel::test {

struct Meaning {
  /// The words of each entity, strings as what they say.
  std::vector<std::vector<std::string>> header;
  /// The same of each record, by its number in the plain form, the type in front. References have
  /// the numbers of the plain form, and "!" behind them where they are listed.
  std::map<std::string, std::vector<std::string>> records;
};

/// Of a file as the library loads it. `plain_numbers` gives for a number of the file the one in the
/// plain form; a number that is not there stays.
Meaning meaning_of(const std::string& file,
                   const std::map<std::string, std::string>& plain_numbers = {});

}  // namespace Kessel::test
