#include "blends/dissolve_rows.h"

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace zv {

void offset_row_saturate(uint8_t* out, const uint8_t* s, int n, int offset) {
  int i = 0;
#if defined(__SSE2__)
  const __m128i amount = _mm_set1_epi8(static_cast<char>(offset < 0 ? -offset : offset));
  for (; i + 16 <= n; i += 16) {
    __m128i v = _mm_loadu_si128(reinterpret_cast<const __m128i*>(s + i));
    v = offset < 0 ? _mm_subs_epu8(v, amount) : _mm_adds_epu8(v, amount);
    _mm_storeu_si128(reinterpret_cast<__m128i*>(out + i), v);
  }
#endif
  for (; i < n; ++i) {
    const int v = s[i] + offset;
    out[i] = static_cast<uint8_t>(v < 0 ? 0 : v > 255 ? 255 : v);
  }
}

void offset_row_wrap(uint8_t* out, const uint8_t* s, int n, uint8_t offset) {
  int i = 0;
#if defined(__SSE2__)
  const __m128i amount = _mm_set1_epi8(static_cast<char>(offset));
  for (; i + 16 <= n; i += 16) {
    __m128i v = _mm_loadu_si128(reinterpret_cast<const __m128i*>(s + i));
    _mm_storeu_si128(reinterpret_cast<__m128i*>(out + i), _mm_add_epi8(v, amount));
  }
#endif
  for (; i < n; ++i) out[i] = static_cast<uint8_t>(s[i] + offset);
}

void select_row(uint8_t* out, const uint8_t* first, const uint8_t* second, const uint8_t* pick_second, int n) {
  int i = 0;
#if defined(__SSE2__)
  for (; i + 16 <= n; i += 16) {
    const __m128i m = _mm_loadu_si128(reinterpret_cast<const __m128i*>(pick_second + i));
    const __m128i f = _mm_loadu_si128(reinterpret_cast<const __m128i*>(first + i));
    const __m128i s = _mm_loadu_si128(reinterpret_cast<const __m128i*>(second + i));
    _mm_storeu_si128(reinterpret_cast<__m128i*>(out + i), _mm_or_si128(_mm_and_si128(m, s), _mm_andnot_si128(m, f)));
  }
#endif
  for (; i < n; ++i) out[i] = pick_second[i] ? second[i] : first[i];
}

}  // namespace zv
