#include "blends/blend_rows.h"

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace zv {

void blend_row(uint8_t* out, const uint8_t* a, const uint8_t* b, int n, int k) {
  int i = 0;
#if defined(__SSE2__)
  const __m128i zero = _mm_setzero_si128();
  const __m128i wa = _mm_set1_epi16(static_cast<short>(256 - k));
  const __m128i wb = _mm_set1_epi16(static_cast<short>(k));
  for (; i + 16 <= n; i += 16) {
    __m128i va = _mm_loadu_si128(reinterpret_cast<const __m128i*>(a + i));
    __m128i vb = _mm_loadu_si128(reinterpret_cast<const __m128i*>(b + i));
    // Each sum is at most 255 * 256, so 16-bit lanes hold it exactly.
    __m128i lo = _mm_add_epi16(_mm_mullo_epi16(_mm_unpacklo_epi8(va, zero), wa),
                               _mm_mullo_epi16(_mm_unpacklo_epi8(vb, zero), wb));
    __m128i hi = _mm_add_epi16(_mm_mullo_epi16(_mm_unpackhi_epi8(va, zero), wa),
                               _mm_mullo_epi16(_mm_unpackhi_epi8(vb, zero), wb));
    _mm_storeu_si128(reinterpret_cast<__m128i*>(out + i),
                     _mm_packus_epi16(_mm_srli_epi16(lo, 8), _mm_srli_epi16(hi, 8)));
  }
#endif
  for (; i < n; ++i) out[i] = static_cast<uint8_t>((a[i] * (256 - k) + b[i] * k) >> 8);
}

void blend_row_weights(uint8_t* out, const uint8_t* x, const uint8_t* y, const uint16_t* g, int n) {
  int i = 0;
#if defined(__SSE2__)
  const __m128i zero = _mm_setzero_si128();
  const __m128i full = _mm_set1_epi16(256);
  for (; i + 16 <= n; i += 16) {
    __m128i vx = _mm_loadu_si128(reinterpret_cast<const __m128i*>(x + i));
    __m128i vy = _mm_loadu_si128(reinterpret_cast<const __m128i*>(y + i));
    __m128i g0 = _mm_loadu_si128(reinterpret_cast<const __m128i*>(g + i));
    __m128i g1 = _mm_loadu_si128(reinterpret_cast<const __m128i*>(g + i + 8));
    __m128i lo = _mm_add_epi16(_mm_mullo_epi16(_mm_unpacklo_epi8(vx, zero), g0),
                               _mm_mullo_epi16(_mm_unpacklo_epi8(vy, zero), _mm_sub_epi16(full, g0)));
    __m128i hi = _mm_add_epi16(_mm_mullo_epi16(_mm_unpackhi_epi8(vx, zero), g1),
                               _mm_mullo_epi16(_mm_unpackhi_epi8(vy, zero), _mm_sub_epi16(full, g1)));
    _mm_storeu_si128(reinterpret_cast<__m128i*>(out + i),
                     _mm_packus_epi16(_mm_srli_epi16(lo, 8), _mm_srli_epi16(hi, 8)));
  }
#endif
  for (; i < n; ++i) out[i] = static_cast<uint8_t>((x[i] * g[i] + y[i] * (256 - g[i])) >> 8);
}

void scale_row(uint8_t* out, const uint8_t* s, int n, int w, bool chroma) {
  int i = 0;
#if defined(__SSE2__)
  const __m128i zero = _mm_setzero_si128();
  const __m128i vw = _mm_set1_epi16(static_cast<short>(w));
  const __m128i bias = _mm_set1_epi16(128);
  for (; i + 16 <= n; i += 16) {
    __m128i vs = _mm_loadu_si128(reinterpret_cast<const __m128i*>(s + i));
    __m128i lo = _mm_unpacklo_epi8(vs, zero), hi = _mm_unpackhi_epi8(vs, zero);
    __m128i rlo, rhi;
    if (chroma) {
      // (s - 128) * w lies in -32768..32512: exact in signed 16-bit lanes.
      rlo = _mm_add_epi16(_mm_srai_epi16(_mm_mullo_epi16(_mm_sub_epi16(lo, bias), vw), 8), bias);
      rhi = _mm_add_epi16(_mm_srai_epi16(_mm_mullo_epi16(_mm_sub_epi16(hi, bias), vw), 8), bias);
      // Keep the low 8 bits, as the scalar cast does.
      const __m128i mask = _mm_set1_epi16(0xFF);
      rlo = _mm_and_si128(rlo, mask);
      rhi = _mm_and_si128(rhi, mask);
    } else {
      rlo = _mm_srli_epi16(_mm_mullo_epi16(lo, vw), 8);
      rhi = _mm_srli_epi16(_mm_mullo_epi16(hi, vw), 8);
    }
    _mm_storeu_si128(reinterpret_cast<__m128i*>(out + i), _mm_packus_epi16(rlo, rhi));
  }
#endif
  for (; i < n; ++i) {
    out[i] = chroma ? static_cast<uint8_t>((((s[i] - 128) * w) >> 8) + 128) : static_cast<uint8_t>((s[i] * w) >> 8);
  }
}

}  // namespace zv
