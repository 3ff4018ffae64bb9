#include "gl/gl_cache.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <mutex>

#include "gl/cache_lock.h"
#include "gl/offscreen_context.h"

namespace zv {
namespace {

// A plain growable array of pointers: growth doubles the count (starting at
// 1) and copies the pointers, so the objects themselves never move.
template <typename T>
struct PointerArray {
  T** begin = nullptr;
  T** end = nullptr;
  T** capacity = nullptr;

  int size() const { return static_cast<int>(end - begin); }

  void append(T* item) {
    if (end == capacity) {
      const size_t count = static_cast<size_t>(end - begin);
      const size_t grown = count + std::max<size_t>(count, 1);
      T** block = static_cast<T**>(std::malloc(grown * sizeof(T*)));
      if (count) std::memcpy(block, begin, count * sizeof(T*));
      std::free(begin);
      begin = block;
      end = block + count;
      capacity = block + grown;
    }
    *end++ = item;
  }

  void remove_at(int index) {
    std::memmove(begin + index, begin + index + 1, static_cast<size_t>(size() - index - 1) * sizeof(T*));
    --end;
  }

  void release() {
    std::free(begin);
    begin = end = capacity = nullptr;
  }
};

struct FrameDibCache {
  PointerArray<FrameDibSet> sets;
  CacheLock lock;

  ~FrameDibCache() {
    {
      std::lock_guard<CacheLock> hold(lock);
      for (FrameDibSet** set = sets.begin; set != sets.end; ++set) {
        (*set)->dibC.clear();
        (*set)->dibB.clear();
        (*set)->dibA.clear();
        delete *set;
      }
      sets.end = sets.begin;
    }
    sets.release();
  }
};

struct GlRendererList {
  PointerArray<CGlRenderer> renderers;
  CacheLock lock;

  ~GlRendererList() {
    FreeRenderersOfThread(0);
    renderers.release();
  }
};

// Both live from load to unload. The bitmap cache is made first so that it is
// destroyed after the renderers.
FrameDibCache g_frame_dibs;
GlRendererList g_renderers;

int dib_width(const CNewDib& dib) { return dib.m_pInfo ? dib.m_pInfo->biWidth : 0; }
int dib_height(const CNewDib& dib) { return dib.m_pInfo ? dib.m_pInfo->biHeight : 0; }

}  // namespace

FrameDibSet* AcquireFrameDibs(int width, int height) {
  g_frame_dibs.lock.lock();
  for (FrameDibSet** set = g_frame_dibs.sets.begin; set != g_frame_dibs.sets.end; ++set) {
    if ((*set)->width == width && (*set)->height == height) return *set;
  }
  g_frame_dibs.sets.append(new FrameDibSet(width, height));
  return g_frame_dibs.sets.end[-1];
}

void ReleaseFrameDibs() { g_frame_dibs.lock.unlock(); }

// Finding, adding and freeing all take the list's lock, so a thread freeing
// its renderers never races one that is adding; the order of the two locks
// (bitmaps first) is unchanged.
CGlRenderer* FindRenderer(int width, int height, int effect_id, uint32_t thread_id) {
  std::lock_guard<CacheLock> hold(g_renderers.lock);
  for (CGlRenderer** r = g_renderers.renderers.begin; r != g_renderers.renderers.end; ++r) {
    if (!*r) continue;
    if (dib_width((*r)->target) == width && dib_height((*r)->target) == height && (*r)->effectId == effect_id &&
        (*r)->threadId == thread_id) {
      return *r;
    }
  }
  return nullptr;
}

void AddRenderer(CGlRenderer* renderer) {
  std::lock_guard<CacheLock> hold(g_renderers.lock);
  g_renderers.renderers.append(renderer);
}

void LockRendererList() { g_renderers.lock.lock(); }
void UnlockRendererList() { g_renderers.lock.unlock(); }

void FreeRenderersOfThread(uint32_t thread_id) {
  std::lock_guard<CacheLock> hold(g_renderers.lock);
  PointerArray<CGlRenderer>& list = g_renderers.renderers;
  if (thread_id == 0) {
    // Unload: every renderer; the array itself goes with the list.
    for (CGlRenderer** r = list.begin; r != list.end; ++r) delete *r;
    return;
  }
  // One renderer per call, deliberately: hosts call once for each renderer.
  for (int i = 0; i < list.size(); ++i) {
    if (list.begin[i] && list.begin[i]->threadId == thread_id) {
      delete list.begin[i];
      list.remove_at(i);
      return;
    }
  }
}

int run_gl_transition(const GlEffect& effect, Image* out, Image* a, Image* b, TransitionParams* params) {
  const int result = transition_prologue(out, a, b, params);
  if (result != kProceed) return result;
  // A NaN progress shows `a` at rest rather than feeding NaN angles to OpenGL.
  const double p = clamp_progress_nan_safe(transition_progress(params));
  if (static_cast<uint32_t>(params->style) > effect.last_style) {
    return kTransitionDone;
  }
  const int width = out->width, height = out->height;
  // An empty frame has nothing to draw, and its renderer (an empty target)
  // would never match its own key again.
  if (width <= 0 || height <= 0) return kTransitionDone;

  FrameDibSet* dibs = AcquireFrameDibs(width, height);
  const uint32_t thread_id = current_thread_id();
  CGlRenderer* renderer = FindRenderer(width, height, effect.id, thread_id);
  if (!renderer) {
    renderer = effect.create();
    renderer->effectId = effect.id;
    renderer->threadId = thread_id;
    renderer->SetupOffscreenGL(width, height, 16);
    effect.setup(*renderer);
    AddRenderer(renderer);
  }
  LockRendererList();
  // The frames' bitmaps are filled only where something reads them; the
  // textures and the drawing surface take the frames straight from their planes.
  renderer->BindFrames(dibs->dibA, PrepareFrameDib(a, dibs->dibA, dibs->width, dibs->height), dibs->dibB,
                       PrepareFrameDib(b, dibs->dibB, dibs->width, dibs->height));
  if (effect.background) effect.background(*renderer, *dibs, params->style);
  effect.draw(*renderer, *dibs, p, params->style);
  renderer->ResolveInto(out);
  if (effect.after) effect.after(*renderer);
  renderer->ReleaseFrames();
  UnlockRendererList();
  ReleaseFrameDibs();
  return kTransitionDone;
}

int gl_renderer_count() {
  std::lock_guard<CacheLock> hold(g_renderers.lock);
  return g_renderers.renderers.size();
}

int frame_dib_set_count() {
  std::lock_guard<CacheLock> hold(g_frame_dibs.lock);
  return g_frame_dibs.sets.size();
}

}  // namespace zv

void ZV_STDCALL ZvFreeOpenGLObj() { zv::FreeRenderersOfThread(zv::current_thread_id()); }
