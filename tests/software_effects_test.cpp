// The image-space effects (Obscure, Swap, Swing, Gauze, Edge Feather, Wind, Lens) and the software 3D effects (3D Roll,
// 3D Page Turn, 3D Center Peel, 3D Peel Back, 3D Curtain): the exact samples of their geometry on 720 x 576 frames (360
// x 288 chroma), and what all twelve promise together.
#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <thread>
#include <tuple>
#include <vector>

#include "effects3d/column_surface.h"
#include "frame/det_rand.h"
#include "tests/test_support.h"

namespace {

using zvtest::ImagePtr;
using zvtest::sample;

constexpr int kRoll = 18, kPageTurn = 26, kCenterPeel = 27, kPeelBack = 28, kCurtain = 34;
constexpr int kObscure = 29, kSwap = 33, kSwing = 35, kGauze = 54, kEdgeFeather = 56, kWind = 63, kLens = 65;
constexpr int W = 720, H = 576;

struct Frames { ImagePtr a, b, out; };

Frames run(int id, int style, double position, int param1 = 0, bool solid = false) {
  Frames f{solid ? zvtest::solid_frame(W, H, 200, 200, 200) : zvtest::random_frame(W, H, 1),
           solid ? zvtest::solid_frame(W, H, 40, 40, 40) : zvtest::random_frame(W, H, 2),
           zvtest::random_frame(W, H, 3)};
  EXPECT_EQ(zvtest::run_transition(id, f.out.get(), f.a.get(), f.b.get(), style, position, param1), 0);
  return f;
}

// One expected sample: plane and output position; the source ('a', 'b', or 'v' for the literal value sx) and its
// position; the luma shading weight; whether it is the back of a page.
struct Expect { int plane, x, y; char source; int sx, sy, shade = 256; bool back = false; };
struct Case { std::string name; int id, style; double position; int param1; bool solid; std::vector<Expect> expects; };
// A sample taken from the same position of `source`.
Expect at(int plane, int x, int y, char source) { return {plane, x, y, source, x, y}; }

// Obscure's bars on ten 72-column strips at p = 0.25 and 0.75, at each strip's first or last column.
std::vector<Expect> obscure_bars(bool second) {
  const int bars[10] = {432, 400, 368, 336, 304, 272, 240, 208, 176, 144};
  std::vector<Expect> e;
  for (int i = 0; i < 10; ++i) {
    const int x = 72 * i + 71 * (i % 2), h = bars[i];
    e.push_back(second ? Expect{0, x, h - 1, 'b', x, h - 1} : Expect{0, x, h - 1, 'v', 16, 0});
    e.push_back(second ? Expect{0, x, h, 'v', 16, 0} : Expect{0, x, h, 'a', x, h});
  }
  return e;
}

const std::vector<Case> kCases = {
    {"ObscureFirstPhase", kObscure, 0, 0.25, 10, false, obscure_bars(false)},
    {"ObscureSecondPhase", kObscure, 0, 0.75, 10, false, obscure_bars(true)},
    // Bottom to Top: the same bars from the bottom row up.
    {"ObscureBottomToTop", kObscure, 1, 0.25, 10, false,
     {{0, 0, H - 432, 'v', 16, 0}, {0, 0, H - 433, 'a', 0, H - 433}, {0, 719, H - 144, 'v', 16, 0},
      {0, 719, H - 145, 'a', 719, H - 145}}},
    // One strip: no stagger, one bar over the whole width.
    {"ObscureOneStrip", kObscure, 0, 0.25, 1, false,
     {{0, 0, 431, 'v', 16, 0}, {0, 719, 431, 'v', 16, 0}, at(0, 719, 432, 'a')}},
    {"SwapMidpoint", kSwap, 0, 0.5, 0, false,
     {{0, 0, 115, 'b', 120, 0}, {0, 359, 460, 'b', 718, 574}, {0, 360, 115, 'a', 0, 0}, {0, 719, 460, 'a', 598, 574},
      {0, 0, 114, 'v', 16, 0}, {0, 500, 461, 'v', 16, 0}}},
    // `a` in front where they overlap; `b` from column -51, `a` from 255.
    {"SwapQuarter", kSwap, 0, 0.25, 0, false,
     {{0, 254, 81, 'b', 425, 0}, {0, 255, 81, 'a', 0, 0}, {0, 464, 493, 'a', 291, 574}, {0, 465, 81, 'a', 293, 0},
      {0, 0, 80, 'v', 16, 0}, {0, 719, 494, 'v', 16, 0}}},
    {"SwingIn1Half", kSwing, 0, 0.5, 0, false,
     {at(0, 0, 7, 'b'), {0, 508, 9, 'b', 718, 9}, at(0, 509, 9, 'a'), {1, 254, 3, 'b', 358, 3}, at(1, 255, 3, 'a')}},
    {"SwingIn1Quarter", kSwing, 0, 0.25, 0, false, {{0, 275, 0, 'b', 717, 0}, at(0, 276, 0, 'a')}},
    {"SwingOut1Quarter", kSwing, 2, 0.25, 0, false,
     {at(0, 54, 5, 'b'), {0, 55, 5, 'a', 0, 5}, {0, 719, 5, 'a', 718, 5}}},
    {"SwingIn2Half", kSwing, 1, 0.5, 0, false, {{0, 3, 406, 'b', 3, 574}, at(0, 3, 407, 'a')}},
    // Edge Feather, close all at p = 0.5625 (sqrt(1 - sqrt(p)) = 0.5: half the full radius), row 288: a = 200, b = 40.
    {"FeatherCloseAll", kEdgeFeather, 1, 0.5625, 0, true,
     {{0, 360, 288, 'v', 200, 0}, {0, 569, 288, 'v', 200, 0}, {0, 612, 288, 'v', 123, 0}, {0, 659, 288, 'v', 40, 0},
      {0, 719, 288, 'v', 40, 0}, {1, 306, 144, 'v', 122, 0}}},
    {"FeatherCloseAndOpen", kEdgeFeather, 0, 0.25, 0, true,
     {{0, 612, 288, 'v', 111, 0}, {0, 719, 288, 'v', 16, 0}, {1, 359, 0, 'v', 128, 0}}},
    {"FeatherBlackMidpoint", kEdgeFeather, 0, 0.5, 0, true,
     {{0, 360, 288, 'v', 16, 0}, {0, 0, 0, 'v', 16, 0}, {2, 180, 144, 'v', 128, 0}}},
    {"Lens", kLens, 0, 0.5, 0, false,
     {at(0, 359, 287, 'b'), {0, 560, 288, 'b', 547, 288}, {0, 360, 100, 'b', 360, 117}, at(0, 600, 288, 'a')}},
    // 3D Roll, "Roll Out to Right", pct 20. p = 0.5: d = 144, the roll over columns 288..431 (chroma: d = 72 over
    // 144..215).
    {"RollHalf", kRoll, 2, 0.5, 20, false,
     {at(0, 0, 9, 'b'), at(0, 287, 9, 'b'), at(0, 432, 9, 'a'), at(0, 719, 9, 'a'), {0, 288, 9, 'a', 214, 9, 154},
      {0, 360, 9, 'a', 319, 9, 255}, {0, 431, 9, 'a', 423, 9, 154}, {1, 144, 5, 'a', 108, 5},
      {1, 180, 5, 'a', 159, 5}, {2, 215, 5, 'a', 209, 5}}},
    // p = 0.1: the roll's left edge at -58; it has taken up only a little.
    {"RollStart", kRoll, 2, 0.1, 20, false,
     {at(0, 39, 3, 'b'), {0, 40, 3, 'a', 0, 3, 247}, {0, 85, 3, 'a', 77, 3, 154}, at(0, 86, 3, 'a')}},
    // Roll Out to Left is the mirror image; Roll In to Right runs it backwards.
    {"RollOutToLeft", kRoll, 3, 0.5, 20, false,
     {{0, 719 - 288, 9, 'a', 719 - 214, 9, 154}, {0, 719 - 287, 9, 'b', 719 - 287, 9}, at(0, 0, 9, 'a')}},
    {"RollInToRight", kRoll, 0, 0.5, 20, false,
     {{0, 719 - 288, 9, 'b', 719 - 214, 9, 154}, {0, 719 - 287, 9, 'a', 719 - 287, 9}, at(0, 0, 9, 'b')}},
    // Vertical rolls measure the diameter on the height: d = 115, rows 231..345.
    {"RollOutToBottom", kRoll, 6, 0.5, 20, false,
     {at(0, 9, 230, 'b'), {0, 9, 231, 'a', 9, 172, 155}, {0, 9, 288, 'a', 9, 255}, {0, 9, 345, 'a', 9, 338, 155},
      at(0, 9, 346, 'a')}},
    // 3D Page Turn, "Right to Left".
    {"PageTurnQuarter", kPageTurn, 1, 0.25, 0, false,
     {{0, 614, 101, 'a', 718, 0}, {0, 614, 474, 'a', 718, 574}, at(0, 614, 100, 'b'), at(0, 614, 475, 'b'),
      at(0, 360, 0, 'a'), at(0, 615, 300, 'b'), at(0, 359, 0, 'a')}},
    {"PageTurnEdgeOn", kPageTurn, 1, 0.5, 0, false, {at(0, 359, 0, 'a'), at(0, 360, 0, 'b'), at(0, 719, 575, 'b')}},
    {"PageTurnBack", kPageTurn, 1, 0.75, 0, false,
     {{0, 105, 101, 'b', 1, 0}, at(0, 105, 100, 'a'), at(0, 105, 475, 'a'), at(0, 104, 300, 'a'),
      at(0, 359, 300, 'b')}},
    {"PageTurnLeftToRight", kPageTurn, 0, 0.25, 0, false,
     {{0, 105, 101, 'a', 1, 0}, at(0, 104, 300, 'b'), at(0, 360, 0, 'a')}},
    // 3D Center Peel, "Open" at p = 0.5, top-left quarter.
    {"CenterPeel", kCenterPeel, 0, 0.5, 0, false,
     {at(0, 350, 280, 'b'), at(0, 300, 100, 'b'), {0, 100, 200, 'a', 107, 209, 256, true}, at(0, 10, 10, 'a'),
      {0, 619, 200, 'a', 612, 209, 256, true}}},
    // 3D Peel Back: top-left, top-right, bottom-right, bottom-left.
    {"PeelBackFirstQuarter", kPeelBack, 0, 0.25, 0, false,
     {at(0, 100, 100, 'b'), at(0, 359, 287, 'b'), at(0, 500, 100, 'a'), at(0, 500, 400, 'a'), at(0, 100, 400, 'a')}},
    {"PeelBackSecondQuarter", kPeelBack, 0, 0.375, 0, false,
     {at(0, 100, 100, 'b'), at(0, 369, 280, 'b'), at(0, 419, 100, 'b'), {0, 619, 200, 'a', 612, 209, 256, true},
      at(0, 500, 400, 'a'), at(0, 100, 400, 'a')}},
    {"PeelBackClose", kPeelBack, 1, 0.25, 0, false,
     {at(0, 100, 100, 'a'), at(0, 500, 100, 'a'), at(0, 500, 400, 'a'), at(0, 100, 400, 'b')}},
    // 3D Curtain at p = 0.5: 180 columns a side, pleats of 45 columns.
    {"CurtainHalf", kCurtain, 0, 0.5, 0, false,
     {{0, 11, 575, 'a', 22, 575, 217}, {0, 179, 490, 'a', 358, 575}, at(0, 179, 491, 'b'), at(0, 180, 0, 'b'),
      at(0, 539, 0, 'b'), at(0, 719, 0, 'a'), {1, 89, 3, 'a', 178, 4}, at(1, 90, 3, 'b')}},
};

TEST(SoftwareEffects, SamplesComeFromWhereTheGeometrySays) {
  for (const Case& c : kCases) {
    SCOPED_TRACE(c.name);
    const Frames f = run(c.id, c.style, c.position, c.param1, c.solid);
    for (const Expect& e : c.expects) {
      int want = e.source == 'v' ? e.sx : sample(e.source == 'a' ? *f.a : *f.b, e.plane, e.sx, e.sy);
      if (e.shade != 256) want = zv::shade_luma(want, e.shade);
      if (e.back) want = zv::paper_back(want, e.plane != 0);
      EXPECT_EQ(sample(*f.out, e.plane, e.x, e.y), want)
          << "plane " << e.plane << " at " << e.x << "," << e.y << " from " << e.source << " " << e.sx << "," << e.sy;
    }
  }
}

// Obscure is black at its midpoint.
TEST(SoftwareEffects, MidpointOfObscureIsBlack) {
  EXPECT_EQ(zvtest::frame_bytes(*run(kObscure, 0, 0.5, 10).out),
            zvtest::frame_bytes(*zvtest::solid_frame(W, H, 16, 128, 128)));
}

// Which picture each sample of a Gauze frame shows, on a 64 x 48 frame: b where the pattern is set.
TEST(Gauze, PatternsAtTheirLevels) {
  const std::tuple<int, double, std::function<bool(int, int)>> cases[] = {
      {0, 0.5, [](int x, int y) { return (x + y) % 2 == 0; }},
      {2, 0.25, [](int x, int y) { return x % 8 == 0 || x % 8 == 7 || y % 8 == 0 || y % 8 == 7; }},
      {1, 1.0 / 64, [](int x, int y) { return x % 8 == 0 && y % 8 == 0; }},
  };
  ImagePtr a = zvtest::solid_frame(64, 48, 50, 60, 70), b = zvtest::solid_frame(64, 48, 200, 210, 220);
  for (const auto& [style, position, pattern] : cases) {
    ImagePtr out = zvtest::random_frame(64, 48, 3);
    ASSERT_EQ(zvtest::run_transition(kGauze, out.get(), a.get(), b.get(), style, position), 0);
    EXPECT_TRUE(zvtest::samples_are(*out, 0, [&](int x, int y) { return pattern(x, y) ? 200 : 50; })) << style;
    if (style == 0) {
      EXPECT_TRUE(zvtest::samples_are(*out, 1, [&](int x, int y) { return pattern(x, y) ? 210 : 60; }));
    }
  }
}

TEST(DetRand, GivesItsKnownVectors) {
  const std::pair<uint32_t, std::vector<int>> vectors[] = {{0, {15470, 18256, 20940}},
                                                           {zv::kWindSeed, {1275, 31157, 18922, 9026}},
                                                           {zv::kBubblesSeed, {2971, 8664, 17621, 20287}},
                                                           {zv::kShatterSeed, {8789, 4061}}};
  for (const auto& [seed, values] : vectors) {
    zv::DetRand r;
    zv::det_rand_seed(r, seed);
    for (int expected : values) EXPECT_EQ(zv::det_rand_next(r), expected) << "seed " << seed;
  }
}

// Wind's row pairs travel by their own delays: row y shows b in [0, k) and a's [0, W - k) after it.
TEST(Wind, RowPairsTravelByTheirOwnDelays) {
  const std::tuple<double, int, std::vector<int>> cases[] = {{0.25, 0, {153, 153, 0, 0, 0, 0, 36, 36}},
                                                             {0.25, 1, {77, 0, 0, 18}},
                                                             {0.5, 0, {665, 665, 2, 2, 129, 129, 378, 378}},
                                                             {0.75, 0, {720, 720, 217, 217, 613, 613, 720, 720}}};
  for (const auto& [position, plane, travels] : cases) {
    const Frames f = run(kWind, 0, position);
    for (int y = 0; y < static_cast<int>(travels.size()); ++y) {
      for (int x = 0, k = travels[y]; x < (plane ? W / 2 : W); ++x) {
        ASSERT_EQ(sample(*f.out, plane, x, y), x < k ? sample(*f.b, plane, x, y) : sample(*f.a, plane, x - k, y))
            << "position " << position << " plane " << plane << " row " << y << " column " << x;
      }
    }
  }
}

// Nothing is kept between calls and the generator is seeded per plane: the same call gives the same picture on any
// thread, also when two run at once.
TEST(SoftwareEffects, IdenticalCallsOnTwoThreadsGiveIdenticalPictures) {
  ImagePtr a = zvtest::random_frame(96, 64, 1), b = zvtest::random_frame(96, 64, 2);
  for (int id : {kRoll, kPageTurn, kCenterPeel, kPeelBack, kObscure, kSwap, kCurtain, kSwing, kGauze, kEdgeFeather,
                 kWind, kLens}) {
    auto draw = [&] {
      ImagePtr out = zvtest::random_frame(96, 64, 3);
      zvtest::run_transition(id, out.get(), a.get(), b.get(), 1, 0.37);
      return zvtest::frame_bytes(*out);
    };
    const std::vector<uint8_t> here = draw();
    std::vector<uint8_t> first, second;
    std::thread t1([&] { first = draw(); }), t2([&] { second = draw(); });
    t1.join();
    t2.join();
    EXPECT_EQ(first, here) << "id " << id;
    EXPECT_EQ(second, here) << "id " << id;
  }
}

}  // namespace
