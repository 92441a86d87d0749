// The exception that a reference beyond the store ends a run with.
#pragma once

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>

namespace Kessel::test {

/// The text of the out-of-range exception of `action`; fails the test when there is none.
template <class Action>
std::string out_of_range_text(Action action) {
  try {
    action();
  } catch (const std::out_of_range& error) {
    return error.what();
  }
  ADD_FAILURE() << "no exception";
  return {};
}

}  // namespace Kessel::test
