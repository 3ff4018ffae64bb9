// What every transition promises, checked for each id from one row of traits: its end frames, its answer to styles past
// the last, where it writes when the frames differ in size, its result codes, hostile inputs, and its fast path against
// the reference path. A transition joins by adding its row. Then the pieces of the call contract they share: progress,
// the x86 integer conversions and the centred common region.
#include <gtest/gtest.h>

#include <cmath>
#include <initializer_list>
#include <limits>
#include <random>
#include <set>
#include <string>
#include <vector>

#include "frame/kernel_path.h"
#include "frame/plane.h"
#include "frame/registration.h"
#include "tests/test_support.h"

namespace {

using zvtest::ImagePtr;

// A set of styles, one bit each.
constexpr uint32_t styles(std::initializer_list<int> list) {
  uint32_t mask = 0;
  for (int s : list) mask |= 1u << s;
  return mask;
}
constexpr uint32_t kNone = 0, kEvery = ~0u;

enum Drawing { kSoftware, kOpenGl };
enum Arguments { kPrologue, kOwnCheck };  // kOwnCheck: carries on without what it lacks

struct Traits {
  int id;
  int styles;          // styles 0 .. styles - 1 draw
  int past_result;     // the result for a style past the last, or negative
  bool past_draws;     // whether such a call still draws
  uint32_t not_a_at_start;  // styles whose progress 0 is not exactly `a`
  uint32_t not_b_at_end;    // styles whose progress 1 is not exactly `b`
  uint32_t writes_outside;  // styles that write outside the centred common region
  Drawing drawing = kSoftware;
  Arguments arguments = kPrologue;
  int done = 0;  // the result of an ordinary call
};

void PrintTo(const Traits& t, std::ostream* os) { *os << "id " << t.id; }

// Most transitions: no exceptions; one with a single style draws it for any style.
Traits plain(int id, int styles) { return {id, styles, 0, styles == 1, kNone, kNone, kNone}; }
// Drawn with OpenGL: never exactly a picture at the ends, and the whole frame.
Traits gl(int id, int styles) { return {id, styles, 0, styles == 1, kEvery, kEvery, kEvery, kOpenGl}; }

const Traits kTraits[] = {
    plain(1, 8),
    // Push 2 and 3 step the output by the first source's stride.
    {2, 8, 0, false, kNone, kNone, styles({2, 3})},
    plain(3, 8), plain(4, 8),
    // Round Close's circle already leaves b in the corners at 0; Round Open's end is promised only for some sizes.
    {5, 8, 0, false, styles({2, 3}), styles({2, 3}), kNone},
    plain(6, 8), plain(7, 8), plain(8, 8), plain(9, 4),
    // Slanted blinds keep a sliver of the other picture unless 2W / n is whole.
    {10, 8, 0, false, styles({5, 7}), styles({4, 6}), kNone},
    plain(11, 8), plain(12, 2),
    // The zooms resample their picture even at the ends; the in-and-out styles
    // and the point zooms fill or copy whole frames.
    {13, 8, 3, false, styles({1, 3, 5, 6, 7}), styles({0, 2, 4, 6, 7}), kEvery},
    // A picture fading alone uses its own region with out.
    {14, 8, 3, false, styles({2}), styles({1}), styles({1, 2, 3})},
    // Other styles keep the copy of a; the last line pair completes only past 1.
    {15, 8, 0, true, kNone, kEvery, kNone},
    {16, 2, 0, true, kEvery, kEvery, kEvery, kSoftware, kOwnCheck},
    // The keyed overlap answers 1 when it has drawn.
    {17, 1, 1, true, kNone, kEvery, kEvery, kSoftware, kOwnCheck, 1},
    plain(18, 8), plain(19, 4), plain(20, 6), plain(21, 2), plain(22, 2), plain(23, 2), plain(24, 4), plain(25, 4),
    plain(26, 2), plain(27, 2), plain(28, 2), plain(29, 2), plain(30, 2), plain(31, 8), plain(32, 4), plain(33, 4),
    // No styles: every style draws what style 0 draws.
    plain(34, 1), plain(35, 4),
    // The grey spills across a wider output's rows.
    {36, 2, 0, false, kNone, kNone, styles({0, 1})},
    // The luma is written one row down.
    {37, 1, 0, true, kEvery, kEvery, kEvery},
    // About one sample in 501 still shows a at the end.
    {38, 1, 0, true, kNone, kEvery, kNone},
    // The diagonal styles do not fold progress.
    {39, 8, 0, true, kNone, styles({4, 5, 6, 7}), kNone},
    plain(40, 2), plain(41, 1), gl(42, 1), gl(43, 1),
    {44, 2, 3, false, styles({1}), styles({0}), kEvery},
    gl(45, 1),
    {46, 2, 3, false, styles({1}), styles({0}), kEvery},
    gl(47, 3), gl(48, 2), gl(49, 1), gl(50, 1), gl(51, 1), gl(52, 1), plain(53, 1), plain(54, 3), gl(55, 1),
    plain(56, 2), gl(57, 1), gl(58, 4),
    // The host's copy of the revealed picture covers the whole frame.
    {59, 2, 0, false, kNone, kNone, kEvery},
    gl(60, 6), gl(61, 1), gl(62, 1), plain(63, 2), gl(64, 1), plain(65, 1), plain(66, 1),
};

bool in(uint32_t mask, int style) { return style >= 0 && style < 32 && (mask >> style) & 1; }

int call(int id, Image* out, Image* a, Image* b, TransitionParams params) {
  return zv::transition_entry(id)(out, a, b, &params);
}

class TransitionContract : public ::testing::TestWithParam<Traits> {};

// Even sizes on every plane, so the odd-size rules of some wipes do not apply;
// a position before 0 or past 1 is clamped to the ends.
TEST_P(TransitionContract, StartShowsAAndEndShowsB) {
  const Traits& t = GetParam();
  ImagePtr a = zvtest::random_frame(64, 48, 1), b = zvtest::random_frame(64, 48, 2);
  for (int style = 0; style < t.styles; ++style) {
    for (double position : {-1.0, 0.0, 1.0, 3.0}) {
      const bool end = position >= 1.0;
      if (in(end ? t.not_b_at_end : t.not_a_at_start, style)) continue;
      ImagePtr out = zvtest::random_frame(64, 48, 3);
      ASSERT_EQ(call(t.id, out.get(), a.get(), b.get(), zvtest::make_params(style, position)), t.done);
      EXPECT_EQ(zvtest::frame_bytes(*out), zvtest::frame_bytes(end ? *b : *a))
          << "style " << style << " position " << position;
    }
  }
}

TEST_P(TransitionContract, StylesPastTheLastGiveTheirResult) {
  const Traits& t = GetParam();
  ImagePtr a = zvtest::random_frame(33, 17, 1), b = zvtest::random_frame(33, 17, 2);
  a->set_frame_flags(9);
  for (int style : {t.styles, 8, 9, -1, 1000, INT32_MIN}) {
    if (style >= 0 && style < t.styles) continue;
    ImagePtr out = zvtest::random_frame(33, 17, 3);
    const std::vector<uint8_t> before = zvtest::frame_bytes(*out);
    EXPECT_EQ(call(t.id, out.get(), a.get(), b.get(), zvtest::make_params(style, 0.5)), t.past_result)
        << "style " << style;
    if (t.past_draws) continue;
    EXPECT_EQ(zvtest::frame_bytes(*out), before) << "style " << style;
    EXPECT_EQ(out->frame_flags(), 9) << "style " << style;
  }
}

// out 37 x 21, a 33 x 25, b 41 x 17: the common area is 33 x 17 (chroma
// 16 x 8), at column 2 and row 2 of out's luma and column 1, row 1 of its chroma.
TEST_P(TransitionContract, FramesOfThreeSizesWriteOnlyTheCentredCommonRegion) {
  const Traits& t = GetParam();
  ImagePtr a = zvtest::random_frame(33, 25, 1), b = zvtest::random_frame(41, 17, 2);
  const ImagePtr before = zvtest::random_frame(37, 21, 3);
  for (int style = 0; style < t.styles; ++style) {
    if (in(t.writes_outside, style)) continue;
    for (double position : {0.0, 0.3, 0.55, 0.8, 1.0}) {
      ImagePtr out = zvtest::random_frame(37, 21, 3);
      ASSERT_EQ(call(t.id, out.get(), a.get(), b.get(), zvtest::make_params(style, position)), t.done);
      for (int plane = 0; plane < 3; ++plane) {
        const int x0 = plane == 0 ? 2 : 1, cw = plane == 0 ? 33 : 16, ch = plane == 0 ? 17 : 8;  // y0 = x0
        ASSERT_TRUE(zvtest::samples_are(*out, plane, [&](int x, int y) {
          const bool inside = x >= x0 && x < x0 + cw && y >= x0 && y < x0 + ch;
          return zvtest::sample(inside ? *out : *before, plane, x, y);
        })) << "style " << style << " position " << position;
      }
    }
  }
}

// The transitions that take a NaN progress as 0: every wipe, and every
// transition added beside the wipes with the same clamp.
const std::set<int> kNanShowsStart = {1,  2,  3,  4,  5,  6,  7,  8,  9,  10, 11, 12, 18, 19, 20, 21, 22, 23,
                                      24, 25, 26, 27, 28, 29, 30, 31, 32, 33, 34, 35, 54, 56, 63, 65};

// A zero duration or a NaN position gives a NaN progress: every style still gives its ordinary result without touching
// memory it was not given, and where the progress is clamped to 0 the picture is the one of progress 0.
TEST_P(TransitionContract, NotANumberProgressIsSafe) {
  const Traits& t = GetParam();
  ImagePtr a = zvtest::random_frame(37, 21, 1), b = zvtest::random_frame(33, 25, 2);
  for (int style = 0; style < t.styles; ++style) {
    ImagePtr start = zvtest::random_frame(41, 17, 3);
    ASSERT_EQ(call(t.id, start.get(), a.get(), b.get(), zvtest::make_params(style, 0.0)), t.done) << style;
    for (const auto& [position, duration] : {std::make_pair(0.5, 0.0), std::make_pair(std::nan(""), 1.0)}) {
      ImagePtr out = zvtest::random_frame(41, 17, 3);
      EXPECT_EQ(call(t.id, out.get(), a.get(), b.get(), zvtest::make_params(style, position, duration)), t.done)
          << style;
      if (kNanShowsStart.count(t.id)) {
        EXPECT_EQ(zvtest::frame_bytes(*out), zvtest::frame_bytes(*start)) << "style " << style;
      }
    }
  }
}

// Every combination with at least one null argument returns 1 and leaves `out` alone, flags included; a disabled block
// returns 2 and only copies a's flags. Transitions with their own check carry on without what they lack unless all four
// are null, and never test the block's switch.
TEST_P(TransitionContract, NullArgumentsReturnOneAndDisabledBlocksTwo) {
  const Traits& t = GetParam();
  ImagePtr a = zvtest::random_frame(8, 6, 1), b = zvtest::random_frame(8, 6, 2), out = zvtest::random_frame(8, 6, 3);
  a->set_frame_flags(7);
  const std::vector<uint8_t> before = zvtest::frame_bytes(*out);
  TransitionParams params = zvtest::make_params(0, 0.5);
  for (int mask = 1; mask < 16; ++mask) {
    Image* o = (mask & 1) ? nullptr : out.get();
    const int result = zv::transition_entry(t.id)(o, (mask & 2) ? nullptr : a.get(), (mask & 4) ? nullptr : b.get(),
                                                  (mask & 8) ? nullptr : &params);
    if (t.arguments == kOwnCheck) {
      EXPECT_LE(result, 1) << "mask " << mask;
      continue;
    }
    EXPECT_EQ(result, 1) << "mask " << mask;
    EXPECT_EQ(out->frame_flags(), 0) << "mask " << mask;
    EXPECT_EQ(zvtest::frame_bytes(*out), before) << "mask " << mask;
  }
  if (t.arguments == kOwnCheck) return;
  for (int enabled : {0, -5}) {
    params.enabled = enabled;
    EXPECT_EQ(call(t.id, out.get(), a.get(), b.get(), params), 2);
  }
  EXPECT_EQ(out->frame_flags(), 7);
  EXPECT_EQ(zvtest::frame_bytes(*out), before);
}

// Whatever a host hands a transition (NaN or huge progress and parameters, odd, zero or negative sizes, styles out of
// range), it returns one of its result codes, reads `a` and `b` without changing them, and stays inside the planes it
// was given (the sanitizer build checks the last part).
TEST_P(TransitionContract, HostileInputsGiveAResultCodeAndLeaveTheSourcesAlone) {
  const Traits& t = GetParam();
  const double inf = std::numeric_limits<double>::infinity(), nan = std::nan("");
  const int style_values[] = {-1, 0, 1, 2, 3, 5, 7, 8, 1 << 30, INT32_MIN};
  const double positions[] = {nan, inf, -inf, 1e300, -1e300, 0.5, 0.999};
  const double durations[] = {0.0, nan, 1.0, -1.0, 1e-300};
  const int param1s[] = {0, -1, INT32_MIN, INT32_MAX, 0x7FFF7FFF, 1000, 50};
  const double param2s[] = {0.0, nan, 1e300, -1e300, 4294967295.0, 40.0};
  const int sizes[][6] = {{0, 0, 0, 0, 0, 0},   {-3, -5, 4, 4, 4, 4},     {1, 1, 1, 1, 1, 1},
                          {2, 1, 3, 3, 1, 2},   {4, 4, -2, 6, 4, 4},      {17, 9, 16, 8, 15, 11},
                          {33, 19, 33, 19, 33, 19}};
  std::mt19937 gen(static_cast<uint32_t>(t.id));
  auto pick = [&gen](const auto& values) { return values[gen() % std::size(values)]; };
  for (int round = 0; round < 150; ++round) {
    const auto& s = sizes[gen() % std::size(sizes)];
    ImagePtr a = zvtest::random_frame(s[2], s[3], 1), b = zvtest::random_frame(s[4], s[5], 2);
    ImagePtr out = zvtest::random_frame(s[0], s[1], 3);
    const std::vector<uint8_t> a_before = zvtest::frame_bytes(*a), b_before = zvtest::frame_bytes(*b);
    TransitionParams params = zvtest::make_params(pick(style_values), pick(positions), pick(durations));
    params.param1 = pick(param1s);
    params.param2 = pick(param2s);
    params.param3 = static_cast<int32_t>(gen());
    // Sizes and values never change the result: a drawing style's ordinary one, or the one past the last.
    const int result = call(t.id, out.get(), a.get(), b.get(), params);
    const bool drawing_style = params.style >= 0 && params.style < t.styles;
    const int expected = t.arguments == kOwnCheck ? result : drawing_style ? t.done : t.past_result;
    EXPECT_EQ(result, expected) << "round " << round;
    EXPECT_TRUE(result >= 0 && result <= 3) << "round " << round;
    ASSERT_EQ(zvtest::frame_bytes(*a), a_before) << "round " << round;
    ASSERT_EQ(zvtest::frame_bytes(*b), b_before) << "round " << round;
  }
}

// The fast plane workers give exactly the bytes of the plain reference
// workers, on random frames of odd and mixed sizes, and on frames large
// enough for workers that split their rows over the cores.
TEST_P(TransitionContract, FastPathMatchesTheReferencePath) {
  const Traits& t = GetParam();
  if (t.drawing == kOpenGl) GTEST_SKIP() << "drawn with OpenGL: no separate reference path";
  const int sizes[][6] = {{1, 1, 1, 1, 1, 1},       {7, 5, 7, 5, 7, 5},       {33, 17, 33, 17, 33, 17},
                          {64, 48, 64, 48, 64, 48}, {37, 21, 33, 17, 41, 25}, {50, 30, 71, 43, 24, 61},
                          {12, 6, 12, 6, 8, 6},     {8, 6, 8, 6, 12, 6},     {8, 4, 8, 4, 10, 4}};
  const std::pair<int, double> params[] = {{0, 0.0}, {5, 3.0}, {0x00140028, 655380.0}, {-3, -1.0}};
  auto run = [&](zv::KernelPath path, const int* s, TransitionParams block) {
    ImagePtr a = zvtest::random_frame(s[2], s[3], 11), b = zvtest::random_frame(s[4], s[5], 22);
    ImagePtr out = zvtest::random_frame(s[0], s[1], 33);
    zvtest::reset_random_state();
    zv::set_kernel_path(path);
    call(t.id, out.get(), a.get(), b.get(), block);
    zv::set_kernel_path(zv::KernelPath::kFast);
    return zvtest::frame_bytes(*out);
  };
  for (int style = 0; style < std::max(t.styles, 8); ++style) {
    for (const auto& s : sizes) {
      for (const auto& [param1, param2] : params) {
        for (double position : {0.0, 0.13, 0.5, 0.77, 1.0}) {
          TransitionParams block = zvtest::make_params(style, position);
          block.param1 = param1;
          block.param2 = param2;
          ASSERT_EQ(run(zv::KernelPath::kReference, s, block), run(zv::KernelPath::kFast, s, block))
              << "style " << style << " out " << s[0] << "x" << s[1] << " param1 " << param1 << " position "
              << position;
        }
      }
    }
    const int large[6] = {331, 263, 331, 263, 301, 277};
    for (double position : {0.13, 0.77}) {
      const TransitionParams block = zvtest::make_params(style, position);
      ASSERT_EQ(run(zv::KernelPath::kReference, large, block), run(zv::KernelPath::kFast, large, block))
          << "style " << style << " large frames, position " << position;
    }
  }
}

INSTANTIATE_TEST_SUITE_P(Implemented, TransitionContract, ::testing::ValuesIn(kTraits),
                         [](const ::testing::TestParamInfo<Traits>& info) {
                           return "id" + std::to_string(info.param.id);
                         });

// (position, duration, progress); -1 / -2 gives a negative zero, unguarded.
TEST(ProgressTest, FollowsTheBlockAndPassesNotANumberThrough) {
  const double cases[][3] = {{0.4, 1.0, 0.4},   {3.0, 2.0, 1.0},   {2.0, 2.0, 1.0},  {-1.0, 2.0, 0.0},
                             {-1.0, -2.0, -0.0}, {0.5, -2.0, 1.0}, {12.5, 25.0, 0.5}};
  for (const auto& [position, duration, expected] : cases) {
    TransitionParams params = zvtest::make_params(0, position, duration);
    const double p = zv::transition_progress(&params);
    EXPECT_EQ(p, expected) << position << " over " << duration;
    EXPECT_EQ(std::signbit(p), std::signbit(expected)) << position << " over " << duration;
  }
  TransitionParams zero_duration = zvtest::make_params(0, 0.5, 0.0);
  EXPECT_TRUE(std::isnan(zv::transition_progress(&zero_duration)));
  TransitionParams nan_position = zvtest::make_params(0, std::numeric_limits<double>::quiet_NaN(), 1.0);
  EXPECT_TRUE(std::isnan(zv::transition_progress(&nan_position)));
  EXPECT_TRUE(std::isnan(zv::clamp_progress(std::nan(""))));
}

// Out-of-range user parameters draw exactly what their limit draws; where marked, one step inside the limit draws
// something else: Blind's (10) and Cross's (9) strip counts, Obscure's (29) strip count, Roll's (18) width and Zoom
// Box's (46) box counts.
TEST(UserParameters, OutOfRangeValuesDrawTheirLimit) {
  struct Limit { int id, style; double position; int given1, limit1; double given2, limit2; bool step_inside_differs; };
  const Limit cases[] = {{10, 0, 0.4, 0, 10, 0, 0, true},      {10, 0, 0.4, -3, 10, 0, 0, true},
                         {10, 0, 0.4, 150, 100, 0, 0, true},   {9, 2, 0.4, 0, 8, 0, 0, true},
                         {9, 2, 0.4, 200, 70, 0, 0, true},     {29, 0, 0.3, -3, 10, 0, 0, false},
                         {29, 0, 0.3, 500, 100, 0, 0, false},  {18, 2, 0.4, 0, 20, 0, 0, false},
                         {18, 2, 0.4, 70, 50, 0, 0, false},    {46, 0, 0.4, 75, 50, 80.0, 50.0, true}};
  ImagePtr a = zvtest::random_frame(720, 576, 1), b = zvtest::random_frame(720, 576, 2);
  auto draw = [&](const Limit& c, int param1, double param2) {
    ImagePtr out = zvtest::random_frame(720, 576, 3);
    zvtest::run_transition(c.id, out.get(), a.get(), b.get(), c.style, c.position, param1, param2);
    return zvtest::frame_bytes(*out);
  };
  for (const Limit& c : cases) {
    const std::vector<uint8_t> limit = draw(c, c.limit1, c.limit2);
    EXPECT_EQ(draw(c, c.given1, c.given2), limit) << "id " << c.id << " given " << c.given1;
    if (c.step_inside_differs) {
      EXPECT_NE(draw(c, c.limit1 - 1, c.limit2), limit) << "id " << c.id << " at " << c.limit1 - 1;
    }
  }
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
  auto region = [&](Image& o, int plane) {
    return zv::common_region(zv::image_plane(&o, plane), zv::image_plane(&a, plane), zv::image_plane(&b, plane));
  };
  zv::CommonRegion r = region(out, 0);
  EXPECT_EQ(r.width, 704);
  EXPECT_EQ(r.height, 576);
  EXPECT_EQ(r.a, a.get_Y() + 8);  // a is read from column 8 on
  EXPECT_EQ(r.out, out.get_Y());
  EXPECT_EQ(region(out, 1).a, a.get_U() + 4);
  // Zero and negative sizes give an empty region.
  Image empty(0, 10), negative(-4, -4);
  EXPECT_TRUE(region(empty, 0).empty());
  EXPECT_TRUE(region(negative, 0).empty());
}

}  // namespace
