#include "effects3d/door.h"

#include <cstddef>
#include <vector>

#include "effects3d/column_surface.h"
#include "frame/entry.h"
#include "frame/kernel_path.h"

namespace zv {
namespace {

enum DoorStyle { kOpen = 0, kClose = 1 };
enum LeafSide { kRightLeaf = 0, kLeftLeaf = 1 };

// The source column of leaf column j (left) or n - k (right, k = n .. 1).
inline ptrdiff_t leaf_column(int side, int j, int n, int w, double f) {
  return side == kLeftLeaf ? truncate_to_int(j * f) : w - truncate_to_int((n - j) * f);
}

void squeeze_leaf_fast(int side, int n, int w, int h, const uint8_t* source, ptrdiff_t source_size, uint8_t* target,
                       double f) {
  std::vector<ptrdiff_t> columns(static_cast<size_t>(n));
  ptrdiff_t last = 0;
  for (int j = 0; j < n; ++j) {
    columns[j] = leaf_column(side, j, n, w, f);
    if (columns[j] > last) last = columns[j];
  }
  for (int row = 0; row < h; ++row) {
    const ptrdiff_t base = static_cast<ptrdiff_t>(row) * w;
    uint8_t* dst = target + static_cast<ptrdiff_t>(row) * n;
    if (base + last < source_size) {
      for (int j = 0; j < n; ++j) dst[j] = source[base + columns[j]];
    } else {
      for (int j = 0; j < n; ++j) dst[j] = base + columns[j] < source_size ? source[base + columns[j]] : 0;
    }
  }
}

// Columns whose tops share one row have one height and one row map: each map
// row becomes a span copy for the whole run, on both leaves.
void stretch_leaves_fast(int n, int m_w, int m_h, double p, int out_stride, uint8_t* out, const uint8_t* left,
                         const uint8_t* right) {
  auto top_of = [&](int i) { return truncate_to_int(i * (m_h * p * 0.25) / n); };
  for_each_column_run(n, top_of, [&](int i0, int i1) {
    const int top = top_of(i0), h = m_h - 2 * top, run = i1 - i0;
    uint8_t* o = out + static_cast<ptrdiff_t>(top) * out_stride;
    stretch_column_run(h, m_h, run, out_stride, n, o + i0, left + i0);
    stretch_column_run(h, m_h, run, out_stride, n, o + m_w - i1, right + n - i1);
  });
}

}  // namespace

void SqueezeLeaf(int side, int n, int w, int h, const uint8_t* source, ptrdiff_t source_size, uint8_t* target) {
  const double f = n == 0 ? w : static_cast<double>(w) / n * 0.5;
  if (!use_reference_path()) {
    squeeze_leaf_fast(side, n, w, h, source, source_size, target, f);
    return;
  }
  for (int row = 0; row < h; ++row) {
    for (int j = 0; j < n; ++j) {
      // The right leaf's columns may run past a row into the next one, as
      // designed; past the plane they read as 0.
      const ptrdiff_t at = static_cast<ptrdiff_t>(row) * w + leaf_column(side, j, n, w, f);
      target[static_cast<ptrdiff_t>(row) * n + j] = at < source_size ? source[at] : 0;
    }
  }
}

void DoorPlane(double p, int w0, int h0, int w1, int h1, int w2, int h2, uint8_t* out, const uint8_t* leaves,
               ptrdiff_t leaves_size) {
  const int m_w = min3(w0, w1, w2), m_h = min3(h0, h1, h2);
  if (m_w <= 0 || m_h <= 0) return;
  uint8_t* out_origin = out + centred_offset(w0, h0, m_w, m_h);
  const ptrdiff_t leaf_offset = centred_offset(w1, h1, m_w, m_h);
  const int n = truncate_to_int((1 - p) * (m_w / 2));
  if (n <= 0) return;  // the leaves have closed to nothing (or the progress is not a number)

  std::vector<uint8_t> left(static_cast<size_t>(n) * h1), right(static_cast<size_t>(n) * h1);
  SqueezeLeaf(kLeftLeaf, n, w1, h1, leaves + leaf_offset, leaves_size - leaf_offset, left.data());
  SqueezeLeaf(kRightLeaf, n, w1, h1, leaves + leaf_offset, leaves_size - leaf_offset, right.data());
  if (!use_reference_path()) {
    stretch_leaves_fast(n, m_w, m_h, p, w0, out_origin, left.data(), right.data());
    return;
  }
  for (int i = 0; i < n; ++i) {
    const int s = truncate_to_int(i * (m_h * p * 0.25) / n);
    const int h = m_h - 2 * s;
    uint8_t* row = out_origin + static_cast<ptrdiff_t>(s) * w0;
    StretchColumn(h, m_h, w0, n, row + i, left.data() + i);
    StretchColumn(h, m_h, w0, n, row + (m_w - 1 - i), right.data() + (n - 1 - i));
  }
}

int DoorWorker(Image* out, Image* x, Image* y, TransitionParams* params) {
  if (!out || !x || !y || !params) return 0;
  out->copy_flags(*x);
  // Progress straight from the block, not through the shared prologue.
  double p = params->position / params->duration;
  if (params->param1 == kClose) p = 1 - p;
  p = clamp_progress(p);
  out->copy(y, 1, 1);
  for (int index = kPlaneY; index <= kPlaneV; ++index) {
    const PlaneView po = image_plane(out, index), px = image_plane(x, index), py = image_plane(y, index);
    const ptrdiff_t leaves_size = px.width > 0 && px.height > 0 ? static_cast<ptrdiff_t>(px.width) * px.height : 0;
    DoorPlane(p, po.width, po.height, px.width, px.height, py.width, py.height, po.data, px.data, leaves_size);
  }
  return 1;
}

int ZV_STDCALL DoorTransition(Image* out, Image* a, Image* b, TransitionParams* params) {
  // The worker makes its own progress and draws every plane itself; any style
  // but "Open" and "Close" draws nothing and still answers 0.
  const EntryStart start =
      start_transition(out, a, b, params, EntryRules{ProgressClamp::kPassNaN, kClose, kTransitionDone});
  if (start.result != kProceed) return start.result;
  // The style is written into the caller's block before drawing: a side
  // effect hosts rely on, kept deliberately. The worker's own result is ignored.
  if (params->style == kOpen) {
    params->param1 = kOpen;
    DoorWorker(out, a, b, params);
  } else if (params->style == kClose) {
    params->param1 = kClose;
    DoorWorker(out, b, a, params);
  }
  return kTransitionDone;
}

}  // namespace zv
