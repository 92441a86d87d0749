// Tables as text.
#pragma once

#include <ostream>
#include <string>
#include <vector>

namespace Kessel::bench {

/// `value` with that many digits behind the point.
std::string fixed(double value, int digits);

/// Rows of cells, printed as a Markdown table whose columns line up: the first to the left, the
/// others to the right.
class Table {
 public:
  explicit Table(std::vector<std::string> header);

  /// Adds a row, which has as many cells as the header.
  void add_row(std::vector<std::string> cells);
  bool empty() const { return rows_.size() == 1; }

  void print(std::ostream& out) const;

 private:
  std::vector<std::vector<std::string>> rows_;  // the header first
};

}  // namespace Kessel::bench
