#include "effects3d/gl_collection_renderer.h"

#include <algorithm>
#include <cmath>
#include <cstring>

#include "gl/gl_api.h"
#include "gl/offscreen_context.h"

namespace zv {
namespace {

// The collection is written for WebGL's GLSL ES 1.00; desktop GLSL 1.20 reads
// the same source once precision qualifiers mean nothing. The pictures come
// from texture units 0 and 1, picture parameters from 2 on; each fragment's
// coordinate is its pixel centre over the frame.
constexpr const char* kShaderHead = R"(#version 120
#define lowp
#define mediump
#define highp
uniform sampler2D zv_from;
uniform sampler2D zv_to;
uniform vec2 zv_size;
uniform float progress;
uniform float ratio;
vec4 getFromColor(vec2 uv) { return texture2D(zv_from, uv); }
vec4 getToColor(vec2 uv) { return texture2D(zv_to, uv); }
#line 1
)";
constexpr const char* kShaderTail = "\nvoid main() { gl_FragColor = transition(gl_FragCoord.xy / zv_size); }\n";

constexpr int kPictureSide = 256;
constexpr int kFirstPictureUnit = 2;

// A hash of a grid point to 0..1, for the noise below.
double grid_value(int x, int y) {
  uint32_t h = static_cast<uint32_t>(x) * 374761393u + static_cast<uint32_t>(y) * 668265263u;
  h = (h ^ (h >> 13)) * 1274126177u;
  return ((h ^ (h >> 16)) & 0xFFFF) / 65535.0;
}

// The built-in picture of a picture parameter: grey, kPictureSide on a side,
// RGBA, bottom row first. For `luma` (the order in which a luma wipe uncovers
// the incoming picture) the distance from the centre, darkest there and never
// quite white, so that progress 1 uncovers all of it; for any other (the
// displacement map) smooth noise over an 8 x 8 grid.
std::vector<uint8_t> builtin_picture(const char* name) {
  std::vector<uint8_t> rgba(static_cast<size_t>(kPictureSide) * kPictureSide * 4, 255);
  const bool luma = std::strcmp(name, "luma") == 0;
  const double half = kPictureSide / 2.0, cell = kPictureSide / 8.0;
  for (int y = 0; y < kPictureSide; ++y) {
    for (int x = 0; x < kPictureSide; ++x) {
      double value;
      if (luma) {
        value = std::hypot(x + 0.5 - half, y + 0.5 - half) / std::hypot(half, half);
      } else {
        const double gx = (x + 0.5) / cell, gy = (y + 0.5) / cell;
        const int ix = static_cast<int>(gx), iy = static_cast<int>(gy);
        const double fx = gx - ix, fy = gy - iy, sx = fx * fx * (3 - 2 * fx), sy = fy * fy * (3 - 2 * fy);
        const double top = grid_value(ix, iy) + (grid_value(ix + 1, iy) - grid_value(ix, iy)) * sx;
        const double bottom = grid_value(ix, iy + 1) + (grid_value(ix + 1, iy + 1) - grid_value(ix, iy + 1)) * sx;
        value = top + (bottom - top) * sy;
      }
      const uint8_t grey = static_cast<uint8_t>(std::lround(std::min(value, 1.0) * 254));
      uint8_t* texel = &rgba[(static_cast<size_t>(y) * kPictureSide + x) * 4];
      texel[0] = texel[1] = texel[2] = grey;
    }
  }
  return rgba;
}

// Sets a number parameter's uniform (a picture's is its texture unit, set once).
void set_uniform(int location, const ZvGlParamInfo& param, const double* n) {
  const auto f = [n](int k) { return static_cast<float>(n[k]); };
  const auto whole = [n](int k) { return static_cast<GLint>(n[k]); };
  if (param.kind == kZvGlFloat) {
    switch (param.components) {
      case 1: glUniform1f(location, f(0)); break;
      case 2: glUniform2f(location, f(0), f(1)); break;
      case 3: glUniform3f(location, f(0), f(1), f(2)); break;
      default: glUniform4f(location, f(0), f(1), f(2), f(3)); break;
    }
  } else if (param.kind != kZvGlImage) {
    switch (param.components) {
      case 1: glUniform1i(location, whole(0)); break;
      case 2: glUniform2i(location, whole(0), whole(1)); break;
      case 3: glUniform3i(location, whole(0), whole(1), whole(2)); break;
      default: glUniform4i(location, whole(0), whole(1), whole(2), whole(3)); break;
    }
  }
}

}  // namespace

CGlCollectionRenderer::~CGlCollectionRenderer() { MakeCurrent(); }

bool CGlCollectionRenderer::Setup(int width, int height, std::string* error) {
  target.Create(width, height, 24, false);
  hdc = create_offscreen_dc(target, &oldBitmap);
  hglrc = create_gl_context(hdc);
  if (!hglrc) {
    // Why, as the 3D transitions' status tells it (when a context can be made
    // in general, this one still could not).
    *error = offscreen_gl_status().available ? "no OpenGL context can be made for its renderer"
                                             : offscreen_gl_summary();
    return false;
  }
  MakeCurrent();
  GLint max_texture = 0, max_viewport[2] = {0, 0};
  glGetIntegerv(GL_MAX_TEXTURE_SIZE, &max_texture);
  glGetIntegerv(GL_MAX_VIEWPORT_DIMS, max_viewport);
  const int limit = std::min<int>(max_texture, std::min(max_viewport[0], max_viewport[1]));
  if (width > limit || height > limit) {
    *error = "frames of " + std::to_string(width) + "x" + std::to_string(height) +
             " are larger than this OpenGL driver draws (" + std::to_string(limit) + " on a side)";
    return false;
  }
  width_ = width;
  height_ = height;
  programs_.resize(static_cast<size_t>(kGlCollectionCount));
  initialised = 1;
  return true;
}

CGlCollectionRenderer::Program& CGlCollectionRenderer::ProgramFor(int index) {
  std::unique_ptr<Program>& slot = programs_[static_cast<size_t>(index)];
  if (slot) return *slot;
  slot = std::make_unique<Program>();
  const GlCollectionEntry& entry = kGlCollection[index];
  if (!slot->program.Build(std::string(kShaderHead) + entry.glsl + kShaderTail, &slot->error)) return *slot;
  slot->program.Use();
  glUniform1i(slot->program.Uniform("zv_from"), 0);
  glUniform1i(slot->program.Uniform("zv_to"), 1);
  slot->progress = slot->program.Uniform("progress");
  slot->ratio = slot->program.Uniform("ratio");
  slot->size = slot->program.Uniform("zv_size");
  int unit = kFirstPictureUnit;
  for (int i = 0; i < entry.info.param_count; ++i) {
    const ZvGlParamInfo& param = entry.info.params[i];
    slot->params.push_back(slot->program.Uniform(param.name));
    if (param.kind == kZvGlImage) glUniform1i(slot->params.back(), unit++);
  }
  return *slot;
}

CGlFrameTexture& CGlCollectionRenderer::PictureFor(size_t slot, const ZvGlParamInfo& param, const Image* image) {
  while (pictures_.size() <= slot) pictures_.push_back(std::make_unique<Picture>());
  Picture& picture = *pictures_[slot];
  if (image) {
    picture.texture.Upload(image_region(image, image->width, image->height));
    picture.builtin = nullptr;
  } else if (!picture.builtin || std::strcmp(picture.builtin, param.name) != 0) {
    const std::vector<uint8_t> rgba = builtin_picture(param.name);
    picture.texture.Upload(rgba.data(), kPictureSide, kPictureSide);
    picture.builtin = param.name;
  }
  return picture.texture;
}

bool CGlCollectionRenderer::Draw(int index, const YuvRegion& out, const YuvRegion& a, const YuvRegion& b,
                                 double progress, const std::vector<GlParamSetting>& settings, std::string* error) {
  const GlCollectionEntry& entry = kGlCollection[index];
  MakeCurrent();
  while (glGetError() != GL_NO_ERROR) {
  }
  Program& p = ProgramFor(index);
  if (!p.program.built()) {
    *error = std::string(entry.info.name) + ": its shader does not compile on this OpenGL driver: " + p.error;
    return false;
  }
  // Every texture is filled before any is bound to its unit: filling one binds it.
  from_.Upload(a);
  to_.Upload(b);
  std::vector<CGlFrameTexture*> pictures;
  for (int i = 0; i < entry.info.param_count; ++i) {
    if (entry.info.params[i].kind == kZvGlImage) {
      pictures.push_back(&PictureFor(pictures.size(), entry.info.params[i], settings[static_cast<size_t>(i)].image));
    }
  }
  p.program.Use();
  from_.Bind(0);
  to_.Bind(1);
  for (size_t k = 0; k < pictures.size(); ++k) pictures[k]->Bind(kFirstPictureUnit + static_cast<int>(k));
  glUniform1f(p.progress, static_cast<float>(progress));
  glUniform1f(p.ratio, static_cast<float>(width_) / static_cast<float>(height_));
  glUniform2f(p.size, static_cast<float>(width_), static_cast<float>(height_));
  for (int i = 0; i < entry.info.param_count; ++i) {
    set_uniform(p.params[static_cast<size_t>(i)], entry.info.params[i], settings[static_cast<size_t>(i)].numbers);
  }
  glViewport(0, 0, width_, height_);
  glRecti(-1, -1, 1, 1);
  const GLenum failure = glGetError();
  if (failure != GL_NO_ERROR) {
    *error = std::string(entry.info.name) + ": OpenGL failed to draw it (error " + std::to_string(failure) + ")";
    return false;
  }
  YuvRegion drawn = out;
  drawn.width = width_;
  drawn.height = height_;
  read_framebuffer_into_region(drawn, read_back_);
  return true;
}

}  // namespace zv
