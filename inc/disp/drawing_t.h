#pragma once

// A vertex buffer with a known rail, drawn by one GL call. The object owns
// the buffer; no copy of the vertices stays in main memory, so its box is
// read back from the buffer. All operations need a context locked, and take
// the drawing mutex themselves.
//
// No vertex array object is used: drawing relies on the default vertex state
// of a compatibility context, so a drawing made on one context of the share
// group draws on any other.

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <vector>

#include "disp/bind.h"
#include "disp/gl.h"
#include "disp/rail.h"
#include "geom/box3d.h"

namespace disp {

// The highest primitive number a drawing accepts (GL_POLYGON).
inline constexpr std::uint32_t last_draw_mode = 9;

// Where a rail's attributes stand, in bytes; -1 where absent.
struct vertex_layout_t {
  const geometry_program_t* program;
  GLenum type;  // GL_FLOAT or GL_DOUBLE
  GLsizei stride;
  int vertex, normal, color, pick;
};

// The part of a drawing that does not depend on its rail.
struct drawing_buffer_t {
  std::uint64_t vertex_count = 0;
  GLuint vbo = 0;

  drawing_buffer_t() = default;
  drawing_buffer_t(const drawing_buffer_t&) = delete;
  drawing_buffer_t& operator=(const drawing_buffer_t&) = delete;

  // A new buffer of bytes from data, left bound to GL_ARRAY_BUFFER.
  void upload(const void* data, std::size_t bytes, std::uint64_t vertices, GLenum usage);
  // Deletes the buffer and clears both fields; nothing without a buffer, so
  // an empty drawing may be dropped on a thread with no context.
  void release();
  // One draw call of all vertices; nothing for a mode above last_draw_mode.
  void draw(bind& b, GLenum mode, const vertex_layout_t& layout) const;
  // Grows box by the positions, mapping the buffer for reading.
  void expand_by_positions(geom::box3d& box, const vertex_layout_t& layout) const;

 protected:
  ~drawing_buffer_t() = default;
};

template <class Rail>
struct drawing_t final : drawing_buffer_t {
  using T = typename Rail::value_type;

  drawing_t() = default;
  ~drawing_t() { release(); }

  static vertex_layout_t layout() {
    constexpr auto at = [](int index) { return index < 0 ? -1 : index * static_cast<int>(sizeof(T)); };
    return {&Rail::program(),
            sizeof(T) == 8 ? GLenum{GL_DOUBLE} : GLenum{GL_FLOAT},
            static_cast<GLsizei>(Rail::vertex_bytes),
            at(Rail::vertex),
            at(Rail::normal),
            at(Rail::color),
            at(Rail::pick)};
  }

  // count components; a trailing part vertex is uploaded but not drawn. A
  // pick slot carries the id as a value of T, and is uploaded as the id's
  // integer image, so that the shader reads it exactly.
  void upload(const T* data, std::size_t count, GLenum usage = GL_STATIC_DRAW) {
    const std::uint64_t vertices = count / Rail::stride;
    if constexpr (Rail::pick < 0) {
      drawing_buffer_t::upload(data, count * sizeof(T), vertices, usage);
    } else {
      std::vector<T> copy(data, data + count);
      for (std::size_t v = 0; v < vertices; ++v)
        write_pick(&copy[v * Rail::stride + Rail::pick], data[v * Rail::stride + Rail::pick]);
      drawing_buffer_t::upload(copy.data(), count * sizeof(T), vertices, usage);
    }
  }

  // The slot's bytes: the low 32 bits of the id, then zeros.
  static void write_pick(T* slot, T id_value) {
    const auto id = static_cast<std::uint32_t>(static_cast<std::int64_t>(id_value));
    std::memset(slot, 0, sizeof(T));
    std::memcpy(slot, &id, sizeof id);
  }

  void display(bind& b, GLenum mode) const { draw(b, mode, layout()); }

  geom::box3d box() const {
    geom::box3d out;
    expand_by_positions(out, layout());
    return out;
  }
};

}  // namespace disp
