// Offscreen surfaces on Windows: a memory device context with the target's
// bitmap selected, and a WGL context that draws straight into that bitmap.
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

}  // namespace zv
