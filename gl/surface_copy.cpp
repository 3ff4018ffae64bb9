// Copies between a renderer's target bitmap and the colour buffer of the
// current context, for surfaces that are not the bitmap itself.
#include "gl/gl_api.h"
#include "gl/offscreen_context.h"

#ifndef GL_BGR_EXT
#define GL_BGR_EXT 0x80E0
#endif

namespace zv {
namespace {

bool has_pixels(const CNewDib& bitmap) {
  return bitmap.m_pInfo && bitmap.m_pInfo->biWidth > 0 && bitmap.m_pInfo->biHeight > 0;
}

// Pixels written as they are at the viewport's lower-left corner: no texturing,
// blending or depth test on the way.
void draw_pixels(int width, int height, GLenum format, const void* pixels) {
  glPushAttrib(GL_ENABLE_BIT | GL_CURRENT_BIT | GL_TRANSFORM_BIT);
  glDisable(GL_TEXTURE_2D);
  glDisable(GL_BLEND);
  glDisable(GL_DEPTH_TEST);
  glMatrixMode(GL_PROJECTION);
  glPushMatrix();
  glLoadIdentity();
  glMatrixMode(GL_MODELVIEW);
  glPushMatrix();
  glLoadIdentity();
  glRasterPos2i(-1, -1);  // the bottom-left corner of the viewport
  glDrawPixels(width, height, format, GL_UNSIGNED_BYTE, pixels);
  glPopMatrix();
  glMatrixMode(GL_PROJECTION);
  glPopMatrix();
  glPopAttrib();
}

}  // namespace

// Bottom-up BGR rows padded to 4 bytes are OpenGL's default pixel layout.
void draw_bitmap_into_current_surface(CNewDib& bitmap) {
  if (!has_pixels(bitmap)) return;
  draw_pixels(bitmap.m_pInfo->biWidth, bitmap.m_pInfo->biHeight, GL_BGR_EXT, bitmap.LockBits());
  bitmap.UnlockBits();
}

void draw_rgba_into_current_surface(const uint8_t* rgba, int width, int height) {
  if (width > 0 && height > 0) draw_pixels(width, height, GL_RGBA, rgba);
}

void read_current_surface_into_bitmap(CNewDib& bitmap) {
  if (!has_pixels(bitmap)) return;
  glReadPixels(0, 0, bitmap.m_pInfo->biWidth, bitmap.m_pInfo->biHeight, GL_BGR_EXT, GL_UNSIGNED_BYTE,
               bitmap.LockBits());
  bitmap.UnlockBits();
}

}  // namespace zv
