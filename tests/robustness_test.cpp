// Whatever a host hands a transition (NaN or huge progress and parameters,
// odd, zero or negative sizes, styles out of range), it returns one of its
// result codes, reads `a` and `b` without changing them, and stays inside the
// planes it was given (the sanitizer build checks the last part).
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>
#include <string>

#include "frame/registration.h"
#include "tests/test_support.h"

namespace {

const double kInf = std::numeric_limits<double>::infinity();
const double kNaN = std::numeric_limits<double>::quiet_NaN();

const int kStyles[] = {-1, 0, 1, 2, 3, 5, 7, 8, 1 << 30, INT32_MIN};
const double kPositions[] = {kNaN, kInf, -kInf, 1e300, -1e300, 0.5, 0.999};
const double kDurations[] = {0.0, kNaN, 1.0, -1.0, 1e-300};
const int kParam1[] = {0, -1, INT32_MIN, INT32_MAX, 0x7FFF7FFF, 1000, 50};
const double kParam2[] = {0.0, kNaN, 1e300, -1e300, 4294967295.0, 40.0};

struct Sizes {
  int out_w, out_h, a_w, a_h, b_w, b_h;
};
const Sizes kSizes[] = {
    {0, 0, 0, 0, 0, 0}, {-3, -5, 4, 4, 4, 4}, {1, 1, 1, 1, 1, 1},   {2, 1, 3, 3, 1, 2},
    {4, 4, -2, 6, 4, 4}, {17, 9, 16, 8, 15, 11}, {33, 19, 33, 19, 33, 19},
};

std::vector<int> implemented_ids() {
  std::vector<int> ids;
  for (int id = 1; id <= zv::kTransitionCount; ++id) {
    if (zv::transition_is_implemented(id)) ids.push_back(id);
  }
  return ids;
}

class RobustnessTest : public ::testing::TestWithParam<int> {};

TEST_P(RobustnessTest, HostileInputsGiveAResultCodeAndLeaveTheSourcesAlone) {
  const int id = GetParam();
  std::mt19937 gen(static_cast<uint32_t>(id));
  auto pick = [&gen](const auto& values) { return values[gen() % std::size(values)]; };
  for (int round = 0; round < 150; ++round) {
    const Sizes s = pick(kSizes);
    auto a = zvtest::random_frame(s.a_w, s.a_h, 1), b = zvtest::random_frame(s.b_w, s.b_h, 2);
    auto out = zvtest::random_frame(s.out_w, s.out_h, 3);
    const auto a_before = zvtest::frame_bytes(*a), b_before = zvtest::frame_bytes(*b);
    TransitionParams params = zvtest::make_params(pick(kStyles), pick(kPositions), pick(kDurations));
    params.param1 = pick(kParam1);
    params.param2 = pick(kParam2);
    params.param3 = static_cast<int32_t>(gen());
    const int result = zv::transition_entry(id)(out.get(), a.get(), b.get(), &params);
    EXPECT_GE(result, 0) << "round " << round;
    EXPECT_LE(result, 3) << "round " << round;
    ASSERT_EQ(zvtest::frame_bytes(*a), a_before) << "round " << round;
    ASSERT_EQ(zvtest::frame_bytes(*b), b_before) << "round " << round;
  }
}

TEST_P(RobustnessTest, NullArgumentsNeverCrash) {
  const int id = GetParam();
  auto a = zvtest::random_frame(8, 6, 1), b = zvtest::random_frame(8, 6, 2), out = zvtest::random_frame(8, 6, 3);
  TransitionParams params = zvtest::make_params(0, 0.5);
  const TransitionOp op = zv::transition_entry(id);
  // Every combination with at least one null argument.
  for (int mask = 1; mask < 16; ++mask) {
    Image* o = (mask & 1) ? nullptr : out.get();
    Image* pa = (mask & 2) ? nullptr : a.get();
    Image* pb = (mask & 4) ? nullptr : b.get();
    TransitionParams* pp = (mask & 8) ? nullptr : &params;
    // Picture in picture and Overlap Alpha Blend carry on unless all four are
    // null; they must still touch nothing they were not given.
    const int result = op(o, pa, pb, pp);
    if (id == 16 || id == 17) {
      EXPECT_LE(result, 1) << "mask " << mask;
    } else {
      EXPECT_EQ(result, 1) << "mask " << mask;
    }
  }
}

INSTANTIATE_TEST_SUITE_P(Implemented, RobustnessTest, ::testing::ValuesIn(implemented_ids()),
                         [](const ::testing::TestParamInfo<int>& info) { return "id" + std::to_string(info.param); });

}  // namespace
