// Where each output sample of a wipe comes from. A case names one call and, for every sample of one plane (Y, or U and
// V), the picture and position it must show; the pictures are random, so a sample taken from the wrong place shows.
// Then the helpers that lay out spirals and diagonals.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <functional>
#include <string>
#include <vector>

#include "frame/rows.h"
#include "tests/test_support.h"
#include "wipes/build_wipes.h"
#include "wipes/wipe_pieces.h"

namespace {

using zvtest::ImagePtr;
using zvtest::sample;

// 'a' or 'b' and the position in that picture's plane; 'o': out's own sample
// before the call; 'e': either picture at (x, y); 0: not checked.
struct From { char pic; int x, y; };
From from_a(int x, int y) { return {'a', x, y}; }
From from_b(int x, int y) { return {'b', x, y}; }
constexpr From kUnchecked{0, 0, 0};
using Where = std::function<From(int x, int y)>;

struct SourceCase {
  std::string name;
  int id, style;
  double position;
  int width, height;  // of all three frames
  int plane;          // 0 Y, 1 U and V
  Where from;
  int param1 = 0;
  double param2 = 0.0;
};

constexpr int kLine = 1, kRegion = 5, kClock = 6, kRotate = 7, kCenterRotate = 8, kCross = 9, kBlind = 10,
              kBuild = 11, kSpiral = 12, kWipe = 19, kSplit = 20, kCenterSplit = 21, kDoubleSlide = 22,
              kTriangleRotate = 23, kTrianglePush = 24, kTriangleSlide = 25, kSplitBack = 30, kSingleDoor = 31,
              kMultiDoor = 32;

void PrintTo(const SourceCase& c, std::ostream* os) { *os << c.name; }

class WipeSources : public ::testing::TestWithParam<SourceCase> {};

TEST_P(WipeSources, EverySampleComesFromItsPlace) {
  const SourceCase& c = GetParam();
  ImagePtr a = zvtest::random_frame(c.width, c.height, 1), b = zvtest::random_frame(c.width, c.height, 2);
  ImagePtr out = zvtest::random_frame(c.width, c.height, 3);
  const ImagePtr before = zvtest::random_frame(c.width, c.height, 3);
  ASSERT_EQ(zvtest::run_transition(c.id, out.get(), a.get(), b.get(), c.style, c.position, c.param1, c.param2), 0);
  const int w = c.plane ? c.width / 2 : c.width, h = c.plane ? c.height / 2 : c.height;
  for (int plane = c.plane; plane <= 2 * c.plane; ++plane) {
    for (int y = 0; y < h; ++y) {
      for (int x = 0; x < w; ++x) {
        const From f = c.from(x, y);
        const uint8_t got = sample(*out, plane, x, y);
        if (f.pic == 'e') {
          ASSERT_TRUE(got == sample(*a, plane, x, y) || got == sample(*b, plane, x, y)) << "x " << x << " y " << y;
        } else if (f.pic) {
          const Image& pic = f.pic == 'a' ? *a : f.pic == 'b' ? *b : *before;
          ASSERT_EQ(got, sample(pic, plane, f.x, f.y))
              << "plane " << plane << " x " << x << " y " << y << " expected " << f.pic << "(" << f.x << ", " << f.y
              << ")";
        }
      }
    }
  }
}

std::string case_name(const ::testing::TestParamInfo<SourceCase>& info) { return info.param.name; }

// `b` where the test holds, `a` elsewhere, both in place.
Where b_where(std::function<bool(int, int)> shows_b) {
  return [shows_b](int x, int y) { return shows_b(x, y) ? from_b(x, y) : from_a(x, y); };
}
// Row `row` only: `b` where the test holds, `a` elsewhere, in place.
Where b_where_on_row(int row, std::function<bool(int)> shows_b) {
  return [=](int x, int y) { return y != row ? kUnchecked : shows_b(x) ? from_b(x, y) : from_a(x, y); };
}
// A picture of the plane: 'a', 'b', '.' (out kept its sample), in place; rows past the list or '-' are not checked.
Where map(std::vector<std::string> rows) {
  return [rows](int x, int y) {
    const char c = y < static_cast<int>(rows.size()) && x < static_cast<int>(rows[y].size()) ? rows[y][x] : '-';
    return c == '-' ? kUnchecked : From{c == '.' ? 'o' : c, x, y};
  };
}
// Only the listed samples are checked.
struct Spot { int x, y; From from; };
Where spots(std::vector<Spot> list) {
  return [list](int x, int y) {
    for (const Spot& s : list) {
      if (s.x == x && s.y == y) return s.from;
    }
    return kUnchecked;
  };
}

// A case on 720 x 576 frames, for the luma plane.
SourceCase pal(std::string name, int id, int style, double position, Where from, int param1 = 0, double param2 = 0.0) {
  return {std::move(name), id, style, position, 720, 576, 0, std::move(from), param1, param2};
}

// Line Based Wipe: columns [x0, x1) x rows [y0, y1) of each plane show `b`, worked out by hand from
// trunc(n * progress + 0.5) on each plane's own size (chroma edges may differ from luma by a sample).
std::vector<SourceCase> line_cases() {
  struct Row { int style, width, height; double progress; int luma[4], chroma[4]; };
  const Row rows[] = {
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
  std::vector<SourceCase> cases;
  for (const Row& r : rows) {
    for (int plane : {0, 1}) {
      const int* rect = plane ? r.chroma : r.luma;
      const int x0 = rect[0], x1 = rect[1], y0 = rect[2], y1 = rect[3];
      cases.push_back({"Style" + std::to_string(r.style) + "_" + std::to_string(r.width) + "x" +
                           std::to_string(r.height) + (plane ? "_chroma" : "_luma"),
                       kLine, r.style, r.progress, r.width, r.height, plane,
                       b_where([=](int x, int y) { return x >= x0 && x < x1 && y >= y0 && y < y1; })});
    }
  }
  return cases;
}
INSTANTIATE_TEST_SUITE_P(Line, WipeSources, ::testing::ValuesIn(line_cases()), case_name);

// Region Based Wipe: the shapes' boundaries, the samples odd areas leave
// unwritten, the closing circle's extra sample and the diamond's lopsided rows.
const SourceCase kRegionCases[] = {
    {"RectangleOpenHalf", kRegion, 0, 0.5, 8, 6, 0,
     map({"aaaaaaaa", "aabbbbaa", "aabbbbaa", "aabbbbaa", "aaaaaaaa", "aaaaaaaa"})},
    // rw = 4, rh = 3: margins rw / 2 on the left and top, the rest on the right and bottom.
    {"RectangleCloseOddArea", kRegion, 1, 0.5, 7, 5, 0, map({"bbbbbbb", "bbaaabb", "bbaaabb", "bbbbbbb", "bbbbbbb"})},
    // The round rows cover 2 * (W / 2) columns and 2 * (H / 2) rows.
    {"RoundOpenEndOddArea", kRegion, 2, 1.0, 7, 5, 0, map({"bbbbbb.", "bbbbbb.", "bbbbbb.", "bbbbbb.", "......."})},
    {"RoundOpenStartOddArea", kRegion, 2, 0.0, 7, 5, 0, map({"aaaaaaa", "aaaaaaa", "aaaaaaa", "aaaaaaa", "......."})},
    {"RoundOpenHalf", kRegion, 2, 0.5, 16, 8, 0,
     map({"aaaaaaaaaaaaaaaa", "aaaaabbbbbbaaaaa", "aaaaabbbbbbaaaaa", "aaaabbbbbbbbaaaa", "aaaabbbbbbbbaaaa",
          "aaaabbbbbbbbaaaa", "aaaaabbbbbbaaaaa", "aaaaabbbbbbaaaaa"})},
    // The closing circle runs through the corners of a 15 x 7 rectangle: at
    // the start the extreme corners already show b.
    {"RoundCloseStartCorners", kRegion, 3, 0.0, 16, 8, 0,
     map({"baaaaaaaaaaaaaab", "baaaaaaaaaaaaaab", "aaaaaaaaaaaaaaaa", "aaaaaaaaaaaaaaaa", "aaaaaaaaaaaaaaaa",
          "aaaaaaaaaaaaaaaa", "aaaaaaaaaaaaaaaa", "baaaaaaaaaaaaaab"})},
    {"FourPartsOpenHalf", kRegion, 4, 0.5, 8, 6, 0,
     map({"aabbbbaa", "aabbbbaa", "bbbbbbbb", "bbbbbbbb", "aabbbbaa", "aabbbbaa"})},
    // k = 3 > W / 2 and m = 2 > H / 2: the corner blocks meet and cover everything.
    {"FourPartsOpenStartOverlapping", kRegion, 4, 0.0, 5, 3, 0, map({"aaaaa", "aaaaa", "aaaaa"})},
    {"FourPartsCloseEndOverlapping", kRegion, 5, 1.0, 5, 3, 0, map({"bbbbb", "bbbbb", "bbbbb"})},
    // Row 4 is one step wider than the mirror of row 3.
    {"DiamondOpenQuarter", kRegion, 6, 0.25, 8, 8, 0,
     map({"aaaaaaaa", "aaaaaaaa", "aaabbaaa", "aabbbbaa", "abbbbbba", "aabbbbaa", "aaaaaaaa", "aaaaaaaa"})},
    {"DiamondOpenEndOddWidth", kRegion, 6, 1.0, 7, 4, 0, map({"bbbbbb.", "bbbbbb.", "bbbbbb.", "bbbbbb."})},
    // With an odd H the row after the lower half is a whole row of the outside picture.
    {"DiamondOpenEndOddHeight", kRegion, 6, 1.0, 4, 5, 0, map({"bbbb", "bbbb", "bbbb", "bbbb", "aaaa"})},
    {"DiamondCloseStart", kRegion, 7, 0.0, 4, 4, 0, map({"aaaa", "aaaa", "aaaa", "aaaa"})},
    // On a PAL-sized area, boundaries recomputed per plane.
    pal("RectangleOpenHalfOnPal", kRegion, 0, 0.5,
        b_where([](int x, int y) { return x >= 180 && x < 540 && y >= 144 && y < 432; })),
    {"RectangleOpenHalfOnPalChroma", kRegion, 0, 0.5, 720, 576, 1,
     b_where([](int x, int y) { return x >= 90 && x < 270 && y >= 72 && y < 216; })},
    pal("RoundOpenEndOnPal", kRegion, 2, 1.0, b_where([](int, int) { return true; })),
    // d = 288: the diamond touches the top and bottom; its widest rows reach W / 2; the lower half starts one step
    // wider, so its last row is wider than the top row.
    pal("DiamondOpenHalfOnPal", kRegion, 6, 0.5,
        [](int x, int y) {
          if (y == 287 || y == 288) return from_b(x, y);
          if (y == 0 || y == 575) return x >= (y ? 357 : 359) && x < (y ? 363 : 361) ? from_b(x, y) : from_a(x, y);
          return kUnchecked;
        }),
};
INSTANTIATE_TEST_SUITE_P(Region, WipeSources, ::testing::ValuesIn(kRegionCases), case_name);

// Clock Based Wipe and Center Rotate Wipe: where the hands stand.
const SourceCase kClockCases[] = {
    pal("ClockwiseQuarterIsTopRight", kClock, 1, 0.25, b_where([](int x, int y) { return x >= 360 && y < 288; })),
    {"ClockwiseQuarterChroma", kClock, 1, 0.25, 720, 576, 1, b_where([](int x, int y) { return x >= 180 && y < 144; })},
    pal("AnticlockwiseQuarterIsTopLeft", kClock, 0, 0.25, b_where([](int x, int y) { return x < 360 && y < 288; })),
    pal("DoubleClockwiseHalf", kClock, 3, 0.5, b_where([](int x, int y) { return (x >= 360) == (y < 288); })),
    // Quarter hands at 45 degrees: row 100 (dy = -187.5).
    pal("FourTimesClockwiseHalfRow100", kClock, 5, 0.5,
        b_where_on_row(100, [](int x) { return x <= 171 || (x >= 360 && x <= 546); })),
    pal("SingleOpenHalfIsTopHalf", kClock, 6, 0.5, b_where([](int, int y) { return y < 288; })),
    // Odd sizes put sample centres on the centre lines: the centre column is inside both fans, the centre row outside,
    // the 45-degree samples outside (the fans stop just short of 45 degrees). The centre itself is not checked.
    {"DoubleOpenHalfOddSize", kClock, 7, 0.5, 9, 7, 0,
     [](int x, int y) {
       const int dx = std::abs(2 * x + 1 - 9), dy = std::abs(2 * y + 1 - 7);
       if (dx == 0 && dy == 0) return kUnchecked;
       return dx < dy ? from_b(x, y) : from_a(x, y);
     }},
    pal("CenterRotateFromLeftHalf", kCenterRotate, 0, 0.5, b_where([](int, int y) { return y >= 288; })),
    pal("CenterRotateFromBottomQuarter", kCenterRotate, 2, 0.25,
        [](int x, int y) {
          if (y == 476 || y == 376) return x >= (y == 476 ? 460 : 560) ? from_b(x, y) : from_a(x, y);
          return y == 0 ? from_a(x, y) : kUnchecked;
        }),
    pal("CenterRotateFromTopHalf", kCenterRotate, 7, 0.5, b_where([](int x, int) { return x >= 360; })),
    pal("CenterRotateFromRightHalf", kCenterRotate, 5, 0.5, b_where([](int, int y) { return y >= 288; })),
};
INSTANTIATE_TEST_SUITE_P(Clock, WipeSources, ::testing::ValuesIn(kClockCases), case_name);

// Rotate Based Wipe, 16 x 12 at 0.1 (tan = 0.158, cot = 6.31): where each style's line starts and where it has reached
// by the bottom row. Styles 1 and 6 show b on the whole top row already; styles 0 and 7 keep it all a.
Where top_and_bottom(const std::string& top, const std::string& bottom) {
  return [=](int x, int y) { return y == 0 || y == 11 ? From{(y ? bottom : top)[x], x, y} : kUnchecked; };
}
const SourceCase kRotateCases[] = {
    {"Style0", kRotate, 0, 0.1, 16, 12, 0, top_and_bottom("aaaaaaaaaaaaaaaa", "baaaaaaaaaaaaaaa")},
    {"Style1", kRotate, 1, 0.1, 16, 12, 0, top_and_bottom("bbbbbbbbbbbbbbbb", "aaaaaaaaaaaaaaaa")},
    // trunc(H cot) = 75 is clamped to W: row 0 is all a.
    {"Style2", kRotate, 2, 0.1, 16, 12, 0, top_and_bottom("aaaaaaaaaaaaaaaa", "aaaaabbbbbbbbbbb")},
    {"Style3", kRotate, 3, 0.1, 16, 12, 0, top_and_bottom("baaaaaaaaaaaaaaa", "aaaaaaaaaaaaaaaa")},
    {"Style4", kRotate, 4, 0.1, 16, 12, 0, top_and_bottom("aaaaaaaaaaaaaabb", "aaaaaaaaaaaaaaab")},
    {"Style5", kRotate, 5, 0.1, 16, 12, 0, top_and_bottom("aaaaaaaaaaaaaaaa", "bbbbbbbbbbaaaaaa")},
    {"Style6", kRotate, 6, 0.1, 16, 12, 0, top_and_bottom("bbbbbbbbbbbbbbbb", "aaaaaaaaaaaaaaaa")},
    {"Style7", kRotate, 7, 0.1, 16, 12, 0, top_and_bottom("aaaaaaaaaaaaaaaa", "aaaaaaaaaaaaaabb")},
    // Half way on a square: row y is `b` up to column y - 1 or y, then `a`.
    {"HalfWayOnSquareFillsLowerTriangle", kRotate, 0, 0.5, 64, 64, 0,
     [](int x, int y) { return x + 1 < y ? from_b(x, y) : x >= y ? from_a(x, y) : From{'e', x, y}; }},
};
INSTANTIATE_TEST_SUITE_P(Rotate, WipeSources, ::testing::ValuesIn(kRotateCases), case_name);

// Cross and Blind wipes: strip boundaries, the slanted strips' truncated
// growth, the moving half-bands and the unwritten last row or column of an odd area.
const SourceCase kStripCases[] = {
    // s = 3, g = 1; the strips move one slope step (2 columns) per row.
    {"SlantedRising", kBlind, 4, 0.5, 6, 3, 0, map({"baabaa", "abaaba", "aabaab"}), 4},
    {"SlantedFalling", kBlind, 6, 0.5, 6, 3, 0, map({"baabaa", "aabaab", "abaaba"}), 4},
    // s = 10 / 3 is not whole: g = trunc(s) leaves a sliver of the other picture.
    {"SlantedEndKeepsSliver", kBlind, 4, 1.0, 10, 2, 0, map({"bbbbbbbbba", "bbbbabbbbb"}), 6},
    {"SlantedReverseStartKeepsSliver", kBlind, 5, 0.0, 10, 2, 0, map({"aaaaaaaaab", "aaaabaaaaa"}), 6},
    {"SlantedWholeStripsEnd", kBlind, 6, 1.0, 6, 2, 0, map({"bbbbbb", "bbbbbb"}), 3},
    {"HorizontalDown", kBlind, 2, 0.25, 3, 8, 0, map({"bbb", "aaa", "aaa", "aaa", "bbb", "aaa", "aaa", "aaa"}), 2},
    {"HorizontalUp", kBlind, 3, 0.25, 3, 8, 0, map({"aaa", "aaa", "aaa", "bbb", "aaa", "aaa", "aaa", "bbb"}), 2},
    // Style 0, n = 10 at half way: b on the first half of every 72-column strip, recomputed on the chroma plane's own
    // width; style 1 at a quarter: b on the last 18 columns of every strip.
    {"VerticalHalfWay", kBlind, 0, 0.5, 720, 4, 0, b_where([](int x, int) { return x % 72 < 36; }), 10},
    {"VerticalHalfWayChroma", kBlind, 0, 0.5, 720, 4, 1, b_where([](int x, int) { return x % 36 < 18; }), 10},
    {"VerticalReverseQuarter", kBlind, 1, 0.25, 720, 4, 0, b_where([](int x, int) { return x % 72 >= 54; }), 10},
    // t = 2, k = 2; the odd last row is in no band.
    {"CrossCloseHorizontalOddHeight", kCross, 0, 0.25, 8, 9, 0,
     map({"bbaaaaaa", "bbaaaaaa", "aaaaaabb", "aaaaaabb", "bbaaaaaa", "bbaaaaaa", "aaaaaabb", "aaaaaabb", "........"}),
     2},
    {"CrossCloseVerticalOddWidth", kCross, 2, 0.25, 9, 8, 0,
     map({"bbaabbaa.", "bbaabbaa.", "aaaaaaaa.", "aaaaaaaa.", "aaaaaaaa.", "aaaaaaaa.", "aabbaabb.", "aabbaabb."}), 2},
    {"CrossEndOddHeight", kCross, 1, 1.0, 4, 3, 0, map({"bbbb", "bbbb", "...."}), 1},
    // Open styles slide `a` out: two columns in from each side at a quarter.
    {"CrossOpenHorizontalShiftsA", kCross, 1, 0.25, 8, 4, 0,
     [](int x, int y) {
       if (y == 0) return x < 2 ? from_b(x, y) : from_a(x - 2, y);
       return y == 3 ? (x < 6 ? from_a(x + 2, y) : from_b(x, y)) : kUnchecked;
     }, 1},
    {"CrossOpenVerticalShiftsA", kCross, 3, 0.25, 4, 8, 0,
     [](int x, int y) {
       if (x == 0) return y < 2 ? from_b(x, y) : from_a(x, y - 2);
       return x == 3 ? (y < 6 ? from_a(x, y + 2) : from_b(x, y)) : kUnchecked;
     }, 1},
};
INSTANTIATE_TEST_SUITE_P(Strips, WipeSources, ::testing::ValuesIn(kStripCases), case_name);

// Build Based Wipe, Spiral Based Wipe and Wipe: which strips, path segments, cells and bands show `b` on 720 x 576, and
// how the user's counts are limited.
// Build, style 0, ten strips at 0.25: two and a half strips of 72 columns.
bool build_quarter(int x, int y) { return x < 144 || (x < 216 && y < 288); }
// Wipe's 8 x 6 checker of 90 x 96 cells: even cells are `b` in their first
// `even` columns, odd cells in their first `odd` columns.
Where checker(int even, int odd) {
  return b_where([=](int x, int y) { return x % 90 < ((x / 90 + y / 96) % 2 == 0 ? even : odd); });
}
// Wipe's bands of 96 rows, band j's edge at `first` - 90 j.
Where bands(int first) { return b_where([=](int x, int y) { return x < first - 90 * (y / 96); }); }
const SourceCase kBuildCases[] = {
    pal("BuildDownAndRightQuarter", kBuild, 0, 0.25, b_where(build_quarter), 10),
    {"BuildDownAndRightQuarterChroma", kBuild, 0, 0.25, 720, 576, 1,
     b_where([](int x, int y) { return x < 72 || (x < 108 && y < 144); }), 10},
    pal("BuildCountZeroIsTen", kBuild, 0, 0.25, b_where(build_quarter), 0),
    // 75 strips become 60 of 12 columns: 15 whole strips at 0.25.
    pal("BuildCountAboveLimitIsSixty", kBuild, 0, 0.25, b_where([](int x, int) { return x < 180; }), 75),
    pal("BuildRightAndUpStart", kBuild, 3, 0.05, b_where([](int x, int y) { return y >= 518 && x < 360; }), 10),
    pal("BuildLeftAndUpStart", kBuild, 7, 0.05, b_where([](int x, int y) { return y >= 518 && x >= 360; }), 10),
    pal("BuildUpAndLeftStart", kBuild, 5, 0.05, b_where([](int x, int y) { return x >= 648 && y >= 288; }), 10),
    // t = 58; the head at 358 of 7164 positions.
    pal("SpiralClockwiseStart", kSpiral, 1, 0.05, b_where([](int x, int y) { return y < 58 && x < 358; }), 10),
    {"SpiralClockwiseStartChroma", kSpiral, 1, 0.05, 720, 576, 1,
     b_where([](int x, int y) { return y < 29 && x < 179; }), 10},
    pal("SpiralAnticlockwiseStart", kSpiral, 0, 0.05, b_where([](int x, int y) { return y < 58 && x >= 362; }), 10),
    // Half way: the bottom of the second ring (rows 460..517, columns 58..603)
    // is filled from its right end to column 388.
    pal("SpiralClockwiseHalf", kSpiral, 1, 0.5,
        [](int x, int y) {
          if (y == 480) return x < 58 || x >= 388 ? from_b(x, y) : from_a(x, y);
          if (y < 460 || y >= 518 || x < 58 || x >= 604) return kUnchecked;
          return x >= 388 ? from_b(x, y) : from_a(x, y);
        }, 10),
    // 90 percent becomes 50: t = 288, segments of 720, 288 and 432; at 0.75 the head is 72 into the bottom-left one.
    pal("SpiralThicknessAboveLimitIsHalf", kSpiral, 1, 0.75,
        b_where([](int x, int y) { return y < 288 || x >= 360; }), 90),
    pal("WipeCheckerQuarter", kWipe, 0, 0.25, checker(45, 0), 8, 6.0),
    pal("WipeCheckerHalf", kWipe, 0, 0.5, checker(90, 0), 8, 6.0),
    pal("WipeCheckerThreeQuarters", kWipe, 0, 0.75, checker(90, 45), 8, 6.0),
    pal("WipeCheckerToLeftQuarter", kWipe, 1, 0.25,
        b_where([](int x, int y) { return (x / 90 + y / 96) % 2 == 0 && x % 90 >= 45; }), 8, 6.0),
    pal("WipeBandsHalf", kWipe, 2, 0.5, bands(585), 8, 6.0),
    pal("WipeBandsRowCountNaNIsSix", kWipe, 2, 0.5, bands(585), 8, std::nan("")),
    pal("WipeBandsRowCountHugeIsSix", kWipe, 2, 0.5, bands(585), 8, 1e30),
    pal("WipeBandsColumnCountZeroIsEight", kWipe, 2, 0.5, bands(585), 0, 0.0),
    pal("WipeBandsToLeftHalf", kWipe, 3, 0.5,
        b_where([](int x, int y) { return x >= 720 - (585 - 90 * (y / 96)); }), 8, 6.0),
    // One column: each band waits for the band above to finish.
    pal("WipeBandsOneColumnAreSequential", kWipe, 2, 0.25,
        b_where([](int x, int y) { return y < 96 || (y < 192 && x < 360); }), 1, 6.0),
};
INSTANTIATE_TEST_SUITE_P(Build, WipeSources, ::testing::ValuesIn(kBuildCases), case_name);

// Split, Center Split, Double Slide and Split Back: where each piece of the two pictures lands on 720 x 576.
const SourceCase kSplitCases[] = {
    // The quarters of `a` have moved 180 columns and 144 rows toward the corners.
    pal("SplitOpenHalf", kSplit, 0, 0.5,
        [](int x, int y) {
          const bool left = x < 180, right = x >= 540, top = y < 144, bottom = y >= 432;
          if (!(left || right) || !(top || bottom)) return from_b(x, y);
          return from_a(left ? x + 180 : x - 180, top ? y + 144 : y - 144);
        }),
    pal("SplitCloseHorizontalQuarter", kSplit, 3, 0.25,
        [](int x, int y) { return x < 90 ? from_b(x + 270, y) : x >= 630 ? from_b(x - 270, y) : from_a(x, y); }),
    pal("SplitVerticalOpenQuarter", kSplit, 4, 0.25,
        [](int x, int y) { return y < 216 ? from_a(x, y + 72) : y >= 360 ? from_a(x, y - 72) : from_b(x, y); }),
    // The quarters of `b` come out of the centre, outer corners first.
    pal("CenterSplitOpenHalf", kCenterSplit, 0, 0.5,
        [](int x, int y) {
          if (x < 180 || x >= 540 || y < 144 || y >= 432) return from_a(x, y);
          return from_b(x < 360 ? x - 180 : x + 180, y < 288 ? y - 144 : y + 144);
        }),
    // Close at 0.75 is Open at 0.25 with the pictures exchanged: a 180 x 144 block of `a` around the centre.
    pal("CenterSplitCloseThreeQuarters", kCenterSplit, 1, 0.75,
        [](int x, int y) {
          if (x < 270 || x >= 450 || y < 216 || y >= 360) return from_b(x, y);
          return from_a(x < 360 ? x - 270 : x + 270, y < 288 ? y - 216 : y + 216);
        }),
    pal("DoubleSlideUpperBandQuarter", kDoubleSlide, 0, 0.25,
        [](int x, int y) { return y < 288 && x < 360 ? from_b(x + 360, y) : from_a(x, y); }),
    pal("DoubleSlideHalf", kDoubleSlide, 0, 0.5, [](int x, int y) { return y < 288 ? from_b(x, y) : from_a(x, y); }),
    pal("DoubleSlideRightToLeftLowerBand", kDoubleSlide, 1, 0.75,
        [](int x, int y) { return y < 288 ? from_b(x, y) : x >= 360 ? from_b(x - 360, y) : from_a(x, y); }),
    // Each half of `a` at half size against the middle of its side edge.
    pal("SplitBackOpenHalf", kSplitBack, 0, 0.5,
        [](int x, int y) {
          if (y < 144 || y >= 432 || (x >= 180 && x < 540)) return from_b(x, y);
          return from_a(x < 180 ? 2 * x : 360 + 2 * (x - 540), 2 * (y - 144));
        }),
    // Close at 0.25 is Open at 0.75 exchanged: `b`'s halves at quarter size.
    pal("SplitBackCloseQuarter", kSplitBack, 1, 0.25,
        [](int x, int y) {
          if (y < 216 || y >= 360 || (x >= 90 && x < 630)) return from_a(x, y);
          return from_b(x < 90 ? 4 * x : 360 + 4 * (x - 630), 4 * (y - 216));
        }),
    {"SplitBackOpenHalfChroma", kSplitBack, 0, 0.5, 720, 576, 1,
     [](int x, int y) {
       if (y < 72 || y >= 216 || (x >= 90 && x < 270)) return from_b(x, y);
       return from_a(x < 90 ? 2 * x : 180 + 2 * (x - 270), 2 * (y - 72));
     }},
};
INSTANTIATE_TEST_SUITE_P(Split, WipeSources, ::testing::ValuesIn(kSplitCases), case_name);

// Triangle Rotate, Triangle Push and Triangle Slide: single samples of the turning lid, and the two triangular windows'
// sources on 720 x 576.
// Row `row` of the output, one source per column.
Where row_of(int row, std::vector<From> sources) {
  return [=](int x, int y) { return y == row ? sources[x] : kUnchecked; };
}
// Push1 at 0.25 (travel 180) on rows 287 and 288, whose window edges lie at
// columns 359 and 361: left of it `a` moves right, right of it `a` moves left.
From push1_quarter_edge_rows(int x, int y) {
  if (y != 287 && y != 288) return kUnchecked;
  const int edge = y == 287 ? 359 : 361;
  if (x < edge) return x >= 180 ? from_a(x - 180, y) : from_b(x + 540, y);
  return x + 180 < 720 ? from_a(x + 180, y) : from_b(x - 540, y);
}
const SourceCase kTriangleCases[] = {
    pal("RotateLeftHalf", kTriangleRotate, 0, 0.5, spots({{10, 100, from_b(343, 247)}, {300, 300, from_a(300, 300)}})),
    pal("RotateLeftQuarter", kTriangleRotate, 0, 0.25,
        spots({{10, 100, from_b(443, 403)}, {0, 575, from_a(0, 575)}, {50, 560, from_a(50, 560)}})),
    pal("RotateRightHalf", kTriangleRotate, 1, 0.5, spots({{709, 100, from_b(376, 247)}})),
    pal("Push1HalfRow0", kTrianglePush, 0, 0.5,
        [](int x, int y) {
          return y ? kUnchecked : x == 0 ? from_b(360, 0) : x < 360 ? from_a(x + 360, 0) : from_b(x - 360, 0);
        }),
    pal("Push1QuarterEdgeRows", kTrianglePush, 0, 0.25, push1_quarter_edge_rows),
    pal("Push2Half", kTrianglePush, 1, 0.5,
        spots({{700, 10, from_b(700, 298)}, {10, 500, from_b(10, 212)}, {700, 300, from_a(700, 12)}})),
    pal("Slide1QuarterRow0", kTriangleSlide, 0, 0.25,
        [](int x, int y) {
          return y ? kUnchecked : x == 0 ? from_b(540, 0) : x < 540 ? from_a(x, 0) : from_b(x - 540, 0);
        }),
    pal("Slide4Half", kTriangleSlide, 3, 0.5,
        spots({{10, 10, from_b(10, 298)}, {710, 570, from_b(710, 282)}, {710, 100, from_a(710, 100)}})),
    // Five columns at 0.5: Push travels 2, Slide 3 (row 0's edge at column 1).
    {"PushTruncatesOnFiveColumns", kTrianglePush, 0, 0.5, 5, 4, 0,
     row_of(0, {from_b(3, 0), from_a(3, 0), from_a(4, 0), from_b(0, 0), from_b(1, 0)})},
    {"SlideRoundsOnFiveColumns", kTriangleSlide, 0, 0.5, 5, 4, 0,
     row_of(0, {from_b(2, 0), from_a(1, 0), from_b(0, 0), from_b(1, 0), from_b(2, 0)})},
};
INSTANTIATE_TEST_SUITE_P(Triangle, WipeSources, ::testing::ValuesIn(kTriangleCases), case_name);

// Single and Multi-Triangle Door: the leaves' squeezed and shifted rows and the cells' alternating diagonals on
// 720 x 576. A leaf of `a`'s columns [from, from + count) squeezed into output columns [at, at + width) of row y:
// column at + i takes from + (i * count) / width.
struct Leaf { int at, width, from, count; };
Where row_leaves(int row, std::vector<Leaf> leaves) {
  return [row, leaves](int x, int y) {
    if (y != row) return kUnchecked;
    for (const Leaf& l : leaves) {
      if (x >= l.at && x < l.at + l.width) return from_a(l.from + (x - l.at) * l.count / l.width, y);
    }
    return from_b(x, y);
  };
}
const SourceCase kDoorCases[] = {
    // Row 287 splits at 359: 359 samples into 180 columns, 361 into 181.
    pal("PushingOpen1HalfRow287", kSingleDoor, 2, 0.5, row_leaves(287, {{0, 180, 0, 359}, {539, 181, 359, 361}})),
    pal("PushingOpen1HalfLastSamples", kSingleDoor, 2, 0.5,
        spots({{178, 287, from_a(355, 287)}, {179, 287, from_a(357, 287)}})),
    pal("SlidingOpen1HalfRow287", kSingleDoor, 6, 0.5,
        [](int x, int y) { return y != 287 ? kUnchecked : x == 719 ? from_a(359, y) : from_b(x, y); }),
    pal("SlidingOpen1HalfRow575", kSingleDoor, 6, 0.5,
        [](int x, int y) { return y != 575 ? kUnchecked : x < 359 ? from_a(x + 360, y) : from_b(x, y); }),
    // Close brings `b`'s leaves in over `a`: the second diagonal splits row 0 at 719.
    pal("SlidingClose2QuarterRow0", kSingleDoor, 5, 0.25,
        [](int x, int y) { return y != 0 ? kUnchecked : x < 179 ? from_b(x + 540, y) : from_a(x, y); }),
    // Two cells 360 wide whose diagonals form a peak.
    pal("DoubleOpenHalfRow0", kMultiDoor, 1, 0.5, row_leaves(0, {{0, 180, 0, 360}, {540, 180, 360, 360}})),
    pal("DoubleOpenHalfRow287", kMultiDoor, 1, 0.5,
        row_leaves(287, {{0, 90, 0, 180}, {270, 90, 180, 180}, {360, 90, 360, 180}, {630, 90, 540, 180}})),
    pal("DoubleOpenHalfRow575", kMultiDoor, 1, 0.5, row_leaves(575, {{180, 180, 0, 360}, {360, 180, 360, 360}})),
    // A 4 x 2 grid of 180 x 288 cells: row 0 of the top cells, row 288 of the
    // bottom ones, where the diagonals alternate the other way.
    pal("MultiOpenHalfRow0", kMultiDoor, 3, 0.5,
        row_leaves(0, {{0, 90, 0, 180}, {270, 90, 180, 180}, {360, 90, 360, 180}, {630, 90, 540, 180}})),
    pal("MultiOpenHalfRow288", kMultiDoor, 3, 0.5,
        row_leaves(288, {{90, 90, 0, 180}, {180, 90, 180, 180}, {450, 90, 360, 180}, {540, 90, 540, 180}})),
};
INSTANTIATE_TEST_SUITE_P(TriangleDoors, WipeSources, ::testing::ValuesIn(kDoorCases), case_name);

// Line Based Wipe cuts each frame to the common area around its own centre.
TEST(LineWipe, FramesOfDifferentSizesMeetAtTheirCentres) {
  ImagePtr out = zvtest::random_frame(30, 20, 3), a = zvtest::random_frame(24, 14, 1);
  ImagePtr b = zvtest::random_frame(26, 16, 2);
  ASSERT_EQ(zvtest::run_transition(kLine, out.get(), a.get(), b.get(), 0, 0.5), 0);
  // Luma: 24 x 14 at (3, 3) in out, (0, 0) in a, (1, 1) in b; b left of column 12.
  // Chroma: 12 x 7 at (1, 1) in out (15 x 10), (0, 0) in a and b; b left of column 6.
  for (int plane : {0, 2}) {
    const int w = plane ? 12 : 24, h = plane ? 7 : 14, at = plane ? 1 : 3, b_at = plane ? 0 : 1;
    for (int y = 0; y < h; ++y) {
      for (int x = 0; x < w; ++x) {
        ASSERT_EQ(sample(*out, plane, at + x, at + y),
                  x < w / 2 ? sample(*b, plane, b_at + x, b_at + y) : sample(*a, plane, x, y));
      }
    }
  }
}

// The spiral's path over 720 x 576 with a 58-sample band: 19 segments, 7164 positions, the seventh the bottom of the
// second ring; a 288-sample band on 576 rows leaves three.
TEST(SpiralSegments, TileTheAreaRingByRing) {
  std::vector<zv::SpiralSegment> segments;
  zv::spiral_segments(720, 576, 58, [&](const zv::SpiralSegment& s) {
    segments.push_back(s);
    return true;
  });
  ASSERT_EQ(segments.size(), 19u);
  int total = 0, area = 0;
  for (const zv::SpiralSegment& s : segments) {
    total += s.length;
    area += (s.x1 - s.x0) * (s.y1 - s.y0);
  }
  EXPECT_EQ(total, 7164);
  EXPECT_EQ(area, 720 * 576);
  const zv::SpiralSegment& seventh = segments[6];
  EXPECT_EQ(seventh.direction, zv::Run::kLeftward);
  EXPECT_EQ(std::vector<int>({seventh.x0, seventh.x1, seventh.y0, seventh.y1}), std::vector<int>({58, 604, 460, 518}));
  int thick = 0;
  zv::spiral_segments(720, 576, 288, [&](const zv::SpiralSegment&) { return ++thick > 0; });
  EXPECT_EQ(thick, 3);
}

// The diagonal's column on 720 x 576 and its chroma, and the walk that steps it row
// by row, against the formula on every row of a few odd sizes.
TEST(DiagonalColumn, CrossesRowCentresRounded) {
  const int rows[] = {0, 287, 288, 575}, luma[] = {1, 359, 361, 719}, chroma[] = {1, 179, 181, 359};
  for (int i = 0; i < 4; ++i) {
    EXPECT_EQ(zv::diagonal_column(rows[i], 720, 576), luma[i]);
    EXPECT_EQ(zv::diagonal_column(rows[i] / 2, 360, 288), chroma[i]);
  }
  for (const auto& [w, h] :
       {std::make_pair(720, 576), std::make_pair(7, 5), std::make_pair(1, 9), std::make_pair(33, 1)}) {
    zv::DiagonalWalk walk(w, h);
    for (int y = 0; y < h; ++y, walk.next()) ASSERT_EQ(walk.column(), zv::diagonal_column(y, w, h)) << w << "x" << h;
  }
}

}  // namespace
