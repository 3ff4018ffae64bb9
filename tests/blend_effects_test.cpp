// Blend, Stretch In, Mesh and X Ray: the exact samples of their formulas.
#include <gtest/gtest.h>

#include <string>

#include "frame/registration.h"
#include "tests/test_support.h"

namespace {

using zvtest::ImagePtr;

constexpr int kStretchIn = 40, kMesh = 41, kXRay = 53, kBlend = 66;

int run(int id, Image* out, Image* a, Image* b, int style, double position) {
  TransitionParams params = zvtest::make_params(style, position);
  return zv::transition_entry(id)(out, a, b, &params);
}

struct MixCase {
  double position;
  uint8_t a, b, expected;
};

class BlendMix : public ::testing::TestWithParam<MixCase> {};

TEST_P(BlendMix, SquaredWeightWithoutRounding) {
  const MixCase c = GetParam();
  ImagePtr a = zvtest::solid_frame(18, 4, c.a, c.a, c.a), b = zvtest::solid_frame(18, 4, c.b, c.b, c.b);
  ImagePtr out = zvtest::random_frame(18, 4, 3);
  run(kBlend, out.get(), a.get(), b.get(), 0, c.position);
  EXPECT_EQ(zvtest::frame_bytes(*out), std::vector<uint8_t>(out->plane_size(0) * 3 / 2, c.expected));
}

INSTANTIATE_TEST_SUITE_P(Weights, BlendMix,
                         ::testing::Values(MixCase{0.5, 200, 40, 160},  // alpha 64
                                           MixCase{0.1, 255, 0, 253},   // alpha t(2.56) = 2
                                           MixCase{0.99, 0, 255, 249}));  // alpha t(250.9) = 250

// Luma row r of a w x h frame holds base + step x (r x w + col): every sample
// tells where it was read from.
ImagePtr ramp_frame(int w, int h, int step) {
  ImagePtr f = zvtest::solid_frame(w, h, 0, 128, 128);
  for (int i = 0; i < w * h; ++i) f->get_Y()[i] = static_cast<uint8_t>(step * i);
  return f;
}

TEST(StretchIn, LeftAnchorSpreadsTheFirstColumnsOfB) {
  // p = 0.5 on 16 columns: f = 0.5, alpha 64; column x reads b's column t(x / 2).
  ImagePtr a = zvtest::solid_frame(16, 2, 0, 128, 128), b = ramp_frame(16, 2, 4);
  ImagePtr out = zvtest::random_frame(16, 2, 3);
  run(kStretchIn, out.get(), a.get(), b.get(), 1, 0.5);
  for (int row = 0; row < 2; ++row) {
    for (int x = 0; x < 16; ++x) {
      EXPECT_EQ(zvtest::sample(*out, 0, x, row), (4 * (row * 16 + x / 2) * 64) >> 8) << x << "," << row;
    }
  }
}

TEST(StretchIn, RightAnchorReadsOnePastTheRowButNeverPastThePlane) {
  // p = 0.9: f = 0.9 and alpha t(207.36) = 207. The last column reads B(W):
  // the next row's first sample, and on the last row the plane's last sample.
  ImagePtr a = zvtest::solid_frame(8, 4, 0, 128, 128), b = ramp_frame(8, 4, 7);
  ImagePtr out = zvtest::random_frame(8, 4, 3);
  run(kStretchIn, out.get(), a.get(), b.get(), 0, 0.9);
  for (int row = 0; row < 4; ++row) {
    const int read = row < 3 ? (row + 1) * 8 : 31;
    EXPECT_EQ(zvtest::sample(*out, 0, 7, row), (7 * read * 207) >> 8) << "row " << row;
    // Column 8 - i reads B(8 - t(0.9 i)); for i = 2 that is B(7).
    EXPECT_EQ(zvtest::sample(*out, 0, 6, row), (7 * (row * 8 + 7) * 207) >> 8) << "row " << row;
  }
}

TEST(Mesh, EvenRowsMoveLeftAndOddRowsRight) {
  ImagePtr a = zvtest::random_frame(16, 4, 1), b = zvtest::random_frame(16, 4, 2), out = zvtest::random_frame(16, 4, 3);
  run(kMesh, out.get(), a.get(), b.get(), 0, 0.5);  // k = 8 in luma, 4 in chroma
  for (int plane = 0; plane < 3; ++plane) {
    const int w = plane == 0 ? 16 : 8, k = w / 2;
    for (int row = 0; row < (plane == 0 ? 4 : 2); ++row) {
      for (int x = 0; x < w; ++x) {
        uint8_t expected;
        if (row % 2 == 0) {
          expected = x < w - k ? zvtest::sample(*a, plane, x + k, row) : zvtest::sample(*b, plane, x, row);
        } else {
          expected = x < k ? zvtest::sample(*b, plane, x, row) : zvtest::sample(*a, plane, x - k, row);
        }
        ASSERT_EQ(zvtest::sample(*out, plane, x, row), expected) << "plane " << plane << " at " << x << "," << row;
      }
    }
  }
}

struct XRayCase {
  double position;
  uint8_t a, b, luma, chroma;
};

class XRayPhases : public ::testing::TestWithParam<XRayCase> {};

TEST_P(XRayPhases, LumaFollowsThePhaseAndChromaCutsHalfWay) {
  const XRayCase c = GetParam();
  ImagePtr a = zvtest::solid_frame(6, 4, c.a, 60, 70), b = zvtest::solid_frame(6, 4, c.b, 160, 170);
  ImagePtr out = zvtest::random_frame(6, 4, 3);
  run(kXRay, out.get(), a.get(), b.get(), 0, c.position);
  EXPECT_EQ(zvtest::plane_bytes(*out, 0), std::vector<uint8_t>(24, c.luma));
  EXPECT_EQ(zvtest::plane_bytes(*out, 1), std::vector<uint8_t>(6, c.chroma));
  EXPECT_EQ(zvtest::plane_bytes(*out, 2), std::vector<uint8_t>(6, c.chroma + 10));
}

INSTANTIATE_TEST_SUITE_P(
    Phases, XRayPhases,
    ::testing::Values(XRayCase{0.1, 0, 99, 64, 60},      // dark rises by t(64)
                      XRayCase{0.1, 255, 99, 191, 60},   // bright falls by 64
                      XRayCase{0.3, 10, 99, 219, 60},    // c = 76 - 10, plus t(153.6)
                      XRayCase{0.3, 200, 99, 29, 60},    // c = -124 counts as below 128
                      XRayCase{0.3, 0, 99, 229, 60},
                      XRayCase{0.499, 0, 99, 255, 60},
                      XRayCase{0.5, 153, 99, 255, 160},  // 408 - A; chroma switches at 0.5
                      XRayCase{0.5, 200, 99, 208, 160},
                      XRayCase{0.6, 99, 3, 253, 160},    // B + 250
                      XRayCase{0.6, 99, 5, 255, 160},
                      XRayCase{0.933, 99, 100, 96, 160},  // d = 254.745: the dip of 4
                      XRayCase{0.933, 99, 2, 0, 160},
                      XRayCase{0.94, 99, 100, 100, 160},  // d >= 255: the snap to B
                      XRayCase{1.0, 99, 100, 100, 160}));

}  // namespace
