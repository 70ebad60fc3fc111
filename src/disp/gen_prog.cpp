#include "disp/gen_prog.h"

#include <algorithm>
#include <vector>

#include "common/log_sink.h"

namespace disp {

namespace {

template <class GetIv, class GetLog>
std::string info_log(GLuint object, GetIv get_iv, GetLog get_log) {
  GLint reported = 0;
  get_iv(object, GL_INFO_LOG_LENGTH, &reported);
  if (reported < 1) return {};
  std::vector<char> text(static_cast<size_t>(reported) + 1, '\0');
  GLsizei written = 0;
  get_log(object, reported, &written, text.data());
  return std::string(text.data(), static_cast<size_t>(std::max(0, std::min(written, reported))));
}

// Compiles one stage; 0 when the stage failed, after logging why.
GLuint compile_stage(GLenum stage, const char* word, const std::string& source) {
  const GLuint shader = glCreateShader(stage);
  if (shader == 0) {
    common::log_line(std::string("_gen_prog: glCreateShader(") + word +
                     ") returned 0 - the context has no GLSL support");
    return 0;
  }
  const char* text = source.c_str();
  glShaderSource(shader, 1, &text, nullptr);
  glCompileShader(shader);
  GLint ok = GL_FALSE;
  glGetShaderiv(shader, GL_COMPILE_STATUS, &ok);
  if (!ok) {
    common::log_line(std::string("_gen_prog: ") + word +
                     " shader FAILED to compile: " + info_log(shader, glad_glGetShaderiv, glad_glGetShaderInfoLog));
  }
  return shader;
}

}  // namespace

GLuint _gen_prog(const std::string& vertex_source, const std::string& fragment_source) {
  const GLuint program = glCreateProgram();
  const GLuint shaders[] = {compile_stage(GL_VERTEX_SHADER, "vertex", vertex_source),
                            compile_stage(GL_FRAGMENT_SHADER, "fragment", fragment_source)};
  bool failed = false;
  for (const GLuint shader : shaders) {
    GLint ok = GL_FALSE;
    if (shader != 0) glGetShaderiv(shader, GL_COMPILE_STATUS, &ok);
    failed = failed || !ok;
    if (shader != 0) glAttachShader(program, shader);
  }
  glLinkProgram(program);
  GLint linked = GL_FALSE;
  glGetProgramiv(program, GL_LINK_STATUS, &linked);
  if (!linked) {
    common::log_line("_gen_prog: program FAILED to link: " +
                     info_log(program, glad_glGetProgramiv, glad_glGetProgramInfoLog));
    failed = true;
  }
  if (failed) {
    common::log_line(
        "_gen_prog: the scene will render EMPTY with this program. Check GL_VERSION / "
        "GL_SHADING_LANGUAGE_VERSION logged by init_opengl against the #version the shader "
        "declares.");
  }
  for (const GLuint shader : shaders) {
    if (shader == 0) continue;
    glDetachShader(program, shader);
    glDeleteShader(shader);
  }
  return program;
}

}  // namespace disp
