// Offscreen surfaces on Windows: a memory device context with the target's
// bitmap selected, and a WGL context that draws straight into that bitmap.
#include "gl/frame_transfer.h"
#include "gl/gl_api.h"
#include "gl/offscreen_context.h"

namespace zv {

uint32_t current_thread_id() { return GetCurrentThreadId(); }

void* create_offscreen_dc(CNewDib& target, void** old_bitmap) {
  HDC dc = CreateCompatibleDC(nullptr);
  *old_bitmap = SelectObject(dc, static_cast<HGDIOBJ>(target.m_hBitmap));
  return dc;
}

void delete_offscreen_dc(void* dc, void* old_bitmap) {
  if (!dc) return;
  if (old_bitmap) SelectObject(static_cast<HDC>(dc), static_cast<HGDIOBJ>(old_bitmap));
  DeleteDC(static_cast<HDC>(dc));
}

void* create_gl_context(void* dc) {
  HDC hdc = static_cast<HDC>(dc);
  PIXELFORMATDESCRIPTOR pfd = {};
  pfd.nSize = 40;
  pfd.nVersion = 1;
  pfd.dwFlags = PFD_DRAW_TO_BITMAP | PFD_SUPPORT_OPENGL;  // no double buffering
  pfd.iPixelType = PFD_TYPE_RGBA;
  pfd.cColorBits = 24;
  pfd.cDepthBits = 24;
  pfd.iLayerType = PFD_MAIN_PLANE;
  // Neither result is tested: a failed format leaves a context that draws nothing.
  const int format = ChoosePixelFormat(hdc, &pfd);
  SetPixelFormat(hdc, format, &pfd);
  return wglCreateContext(hdc);
}

void make_gl_current(void* dc, void* context) { wglMakeCurrent(static_cast<HDC>(dc), static_cast<HGLRC>(context)); }

void delete_gl_context(void* context) {
  if (context) wglDeleteContext(static_cast<HGLRC>(context));
}

// True when the current context keeps its pixels red first. A bitmap is blue
// first, so such a context cannot be drawing into the bitmap itself: it draws
// into a buffer of its own (as wine's bitmap rendering does) and the bitmap is
// copied into it before drawing and read back after.
static bool draws_into_own_buffer() {
  HDC dc = wglGetCurrentDC();
  const int format = dc ? GetPixelFormat(dc) : 0;
  PIXELFORMATDESCRIPTOR pfd = {};
  if (format <= 0 || !DescribePixelFormat(dc, format, sizeof(pfd), &pfd)) return false;
  return pfd.cRedShift == 0 && pfd.cBlueShift != 0;
}

// Otherwise the selected bitmap is the colour buffer itself: nothing to copy.
void load_target_into_surface(CNewDib& target) {
  if (draws_into_own_buffer()) draw_bitmap_into_current_surface(target);
}

// The target holds only black: a buffer of the context's own is cleared to it.
void clear_surface_black() {
  if (!draws_into_own_buffer()) return;
  glClearColor(0, 0, 0, 0);
  glClear(GL_COLOR_BUFFER_BIT);
}

void read_surface_into_target(CNewDib& target) {
  GdiFlush();
  if (draws_into_own_buffer()) read_current_surface_into_bitmap(target);
}

// The bitmap is the surface: frames reach it through the bitmap.
bool surface_apart_from_target() { return false; }

void load_frame_into_surface(void*, const FrameRows& rows, std::vector<uint8_t>& scratch) {
  const ptrdiff_t pitch = static_cast<ptrdiff_t>(rows.width()) * 4;
  scratch.resize(static_cast<size_t>(pitch) * rows.height());
  frame_rows_to_rgba(rows, scratch.data(), pitch);
  draw_rgba_into_current_surface(scratch.data(), rows.width(), rows.height());
}

const OffscreenGlStatus& offscreen_gl_status() {
  static OffscreenGlStatus status;
  static INIT_ONCE once = INIT_ONCE_STATIC_INIT;
  InitOnceExecuteOnce(
      &once,
      [](PINIT_ONCE, PVOID, PVOID*) -> BOOL {
        status.platform = "WGL memory device context";
        // Whatever the calling thread has current comes back afterwards.
        HDC previous_dc = wglGetCurrentDC();
        HGLRC previous = wglGetCurrentContext();
        CNewDib probe(NMEMOD_SECTION);
        probe.Create(16, 16, 24, false);
        void* old_bitmap = nullptr;
        void* dc = create_offscreen_dc(probe, &old_bitmap);
        void* context = create_gl_context(dc);
        if (!context) {
          status.error = "wglCreateContext failed on a memory device context (error " +
                         std::to_string(GetLastError()) + ")";
        } else if (!wglMakeCurrent(static_cast<HDC>(dc), static_cast<HGLRC>(context))) {
          status.error = "wglMakeCurrent failed (error " + std::to_string(GetLastError()) + ")";
        } else {
          const char* renderer = reinterpret_cast<const char*>(glGetString(GL_RENDERER));
          const char* version = reinterpret_cast<const char*>(glGetString(GL_VERSION));
          status.available = true;
          status.renderer = std::string(renderer ? renderer : "?") + ", OpenGL " + (version ? version : "?");
        }
        wglMakeCurrent(previous_dc, previous);
        delete_gl_context(context);
        delete_offscreen_dc(dc, old_bitmap);
        return TRUE;
      },
      nullptr, nullptr);
  return status;
}

}  // namespace zv
