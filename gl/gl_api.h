// The OpenGL 1.1 and GLU declarations the renderers use.
#pragma once

#if defined(_WIN32)
#include <windows.h>
#endif
#include <GL/gl.h>
#include <GL/glu.h>
