#pragma once

// An off-screen target as a viewer has one: RGBA colour at attachment 0,
// 32-bit ids at attachment 1, both cleared (colour to black, ids to
// 0xFFFFFFFF). Made with a context locked, and bound for drawing while it
// lives.

#include <array>
#include <cstdint>

#include "disp/gl.h"

namespace test_support {

class pick_target_t {
 public:
  pick_target_t(int width, int height);
  ~pick_target_t();
  pick_target_t(const pick_target_t&) = delete;
  pick_target_t& operator=(const pick_target_t&) = delete;

  void clear();

  // The pixel at (x, y), counted from the lower left.
  std::array<int, 3> colour(int x, int y) const;
  std::uint32_t id(int x, int y) const;
  std::array<int, 3> colour() const { return colour(width / 2, height / 2); }
  std::uint32_t id() const { return id(width / 2, height / 2); }

  const int width, height;
  bool complete = false;

 private:
  GLuint _fbo = 0;
  std::array<GLuint, 2> _tex = {};
};

}  // namespace test_support
