// The SIMD rows, compiled once per instruction set and chosen at run time.
// Each works in whole vectors and leaves the rest of the row to its C row.
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "frame/row_kernels_hwy.cpp"
#include "hwy/foreach_target.h"  // IWYU pragma: keep
#include "hwy/highway.h"

#include "frame/row_kernels.h"

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
                                  select_row_simd};
  return rows;
}

}  // namespace zv
#endif  // HWY_ONCE
