#pragma once

// The message of the error a call throws, for tests that check what a user
// is told.

#include <gtest/gtest.h>

#include <string>

namespace mill::test {

// The message of the E that run throws; fails the test when it throws none.
template <typename E, typename F>
std::string message_of(F&& run) {
  try {
    run();
  } catch (const E& e) {
    return e.what();
  }
  ADD_FAILURE() << "expected an error";
  return {};
}

}  // namespace mill::test
