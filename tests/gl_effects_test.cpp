// 3D Cube and 3D Drive Off pictures: what each must show, with a tolerance fit for rasterisation, and golden frames
// that pin the software rasteriser's output within one level.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <fstream>
#include <functional>
#include <iterator>
#include <string>

#include "effects3d/gl_pieces.h"
#include "frame/registration.h"
#include "gl/gl_cache.h"
#include "gl/gl_renderer.h"
#include "imaging/yuv_rgb.h"
#include "tests/test_support.h"

namespace {

using zvtest::ImagePtr;

constexpr int kDriveOff = 49, kCube = 57;

struct Yuv { int y, u, v; };
// Colours inside the RGB gamut, so that they survive the trip through RGB.
Yuv from_rgb(int r, int g, int b) { return {zv::rgb_to_y(r, g, b), zv::rgb_to_u(r, g, b), zv::rgb_to_v(r, g, b)}; }
const Yuv kA = from_rgb(200, 80, 40), kB = from_rgb(40, 120, 220), kBlack = from_rgb(0, 0, 0);

int call(int id, Image& out, const ImagePtr& a, const ImagePtr& b, int style, double position) {
  TransitionParams params = zvtest::make_params(style, position);
  return zv::transition_entry(id)(&out, a.get(), b.get(), &params);
}

// Renders `positions` in order on the calling thread with fresh renderers, returning the last output.
ImagePtr render(int id, int width, int height, std::initializer_list<double> positions) {
  ImagePtr a = zvtest::solid_frame(width, height, kA.y, kA.u, kA.v);
  ImagePtr b = zvtest::solid_frame(width, height, kB.y, kB.u, kB.v);
  ImagePtr out = zvtest::solid_frame(width, height, 0, 0, 0);
  for (double p : positions) EXPECT_EQ(call(id, *out, a, b, 0, p), 0);
  ZvFreeOpenGLObj();
  return out;
}

bool near(const Image& image, int x, int y, const Yuv& c) {
  const int tolerance = 3;
  return std::abs(zvtest::sample(image, 0, x, y) - c.y) <= tolerance &&
         std::abs(zvtest::sample(image, 1, x / 2, y / 2) - c.u) <= tolerance &&
         std::abs(zvtest::sample(image, 2, x / 2, y / 2) - c.v) <= tolerance;
}

// Share of the even part of the picture (what the conversion writes) close to `c`.
double share_near(const Image& image, const Yuv& c) {
  int hits = 0, total = 0;
  for (int y = 0; y < (image.height & ~1); ++y) {
    for (int x = 0; x < (image.width & ~1); ++x, ++total) hits += near(image, x, y, c);
  }
  return static_cast<double>(hits) / total;
}

class GlPictureTest : public ::testing::TestWithParam<std::pair<int, int>> {};

TEST_P(GlPictureTest, DriveOffStartsWithAFillingTheViewAndEndsOnB) {
  const auto [w, h] = GetParam();
  EXPECT_EQ(share_near(*render(kDriveOff, w, h, {0.0}), kA), 1.0);
  // Lying down: b stands behind, above the road.
  ImagePtr lying = render(kDriveOff, w, h, {0.9});
  EXPECT_TRUE(near(*lying, w / 2, 0, kB));
  EXPECT_GT(share_near(*lying, kB), 0.3);
  EXPECT_GT(share_near(*render(kDriveOff, w, h, {1.0}), kB), 0.97);
}

TEST_P(GlPictureTest, CubeStartsOnTheFrontFaceWithA) {
  const auto [w, h] = GetParam();
  ImagePtr start = render(kCube, w, h, {0.0});
  EXPECT_TRUE(near(*start, w / 2, h / 2, kA));
  EXPECT_GT(share_near(*start, kA), 0.95);
  ImagePtr end = render(kCube, w, h, {1.0});
  EXPECT_EQ(share_near(*end, kA), 0.0);
  if (w >= h) {
    // The face with b has turned to the viewer.
    EXPECT_TRUE(near(*end, w / 2, h / 2, kB));
    EXPECT_GT(share_near(*end, kB), 0.8);
  } else {
    // Upright frames move both faces behind the camera by the end: nothing shows.
    EXPECT_EQ(share_near(*end, kBlack), 1.0);
  }
}

TEST(GlPicture, CubeHalfWayShowsBothFacesOnBlack) {
  for (int w : {64, 160, 320}) {
    const int h = w * 3 / 4;
    // From the second frame on the background is black.
    ImagePtr middle = render(kCube, w, h, {0.0, 0.4});
    EXPECT_TRUE(near(*middle, 0, 0, kBlack)) << w;
    EXPECT_TRUE(near(*middle, w - 2, h - 2, kBlack)) << w;
    EXPECT_GT(share_near(*middle, kA), 0.1) << w;
    EXPECT_GT(share_near(*middle, kB), 0.1) << w;
  }
}

INSTANTIATE_TEST_SUITE_P(Sizes, GlPictureTest,
                         ::testing::Values(std::make_pair(64, 48), std::make_pair(160, 120),
                                           std::make_pair(320, 240), std::make_pair(96, 96),
                                           std::make_pair(72, 96)));

// A frame whose sample (x, y) of each plane is value(plane, x, y, plane width, plane height).
ImagePtr painted_frame(int width, int height, const std::function<int(int, int, int, int, int)>& value) {
  ImagePtr image = zvtest::solid_frame(width, height, 0, 0, 0);
  for (int p = 0; p < 3; ++p) {
    const int w = p ? width / 2 : width, h = p ? height / 2 : height;
    for (int y = 0; y < h; ++y) {
      for (int x = 0; x < w; ++x) image->plane(p)[y * w + x] = static_cast<uint8_t>(value(p, x, y, w, h));
    }
  }
  return image;
}

// Golden frames: smooth pictures (so that a one-texel shift moves a sample by about a level), drawn in order on one
// renderer per effect. To regenerate after a deliberate change:
//   ZV_UPDATE_GOLDEN=1 build/bin/zv_tests --gtest_filter='GlGolden*'
ImagePtr smooth_frame(int width, int height, int phase) {
  return painted_frame(width, height, [phase](int p, int x, int y, int, int) {
    return p == 0 ? 40 + 2 * x + y + phase : p == 1 ? 90 + 2 * x + phase : 160 - 2 * y - phase;
  });
}

void check_golden(int id, const std::string& name, std::initializer_list<double> positions = {0.0, 0.3, 0.6, 0.85, 0.97},
                  int tolerance = 1) {
  const int w = 64, h = 48;
  ImagePtr a = smooth_frame(w, h, 0), b = smooth_frame(w, h, 30), out = zvtest::solid_frame(w, h, 0, 0, 0);
  std::vector<uint8_t> frames;
  for (double p : positions) {
    ASSERT_EQ(call(id, *out, a, b, 0, p), 0);
    std::vector<uint8_t> bytes = zvtest::frame_bytes(*out);
    frames.insert(frames.end(), bytes.begin(), bytes.end());
  }
  ZvFreeOpenGLObj();
  const std::string path = std::string(ZV_TEST_DATA_DIR "/") + name;
  if (std::getenv("ZV_UPDATE_GOLDEN")) {
    std::ofstream(path, std::ios::binary).write(reinterpret_cast<const char*>(frames.data()), frames.size());
  }
  std::ifstream file(path, std::ios::binary);
  std::vector<uint8_t> golden((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
  ASSERT_EQ(golden.size(), frames.size()) << path;
  int off = 0;
  for (size_t i = 0; i < frames.size(); ++i) off += std::abs(frames[i] - golden[i]) > tolerance;
  EXPECT_EQ(off, 0) << "samples more than " << tolerance << " level(s) from " << path;
}

TEST(GlGolden, Cube) { check_golden(kCube, "cube_64x48.yuv"); }
TEST(GlGolden, DriveOff) { check_golden(kDriveOff, "drive_off_64x48.yuv"); }

// The designed OpenGL effects, one row each: id, style count (0: none read)
// and the two progress values of its golden frames.
struct DesignedGl { int id; int styles; double golden[2]; const char* name; };
const DesignedGl kDesignedGl[] = {
    {42, 0, {0.3, 0.6}, "rotary_cube"},  {43, 0, {0.3, 0.6}, "flag"},         {45, 0, {0.3, 0.6}, "cross_zoom"},
    {47, 3, {0.3, 0.6}, "projection"},   {48, 2, {0.3, 0.6}, "fold"},         {50, 0, {0.3, 0.6}, "z_stretch"},
    {51, 0, {0.3, 0.6}, "window_grid"},  {52, 0, {0.3, 0.6}, "folding_box"},  {55, 0, {0.3, 0.6}, "image_spiral"},
    {58, 4, {0.3, 0.7}, "flip"},         {60, 6, {0.4, 0.8}, "bubbles"},      {61, 0, {0.3, 0.6}, "distort"},
    {62, 0, {0.3, 0.6}, "patch"},        {64, 0, {0.3, 0.6}, "shatter"},
};

void PrintTo(const DesignedGl& e, std::ostream* os) { *os << e.name << " (" << e.id << ")"; }

class DesignedGlTest : public ::testing::TestWithParam<DesignedGl> {};

// A gentle picture (at most a few levels a sample, never wrapping), so that
// the slight overfill of a frame at rest moves no sample by more than a few levels.
ImagePtr gentle_frame(int width, int height, int phase) {
  return painted_frame(width, height, [phase](int p, int x, int y, int w, int h) {
    return p == 0 ? 40 + phase + x * 120 / w + y * 40 / h : p == 1 ? 90 + phase + x * 60 / w : 170 - phase - y * 40 / h;
  });
}

// What a frame becomes after the trip through a 24-bit bitmap and back.
ImagePtr round_trip(const Image& image) {
  CNewDib dib;
  zv::ImageToDib(&image, dib, image.width, image.height);
  ImagePtr back = zvtest::solid_frame(image.width, image.height, 0, 0, 0);
  zv::DibToImage(dib, back.get());
  return back;
}

// The largest difference over the even part of the picture (what the conversion writes).
int max_difference(const Image& x, const Image& y) {
  int worst = 0;
  for (int plane = 0; plane < 3; ++plane) {
    const int w = plane ? x.width / 2 : x.width & ~1, h = plane ? x.height / 2 : x.height & ~1;
    for (int row = 0; row < h; ++row) {
      for (int col = 0; col < w; ++col) {
        worst = std::max(worst, std::abs(zvtest::sample(x, plane, col, row) - zvtest::sample(y, plane, col, row)));
      }
    }
  }
  return worst;
}

TEST_P(DesignedGlTest, EndsShowAAndBAtRestAndNaNShowsA) {
  const DesignedGl& e = GetParam();
  // Sizes whose camera distance puts the frame at rest just filling the view.
  for (auto [w, h] : {std::make_pair(64, 48), std::make_pair(352, 288)}) {
    ImagePtr a = gentle_frame(w, h, 0), b = gentle_frame(w, h, 40), ra = round_trip(*a), rb = round_trip(*b);
    ImagePtr out = zvtest::solid_frame(w, h, 0, 0, 0);
    for (int style = 0; style < std::max(e.styles, 1); ++style) {
      for (double p : {0.0, 1.0, std::nan("")}) {
        ASSERT_EQ(call(e.id, *out, a, b, style, p), 0);
        EXPECT_LE(max_difference(*out, p == 1.0 ? *rb : *ra), 4) << w << "x" << h << " style " << style << " p " << p;
      }
    }
    ZvFreeOpenGLObj();
  }
}

TEST_P(DesignedGlTest, TwoIdenticalCallsGiveIdenticalBytes) {
  const DesignedGl& e = GetParam();
  ImagePtr a = smooth_frame(90, 60, 0), b = smooth_frame(90, 60, 30);
  ImagePtr first = zvtest::solid_frame(90, 60, 0, 0, 0), second = zvtest::solid_frame(90, 60, 9, 9, 9);
  ASSERT_EQ(call(e.id, *first, a, b, e.styles > 1 ? 1 : 0, 0.45), 0);
  ASSERT_EQ(call(e.id, *second, a, b, e.styles > 1 ? 1 : 0, 0.45), 0);
  ZvFreeOpenGLObj();
  EXPECT_EQ(zvtest::frame_bytes(*first), zvtest::frame_bytes(*second));
}

// Without styles the style is never read; past the count no renderer is made
// (the contract tests check that `out` stays as it was).
TEST_P(DesignedGlTest, StylesPastTheCountMakeNoRenderer) {
  const DesignedGl& e = GetParam();
  ImagePtr a = smooth_frame(64, 48, 0), b = smooth_frame(64, 48, 30);
  ImagePtr plain = zvtest::solid_frame(64, 48, 0, 0, 0), styled = zvtest::solid_frame(64, 48, 0, 0, 0);
  if (e.styles == 0) {
    ASSERT_EQ(call(e.id, *plain, a, b, 0, 0.45), 0);
    ASSERT_EQ(call(e.id, *styled, a, b, 8, 0.45), 0);
    ZvFreeOpenGLObj();
    EXPECT_EQ(zvtest::frame_bytes(*plain), zvtest::frame_bytes(*styled));
    return;
  }
  const int renderers = zv::gl_renderer_count();
  for (int style : {e.styles, 8, -1}) EXPECT_EQ(call(e.id, *styled, a, b, style, 0.5), 0) << style;
  EXPECT_EQ(zv::gl_renderer_count(), renderers);
}

TEST_P(DesignedGlTest, GoldenFrames) {
  const DesignedGl& e = GetParam();
  check_golden(e.id, std::string(e.name) + "_64x48.yuv", {e.golden[0], e.golden[1]}, 2);
}

INSTANTIATE_TEST_SUITE_P(Effects, DesignedGlTest, ::testing::ValuesIn(kDesignedGl),
                         [](const ::testing::TestParamInfo<DesignedGl>& info) { return std::string(info.param.name); });

// Which picture shows where, at the places and progress values the effects
// are designed around; solid pictures, 160 x 120.
struct Placed {
  int id, style;
  double p;
  double x, y;  // fractions of the width and height
  // 'a', 'b', 'k' (black), 'm' (a and b mixed equally); 'A' and 'B': that
  // picture, perhaps shaded (neither the other one nor black)
  char shows;
};
const Placed kPlaced[] = {
    // 3D Rotary Cube: the face squarely in front every fifth of the way.
    {42, 0, 0.2, 0.5, 0.5, 'b'}, {42, 0, 0.4, 0.5, 0.5, 'a'}, {42, 0, 0.6, 0.5, 0.5, 'b'}, {42, 0, 0.8, 0.5, 0.5, 'a'},
    // 3D Flag half-way: the pole has drifted right, `b` shows at the left.
    {43, 0, 0.5, 0.1, 0.5, 'b'}, {43, 0, 0.5, 0.75, 0.5, 'A'},
    // Cross Zoom: `a` magnified before the cut, `b` after it.
    {45, 0, 0.25, 0.5, 0.5, 'a'}, {45, 0, 0.49, 0.5, 0.5, 'a'}, {45, 0, 0.5, 0.5, 0.5, 'b'},
    // 3D Projection: `b` opens in the middle, the pieces still at the sides; half-way their inner edges have swung
    // back, so that `b` shows above a piece near its inner edge.
    {47, 0, 0.2, 0.5, 0.5, 'b'}, {47, 0, 0.2, 0.05, 0.5, 'a'}, {47, 1, 0.2, 0.5, 0.5, 'b'}, {47, 1, 0.2, 0.5, 0.05, 'a'},
    {47, 2, 0.2, 0.5, 0.5, 'b'}, {47, 2, 0.2, 0.8, 0.2, 'a'}, {47, 0, 0.5, 0.3, 0.5, 'a'}, {47, 0, 0.5, 0.3, 0.03, 'b'},
    {47, 0, 0.5, 0.4, 0.5, 'b'},
    // 3D Fold: `b` uncovered at the right; "Unfold" covers `a` from the left.
    {48, 0, 0.5, 0.9, 0.5, 'b'}, {48, 0, 0.5, 0.05, 0.5, 'A'}, {48, 1, 0.5, 0.9, 0.5, 'a'}, {48, 1, 0.5, 0.05, 0.5, 'B'},
    // 3D Z-Stretch half-way: the strips have shrunk toward the centre, the nearest (the left one) to half its size.
    {50, 0, 0.5, 0.05, 0.05, 'b'}, {50, 0, 0.5, 0.95, 0.95, 'b'}, {50, 0, 0.5, 0.27, 0.5, 'a'},
    // 3D Window Grid: early panes turned to `b`, late ones still `a`.
    {51, 0, 0.25, 15.0 / 16, 11.0 / 12, 'a'}, {51, 0, 0.5, 1.0 / 16, 1.0 / 12, 'b'}, {51, 0, 0.5, 15.0 / 16, 11.0 / 12, 'a'},
    // 3D Folding Box: the right half edge-on, then the bottom-left quarter uncovered, then the packet at half its
    // size, its centre an eighth of the way up and to the left of the screen's.
    {52, 0, 0.1, 0.25, 0.5, 'a'}, {52, 0, 0.1, 0.9, 0.5, 'b'}, {52, 0, 0.3, 0.25, 0.8, 'b'},
    {52, 0, 0.3, 0.75, 0.5, 'b'}, {52, 0, 0.7, 0.44, 0.44, 'A'}, {52, 0, 0.7, 0.1, 0.1, 'b'},
    // Image Spiral half-way: the picture upright at half its size, a quarter of the width right of the centre.
    {55, 0, 0.5, 0.05, 0.5, 'b'}, {55, 0, 0.5, 0.5, 0.05, 'b'}, {55, 0, 0.5, 0.8, 0.5, 'a'},
    // 3D Flip: `a` turning, edge-on (black), `b` turning back.
    {58, 0, 0.25, 0.5, 0.5, 'a'}, {58, 0, 0.5, 0.5, 0.5, 'k'}, {58, 0, 0.75, 0.5, 0.5, 'b'},
    {58, 2, 0.25, 0.5, 0.5, 'a'}, {58, 3, 0.5, 0.5, 0.5, 'k'}, {58, 3, 0.75, 0.5, 0.5, 'b'},
    // 3D Bubbles: no bubble born yet (the first comes at 0.0034).
    {60, 1, 0.003, 0.5, 0.5, 'a'},
    // 3D Distort half-way: `a` and `b` in equal parts (flat pictures do not ripple).
    {61, 0, 0.5, 0.5, 0.5, 'm'},
    // Patch: tile 21 (column 5, row 2) lands first, at 0.2; tile 13 (column 5, row 1) last.
    {62, 0, 0.2, 11.0 / 16, 5.0 / 12, 'b'}, {62, 0, 0.2, 11.0 / 16, 3.0 / 12, 'a'},
    // 3D Shatter: the corner shards barely stirred half-way; the shards round the centre gone a little later.
    {64, 0, 0.5, 0.02, 0.03, 'a'}, {64, 0, 0.6, 0.5, 0.5, 'b'},
};

TEST(DesignedGlPictures, EachPictureShowsWhereDesigned) {
  const int w = 160, h = 120;
  ImagePtr a = zvtest::solid_frame(w, h, kA.y, kA.u, kA.v), b = zvtest::solid_frame(w, h, kB.y, kB.u, kB.v);
  ImagePtr out = zvtest::solid_frame(w, h, 0, 0, 0);
  const Yuv mixed = from_rgb(120, 100, 130);
  for (const Placed& c : kPlaced) {
    ASSERT_EQ(call(c.id, *out, a, b, c.style, c.p), 0);
    const int x = static_cast<int>(c.x * w), y = static_cast<int>(c.y * h);
    bool holds;
    if (c.shows == 'A' || c.shows == 'B') {
      holds = !near(*out, x, y, c.shows == 'A' ? kB : kA) && !near(*out, x, y, kBlack);
    } else {
      holds = near(*out, x, y, c.shows == 'a' ? kA : c.shows == 'b' ? kB : c.shows == 'k' ? kBlack : mixed);
    }
    EXPECT_TRUE(holds) << "id " << c.id << " style " << c.style << " p " << c.p << " at (" << x
                                        << ", " << y << ") should show " << c.shows;
  }
  for (int i = 0; i < 16; ++i) ZvFreeOpenGLObj();
}

TEST(DesignedGlPictures, PatchLandsTile21FirstAndTile13Last) {
  int perm[48];
  zv::patch_landing_order(perm);
  EXPECT_EQ(perm[0], 21);
  EXPECT_EQ(perm[47], 13);
}

}  // namespace
