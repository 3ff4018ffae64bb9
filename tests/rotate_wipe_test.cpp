// Rotate Based Wipe: where each style's line starts and where it has reached by
// the bottom row, and the diagonal of a square area at half way.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/wipe_maps.h"

namespace {

constexpr int kRotate = 7;

struct EdgeRows {
  int style;
  std::string top, bottom;
};

class RotateEdgeRowsTest : public ::testing::TestWithParam<EdgeRows> {};

// 16 x 12 at progress 0.1: tan = 0.158, cot = 6.31. Styles 1 and 6 show b on
// the whole top row already; styles 0 and 7 keep it all a.
TEST_P(RotateEdgeRowsTest, TopAndBottomRowsAtTenPercent) {
  const EdgeRows& c = GetParam();
  const std::vector<std::string> map = zvtest::wipe_map(kRotate, 16, 12, zvtest::make_params(c.style, 0.1));
  EXPECT_EQ(map.front(), c.top);
  EXPECT_EQ(map.back(), c.bottom);
}

INSTANTIATE_TEST_SUITE_P(AllStyles, RotateEdgeRowsTest,
                         ::testing::Values(EdgeRows{0, "aaaaaaaaaaaaaaaa", "baaaaaaaaaaaaaaa"},
                                           EdgeRows{1, "bbbbbbbbbbbbbbbb", "aaaaaaaaaaaaaaaa"},
                                           // trunc(H cot) = 75 is clamped to W: row 0 is all a.
                                           EdgeRows{2, "aaaaaaaaaaaaaaaa", "aaaaabbbbbbbbbbb"},
                                           EdgeRows{3, "baaaaaaaaaaaaaaa", "aaaaaaaaaaaaaaaa"},
                                           EdgeRows{4, "aaaaaaaaaaaaaabb", "aaaaaaaaaaaaaaab"},
                                           EdgeRows{5, "aaaaaaaaaaaaaaaa", "bbbbbbbbbbaaaaaa"},
                                           EdgeRows{6, "bbbbbbbbbbbbbbbb", "aaaaaaaaaaaaaaaa"},
                                           EdgeRows{7, "aaaaaaaaaaaaaaaa", "aaaaaaaaaaaaaabb"}),
                         [](const ::testing::TestParamInfo<EdgeRows>& info) {
                           return "style" + std::to_string(info.param.style);
                         });

TEST(RotateWipe, HalfWayOnSquareFillsLowerTriangle) {
  const std::vector<std::string> map = zvtest::wipe_map(kRotate, 64, 64, zvtest::make_params(0, 0.5));
  for (int row = 0; row < 64; ++row) {
    const size_t b_columns = map[row].find_first_not_of('b');
    ASSERT_TRUE(b_columns == static_cast<size_t>(row) || b_columns + 1 == static_cast<size_t>(row)) << "row " << row;
    ASSERT_EQ(map[row].find_first_not_of('a', b_columns), std::string::npos) << "row " << row;
  }
}

}  // namespace
