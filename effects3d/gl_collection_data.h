// The collection's table, generated at build time from the npm package
// (effects3d/gl_collection_data.py).
#pragma once

#include "effects3d/zv_gl_collection.h"

namespace zv {

struct GlCollectionEntry {
  ZvGlTransitionInfo info;
  const char* glsl;  // defines vec4 transition(vec2 uv); reads the pictures through getFromColor and getToColor
};

extern const GlCollectionEntry kGlCollection[];
extern const int kGlCollectionCount;
extern const char kGlCollectionVersion[];  // the package's version

}  // namespace zv
