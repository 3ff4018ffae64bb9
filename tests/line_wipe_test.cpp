// Line Based Wipe: where the edge lies on each plane, for each style.
#include <gtest/gtest.h>

#include <ostream>

#include "tests/test_support.h"
#include "wipes/line_wipe.h"

namespace {

using zvtest::ImagePtr;
using zvtest::sample;

// Columns [x0, x1) x rows [y0, y1) of a plane's common area show `b`.
struct Rect {
  int x0, x1, y0, y1;
};

struct LineCase {
  int style, width, height;
  double progress;
  Rect luma, chroma;
};

// Expected edges, worked out by hand from trunc(n * progress + 0.5) on each
// plane's own size (chroma edges may differ from luma by a sample).
const LineCase kCases[] = {
    {0, 720, 4, 0.5, {0, 360, 0, 4}, {0, 180, 0, 2}},
    {0, 10, 4, 0.25, {0, 3, 0, 4}, {0, 1, 0, 2}},
    {0, 6, 2, 0.25, {0, 2, 0, 2}, {0, 1, 0, 1}},  // 1.5 rounds up, 0.75 down
    {1, 10, 4, 0.25, {7, 10, 0, 4}, {4, 5, 0, 2}},
    {2, 4, 10, 0.25, {0, 4, 0, 3}, {0, 2, 0, 1}},
    {3, 4, 10, 0.25, {0, 4, 7, 10}, {0, 2, 4, 5}},
    {4, 20, 12, 0.5, {0, 10, 0, 6}, {0, 5, 0, 3}},
    {5, 10, 6, 0.25, {0, 3, 4, 6}, {0, 1, 2, 3}},
    {6, 10, 6, 0.25, {7, 10, 0, 2}, {4, 5, 0, 1}},
    {7, 10, 6, 0.25, {7, 10, 4, 6}, {4, 5, 2, 3}},
};

void PrintTo(const LineCase& c, std::ostream* os) {
  *os << "style " << c.style << " " << c.width << "x" << c.height << " at " << c.progress;
}

class LineWipeTest : public ::testing::TestWithParam<LineCase> {};

TEST_P(LineWipeTest, EdgeOnEachPlane) {
  const LineCase& c = GetParam();
  ImagePtr a = zvtest::random_frame(c.width, c.height, 1), b = zvtest::random_frame(c.width, c.height, 2);
  ImagePtr out = zvtest::random_frame(c.width, c.height, 3);
  TransitionParams params = zvtest::make_params(c.style, c.progress);
  ASSERT_EQ(zv::line_based_wipe(out.get(), a.get(), b.get(), &params), 0);
  for (int plane = 0; plane < 3; ++plane) {
    const Rect& r = plane == 0 ? c.luma : c.chroma;
    const int w = plane == 0 ? c.width : c.width / 2, h = plane == 0 ? c.height : c.height / 2;
    for (int y = 0; y < h; ++y) {
      for (int x = 0; x < w; ++x) {
        const bool in_b = x >= r.x0 && x < r.x1 && y >= r.y0 && y < r.y1;
        ASSERT_EQ(sample(*out, plane, x, y), sample(in_b ? *b : *a, plane, x, y))
            << "plane " << plane << " x " << x << " y " << y;
      }
    }
  }
}

INSTANTIATE_TEST_SUITE_P(Styles, LineWipeTest, ::testing::ValuesIn(kCases));

// Each frame is cut to the common area around its own centre.
TEST(LineWipe, FramesOfDifferentSizesMeetAtTheirCentres) {
  ImagePtr out = zvtest::random_frame(30, 20, 3), a = zvtest::random_frame(24, 14, 1);
  ImagePtr b = zvtest::random_frame(26, 16, 2);
  TransitionParams params = zvtest::make_params(0, 0.5);
  ASSERT_EQ(zv::line_based_wipe(out.get(), a.get(), b.get(), &params), 0);
  // Luma: 24 x 14 at (3, 3) in out, (0, 0) in a, (1, 1) in b; b left of column 12.
  for (int y = 0; y < 14; ++y) {
    for (int x = 0; x < 24; ++x) {
      ASSERT_EQ(sample(*out, 0, 3 + x, 3 + y), x < 12 ? sample(*b, 0, 1 + x, 1 + y) : sample(*a, 0, x, y));
    }
  }
  // Chroma: 12 x 7 at (1, 1) in out (15 x 10), (0, 0) in a and b; b left of column 6.
  for (int y = 0; y < 7; ++y) {
    for (int x = 0; x < 12; ++x) {
      ASSERT_EQ(sample(*out, 2, 1 + x, 1 + y), x < 6 ? sample(*b, 2, x, y) : sample(*a, 2, x, y));
    }
  }
}

}  // namespace
