// Every software transition: its fast plane workers produce exactly the bytes
// of the plain reference workers, on random frames of odd and mixed sizes.
#include <gtest/gtest.h>

#include <set>
#include <string>

#include "frame/catalogue.h"
#include "frame/kernel_path.h"
#include "frame/registration.h"
#include "frame/zv_transition.h"
#include "tests/test_support.h"

namespace {

using zvtest::ImagePtr;

// Drawn with OpenGL: no separate reference path.
const std::set<int> kOpenGlIds = {49, 57};

std::vector<int> software_ids() {
  std::vector<int> ids;
  for (int id = 1; id <= zv::kTransitionCount; ++id) {
    if (zv::transition_is_implemented(id) && !kOpenGlIds.count(id)) ids.push_back(id);
  }
  return ids;
}

struct Sizes {
  int out_w, out_h, a_w, a_h, b_w, b_h;
};

const Sizes kSizes[] = {
    {1, 1, 1, 1, 1, 1},
    {7, 5, 7, 5, 7, 5},
    {33, 17, 33, 17, 33, 17},
    {64, 48, 64, 48, 64, 48},
    {37, 21, 33, 17, 41, 25},   // three different sizes
    {50, 30, 71, 43, 24, 61},
};

struct ParamSet {
  int param1;
  double param2;
};
const ParamSet kParamSets[] = {{0, 0.0}, {5, 3.0}, {0x00140028, 655380.0}, {-3, -1.0}};

const double kPositions[] = {0.0, 0.13, 0.5, 0.77, 1.0};

std::vector<uint8_t> run_once(int id, zv::KernelPath path, const Sizes& s, const TransitionParams& params) {
  ImagePtr a = zvtest::random_frame(s.a_w, s.a_h, 11);
  ImagePtr b = zvtest::random_frame(s.b_w, s.b_h, 22);
  ImagePtr out = zvtest::random_frame(s.out_w, s.out_h, 33);
  TransitionParams block = params;
  zvtest::reset_random_state();
  zv::set_kernel_path(path);
  zv::transition_entry(id)(out.get(), a.get(), b.get(), &block);
  zv::set_kernel_path(zv::KernelPath::kFast);
  return zvtest::frame_bytes(*out);
}

class FastPathTest : public ::testing::TestWithParam<int> {};

TEST_P(FastPathTest, MatchesReferenceOnRandomFrames) {
  const int id = GetParam();
  const int styles = std::max({zvTranGetStyleCount(id), zv::style_list_length(id), 1});
  for (int style = 0; style < styles; ++style) {
    for (const Sizes& s : kSizes) {
      for (const ParamSet& ps : kParamSets) {
        for (double position : kPositions) {
          TransitionParams params = zvtest::make_params(style, position);
          params.param1 = ps.param1;
          params.param2 = ps.param2;
          ASSERT_EQ(run_once(id, zv::KernelPath::kReference, s, params), run_once(id, zv::KernelPath::kFast, s, params))
              << "id " << id << " style " << style << " out " << s.out_w << "x" << s.out_h << " param1 "
              << ps.param1 << " position " << position;
        }
      }
    }
  }
}

INSTANTIATE_TEST_SUITE_P(SoftwareTransitions, FastPathTest, ::testing::ValuesIn(software_ids()),
                         [](const ::testing::TestParamInfo<int>& info) { return "id" + std::to_string(info.param); });

}  // namespace
