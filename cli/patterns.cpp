#include "cli/patterns.h"

#include <cmath>
#include <vector>

#include "imaging/yuv_rgb.h"

namespace zvcli {
namespace {

constexpr double kPi = 3.14159265358979323846;

struct Rgb {
  int r, g, b;
};

// Seventy-five per cent bars scrolling left, a quarter of the width a second.
Rgb bars(int x, int, int w, int, double t) {
  static const Rgb kBars[7] = {{191, 191, 191}, {191, 191, 0}, {0, 191, 191}, {0, 191, 0},
                               {191, 0, 191},   {191, 0, 0},   {0, 0, 191}};
  double u = std::fmod(static_cast<double>(x) / w + t * 0.25, 1.0);
  return kBars[static_cast<int>(u * 7) % 7];
}

// Hue running diagonally across the picture and drifting with time.
Rgb gradient(int x, int y, int w, int h, double t) {
  double hue = std::fmod(static_cast<double>(x) / w + 0.5 * y / h + 0.3 * t, 1.0) * 6.0;
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

// Concentric rings whose frequency rises outwards, their phase moving inwards.
Rgb zoneplate(int x, int y, int w, int h, double t) {
  double dx = x - w / 2.0, dy = y - h / 2.0, scale = kPi / (std::max(w, h) * 0.75);
  int level = static_cast<int>(127.5 + 110 * std::cos((dx * dx + dy * dy) * scale - t * 2 * kPi));
  return {level, level, level};
}

// A grey checkerboard with an orange box bouncing from side to side.
Rgb checker(int x, int y, int w, int h, double t) {
  int cell = std::max(2, h / 6), box = std::max(2, h / 3);
  double swing = std::fabs(std::fmod(t * 0.5, 1.0) * 2 - 1);  // 1 -> 0 -> 1 every two seconds
  int box_x = static_cast<int>((1 - swing) * (w - box)), box_y = (h - box) / 2;
  if (x >= box_x && x < box_x + box && y >= box_y && y < box_y + box) return {240, 140, 20};
  return ((x / cell + y / cell) % 2) ? Rgb{200, 200, 200} : Rgb{60, 60, 70};
}

struct PatternKind {
  const char* name;
  Rgb (*colour)(int x, int y, int w, int h, double t);
};
const PatternKind kPatterns[] = {
    {"bars", bars}, {"gradient", gradient}, {"zoneplate", zoneplate}, {"checker", checker}};

class PatternSource : public FrameSource {
 public:
  explicit PatternSource(const PatternKind& kind) : kind_(kind) {}
  Size size() const override { return {320, 180}; }
  double frame_rate() const override { return 25; }
  double length() const override { return 2; }

  // Drawn in RGB, then converted with the library's own studio-range formulas;
  // chroma from the average colour of each 2 x 2 block.
  void frame_at(double seconds, Image& out) override {
    const int w = out.width, h = out.height, cw = out.chroma_width(), ch = out.chroma_height();
    std::vector<Rgb> row_pair(static_cast<size_t>(2) * w);
    for (int y = 0; y < h; y += 2) {
      for (int dy = 0; dy < 2 && y + dy < h; ++dy) {
        for (int x = 0; x < w; ++x) {
          Rgb c = kind_.colour(x, y + dy, w, h, seconds);
          row_pair[static_cast<size_t>(dy) * w + x] = c;
          out.get_Y()[static_cast<size_t>(y + dy) * w + x] = static_cast<uint8_t>(zv::rgb_to_y(c.r, c.g, c.b));
        }
      }
      if (y / 2 >= ch) continue;
      for (int x = 0; x < cw; ++x) {
        int r = 0, g = 0, b = 0;
        for (int k : {0, 1, w, w + 1}) {
          const Rgb& c = row_pair[static_cast<size_t>(2 * x + k)];
          r += c.r, g += c.g, b += c.b;
        }
        size_t at = static_cast<size_t>(y / 2) * cw + x;
        out.get_U()[at] = static_cast<uint8_t>(zv::rgb_to_u(r / 4, g / 4, b / 4));
        out.get_V()[at] = static_cast<uint8_t>(zv::rgb_to_v(r / 4, g / 4, b / 4));
      }
    }
  }

 private:
  const PatternKind& kind_;
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
