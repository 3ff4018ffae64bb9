#include <algorithm>
#include <vector>

#include "blends/image_space.h"
#include "frame/entry.h"
#include "frame/kernel_path.h"
#include "frame/rows.h"

namespace zv {
namespace {

enum GauzeStyle { kGauze1 = 0, kGauze2 = 1, kGauze3 = 2 };

constexpr int kBayer4[4][4] = {{0, 8, 2, 10}, {12, 4, 14, 6}, {3, 11, 1, 9}, {15, 7, 13, 5}};
constexpr int kBayer8[8][8] = {{0, 32, 8, 40, 2, 34, 10, 42},  {48, 16, 56, 24, 50, 18, 58, 26},
                               {12, 44, 4, 36, 14, 46, 6, 38}, {60, 28, 52, 20, 62, 30, 54, 22},
                               {3, 35, 11, 43, 1, 33, 9, 41},  {51, 19, 59, 27, 49, 17, 57, 25},
                               {15, 47, 7, 39, 13, 45, 5, 37}, {63, 31, 55, 23, 61, 29, 53, 21}};

// The threshold of luma sample (x, y); `b` shows where it is below the level.
int luma_threshold(int style, int x, int y) {
  switch (style) {
    case kGauze1:
      return kBayer4[y % 4][x % 4];
    case kGauze2:
      return kBayer8[y % 8][x % 8];
    default: {
      // The net: distance to the nearest thread line, then a fine dither.
      const int mx = x % 8, my = y % 8;
      const int d = std::min({mx, 7 - mx, my, 7 - my});
      return 16 * d + kBayer4[y % 4][x % 4];
    }
  }
}

// A chroma sample takes the mean threshold of the four luma samples it
// covers, so colour follows brightness.
int threshold(int style, bool chroma, int x, int y) {
  if (!chroma) return luma_threshold(style, x, y);
  return (luma_threshold(style, 2 * x, 2 * y) + luma_threshold(style, 2 * x + 1, 2 * y) +
          luma_threshold(style, 2 * x, 2 * y + 1) + luma_threshold(style, 2 * x + 1, 2 * y + 1)) >>
         2;
}

int gauze_level(int style, double p) { return truncate_to_int(p * (style == kGauze1 ? 16 : 64) + 0.5); }

void gauze_reference(const CommonRegion& r, int style, int level, bool chroma) {
  for (int y = 0; y < r.height; ++y) {
    uint8_t* o = row_at(r.out, r.out_stride, y);
    const uint8_t* pa = row_at(r.a, r.a_stride, y);
    const uint8_t* pb = row_at(r.b, r.b_stride, y);
    for (int x = 0; x < r.width; ++x) o[x] = threshold(style, chroma, x, y) < level ? pb[x] : pa[x];
  }
}

// The pattern repeats every 8 samples (luma) or 4 (chroma) both ways: one
// byte mask per row phase, the width of the area, then a masked select.
void gauze_fast(const CommonRegion& r, int style, int level, bool chroma) {
  const int period = chroma ? 4 : 8;
  const int phases = std::min(period, r.height);
  std::vector<uint8_t> masks(static_cast<size_t>(phases) * r.width);
  for (int py = 0; py < phases; ++py) {
    uint8_t* m = masks.data() + static_cast<size_t>(py) * r.width;
    for (int x = 0; x < std::min(period, r.width); ++x) m[x] = threshold(style, chroma, x, py) < level ? 0xFF : 0;
    for (int x = period; x < r.width; ++x) m[x] = m[x - period];
  }
  for (int y = 0; y < r.height; ++y) {
    const uint8_t* m = masks.data() + static_cast<size_t>(y % period) * r.width;
    uint8_t* o = row_at(r.out, r.out_stride, y);
    const uint8_t* pa = row_at(r.a, r.a_stride, y);
    const uint8_t* pb = row_at(r.b, r.b_stride, y);
    for (int x = 0; x < r.width; ++x) o[x] = static_cast<uint8_t>((pb[x] & m[x]) | (pa[x] & ~m[x]));
  }
}

}  // namespace

void gauze_plane(const CommonRegion& r, int style, double p, bool chroma) {
  if (static_cast<unsigned>(style) > kGauze3 || r.empty()) return;
  const int level = gauze_level(style, p);
  if (use_reference_path()) {
    gauze_reference(r, style, level, chroma);
  } else {
    gauze_fast(r, style, level, chroma);
  }
}

int ZV_STDCALL gauze(Image* out, Image* a, Image* b, TransitionParams* params) {
  return run_transition(out, a, b, params, EntryRules{ProgressClamp::kNaNShowsA, kGauze3},
                        [params](const PlaneJob& j) { gauze_plane(j.region(), params->style, j.progress, j.chroma); });
}

}  // namespace zv
