// How long each transition is seen to move: 40 frames between two stills, at the positions `zvtran render
// --duration 1 --fps 40` gives them. A frame is between when the mean absolute difference of its samples from `a`
// and from `b` are both at least one level. The stills are bars and figures like the test pictures users render.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <string>
#include <vector>

#include "frame/zv_transition.h"
#include "gl/gl_release.h"
#include "imaging/yuv_rgb.h"
#include "tests/test_support.h"

namespace {

using zvtest::ImagePtr;

constexpr int kWidth = 320, kHeight = 240, kFrames = 40;

struct Rgb {
  int r, g, b;
};

// A still of flat 2 x 2 blocks of RGB colours inside the gamut, so that the 3D effects' trip through RGB keeps it.
template <typename Colour>
ImagePtr still(Colour colour) {
  ImagePtr image = zvtest::solid_frame(kWidth, kHeight, 0, 0, 0);
  for (int y = 0; y < kHeight; ++y) {
    for (int x = 0; x < kWidth; ++x) {
      const Rgb c = colour(x & ~1, y & ~1);
      image->get_Y()[y * kWidth + x] = static_cast<uint8_t>(zv::rgb_to_y(c.r, c.g, c.b));
      image->get_U()[y / 2 * (kWidth / 2) + x / 2] = static_cast<uint8_t>(zv::rgb_to_u(c.r, c.g, c.b));
      image->get_V()[y / 2 * (kWidth / 2) + x / 2] = static_cast<uint8_t>(zv::rgb_to_v(c.r, c.g, c.b));
    }
  }
  return image;
}

// `a`: six saturated bars crossed by a band of hues running down to the right, with a box of orange figures at the
// top left and a checkered patch.
ImagePtr busy_still() {
  static const Rgb kBars[6] = {{255, 0, 0}, {0, 255, 0}, {255, 255, 0}, {0, 0, 255}, {255, 0, 255}, {0, 255, 255}};
  return still([](int x, int y) {
    if (x < kWidth * 5 / 16 && y < kHeight * 3 / 20) {
      return (y % 12 > 3 && (x / 4 + y / 2) % 3 == 0) ? Rgb{255, 128, 0} : Rgb{0, 0, 0};  // orange figures
    }
    if (x >= kWidth * 5 / 8 && x < kWidth * 7 / 8 && y >= kHeight * 5 / 8 && y < kHeight * 13 / 16) {
      return ((x / 8 + y / 8) % 2) ? Rgb{40, 80, 160} : Rgb{120, 160, 120};  // a checkered patch
    }
    if (std::abs(y - kHeight / 6 - x / 4) < 12) return Rgb{255 - x * 255 / kWidth, x * 255 / kWidth, 128};
    return kBars[x * 6 / kWidth];
  });
}

// `b`: seven bars at three quarters over two thirds of the height, a row of them reversed, then dark blue, white,
// purple and black.
ImagePtr bars_still() {
  static const Rgb kBars[7] = {{191, 191, 191}, {191, 191, 0}, {0, 191, 191}, {0, 191, 0},
                               {191, 0, 191},   {191, 0, 0},   {0, 0, 191}};
  static const Rgb kFoot[4] = {{0, 33, 76}, {235, 235, 235}, {50, 0, 106}, {16, 16, 16}};
  return still([](int x, int y) {
    if (y < kHeight * 2 / 3) return kBars[x * 7 / kWidth];
    if (y < kHeight * 3 / 4) return (x * 7 / kWidth) % 2 ? Rgb{16, 16, 16} : kBars[6 - x * 7 / kWidth];
    return kFoot[x * 4 / kWidth];
  });
}

// Whether the mean absolute difference over all Y, U and V samples is at least one level.
bool differs(const std::vector<uint8_t>& x, const std::vector<uint8_t>& y) {
  long sum = 0;
  for (size_t i = 0; i < x.size(); ++i) sum += std::abs(x[i] - y[i]);
  return sum >= static_cast<long>(x.size());
}

// The transitions whose drawing hosts already know to the sample are never re-timed: each keeps what it reaches in
// its least moving style, and some of them neither start on `a` nor end on `b`. Every other one is between in at
// least 80 % of the frames, starting on `a` and ending on `b`.
struct Fixed {
  int id, between;
};
const Fixed kFixed[] = {{1, 33},  {2, 38},  {3, 32},  {4, 32},  {5, 33},  {7, 37},  {9, 38},  {10, 37}, {13, 33},
                        {14, 32}, {15, 38}, {16, 40}, {17, 38}, {36, 38}, {37, 38}, {38, 38}, {39, 33}, {40, 34},
                        {41, 38}, {44, 34}, {46, 33}, {49, 37}, {53, 36}, {57, 39}, {59, 38}, {66, 34}};

const Fixed* fixed_timing(int id) {
  for (const Fixed& f : kFixed) {
    if (f.id == id) return &f;
  }
  return nullptr;
}

class MotionTest : public ::testing::TestWithParam<int> {};

TEST_P(MotionTest, MovesForMostOfItsTimeFromAToB) {
  const int id = GetParam();
  const Fixed* fixed = fixed_timing(id);
  const ImagePtr a = busy_still(), b = bars_still();
  const std::vector<uint8_t> a_bytes = zvtest::frame_bytes(*a), b_bytes = zvtest::frame_bytes(*b);
  ImagePtr out = zvtest::solid_frame(kWidth, kHeight, 0, 0, 0);
  for (int style = 0; style < std::max(1, zvTranGetStyleCount(id)); ++style) {
    int between = 0;
    std::string seen;  // per frame: 'a', 'b' or '-' (between), for the messages
    for (int i = 0; i < kFrames; ++i) {
      zvtest::reset_random_state();
      const double position = i == kFrames - 1 ? 1.0 : 1.0 * i / (kFrames - 1);
      ASSERT_LE(zvtest::run_transition(id, out.get(), a.get(), b.get(), style, position), 1) << "style " << style;
      const std::vector<uint8_t> bytes = zvtest::frame_bytes(*out);
      const bool not_a = differs(bytes, a_bytes), not_b = differs(bytes, b_bytes);
      between += not_a && not_b;
      seen += !not_a ? 'a' : !not_b ? 'b' : '-';
    }
    EXPECT_GE(between, fixed ? fixed->between : kFrames * 8 / 10) << "style " << style << ": " << seen;
    if (!fixed) {
      EXPECT_EQ(seen.front(), 'a') << "style " << style << ": " << seen;
      EXPECT_EQ(seen.back(), 'b') << "style " << style << ": " << seen;
    }
  }
  ZvFreeOpenGLObj();
}

INSTANTIATE_TEST_SUITE_P(Ids, MotionTest, ::testing::Range(1, 67),
                         [](const ::testing::TestParamInfo<int>& info) { return "Id" + std::to_string(info.param); });

}  // namespace
