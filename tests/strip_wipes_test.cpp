// Cross and Blind wipes: strip boundaries, the slanted strips' truncated
// growth, the moving half-bands, the unwritten last row or column of an odd
// area, and the strip-count clamps.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/wipe_maps.h"

namespace {

using Map = std::vector<std::string>;
constexpr int kCross = 9;
constexpr int kBlind = 10;

TransitionParams strip_params(int style, double position, int strips) {
  TransitionParams params = zvtest::make_params(style, position);
  params.param1 = strips;
  return params;
}

struct MapCase {
  const char* name;
  int id, width, height, style, strips;
  double position;
  Map expected;
};

class StripMapTest : public ::testing::TestWithParam<MapCase> {};

TEST_P(StripMapTest, LumaShowsExpectedStrips) {
  const MapCase& c = GetParam();
  EXPECT_EQ(zvtest::wipe_map(c.id, c.width, c.height, strip_params(c.style, c.position, c.strips)), c.expected);
}

INSTANTIATE_TEST_SUITE_P(
    Strips, StripMapTest,
    ::testing::Values(
        // s = 3, g = 1; the strips move one slope step (2 columns) per row.
        MapCase{"SlantedRising", kBlind, 6, 3, 4, 4, 0.5, {"baabaa", "abaaba", "aabaab"}},
        MapCase{"SlantedFalling", kBlind, 6, 3, 6, 4, 0.5, {"baabaa", "aabaab", "abaaba"}},
        // s = 10 / 3 is not whole: g = trunc(s) leaves a sliver of the other picture.
        MapCase{"SlantedEndKeepsSliver", kBlind, 10, 2, 4, 6, 1.0, {"bbbbbbbbba", "bbbbabbbbb"}},
        MapCase{"SlantedReverseStartKeepsSliver", kBlind, 10, 2, 5, 6, 0.0, {"aaaaaaaaab", "aaaabaaaaa"}},
        MapCase{"SlantedWholeStripsEnd", kBlind, 6, 2, 6, 3, 1.0, {"bbbbbb", "bbbbbb"}},
        MapCase{"HorizontalDown", kBlind, 3, 8, 2, 2, 0.25, {"bbb", "aaa", "aaa", "aaa", "bbb", "aaa", "aaa", "aaa"}},
        MapCase{"HorizontalUp", kBlind, 3, 8, 3, 2, 0.25, {"aaa", "aaa", "aaa", "bbb", "aaa", "aaa", "aaa", "bbb"}},
        // t = 2, k = 2; the odd last row is in no band.
        MapCase{"CrossCloseHorizontalOddHeight", kCross, 8, 9, 0, 2, 0.25,
                {"bbaaaaaa", "bbaaaaaa", "aaaaaabb", "aaaaaabb", "bbaaaaaa", "bbaaaaaa", "aaaaaabb", "aaaaaabb",
                 "........"}},
        MapCase{"CrossCloseVerticalOddWidth", kCross, 9, 8, 2, 2, 0.25,
                {"bbaabbaa.", "bbaabbaa.", "aaaaaaaa.", "aaaaaaaa.", "aaaaaaaa.", "aaaaaaaa.", "aabbaabb.",
                 "aabbaabb."}},
        MapCase{"CrossEndOddHeight", kCross, 4, 3, 1, 1, 1.0, {"bbbb", "bbbb", "...."}}),
    [](const ::testing::TestParamInfo<MapCase>& info) { return std::string(info.param.name); });

// Style 0, n = 10 at half way: b on the first half of every strip, recomputed
// on the chroma plane's own width.
TEST(BlindWipe, VerticalStripsHalfWayBothPlanes) {
  const Map y = zvtest::wipe_map(kBlind, 720, 4, strip_params(0, 0.5, 10));
  const Map u = zvtest::wipe_map(kBlind, 720, 4, strip_params(0, 0.5, 10), 1);
  std::string y_row, u_row;
  for (int i = 0; i < 10; ++i) {
    y_row += std::string(36, 'b') + std::string(36, 'a');
    u_row += std::string(18, 'b') + std::string(18, 'a');
  }
  EXPECT_EQ(y, Map(4, y_row));
  EXPECT_EQ(u, Map(2, u_row));
  // Style 1 at a quarter: b on the last 18 columns of every 72-column strip.
  std::string reverse_row;
  for (int i = 0; i < 10; ++i) reverse_row += std::string(54, 'a') + std::string(18, 'b');
  EXPECT_EQ(zvtest::wipe_map(kBlind, 720, 4, strip_params(1, 0.25, 10)), Map(4, reverse_row));
}

// Open styles slide `a` out: coded pictures show which source sample lands where.
TEST(CrossWipe, OpenStylesShiftTheOutgoingPicture) {
  zvtest::ImagePtr a = zvtest::coded_frame(8, 4, 100, false), b = zvtest::coded_frame(8, 4, 200, false);
  zvtest::ImagePtr out = zvtest::solid_frame(8, 4, 7, 7, 7);
  zvtest::call_transition(kCross, *out, *a, *b, strip_params(1, 0.25, 1));
  const std::vector<uint8_t> y = zvtest::plane_bytes(*out, 0);
  EXPECT_EQ(std::vector<uint8_t>(y.begin(), y.begin() + 8), (std::vector<uint8_t>{200, 201, 100, 101, 102, 103, 104, 105}));
  EXPECT_EQ(std::vector<uint8_t>(y.begin() + 24, y.end()), (std::vector<uint8_t>{102, 103, 104, 105, 106, 107, 206, 207}));

  a = zvtest::coded_frame(4, 8, 100, true);
  b = zvtest::coded_frame(4, 8, 200, true);
  out = zvtest::solid_frame(4, 8, 7, 7, 7);
  zvtest::call_transition(kCross, *out, *a, *b, strip_params(3, 0.25, 1));
  std::vector<uint8_t> left_column, right_column;
  for (int row = 0; row < 8; ++row) {
    left_column.push_back(zvtest::sample(*out, 0, 0, row));
    right_column.push_back(zvtest::sample(*out, 0, 3, row));
  }
  EXPECT_EQ(left_column, (std::vector<uint8_t>{200, 201, 100, 101, 102, 103, 104, 105}));
  EXPECT_EQ(right_column, (std::vector<uint8_t>{102, 103, 104, 105, 106, 107, 206, 207}));
}

struct ClampCase {
  int id, style, given, same_as, differs_from;
};

class StripCountTest : public ::testing::TestWithParam<ClampCase> {};

// Out-of-range counts draw exactly what the clamped count draws.
TEST_P(StripCountTest, ClampsStripCount) {
  const ClampCase& c = GetParam();
  auto draw = [&](int strips) {
    zvtest::ImagePtr a = zvtest::random_frame(720, 6, 1), b = zvtest::random_frame(720, 6, 2);
    zvtest::ImagePtr out = zvtest::solid_frame(720, 6, 7, 7, 7);
    zvtest::call_transition(c.id, *out, *a, *b, strip_params(c.style, 0.4, strips));
    return zvtest::frame_bytes(*out);
  };
  EXPECT_EQ(draw(c.given), draw(c.same_as));
  EXPECT_NE(draw(c.given), draw(c.differs_from));
}

INSTANTIATE_TEST_SUITE_P(Counts, StripCountTest,
                         ::testing::Values(ClampCase{kBlind, 0, 0, 10, 9}, ClampCase{kBlind, 0, -3, 10, 9},
                                           ClampCase{kBlind, 0, 150, 100, 99}, ClampCase{kCross, 2, 0, 8, 7},
                                           ClampCase{kCross, 2, 200, 70, 69}),
                         [](const ::testing::TestParamInfo<ClampCase>& info) {
                           const ClampCase& c = info.param;
                           return std::string(c.id == kBlind ? "Blind" : "Cross") + "_" +
                                  (c.given < 0 ? "minus" + std::to_string(-c.given) : std::to_string(c.given));
                         });

}  // namespace
