#include <algorithm>
#include <cmath>
#include <cstring>

#include "blends/region_views.h"
#include "effects3d/column_surface.h"
#include "effects3d/software3d.h"
#include "frame/entry.h"
#include "frame/kernel_path.h"
#include "frame/rows.h"
#include "frame/user_params.h"

namespace zv {
namespace {

constexpr int kDefaultRollPct = 20, kMaxRollPct = 50;
constexpr int kLastRollStyle = 7;
constexpr double kHalfPi = 1.5707963267948966;

// The roll along one line of travel of `length` samples: its diameter d and
// its trailing edge `left`, from -d at q = 0 to length at q = 1.
struct Roll {
  int d;
  double radius;
  int left;
  int length;
};

Roll roll_at(double q, int pct, int length) {
  const int d = std::max(2, truncate_to_int(length * pct / 100.0 + 0.5));
  return {d, d / 2.0, truncate_to_int(q * (length + d) + 0.5) - d, length};
}

// What line u shows: the revealed picture, the rolled picture still flat, or
// (0 and up) the rolled picture's line wrapped round the roll, with its shade.
constexpr int kRevealed = -1, kFlat = -2;

int roll_source(const Roll& g, int u, int* shade) {
  if (u < g.left) return kRevealed;
  if (u >= g.left + g.d) return kFlat;
  // Seen from the front, the cylinder shows the last pi R lines it took up,
  // compressed toward its edges; e stops at the far edge while it leaves.
  const double t = (u - g.left + 0.5 - g.radius) / g.radius;
  const double arc = g.radius * (kHalfPi - std::asin(t));
  const int contact = std::min(g.left + g.d, g.length) - 1;
  const int source = contact - truncate_to_int(arc);
  if (source < 0) return kRevealed;  // the roll is not that thick yet
  *shade = truncate_to_int(256 * (0.55 + 0.45 * std::sqrt(1 - t * t)));
  return source;
}

// Every sample by the formulas: line u of travel, v across it.
void roll_out_reference(const CommonRegion& r, bool vertical, bool mirrored, const Roll& g, bool chroma) {
  const int across = vertical ? r.width : r.height;
  auto at = [&](int u, int v, int* x, int* y) {
    const int pu = mirrored ? g.length - 1 - u : u;
    *x = vertical ? v : pu;
    *y = vertical ? pu : v;
  };
  for (int u = 0; u < g.length; ++u) {
    int shade = 256;
    const int source = roll_source(g, u, &shade);
    for (int v = 0; v < across; ++v) {
      int x, y;
      at(u, v, &x, &y);
      uint8_t& o = row_at(r.out, r.out_stride, y)[x];
      if (source == kRevealed) {
        o = row_at(r.b, r.b_stride, y)[x];
      } else if (source == kFlat) {
        o = row_at(r.a, r.a_stride, y)[x];
      } else {
        int sx, sy;
        at(source, v, &sx, &sy);
        const uint8_t s = row_at(r.a, r.a_stride, sy)[sx];
        o = chroma ? s : shade_luma(s, shade);
      }
    }
  }
}

// Columns: the flat parts as block copies, the roll as a surface whose
// columns all keep the full height.
void roll_columns_fast(const CommonRegion& r, bool mirrored, const Roll& g, bool chroma) {
  SurfaceColumns roll;
  int run_start = 0, run_kind = 0;
  auto flush = [&](int end) {
    const int width = end - run_start;
    if (run_kind == kRevealed) copy_block(run_start, width, r.height, r.out_stride, r.b_stride, r.out + run_start, r.b);
    if (run_kind == kFlat) copy_block(run_start, width, r.height, r.out_stride, r.a_stride, r.out + run_start, r.a);
  };
  for (int x = 0; x < r.width; ++x) {
    int shade = 256;
    const int u = mirrored ? r.width - 1 - x : x;
    const int source = roll_source(g, u, &shade);
    const int kind = source < 0 ? source : 0;
    if (x == 0 || kind != run_kind) {
      if (x > 0) flush(x);
      run_start = x;
      run_kind = kind;
    }
    if (kind == 0) {
      if (roll.size() == 0) roll.first = x;
      roll.add(mirrored ? r.width - 1 - source : source, 0, r.height, shade);
    }
  }
  flush(r.width);
  draw_surface_fast(roll, chroma, r.height, r.out_stride, r.a_stride, r.out, r.a);
}

// Rows (downward; upward runs on rows counted from the bottom): whole rows.
void roll_rows_fast(const CommonRegion& r, const Roll& g, bool chroma) {
  for (int y = 0; y < r.height; ++y) {
    int shade = 256;
    const int source = roll_source(g, y, &shade);
    uint8_t* o = row_at(r.out, r.out_stride, y);
    if (source == kRevealed) {
      std::memcpy(o, row_at(r.b, r.b_stride, y), r.width);
    } else if (source == kFlat) {
      std::memcpy(o, row_at(r.a, r.a_stride, y), r.width);
    } else {
      const uint8_t* s = row_at(r.a, r.a_stride, source);
      if (chroma) {
        std::memcpy(o, s, r.width);
      } else {
        for (int x = 0; x < r.width; ++x) o[x] = shade_luma(s[x], shade);
      }
    }
  }
}

}  // namespace

void roll_out(const CommonRegion& r, bool vertical, bool mirrored, double q, int pct, bool chroma) {
  if (r.empty()) return;
  const Roll g = roll_at(q, pct, vertical ? r.height : r.width);
  if (use_reference_path()) {
    roll_out_reference(r, vertical, mirrored, g, chroma);
  } else if (!vertical) {
    roll_columns_fast(r, mirrored, g, chroma);
  } else {
    roll_rows_fast(mirrored ? rows_flipped(r) : r, g, chroma);
  }
}

void roll_plane(const CommonRegion& r, int style, int pct, double p, bool chroma) {
  if (static_cast<unsigned>(style) > kLastRollStyle || r.empty()) return;
  // Styles 0, 1, 4, 5 roll in: a roll-out run backwards with the pictures
  // exchanged unrolls `b` the other way.
  static const struct {
    bool vertical, mirrored, roll_in;
  } kStyles[] = {{false, true, true}, {false, false, true}, {false, false, false}, {false, true, false},
                 {true, true, true},  {true, false, true},  {true, false, false},  {true, true, false}};
  const auto& s = kStyles[style];
  roll_out(s.roll_in ? exchange_pictures(r) : r, s.vertical, s.mirrored, s.roll_in ? 1 - p : p, pct, chroma);
}

int ZV_STDCALL roll_3d(Image* out, Image* a, Image* b, TransitionParams* params) {
  return run_transition(out, a, b, params, EntryRules{ProgressClamp::kNaNShowsA, kLastRollStyle},
                        [params](const PlaneJob& j) {
                          const int pct = limit_param(params->param1, kDefaultRollPct, kMaxRollPct);
                          roll_plane(j.region(), params->style, pct, j.progress, j.chroma);
                        });
}

}  // namespace zv
