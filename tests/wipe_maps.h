// Pictures of a wipe's result as text: each row of a plane as a string with
// 'a' where the output shows `a`, 'b' where it shows `b` and '.' where the
// output kept what it held.
#pragma once

#include <string>
#include <vector>

#include "frame/registration.h"
#include "tests/test_support.h"

namespace zvtest {

// One call of transition `id`; returns its result.
inline int call_transition(int id, Image& out, Image& a, Image& b, TransitionParams params) {
  return zv::transition_entry(id)(&out, &a, &b, &params);
}

// Plane `plane` (0 = Y, 1 = U) of one call on solid pictures of one size.
inline std::vector<std::string> wipe_map(int id, int width, int height, const TransitionParams& params,
                                         int plane = 0) {
  const uint8_t a_value = plane ? 20 : 10, b_value = plane ? 210 : 200, kept = 7;
  ImagePtr a = solid_frame(width, height, 10, 20, 30);
  ImagePtr b = solid_frame(width, height, 200, 210, 220);
  ImagePtr out = solid_frame(width, height, kept, kept, kept);
  call_transition(id, *out, *a, *b, params);
  const int w = plane ? width / 2 : width, h = plane ? height / 2 : height;
  std::vector<std::string> rows(h, std::string(w, '?'));
  for (int y = 0; y < h; ++y) {
    for (int x = 0; x < w; ++x) {
      const uint8_t s = sample(*out, plane, x, y);
      rows[y][x] = s == a_value ? 'a' : s == b_value ? 'b' : s == kept ? '.' : '?';
    }
  }
  return rows;
}

// A frame whose luma sample is base + column (or base + row); chroma is zero.
inline ImagePtr coded_frame(int width, int height, int base, bool by_row) {
  ImagePtr image = solid_frame(width, height, 0, 0, 0);
  for (int y = 0; y < height; ++y) {
    for (int x = 0; x < width; ++x) image->get_Y()[y * width + x] = static_cast<uint8_t>(base + (by_row ? y : x));
  }
  return image;
}

}  // namespace zvtest
