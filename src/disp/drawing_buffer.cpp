#include <mutex>

#include "disp/drawing_mutex.h"
#include "disp/drawing_t.h"

namespace disp {

namespace {

const void* byte_offset(int offset) { return reinterpret_cast<const void*>(static_cast<std::uintptr_t>(offset)); }

void point_attributes(const vertex_layout_t& l) {
  const geometry_program_t& p = *l.program;
  const auto floats = [&](GLint location, int offset, GLboolean normalised) {
    if (location < 0 || offset < 0) return;
    glEnableVertexAttribArray(static_cast<GLuint>(location));
    glVertexAttribPointer(static_cast<GLuint>(location), 3, l.type, normalised, l.stride, byte_offset(offset));
  };
  floats(p.pos, l.vertex, GL_FALSE);
  floats(p.normal, l.normal, GL_TRUE);
  floats(p.color, l.color, GL_TRUE);
  if (p.pick >= 0 && l.pick >= 0) {
    glEnableVertexAttribArray(static_cast<GLuint>(p.pick));
    glVertexAttribIPointer(static_cast<GLuint>(p.pick), 1, GL_UNSIGNED_INT, l.stride, byte_offset(l.pick));
  }
}

void disable_attributes(const geometry_program_t& p) {
  for (const GLint location : {p.pos, p.normal, p.color, p.pick})
    if (location >= 0) glDisableVertexAttribArray(static_cast<GLuint>(location));
}

void set_uniforms(bind& b, const vertex_layout_t& l) {
  const geometry_program_t& p = *l.program;
  glUniformMatrix4fv(p.mvp, 1, GL_FALSE, b.mvp_f().data());
  if (l.normal >= 0) {
    glUniformMatrix4fv(p.mv, 1, GL_FALSE, b.mv_f().data());
    glUniform1f(p.specular_rate, b.specular_rate);
  }
  if (l.color < 0) glUniform3fv(p.uniColor, 1, b.color.data());
  glUniform1i(p.use_vertex_pick, l.pick >= 0 ? 1 : 0);
  glUniform1i(p.picking_id, b.picking_id);
  // Picking's colour table does not exist yet, so baked colours are drawn
  // as they are.
  if (l.color >= 0) glUniform1i(p.color_table_size, 0);
}

}  // namespace

void drawing_buffer_t::upload(const void* data, std::size_t bytes, std::uint64_t vertices, GLenum usage) {
  const std::lock_guard lock(drawing_mutex());
  glGenBuffers(1, &vbo);
  glBindBuffer(GL_ARRAY_BUFFER, vbo);
  glBufferData(GL_ARRAY_BUFFER, static_cast<GLsizeiptr>(bytes), data, usage);
  vertex_count = vertices;
}

void drawing_buffer_t::release() {
  if (vbo == 0) return;
  const std::lock_guard lock(drawing_mutex());
  glDeleteBuffers(1, &vbo);
  vbo = 0;
  vertex_count = 0;
}

void drawing_buffer_t::draw(bind& b, GLenum mode, const vertex_layout_t& layout) const {
  if (mode > last_draw_mode || vbo == 0) return;
  const std::lock_guard lock(drawing_mutex());
  glUseProgram(layout.program->id);
  set_uniforms(b, layout);
  glBindBuffer(GL_ARRAY_BUFFER, vbo);
  point_attributes(layout);
  glDrawArrays(mode, 0, static_cast<GLsizei>(vertex_count));
  disable_attributes(*layout.program);
  glBindBuffer(GL_ARRAY_BUFFER, 0);
  glUseProgram(0);
}

void drawing_buffer_t::expand_by_positions(geom::box3d& box, const vertex_layout_t& layout) const {
  if (vbo == 0 || vertex_count == 0) return;
  const std::lock_guard lock(drawing_mutex());
  const auto bytes = static_cast<GLsizeiptr>(vertex_count * static_cast<std::uint64_t>(layout.stride));
  glBindBuffer(GL_ARRAY_BUFFER, vbo);
  const auto* data = static_cast<const unsigned char*>(glMapBufferRange(GL_ARRAY_BUFFER, 0, bytes, GL_MAP_READ_BIT));
  if (data) {
    for (std::uint64_t v = 0; v < vertex_count; ++v) {
      const unsigned char* p = data + v * static_cast<std::uint64_t>(layout.stride) + layout.vertex;
      if (layout.type == GL_DOUBLE) {
        double c[3];
        std::memcpy(c, p, sizeof c);
        box.expand(geom::vec3d{c[0], c[1], c[2]});
      } else {
        float c[3];
        std::memcpy(c, p, sizeof c);
        box.expand(geom::vec3d{c[0], c[1], c[2]});
      }
    }
    glUnmapBuffer(GL_ARRAY_BUFFER);
  }
  glBindBuffer(GL_ARRAY_BUFFER, 0);
}

}  // namespace disp
