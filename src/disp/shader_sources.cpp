#include "disp/shader_sources.h"

#include "disp/pick_packing.h"

namespace disp {

namespace {

bool is_lit(program_kind kind) { return kind == program_kind::lit || kind == program_kind::colored_lit; }

bool is_colored(program_kind kind) { return kind == program_kind::colored || kind == program_kind::colored_lit; }

constexpr const char* pick_declarations =
    "in uint pick;\n"
    "uniform int use_vertex_pick;\n"
    "uniform int picking_id;\n"
    "flat out uint pick_;\n";

constexpr const char* fragment_outputs =
    "layout(location = 0) out vec4 frag;\n"
    "layout(location = 1) out uint frag_pick;\n";

// The diffuse term falls linearly with the angle to one fixed light, from 1
// along it to 0 at a right angle; there is no cosine law. The four
// inspection lamps of the specular term keep their x and y relative to the
// surface point, so highlights travel across a surface as under a hand lamp.
constexpr const char* lighting_functions = R"(
const float M_PI = 3.1415926535;
float adjusted_ascendent_log(float base_num, float v) {
  return clamp(log(1.0 + (base_num - 1.0) * v) / log(base_num), 0.0, 1.0);
}
float adjusted_decendent_log(float base_num, float v) {
  return clamp(log((1.0 - base_num) * v + base_num) / log(base_num), 0.0, 1.0);
}
float erf_guts(float x) {
  float a = 8.0 * (M_PI - 3.0) / (3.0 * M_PI * (4.0 - M_PI));
  float x2 = x * x;
  return exp(-x2 * (4.0 / M_PI + a * x2) / (1.0 + a * x2));
}
float approx_erf(float x) { return sign(x) * sqrt(1.0 - erf_guts(x)); }
vec3 inspecting_light(vec4 light_pos, vec4 geom_pos, vec4 geom_normal) {
  vec3 incoming = normalize(vec3(geom_pos.xy - light_pos.xy, -light_pos.z));
  vec3 outgoing = reflect(incoming, geom_normal.xyz);
  float inspect_ratio = adjusted_ascendent_log(0.0001, dot(outgoing, vec3(0, 0, 1)));
  return vec3(1.0) * clamp(inspect_ratio, 0.0, 1.0);
}
vec3 specular_light(vec4 geom_pos, vec4 geom_normal) {
  return inspecting_light(vec4(0, 1, 0, 0), geom_pos, geom_normal)
       + inspecting_light(vec4(-0.62, -0.33, 0.47, 0.0) / 0.62, geom_pos, geom_normal)
       + inspecting_light(vec4(0.82, -0.43, 0.94, 0.0) / 0.82, geom_pos, geom_normal)
       + inspecting_light(vec4(0, -0.33, -0.94, 0.0) / 0.94, geom_pos, geom_normal);
}
vec3 lighting(vec3 color) {
  vec3 specular = specular_rate * specular_light(pos_, normal_);
  vec3 ambient = color * 0.04;
  vec3 diffuse = color * (1.0 - 2.0 * clamp(acos(dot(vec4(0.21264139, 0.020298656, 0.9769195, 0),
                                                     normal_)) / 3.1415926, 0.0, 0.5));
  return diffuse + ambient + specular;
}
)";

std::string geometry_vertex_source(program_kind kind) {
  std::string s = "#version 330\nuniform mat4 mvp;\n";
  if (kind != program_kind::flat) s += "uniform mat4 mv;\n";
  s += pick_declarations;
  if (is_colored(kind)) s += "uniform samplerBuffer color_table;\nuniform int color_table_size;\n";
  // The position takes attribute 0: in the compatibility profile, drawing
  // without attribute 0 enabled may draw nothing.
  s += "layout(location = 0) in vec3 pos;\n";
  if (is_colored(kind)) s += "in vec3 color;\n";
  if (is_lit(kind)) s += "in vec3 normal;\n";
  if (is_colored(kind)) s += "smooth out vec4 color_;\n";
  if (is_lit(kind)) s += "smooth out vec4 normal_;\nsmooth out vec4 pos_;\n";

  s += "void main() {\n";
  s += "  pick_ = use_vertex_pick != 0 ? pick : uint(picking_id);\n";
  if (is_colored(kind)) s += recolour_fragment("c", "color");
  if (is_lit(kind)) s += "  normal_ = normalize(mv * vec4(normal, 0.0));\n  pos_ = mv * vec4(pos, 1);\n";
  if (is_colored(kind)) s += "  color_ = vec4(c, 1);\n";
  s += "  gl_Position = mvp * vec4(pos, 1.0);\n}\n";
  return s;
}

std::string geometry_fragment_source(program_kind kind) {
  std::string s = "#version 330\n";
  s += is_colored(kind) ? "smooth in vec4 color_;\n" : "uniform vec3 uniColor;\n";
  if (is_lit(kind)) s += "uniform float specular_rate;\nsmooth in vec4 normal_;\nsmooth in vec4 pos_;\n";
  s += "flat in uint pick_;\n";
  s += fragment_outputs;
  if (is_lit(kind)) s += lighting_functions;

  s += "void main() {\n";
  switch (kind) {
    case program_kind::flat:
      s += "  frag = vec4(uniColor, 1);\n";
      break;
    case program_kind::lit:
      s += "  frag = vec4(lighting(uniColor), 1);\n";
      break;
    case program_kind::colored:
      s += "  frag = color_;\n";
      break;
    default:
      s += "  frag = vec4(lighting(color_.xyz), 1);\n";
      break;
  }
  s += "  frag_pick = pick_;\n}\n";
  return s;
}

constexpr const char* text_vertex_source = R"(#version 330
uniform mat4 proj;
uniform vec3 p0;
layout(location = 0) in vec2 pos;
in vec2 texCoordinate;
smooth out vec2 _texCoordinate;
void main() {
  gl_Position = proj * vec4(p0 + vec3(pos, 0), 1);
  _texCoordinate = texCoordinate;
}
)";

constexpr const char* text_fragment_source_head = R"(#version 330
uniform sampler2D sampler;
uniform vec4 uniColor;
uniform int picking_id;
smooth in vec2 _texCoordinate;
)";

constexpr const char* text_fragment_source_body = R"(void main() {
  frag = texture(sampler, _texCoordinate) * uniColor;
  frag_pick = uint(picking_id);
}
)";

}  // namespace

std::string recolour_fragment(const std::string& target, const std::string& source) {
  const std::string mask = std::to_string(pick_slot_mask);
  const std::string shift = std::to_string(pick_generation_shift);
  return "  vec3 " + target + " = " + source + ";\n" +
         "  if (use_vertex_pick != 0 && pick != 0u) {\n"
         "    int slot = int(pick & uint(" +
         mask +
         "));\n"
         "    if (slot < color_table_size) {\n"
         "      vec4 t = texelFetch(color_table, slot);\n"
         "      if (int(t.w + 0.5) == int(pick >> " +
         shift + ") + 1) " + target +
         " = t.rgb;\n"
         "    }\n"
         "  }\n";
}

std::string vertex_source(program_kind kind) {
  return kind == program_kind::text ? text_vertex_source : geometry_vertex_source(kind);
}

std::string fragment_source(program_kind kind) {
  if (kind != program_kind::text) return geometry_fragment_source(kind);
  return std::string(text_fragment_source_head) + fragment_outputs + text_fragment_source_body;
}

}  // namespace disp
