#pragma once

// Regression inputs are kept as files under tests/data/mill, each named for
// the fault it once caused.

#include <string>

namespace mill::test {

inline std::string case_path(const std::string& name) { return std::string(QUVRA_TEST_DATA_DIR) + "/mill/" + name; }

}  // namespace mill::test
