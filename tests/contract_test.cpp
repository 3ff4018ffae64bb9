// The call contract every transition shares: progress, the prologue and the
// centred common region.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "blends/fade.h"
#include "frame/plane.h"
#include "tests/test_support.h"

namespace {

using zvtest::make_params;

struct ProgressCase {
  double position, duration, expected;
};

class ProgressTest : public ::testing::TestWithParam<ProgressCase> {};

TEST_P(ProgressTest, FollowsTheBlock) {
  const ProgressCase c = GetParam();
  TransitionParams params = make_params(0, c.position, c.duration);
  const double p = zv::transition_progress(&params);
  EXPECT_EQ(p, c.expected);
  EXPECT_EQ(std::signbit(p), std::signbit(c.expected));
}

INSTANTIATE_TEST_SUITE_P(Positions, ProgressTest,
                         ::testing::Values(ProgressCase{0.4, 1.0, 0.4}, ProgressCase{3.0, 2.0, 1.0},
                                           ProgressCase{2.0, 2.0, 1.0}, ProgressCase{-1.0, 2.0, 0.0},
                                           ProgressCase{-1.0, -2.0, -0.0},  // negative zero, unguarded
                                           ProgressCase{0.5, -2.0, 1.0}, ProgressCase{12.5, 25.0, 0.5}));

TEST(ProgressTest, NotANumberPassesThrough) {
  TransitionParams zero_duration = make_params(0, 0.5, 0.0);
  EXPECT_TRUE(std::isnan(zv::transition_progress(&zero_duration)));
  TransitionParams nan_position = make_params(0, std::numeric_limits<double>::quiet_NaN(), 1.0);
  EXPECT_TRUE(std::isnan(zv::transition_progress(&nan_position)));
  EXPECT_TRUE(std::isnan(zv::clamp_progress(std::nan(""))));
}

TEST(TruncationTest, OutOfRangeValuesGiveTheX86Result) {
  EXPECT_EQ(zv::truncate_to_int(-2.7), -2);
  EXPECT_EQ(zv::round_to_int(2.5), 3);
  EXPECT_EQ(zv::truncate_to_int(std::nan("")), INT32_MIN);
  EXPECT_EQ(zv::truncate_to_int(1e300), INT32_MIN);
  EXPECT_EQ(zv::truncate_to_int(2147483647.9), 2147483647);
}

TEST(PlaneGeometryTest, OddSizesLoseTheirLastChromaColumnAndRow) {
  Image image(7, 5);
  zv::PlaneView u = zv::image_plane(&image, zv::kPlaneU);
  EXPECT_EQ(u.width, 3);
  EXPECT_EQ(u.height, 2);
  EXPECT_EQ(image.plane_size(1), 6u);
}

TEST(PlaneGeometryTest, CommonRegionIsCentredInEveryPlane) {
  Image a(720, 576), out(704, 576), b(704, 576);
  zv::CommonRegion r = zv::common_region(zv::image_plane(&out, 0), zv::image_plane(&a, 0), zv::image_plane(&b, 0));
  EXPECT_EQ(r.width, 704);
  EXPECT_EQ(r.height, 576);
  EXPECT_EQ(r.a, a.get_Y() + 8);  // a is read from column 8 on
  EXPECT_EQ(r.out, out.get_Y());
  zv::CommonRegion chroma =
      zv::common_region(zv::image_plane(&out, 1), zv::image_plane(&a, 1), zv::image_plane(&b, 1));
  EXPECT_EQ(chroma.a, a.get_U() + 4);
  // Zero and negative sizes give an empty region.
  Image empty(0, 10), negative(-4, -4);
  EXPECT_TRUE(zv::common_region(zv::image_plane(&empty, 0), zv::image_plane(&a, 0), zv::image_plane(&b, 0)).empty());
  EXPECT_TRUE(
      zv::common_region(zv::image_plane(&negative, 0), zv::image_plane(&a, 0), zv::image_plane(&b, 0)).empty());
}

}  // namespace
