// Headless offscreen surfaces: EGL with a desktop OpenGL compatibility context,
// on the first hardware EGL device that initialises (a GPU) or else on Mesa's
// surfaceless platform (software rasteriser, no display server). ZV_GL_PLATFORM
// forces one: "device" (any EGL device, software ones included), "surfaceless",
// or "auto" (the default).
//
// Each renderer draws into a framebuffer object of its frame size (a colour
// texture and a 24-bit depth buffer), which takes frames as R, G, B, A texels
// and reads back in the same layout; the context itself sits on a 1 x 1
// pbuffer. The framebuffer object is kept upside down in memory, as a
// pbuffer's colour buffer is, so that the rasteriser resolves pixels lying
// exactly on an edge the same way and every drawn byte comes out the same. Where
// the driver cannot do that, or has no framebuffer objects at all, the pbuffer
// is made the frame's size and drawn on directly.
#define GL_GLEXT_PROTOTYPES 1
#include <EGL/egl.h>
#include <EGL/eglext.h>

#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <mutex>
#include <string>
#include <vector>

#include "gl/frame_transfer.h"
#include "gl/gl_api.h"
#include "gl/offscreen_context.h"

#include <GL/glext.h>

namespace zv {
namespace {

struct EglDisplay {
  EGLDisplay display = EGL_NO_DISPLAY;
  EGLConfig config = nullptr;
  std::string platform;  // where the display lives, for people
  std::string error;     // why there is none
};

std::string egl_error_name(EGLint code) {
  switch (code) {
    case EGL_SUCCESS: return "EGL_SUCCESS";
    case EGL_NOT_INITIALIZED: return "EGL_NOT_INITIALIZED";
    case EGL_BAD_ACCESS: return "EGL_BAD_ACCESS";
    case EGL_BAD_ALLOC: return "EGL_BAD_ALLOC";
    case EGL_BAD_ATTRIBUTE: return "EGL_BAD_ATTRIBUTE";
    case EGL_BAD_CONFIG: return "EGL_BAD_CONFIG";
    case EGL_BAD_CONTEXT: return "EGL_BAD_CONTEXT";
    case EGL_BAD_DISPLAY: return "EGL_BAD_DISPLAY";
    case EGL_BAD_MATCH: return "EGL_BAD_MATCH";
    case EGL_BAD_PARAMETER: return "EGL_BAD_PARAMETER";
    case EGL_BAD_SURFACE: return "EGL_BAD_SURFACE";
    default: {
      char text[32];
      std::snprintf(text, sizeof text, "EGL error 0x%04X", static_cast<unsigned>(code));
      return text;
    }
  }
}

std::string last_egl_error() { return egl_error_name(eglGetError()); }

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

// An initialised display with a configuration, or the reason there is none.
bool open_display(EglDisplay& out, EGLenum platform, void* native, const std::string& name) {
  EGLDisplay display = eglGetPlatformDisplay(platform, native, nullptr);
  if (display == EGL_NO_DISPLAY) {
    out.error = "eglGetPlatformDisplay found no " + name + " (" + last_egl_error() + ")";
    return false;
  }
  if (!eglInitialize(display, nullptr, nullptr)) {
    out.error = "eglInitialize failed on the " + name + " (" + last_egl_error() + ")";
    if (const char* drivers = std::getenv("LIBGL_DRIVERS_PATH")) {
      out.error += std::string("; LIBGL_DRIVERS_PATH is ") + drivers;
    }
    return false;
  }
  EGLConfig config = choose_config(display);
  if (!config) {
    out.error = "the " + name + " offers no pbuffer configuration for desktop OpenGL with 8-bit colour and a "
                "24-bit depth buffer";
    eglTerminate(display);
    return false;
  }
  out.display = display;
  out.config = config;
  out.platform = name;
  out.error.clear();
  return true;
}

// The EGL devices, hardware ones first when `hardware_only` is false; the first
// that initialises wins.
bool open_device(EglDisplay& out, bool hardware_only) {
  auto query_devices = reinterpret_cast<PFNEGLQUERYDEVICESEXTPROC>(eglGetProcAddress("eglQueryDevicesEXT"));
  auto query_string = reinterpret_cast<PFNEGLQUERYDEVICESTRINGEXTPROC>(eglGetProcAddress("eglQueryDeviceStringEXT"));
  EGLint count = 0;
  if (!query_devices || !query_string || !query_devices(0, nullptr, &count) || count <= 0) {
    out.error = "eglQueryDevicesEXT found no EGL device";
    return false;
  }
  std::vector<EGLDeviceEXT> devices(static_cast<size_t>(count));
  query_devices(count, devices.data(), &count);
  std::string tried;
  for (int pass = 0; pass < (hardware_only ? 1 : 2); ++pass) {
    for (EGLint i = 0; i < count; ++i) {
      const char* extensions = query_string(devices[static_cast<size_t>(i)], EGL_EXTENSIONS);
      const bool software = extensions && std::strstr(extensions, "EGL_MESA_device_software");
      if (software != (pass == 1)) continue;
      const char* file = query_string(devices[static_cast<size_t>(i)], EGL_DRM_DEVICE_FILE_EXT);
      const std::string name = "EGL device " + std::to_string(i) + (software ? " (software)" : "") +
                               (file ? std::string(" ") + file : std::string());
      if (open_display(out, EGL_PLATFORM_DEVICE_EXT, devices[static_cast<size_t>(i)], name)) return true;
      tried += (tried.empty() ? "" : "; ") + out.error;
    }
  }
  out.error = tried.empty() ? "none of the " + std::to_string(count) + " EGL devices is a hardware one"
                            : tried;
  return false;
}

const EglDisplay& egl_display() {
  static EglDisplay shared;
  static std::once_flag once;
  std::call_once(once, [] {
    const char* forced = std::getenv("ZV_GL_PLATFORM");
    const std::string mode = forced && *forced ? forced : "auto";
    if (mode != "auto" && mode != "device" && mode != "surfaceless") {
      shared.error = "ZV_GL_PLATFORM is \"" + mode + "\", not one of auto, device, surfaceless";
      return;
    }
    if (mode != "surfaceless" && open_device(shared, mode == "auto")) return;
    if (mode == "device") return;
    open_display(shared, EGL_PLATFORM_SURFACELESS_MESA, EGL_DEFAULT_DISPLAY, "Mesa surfaceless platform");
  });
  return shared;
}

// A renderer's drawing surface: the pbuffer its context is current on, and the
// framebuffer object it draws into (made with the context's first use).
struct Surface {
  int width = 0, height = 0;
  EGLSurface pbuffer = EGL_NO_SURFACE;
  GLuint framebuffer = 0, colour = 0, depth = 0;
  bool prepared = false;
};

bool has_extension(const char* name) {
  GLint count = 0;
  glGetIntegerv(GL_NUM_EXTENSIONS, &count);
  for (GLint i = 0; i < count; ++i) {
    const char* extension = reinterpret_cast<const char*>(glGetStringi(GL_EXTENSIONS, static_cast<GLuint>(i)));
    if (extension && std::strcmp(extension, name) == 0) return true;
  }
  return false;
}

EGLSurface make_pbuffer(int width, int height) {
  const EglDisplay& egl = egl_display();
  const EGLint size[] = {EGL_WIDTH, width > 0 ? width : 1, EGL_HEIGHT, height > 0 ? height : 1, EGL_NONE};
  return eglCreatePbufferSurface(egl.display, egl.config, size);
}

// Framebuffer objects (OpenGL 3.0) that can be kept upside down.
bool has_flipped_framebuffer_objects() {
  const char* version = reinterpret_cast<const char*>(glGetString(GL_VERSION));
  return version && std::atoi(version) >= 3 && has_extension("GL_MESA_framebuffer_flip_y");
}

// The framebuffer object of the surface's size, bound; or, where there can be
// none, a pbuffer of that size made current instead.
void prepare_surface(Surface& s, EGLContext context) {
  s.prepared = true;
  if (has_flipped_framebuffer_objects()) {
    GLint texture = 0;
    glGetIntegerv(GL_TEXTURE_BINDING_2D, &texture);
    glGenFramebuffers(1, &s.framebuffer);
    glBindFramebuffer(GL_FRAMEBUFFER, s.framebuffer);
    glFramebufferParameteri(GL_FRAMEBUFFER, GL_FRAMEBUFFER_FLIP_Y_MESA, GL_TRUE);
    glGenTextures(1, &s.colour);
    glBindTexture(GL_TEXTURE_2D, s.colour);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_NEAREST);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_NEAREST);
    glTexImage2D(GL_TEXTURE_2D, 0, GL_RGBA8, s.width, s.height, 0, GL_RGBA, GL_UNSIGNED_BYTE, nullptr);
    glFramebufferTexture2D(GL_FRAMEBUFFER, GL_COLOR_ATTACHMENT0, GL_TEXTURE_2D, s.colour, 0);
    glGenRenderbuffers(1, &s.depth);
    glBindRenderbuffer(GL_RENDERBUFFER, s.depth);
    glRenderbufferStorage(GL_RENDERBUFFER, GL_DEPTH_COMPONENT24, s.width, s.height);
    glFramebufferRenderbuffer(GL_FRAMEBUFFER, GL_DEPTH_ATTACHMENT, GL_RENDERBUFFER, s.depth);
    glBindTexture(GL_TEXTURE_2D, static_cast<GLuint>(texture));
    if (glCheckFramebufferStatus(GL_FRAMEBUFFER) == GL_FRAMEBUFFER_COMPLETE) return;
    glBindFramebuffer(GL_FRAMEBUFFER, 0);
    glDeleteFramebuffers(1, &s.framebuffer);
    glDeleteTextures(1, &s.colour);
    glDeleteRenderbuffers(1, &s.depth);
    s.framebuffer = s.colour = s.depth = 0;
  }
  EGLSurface full = make_pbuffer(s.width, s.height);
  if (full == EGL_NO_SURFACE) return;
  const EglDisplay& egl = egl_display();
  eglMakeCurrent(egl.display, full, full, context);
  eglDestroySurface(egl.display, s.pbuffer);
  s.pbuffer = full;
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
  auto* surface = new Surface;
  surface->width = target.m_pInfo && target.m_pInfo->biWidth > 0 ? target.m_pInfo->biWidth : 1;
  surface->height = target.m_pInfo && target.m_pInfo->biHeight > 0 ? target.m_pInfo->biHeight : 1;
  surface->pbuffer = make_pbuffer(1, 1);
  if (surface->pbuffer == EGL_NO_SURFACE) {
    delete surface;
    return nullptr;
  }
  return surface;
}

void delete_offscreen_dc(void* dc, void*) {
  if (!dc) return;
  auto* surface = static_cast<Surface*>(dc);
  eglDestroySurface(egl_display().display, surface->pbuffer);
  delete surface;
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
    return;
  }
  auto* surface = static_cast<Surface*>(dc);
  if (!eglMakeCurrent(egl.display, surface->pbuffer, surface->pbuffer, static_cast<EGLContext>(context))) return;
  if (!surface->prepared) prepare_surface(*surface, static_cast<EGLContext>(context));
  // Bound again each time: whoever shares the context may have bound another.
  if (surface->framebuffer) glBindFramebuffer(GL_FRAMEBUFFER, surface->framebuffer);
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

bool surface_apart_from_target() { return true; }

void load_frame_into_surface(void* dc, const FrameRows& rows, std::vector<uint8_t>& scratch) {
  if (!dc || !eglGetCurrentContext() || rows.width() <= 0 || rows.height() <= 0) return;
  const Surface& surface = *static_cast<const Surface*>(dc);
  const int width = rows.width(), height = rows.height();
  const ptrdiff_t pitch = static_cast<ptrdiff_t>(width) * 4;
  scratch.resize(static_cast<size_t>(pitch) * height);
  if (!surface.colour) {
    frame_rows_to_rgba(rows, scratch.data(), pitch);
    draw_rgba_into_current_surface(scratch.data(), width, height);
    return;
  }
  // Straight into the colour texture, top row first as it is kept: the same
  // bytes as drawing the pixels, at a copy's cost.
  frame_rows_to_rgba(rows, scratch.data() + (height - 1) * pitch, -pitch);
  GLint texture = 0;
  glGetIntegerv(GL_TEXTURE_BINDING_2D, &texture);
  glBindTexture(GL_TEXTURE_2D, surface.colour);
  glTexSubImage2D(GL_TEXTURE_2D, 0, 0, 0, width, height, GL_RGBA, GL_UNSIGNED_BYTE, scratch.data());
  glBindTexture(GL_TEXTURE_2D, static_cast<GLuint>(texture));
}

const OffscreenGlStatus& offscreen_gl_status() {
  static OffscreenGlStatus status;
  static std::once_flag once;
  std::call_once(once, [] {
    const EglDisplay& egl = egl_display();
    if (!egl.config) {
      status.error = egl.error;
      return;
    }
    status.platform = egl.platform;
    // Whatever the calling thread has current comes back afterwards.
    const EGLDisplay display = eglGetCurrentDisplay();
    const EGLContext previous = eglGetCurrentContext();
    const EGLSurface draw = eglGetCurrentSurface(EGL_DRAW), read = eglGetCurrentSurface(EGL_READ);
    const EGLenum api = eglQueryAPI();
    CNewDib probe(NMEMOD_POINTER);
    probe.Create(16, 16, 24, false);
    void* unused = nullptr;
    void* dc = create_offscreen_dc(probe, &unused);
    void* context = dc ? create_gl_context(dc) : nullptr;
    if (!dc) {
      status.error = "eglCreatePbufferSurface failed on the " + egl.platform + " (" + last_egl_error() + ")";
    } else if (!context) {
      status.error = "eglCreateContext for desktop OpenGL failed on the " + egl.platform + " (" + last_egl_error() +
                     ")";
    } else {
      make_gl_current(dc, context);
      const char* renderer = reinterpret_cast<const char*>(glGetString(GL_RENDERER));
      const char* version = reinterpret_cast<const char*>(glGetString(GL_VERSION));
      if (!renderer || !version) {
        status.error = "eglMakeCurrent failed on the " + egl.platform + " (" + last_egl_error() + ")";
      } else {
        status.available = true;
        status.renderer = std::string(renderer) + ", OpenGL " + version;
      }
    }
    if (previous != EGL_NO_CONTEXT) {
      eglMakeCurrent(display, draw, read, previous);
    } else {
      make_gl_current(nullptr, nullptr);
    }
    delete_gl_context(context);
    delete_offscreen_dc(dc, nullptr);
    if (api != EGL_NONE) eglBindAPI(api);
  });
  return status;
}

}  // namespace zv
