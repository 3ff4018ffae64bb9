// What every geometric wipe, image-space effect and software 3D effect
// promises: `a` at the start and `b` at the end, nothing written for a style
// out of range, and nothing written outside the centred common area when the
// three frames differ in size.
#include <gtest/gtest.h>

#include <ostream>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "frame/registration.h"
#include "tests/test_support.h"

namespace {

using zvtest::ImagePtr;

struct Wipe {
  int id;
  int styles;
  std::set<int> not_a_at_start;  // styles whose progress 0 is not exactly `a`
  std::set<int> not_b_at_end;    // styles whose progress 1 is not exactly `b`
  std::set<int> writes_outside;  // styles that may write outside the common area
  bool reads_style = true;       // false: no styles, `style` is never read
};

const Wipe kWipes[] = {
    {1, 8, {}, {}, {}},
    // Push 2 and 3 step the output by the first source's stride.
    {2, 8, {}, {}, {2, 3}},
    {3, 8, {}, {}, {}},
    {4, 8, {}, {}, {}},
    // Round Close's circle already leaves b in the corners at 0; Round Open's
    // end is promised only for some sizes.
    {5, 8, {2, 3}, {2, 3}, {}},
    {7, 8, {}, {}, {}},
    {9, 4, {}, {}, {}},
    // Slanted blinds keep a sliver of the other picture unless 2W / n is whole
    // (with 10 strips on 64 or 32 columns it is not).
    {10, 8, {5, 7}, {4, 6}, {}},
    // The image-space effects and the software 3D effects.
    {18, 8, {}, {}, {}},
    {26, 2, {}, {}, {}},
    {27, 2, {}, {}, {}},
    {28, 2, {}, {}, {}},
    {29, 2, {}, {}, {}},
    {33, 4, {}, {}, {}},
    {34, 1, {}, {}, {}, false},
    {35, 4, {}, {}, {}},
    {54, 3, {}, {}, {}},
    {56, 2, {}, {}, {}},
    {63, 2, {}, {}, {}},
    {65, 1, {}, {}, {}, false},
};

void PrintTo(const Wipe& w, std::ostream* os) { *os << "id " << w.id; }

std::vector<Wipe> implemented() {
  std::vector<Wipe> wipes;
  for (const Wipe& w : kWipes) {
    if (zv::transition_is_implemented(w.id)) wipes.push_back(w);
  }
  return wipes;
}

int call(const Wipe& w, int style, double position, Image* out, Image* a, Image* b) {
  TransitionParams params = zvtest::make_params(style, position);
  return zv::transition_entry(w.id)(out, a, b, &params);
}

class WipesCommonTest : public ::testing::TestWithParam<Wipe> {};

// Even sizes on every plane, so the odd-size rules of some wipes do not apply.
TEST_P(WipesCommonTest, StartShowsAAndEndShowsB) {
  const Wipe& w = GetParam();
  ImagePtr a = zvtest::random_frame(64, 48, 1), b = zvtest::random_frame(64, 48, 2);
  for (int style = 0; style < w.styles; ++style) {
    for (const auto& [position, expected, exceptions] :
         {std::make_tuple(0.0, a.get(), &w.not_a_at_start), std::make_tuple(1.0, b.get(), &w.not_b_at_end)}) {
      if (exceptions->count(style)) continue;
      ImagePtr out = zvtest::random_frame(64, 48, 3);
      ASSERT_EQ(call(w, style, position, out.get(), a.get(), b.get()), 0);
      EXPECT_EQ(zvtest::frame_bytes(*out), zvtest::frame_bytes(*expected))
          << "id " << w.id << " style " << style << " position " << position;
    }
  }
}

TEST_P(WipesCommonTest, StyleOutOfRangeWritesNothing) {
  const Wipe& w = GetParam();
  ImagePtr a = zvtest::random_frame(33, 17, 1), b = zvtest::random_frame(33, 17, 2);
  ImagePtr out = zvtest::random_frame(33, 17, 3);
  const std::vector<uint8_t> before = zvtest::frame_bytes(*out);
  ImagePtr styled = zvtest::random_frame(33, 17, 3);
  ASSERT_EQ(call(w, 0, 0.5, styled.get(), a.get(), b.get()), 0);
  for (int style : {w.styles, 8, -1}) {
    ASSERT_EQ(call(w, style, 0.5, out.get(), a.get(), b.get()), 0) << "style " << style;
    // Without styles, any style draws what style 0 draws.
    EXPECT_EQ(zvtest::frame_bytes(*out), w.reads_style ? before : zvtest::frame_bytes(*styled))
        << "id " << w.id << " style " << style;
  }
}

// out 37 x 21, a 33 x 25, b 41 x 17: the common area is 33 x 17 (chroma
// 16 x 8), at column 2 and row 2 of out's luma and column 1, row 1 of its chroma.
TEST_P(WipesCommonTest, FramesOfThreeSizesWriteOnlyTheCommonArea) {
  const Wipe& w = GetParam();
  ImagePtr a = zvtest::random_frame(33, 25, 1), b = zvtest::random_frame(41, 17, 2);
  for (int style = 0; style < w.styles; ++style) {
    if (w.writes_outside.count(style)) continue;
    for (double position : {0.0, 0.3, 0.5, 1.0}) {
      ImagePtr out = zvtest::random_frame(37, 21, 3);
      const std::vector<uint8_t> y = zvtest::plane_bytes(*out, 0), u = zvtest::plane_bytes(*out, 1),
                                 v = zvtest::plane_bytes(*out, 2);
      ASSERT_EQ(call(w, style, position, out.get(), a.get(), b.get()), 0);
      for (int plane = 0; plane < 3; ++plane) {
        const std::vector<uint8_t>& before = plane == 0 ? y : plane == 1 ? u : v;
        const int width = plane == 0 ? 37 : 18, height = plane == 0 ? 21 : 10;
        const int x0 = plane == 0 ? 2 : 1, y0 = plane == 0 ? 2 : 1, cw = plane == 0 ? 33 : 16,
                  ch = plane == 0 ? 17 : 8;
        for (int row = 0; row < height; ++row) {
          for (int col = 0; col < width; ++col) {
            if (col >= x0 && col < x0 + cw && row >= y0 && row < y0 + ch) continue;
            ASSERT_EQ(zvtest::sample(*out, plane, col, row), before[row * width + col])
                << "id " << w.id << " style " << style << " position " << position << " plane " << plane
                << " x " << col << " y " << row;
          }
        }
      }
    }
  }
}

// A zero duration gives a NaN progress, which the clamp lets through: every
// style must still return 0 without touching memory it was not given.
TEST_P(WipesCommonTest, NanProgressIsSafe) {
  const Wipe& w = GetParam();
  ImagePtr a = zvtest::random_frame(37, 21, 1), b = zvtest::random_frame(33, 25, 2);
  ImagePtr out = zvtest::random_frame(41, 17, 3);
  for (int style = 0; style < w.styles; ++style) {
    TransitionParams params = zvtest::make_params(style, 0.5, 0.0);
    EXPECT_EQ(zv::transition_entry(w.id)(out.get(), a.get(), b.get(), &params), 0) << "style " << style;
  }
}

INSTANTIATE_TEST_SUITE_P(GeometricWipes, WipesCommonTest, ::testing::ValuesIn(implemented()),
                         [](const ::testing::TestParamInfo<Wipe>& info) { return "id" + std::to_string(info.param.id); });

}  // namespace
