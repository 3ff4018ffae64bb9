#include "blends/zoom.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

#include "blends/picture_in_picture.h"
#include "frame/entry.h"

namespace zv {
namespace {

constexpr int kLastZoomStyle = 7;
// Style 0 zooms out, style 1 in.
constexpr int kZoomIn = 1;
constexpr int kMaxBoxes = 50;

// t(size x fraction + 0.5), the part of a size that progress has reached. A
// NaN progress reaches nothing, so that no size is ever made from an
// indefinite integer (it would turn into a picture of gigabytes).
int part_of(int size, double fraction) { return std::isnan(fraction) ? 0 : round_to_int(size * fraction); }

// What a zoom resizes, to which size, and what lies behind it.
struct ZoomSetup {
  Image* scaled_source;
  int width, height;
  Image* background;  // none for the in-and-out styles
};

ZoomSetup zoom_setup(int style, double p, Image* a, Image* b, int W, int H) {
  const int wp = part_of(W, p), hp = part_of(H, p);
  switch (style) {
    case 0: return {b, wp, H, a};
    case 1: return {a, W - wp, H, b};
    case 2: return {b, W, hp, a};
    case 3: return {a, W, H - hp, b};
    case 4: return {b, wp, hp, a};
    case 5: return {a, W - wp, H - hp, b};
    default: {
      // The second half is told by t(0.5 + p) being non-zero.
      const bool second_half = truncate_to_int(0.5 + p) != 0;
      const bool horizontal = style == 6;
      const int size = horizontal ? W : H;
      const int moving =
          second_half ? part_of(size, 2 * p - 1) : size - part_of(size, 2 * p);
      Image* source = second_half ? b : a;
      return horizontal ? ZoomSetup{source, moving, H, nullptr} : ZoomSetup{source, W, moving, nullptr};
    }
  }
}

// The corner of a picture of scaled size (sw, sh) that grows out of (style
// "Zoom out") or shrinks into ("Zoom in") the point (cx, cy) of a W x H plane.
struct Origin {
  int64_t left, top;
};

Origin zoom_origin(bool zoom_in, double p, int W, int H, int64_t cx, int64_t cy, int sw, int sh) {
  const int64_t dx = round_to_int((static_cast<double>(W) - cx) * p);
  const int64_t dy = round_to_int((static_cast<double>(H) - cy) * p);
  if (zoom_in) return {W - dx - sw, H - dy - sh};
  return {dx - sw + cx, dy - sh + cy};
}

int clamp_box_count(int n) { return n < 1 ? 2 : std::min(n, kMaxBoxes); }

int clamp_percent(int v) { return v < 1 ? 0 : std::min(v, 100); }

// User-Defined Zoom and Zoom Box: result 3 for other styles; the scaled
// picture (`b` growing over `a`, or `a` shrinking over `b`) is made once per
// call, then the background is copied into `out` before the first plane is
// drawn.
constexpr EntryRules kPointZoomRules{ProgressClamp::kPassNaN, kZoomIn, kTransitionBadStyle};

struct PointZoom {
  bool zoom_in;
  ScaledImage scaled;
};

PointZoom point_zoom_setup(Image* out, Image* a, Image* b, int style, double p) {
  const int W = out->width, H = out->height;
  const int wp = part_of(W, p), hp = part_of(H, p);
  return style == kZoomIn ? PointZoom{true, ScaledImage(W - wp, H - hp, a)} : PointZoom{false, ScaledImage(wp, hp, b)};
}

// The host's copy: `out` takes the background's pixels and its frame flags.
void copy_background(const PlaneJob& job, Image* out, Image* a, Image* b, const PointZoom& zoom) {
  if (job.index == kPlaneY) out->copy(zoom.zoom_in ? b : a, 1, 1);
}

void zoom_plane(const PlaneView& out, const PlaneView* background, const PlaneView& scaled) {
  if (background) copy_centred_plane(out, *background);
  const int64_t left = (static_cast<int64_t>(out.width) - scaled.width) / 2;
  const int64_t top = (static_cast<int64_t>(out.height) - scaled.height) / 2;
  paste_plane(out, scaled, left, top, 0, scaled.width, 0, scaled.height);
}

void zoom_box_plane(const PlaneView& out, const PlaneView& scaled, int nx, int ny, bool zoom_in, double p) {
  const int scaled_width = scaled.width, scaled_height = scaled.height;
  if (scaled_height < 1) return;
  const int cell_width = round_to_int(static_cast<double>(out.width) / nx);
  const int cell_height = out.height / ny;
  for (int j = 0; j < ny; ++j) {
    const int64_t cy = cell_height / 2 + static_cast<int64_t>(j) * cell_height;
    const int r0 = static_cast<int>(static_cast<int64_t>(j) * scaled_height / ny);
    const int r1 = static_cast<int>(static_cast<int64_t>(j + 1) * scaled_height / ny);
    for (int i = 0; i < nx; ++i) {
      const int64_t cx = cell_width / 2 + static_cast<int64_t>(i) * cell_width;
      const int c0 = static_cast<int>(static_cast<int64_t>(i) * scaled_width / nx);
      const int c1 = static_cast<int>(static_cast<int64_t>(i + 1) * scaled_width / nx);
      // Every tile sits where it would be if the whole picture grew from its
      // cell's centre; tiles of the last cells may reach past the plane's
      // edge, and that part is left out.
      const Origin o = zoom_origin(zoom_in, p, out.width, out.height, cx, cy, scaled_width, scaled_height);
      paste_plane(out, scaled, o.left, o.top, c0, c1, r0, r1);
    }
  }
}

}  // namespace

int ZV_STDCALL zoom_transition(Image* out, Image* a, Image* b, TransitionParams* params) {
  struct Zoom {
    ZoomSetup setup;
    ScaledImage scaled;
  };
  return run_transition(
      out, a, b, params, EntryRules{ProgressClamp::kPassNaN, kLastZoomStyle, kTransitionBadStyle},
      [&](double p) {
        const ZoomSetup setup = zoom_setup(params->style, p, a, b, out->width, out->height);
        return Zoom{setup, ScaledImage(setup.width, setup.height, setup.scaled_source)};
      },
      [out](const PlaneJob& job, const Zoom& zoom) {
        // The in-and-out styles show the picture on a black frame, filled by the host.
        if (job.index == kPlaneY && !zoom.setup.background) out->set_background_color(0, 0, 0);
        const PlaneView background = zoom.setup.background ? image_plane(zoom.setup.background, job.index) : PlaneView{};
        zoom_plane(job.out, zoom.setup.background ? &background : nullptr, scaled_plane(zoom.scaled, job.index));
      });
}

int ZV_STDCALL user_defined_zoom(Image* out, Image* a, Image* b, TransitionParams* params) {
  return run_transition(
      out, a, b, params, kPointZoomRules, [&](double p) { return point_zoom_setup(out, a, b, params->style, p); },
      [&](const PlaneJob& job, const PointZoom& zoom) {
        copy_background(job, out, a, b, zoom);
        const int cx = percent_of_width(clamp_percent(params->param1), out->width);
        const int cy = percent_of_height(clamp_percent(truncate_to_int(params->param2)), out->height);
        const PlaneView sp = scaled_plane(zoom.scaled, job.index);
        if (sp.height < 1) return;
        const Origin o = zoom_origin(zoom.zoom_in, job.progress, job.out.width, job.out.height,
                                     job.chroma ? cx / 2 : cx, job.chroma ? cy / 2 : cy, sp.width, sp.height);
        paste_plane(job.out, sp, o.left, o.top, 0, sp.width, 0, sp.height);
      });
}

int ZV_STDCALL zoom_box(Image* out, Image* a, Image* b, TransitionParams* params) {
  return run_transition(
      out, a, b, params, kPointZoomRules, [&](double p) { return point_zoom_setup(out, a, b, params->style, p); },
      [&](const PlaneJob& job, const PointZoom& zoom) {
        copy_background(job, out, a, b, zoom);
        const int nx = clamp_box_count(params->param1), ny = clamp_box_count(truncate_to_int(params->param2));
        zoom_box_plane(job.out, scaled_plane(zoom.scaled, job.index), nx, ny, zoom.zoom_in, job.progress);
      });
}

}  // namespace zv
