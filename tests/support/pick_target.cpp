#include "pick_target.h"

namespace test_support {

pick_target_t::pick_target_t(int w, int h) : width(w), height(h) {
  glGenTextures(2, _tex.data());
  glBindTexture(GL_TEXTURE_2D, _tex[0]);
  glTexImage2D(GL_TEXTURE_2D, 0, GL_RGBA8, width, height, 0, GL_RGBA, GL_UNSIGNED_BYTE, nullptr);
  glBindTexture(GL_TEXTURE_2D, _tex[1]);
  glTexImage2D(GL_TEXTURE_2D, 0, GL_R32UI, width, height, 0, GL_RED_INTEGER, GL_UNSIGNED_INT, nullptr);
  glBindTexture(GL_TEXTURE_2D, 0);
  glGenFramebuffers(1, &_fbo);
  glBindFramebuffer(GL_FRAMEBUFFER, _fbo);
  glFramebufferTexture2D(GL_FRAMEBUFFER, GL_COLOR_ATTACHMENT0, GL_TEXTURE_2D, _tex[0], 0);
  glFramebufferTexture2D(GL_FRAMEBUFFER, GL_COLOR_ATTACHMENT1, GL_TEXTURE_2D, _tex[1], 0);
  const GLenum targets[] = {GL_COLOR_ATTACHMENT0, GL_COLOR_ATTACHMENT1};
  glDrawBuffers(2, targets);
  glViewport(0, 0, width, height);
  complete = glCheckFramebufferStatus(GL_FRAMEBUFFER) == GL_FRAMEBUFFER_COMPLETE;
  clear();
}

pick_target_t::~pick_target_t() {
  glBindFramebuffer(GL_FRAMEBUFFER, 0);
  glDeleteFramebuffers(1, &_fbo);
  glDeleteTextures(2, _tex.data());
}

void pick_target_t::clear() {
  const GLfloat black[] = {0, 0, 0, 0};
  const GLuint no_id[] = {0xFFFFFFFFu, 0, 0, 0};
  glClearBufferfv(GL_COLOR, 0, black);
  glClearBufferuiv(GL_COLOR, 1, no_id);
}

std::array<int, 3> pick_target_t::colour(int x, int y) const {
  std::array<std::uint8_t, 4> px = {};
  glReadBuffer(GL_COLOR_ATTACHMENT0);
  glReadPixels(x, y, 1, 1, GL_RGBA, GL_UNSIGNED_BYTE, px.data());
  return {px[0], px[1], px[2]};
}

std::uint32_t pick_target_t::id(int x, int y) const {
  std::uint32_t value = 0;
  glReadBuffer(GL_COLOR_ATTACHMENT1);
  glReadPixels(x, y, 1, 1, GL_RED_INTEGER, GL_UNSIGNED_INT, &value);
  return value;
}

}  // namespace test_support
