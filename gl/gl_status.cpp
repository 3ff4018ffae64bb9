#include "gl/gl_status.h"

#include <algorithm>
#include <cstring>
#include <string>

#include "frame/registration.h"
#include "gl/offscreen_context.h"

namespace zv {

std::string offscreen_gl_summary() {
  const OffscreenGlStatus& status = offscreen_gl_status();
  if (!status.available) return "no OpenGL context can be made: " + status.error;
  return status.renderer + " on the " + status.platform;
}

}  // namespace zv

int ZV_STDCALL ZvOpenGLStatus(int id, char* text, int size) {
  const bool known = id >= 0 && id <= zv::kTransitionCount;
  const std::string line = known ? zv::offscreen_gl_summary() : "no transition has the id " + std::to_string(id);
  if (text && size > 0) {
    const size_t length = std::min(line.size(), static_cast<size_t>(size - 1));
    std::memcpy(text, line.data(), length);
    text[length] = '\0';
  }
  if (!known) return 0;
  if (id != 0 && !zv::transition_uses_opengl(id)) return 1;
  return zv::offscreen_gl_status().available ? 1 : 0;
}
