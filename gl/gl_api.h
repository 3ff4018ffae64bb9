// The OpenGL 1.1 and GLU declarations the renderers use.
#pragma once

#if defined(_WIN32)
#include <windows.h>
#endif
#include <GL/gl.h>
#include <GL/glu.h>

#ifndef GL_BGR
#define GL_BGR 0x80E0  // GL_BGR_EXT where the headers stop at OpenGL 1.1
#endif
