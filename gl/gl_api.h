// The OpenGL 1.1 and GLU declarations the renderers use; elsewhere than on
// Windows also the later entry points (shaders, framebuffers), which the
// vendor-neutral OpenGL library exports directly.
#pragma once

#if defined(_WIN32)
#include <windows.h>
#elif !defined(GL_GLEXT_PROTOTYPES)
#define GL_GLEXT_PROTOTYPES 1
#endif
#include <GL/gl.h>
#include <GL/glu.h>
#if !defined(_WIN32)
#include <GL/glext.h>
#endif

#ifndef GL_BGR
#define GL_BGR 0x80E0  // GL_BGR_EXT where the headers stop at OpenGL 1.1
#endif
