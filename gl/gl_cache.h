// The process-wide caches behind the OpenGL transitions: for each frame size a
// set of 24-bit bitmaps the input frames are converted into, and one renderer
// per (frame size, effect, thread). Also the protocol every OpenGL entry runs.
#pragma once

#include <cstdint>

#include "frame/entry.h"
#include "frame/transition_op.h"
#include "gl/gl_release.h"
#include "gl/gl_renderer.h"

namespace zv {

// The bitmaps of one frame size; created on first use, kept until unload.
struct FrameDibSet {
  FrameDibSet(int w, int h) : width(w), height(h) {}
  int width;
  int height;
  CNewDib dibA;  // the outgoing frame
  CNewDib dibB;  // the incoming frame
  CNewDib dibC;  // for software transitions that draw through a bitmap
};

// Enters the bitmap cache's lock and returns the set for the size, creating it
// when absent. The lock stays held until ReleaseFrameDibs.
FrameDibSet* AcquireFrameDibs(int width, int height);
void ReleaseFrameDibs();

// The renderer of this key, or null.
CGlRenderer* FindRenderer(int width, int height, int effect_id, uint32_t thread_id);
void AddRenderer(CGlRenderer* renderer);
void LockRendererList();
void UnlockRendererList();
// A non-zero id frees the first renderer of that thread; 0 frees them all (unload).
void FreeRenderersOfThread(uint32_t thread_id);

// What makes one OpenGL transition: its renderer and the steps that differ.
struct GlEffect {
  int id;
  // Styles past this one (tested unsigned) return 0 before any lock is taken
  // or renderer made; kAnyStyle: no test.
  uint32_t last_style;
  CGlRenderer* (*create)();
  void (*setup)(CGlRenderer& renderer);  // once, after the renderer's own set-up
  // Before drawing: what the target holds when the scene is drawn over it,
  // given `a` and `b` as converted into the set's bitmaps. May be null.
  void (*background)(CGlRenderer& renderer, FrameDibSet& dibs, int style);
  void (*draw)(CGlRenderer& renderer, FrameDibSet& dibs, double p, int style);
  // After the target was read into `out`. May be null.
  void (*after)(CGlRenderer& renderer);
};

// The whole call of an OpenGL transition: arguments, progress, the bitmap set
// and renderer under their two locks, conversion, drawing and read-back.
int run_gl_transition(const GlEffect& effect, Image* out, Image* a, Image* b, TransitionParams* params);

// What the caches hold, for hosts' diagnostics and the tests.
int gl_renderer_count();
int frame_dib_set_count();

}  // namespace zv
