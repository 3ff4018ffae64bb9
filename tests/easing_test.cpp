// Easing curves: the names and cubic-bezier lists read, what they refuse, and the curves' values against
// independent ones (the cubic polynomials, and a bezier curve sampled densely).
#include <gtest/gtest.h>

#include <cmath>

#include "frame/easing.h"

namespace {

zv::Easing parsed(const std::string& text) {
  zv::Easing e;
  EXPECT_TRUE(zv::parse_easing(text, &e)) << text;
  return e;
}

TEST(Easing, ReadsTheNamesAndCubicBezierListsAndRefusesTheRest) {
  EXPECT_EQ(parsed("linear").kind, zv::Easing::kLinear);
  EXPECT_EQ(parsed("ease-in").kind, zv::Easing::kEaseIn);
  EXPECT_EQ(parsed("ease-out").kind, zv::Easing::kEaseOut);
  EXPECT_EQ(parsed("ease-in-out").kind, zv::Easing::kEaseInOut);
  const zv::Easing e = parsed("cubic-bezier( 0.42 ,0, 1,1 )");
  EXPECT_EQ(e.kind, zv::Easing::kBezier);
  EXPECT_EQ(e.x1, 0.42);
  EXPECT_EQ(e.y2, 1.0);
  EXPECT_EQ(parsed("cubic-bezier(0,-2,1,3.5)").y1, -2.0);  // y may leave [0, 1]
  // Control points on the diagonal: the identity itself.
  EXPECT_EQ(parsed("cubic-bezier(0.3,0.3,0.8,0.8)").kind, zv::Easing::kLinear);

  for (const char* bad : {"", "Linear", "ease", "ease-in ", "cubic-bezier", "cubic-bezier()", "cubic-bezier(0,0,1)",
                          "cubic-bezier(0,0,1,1,1)", "cubic-bezier(1.5,0,1,1)", "cubic-bezier(0,0,-0.1,1)",
                          "cubic-bezier(nan,0,1,1)", "cubic-bezier(0,inf,1,1)", "cubic-bezier(0,0,1,1)x",
                          "cubic-bezier(0,0,1,1", "cubic-bezier(0;0;1;1)", "cubic-bezier(0,,1,1)"}) {
    zv::Easing untouched;
    untouched.kind = zv::Easing::kEaseOut;
    EXPECT_FALSE(zv::parse_easing(bad, &untouched)) << bad;
  }
}

TEST(Easing, CubicCurvesAndEnds) {
  const zv::Easing in = parsed("ease-in"), out = parsed("ease-out"), in_out = parsed("ease-in-out");
  EXPECT_EQ(zv::eased(in, 0.5), 0.125);
  EXPECT_EQ(zv::eased(out, 0.5), 0.875);
  EXPECT_EQ(zv::eased(in_out, 0.5), 0.5);
  EXPECT_EQ(zv::eased(in_out, 0.25), 0.0625);
  EXPECT_EQ(zv::eased(in_out, 0.75), 0.9375);
  for (const char* name : {"linear", "ease-in", "ease-out", "ease-in-out", "cubic-bezier(0.1,0.7,0.9,-0.4)"}) {
    const zv::Easing e = parsed(name);
    EXPECT_EQ(zv::eased(e, 0.0), 0.0) << name;
    EXPECT_EQ(zv::eased(e, 1.0), 1.0) << name;
    EXPECT_EQ(zv::eased(e, -3.0), 0.0) << name;
    EXPECT_EQ(zv::eased(e, 7.0), 1.0) << name;
    EXPECT_EQ(zv::eased(e, NAN), 0.0) << name;
  }
  const zv::Easing diagonal = parsed("cubic-bezier(0.25,0.25,0.75,0.75)");
  for (int i = 0; i <= 1000; ++i) EXPECT_EQ(zv::eased(diagonal, i / 1000.0), i / 1000.0);
}

// The curve's points sampled densely in its parameter, and y read off where x passes t.
double sampled_bezier(double x1, double y1, double x2, double y2, double t) {
  auto point = [](double p1, double p2, double s) {
    return 3 * (1 - s) * (1 - s) * s * p1 + 3 * (1 - s) * s * s * p2 + s * s * s;
  };
  constexpr int kSteps = 200000;
  for (int i = 0; i < kSteps; ++i) {
    const double s0 = static_cast<double>(i) / kSteps, s1 = static_cast<double>(i + 1) / kSteps;
    const double xa = point(x1, x2, s0), xb = point(x1, x2, s1);
    if (t >= xa && t <= xb) {
      const double f = xb > xa ? (t - xa) / (xb - xa) : 0;
      return point(y1, y2, s0) + f * (point(y1, y2, s1) - point(y1, y2, s0));
    }
  }
  return NAN;
}

TEST(Easing, CubicBezierAsCssDefinesIt) {
  // CSS's own "ease" half way, as browsers compute it.
  EXPECT_NEAR(zv::eased(parsed("cubic-bezier(0.25,0.1,0.25,1)"), 0.5), 0.8024033877399112, 1e-9);
  const double curves[][4] = {{0.42, 0, 1, 1}, {0, 0, 0.58, 1}, {0.68, -0.55, 0.27, 1.55}, {1, 0, 0, 1},
                              {0, 1, 1, 0}};
  for (const auto& c : curves) {
    const zv::Easing e = parsed("cubic-bezier(" + std::to_string(c[0]) + "," + std::to_string(c[1]) + "," +
                                std::to_string(c[2]) + "," + std::to_string(c[3]) + ")");
    for (double t = 0.05; t < 1; t += 0.1) {
      EXPECT_NEAR(zv::eased(e, t), sampled_bezier(c[0], c[1], c[2], c[3], t), 1e-6) << c[0] << " " << t;
    }
  }
}

}  // namespace
