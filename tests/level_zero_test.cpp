// Level 0 of the largest frame textures against what OpenGL's mipmap builder (GLU) puts there, read back with
// glGetTexImage, texel for texel: every width from 1025 to 2048 and every height from 1025 to 2048 (the other side
// small), odd sizes, the video sizes and portrait frames; on the reference rows and on the SIMD rows; from a bitmap
// and, through a renderer's texture, straight from a frame's planes.
#include <gtest/gtest.h>

#include <cstring>
#include <random>
#include <string>
#include <vector>

#include "frame/kernel_path.h"
#include "gl/gl_api.h"
#include "gl/gl_renderer.h"
#include "gl/level_zero.h"
#include "tests/test_support.h"

namespace {

struct Level {
  int width = 0, height = 0;
  std::vector<uint8_t> texels;  // R, G, B, A rows
};

class ProbeRenderer : public zv::CGlRenderer {};

CNewDib& random_bitmap(CNewDib& dib, int width, int height, std::mt19937& gen) {
  dib.Create(width, height, 24, false);
  auto* pixels = static_cast<uint8_t*>(dib.LockBits());
  for (size_t i = 0; i < static_cast<size_t>(dib.GetPitch()) * height; ++i) pixels[i] = static_cast<uint8_t>(gen());
  dib.UnlockBits();
  return dib;
}

// The texture bound to GL_TEXTURE_2D, level 0.
Level bound_level_zero() {
  Level level;
  glGetTexLevelParameteriv(GL_TEXTURE_2D, 0, GL_TEXTURE_WIDTH, &level.width);
  glGetTexLevelParameteriv(GL_TEXTURE_2D, 0, GL_TEXTURE_HEIGHT, &level.height);
  level.texels.resize(static_cast<size_t>(level.width) * level.height * 4);
  glGetTexImage(GL_TEXTURE_2D, 0, GL_RGBA, GL_UNSIGNED_BYTE, level.texels.data());
  return level;
}

// The builder's level 0 for the bitmap's pixels as R, G, B rows (the bitmap's own padded rows, bottom first).
Level builder_level_zero(CNewDib& dib) {
  const int width = dib.m_pInfo->biWidth, height = dib.m_pInfo->biHeight, pitch = dib.GetPitch();
  std::vector<uint8_t> rgb(static_cast<size_t>(pitch) * height);
  const auto* bgr = static_cast<const uint8_t*>(dib.LockBits());
  for (int row = 0; row < height; ++row) {
    for (size_t i = static_cast<size_t>(row) * pitch; i < static_cast<size_t>(row) * pitch + width * 3u; i += 3) {
      rgb[i] = bgr[i + 2], rgb[i + 1] = bgr[i + 1], rgb[i + 2] = bgr[i];
    }
  }
  dib.UnlockBits();
  GLuint texture = 0;
  glGenTextures(1, &texture);
  glBindTexture(GL_TEXTURE_2D, texture);
  EXPECT_EQ(gluBuild2DMipmaps(GL_TEXTURE_2D, 3, width, height, GL_RGB, GL_UNSIGNED_BYTE, rgb.data()), 0);
  Level level = bound_level_zero();
  glDeleteTextures(1, &texture);
  return level;
}

Level our_level_zero(CNewDib& dib) {
  Level level;
  const zv::LevelZeroSize size = zv::mipmap_level_zero_size(dib.m_pInfo->biWidth, dib.m_pInfo->biHeight);
  level.width = size.width;
  level.height = size.height;
  zv::LevelZeroScaler scaler;
  scaler.Prepare(dib.m_pInfo->biWidth, dib.m_pInfo->biHeight, size);
  level.texels.resize(static_cast<size_t>(size.width) * size.height * 4);
  scaler.Fill(zv::FrameRows(dib), reinterpret_cast<uint32_t*>(level.texels.data()));
  return level;
}

::testing::AssertionResult same_level(const Level& ours, const Level& builder, const std::string& what) {
  if (ours.width != builder.width || ours.height != builder.height) {
    return ::testing::AssertionFailure() << what << ": level 0 is " << ours.width << "x" << ours.height
                                         << ", the builder's " << builder.width << "x" << builder.height;
  }
  for (size_t i = 0; i < ours.texels.size(); ++i) {
    if (ours.texels[i] != builder.texels[i]) {
      const size_t texel = i / 4;
      return ::testing::AssertionFailure() << what << ": texel (" << texel % ours.width << ", " << texel / ours.width
                                           << ") channel " << i % 4 << " is " << int{ours.texels[i]}
                                           << ", the builder's " << int{builder.texels[i]};
    }
  }
  return ::testing::AssertionSuccess();
}

class LevelZeroTest : public ::testing::TestWithParam<zv::KernelPath> {
 protected:
  void SetUp() override {
    zv::set_kernel_path(GetParam());
    context_.SetupOffscreenGL(64, 48, 16);  // a current context for the builder and the size rule
    ASSERT_NE(context_.hglrc, nullptr) << "no OpenGL context could be made";
  }
  void TearDown() override { zv::set_kernel_path(zv::KernelPath::kFast); }

  ProbeRenderer context_;
  std::mt19937 gen_{17};
};

// Not below 3 wide: a level 1 or 2 texels wide the builder uploads as if its 3- or 6-byte rows were padded to 4
// bytes, reading past its own buffer, so that level is not defined (ours holds the scaled frame).
TEST_P(LevelZeroTest, EveryWidthAndHeightFrom1025To2048) {
  for (int side = 1025; side <= 2048; ++side) {
    for (const bool portrait : {false, true}) {
      const int small = 3 + side * 7 % 45;
      CNewDib dib;
      random_bitmap(dib, portrait ? small : side, portrait ? side : small, gen_);
      ASSERT_TRUE(same_level(our_level_zero(dib), builder_level_zero(dib),
                             std::to_string(dib.m_pInfo->biWidth) + "x" + std::to_string(dib.m_pInfo->biHeight)));
    }
  }
}

TEST_P(LevelZeroTest, VideoOddAndPortraitSizes) {
  const int sizes[][2] = {{1280, 720},  {1920, 1080}, {2048, 1152}, {3840, 2160}, {1080, 1920}, {720, 1280},
                          {2160, 3840}, {1601, 899},  {2047, 1535}, {1537, 1023}, {1025, 1025}, {1365, 1366},
                          {2048, 1024}, {2048, 2048}, {4095, 2161}, {1111, 3001}};
  for (const auto& size : sizes) {
    CNewDib dib;
    random_bitmap(dib, size[0], size[1], gen_);
    EXPECT_TRUE(same_level(our_level_zero(dib), builder_level_zero(dib),
                           std::to_string(size[0]) + "x" + std::to_string(size[1])));
  }
}

// Through a renderer's texture, from a bitmap and straight from a frame's planes (odd sizes leave the bitmap's last
// column and bottom row black, as the conversion into it does).
TEST_P(LevelZeroTest, RendererTexturesHoldTheBuildersLevel) {
  const int sizes[][2] = {{1920, 1080}, {1081, 1921}, {3840, 2160}, {1601, 899}};
  for (const auto& size : sizes) {
    const std::string what = std::to_string(size[0]) + "x" + std::to_string(size[1]);
    ProbeRenderer renderer;
    renderer.SetupOffscreenGL(size[0], size[1], 16);
    CNewDib from_bitmap, from_frame;
    random_bitmap(from_bitmap, size[0], size[1], gen_);
    zvtest::ImagePtr frame = zvtest::random_frame(size[0] + 2, size[1] + 2, gen_());  // wider than the bitmap
    zv::ImageToDib(frame.get(), from_frame, size[0], size[1]);
    const Level bitmap_builder = builder_level_zero(from_bitmap), frame_builder = builder_level_zero(from_frame);
    renderer.BindFrames(from_bitmap, nullptr, from_frame, frame.get());
    renderer.texture.UploadDibToTexture(from_bitmap);
    EXPECT_TRUE(same_level(bound_level_zero(), bitmap_builder, what + " from a bitmap"));
    renderer.texture.UploadDibToTexture(from_frame);
    EXPECT_TRUE(same_level(bound_level_zero(), frame_builder, what + " from a frame's planes"));
    renderer.ReleaseFrames();
  }
}

INSTANTIATE_TEST_SUITE_P(Rows, LevelZeroTest, ::testing::Values(zv::KernelPath::kReference, zv::KernelPath::kFast),
                         [](const auto& info) { return info.param == zv::KernelPath::kFast ? "simd" : "reference"; });

}  // namespace
