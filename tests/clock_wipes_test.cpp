// Clock Based Wipe and Center Rotate Wipe: where the hands stand on 720 x 576.
#include <cstdlib>

#include "tests/wipe_sources.h"

namespace {

using zvtest::From;
using zvtest::from_a;
using zvtest::from_b;
using zvtest::SourceCase;

constexpr int kClock = 6, kCenterRotate = 8;

// `b` where the test holds, `a` elsewhere, both in place.
std::function<From(int, int)> b_where(std::function<bool(int, int)> shows_b) {
  return [shows_b](int x, int y) { return shows_b(x, y) ? from_b(x, y) : from_a(x, y); };
}

class ClockWipesTest : public ::testing::TestWithParam<SourceCase> {};

TEST_P(ClockWipesTest, SamplesComeFromTheSweptSide) { zvtest::expect_sources(GetParam()); }

const SourceCase kCases[] = {
    {"ClockwiseQuarterIsTopRight", kClock, 1, 0.25, 720, 576, 0,
     b_where([](int x, int y) { return x >= 360 && y < 288; })},
    {"ClockwiseQuarterChroma", kClock, 1, 0.25, 720, 576, 1, b_where([](int x, int y) { return x >= 180 && y < 144; })},
    {"AnticlockwiseQuarterIsTopLeft", kClock, 0, 0.25, 720, 576, 0,
     b_where([](int x, int y) { return x < 360 && y < 288; })},
    {"DoubleClockwiseHalf", kClock, 3, 0.5, 720, 576, 0, b_where([](int x, int y) { return (x >= 360) == (y < 288); })},
    // Quarter hands at 45 degrees: row 100 (dy = -187.5).
    {"FourTimesClockwiseHalfRow100", kClock, 5, 0.5, 720, 576, 0,
     [](int x, int y) {
       if (y != 100) return zvtest::kUnchecked;
       return x <= 171 || (x >= 360 && x <= 546) ? from_b(x, y) : from_a(x, y);
     }},
    {"SingleOpenHalfIsTopHalf", kClock, 6, 0.5, 720, 576, 0, b_where([](int, int y) { return y < 288; })},
    // Odd sizes put sample centres on the centre lines: the centre column is
    // inside both fans, the centre row outside, the 45-degree samples outside
    // (the fans stop just short of 45 degrees). The centre itself is not checked.
    {"DoubleOpenHalfOddSize", kClock, 7, 0.5, 9, 7, 0,
     [](int x, int y) {
       const int dx = std::abs(2 * x + 1 - 9), dy = std::abs(2 * y + 1 - 7);
       if (dx == 0 && dy == 0) return zvtest::kUnchecked;
       return dx < dy ? from_b(x, y) : from_a(x, y);
     }},
    {"CenterRotateFromLeftHalf", kCenterRotate, 0, 0.5, 720, 576, 0, b_where([](int, int y) { return y >= 288; })},
    {"CenterRotateFromBottomQuarter", kCenterRotate, 2, 0.25, 720, 576, 0,
     [](int x, int y) {
       if (y == 476) return x >= 460 ? from_b(x, y) : from_a(x, y);
       if (y == 376) return x >= 560 ? from_b(x, y) : from_a(x, y);
       return y == 0 ? from_a(x, y) : zvtest::kUnchecked;
     }},
    {"CenterRotateFromTopHalf", kCenterRotate, 7, 0.5, 720, 576, 0, b_where([](int x, int) { return x >= 360; })},
    {"CenterRotateFromRightHalf", kCenterRotate, 5, 0.5, 720, 576, 0, b_where([](int, int y) { return y >= 288; })},
};

INSTANTIATE_TEST_SUITE_P(Hands, ClockWipesTest, ::testing::ValuesIn(kCases), zvtest::source_case_name);

}  // namespace
