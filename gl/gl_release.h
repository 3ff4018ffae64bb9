// Releasing the OpenGL objects the 3D transitions keep for a thread.
#pragma once

#include "frame/abi.h"

// Releases one OpenGL renderer of the calling thread (the first it created
// that is still cached); nothing when it has none. A thread that rendered
// several effects or sizes calls it once for each.
ZV_API void ZV_STDCALL ZvFreeOpenGLObj();
