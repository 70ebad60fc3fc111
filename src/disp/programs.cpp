#include "disp/programs.h"

#include "disp/gen_prog.h"
#include "disp/shader_sources.h"

namespace disp {

namespace {

program_set_t& program_set() {
  static program_set_t set;
  return set;
}

void build(geometry_program_t& p, program_kind kind) {
  if (p.id != unset_program) return;
  p.id = _gen_prog(vertex_source(kind), fragment_source(kind));
  p.mvp = glGetUniformLocation(p.id, "mvp");
  p.mv = glGetUniformLocation(p.id, "mv");
  p.uniColor = glGetUniformLocation(p.id, "uniColor");
  p.specular_rate = glGetUniformLocation(p.id, "specular_rate");
  p.use_vertex_pick = glGetUniformLocation(p.id, "use_vertex_pick");
  p.picking_id = glGetUniformLocation(p.id, "picking_id");
  p.color_table = glGetUniformLocation(p.id, "color_table");
  p.color_table_size = glGetUniformLocation(p.id, "color_table_size");
  p.pos = glGetAttribLocation(p.id, "pos");
  p.normal = glGetAttribLocation(p.id, "normal");
  p.color = glGetAttribLocation(p.id, "color");
  p.pick = glGetAttribLocation(p.id, "pick");
}

void build(text_program_t& p) {
  if (p.id != unset_program) return;
  p.id = _gen_prog(vertex_source(program_kind::text), fragment_source(program_kind::text));
  p.proj = glGetUniformLocation(p.id, "proj");
  p.p0 = glGetUniformLocation(p.id, "p0");
  p.uniColor = glGetUniformLocation(p.id, "uniColor");
  p.sampler = glGetUniformLocation(p.id, "sampler");
  p.picking_id = glGetUniformLocation(p.id, "picking_id");
  p.pos = glGetAttribLocation(p.id, "pos");
  p.texCoordinate = glGetAttribLocation(p.id, "texCoordinate");
}

}  // namespace

const program_set_t& programs() { return program_set(); }

void build_programs() {
  program_set_t& set = program_set();
  build(set.flat, program_kind::flat);
  build(set.lit, program_kind::lit);
  build(set.colored, program_kind::colored);
  build(set.colored_lit, program_kind::colored_lit);
  build(set.text);
}

}  // namespace disp
