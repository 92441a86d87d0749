// Tables as text.
#include "measure/table.h"

#include <algorithm>
#include <cstddef>
#include <cstdio>
#include <utility>

namespace Kessel::bench {

std::string fixed(double value, int digits) {
  char text[64];
  const int size = std::snprintf(text, sizeof text, "%.*f", digits, value);
  return {text, static_cast<std::size_t>(size)};
}

Table::Table(std::vector<std::string> header) {
  rows_.push_back(std::move(header));
}

void Table::add_row(std::vector<std::string> cells) {
  rows_.push_back(std::move(cells));
}

void Table::print(std::ostream& out) const {
  std::vector<std::size_t> widths(rows_.front().size());
  for (const auto& row : rows_) {
    for (std::size_t i = 0; i < row.size(); ++i) widths[i] = std::max(widths[i], row[i].size());
  }
  for (std::size_t r = 0; r < rows_.size(); ++r) {
    for (std::size_t i = 0; i < rows_[r].size(); ++i) {
      const std::string padding(widths[i] - rows_[r][i].size(), ' ');
      out << "| " << (i == 0 ? rows_[r][i] + padding : padding + rows_[r][i]) << ' ';
    }
    out << "|\n";
    if (r != 0) continue;
    for (std::size_t i = 0; i < widths.size(); ++i) {
      out << '|' << std::string(widths[i] + 1, '-') << (i == 0 ? '-' : ':');
    }
    out << "|\n";
  }
}

}  // namespace Kessel::bench
