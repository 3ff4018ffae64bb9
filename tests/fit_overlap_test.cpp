// The letterbox fit (three placements with their kept quirks) and the keyed overlay, which is also transition 17.
#include <gtest/gtest.h>

#include "frame/kernel_path.h"
#include "frame/registration.h"
#include "imaging/fit_overlap.h"
#include "tests/test_support.h"

namespace {

using zvtest::ImagePtr;
using zvtest::sample;

// Samples (x, y) and the value each must hold: luma 16 fill, 200 picture, 9 untouched; U 128, 60, 9.
struct RoundCase { int sw, sh, dw, dh; std::vector<std::tuple<int, int, int>> luma, chroma; };

TEST(RoundTest, PlacesThePictureWithItsQuirks) {
  const RoundCase cases[] = {
      // Pillarbox, fitted 600 x 480: 60 fill columns left; the column right of the picture (660) keeps its content;
      // 661..719 are filled.
      {720, 576, 720, 480,
       {{0, 0, 16}, {59, 0, 16}, {60, 0, 200}, {659, 479, 200}, {660, 0, 9}, {660, 479, 9}, {661, 0, 16},
        {719, 479, 16}},
       {{29, 0, 128}, {30, 0, 60}, {329, 239, 60}, {330, 5, 9}, {331, 5, 128}, {359, 239, 128}}},
      // Letterbox, fitted 720 x 400: 88 fill rows, 398 picture rows, one fill row at 486, the rest of the bottom margin
      // untouched.
      {720, 400, 720, 576,
       {{0, 87, 16}, {0, 88, 200}, {719, 485, 200}, {0, 486, 16}, {719, 486, 16}, {0, 487, 9}, {719, 575, 9}},
       {{0, 43, 128}, {0, 44, 60}, {0, 242, 60}, {0, 243, 128}, {0, 244, 9}}},
      // Centred with a border all round; the picture's last two rows not drawn.
      {320, 240, 720, 576,
       {{0, 0, 16}, {199, 168, 16}, {200, 168, 200}, {519, 405, 200}, {520, 405, 16}, {200, 406, 16},
        {719, 575, 16}},
       {{99, 84, 128}, {100, 84, 60}, {259, 202, 60}, {100, 203, 128}}},
      // Pillarbox on an odd frame, 7 x 5 into 9 x 3 (and its 4 x 1 chroma): fitted 4 x 3, left 2: columns 0-1 fill, 2-5
      // picture, 6 kept, 7-8 fill; the last row's spill is dropped.
      {7, 5, 9, 3,
       {{6, 0, 9}, {6, 1, 9}, {6, 2, 9}, {1, 0, 16}, {1, 1, 16}, {1, 2, 16}, {8, 0, 16}, {8, 1, 16}, {8, 2, 16}},
       {}},
  };
  int unused = 0;
  for (const RoundCase& c : cases) {
    for (void* params : {static_cast<void*>(&unused), static_cast<void*>(nullptr)}) {
      ImagePtr src = zvtest::solid_frame(c.sw, c.sh, 200, 60, 60), dst = zvtest::solid_frame(c.dw, c.dh, 9, 9, 9);
      EXPECT_EQ(zvTranRound(dst.get(), src.get(), nullptr, params), 1);
      for (auto [x, y, v] : c.luma) EXPECT_EQ(sample(*dst, 0, x, y), v) << c.sw << " Y " << x << "," << y;
      for (auto [x, y, v] : c.chroma) EXPECT_EQ(sample(*dst, 1, x, y), v) << c.sw << " U " << x << "," << y;
    }
  }
  // All null, or a missing frame: 1, and nothing drawn.
  EXPECT_EQ(zvTranRound(nullptr, nullptr, nullptr, nullptr), 1);
  ImagePtr dst = zvtest::solid_frame(4, 4, 9, 9, 9);
  EXPECT_EQ(zvTranRound(dst.get(), nullptr, nullptr, nullptr), 1);
  EXPECT_EQ(zvtest::frame_bytes(*dst), zvtest::frame_bytes(*zvtest::solid_frame(4, 4, 9, 9, 9)));
}

// A block for the overlay: its switch is never tested.
TransitionParams overlap_params(double position, int param1 = 0, double param2 = 0.0, int param3 = 0) {
  TransitionParams p = zvtest::make_params(0, position, 1.0);
  p.param1 = param1;
  p.param2 = param2;
  p.param3 = param3;
  p.enabled = 0;
  return p;
}

TEST(OverlapTest, KeyedCountDecidesTheChroma) {
  ImagePtr a = zvtest::solid_frame(4, 2, 100, 50, 60), b = zvtest::solid_frame(4, 2, 200, 150, 160);
  ImagePtr out = zvtest::solid_frame(4, 2, 9, 9, 9);
  // Block 0: two samples of luma 0..5 (key 0); block 1: one.
  for (auto [i, luma] : {std::pair{0, 5}, {5, 0}, {2, 6}, {7, 3}}) b->get_Y()[i] = static_cast<uint8_t>(luma);
  TransitionParams p = overlap_params(0.4);
  EXPECT_EQ(zvTransparentOverlap(out.get(), a.get(), b.get(), &p), 1);
  // 40 %: (200 * 40 + 100 * 60) / 100 = 140; luma 6: (6 * 40 + 6000) / 100 = 62.
  EXPECT_EQ(zvtest::plane_bytes(*out, 0), (std::vector<uint8_t>{100, 140, 62, 140, 140, 100, 140, 100}));
  EXPECT_EQ(zvtest::plane_bytes(*out, 1), (std::vector<uint8_t>{50, 90}));
  EXPECT_EQ(zvtest::plane_bytes(*out, 2), (std::vector<uint8_t>{60, 100}));
  EXPECT_EQ(out->frame_flags(), 0);
}

// The key luma from param1's colour or param3's direct key; keyed from key - 5 to key + 5, at 100 % b otherwise.
TEST(OverlapTest, KeyLuma) {
  const int cases[][3] = {{0, 0, 0}, {0x00FFFFFF, 0, 0}, {static_cast<int>(0xFF00FF00u), 0, 144},
                          {0x01000000, 0, 16}, {static_cast<int>(0xFF00FF00u), 0x12503456, 0x50}};
  for (const auto& [param1, param3, key] : cases) {
    TransitionParams p = overlap_params(2.0, param1, 0.0, param3);  // 200 % is 100 %
    ImagePtr a = zvtest::solid_frame(2, 2, 77, 1, 1), b = zvtest::solid_frame(2, 2, 0, 2, 2);
    ImagePtr out = zvtest::random_frame(2, 2, 1);
    const uint8_t luma[4] = {static_cast<uint8_t>(std::max(key - 6, 0)), static_cast<uint8_t>(std::max(key - 5, 0)),
                             static_cast<uint8_t>(key + 5), static_cast<uint8_t>(key + 6)};
    std::copy(luma, luma + 4, b->get_Y());
    zvTransparentOverlap(out.get(), a.get(), b.get(), &p);
    const std::vector<uint8_t> want = {static_cast<uint8_t>(key < 6 ? 77 : key - 6), 77, 77, luma[3]};
    EXPECT_EQ(zvtest::plane_bytes(*out, 0), want) << "key " << key;
    EXPECT_EQ(sample(*out, 1, 0, 0), 1);  // two or more keyed: a's chroma
  }
}

TEST(OverlapTest, ResultsAndEarlyExits) {
  EXPECT_EQ(zvTransparentOverlap(nullptr, nullptr, nullptr, nullptr), 0);
  ImagePtr a = zvtest::random_frame(6, 4, 1), b = zvtest::random_frame(6, 4, 2), out = zvtest::random_frame(6, 4, 3);
  const auto untouched = zvtest::frame_bytes(*out);
  // Mode 1 does nothing.
  TransitionParams p = overlap_params(0.5, 0, 1.0);
  EXPECT_EQ(zvTransparentOverlap(out.get(), a.get(), b.get(), &p), 1);
  EXPECT_EQ(zvtest::frame_bytes(*out), untouched);
  // A NaN progress or a missing frame as well.
  p = overlap_params(0.5, 0, 0.0);
  EXPECT_EQ(zvTransparentOverlap(out.get(), a.get(), nullptr, &p), 1);
  EXPECT_EQ(zvtest::frame_bytes(*out), untouched);
  // Position 0: a copy of a, flags too.
  a->set_frame_flags(7);
  p = overlap_params(0.0);
  EXPECT_EQ(zvTransparentOverlap(out.get(), a.get(), nullptr, &p), 1);
  EXPECT_EQ(zvtest::frame_bytes(*out), zvtest::frame_bytes(*a));
  EXPECT_EQ(out->frame_flags(), 7);
  p.duration = 0.0;  // NaN percentage: the same copy
  EXPECT_EQ(zvTransparentOverlap(out.get(), b.get(), a.get(), &p), 1);
  EXPECT_EQ(zvtest::frame_bytes(*out), zvtest::frame_bytes(*b));
}

TEST(OverlapTest, WorksFromTheTopLeftOnTheCommonAreaAndIsTransitionSeventeen) {
  ImagePtr out = zvtest::solid_frame(9, 7, 9, 9, 9);
  ImagePtr a = zvtest::solid_frame(7, 5, 100, 50, 50), b = zvtest::solid_frame(8, 6, 200, 150, 150);
  TransitionParams p = overlap_params(1.0);
  zvTransparentOverlap(out.get(), a.get(), b.get(), &p);
  EXPECT_TRUE(zvtest::samples_are(*out, 0, [](int x, int y) { return x < 7 && y < 5 ? 200 : 9; }));
  EXPECT_TRUE(zvtest::samples_are(*out, 1, [](int x, int y) { return x < 3 && y < 2 ? 150 : 9; }));
  EXPECT_EQ(zv::transition_entry(17), &zvTransparentOverlap);
  EXPECT_TRUE(zv::transition_is_implemented(17));
}

// The fast path against the reference with a key in the middle of b's luma range, so blocks have every keyed count.
TEST(OverlapTest, FastPathMatchesTheReferenceOnEveryKeyedCount) {
  for (int w : {1, 2, 7, 33}) {
    for (int h : {1, 5, 18}) {
      ImagePtr a = zvtest::random_frame(w, h, 5), b = zvtest::random_frame(w + 1, h + 2, 6);
      for (size_t i = 0; i < b->plane_size(0); ++i) b->get_Y()[i] = static_cast<uint8_t>(120 + b->get_Y()[i] % 20);
      for (int percent : {1, 37, 99, 100}) {
        std::vector<uint8_t> results[2];
        for (zv::KernelPath path : {zv::KernelPath::kFast, zv::KernelPath::kReference}) {
          ImagePtr out = zvtest::random_frame(w + 2, h, 7);
          TransitionParams p = overlap_params(percent / 100.0, 0, 0.0, 128 << 16);
          zv::set_kernel_path(path);
          zvTransparentOverlap(out.get(), a.get(), b.get(), &p);
          zv::set_kernel_path(zv::KernelPath::kFast);
          results[path == zv::KernelPath::kReference] = zvtest::frame_bytes(*out);
        }
        EXPECT_EQ(results[0], results[1]) << w << "x" << h << " at " << percent << " %";
      }
    }
  }
}

}  // namespace
