// The platform seam under the offscreen renderer: a drawing surface bound to
// a renderer's target bitmap, an OpenGL context on it, and the thread ids that
// key the renderer cache. Windows draws straight into the selected bitmap;
// elsewhere a headless surface is drawn on and copied to and from the bitmap.
#pragma once

#include <cstdint>

#include "host/new_dib.h"

namespace zv {

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

}  // namespace zv
