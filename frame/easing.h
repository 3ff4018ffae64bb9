// Easing curves: how the time into a transition maps to the progress it
// shows. `linear` (progress = time), the cubic `ease-in` (t^3), `ease-out`
// and `ease-in-out`, and CSS's cubic-bezier(x1, y1, x2, y2).
#pragma once

#include <string>

namespace zv {

struct Easing {
  enum Kind { kLinear, kEaseIn, kEaseOut, kEaseInOut, kBezier };
  Kind kind = kLinear;
  double x1 = 0, y1 = 0, x2 = 1, y2 = 1;  // the control points of kBezier

  bool linear() const { return kind == kLinear; }
};

// Reads "linear", "ease-in", "ease-out", "ease-in-out" or
// "cubic-bezier(x1,y1,x2,y2)" (blanks allowed around the numbers; x1 and x2
// from 0 to 1, y1 and y2 finite). A curve whose control points lie on the
// diagonal is linear itself and reads as linear. False for anything else.
bool parse_easing(const std::string& text, Easing* easing);

// The eased progress at fraction t of the time: t outside [0, 1] (NaN too)
// counts as the nearer end; 0 gives exactly 0 and 1 exactly 1. A bezier curve
// may leave [0, 1] between the ends (y1 or y2 outside it).
double eased(const Easing& easing, double t);

// What the choices are, for messages.
constexpr const char* kEasingChoices =
    "linear, ease-in, ease-out, ease-in-out or cubic-bezier(x1,y1,x2,y2) with x1 and x2 from 0 to 1";

}  // namespace zv
