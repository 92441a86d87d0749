// Writes the clear text of an exchange structure (ISO 10303-21).

#pragma once

#include <array>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <ostream>
#include <span>
#include <string>
#include <string_view>
#include <tuple>

#include "vec3.h"

namespace Kessel::bench {

// The number of an instance: 12 for the instance name "#12".
struct InstanceId {
  std::uint64_t number = 0;
};

// An enumeration value: Symbol{"MILLI"} is written ".MILLI.".
struct Symbol {
  std::string_view name;
};

// An attribute without a value, written "$".
struct Unset {};

// An attribute that a subtype derives, written "*".
struct Derived {};

// A value of a named type: Typed{"LENGTH_MEASURE", 0.1} is written "LENGTH_MEASURE(0.1)".
template <class Value>
struct Typed {
  std::string_view keyword;
  Value value;
};
template <class Value>
Typed(std::string_view, Value) -> Typed<Value>;

// One partial record of a complex instance: its keyword and its attribute values.
template <class... Values>
struct Partial {
  std::string_view keyword;
  std::tuple<Values...> values;
};

// Returns the partial record with this keyword and these values.
template <class... Values>
Partial<Values...> partial(std::string_view keyword, Values... values) {
  return {keyword, {values...}};
}

// Returns the given instances as a list, written "(#1,#2)".
template <class... Ids>
std::array<InstanceId, sizeof...(Ids)> list(Ids... ids) {
  return {ids...};
}

// Which numbers a writer hands out: `first`, `first` + `step`, `first` + 2 `step`, ...
struct Numbering {
  std::uint64_t first = 1;
  std::uint64_t step = 1;
};

// How much white space a writer puts inside records; systems differ in this.
enum class Spacing {
  tight,  // #5 = VECTOR('',#4,1.);
  wide,   // #5 = VECTOR ( '', #4, 1. );
};

// Writes records one after the other and hands out their instance numbers.
//
// A value may be an InstanceId, a list of them, a real or whole number, a bool, a text (UTF-8; the
// writer encodes it), a Vec3 (written as a list of three reals), or one of the types above. Calls
// that write records must stand in statements of their own when there are several: the order in
// which the arguments of one call are evaluated is open, and numbers would depend on the compiler.
//
// Text is gathered in memory and handed to the stream in large pieces.
class StepWriter {
 public:
  // Writes to `out`, which must outlive the writer, with white space as `spacing` says; instances
  // are numbered as `numbering` says.
  explicit StepWriter(std::ostream& out, Spacing spacing = Spacing::tight,
                      Numbering numbering = {});
  StepWriter(const StepWriter&) = delete;
  StepWriter& operator=(const StepWriter&) = delete;

  // Writes the header section and opens the data section. `file_name` and `description` (UTF-8) go
  // into FILE_NAME and FILE_DESCRIPTION; the time stamp is always the same.
  void begin_file(std::string_view file_name, std::string_view description);

  // Closes the data section and the file, and hands all text to the stream.
  void end_file();

  // Hands all text gathered so far to the stream.
  void flush();

  // Returns the next instance number; the record is written later with `add_as`.
  InstanceId reserve();

  // Sets `count` instance numbers aside and returns the first of them.
  InstanceId reserve_block(std::uint64_t count);

  // Appends `text`, whole records that another writer has written, as it stands.
  void append_records(std::string_view text);

  // Writes a record with the next number and returns that number.
  template <class... Values>
  InstanceId add(std::string_view keyword, const Values&... values) {
    const InstanceId id = reserve();
    add_as(id, keyword, values...);
    return id;
  }

  // Writes the record of the reserved number `id`.
  template <class... Values>
  void add_as(InstanceId id, std::string_view keyword, const Values&... values) {
    begin_record(id);
    put_record(keyword, values...);
    end_record();
  }

  // Writes a complex instance of the given partial records, which the caller orders by their
  // keywords (ISO 10303-21, 11.2.5.3), and returns its number.
  template <class... Partials>
  InstanceId add_complex(const Partials&... partials) {
    const InstanceId id = reserve();
    begin_record(id);
    open_list();
    (put_partial(partials), ...);
    close_list();
    end_record();
    return id;
  }

 private:
  void begin_record(InstanceId id);
  void end_record();

  void open_list();
  void close_list();
  void separate_values();

  // Starts a new line when the current one is long and returns whether it did; called between two
  // values.
  bool break_long_line();

  template <class... Values>
  void put_record(std::string_view keyword, const Values&... values) {
    buffer_ += keyword;
    if (wide_) buffer_ += ' ';
    open_list();
    [[maybe_unused]] bool first = true;
    (put_separated(first, values), ...);
    close_list();
  }

  template <class... Values>
  void put_partial(const Partial<Values...>& part) {
    if (!break_long_line() && wide_ && buffer_.back() == ')') buffer_ += ' ';
    std::apply([&](const Values&... values) { put_record(part.keyword, values...); }, part.values);
  }

  template <class Value>
  void put_separated(bool& first, const Value& value) {
    if (!first) separate_values();
    first = false;
    put(value);
  }

  void put(InstanceId id);
  void put(std::span<const InstanceId> ids);
  void put(double value);
  void put(const Vec3& value);
  void put(std::string_view text);
  void put(const char* text) { put(std::string_view(text)); }
  void put(Symbol symbol);
  void put(Unset) { buffer_ += '$'; }
  void put(Derived) { buffer_ += '*'; }

  template <std::same_as<bool> Bool>
  void put(Bool value) {
    buffer_ += value ? ".T." : ".F.";
  }

  template <std::integral Integer>
  requires(!std::same_as<Integer, bool>) void put(Integer value) {
    put_integer(static_cast<std::int64_t>(value));
  }

  template <class Value>
  void put(const Typed<Value>& typed) {
    put_record(typed.keyword, typed.value);
  }

  void put_integer(std::int64_t value);

  std::ostream& out_;
  bool wide_;
  std::string buffer_;
  std::size_t line_start_ = 0;
  std::uint64_t next_number_;
  std::uint64_t step_;
};

}  // namespace Kessel::bench
