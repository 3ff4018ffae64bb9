// The SIMD rows, compiled once per instruction set and chosen at run time.
// Each works in whole vectors and leaves the rest of the row to its C row.
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "frame/row_kernels_hwy.cpp"
#include "hwy/foreach_target.h"  // IWYU pragma: keep
#include "hwy/highway.h"

#include "frame/row_kernels.h"
#include "host/bt601.h"

HWY_BEFORE_NAMESPACE();
namespace zv {
namespace HWY_NAMESPACE {
namespace hn = hwy::HWY_NAMESPACE;

// Samples widened to 16 bits, a vector of them at a time.
using D16 = hn::ScalableTag<uint16_t>;
using DI16 = hn::Rebind<int16_t, D16>;
using D8 = hn::Rebind<uint8_t, D16>;

// 16-bit results that lie in 0..255 back to bytes.
HWY_INLINE void store_bytes(hn::Vec<D16> v, uint8_t* out) {
  const D8 d8;
  const DI16 di16;
  hn::StoreU(hn::DemoteTo(d8, hn::BitCast(di16, v)), d8, out);
}

HWY_INLINE hn::Vec<D16> load_wide(const uint8_t* p) { return hn::PromoteTo(D16(), hn::LoadU(D8(), p)); }

void BlendRow(uint8_t* out, const uint8_t* a, const uint8_t* b, int n, int k) {
  const D16 d;
  const int lanes = static_cast<int>(hn::Lanes(d));
  const auto wa = hn::Set(d, static_cast<uint16_t>(256 - k)), wb = hn::Set(d, static_cast<uint16_t>(k));
  int i = 0;
  // The two products add up to at most 255 * 256: 16-bit lanes hold it.
  for (; i + lanes <= n; i += lanes) {
    store_bytes(hn::ShiftRight<8>(hn::Add(hn::Mul(load_wide(a + i), wa), hn::Mul(load_wide(b + i), wb))), out + i);
  }
  blend_row_c(out + i, a + i, b + i, n - i, k);
}

void BlendWeightsRow(uint8_t* out, const uint8_t* x, const uint8_t* y, const uint16_t* g, int n) {
  const D16 d;
  const int lanes = static_cast<int>(hn::Lanes(d));
  const auto full = hn::Set(d, 256);
  int i = 0;
  for (; i + lanes <= n; i += lanes) {
    const auto w = hn::LoadU(d, g + i);
    store_bytes(hn::ShiftRight<8>(hn::Add(hn::Mul(load_wide(x + i), w), hn::Mul(load_wide(y + i), hn::Sub(full, w)))),
                out + i);
  }
  blend_weights_row_c(out + i, x + i, y + i, g + i, n - i);
}

void ScaleLumaRow(uint8_t* out, const uint8_t* s, int n, int w) {
  const D16 d;
  const int lanes = static_cast<int>(hn::Lanes(d));
  const auto vw = hn::Set(d, static_cast<uint16_t>(w));
  int i = 0;
  for (; i + lanes <= n; i += lanes) store_bytes(hn::ShiftRight<8>(hn::Mul(load_wide(s + i), vw)), out + i);
  scale_luma_row_c(out + i, s + i, n - i, w);
}

void ScaleChromaRow(uint8_t* out, const uint8_t* s, int n, int w) {
  const D16 d;
  const DI16 di;
  const int lanes = static_cast<int>(hn::Lanes(d));
  const auto vw = hn::Set(di, static_cast<int16_t>(w)), bias = hn::Set(di, 128);
  int i = 0;
  // (s - 128) * w lies in -32768..32512: exact in signed 16-bit lanes; the
  // arithmetic shift floors as the C row does.
  for (; i + lanes <= n; i += lanes) {
    const auto centred = hn::Sub(hn::BitCast(di, load_wide(s + i)), bias);
    store_bytes(hn::BitCast(d, hn::Add(hn::ShiftRight<8>(hn::Mul(centred, vw)), bias)), out + i);
  }
  scale_chroma_row_c(out + i, s + i, n - i, w);
}

void OffsetSaturateRow(uint8_t* out, const uint8_t* s, int n, int offset) {
  const hn::ScalableTag<uint8_t> d;
  const int lanes = static_cast<int>(hn::Lanes(d));
  const auto amount = hn::Set(d, static_cast<uint8_t>(offset < 0 ? -offset : offset));
  int i = 0;
  for (; i + lanes <= n; i += lanes) {
    const auto v = hn::LoadU(d, s + i);
    hn::StoreU(offset < 0 ? hn::SaturatedSub(v, amount) : hn::SaturatedAdd(v, amount), d, out + i);
  }
  offset_saturate_row_c(out + i, s + i, n - i, offset);
}

void OffsetWrapRow(uint8_t* out, const uint8_t* s, int n, uint8_t offset) {
  const hn::ScalableTag<uint8_t> d;
  const int lanes = static_cast<int>(hn::Lanes(d));
  const auto amount = hn::Set(d, offset);
  int i = 0;
  for (; i + lanes <= n; i += lanes) hn::StoreU(hn::Add(hn::LoadU(d, s + i), amount), d, out + i);
  offset_wrap_row_c(out + i, s + i, n - i, offset);
}

void SelectRow(uint8_t* out, const uint8_t* first, const uint8_t* second, const uint8_t* pick_second, int n) {
  const hn::ScalableTag<uint8_t> d;
  const int lanes = static_cast<int>(hn::Lanes(d));
  const auto zero = hn::Zero(d);
  int i = 0;
  for (; i + lanes <= n; i += lanes) {
    const auto pick = hn::Ne(hn::LoadU(d, pick_second + i), zero);
    hn::StoreU(hn::IfThenElse(pick, hn::LoadU(d, second + i), hn::LoadU(d, first + i)), d, out + i);
  }
  select_row_c(out + i, first + i, second + i, pick_second + i, n - i);
}

// The colour conversions work on 32-bit lanes, a vector of chroma samples (two
// pixels each) at a time. A pixel pair's six bytes are handled as three 16-bit
// words (B0 G0, R0 B1, G1 R1), so that three-way interleaving does the packing.
using D32 = hn::ScalableTag<int32_t>;
using DU32 = hn::Rebind<uint32_t, D32>;
using D16Of32 = hn::Rebind<uint16_t, D32>;
using D8Of32 = hn::Rebind<uint8_t, D32>;

HWY_INLINE hn::Vec<D32> channel(hn::Vec<D32> luma, hn::Vec<D32> term) {
  const D32 d;
  return hn::Min(hn::Max(hn::ShiftRight<13>(hn::Add(luma, term)), hn::Zero(d)), hn::Set(d, 255));
}

HWY_INLINE hn::Vec<D32> pack_pair(hn::Vec<D32> low, hn::Vec<D32> high) { return hn::Or(low, hn::ShiftLeft<8>(high)); }

// One vector of pixel pairs: each pair's two scaled lumas and the chroma
// terms of red, green and blue that both pixels share.
HWY_INLINE void pair_terms(const uint8_t* y, const uint8_t* u, const uint8_t* v, hn::Vec<D32>& even,
                           hn::Vec<D32>& odd, hn::Vec<D32>& r0, hn::Vec<D32>& g0, hn::Vec<D32>& b0) {
  const D32 d;
  const D8Of32 d8;
  const auto luma_k = hn::Set(d, kYuvLuma);
  hn::Vec<D8Of32> even8, odd8;
  hn::LoadInterleaved2(d8, y, even8, odd8);
  const auto cu = hn::PromoteTo(d, hn::LoadU(d8, u)), cv = hn::PromoteTo(d, hn::LoadU(d8, v));
  r0 = hn::Add(hn::Mul(cv, hn::Set(d, kRedV)), hn::Set(d, kRedBias));
  g0 = hn::Add(hn::Add(hn::Mul(cu, hn::Set(d, kGreenU)), hn::Mul(cv, hn::Set(d, kGreenV))), hn::Set(d, kGreenBias));
  b0 = hn::Add(hn::Mul(cu, hn::Set(d, kBlueU)), hn::Set(d, kBlueBias));
  even = hn::Mul(hn::PromoteTo(d, even8), luma_k);
  odd = hn::Mul(hn::PromoteTo(d, odd8), luma_k);
}

void YuvToBgrRow(uint8_t* bgr, const uint8_t* y, const uint8_t* u, const uint8_t* v, int n) {
  const D32 d;
  const D16Of32 d16;
  const int lanes = static_cast<int>(hn::Lanes(d));
  int j = 0;
  for (; 2 * (j + lanes) <= n; j += lanes) {
    hn::Vec<D32> even, odd, r0, g0, b0;
    pair_terms(y + 2 * j, u + j, v + j, even, odd, r0, g0, b0);
    const auto w0 = pack_pair(channel(even, b0), channel(even, g0));
    const auto w1 = pack_pair(channel(even, r0), channel(odd, b0));
    const auto w2 = pack_pair(channel(odd, g0), channel(odd, r0));
    hn::StoreInterleaved3(hn::DemoteTo(d16, w0), hn::DemoteTo(d16, w1), hn::DemoteTo(d16, w2), d16,
                          reinterpret_cast<uint16_t*>(bgr + 6 * j));
  }
  yuv_to_bgr_row_c(bgr + 6 * j, y + 2 * j, u + j, v + j, n - 2 * j);
}

// Four-byte pixels are 32-bit lanes: R, G, B and 255 from the lowest byte up.
HWY_INLINE hn::Vec<DU32> rgba_pixel(hn::Vec<D32> luma, hn::Vec<D32> r0, hn::Vec<D32> g0, hn::Vec<D32> b0) {
  const DU32 du;
  const auto rg = pack_pair(channel(luma, r0), channel(luma, g0));
  const auto rgb = hn::Or(rg, hn::ShiftLeft<16>(channel(luma, b0)));
  return hn::Or(hn::BitCast(du, rgb), hn::Set(du, 0xFF000000u));
}

void YuvToRgbaRow(uint8_t* rgba, const uint8_t* y, const uint8_t* u, const uint8_t* v, int n) {
  const D32 d;
  const DU32 du;
  const int lanes = static_cast<int>(hn::Lanes(d));
  int j = 0;
  for (; 2 * (j + lanes) <= n; j += lanes) {
    hn::Vec<D32> even, odd, r0, g0, b0;
    pair_terms(y + 2 * j, u + j, v + j, even, odd, r0, g0, b0);
    hn::StoreInterleaved2(rgba_pixel(even, r0, g0, b0), rgba_pixel(odd, r0, g0, b0), du,
                          reinterpret_cast<uint32_t*>(rgba + 8 * j));
  }
  yuv_to_rgba_row_c(rgba + 8 * j, y + 2 * j, u + j, v + j, n - 2 * j);
}

HWY_INLINE hn::Vec<D32> weighted(hn::Vec<D32> r, hn::Vec<D32> g, hn::Vec<D32> b, int kr, int kg, int kb, int bias) {
  const D32 d;
  const auto sum = hn::Add(hn::Add(hn::Mul(r, hn::Set(d, kr)), hn::Mul(g, hn::Set(d, kg))), hn::Mul(b, hn::Set(d, kb)));
  return hn::Add(hn::ShiftRight<14>(sum), hn::Set(d, bias));
}

// A vector of pixel pairs of one row: their lumas stored, their chroma terms
// added to the sums of the two rows' pairs.
HWY_INLINE void pixel_pairs_to_yuv(hn::Vec<D32> r_even, hn::Vec<D32> g_even, hn::Vec<D32> b_even,
                                   hn::Vec<D32> r_odd, hn::Vec<D32> g_odd, hn::Vec<D32> b_odd, uint8_t* y,
                                   hn::Vec<D32>& u_sum, hn::Vec<D32>& v_sum) {
  const D16Of32 d16;
  const auto luma = pack_pair(weighted(r_even, g_even, b_even, 4211, 8258, 1606, 16),
                              weighted(r_odd, g_odd, b_odd, 4211, 8258, 1606, 16));
  hn::StoreU(hn::DemoteTo(d16, luma), d16, reinterpret_cast<uint16_t*>(y));
  u_sum = hn::Add(u_sum, hn::Add(weighted(r_even, g_even, b_even, -2425, -4768, 7193, 128),
                                 weighted(r_odd, g_odd, b_odd, -2425, -4768, 7193, 128)));
  v_sum = hn::Add(v_sum, hn::Add(weighted(r_even, g_even, b_even, 7193, -6029, -1163, 128),
                                 weighted(r_odd, g_odd, b_odd, 7193, -6029, -1163, 128)));
}

void BgrToYuvRow(uint8_t* y0, uint8_t* y1, uint8_t* u, uint8_t* v, const uint8_t* bgr0, const uint8_t* bgr1, int n) {
  const D32 d;
  const D16Of32 d16;
  const D8Of32 d8;
  const int lanes = static_cast<int>(hn::Lanes(d));
  const auto low = hn::Set(d, 0xFF);
  const uint8_t* rows[2] = {bgr0, bgr1};
  uint8_t* y_rows[2] = {y0, y1};
  int j = 0;
  for (; 2 * (j + lanes) <= n; j += lanes) {
    auto u_sum = hn::Zero(d), v_sum = hn::Zero(d);
    for (int dy = 0; dy < 2; ++dy) {
      hn::Vec<D16Of32> w0, w1, w2;
      hn::LoadInterleaved3(d16, reinterpret_cast<const uint16_t*>(rows[dy] + 6 * j), w0, w1, w2);
      const auto x0 = hn::PromoteTo(d, w0), x1 = hn::PromoteTo(d, w1), x2 = hn::PromoteTo(d, w2);
      const auto b_even = hn::And(x0, low), g_even = hn::ShiftRight<8>(x0), r_even = hn::And(x1, low);
      const auto b_odd = hn::ShiftRight<8>(x1), g_odd = hn::And(x2, low), r_odd = hn::ShiftRight<8>(x2);
      pixel_pairs_to_yuv(r_even, g_even, b_even, r_odd, g_odd, b_odd, y_rows[dy] + 2 * j, u_sum, v_sum);
    }
    hn::StoreU(hn::DemoteTo(d8, hn::ShiftRight<2>(u_sum)), d8, u + j);
    hn::StoreU(hn::DemoteTo(d8, hn::ShiftRight<2>(v_sum)), d8, v + j);
  }
  bgr_to_yuv_row_c(y0 + 2 * j, y1 + 2 * j, u + j, v + j, bgr0 + 6 * j, bgr1 + 6 * j, n - 2 * j);
}

void RgbaToYuvRow(uint8_t* y0, uint8_t* y1, uint8_t* u, uint8_t* v, const uint8_t* rgba0, const uint8_t* rgba1,
                  int n) {
  const D32 d;
  const DU32 du;
  const D8Of32 d8;
  const int lanes = static_cast<int>(hn::Lanes(d));
  const auto low = hn::Set(d, 0xFF);
  const uint8_t* rows[2] = {rgba0, rgba1};
  uint8_t* y_rows[2] = {y0, y1};
  int j = 0;
  for (; 2 * (j + lanes) <= n; j += lanes) {
    auto u_sum = hn::Zero(d), v_sum = hn::Zero(d);
    for (int dy = 0; dy < 2; ++dy) {
      hn::Vec<DU32> even_px, odd_px;
      hn::LoadInterleaved2(du, reinterpret_cast<const uint32_t*>(rows[dy] + 8 * j), even_px, odd_px);
      const auto even = hn::BitCast(d, even_px), odd = hn::BitCast(d, odd_px);
      const auto r_even = hn::And(even, low), g_even = hn::And(hn::ShiftRight<8>(even), low);
      const auto b_even = hn::And(hn::ShiftRight<16>(even), low);
      const auto r_odd = hn::And(odd, low), g_odd = hn::And(hn::ShiftRight<8>(odd), low);
      const auto b_odd = hn::And(hn::ShiftRight<16>(odd), low);
      pixel_pairs_to_yuv(r_even, g_even, b_even, r_odd, g_odd, b_odd, y_rows[dy] + 2 * j, u_sum, v_sum);
    }
    hn::StoreU(hn::DemoteTo(d8, hn::ShiftRight<2>(u_sum)), d8, u + j);
    hn::StoreU(hn::DemoteTo(d8, hn::ShiftRight<2>(v_sum)), d8, v + j);
  }
  rgba_to_yuv_row_c(y0 + 2 * j, y1 + 2 * j, u + j, v + j, rgba0 + 8 * j, rgba1 + 8 * j, n - 2 * j);
}

void BgrToRgbaRow(uint8_t* rgba, const uint8_t* bgr, int n) {
  const hn::ScalableTag<uint8_t> d;
  const int lanes = static_cast<int>(hn::Lanes(d));
  const auto opaque = hn::Set(d, 255);
  int i = 0;
  for (; i + lanes <= n; i += lanes) {
    hn::Vec<decltype(d)> b, g, r;
    hn::LoadInterleaved3(d, bgr + 3 * i, b, g, r);
    hn::StoreInterleaved4(r, g, b, opaque, d, rgba + 4 * i);
  }
  bgr_to_rgba_row_c(rgba + 4 * i, bgr + 3 * i, n - i);
}

// The box filter, a vector of output columns at a time. Each column's input
// pixels are picked out of its block's window with table lookups, and every sum
// adds the same products in the same order as the C row: the terms a column
// lacks (past its box) come with weight 0, which adds nothing. The one order
// the layout cannot share, a box within one column spanning rows between its
// first and last, is summed apart and chosen for those columns.
using DF = hn::Rebind<float, D32>;

struct BoxWindow {
  hn::Vec<D32> low, high;  // the block's input pixels base .. base + 2 * lanes - 1
};

HWY_INLINE BoxWindow box_window(const uint32_t* row, int base) {
  const D32 d;
  const int32_t* p = reinterpret_cast<const int32_t*>(row) + base;
  return {hn::LoadU(d, p), hn::LoadU(d, p + hn::Lanes(d))};
}

HWY_INLINE hn::Vec<D32> box_pick(const BoxWindow& w, const int32_t* offsets) {
  const D32 d;
  const auto offset = hn::LoadU(d, offsets);
  const auto index = hn::IndicesFromVec(d, hn::And(offset, hn::Set(d, static_cast<int32_t>(hn::Lanes(d)) - 1)));
  return hn::IfThenElse(hn::Lt(offset, hn::Set(d, static_cast<int32_t>(hn::Lanes(d)))),
                        hn::TableLookupLanes(w.low, index), hn::TableLookupLanes(w.high, index));
}

template <int kShift>
HWY_INLINE hn::Vec<DF> box_channel(hn::Vec<D32> pixels) {
  const D32 d;
  return hn::ConvertTo(DF(), hn::And(hn::ShiftRight<kShift>(pixels), hn::Set(d, 0xFF)));
}

struct BoxSums {
  hn::Vec<DF> r, g, b;
};

// sums += each channel of `pixels` times `weight`.
HWY_INLINE void box_add(BoxSums& sums, hn::Vec<D32> pixels, hn::Vec<DF> weight) {
  sums.r = hn::Add(sums.r, hn::Mul(box_channel<0>(pixels), weight));
  sums.g = hn::Add(sums.g, hn::Mul(box_channel<8>(pixels), weight));
  sums.b = hn::Add(sums.b, hn::Mul(box_channel<16>(pixels), weight));
}

// sums += left * left_weight + right * right_weight, the two products summed first.
HWY_INLINE void box_add_pair(BoxSums& sums, hn::Vec<D32> left, hn::Vec<DF> left_weight, hn::Vec<D32> right,
                             hn::Vec<DF> right_weight) {
  sums.r = hn::Add(sums.r, hn::Add(hn::Mul(box_channel<0>(left), left_weight),
                                   hn::Mul(box_channel<0>(right), right_weight)));
  sums.g = hn::Add(sums.g, hn::Add(hn::Mul(box_channel<8>(left), left_weight),
                                   hn::Mul(box_channel<8>(right), right_weight)));
  sums.b = hn::Add(sums.b, hn::Add(hn::Mul(box_channel<16>(left), left_weight),
                                   hn::Mul(box_channel<16>(right), right_weight)));
}

void BoxFilterRow(uint32_t* out, const uint32_t* const* rows, const BoxSpan& y, const BoxColumns& columns,
                  float area) {
  const D32 d;
  const DF df;
  const int lanes = static_cast<int>(hn::Lanes(d));
  if (columns.lanes != lanes) return box_filter_row_c(out, rows, y, columns, area);
  const int ny = y.hi - y.lo, slots = columns.slots, padded = columns.padded;
  const int n = static_cast<int>(columns.spans.size());
  const int32_t* offsets = columns.offsets.data();
  const float* weights = columns.weights.data();
  const auto divisor = hn::Set(df, area);
  for (int j = 0; j < n; j += lanes) {
    const int base = columns.base[static_cast<size_t>(j / lanes)];
    auto slot_offsets = [&](int s) { return offsets + static_cast<ptrdiff_t>(s) * padded + j; };
    auto weight = [&](int row) { return hn::LoadU(df, weights + static_cast<ptrdiff_t>(row) * padded + j); };
    const auto zero = hn::Zero(df);
    BoxSums sums{zero, zero, zero};
    // A whole input row: every slot, weighted along the row by `y_weight`.
    auto add_row = [&](const uint32_t* row, float y_weight) {
      const BoxWindow w = box_window(row, base);
      const auto wy = hn::Set(df, y_weight);
      for (int s = 0; s < slots; ++s) box_add(sums, box_pick(w, slot_offsets(s)), hn::Mul(wy, weight(s)));
    };
    if (ny == 0) {
      add_row(rows[0], y.hi_frac - y.lo_frac);
    } else {
      add_row(rows[0], 1 - y.lo_frac);
      add_row(rows[ny], y.hi_frac);
      for (int m = 1; m < ny; ++m) {
        const BoxWindow w = box_window(rows[m], base);
        box_add_pair(sums, box_pick(w, slot_offsets(0)), weight(0), box_pick(w, slot_offsets(slots)),
                     weight(2 * slots));
      }
      for (int m = 1; m < ny; ++m) {
        const BoxWindow w = box_window(rows[m], base);
        for (int s = 1; s < slots; ++s) box_add(sums, box_pick(w, slot_offsets(s)), weight(slots + s));
      }
      const auto single = hn::RebindMask(df, hn::Lt(hn::LoadU(d, columns.single.data() + j), hn::Zero(d)));
      if (ny > 1 && !hn::AllFalse(df, single)) {
        // Boxes within one column: the first row, the rows between, then the last.
        BoxSums column{zero, zero, zero};
        box_add(column, box_pick(box_window(rows[0], base), slot_offsets(0)),
                hn::Mul(hn::Set(df, 1 - y.lo_frac), weight(0)));
        for (int m = 1; m < ny; ++m) box_add(column, box_pick(box_window(rows[m], base), slot_offsets(0)), weight(0));
        box_add(column, box_pick(box_window(rows[ny], base), slot_offsets(0)),
                hn::Mul(hn::Set(df, y.hi_frac), weight(0)));
        sums.r = hn::IfThenElse(single, column.r, sums.r);
        sums.g = hn::IfThenElse(single, column.g, sums.g);
        sums.b = hn::IfThenElse(single, column.b, sums.b);
      }
    }
    // Truncated quotients, packed with an opaque alpha.
    const auto r = hn::ConvertTo(d, hn::Div(sums.r, divisor)), g = hn::ConvertTo(d, hn::Div(sums.g, divisor));
    const auto b = hn::ConvertTo(d, hn::Div(sums.b, divisor));
    const auto pixels = hn::Or(hn::Or(r, hn::ShiftLeft<8>(g)), hn::Or(hn::ShiftLeft<16>(b), hn::Set(d, -0x1000000)));
    if (j + lanes <= n) {
      hn::StoreU(pixels, d, reinterpret_cast<int32_t*>(out + j));
    } else {
      HWY_ALIGN int32_t last[HWY_MAX_BYTES / sizeof(int32_t)];
      hn::Store(pixels, d, last);
      for (int k = 0; j + k < n; ++k) out[j + k] = static_cast<uint32_t>(last[k]);
    }
  }
}

int BoxFilterLanes() { return static_cast<int>(hn::Lanes(D32())); }

// The generator's draws, kChains vectors at a time: lane j of vector c holds
// the state c * lanes + j + 1 draws on, and every lane leaps a whole group of
// draws with one multiply and add, the chains independent of each other so
// that the multiplies overlap.
constexpr int kChains = 4;

HWY_INLINE void store_draws(hn::Vec<DU32> states, uint16_t* out) {
  const DU32 d;
  const auto drawn = hn::And(hn::ShiftRight<16>(states), hn::Set(d, 0x7FFFu));
  hn::StoreU(hn::DemoteTo(D16Of32(), hn::BitCast(D32(), drawn)), D16Of32(), out);
}

HWY_INLINE hn::Vec<DU32> leap(hn::Vec<DU32> states, hn::Vec<DU32> mul, hn::Vec<DU32> add) {
  return hn::Add(hn::Mul(states, mul), add);
}

uint32_t LcgDrawsRow(uint16_t* values, int n, uint32_t state, uint32_t mul, uint32_t add) {
  const DU32 d;
  const int lanes = static_cast<int>(hn::Lanes(d));
  const int group = kChains * lanes;
  if (n < group) return lcg_draws_row_c(values, n, state, mul, add);
  HWY_ALIGN uint32_t states[kChains * HWY_MAX_BYTES / sizeof(uint32_t)];
  uint32_t group_mul = 1, group_add = 0;  // state -> state * group_mul + group_add is `group` draws
  for (int j = 0; j < group; ++j) {
    states[j] = state = state * mul + add;
    group_mul *= mul;
    group_add = group_add * mul + add;
  }
  auto v0 = hn::Load(d, states), v1 = hn::Load(d, states + lanes), v2 = hn::Load(d, states + 2 * lanes),
       v3 = hn::Load(d, states + 3 * lanes);
  const auto vm = hn::Set(d, group_mul), va = hn::Set(d, group_add);
  int i = 0;
  for (;;) {
    store_draws(v0, values + i);
    store_draws(v1, values + i + lanes);
    store_draws(v2, values + i + 2 * lanes);
    store_draws(v3, values + i + 3 * lanes);
    i += group;
    if (i + group > n) break;
    v0 = leap(v0, vm, va), v1 = leap(v1, vm, va), v2 = leap(v2, vm, va), v3 = leap(v3, vm, va);
  }
  // The state after draw i is the last lane of the last chain.
  hn::Store(v3, d, states);
  return lcg_draws_row_c(values + i, n - i, states[lanes - 1], mul, add);
}

// value / divisor as (value * m) >> shift with shift = 15 + ceil(log2 divisor)
// and m = ceil(2^shift / divisor): exact for every value below 2^15, and the
// product stays below 2^31.
void PicksBelowModRow(uint8_t* pick, const uint16_t* values, int n, uint32_t divisor, uint32_t below) {
  const DU32 d;
  const int lanes = static_cast<int>(hn::Lanes(d));
  int bits = 0;
  while ((1u << bits) < divisor) ++bits;
  const int shift = 15 + bits;
  const auto m = hn::Set(d, static_cast<uint32_t>(((uint64_t{1} << shift) + divisor - 1) / divisor));
  const auto vd = hn::Set(d, divisor), vb = hn::Set(d, below), full = hn::Set(d, 0xFFu);
  int i = 0;
  for (; i + lanes <= n; i += lanes) {
    const auto x = hn::PromoteTo(d, hn::LoadU(D16Of32(), values + i));
    const auto rest = hn::Sub(x, hn::Mul(hn::ShiftRightSame(hn::Mul(x, m), shift), vd));
    const auto picked = hn::IfThenElseZero(hn::Lt(rest, vb), full);
    hn::StoreU(hn::DemoteTo(D8Of32(), hn::BitCast(D32(), picked)), D8Of32(), pick + i);
  }
  picks_below_mod_row_c(pick + i, values + i, n - i, divisor, below);
}

}  // namespace HWY_NAMESPACE
}  // namespace zv
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace zv {
namespace {

HWY_EXPORT(BlendRow);
HWY_EXPORT(BlendWeightsRow);
HWY_EXPORT(ScaleLumaRow);
HWY_EXPORT(ScaleChromaRow);
HWY_EXPORT(OffsetSaturateRow);
HWY_EXPORT(OffsetWrapRow);
HWY_EXPORT(SelectRow);
HWY_EXPORT(YuvToBgrRow);
HWY_EXPORT(BgrToYuvRow);
HWY_EXPORT(BgrToRgbaRow);
HWY_EXPORT(YuvToRgbaRow);
HWY_EXPORT(RgbaToYuvRow);
HWY_EXPORT(BoxFilterRow);
HWY_EXPORT(BoxFilterLanes);
HWY_EXPORT(LcgDrawsRow);
HWY_EXPORT(PicksBelowModRow);

void blend_row_simd(uint8_t* out, const uint8_t* a, const uint8_t* b, int n, int k) {
  HWY_DYNAMIC_DISPATCH(BlendRow)(out, a, b, n, k);
}
void blend_weights_row_simd(uint8_t* out, const uint8_t* x, const uint8_t* y, const uint16_t* g, int n) {
  HWY_DYNAMIC_DISPATCH(BlendWeightsRow)(out, x, y, g, n);
}
void scale_luma_row_simd(uint8_t* out, const uint8_t* s, int n, int w) {
  HWY_DYNAMIC_DISPATCH(ScaleLumaRow)(out, s, n, w);
}
void scale_chroma_row_simd(uint8_t* out, const uint8_t* s, int n, int w) {
  HWY_DYNAMIC_DISPATCH(ScaleChromaRow)(out, s, n, w);
}
void offset_saturate_row_simd(uint8_t* out, const uint8_t* s, int n, int offset) {
  HWY_DYNAMIC_DISPATCH(OffsetSaturateRow)(out, s, n, offset);
}
void offset_wrap_row_simd(uint8_t* out, const uint8_t* s, int n, uint8_t offset) {
  HWY_DYNAMIC_DISPATCH(OffsetWrapRow)(out, s, n, offset);
}
void select_row_simd(uint8_t* out, const uint8_t* first, const uint8_t* second, const uint8_t* pick_second, int n) {
  HWY_DYNAMIC_DISPATCH(SelectRow)(out, first, second, pick_second, n);
}

void yuv_to_bgr_row_simd(uint8_t* bgr, const uint8_t* y, const uint8_t* u, const uint8_t* v, int n) {
  HWY_DYNAMIC_DISPATCH(YuvToBgrRow)(bgr, y, u, v, n);
}
void bgr_to_yuv_row_simd(uint8_t* y0, uint8_t* y1, uint8_t* u, uint8_t* v, const uint8_t* bgr0, const uint8_t* bgr1,
                         int n) {
  HWY_DYNAMIC_DISPATCH(BgrToYuvRow)(y0, y1, u, v, bgr0, bgr1, n);
}
void bgr_to_rgba_row_simd(uint8_t* rgba, const uint8_t* bgr, int n) { HWY_DYNAMIC_DISPATCH(BgrToRgbaRow)(rgba, bgr, n); }
void yuv_to_rgba_row_simd(uint8_t* rgba, const uint8_t* y, const uint8_t* u, const uint8_t* v, int n) {
  HWY_DYNAMIC_DISPATCH(YuvToRgbaRow)(rgba, y, u, v, n);
}
void rgba_to_yuv_row_simd(uint8_t* y0, uint8_t* y1, uint8_t* u, uint8_t* v, const uint8_t* rgba0,
                          const uint8_t* rgba1, int n) {
  HWY_DYNAMIC_DISPATCH(RgbaToYuvRow)(y0, y1, u, v, rgba0, rgba1, n);
}
void box_filter_row_simd(uint32_t* out, const uint32_t* const* rows, const BoxSpan& y, const BoxColumns& columns,
                         float area) {
  HWY_DYNAMIC_DISPATCH(BoxFilterRow)(out, rows, y, columns, area);
}
int box_filter_lanes_simd() { return HWY_DYNAMIC_DISPATCH(BoxFilterLanes)(); }
uint32_t lcg_draws_row_simd(uint16_t* values, int n, uint32_t state, uint32_t mul, uint32_t add) {
  return HWY_DYNAMIC_DISPATCH(LcgDrawsRow)(values, n, state, mul, add);
}
void picks_below_mod_row_simd(uint8_t* pick, const uint16_t* values, int n, uint32_t divisor, uint32_t below) {
  HWY_DYNAMIC_DISPATCH(PicksBelowModRow)(pick, values, n, divisor, below);
}

}  // namespace

const RowKernels& simd_rows() {
  // A copy is a copy: memcpy is already the fastest row there is.
  static const RowKernels rows = {false,
                                  copy_row_c,
                                  blend_row_simd,
                                  blend_weights_row_simd,
                                  scale_luma_row_simd,
                                  scale_chroma_row_simd,
                                  offset_saturate_row_simd,
                                  offset_wrap_row_simd,
                                  select_row_simd,
                                  yuv_to_bgr_row_simd,
                                  bgr_to_yuv_row_simd,
                                  bgr_to_rgba_row_simd,
                                  yuv_to_rgba_row_simd,
                                  rgba_to_yuv_row_simd,
                                  box_filter_row_simd,
                                  box_filter_lanes_simd,
                                  lcg_draws_row_simd,
                                  picks_below_mod_row_simd};
  return rows;
}

}  // namespace zv
#endif  // HWY_ONCE
