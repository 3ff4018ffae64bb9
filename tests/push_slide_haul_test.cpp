// Push, Slide and Haul: travel and rounding, the areas each style copies, and
// Push's stride quirks on frames of different widths.
#include <gtest/gtest.h>

#include <functional>

#include "tests/test_support.h"
#include "wipes/push_slide_haul.h"

namespace {

using zvtest::sample;

constexpr int kFill = -1;  // an expected Push fill byte

// Every sample of a plane against `expected(x, y)`, which returns a sample value, or kFill for Push's black.
void expect_plane(const Image& out, int plane, const std::function<int(int, int)>& expected) {
  const int black = plane == 0 ? 16 : 128;
  auto filled = [&](int x, int y) { return expected(x, y) == kFill ? black : expected(x, y); };
  EXPECT_TRUE(zvtest::samples_are(out, plane, filled));
}

// The fast path; the contract tests hold the reference path to the same bytes, on sources narrower and wider than
// the output too.
class MoveWipeTest : public ::testing::Test {
 protected:
  zvtest::ImagePtr a_ = zvtest::random_frame(20, 12, 1), b_ = zvtest::random_frame(20, 12, 2);
  zvtest::ImagePtr out_ = zvtest::random_frame(20, 12, 3);

  // Frames of one size, or `b` of its own width.
  void resize(int w, int h, int b_width = 0) {
    a_ = zvtest::random_frame(w, h, 1);
    b_ = zvtest::random_frame(b_width ? b_width : w, h, 2);
    out_ = zvtest::random_frame(w, h, 3);
  }
  // Runs `op` with `style` at `progress`.
  void run_op(TransitionOp op, int style, double progress) {
    TransitionParams params = zvtest::make_params(style, progress);
    ASSERT_EQ(op(out_.get(), a_.get(), b_.get(), &params), 0);
  }
  int a(int p, int x, int y) const { return sample(*a_, p, x, y); }
  int b(int p, int x, int y) const { return sample(*b_, p, x, y); }
};

// W = 5 at progress 0.5: Push travels trunc(2.5) = 2 columns, Slide and Haul round to 3.
TEST_F(MoveWipeTest, PushTruncatesWhileSlideAndHaulRound) {
  resize(5, 2);
  run_op(zv::push_based_wipe, 0, 0.5);
  expect_plane(*out_, 0, [&](int x, int y) { return x < 2 ? b(0, 3 + x, y) : a(0, x - 2, y); });
  run_op(zv::slide_based_wipe, 0, 0.5);
  expect_plane(*out_, 0, [&](int x, int y) { return x < 3 ? b(0, 2 + x, y) : a(0, x, y); });
  run_op(zv::haul_based_wipe, 0, 0.5);
  expect_plane(*out_, 0, [&](int x, int y) { return x < 3 ? b(0, x, y) : a(0, x - 3, y); });
}

TEST_F(MoveWipeTest, SlideAndHaulAtAQuarterOn720Columns) {
  resize(720, 2);
  run_op(zv::slide_based_wipe, 0, 0.25);
  expect_plane(*out_, 0, [&](int x, int y) { return x < 180 ? b(0, 540 + x, y) : a(0, x, y); });
  run_op(zv::haul_based_wipe, 1, 0.25);
  expect_plane(*out_, 0, [&](int x, int y) { return x < 540 ? a(0, 180 + x, y) : b(0, x, y); });
}

// Push style 4 at 0.5: b's bottom-right quarter top left, a's top-left quarter
// bottom right, black in the other two (16 on Y, 128 on U and V).
TEST_F(MoveWipeTest, PushCornerFillsTheUncoveredQuarters) {
  run_op(zv::push_based_wipe, 4, 0.5);
  for (int p = 0; p < 3; ++p) {
    const int w = p == 0 ? 10 : 5, h = p == 0 ? 6 : 3;  // half the plane
    expect_plane(*out_, p, [&](int x, int y) {
      if (x < w && y < h) return b(p, x + w, y + h);
      if (x >= w && y >= h) return a(p, x - w, y - h);
      return kFill;
    });
  }
}

// The other corner direction of each transition, 20 x 12 at 0.25 (luma travel
// 5 x 3, chroma 2 x 1 for Push, 3 x 2 rounded for Slide and Haul).
TEST_F(MoveWipeTest, CornerStylesCopyTheTabledAreas) {
  run_op(zv::push_based_wipe, 7, 0.25);
  expect_plane(*out_, 0, [&](int x, int y) {
    if (y < 9) return x < 15 ? a(0, x + 5, y + 3) : kFill;
    return x < 15 ? kFill : b(0, x - 15, y - 9);
  });
  expect_plane(*out_, 1, [&](int x, int y) {
    if (y < 5) return x < 8 ? a(1, x + 2, y + 1) : kFill;
    return x < 8 ? kFill : b(1, x - 8, y - 5);
  });
  run_op(zv::slide_based_wipe, 5, 0.25);
  expect_plane(*out_, 0, [&](int x, int y) { return x < 5 && y >= 9 ? b(0, x + 15, y - 9) : a(0, x, y); });
  expect_plane(*out_, 2, [&](int x, int y) { return x < 3 && y >= 4 ? b(2, x + 7, y - 4) : a(2, x, y); });
  run_op(zv::haul_based_wipe, 6, 0.25);
  expect_plane(*out_, 0, [&](int x, int y) { return x < 15 && y >= 3 ? a(0, x + 5, y - 3) : b(0, x, y); });
  expect_plane(*out_, 1, [&](int x, int y) { return x < 7 && y >= 2 ? a(1, x + 3, y - 2) : b(1, x, y); });
}

// Push styles 2 and 3 write their first k rows a first-source stride apart. With `b` narrower than `out` those rows
// land closer together, partly in out's border columns; the rest follows at out's own stride.
TEST_F(MoveWipeTest, PushVerticalStepsOutputByTheFirstSourcesStride) {
  resize(12, 6, 8);
  std::vector<uint8_t> expected = zvtest::plane_bytes(*out_, 0);
  run_op(zv::push_based_wipe, 2, 0.5);
  // W = 8, dy = 3; out and a centred at column 2, b at 0. b's rows 3 to 5 go
  // to out offsets 2, 10 and 18, then a's rows 0 to 2 to offsets 26, 38, 50.
  const int offsets[] = {2, 10, 18, 26, 38, 50};
  for (int i = 0; i < 6; ++i) {
    for (int x = 0; x < 8; ++x) expected[offsets[i] + x] = i < 3 ? b(0, x, 3 + i) : a(0, 2 + x, i - 3);
  }
  EXPECT_EQ(zvtest::plane_bytes(*out_, 0), expected);
}

// With `b` wider than `out` the rows spread out and the last ones would run
// past the end of out's plane: they are cut off there.
TEST_F(MoveWipeTest, PushVerticalStopsAtTheEndOfTheOutputPlane) {
  resize(8, 6, 12);
  std::vector<uint8_t> y_plane = zvtest::plane_bytes(*out_, 0), u_plane = zvtest::plane_bytes(*out_, 1);
  run_op(zv::push_based_wipe, 2, 0.5);
  // Luma: W = 8, dy = 3, b centred at column 2, stride 12; 48 bytes in out.
  const int y_offsets[] = {0, 12, 24, 36, 44};
  for (int i = 0; i < 5; ++i) {
    for (int x = 0; x < 8 && y_offsets[i] + x < 48; ++x) {
      y_plane[y_offsets[i] + x] = i < 3 ? b(0, 2 + x, 3 + i) : a(0, x, i - 3);
    }
  }
  EXPECT_EQ(zvtest::plane_bytes(*out_, 0), y_plane);
  // Chroma: W = 4, H = 3, dy = 1, b centred at column 1, stride 6; 12 bytes.
  const int u_offsets[] = {0, 6, 10};
  for (int i = 0; i < 3; ++i) {
    for (int x = 0; x < 4 && u_offsets[i] + x < 12; ++x) {
      u_plane[u_offsets[i] + x] = i == 0 ? b(1, 1 + x, 2) : a(1, x, i - 1);
    }
  }
  EXPECT_EQ(zvtest::plane_bytes(*out_, 1), u_plane);
}

// Push styles 6 and 7 step through a's rows with b's stride.
TEST_F(MoveWipeTest, PushRightCornersStepThroughAWithBsStride) {
  resize(8, 6, 12);
  run_op(zv::push_based_wipe, 6, 0.5);
  // W = 8, dx = 4, dy = 3, b centred at column 2. a's rows start at offset 4
  // and step by 12: a(4..7, 0), a(0..3, 2), a(4..7, 3).
  const int a_offsets[] = {4, 16, 28};
  expect_plane(*out_, 0, [&](int x, int y) {
    if (y < 3) return x < 4 ? kFill : b(0, 2 + x - 4, 3 + y);
    if (x >= 4) return kFill;
    const int at = a_offsets[y - 3] + x;
    return a(0, at % 8, at / 8);
  });
}

// Where b's stride would carry style 7 past the end of a's plane, the rest of the row is black instead.
TEST_F(MoveWipeTest, PushRightCornersFillWherePastTheEndOfA) {
  resize(8, 4, 10);
  run_op(zv::push_based_wipe, 7, 0.5);
  // W = 8, dx = 4, dy = 2. a's rows start at offset 2 * 8 + 4 = 20 and step by
  // 10: a(4..7, 2), then offsets 30, 31 (a(6..7, 3)) and 32, 33 past the end.
  expect_plane(*out_, 0, [&](int x, int y) {
    if (y == 0) return x < 4 ? a(0, 4 + x, 2) : kFill;
    if (y == 1) return x < 2 ? a(0, 6 + x, 3) : kFill;
    return x < 4 ? kFill : b(0, 1 + x - 4, y - 2);
  });
}

}  // namespace
