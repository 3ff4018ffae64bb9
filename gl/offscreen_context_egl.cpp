// Headless offscreen surfaces: EGL on Mesa's surfaceless platform, a desktop
// OpenGL compatibility context, and a pbuffer the size of the target bitmap.
// Runs with no display server and no GPU (software rasteriser).
#include <EGL/egl.h>
#include <EGL/eglext.h>

#include <atomic>
#include <vector>
#include <mutex>

#include "gl/gl_api.h"
#include "gl/offscreen_context.h"

namespace zv {
namespace {

struct EglDisplay {
  EGLDisplay display = EGL_NO_DISPLAY;
  EGLConfig config = nullptr;
};

// 8 bits per colour channel and a 24-bit depth buffer, exactly: the first
// configurations the platform offers may have 10-bit colour.
EGLConfig choose_config(EGLDisplay display) {
  const EGLint wanted[] = {EGL_SURFACE_TYPE, EGL_PBUFFER_BIT, EGL_RENDERABLE_TYPE, EGL_OPENGL_BIT,
                           EGL_RED_SIZE,     8,               EGL_GREEN_SIZE,      8,
                           EGL_BLUE_SIZE,    8,               EGL_DEPTH_SIZE,      24,
                           EGL_NONE};
  EGLint count = 0;
  if (!eglChooseConfig(display, wanted, nullptr, 0, &count) || count <= 0) return nullptr;
  std::vector<EGLConfig> configs(static_cast<size_t>(count));
  eglChooseConfig(display, wanted, configs.data(), count, &count);
  EGLConfig fallback = nullptr;
  for (EGLint i = 0; i < count; ++i) {
    EGLint r = 0, g = 0, b = 0, a = 0, depth = 0, stencil = 0;
    eglGetConfigAttrib(display, configs[i], EGL_RED_SIZE, &r);
    eglGetConfigAttrib(display, configs[i], EGL_GREEN_SIZE, &g);
    eglGetConfigAttrib(display, configs[i], EGL_BLUE_SIZE, &b);
    eglGetConfigAttrib(display, configs[i], EGL_ALPHA_SIZE, &a);
    eglGetConfigAttrib(display, configs[i], EGL_DEPTH_SIZE, &depth);
    eglGetConfigAttrib(display, configs[i], EGL_STENCIL_SIZE, &stencil);
    if (r != 8 || g != 8 || b != 8 || depth != 24) continue;
    if (a == 0 && stencil == 0) return configs[i];
    if (!fallback) fallback = configs[i];
  }
  return fallback;
}

const EglDisplay& egl_display() {
  static EglDisplay shared;
  static std::once_flag once;
  std::call_once(once, [] {
    EGLDisplay display = eglGetPlatformDisplay(EGL_PLATFORM_SURFACELESS_MESA, EGL_DEFAULT_DISPLAY, nullptr);
    if (display == EGL_NO_DISPLAY || !eglInitialize(display, nullptr, nullptr)) return;
    shared.display = display;
    shared.config = choose_config(display);
  });
  return shared;
}

std::atomic<uint32_t> g_next_thread_id{1};

}  // namespace

uint32_t current_thread_id() {
  // Numbered in order of first use, so an id is never reused by a later thread.
  thread_local const uint32_t id = g_next_thread_id.fetch_add(1);
  return id;
}

void* create_offscreen_dc(CNewDib& target, void** old_bitmap) {
  *old_bitmap = nullptr;
  const EglDisplay& egl = egl_display();
  if (!egl.config) return nullptr;
  const int width = target.m_pInfo ? target.m_pInfo->biWidth : 0;
  const int height = target.m_pInfo ? target.m_pInfo->biHeight : 0;
  const EGLint size[] = {EGL_WIDTH, width > 0 ? width : 1, EGL_HEIGHT, height > 0 ? height : 1, EGL_NONE};
  EGLSurface surface = eglCreatePbufferSurface(egl.display, egl.config, size);
  return surface == EGL_NO_SURFACE ? nullptr : surface;
}

void delete_offscreen_dc(void* dc, void*) {
  if (dc) eglDestroySurface(egl_display().display, static_cast<EGLSurface>(dc));
}

void* create_gl_context(void* dc) {
  const EglDisplay& egl = egl_display();
  if (!dc || !egl.config) return nullptr;
  eglBindAPI(EGL_OPENGL_API);
  const EGLint attributes[] = {EGL_CONTEXT_OPENGL_PROFILE_MASK, EGL_CONTEXT_OPENGL_COMPATIBILITY_PROFILE_BIT,
                               EGL_NONE};
  EGLContext context = eglCreateContext(egl.display, egl.config, EGL_NO_CONTEXT, attributes);
  return context == EGL_NO_CONTEXT ? nullptr : context;
}

void make_gl_current(void* dc, void* context) {
  const EglDisplay& egl = egl_display();
  if (egl.display == EGL_NO_DISPLAY) return;
  eglBindAPI(EGL_OPENGL_API);
  if (!dc || !context) {
    eglMakeCurrent(egl.display, EGL_NO_SURFACE, EGL_NO_SURFACE, EGL_NO_CONTEXT);
  } else {
    eglMakeCurrent(egl.display, static_cast<EGLSurface>(dc), static_cast<EGLSurface>(dc),
                   static_cast<EGLContext>(context));
  }
}

void delete_gl_context(void* context) {
  if (context) eglDestroyContext(egl_display().display, static_cast<EGLContext>(context));
}

void load_target_into_surface(CNewDib& target) {
  if (eglGetCurrentContext()) draw_bitmap_into_current_surface(target);
}

void clear_surface_black() {
  if (!eglGetCurrentContext()) return;
  // The colour buffer only, and only here, where the surface stands in for a
  // black bitmap; the depth buffer is never cleared.
  glClearColor(0, 0, 0, 0);
  glClear(GL_COLOR_BUFFER_BIT);
}

void read_surface_into_target(CNewDib& target) {
  if (eglGetCurrentContext()) read_current_surface_into_bitmap(target);
}

}  // namespace zv
