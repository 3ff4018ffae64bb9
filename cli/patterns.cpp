#include "cli/patterns.h"

#include <cmath>
#include <cstring>
#include <vector>

#include "imaging/yuv_rgb.h"

namespace zvcli {
namespace {

constexpr double kPi = 3.14159265358979323846;
constexpr double kTurn = 4294967296.0;  // one period in the 32-bit phases below
constexpr int kTableBits = 12;          // phase table entries: 4096 per period

struct Rgb {
  int r, g, b;
};
struct Yuv {
  uint8_t y, u, v;
};

Yuv to_yuv(Rgb c) {
  return {static_cast<uint8_t>(zv::rgb_to_y(c.r, c.g, c.b)), static_cast<uint8_t>(zv::rgb_to_u(c.r, c.g, c.b)),
          static_cast<uint8_t>(zv::rgb_to_v(c.r, c.g, c.b))};
}

// A phase in [0, 1) as a 32-bit fraction (wrapping is taking the fraction).
uint32_t phase_of(double turns) { return static_cast<uint32_t>(static_cast<int64_t>(std::floor((turns - std::floor(turns)) * kTurn))); }

// Pictures are drawn row pair by row pair: each pattern fills the two luma
// rows and the chroma row of a pair. Rows that repeat are copied.
struct Canvas {
  Image& out;
  int w, h, cw, ch;
  uint8_t* y_row(int y) const { return out.get_Y() + static_cast<size_t>(y) * w; }
  uint8_t* u_row(int y) const { return out.get_U() + static_cast<size_t>(y) * cw; }
  uint8_t* v_row(int y) const { return out.get_V() + static_cast<size_t>(y) * cw; }
  void copy_pair(int from, int to) const {
    std::memcpy(y_row(2 * to), y_row(2 * from), 2 * static_cast<size_t>(w));
    std::memcpy(u_row(to), u_row(from), cw);
    std::memcpy(v_row(to), v_row(from), cw);
  }
};

// Fills one row pair from colours of the two rows (chroma from the average
// colour of each 2 x 2 block).
void fill_pair(const Canvas& c, int pair, const std::vector<Rgb>& top, const std::vector<Rgb>& bottom) {
  uint8_t *y0 = c.y_row(2 * pair), *y1 = c.y_row(2 * pair + 1), *u = c.u_row(pair), *v = c.v_row(pair);
  for (int x = 0; x < c.w; ++x) {
    y0[x] = to_yuv(top[x]).y;
    y1[x] = to_yuv(bottom[x]).y;
  }
  for (int x = 0; x < c.cw; ++x) {
    const Rgb& a = top[2 * x];
    const Rgb& b = top[2 * x + 1];
    const Rgb& d = bottom[2 * x];
    const Rgb& e = bottom[2 * x + 1];
    const int r = (a.r + b.r + d.r + e.r) / 4, g = (a.g + b.g + d.g + e.g) / 4, bl = (a.b + b.b + d.b + e.b) / 4;
    u[x] = static_cast<uint8_t>(zv::rgb_to_u(r, g, bl));
    v[x] = static_cast<uint8_t>(zv::rgb_to_v(r, g, bl));
  }
}

// Seventy-five per cent bars scrolling left, a quarter of the width a second:
// one row, repeated.
void bars(const Canvas& c, double t) {
  static const Rgb kBars[7] = {{191, 191, 191}, {191, 191, 0}, {0, 191, 191}, {0, 191, 0},
                               {191, 0, 191},   {191, 0, 0},   {0, 0, 191}};
  std::vector<Rgb> row(c.w);
  for (int x = 0; x < c.w; ++x) {
    double u = std::fmod(static_cast<double>(x) / c.w + t * 0.25, 1.0);
    row[x] = kBars[static_cast<int>(u * 7) % 7];
  }
  fill_pair(c, 0, row, row);
  for (int pair = 1; pair < c.ch; ++pair) c.copy_pair(0, pair);
}

// A grey checkerboard with an orange box bouncing from side to side: rows
// differ only where a cell or the box starts or ends.
void checker(const Canvas& c, double t) {
  const int cell = std::max(2, c.h / 6), box = std::max(2, c.h / 3);
  const double swing = std::fabs(std::fmod(t * 0.5, 1.0) * 2 - 1);  // 1 -> 0 -> 1 every two seconds
  const int box_x = static_cast<int>((1 - swing) * (c.w - box)), box_y = (c.h - box) / 2;
  auto kind = [&](int y) { return (y / cell) % 2 + 2 * (y >= box_y && y < box_y + box); };
  auto row = [&](int y, std::vector<Rgb>& colours) {
    for (int x = 0; x < c.w; ++x) {
      const bool in_box = (kind(y) & 2) && x >= box_x && x < box_x + box;
      colours[x] = in_box ? Rgb{240, 140, 20} : ((x / cell + y / cell) % 2) ? Rgb{200, 200, 200} : Rgb{60, 60, 70};
    }
  };
  std::vector<Rgb> top(c.w), bottom(c.w);
  int last = -1;
  for (int pair = 0; pair < c.ch; ++pair) {
    const int key = kind(2 * pair) * 4 + kind(2 * pair + 1);
    if (key == last) {
      c.copy_pair(pair - 1, pair);
      continue;
    }
    row(2 * pair, top);
    row(2 * pair + 1, bottom);
    fill_pair(c, pair, top, bottom);
    last = key;
  }
}

// The colour of a hue from 0 to 6 (red, yellow, green, cyan, blue, magenta).
Rgb hue_colour(double hue) {
  int sector = static_cast<int>(hue) % 6;
  double f = hue - std::floor(hue);
  int up = static_cast<int>(40 + 180 * f), down = static_cast<int>(220 - 180 * f);
  switch (sector) {
    case 0: return {220, up, 40};
    case 1: return {down, 220, 40};
    case 2: return {40, 220, up};
    case 3: return {40, down, 220};
    case 4: return {up, 40, 220};
    default: return {220, 40, down};
  }
}

// Per-size tables for the patterns whose colour is a function of a phase.
struct PhaseTables {
  int w = 0, h = 0;
  std::vector<Yuv> hues, rings;              // colour per table entry
  std::vector<uint32_t> gx, gy, gcx, gcy;    // gradient phase per column and row (luma, chroma)
  std::vector<uint32_t> rx, ry;              // zone plate phase per column and row

  void build(int width, int height) {
    if (width == w && height == h) return;
    w = width, h = height;
    const int n = 1 << kTableBits;
    hues.resize(n), rings.resize(n);
    for (int k = 0; k < n; ++k) {
      hues[k] = to_yuv(hue_colour(6.0 * (k + 0.5) / n));
      const int level = static_cast<int>(127.5 + 110 * std::cos(2 * kPi * (k + 0.5) / n));
      rings[k] = to_yuv({level, level, level});
    }
    gx.resize(w), gy.resize(h), gcx.resize(w / 2), gcy.resize(h / 2), rx.resize(w), ry.resize(h);
    for (int x = 0; x < w; ++x) gx[x] = phase_of(static_cast<double>(x) / w);
    for (int y = 0; y < h; ++y) gy[y] = phase_of(0.5 * y / h);
    for (int x = 0; x < w / 2; ++x) gcx[x] = phase_of((2 * x + 0.5) / w);
    for (int y = 0; y < h / 2; ++y) gcy[y] = phase_of(0.5 * (2 * y + 0.5) / h);
    // Rings: phase (dx² + dy²) / (1.5 max(w, h)) turns.
    const double per_square = 1.0 / (1.5 * std::max(w, h));
    for (int x = 0; x < w; ++x) rx[x] = phase_of((x - w / 2.0) * (x - w / 2.0) * per_square);
    for (int y = 0; y < h; ++y) ry[y] = phase_of((y - h / 2.0) * (y - h / 2.0) * per_square);
  }
};

// Hue running diagonally across the picture and drifting with time.
void gradient(const Canvas& c, double t, const PhaseTables& p) {
  const uint32_t drift = phase_of(0.3 * t);
  constexpr int shift = 32 - kTableBits;
  for (int y = 0; y < c.h; ++y) {
    uint8_t* row = c.y_row(y);
    const uint32_t base = p.gy[y] + drift;
    for (int x = 0; x < c.w; ++x) row[x] = p.hues[(base + p.gx[x]) >> shift].y;
  }
  for (int y = 0; y < c.ch; ++y) {
    uint8_t *u = c.u_row(y), *v = c.v_row(y);
    const uint32_t base = p.gcy[y] + drift;
    for (int x = 0; x < c.cw; ++x) {
      const Yuv& colour = p.hues[(base + p.gcx[x]) >> shift];
      u[x] = colour.u, v[x] = colour.v;
    }
  }
}

// Concentric rings whose frequency rises outwards, their phase moving inwards.
void zoneplate(const Canvas& c, double t, const PhaseTables& p) {
  const uint32_t drift = phase_of(-t);
  constexpr int shift = 32 - kTableBits;
  for (int y = 0; y < c.h; ++y) {
    uint8_t* row = c.y_row(y);
    const uint32_t base = p.ry[y] + drift;
    for (int x = 0; x < c.w; ++x) row[x] = p.rings[(base + p.rx[x]) >> shift].y;
  }
  std::memset(c.out.get_U(), 128, c.out.plane_size(1));  // grey throughout
  std::memset(c.out.get_V(), 128, c.out.plane_size(2));
}

enum class Kind { kBars, kGradient, kZoneplate, kChecker };
struct PatternKind {
  const char* name;
  Kind kind;
};
const PatternKind kPatterns[] = {
    {"bars", Kind::kBars}, {"gradient", Kind::kGradient}, {"zoneplate", Kind::kZoneplate}, {"checker", Kind::kChecker}};

// Drawn with the library's own studio-range formulas, straight into the
// frame: no per-pixel trigonometry, and rows that repeat are copied, so a
// pattern costs about what reading a raw frame does.
class PatternSource : public FrameSource {
 public:
  explicit PatternSource(const PatternKind& kind) : kind_(kind) {}
  Size size() const override { return {320, 180}; }
  double frame_rate() const override { return 25; }
  double length() const override { return 2; }

  void frame_at(double seconds, Image& out) override {
    const Canvas canvas{out, out.width, out.height, out.chroma_width(), out.chroma_height()};
    switch (kind_.kind) {
      case Kind::kBars: return bars(canvas, seconds);
      case Kind::kChecker: return checker(canvas, seconds);
      case Kind::kGradient: tables_.build(out.width, out.height); return gradient(canvas, seconds, tables_);
      case Kind::kZoneplate: tables_.build(out.width, out.height); return zoneplate(canvas, seconds, tables_);
    }
  }

 private:
  const PatternKind& kind_;
  PhaseTables tables_;
};

}  // namespace

std::string pattern_names() {
  std::string names;
  for (const PatternKind& kind : kPatterns) names += (names.empty() ? "" : ", ") + std::string(kind.name);
  return names;
}

std::unique_ptr<FrameSource> open_pattern(const std::string& name) {
  for (const PatternKind& kind : kPatterns) {
    if (name == kind.name) return std::make_unique<PatternSource>(kind);
  }
  throw UsageError("unknown pattern '" + name + "' (patterns: " + pattern_names() + ")");
}

}  // namespace zvcli
