// Where each output sample of a wipe comes from: a case names a call and, for
// every sample of one plane, the picture and position it must show (or that
// the sample is not checked). The pictures are random, so a sample taken from
// the wrong place shows.
#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <ostream>

#include "frame/registration.h"
#include "tests/test_support.h"

namespace zvtest {

// 'a' or 'b' and the position in that picture's plane; pic 0: not checked.
struct From {
  char pic;
  int x, y;
};
inline From from_a(int x, int y) { return {'a', x, y}; }
inline From from_b(int x, int y) { return {'b', x, y}; }
constexpr From kUnchecked{0, 0, 0};

struct SourceCase {
  const char* name;
  int id, style;
  double position;
  int width, height;  // of all three frames
  int plane;          // 0 Y, 1 U
  std::function<From(int x, int y)> from;
  int param1 = 0;
  double param2 = 0.0;
};

inline void PrintTo(const SourceCase& c, std::ostream* os) { *os << c.name; }

// Runs the case's call and checks every sample of its plane.
inline void expect_sources(const SourceCase& c) {
  ImagePtr a = random_frame(c.width, c.height, 1), b = random_frame(c.width, c.height, 2);
  ImagePtr out = random_frame(c.width, c.height, 3);
  TransitionParams params = make_params(c.style, c.position);
  params.param1 = c.param1;
  params.param2 = c.param2;
  ASSERT_EQ(zv::transition_entry(c.id)(out.get(), a.get(), b.get(), &params), 0);
  const int w = c.plane ? c.width / 2 : c.width, h = c.plane ? c.height / 2 : c.height;
  for (int y = 0; y < h; ++y) {
    for (int x = 0; x < w; ++x) {
      const From f = c.from(x, y);
      if (!f.pic) continue;
      ASSERT_EQ(sample(*out, c.plane, x, y), sample(f.pic == 'a' ? *a : *b, c.plane, f.x, f.y))
          << "x " << x << " y " << y << " expected " << f.pic << "(" << f.x << ", " << f.y << ")";
    }
  }
}

inline std::string source_case_name(const ::testing::TestParamInfo<SourceCase>& info) { return info.param.name; }

}  // namespace zvtest
