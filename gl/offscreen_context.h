// The platform seam under the offscreen renderer: a drawing surface bound to
// a renderer's target bitmap, an OpenGL context on it, and the thread ids that
// key the renderer cache. Windows draws straight into the selected bitmap;
// elsewhere a headless surface is drawn on and copied to and from the bitmap.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "host/new_dib.h"

namespace zv {

class FrameRows;

// The id of the calling thread; never 0.
uint32_t current_thread_id();

// A drawing surface for `target` (already created at the frame size). On
// Windows a memory device context with the bitmap selected, `old_bitmap`
// receiving what it replaced; elsewhere a headless surface of the same size.
void* create_offscreen_dc(CNewDib& target, void** old_bitmap);
// Puts `old_bitmap` back (when set) and deletes the surface.
void delete_offscreen_dc(void* dc, void* old_bitmap);

// An OpenGL context for `dc`: 24-bit colour, 24-bit depth, single-buffered,
// no alpha, stencil or accumulation buffers. Null when none can be made.
void* create_gl_context(void* dc);
// Makes `context` current on `dc` for the calling thread (both null: none).
void make_gl_current(void* dc, void* context);
void delete_gl_context(void* context);

// Drawing starts on the colour the target bitmap holds, and the rendered frame
// ends in it. Both are no-ops where the bitmap is the surface itself.
void load_target_into_surface(CNewDib& target);
// Drawing starts on black: the target holds only black already (no-op where
// the bitmap is the surface itself).
void clear_surface_black();
void read_surface_into_target(CNewDib& target);

// The copies behind those two where the surface is not the bitmap: the bitmap
// drawn into the current context's colour buffer, and that buffer read back.
void draw_bitmap_into_current_surface(CNewDib& bitmap);
void read_current_surface_into_bitmap(CNewDib& bitmap);

// Whether drawing happens on a surface apart from the target bitmap (a
// headless framebuffer), which then takes frames as R, G, B, A rows without
// the bitmap in between: loaded with load_frame_into_surface, read back with
// glReadPixels. False where the bitmap itself is drawn on (Windows).
bool surface_apart_from_target();
// The surface of `dc`, current with its context, starts on the frame whose
// bitmap rows `rows` makes; `scratch` keeps the pixels' memory between calls.
void load_frame_into_surface(void* dc, const FrameRows& rows, std::vector<uint8_t>& scratch);
// A glDrawPixels of width x height R, G, B, A rows, bottom row first, into
// the current colour buffer.
void draw_rgba_into_current_surface(const uint8_t* rgba, int width, int height);

// What the 3D transitions draw with on this machine, found once per process by
// making a context as their renderers do (and releasing it again; whatever the
// calling thread had current stays current).
struct OffscreenGlStatus {
  bool available = false;
  std::string renderer;  // the OpenGL renderer and version, when available
  std::string platform;  // where the context lives: "EGL device ...", "EGL surfaceless", "WGL"
  std::string error;     // why no context can be made, naming the step that failed
};
const OffscreenGlStatus& offscreen_gl_status();
// One line for people: the renderer on its platform, or why there is none.
std::string offscreen_gl_summary();

}  // namespace zv
