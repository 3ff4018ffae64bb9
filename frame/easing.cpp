#include "frame/easing.h"

#include <cmath>
#include <cstdlib>

namespace zv {
namespace {

// One coordinate of the curve from (0, 0) through the control values p1 and
// p2 to (1, 1), as a polynomial in the curve's parameter s, and its slope.
struct BezierAxis {
  double a, b, c;
  BezierAxis(double p1, double p2) : a(1 - 3 * p2 + 3 * p1), b(3 * p2 - 6 * p1), c(3 * p1) {}
  double at(double s) const { return ((a * s + b) * s + c) * s; }
  double slope(double s) const { return (3 * a * s + 2 * b) * s + c; }
};

// The parameter s where the curve's x is t, as CSS finds it: Newton's method
// from s = t, and bisection when that does not settle (x rises monotonically
// on [0, 1] since both x control values lie in [0, 1]).
double solve_x(const BezierAxis& x, double t) {
  constexpr double kClose = 1e-12;
  double s = t;
  for (int i = 0; i < 8; ++i) {
    const double error = x.at(s) - t, slope = x.slope(s);
    if (std::fabs(error) < kClose) return s;
    if (std::fabs(slope) < 1e-9) break;
    s -= error / slope;
  }
  double low = 0, high = 1;
  s = t;
  for (int i = 0; i < 100 && high - low > kClose; ++i) {
    const double value = x.at(s);
    if (std::fabs(value - t) < kClose) return s;
    (value < t ? low : high) = s;
    s = (low + high) / 2;
  }
  return s;
}

// A number of the bezier's list, with blanks around it; moves `at` past it.
bool read_number(const char*& at, double* value) {
  char* end = nullptr;
  *value = std::strtod(at, &end);
  if (end == at || !std::isfinite(*value)) return false;
  at = end;
  while (*at == ' ' || *at == '\t') ++at;
  return true;
}

}  // namespace

bool parse_easing(const std::string& text, Easing* easing) {
  static const struct {
    const char* name;
    Easing::Kind kind;
  } kNamed[] = {{"linear", Easing::kLinear},
                {"ease-in", Easing::kEaseIn},
                {"ease-out", Easing::kEaseOut},
                {"ease-in-out", Easing::kEaseInOut}};
  for (const auto& named : kNamed) {
    if (text == named.name) {
      *easing = Easing{};
      easing->kind = named.kind;
      return true;
    }
  }
  const std::string prefix = "cubic-bezier(";
  if (text.compare(0, prefix.size(), prefix) != 0 || text.back() != ')') return false;
  const char* at = text.c_str() + prefix.size();
  double v[4];
  for (int i = 0; i < 4; ++i) {
    while (*at == ' ' || *at == '\t') ++at;
    if (!read_number(at, &v[i]) || *at != (i < 3 ? ',' : ')')) return false;
    ++at;
  }
  if (*at || v[0] < 0 || v[0] > 1 || v[2] < 0 || v[2] > 1) return false;
  *easing = Easing{};
  // On the diagonal, x(s) = y(s) for every s: the identity, exactly.
  if (v[0] == v[1] && v[2] == v[3]) return true;
  easing->kind = Easing::kBezier;
  easing->x1 = v[0];
  easing->y1 = v[1];
  easing->x2 = v[2];
  easing->y2 = v[3];
  return true;
}

double eased(const Easing& easing, double t) {
  if (!(t > 0)) return 0;
  if (!(t < 1)) return 1;
  switch (easing.kind) {
    case Easing::kEaseIn:
      return t * t * t;
    case Easing::kEaseOut:
      return 1 - (1 - t) * (1 - t) * (1 - t);
    case Easing::kEaseInOut:
      return t < 0.5 ? 4 * t * t * t : 1 - 4 * (1 - t) * (1 - t) * (1 - t);
    case Easing::kBezier:
      return BezierAxis(easing.y1, easing.y2).at(solve_x(BezierAxis(easing.x1, easing.x2), t));
    default:
      return t;
  }
}

}  // namespace zv
