// Looks up parameters of records whose text is kept.
#pragma once

#include <string>
#include <string_view>

#include "exchange/parameters.h"
#include "exchange/string_value.h"
#include "instances/instances.h"

namespace Kessel {

/// The parameters of one record, or of its partial record `keyword` where it is a complex one.
class ParameterReader {
 public:
  ParameterReader(const Instances& instances, Index record, std::string_view keyword)
      : instances_(instances),
        parameters_(Exchange::parameters_of(instances.kept_body(record), keyword)) {}

  /// The record that parameter `i` refers to; NO_RECORD for all else.
  Index record(std::size_t i) const {
    const std::uint64_t number = Exchange::instance_of(Exchange::parameter(parameters_, i));
    return number == 0 ? NO_RECORD : instances_.find(number);
  }

  /// What the string that is parameter `i` says, UTF-8; empty for all else.
  std::string text(std::size_t i) const {
    const std::string_view literal = Exchange::parameter(parameters_, i);
    return literal.starts_with('\'') ? Exchange::string_value(literal) : std::string();
  }

  std::string_view raw(std::size_t i) const { return Exchange::parameter(parameters_, i); }

 private:
  const Instances& instances_;
  Exchange::Parameters parameters_;
};

}  // namespace Kessel
