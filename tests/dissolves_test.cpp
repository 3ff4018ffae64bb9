// Add, Non Add and Random Dissolve; and, for every transition of this family
// that keeps to the centred region, frames of three different sizes.
#include <gtest/gtest.h>

#include "blends/dissolves.h"
#include "frame/registration.h"
#include "tests/test_support.h"

namespace {

using zvtest::ImagePtr;
using zvtest::make_params;
using zvtest::sample;
using zvtest::solid_frame;

int run(int id, Image* out, Image* a, Image* b, int style, double position) {
  TransitionParams params = make_params(style, position);
  return zv::transition_entry(id)(out, a, b, &params);
}

// Every sample of a plane equals `value`.
void expect_plane(const Image& image, int plane, uint8_t value, const char* what) {
  for (uint8_t s : zvtest::plane_bytes(image, plane)) {
    ASSERT_EQ(s, value) << what << " plane " << plane;
  }
}

struct AddCase {
  int style;
  double p;
  uint8_t y;       // a's Y is 200 and b's 50
  uint8_t chroma;  // U; a's is 60, b's 160, grey 128
};

class AddDissolveTest : public ::testing::TestWithParam<AddCase> {};

TEST_P(AddDissolveTest, OffsetsLumaAndSwitchesChroma) {
  const AddCase c = GetParam();
  ImagePtr a = solid_frame(16, 8, 200, 60, 70), b = solid_frame(16, 8, 50, 160, 170), out = solid_frame(16, 8, 1, 2, 3);
  ASSERT_EQ(run(36, out.get(), a.get(), b.get(), c.style, c.p), 0);
  expect_plane(*out, 0, c.y, "Y");
  expect_plane(*out, 1, c.chroma, "U");
  expect_plane(*out, 2, c.chroma == 60 ? 70 : c.chroma == 160 ? 170 : 128, "V");
}

INSTANTIATE_TEST_SUITE_P(
    Progress, AddDissolveTest,
    ::testing::Values(AddCase{0, 0.0, 200, 60}, AddCase{1, 0.0, 200, 60},
                      AddCase{0, 0.25, 255, 60},   // 200 + t(95.625), saturated
                      AddCase{1, 0.25, 105, 60},   // 200 - 95
                      AddCase{1, 0.39, 51, 60},    // 200 - t(149.175)
                      AddCase{0, 0.4, 255, 128}, AddCase{1, 0.4, 47, 128},
                      AddCase{0, 0.5, 241, 128},   // b + 191
                      AddCase{1, 0.5, 0, 128},     // b - 191, saturated
                      AddCase{0, 0.59, 206, 128},  // b + t(156.825)
                      AddCase{0, 0.6, 203, 160},   // b + 153
                      AddCase{1, 0.75, 0, 160}, AddCase{0, 0.75, 145, 160}, AddCase{0, 1.0, 50, 160},
                      AddCase{1, 1.0, 50, 160}));

TEST(AddDissolve, GreyIsOneRunFromTheRegionStart) {
  // Chroma: out 6x2, a and b 4x2, so the region starts at column 1 and the
  // 8-byte grey run covers U[1..8] of out, spilling into its second row.
  ImagePtr a = solid_frame(8, 4, 10, 60, 70), b = solid_frame(8, 4, 20, 160, 170), out = solid_frame(12, 4, 0, 9, 9);
  run(36, out.get(), a.get(), b.get(), 0, 0.5);
  const auto u = zvtest::plane_bytes(*out, 1);
  for (int i = 0; i < 12; ++i) EXPECT_EQ(u[i], i >= 1 && i <= 8 ? 128 : 9) << i;
}

// Non Add Dissolve on a 720-wide frame.
struct NonAddCase {
  double p;
  uint8_t y;
  uint8_t u;
};

class NonAddDissolveTest : public ::testing::TestWithParam<NonAddCase> {};

TEST_P(NonAddDissolveTest, WrapsLumaOneRowDown) {
  const NonAddCase c = GetParam();
  // out and a are 6 rows, b 4: the region is rows 1..4 of out, written one row
  // down (rows 2..5); row 5 lies inside out and a, b's row below does not.
  ImagePtr a = solid_frame(720, 6, 200, 60, 70), b = solid_frame(720, 4, 200, 160, 170);
  ImagePtr out = solid_frame(720, 6, 7, 8, 9);
  ASSERT_EQ(run(37, out.get(), a.get(), b.get(), 0, c.p), 0);
  const int last_written = c.p < 0.5 ? 5 : 4;
  for (int row = 0; row < 6; ++row) {
    const uint8_t want = row >= 2 && row <= last_written ? c.y : 7;
    EXPECT_EQ(sample(*out, 0, 0, row), want) << "row " << row;
    EXPECT_EQ(sample(*out, 0, 719, row), want) << "row " << row;
  }
  // Chroma: 3 rows of out, 2 of the region (row 0 and 1), no offset.
  for (int row = 0; row < 3; ++row) EXPECT_EQ(sample(*out, 1, 5, row), row < 2 ? c.u : 8) << "row " << row;
}

INSTANTIATE_TEST_SUITE_P(Progress, NonAddDissolveTest,
                         ::testing::Values(NonAddCase{0.0, 200, 60},
                                           NonAddCase{0.25, 19, 60},   // K 180, d 75, wrapped
                                           NonAddCase{0.49, 91, 60},   // K 353, d 147
                                           NonAddCase{0.5, 94, 160},   // K 360, d 0, + 150
                                           NonAddCase{0.75, 19, 160},  // d -75, + 150
                                           NonAddCase{1.0, 200, 160}));

TEST(NonAddDissolve, EqualSizesLeaveRowZeroAndSkipTheRowBelow) {
  ImagePtr a = zvtest::random_frame(10, 6, 1), b = zvtest::random_frame(10, 6, 2), out = zvtest::random_frame(10, 6, 3);
  const auto before = zvtest::plane_bytes(*out, 0);
  run(37, out.get(), a.get(), b.get(), 0, 1.0);
  const auto y = zvtest::plane_bytes(*out, 0);
  const auto yb = zvtest::plane_bytes(*b, 0);
  for (int i = 0; i < 60; ++i) EXPECT_EQ(y[i], i < 10 ? before[i] : yb[i]) << i;
  EXPECT_EQ(zvtest::plane_bytes(*out, 1), zvtest::plane_bytes(*b, 1));
}

// Random Dissolve: share of samples from b on frames where a and b differ everywhere.
double share_of_b(const Image& out, const Image& b) {
  const auto o = zvtest::frame_bytes(out), bb = zvtest::frame_bytes(b);
  int from_b = 0;
  for (size_t i = 0; i < o.size(); ++i) from_b += o[i] == bb[i];
  return static_cast<double>(from_b) / o.size();
}

struct RandomCase {
  double p;
  double low, high;  // bounds on the share of b
};

class RandomDissolveTest : public ::testing::TestWithParam<RandomCase> {};

TEST_P(RandomDissolveTest, ShareOfBFollowsProgress) {
  const RandomCase c = GetParam();
  ImagePtr a = solid_frame(320, 240, 10, 20, 30), b = solid_frame(320, 240, 200, 210, 220);
  ImagePtr out = solid_frame(320, 240, 0, 0, 0);
  ASSERT_EQ(run(38, out.get(), a.get(), b.get(), 0, c.p), 0);
  for (int plane = 0; plane < 3; ++plane) {
    for (uint8_t s : zvtest::plane_bytes(*out, plane)) {
      ASSERT_TRUE(s == sample(*a, plane, 0, 0) || s == sample(*b, plane, 0, 0));
    }
  }
  const double share = share_of_b(*out, *b);
  EXPECT_GE(share, c.low);
  EXPECT_LE(share, c.high);
}

INSTANTIATE_TEST_SUITE_P(Progress, RandomDissolveTest,
                         ::testing::Values(RandomCase{0.0, 0.0, 0.0},
                                           RandomCase{0.3, 0.288, 0.308},  // 45 of 151 draws
                                           RandomCase{0.7, 0.688, 0.708},  // 245 of 351
                                           // About one sample in 501 keeps a (0.2 %): 115200 samples.
                                           RandomCase{1.0, 1.0 - 330.0 / 115200, 1.0 - 140.0 / 115200}));

TEST(RandomDissolve, TwoCallsDiffer) {
  ImagePtr a = zvtest::random_frame(64, 32, 1), b = zvtest::random_frame(64, 32, 2);
  ImagePtr out1 = solid_frame(64, 32, 0, 0, 0), out2 = solid_frame(64, 32, 0, 0, 0);
  run(38, out1.get(), a.get(), b.get(), 0, 0.5);
  run(38, out2.get(), a.get(), b.get(), 0, 0.5);
  EXPECT_NE(zvtest::frame_bytes(*out1), zvtest::frame_bytes(*out2));
}

// Three different sizes: only the centred common region of out changes.
struct RegionCase {
  int id;
  int style;
  double p;
};

class CentredRegionTest : public ::testing::TestWithParam<RegionCase> {};

TEST_P(CentredRegionTest, WritesOnlyTheCommonRegion) {
  const RegionCase c = GetParam();
  ImagePtr a = solid_frame(34, 22, 10, 20, 30), b = solid_frame(30, 26, 200, 210, 220);
  ImagePtr out = solid_frame(40, 30, 99, 99, 99);
  ASSERT_EQ(run(c.id, out.get(), a.get(), b.get(), c.style, c.p), 0);
  for (int plane = 0; plane < 3; ++plane) {
    const int ow = plane ? 20 : 40, oh = plane ? 15 : 30, w = plane ? 15 : 30, h = plane ? 11 : 22;
    const int x0 = (ow - w) >> 1, y0 = (oh - h) >> 1;
    for (int y = 0; y < oh; ++y) {
      for (int x = 0; x < ow; ++x) {
        const bool inside = x >= x0 && x < x0 + w && y >= y0 && y < y0 + h;
        ASSERT_EQ(sample(*out, plane, x, y) != 99, inside) << "plane " << plane << " at " << x << "," << y;
      }
    }
  }
}

INSTANTIATE_TEST_SUITE_P(Transitions, CentredRegionTest,
                         ::testing::Values(RegionCase{36, 0, 0.3}, RegionCase{36, 1, 0.7}, RegionCase{38, 0, 0.5},
                                           RegionCase{39, 0, 0.3}, RegionCase{39, 3, 0.8}, RegionCase{15, 0, 0.6},
                                           RegionCase{15, 9, 0.6}));

// NaN progress (zero duration), huge parameters, empty and tiny frames: a
// result of 0 and no access outside the planes (the sanitizer build checks).
TEST(FamilyDegenerateInputs, AreHarmless) {
  for (int id : {15, 36, 37, 38, 39}) {
    for (int style : {0, 3, 5, -7}) {
      for (auto [w, h] : {std::pair{0, 0}, std::pair{1, 1}, std::pair{3, 1}}) {
        ImagePtr a = zvtest::random_frame(9, 7, 1), b = zvtest::random_frame(w, h, 2);
        ImagePtr out = zvtest::random_frame(5, 3, 3);
        TransitionParams params = make_params(style, 0.5, 0.0);
        params.param1 = INT32_MIN;
        params.param2 = 1e300;
        EXPECT_EQ(zv::transition_entry(id)(out.get(), a.get(), b.get(), &params), 0) << id;
      }
    }
  }
}

}  // namespace
