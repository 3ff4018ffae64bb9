// Build Based Wipe, Spiral Based Wipe and Wipe: which strips, path segments,
// cells and bands show `b` on 720 x 576, and how the user's counts are limited.
#include "wipes/build_wipes.h"

#include <cmath>
#include <vector>

#include "tests/wipe_sources.h"

namespace {

using zvtest::From;
using zvtest::from_a;
using zvtest::from_b;
using zvtest::SourceCase;

constexpr int kBuild = 11, kSpiral = 12, kWipe = 19;

std::function<From(int, int)> b_where(std::function<bool(int, int)> shows_b) {
  return [shows_b](int x, int y) { return shows_b(x, y) ? from_b(x, y) : from_a(x, y); };
}

// Build, style 0, ten strips at 0.25: two and a half strips of 72 columns.
bool build_quarter(int x, int y) { return x < 144 || (x < 216 && y < 288); }
// Wipe's 8 x 6 checker of 90 x 96 cells: even cells are `b` in their first
// `even` columns, odd cells in their first `odd` columns.
std::function<From(int, int)> checker(int even, int odd) {
  return b_where([=](int x, int y) { return x % 90 < ((x / 90 + y / 96) % 2 == 0 ? even : odd); });
}
// Wipe's bands of 96 rows, band j's edge at `first` - 90 j.
std::function<From(int, int)> bands(int first) {
  return b_where([=](int x, int y) { return x < first - 90 * (y / 96); });
}

class BuildWipesTest : public ::testing::TestWithParam<SourceCase> {};

TEST_P(BuildWipesTest, SamplesComeFromThePartsLaidDown) { zvtest::expect_sources(GetParam()); }

const SourceCase kCases[] = {
    {"BuildDownAndRightQuarter", kBuild, 0, 0.25, 720, 576, 0, b_where(build_quarter), 10},
    {"BuildDownAndRightQuarterChroma", kBuild, 0, 0.25, 720, 576, 1,
     b_where([](int x, int y) { return x < 72 || (x < 108 && y < 144); }), 10},
    {"BuildCountZeroIsTen", kBuild, 0, 0.25, 720, 576, 0, b_where(build_quarter), 0},
    // 75 strips become 60 of 12 columns: 15 whole strips at 0.25.
    {"BuildCountAboveLimitIsSixty", kBuild, 0, 0.25, 720, 576, 0, b_where([](int x, int) { return x < 180; }), 75},
    {"BuildRightAndUpStart", kBuild, 3, 0.05, 720, 576, 0, b_where([](int x, int y) { return y >= 518 && x < 360; }),
     10},
    {"BuildLeftAndUpStart", kBuild, 7, 0.05, 720, 576, 0, b_where([](int x, int y) { return y >= 518 && x >= 360; }),
     10},
    {"BuildUpAndLeftStart", kBuild, 5, 0.05, 720, 576, 0, b_where([](int x, int y) { return x >= 648 && y >= 288; }),
     10},
    // t = 58; the head at 358 of 7164 positions.
    {"SpiralClockwiseStart", kSpiral, 1, 0.05, 720, 576, 0, b_where([](int x, int y) { return y < 58 && x < 358; }),
     10},
    {"SpiralClockwiseStartChroma", kSpiral, 1, 0.05, 720, 576, 1,
     b_where([](int x, int y) { return y < 29 && x < 179; }), 10},
    {"SpiralAnticlockwiseStart", kSpiral, 0, 0.05, 720, 576, 0,
     b_where([](int x, int y) { return y < 58 && x >= 362; }), 10},
    // Half way: the bottom of the second ring (rows 460..517, columns 58..603)
    // is filled from its right end to column 388.
    {"SpiralClockwiseHalf", kSpiral, 1, 0.5, 720, 576, 0,
     [](int x, int y) {
       if (y == 480) return x < 58 || x >= 388 ? from_b(x, y) : from_a(x, y);
       if (y < 460 || y >= 518 || x < 58 || x >= 604) return zvtest::kUnchecked;
       return x >= 388 ? from_b(x, y) : from_a(x, y);
     },
     10},
    // 90 percent becomes 50: t = 288, segments of 720, 288 and 432; at 0.75 the
    // head is 72 into the bottom-left one.
    {"SpiralThicknessAboveLimitIsHalf", kSpiral, 1, 0.75, 720, 576, 0,
     b_where([](int x, int y) { return y < 288 || x >= 360; }), 90},
    {"WipeCheckerQuarter", kWipe, 0, 0.25, 720, 576, 0, checker(45, 0), 8, 6.0},
    {"WipeCheckerHalf", kWipe, 0, 0.5, 720, 576, 0, checker(90, 0), 8, 6.0},
    {"WipeCheckerThreeQuarters", kWipe, 0, 0.75, 720, 576, 0, checker(90, 45), 8, 6.0},
    {"WipeCheckerToLeftQuarter", kWipe, 1, 0.25, 720, 576, 0,
     b_where([](int x, int y) { return (x / 90 + y / 96) % 2 == 0 && x % 90 >= 45; }), 8, 6.0},
    {"WipeBandsHalf", kWipe, 2, 0.5, 720, 576, 0, bands(585), 8, 6.0},
    {"WipeBandsRowCountNaNIsSix", kWipe, 2, 0.5, 720, 576, 0, bands(585), 8, std::nan("")},
    {"WipeBandsRowCountHugeIsSix", kWipe, 2, 0.5, 720, 576, 0, bands(585), 8, 1e30},
    {"WipeBandsColumnCountZeroIsEight", kWipe, 2, 0.5, 720, 576, 0, bands(585), 0, 0.0},
    {"WipeBandsToLeftHalf", kWipe, 3, 0.5, 720, 576, 0,
     b_where([](int x, int y) { return x >= 720 - (585 - 90 * (y / 96)); }), 8, 6.0},
    // One column: each band waits for the band above to finish.
    {"WipeBandsOneColumnAreSequential", kWipe, 2, 0.25, 720, 576, 0,
     b_where([](int x, int y) { return y < 96 || (y < 192 && x < 360); }), 1, 6.0},
};

INSTANTIATE_TEST_SUITE_P(Parts, BuildWipesTest, ::testing::ValuesIn(kCases), zvtest::source_case_name);

// The spiral's path over 720 x 576 with a 58-sample band: 19 segments, 7164
// positions, the seventh the bottom of the second ring; a 288-sample band on
// 576 rows leaves three.
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

}  // namespace
