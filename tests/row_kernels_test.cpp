// Every SIMD row against its C row: random samples and weights, widths 0 to 67, inputs and output starting off
// alignment, and guard bytes on both sides of the output that must keep their value; the box filter over scaled
// widths.
#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <random>
#include <string>
#include <vector>

#include "frame/row_kernels.h"

namespace {

constexpr int kGuard = 32;
constexpr uint8_t kGuardByte = 0xA5;

// Runs one row of `width` samples at output misalignment `shift` and returns the output with its guards.
using RowCall = std::function<void(const zv::RowKernels&, uint8_t* out, int width)>;

std::vector<uint8_t> run_row(const zv::RowKernels& rows, const RowCall& call, int width, int shift) {
  std::vector<uint8_t> buffer(static_cast<size_t>(kGuard * 2 + width + shift), kGuardByte);
  call(rows, buffer.data() + kGuard + shift, width);
  return buffer;
}

// The SIMD row gives the C row's output, and the guards before and after the `width` bytes at `shift` keep their value.
void expect_rows_agree(const RowCall& call, int width, int shift, const std::string& what) {
  const std::vector<uint8_t> c = run_row(zv::c_rows(), call, width, shift);
  const std::vector<uint8_t> simd = run_row(zv::simd_rows(), call, width, shift);
  ASSERT_EQ(c, simd) << what;
  for (int i = 0; i < kGuard + shift; ++i) ASSERT_EQ(simd[i], kGuardByte) << what << ": before the row";
  for (size_t i = kGuard + shift + width; i < simd.size(); ++i) ASSERT_EQ(simd[i], kGuardByte) << what << ": after";
}

struct Inputs {
  std::vector<uint8_t> a, b, pick;
  std::vector<uint16_t> g, draws;
  int k, offset;
  uint32_t divisor, below;
};

Inputs random_inputs(std::mt19937& gen, int width) {
  Inputs in;
  const size_t n = static_cast<size_t>(width) + 8;
  for (size_t i = 0; i < n; ++i) {
    in.a.push_back(static_cast<uint8_t>(gen()));
    in.b.push_back(static_cast<uint8_t>(gen()));
    in.pick.push_back(gen() % 3 == 0 ? 0 : static_cast<uint8_t>(gen()));
    in.g.push_back(static_cast<uint16_t>(gen() % 257));
    in.draws.push_back(static_cast<uint16_t>(gen() & 0x7FFF));
  }
  in.divisor = 1 + gen() % (gen() % 2 ? 501 : 32768);
  in.below = gen() % (in.divisor + 1);
  in.k = static_cast<int>(gen() % 257);
  in.offset = static_cast<int>(gen() % 511) - 255;
  return in;
}

// Each row with its inputs read `skew` samples into the buffers, so that they start off alignment independently of the
// output.
std::vector<std::pair<const char*, RowCall>> row_calls(const Inputs& in, int skew) {
  const uint8_t* a = in.a.data() + skew;
  const uint8_t* b = in.b.data() + (skew + 1) % 8;
  const uint8_t* pick = in.pick.data() + (skew + 3) % 8;
  const uint16_t* g = in.g.data() + (skew + 5) % 8;
  const uint16_t* draws = in.draws.data() + (skew + 2) % 8;
  const int k = in.k, offset = in.offset;
  const uint32_t divisor = in.divisor, below = in.below;
  return {
      {"copy", [=](const zv::RowKernels& r, uint8_t* o, int n) { r.copy(o, a, n); }},
      {"blend", [=](const zv::RowKernels& r, uint8_t* o, int n) { r.blend(o, a, b, n, k); }},
      {"blend 0", [=](const zv::RowKernels& r, uint8_t* o, int n) { r.blend(o, a, b, n, 0); }},
      {"blend 256", [=](const zv::RowKernels& r, uint8_t* o, int n) { r.blend(o, a, b, n, 256); }},
      {"blend_weights", [=](const zv::RowKernels& r, uint8_t* o, int n) { r.blend_weights(o, a, b, g, n); }},
      {"scale_luma", [=](const zv::RowKernels& r, uint8_t* o, int n) { r.scale_luma(o, a, n, k); }},
      {"scale_chroma", [=](const zv::RowKernels& r, uint8_t* o, int n) { r.scale_chroma(o, a, n, k); }},
      {"scale_chroma 256", [=](const zv::RowKernels& r, uint8_t* o, int n) { r.scale_chroma(o, a, n, 256); }},
      {"offset_saturate", [=](const zv::RowKernels& r, uint8_t* o, int n) { r.offset_saturate(o, a, n, offset); }},
      {"offset_saturate -255",
       [=](const zv::RowKernels& r, uint8_t* o, int n) { r.offset_saturate(o, a, n, -255); }},
      {"offset_wrap",
       [=](const zv::RowKernels& r, uint8_t* o, int n) { r.offset_wrap(o, a, n, static_cast<uint8_t>(offset)); }},
      {"select", [=](const zv::RowKernels& r, uint8_t* o, int n) { r.select(o, a, b, pick, n); }},
      {"picks_below_mod",
       [=](const zv::RowKernels& r, uint8_t* o, int n) { r.picks_below_mod(o, draws, n, divisor, below); }},
      {"picks_below_mod 32768",
       [=](const zv::RowKernels& r, uint8_t* o, int n) { r.picks_below_mod(o, draws, n, 32768, 16384); }},
  };
}

TEST(RowKernels, SimdRowsMatchTheCRowsAndStayInsideTheRow) {
  std::mt19937 gen(7);
  for (int width = 0; width <= 67; ++width) {
    for (int shift = 0; shift < 4; ++shift) {
      const Inputs in = random_inputs(gen, width);
      for (const auto& [name, call] : row_calls(in, (width + shift) % 8)) {
        expect_rows_agree(call, width, shift,
                          std::string(name) + " width " + std::to_string(width) + " shift " + std::to_string(shift));
      }
    }
  }
}

// The colour rows over pixels: an even `n` pixels of 3- or 4-byte input fill `factor * n` output bytes (the two luma
// rows and the chroma rows of bgr_to_yuv lie one after another), widths up to where the widest vectors loop.
TEST(RowKernels, ColourRowsMatchTheCRowsAndStayInsideTheRow) {
  std::mt19937 gen(11);
  for (int pixels = 0; pixels <= 160; pixels += 2) {
    const Inputs in = random_inputs(gen, 4 * pixels);
    const int skew = pixels % 7;
    const uint8_t *bgr0 = in.a.data() + skew, *bgr1 = in.b.data() + 1, *yuv = in.pick.data() + skew;
    const std::pair<int, RowCall> calls[] = {
        {3, [=](const zv::RowKernels& r, uint8_t* o, int) { r.yuv_to_bgr(o, yuv, yuv + pixels, yuv + 2, pixels); }},
        {3, [=](const zv::RowKernels& r, uint8_t* o, int) {
           r.bgr_to_yuv(o, o + pixels, o + 2 * pixels, o + 5 * pixels / 2, bgr0, bgr1, pixels);
         }},
        {4, [=](const zv::RowKernels& r, uint8_t* o, int) { r.bgr_to_rgba(o, bgr0, pixels); }},
        {4, [=](const zv::RowKernels& r, uint8_t* o, int) { r.yuv_to_rgba(o, yuv, yuv + pixels, yuv + 2, pixels); }},
        {3, [=](const zv::RowKernels& r, uint8_t* o, int) {
           r.rgba_to_yuv(o, o + pixels, o + 2 * pixels, o + 5 * pixels / 2, bgr0, bgr1, pixels);
         }},
    };
    for (const auto& [factor, call] : calls) {
      expect_rows_agree(call, factor * pixels, pixels % 4,
                        "factor " + std::to_string(factor) + ", " + std::to_string(pixels) + " pixels");
    }
  }
}

// The box filter row over widths scaled up and down (boxes within one input pixel and across up to three), rows
// spanning one to three input rows: the same texels as the C row, and nothing written past the row.
TEST(RowKernels, BoxFilterRowMatchesTheCRow) {
  std::mt19937 gen(19);
  const int widths[][2] = {{1920, 2048}, {1280, 1024}, {1537, 1024}, {1025, 1024}, {2047, 2048}, {47, 32}, {3, 4}};
  for (const auto& width : widths) {
    const zv::BoxColumns columns = zv::box_columns(width[0], width[1], zv::simd_rows().box_filter_lanes());
    std::vector<std::vector<uint32_t>> rows(5, std::vector<uint32_t>(width[0] + zv::kBoxRowPad, 0));
    for (auto& row : rows) std::generate(row.begin(), row.begin() + width[0], gen);
    const uint32_t* pointers[5] = {rows[0].data(), rows[1].data(), rows[2].data(), rows[3].data(), rows[4].data()};
    for (int out_rows : {3, 4, 5, 7}) {
      for (const zv::BoxSpan& y : zv::box_spans(5, out_rows, true)) {
        std::vector<uint32_t> c(width[1] + 8, 0xA5A5A5A5u), simd = c;
        const float area = zv::box_area(width[0], 5, width[1], out_rows);
        zv::c_rows().box_filter(c.data(), pointers + y.lo, y, columns, area);
        zv::simd_rows().box_filter(simd.data(), pointers + y.lo, y, columns, area);
        ASSERT_EQ(c, simd) << width[0] << " to " << width[1] << ", rows " << y.lo << " to " << y.hi;
        ASSERT_EQ(simd[width[1]], 0xA5A5A5A5u);
      }
    }
  }
}

// The generator rows give the same draws and final state for any multiplier and increment, and write n values only.
TEST(RowKernels, GeneratorRowsMatchTheCRows) {
  std::mt19937 gen(13);
  for (int n = 0; n <= 300; n += 1 + n / 16) {
    const uint32_t state = gen(), mul = gen() | 1, add = gen();
    std::vector<uint16_t> c(n + 8, 0xA5A5), simd(n + 8, 0xA5A5);
    ASSERT_EQ(zv::c_rows().lcg_draws(c.data(), n, state, mul, add),
              zv::simd_rows().lcg_draws(simd.data(), n, state, mul, add));
    ASSERT_EQ(c, simd) << n << " draws";
    ASSERT_EQ(simd[n], 0xA5A5) << n << " draws";
  }
}

TEST(RowKernels, CRowsFollowTheirFormulas) {
  const uint8_t a[4] = {0, 100, 200, 255}, b[4] = {255, 50, 10, 0}, pick[4] = {0, 1, 0, 0xFF};
  const uint16_t g[4] = {0, 64, 256, 128};
  uint8_t out[4];
  const zv::RowKernels& rows = zv::c_rows();
  rows.blend(out, a, b, 4, 64);
  EXPECT_EQ(std::vector<uint8_t>(out, out + 4), (std::vector<uint8_t>{63, 87, 152, 191}));
  rows.blend_weights(out, a, b, g, 4);
  EXPECT_EQ(std::vector<uint8_t>(out, out + 4), (std::vector<uint8_t>{255, 62, 200, 127}));
  rows.scale_luma(out, a, 4, 128);
  EXPECT_EQ(std::vector<uint8_t>(out, out + 4), (std::vector<uint8_t>{0, 50, 100, 127}));
  rows.scale_chroma(out, a, 4, 128);
  EXPECT_EQ(std::vector<uint8_t>(out, out + 4), (std::vector<uint8_t>{64, 114, 164, 191}));
  rows.offset_saturate(out, a, 4, -101);
  EXPECT_EQ(std::vector<uint8_t>(out, out + 4), (std::vector<uint8_t>{0, 0, 99, 154}));
  rows.offset_wrap(out, a, 4, 100);
  EXPECT_EQ(std::vector<uint8_t>(out, out + 4), (std::vector<uint8_t>{100, 200, 44, 99}));
  rows.select(out, a, b, pick, 4);
  EXPECT_EQ(std::vector<uint8_t>(out, out + 4), (std::vector<uint8_t>{0, 50, 200, 0}));
  // The generator from state 1, and which of its values leave less than 3 when divided by 7 (6, 1, 6, 5).
  uint16_t drawn[4];
  EXPECT_EQ(rows.lcg_draws(drawn, 4, 1, 214013, 2531011), 3884216597u);
  EXPECT_EQ(std::vector<uint16_t>(drawn, drawn + 4), (std::vector<uint16_t>{41, 18467, 6334, 26500}));
  rows.picks_below_mod(out, drawn, 4, 7, 3);
  EXPECT_EQ(std::vector<uint8_t>(out, out + 4), (std::vector<uint8_t>{0, 0xFF, 0, 0}));
  // Video black and white to B, G, R (white lands on 254: the rounding bias), and (100, 50, 10) to Y, U, V.
  const uint8_t luma[2] = {16, 235}, cu[1] = {128}, cv[1] = {128}, colour[6] = {10, 50, 100, 10, 50, 100};
  uint8_t bgr[6], y0[2], y1[2], u, v;
  rows.yuv_to_bgr(bgr, luma, cu, cv, 2);
  EXPECT_EQ(std::vector<uint8_t>(bgr, bgr + 6), (std::vector<uint8_t>{0, 0, 0, 254, 254, 254}));
  rows.bgr_to_yuv(y0, y1, &u, &v, colour, colour, 2);
  EXPECT_EQ((std::vector<uint8_t>{y0[0], y0[1], y1[0], y1[1], u, v}), (std::vector<uint8_t>{67, 67, 67, 67, 103, 152}));
  // The same as R, G, B, A pixels (A not read), and video black and white as opaque R, G, B, A.
  const uint8_t rgba_colour[8] = {100, 50, 10, 0, 100, 50, 10, 77};
  rows.rgba_to_yuv(y0, y1, &u, &v, rgba_colour, rgba_colour, 2);
  EXPECT_EQ((std::vector<uint8_t>{y0[0], y0[1], y1[0], y1[1], u, v}), (std::vector<uint8_t>{67, 67, 67, 67, 103, 152}));
  uint8_t rgba[8];
  rows.yuv_to_rgba(rgba, luma, cu, cv, 2);
  EXPECT_EQ(std::vector<uint8_t>(rgba, rgba + 8), (std::vector<uint8_t>{0, 0, 0, 255, 254, 254, 254, 255}));
}

}  // namespace
