// 3D Cube and 3D Drive Off pictures: what each must show, with a tolerance
// fit for rasterisation, and golden frames that pin the software rasteriser's
// output within one level.
#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <string>

#include "frame/registration.h"
#include "gl/gl_cache.h"
#include "imaging/yuv_rgb.h"
#include "tests/test_support.h"

namespace {

using zvtest::ImagePtr;

constexpr int kDriveOff = 49;
constexpr int kCube = 57;

struct Yuv {
  int y, u, v;
};
// Colours inside the RGB gamut, so that they survive the trip through RGB.
Yuv from_rgb(int r, int g, int b) { return {zv::rgb_to_y(r, g, b), zv::rgb_to_u(r, g, b), zv::rgb_to_v(r, g, b)}; }
const Yuv kA = from_rgb(200, 80, 40);
const Yuv kB = from_rgb(40, 120, 220);
const Yuv kBlack = from_rgb(0, 0, 0);

// Renders `positions` in order on the calling thread with fresh renderers,
// returning the last output.
ImagePtr render(int id, int width, int height, std::initializer_list<double> positions) {
  ImagePtr a = zvtest::solid_frame(width, height, kA.y, kA.u, kA.v);
  ImagePtr b = zvtest::solid_frame(width, height, kB.y, kB.u, kB.v);
  ImagePtr out = zvtest::solid_frame(width, height, 0, 0, 0);
  for (double p : positions) {
    TransitionParams params = zvtest::make_params(0, p);
    EXPECT_EQ(zv::transition_entry(id)(out.get(), a.get(), b.get(), &params), 0);
  }
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

// Golden frames: smooth pictures (so that a one-texel shift moves a sample
// by about a level), drawn in order on one renderer per effect. To regenerate
// after a deliberate change:
//   ZV_UPDATE_GOLDEN=1 build/bin/zv_tests --gtest_filter='GlGolden*'
ImagePtr smooth_frame(int width, int height, int phase) {
  ImagePtr image = zvtest::solid_frame(width, height, 0, 0, 0);
  for (int y = 0; y < height; ++y) {
    for (int x = 0; x < width; ++x) image->get_Y()[y * width + x] = static_cast<uint8_t>(40 + 2 * x + y + phase);
  }
  for (int y = 0; y < height / 2; ++y) {
    for (int x = 0; x < width / 2; ++x) {
      image->get_U()[y * (width / 2) + x] = static_cast<uint8_t>(90 + 2 * x + phase);
      image->get_V()[y * (width / 2) + x] = static_cast<uint8_t>(160 - 2 * y - phase);
    }
  }
  return image;
}

std::string golden_path(const std::string& name) { return std::string(ZV_TEST_DATA_DIR "/") + name; }

void check_golden(int id, const std::string& name) {
  const int w = 64, h = 48;
  ImagePtr a = smooth_frame(w, h, 0), b = smooth_frame(w, h, 30);
  ImagePtr out = zvtest::solid_frame(w, h, 0, 0, 0);
  std::vector<uint8_t> frames;
  for (double p : {0.0, 0.3, 0.6, 0.85, 0.97}) {
    TransitionParams params = zvtest::make_params(0, p);
    ASSERT_EQ(zv::transition_entry(id)(out.get(), a.get(), b.get(), &params), 0);
    std::vector<uint8_t> bytes = zvtest::frame_bytes(*out);
    frames.insert(frames.end(), bytes.begin(), bytes.end());
  }
  ZvFreeOpenGLObj();
  const std::string path = golden_path(name);
  if (std::getenv("ZV_UPDATE_GOLDEN")) {
    std::ofstream(path, std::ios::binary).write(reinterpret_cast<const char*>(frames.data()), frames.size());
  }
  std::ifstream file(path, std::ios::binary);
  std::vector<uint8_t> golden((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
  ASSERT_EQ(golden.size(), frames.size()) << path;
  int off = 0;
  for (size_t i = 0; i < frames.size(); ++i) off += std::abs(frames[i] - golden[i]) > 1;
  EXPECT_EQ(off, 0) << "samples more than one level from " << path;
}

TEST(GlGolden, Cube) { check_golden(kCube, "cube_64x48.yuv"); }
TEST(GlGolden, DriveOff) { check_golden(kDriveOff, "drive_off_64x48.yuv"); }

}  // namespace
