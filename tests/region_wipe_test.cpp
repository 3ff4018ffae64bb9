// Region Based Wipe: the shapes' boundaries, the samples odd areas leave
// unwritten, the closing circle's extra sample and the diamond's lopsided rows.
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "tests/wipe_maps.h"

namespace {

using Map = std::vector<std::string>;
constexpr int kRegion = 5;

struct MapCase {
  const char* name;
  int width, height, style;
  double position;
  Map expected;
};

class RegionMapTest : public ::testing::TestWithParam<MapCase> {};

TEST_P(RegionMapTest, LumaShowsExpectedShape) {
  const MapCase& c = GetParam();
  EXPECT_EQ(zvtest::wipe_map(kRegion, c.width, c.height, zvtest::make_params(c.style, c.position)), c.expected);
}

INSTANTIATE_TEST_SUITE_P(
    Shapes, RegionMapTest,
    ::testing::Values(
        MapCase{"RectangleOpenHalf", 8, 6, 0, 0.5,
                {"aaaaaaaa", "aabbbbaa", "aabbbbaa", "aabbbbaa", "aaaaaaaa", "aaaaaaaa"}},
        // rw = 4, rh = 3: margins rw / 2 on the left and top, the rest on the right and bottom.
        MapCase{"RectangleCloseOddArea", 7, 5, 1, 0.5, {"bbbbbbb", "bbaaabb", "bbaaabb", "bbbbbbb", "bbbbbbb"}},
        // The round rows cover 2 * (W / 2) columns and 2 * (H / 2) rows.
        MapCase{"RoundOpenEndOddArea", 7, 5, 2, 1.0, {"bbbbbb.", "bbbbbb.", "bbbbbb.", "bbbbbb.", "......."}},
        MapCase{"RoundOpenStartOddArea", 7, 5, 2, 0.0, {"aaaaaaa", "aaaaaaa", "aaaaaaa", "aaaaaaa", "......."}},
        MapCase{"RoundOpenHalf", 16, 8, 2, 0.5,
                {"aaaaaaaaaaaaaaaa", "aaaaabbbbbbaaaaa", "aaaaabbbbbbaaaaa", "aaaabbbbbbbbaaaa",
                 "aaaabbbbbbbbaaaa", "aaaabbbbbbbbaaaa", "aaaaabbbbbbaaaaa", "aaaaabbbbbbaaaaa"}},
        // The closing circle runs through the corners of a 15 x 7 rectangle:
        // at the start the extreme corners already show b.
        MapCase{"RoundCloseStartCorners", 16, 8, 3, 0.0,
                {"baaaaaaaaaaaaaab", "baaaaaaaaaaaaaab", "aaaaaaaaaaaaaaaa", "aaaaaaaaaaaaaaaa",
                 "aaaaaaaaaaaaaaaa", "aaaaaaaaaaaaaaaa", "aaaaaaaaaaaaaaaa", "baaaaaaaaaaaaaab"}},
        MapCase{"FourPartsOpenHalf", 8, 6, 4, 0.5,
                {"aabbbbaa", "aabbbbaa", "bbbbbbbb", "bbbbbbbb", "aabbbbaa", "aabbbbaa"}},
        // k = 3 > W / 2 and m = 2 > H / 2: the corner blocks meet and cover everything.
        MapCase{"FourPartsOpenStartOverlapping", 5, 3, 4, 0.0, {"aaaaa", "aaaaa", "aaaaa"}},
        MapCase{"FourPartsCloseEndOverlapping", 5, 3, 5, 1.0, {"bbbbb", "bbbbb", "bbbbb"}},
        // Row 4 is one step wider than the mirror of row 3.
        MapCase{"DiamondOpenQuarter", 8, 8, 6, 0.25,
                {"aaaaaaaa", "aaaaaaaa", "aaabbaaa", "aabbbbaa", "abbbbbba", "aabbbbaa", "aaaaaaaa", "aaaaaaaa"}},
        MapCase{"DiamondOpenEndOddWidth", 7, 4, 6, 1.0, {"bbbbbb.", "bbbbbb.", "bbbbbb.", "bbbbbb."}},
        // With an odd H the row after the lower half is a whole row of the outside picture.
        MapCase{"DiamondOpenEndOddHeight", 4, 5, 6, 1.0, {"bbbb", "bbbb", "bbbb", "bbbb", "aaaa"}},
        MapCase{"DiamondCloseStart", 4, 4, 7, 0.0, {"aaaa", "aaaa", "aaaa", "aaaa"}}),
    [](const ::testing::TestParamInfo<MapCase>& info) { return std::string(info.param.name); });

// Luma and chroma on a PAL-sized area: boundaries recomputed per plane.
TEST(RegionWipe, RectangleOpenHalfOnPalBothPlanes) {
  const Map y = zvtest::wipe_map(kRegion, 720, 576, zvtest::make_params(0, 0.5));
  const Map u = zvtest::wipe_map(kRegion, 720, 576, zvtest::make_params(0, 0.5), 1);
  const std::string y_inner = std::string(180, 'a') + std::string(360, 'b') + std::string(180, 'a');
  const std::string u_inner = std::string(90, 'a') + std::string(180, 'b') + std::string(90, 'a');
  for (int row = 0; row < 576; ++row) {
    ASSERT_EQ(y[row], row >= 144 && row < 432 ? y_inner : std::string(720, 'a')) << "row " << row;
  }
  for (int row = 0; row < 288; ++row) {
    ASSERT_EQ(u[row], row >= 72 && row < 216 ? u_inner : std::string(360, 'a')) << "row " << row;
  }
}

TEST(RegionWipe, RoundOpenEndAndDiamondHalfOnPal) {
  const Map round = zvtest::wipe_map(kRegion, 720, 576, zvtest::make_params(2, 1.0));
  EXPECT_TRUE(std::all_of(round.begin(), round.end(), [](const std::string& r) { return r == std::string(720, 'b'); }));
  // d = 288: the diamond touches the top and bottom; its widest rows reach W / 2.
  const Map diamond = zvtest::wipe_map(kRegion, 720, 576, zvtest::make_params(6, 0.5));
  EXPECT_EQ(diamond[0], std::string(359, 'a') + "bb" + std::string(359, 'a'));
  EXPECT_EQ(diamond[287], std::string(720, 'b'));
  EXPECT_EQ(diamond[288], std::string(720, 'b'));
  // The lower half starts one step wider, so its last row is wider than the top row.
  EXPECT_EQ(diamond[575], std::string(357, 'a') + "bbbbbb" + std::string(357, 'a'));
}

}  // namespace
