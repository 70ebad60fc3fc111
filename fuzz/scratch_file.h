#pragma once

// The readers under test take a path, so each input goes through one file
// of the process's own, rewritten for every input.

#include <cstddef>
#include <cstdint>
#include <string>

namespace fuzz {

// Writes data to this process's scratch file and returns its path.
const std::string& write_scratch(const std::uint8_t* data, std::size_t size);

}  // namespace fuzz
