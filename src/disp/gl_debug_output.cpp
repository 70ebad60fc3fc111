#include "disp/gl_debug_output.h"

#include <cstdlib>
#include <cstring>

#include "common/log_sink.h"
#include "disp/init_opengl.h"

namespace disp {

namespace {

std::string_view type_word(GLenum type) {
  switch (type) {
    case GL_DEBUG_TYPE_ERROR:
      return "ERROR";
    case GL_DEBUG_TYPE_DEPRECATED_BEHAVIOR:
      return "DEPRECATED";
    case GL_DEBUG_TYPE_UNDEFINED_BEHAVIOR:
      return "UNDEFINED";
    case GL_DEBUG_TYPE_PORTABILITY:
      return "PORTABILITY";
    case GL_DEBUG_TYPE_PERFORMANCE:
      return "PERFORMANCE";
    case GL_DEBUG_TYPE_MARKER:
      return "MARKER";
    case GL_DEBUG_TYPE_PUSH_GROUP:
      return "PUSH_GROUP";
    case GL_DEBUG_TYPE_POP_GROUP:
      return "POP_GROUP";
    default:
      return "OTHER";
  }
}

std::string_view severity_word(GLenum severity) {
  switch (severity) {
    case GL_DEBUG_SEVERITY_HIGH:
      return "HIGH";
    case GL_DEBUG_SEVERITY_MEDIUM:
      return "MEDIUM";
    case GL_DEBUG_SEVERITY_LOW:
      return "LOW";
    default:
      return "NOTIFICATION";
  }
}

void GLAD_API_PTR debug_callback(GLenum, GLenum type, GLuint id, GLenum severity, GLsizei length, const GLchar* text,
                                 const void*) {
  gl_debug_log().on_message(type, severity, id, length, text);
}

}  // namespace

std::string format_gl_debug_message(GLenum type, GLenum severity, GLuint id, std::string_view text) {
  while (!text.empty() && (text.back() == '\n' || text.back() == '\r')) text.remove_suffix(1);
  std::string line = "OpenGL debug [";
  line.append(type_word(type)).append(" ").append(severity_word(severity));
  line.append(" id=").append(std::to_string(id)).append("]: ").append(text);
  return line;
}

void gl_debug_log_t::on_message(GLenum type, GLenum severity, GLuint id, GLsizei length, const char* text) {
  // The first test keeps a driver that floods for days from wrapping the
  // counter around to positive again.
  if (_budget.load() < 1) return;
  const int before = _budget.fetch_sub(1);
  if (before < 1) return;
  const std::string_view body = !text        ? std::string_view()
                                : length < 1 ? std::string_view(text)
                                             : std::string_view(text, static_cast<size_t>(length));
  common::log_line(format_gl_debug_message(type, severity, id, body));
  if (before - 1 < 1) common::log_line(gl_debug_limit_message);
}

gl_debug_log_t& gl_debug_log() {
  static auto* log = new gl_debug_log_t;  // the driver may call back during exit
  return *log;
}

bool install_gl_debug_output() {
  if (!opengl_initialized()) return false;
  if (!GLAD_GL_KHR_debug || !glad_glDebugMessageCallback || !glad_glDebugMessageControl) return true;
  const char* mode = std::getenv("QV_GL_DEBUG");
  if (mode && (std::strcmp(mode, "off") == 0 || std::strcmp(mode, "0") == 0)) return true;

  glEnable(GL_DEBUG_OUTPUT);
  if (mode && std::strcmp(mode, "async") == 0)
    glDisable(GL_DEBUG_OUTPUT_SYNCHRONOUS);
  else
    glEnable(GL_DEBUG_OUTPUT_SYNCHRONOUS);
  glDebugMessageCallback(debug_callback, nullptr);
  // Notifications (buffer placement hints and the like) and deprecation notes
  // are noise for a support engineer reading the log.
  glDebugMessageControl(GL_DONT_CARE, GL_DONT_CARE, GL_DEBUG_SEVERITY_NOTIFICATION, 0, nullptr, GL_FALSE);
  glDebugMessageControl(GL_DONT_CARE, GL_DEBUG_TYPE_DEPRECATED_BEHAVIOR, GL_DONT_CARE, 0, nullptr, GL_FALSE);
  return true;
}

}  // namespace disp
