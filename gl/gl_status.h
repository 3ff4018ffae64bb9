// Whether the 3D transitions can draw on this machine: a query beside the
// host's interface, for hosts that want to tell their users why a 3D
// transition shows nothing (no OpenGL driver, a headless machine without one)
// before or while rendering. The transitions' own results do not change.
#pragma once

#include "frame/abi.h"

// 1 when transition `id` can draw here: every transition that does not draw
// with OpenGL, and the OpenGL ones when an OpenGL context can be made; 0 for
// those when none can be, and for an id outside 0-66. Id 0 asks about OpenGL
// alone. `text`, when not null, receives one line of at most `size` - 1
// characters, terminated: the OpenGL renderer the 3D transitions draw with and
// where, or why no context can be made. The first call of a process makes a
// test context and releases it (a few milliseconds); later calls only answer.
ZV_API int ZV_STDCALL ZvOpenGLStatus(int id, char* text, int size);
