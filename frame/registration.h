// The table of the library's transitions, in registration order.
#pragma once

#include "frame/transition_op.h"

namespace zv {

constexpr int kTransitionCount = 66;

// The string loader's answer for `id` from this library's own module, or null.
const char* load_library_string(unsigned int id);

// The entry registered for id 1..66, or null outside that range.
TransitionOp transition_entry(int id);
// True for the transitions drawn with OpenGL (the 3D effects that need a context).
bool transition_uses_opengl(int id);
// False for the ids whose entry is still the placeholder.
bool transition_is_implemented(int id);

}  // namespace zv
