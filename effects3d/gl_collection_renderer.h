// The renderer of the GLSL collection: one per frame size and thread serves
// every transition of the collection, compiling each one's program when it is
// first drawn. The pictures reach OpenGL as textures of the frame's own size;
// the frame is drawn as one full-frame quad and read back into `out`.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "effects3d/gl_collection_data.h"
#include "gl/frame_texture.h"
#include "gl/gl_program.h"
#include "gl/gl_renderer.h"

namespace zv {

// The key under which the collection's renderers are cached (past the 66 ids).
constexpr int kGlCollectionEffectId = 1000;

// A parameter's value for one call: its numbers, or a picture (null: the
// built-in one).
struct GlParamSetting {
  double numbers[4];
  const Image* image;
};

class CGlCollectionRenderer : public CGlRenderer {
 public:
  // Deletes the programs and textures in the renderer's own context.
  ~CGlCollectionRenderer() override;
  // The context, drawing on a surface of width x height. False, with `error`
  // saying why, when no context can be made or the driver cannot draw frames
  // of that size.
  bool Setup(int width, int height, std::string* error);
  // Draws transition `index` between the regions `a` and `b` (each the
  // renderer's size) into `out`, one setting per parameter. False, with
  // `error`, when its shader does not compile or OpenGL failed; `out` is then
  // left as it was.
  bool Draw(int index, const YuvRegion& out, const YuvRegion& a, const YuvRegion& b, double progress,
            const std::vector<GlParamSetting>& settings, std::string* error);

 private:
  struct Program {
    CGlProgram program;
    std::string error;  // why it did not build
    int progress = -1, ratio = -1, size = -1;
    std::vector<int> params;  // the location of each parameter's uniform
  };
  // What a picture texture holds: the built-in picture of that parameter name
  // (null: a caller's picture, uploaded on every call).
  struct Picture {
    CGlFrameTexture texture;
    const char* builtin = nullptr;
  };
  Program& ProgramFor(int index);
  // The texture of the `slot`-th picture parameter, holding `image` (null: the built-in picture).
  CGlFrameTexture& PictureFor(size_t slot, const ZvGlParamInfo& param, const Image* image);

  int width_ = 0, height_ = 0;
  std::vector<std::unique_ptr<Program>> programs_;
  CGlFrameTexture from_, to_;
  std::vector<std::unique_ptr<Picture>> pictures_;
  std::vector<uint8_t> read_back_;
};

}  // namespace zv
