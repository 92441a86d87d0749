#include "exchange/values.h"

#include <charconv>
#include <cmath>

#include "exchange/parameters.h"
#include "exchange/string_value.h"

namespace Kessel {

std::string text_value(std::string_view parameter) {
  return parameter.starts_with('\'') ? Exchange::string_value(parameter) : std::string();
}

std::vector<std::string> text_values(std::string_view parameter) {
  std::vector<std::string> values;
  for (const std::string_view item : Exchange::items_of(parameter)) {
    values.push_back(text_value(item));
  }
  return values;
}

std::string_view enumeration_value(std::string_view parameter) {
  if (parameter.size() < 2 || parameter.front() != '.' || parameter.back() != '.') return {};
  return parameter.substr(1, parameter.size() - 2);
}

std::optional<double> number_or_none(std::string_view parameter) {
  // Most numbers have no type in front.
  const bool is_typed = !parameter.empty() && parameter.back() == ')';
  const auto typed =
      is_typed ? Exchange::partial_records(parameter) : std::vector<Exchange::PartialRecord>();
  if (!typed.empty()) {
    const Exchange::Parameters parameters = Exchange::items_of(typed.front().list);
    parameter = Exchange::parameter(parameters, 0);
  }
  if (parameter.starts_with('+')) parameter.remove_prefix(1);
  double value = 0;
  const auto [end, error] =
      std::from_chars(parameter.data(), parameter.data() + parameter.size(), value);
  if (error != std::errc() || !std::isfinite(value)) return std::nullopt;  // It reads "INF", too.
  return value;
}

double number_value(std::string_view parameter) {
  return number_or_none(parameter).value_or(0);
}

}  // namespace Kessel
