// The open GLSL transition collection (125 community transitions, each with
// its author and licence), drawn on the library's headless OpenGL path
// between two 4:2:0 frames. These are not registered with the host beside the
// 66: a host lists them and calls them through the functions below.
#pragma once

#include <cstdint>

#include "frame/abi.h"
#include "host/image.h"

// How a parameter's value is given.
enum ZvGlParamKind {
  kZvGlFloat = 0,  // 1 to 4 numbers (float, vec2, vec3, vec4)
  kZvGlInt = 1,    // 1 to 4 whole numbers (int, ivec2)
  kZvGlBool = 2,   // one number, 0 or 1
  kZvGlImage = 3,  // a picture (sampler2D); the transitions read its red channel
};

struct ZvGlParamInfo {
  const char* name;       // the uniform's name in the transition's source
  const char* glsl_type;  // "float", "vec2", "vec3", "vec4", "int", "ivec2", "bool" or "sampler2D"
  int32_t kind;           // ZvGlParamKind
  int32_t components;     // numbers in a value: 1 to 4, 0 for a picture
  double defaults[4];     // the default value's numbers (a picture's default is built in)
};

struct ZvGlTransitionInfo {
  const char* name;     // unique, as the collection spells it ("fade", "CrossZoom", "coord-from-in")
  const char* author;
  const char* license;  // "MIT", "BSD 2 Clause" or "BSD 3 Clause"
  int32_t param_count;
  const ZvGlParamInfo* params;
};

// One parameter's value for a call; parameters not given keep their defaults.
struct ZvGlParamValue {
  const char* name;
  // The numbers (as many as the parameter's components; 0 for a picture).
  // Each is finite and within -1e6..1e6; whole for integers, 0 or 1 for a switch.
  int32_t count;
  double values[4];
  // A picture parameter's frame (4:2:0, any size with sides of at least 2), or
  // null for the built-in picture.
  const Image* image;
};

// Results of zvGlTranCheck and zvGlTranApply.
enum ZvGlResult {
  kZvGlDone = 0,
  kZvGlNullArgument = 1,  // out, a or b is null: nothing is written, not even the flags
  kZvGlBadArgument = 3,   // no transition of that index, or a value that does not fit its parameter
  kZvGlNotDrawn = 4,      // no OpenGL context could be made, or the transition's shader does not compile here
};

// The number of transitions in the collection; they are indexed from 0.
ZV_API int ZV_STDCALL zvGlTranCount();
// The transition at `index`, or null out of range. Static: valid for the library's lifetime.
ZV_API const ZvGlTransitionInfo* ZV_STDCALL zvGlTranInfo(int index);
// The index of the transition named `name` (exactly, else in any letter case), or -1.
ZV_API int ZV_STDCALL zvGlTranFind(const char* name);
// Whether `values` (`count` of them) fit transition `index`: 0, or 3 with the
// reason in zvGlTranError.
ZV_API int ZV_STDCALL zvGlTranCheck(int index, const ZvGlParamValue* values, int count);
// One call: `out` shows transition `index` between `a` (outgoing, alone at
// progress 0) and `b` (incoming, alone at 1) at `progress`, clamped into
// [0, 1] (NaN shows `a`), with the parameters' defaults replaced by `values`.
// As every transition: `out` takes `a`'s frame flags (after the null test);
// the call works on the centred region the three frames have in common and
// writes nothing outside it, nor the last column or row of a region of odd
// size (the conversions work on pairs of rows and columns). Results as for
// ZvGlResult; only 0 writes the planes. Any thread may call it: the OpenGL
// objects are kept per thread and frame size, and ZvFreeOpenGLObj on the
// thread frees them as it frees the 3D transitions' (one renderer per call).
ZV_API int ZV_STDCALL zvGlTranApply(int index, Image* out, Image* a, Image* b, double progress,
                                    const ZvGlParamValue* values, int count);
// Why the calling thread's last zvGlTranCheck or zvGlTranApply did not return
// 0: one line naming the transition, or "" after a call that did. Valid until
// that thread's next call.
ZV_API const char* ZV_STDCALL zvGlTranError();
