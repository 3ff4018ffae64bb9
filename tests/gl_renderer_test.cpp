// The offscreen renderer and its caches: texture sizes and placement, camera
// distances, renderer reuse per (size, effect, thread), and freeing.
#include <gtest/gtest.h>

#include <GL/gl.h>

#include <thread>
#include <vector>

#include "frame/registration.h"
#include "gl/gl_cache.h"
#include "gl/gl_renderer.h"
#include "tests/test_support.h"

namespace {

constexpr int kDriveOff = 49, kCube = 57;

int call(int id, int width, int height, double position) {
  auto a = zvtest::random_frame(width, height, 1), b = zvtest::random_frame(width, height, 2);
  auto out = zvtest::random_frame(width, height, 3);
  TransitionParams params = zvtest::make_params(0, position);
  return zv::transition_entry(id)(out.get(), a.get(), b.get(), &params);
}

TEST(TextureSizeFor, PowersOfTwoFrom64UpTo2048) {
  const int cases[][2] = {{-5, 64},     {0, 64},      {64, 64},     {65, 128},   {128, 128},
                          {129, 256},   {256, 256},   {257, 512},   {512, 512},  {513, 1024},
                          {1024, 1024}, {1025, 2048}, {2048, 2048}, {5000, 2048}};
  for (const auto& c : cases) EXPECT_EQ(zv::TextureSizeFor(c[0]), c[1]) << c[0];
}

TEST(CameraDistanceFor, EveryCaseWithItsSinglePrecisionConstants) {
  struct Case { int s, w, h; double d; };
  const Case cases[] = {
      {64, 64, 48, -2.5},
      {128, 128, 96, -0x1.333334p+1},        // the one special size: single -2.4
      {512, 320, 240, -0x1.99999dp+0},       // H = 240 is not below 240
      {256, 176, 144, -0x1.eaeaeep+0},       // small frames: twice the distance from 256
      {1024, 720, 576, -0x1.eaeaeep+0},      // H/2 for tall frames
      {1024, 800, 400, -0x1.5454558p+0},     // wide: k1 and 1.7
      {1024, 400, 800, -0x1.f33334p+0},      // narrow and tall: single -1.95
      {1024, 600, 1000, -0x1.a90909ep+1},
      {2048, 1920, 1080, -0x1.353333acp+1},  // both sides in 1025..2048: k3
      {2048, 2000, 400, -0x1.866669ep+0},    // a side below 512: k3 one unit lower
      {2048, 1600, 900, -0x1.0cf33423p+1},   // a side below 1024: k4
      {2048, 1024, 1100, -0x1.be999a6ep+1},  // no case of its own: k3's formula
  };
  for (const Case& c : cases) EXPECT_EQ(zv::CameraDistanceFor(c.s, c.w, c.h), c.d) << c.w << "x" << c.h;
}

// A renderer with no drawing of its own, to look at its texture.
class ProbeRenderer : public zv::CGlRenderer {};

// Uploads a frame bitmap whose pixel (x, row) holds (x, row, 7) as B, G, R,
// modulo 256, and reads back the renderer's texture (RGB, `size` square).
std::vector<uint8_t> upload_probe(ProbeRenderer& renderer, int width, int height, int size) {
  renderer.SetupOffscreenGL(width, height, 16);
  renderer.BeginFrameRender();
  EXPECT_NE(renderer.hglrc, nullptr) << "no OpenGL context could be made";
  EXPECT_EQ(renderer.texture.size, size);
  CNewDib dib;
  dib.Create(width, height, 24, false);
  uint8_t* pixels = static_cast<uint8_t*>(dib.LockBits());
  for (int row = 0; row < height; ++row) {
    for (int x = 0; x < width; ++x) {
      uint8_t* p = pixels + static_cast<long>(row) * dib.GetPitch() + 3 * x;
      p[0] = static_cast<uint8_t>(x);
      p[1] = static_cast<uint8_t>(row);
      p[2] = 7;
    }
  }
  dib.UnlockBits();
  renderer.texture.UploadDibToTexture(dib);
  std::vector<uint8_t> texels(static_cast<size_t>(size) * size * 3);
  glGetTexImage(GL_TEXTURE_2D, 0, GL_RGB, GL_UNSIGNED_BYTE, texels.data());
  return texels;
}

TEST(CGlTexture, FrameSitsCentredInTheSquareTexture) {
  ProbeRenderer renderer;
  const std::vector<uint8_t> texels = upload_probe(renderer, 720, 576, 1024);
  ASSERT_FALSE(HasFailure());
  auto texel = [&](int x, int y) { return texels.data() + (static_cast<long>(y) * 1024 + x) * 3; };
  // The frame starts at texel (152, 224), red first; bitmap row 0 is texture row 224.
  for (int row : {0, 1, 300, 575}) {
    for (int x : {0, 1, 255, 719}) {
      const uint8_t* t = texel(152 + x, 224 + row);
      EXPECT_EQ(t[0], 7);
      EXPECT_EQ(t[1], static_cast<uint8_t>(row));
      EXPECT_EQ(t[2], static_cast<uint8_t>(x));
    }
  }
  for (auto [x, y] : {std::pair{151, 224}, {152, 223}, {872, 224}}) EXPECT_EQ(texel(x, y)[0], 0) << x << "," << y;
}

TEST(CGlTexture, LargestTextureTakesTheFrameRescaled) {
  ProbeRenderer renderer;
  const std::vector<uint8_t> texels = upload_probe(renderer, 2000, 1000, 2048);
  GLint width = 0;
  glGetTexLevelParameteriv(GL_TEXTURE_2D, 0, GL_TEXTURE_WIDTH, &width);
  EXPECT_EQ(width, 2048);  // not a centred 2000-wide sub-image
  EXPECT_EQ(texels[0], 7);  // the frame's own corner, not an empty border
}

// Sizes no other test uses, so that the bitmap sets they make are counted here: one renderer per size, effect and
// thread, one bitmap set per size; each free releases one of the calling thread's renderers.
TEST(GlRendererList, OneRendererPerSizeEffectAndThreadFreedOneACall) {
  const int renderers = zv::gl_renderer_count(), sets = zv::frame_dib_set_count();
  ASSERT_EQ(call(kCube, 66, 50, 0.3), 0);
  ASSERT_EQ(call(kCube, 66, 50, 0.6), 0);
  EXPECT_EQ(zv::gl_renderer_count(), renderers + 1);
  EXPECT_EQ(zv::frame_dib_set_count(), sets + 1);
  call(kCube, 352, 288, 0.5);
  call(kDriveOff, 352, 288, 0.5);
  EXPECT_EQ(zv::gl_renderer_count(), renderers + 3);
  EXPECT_EQ(zv::frame_dib_set_count(), sets + 2);

  // Another thread gets its own renderer, keeps it after it finishes, and a thread that never rendered frees nothing.
  std::thread([] { call(kCube, 66, 50, 0.3); }).join();
  EXPECT_EQ(zv::gl_renderer_count(), renderers + 4);
  std::thread([] { ZvFreeOpenGLObj(); }).join();
  EXPECT_EQ(zv::gl_renderer_count(), renderers + 4);
  EXPECT_EQ(zv::frame_dib_set_count(), sets + 2);

  for (int left : {3, 2, 1, 1}) {  // the fourth call finds nothing more of this thread's
    ZvFreeOpenGLObj();
    EXPECT_EQ(zv::gl_renderer_count(), renderers + left);
  }
  EXPECT_EQ(zv::frame_dib_set_count(), sets + 2);  // bitmap sets stay until unload
}

// Eight threads at two sizes, each OpenGL effect drawn on two threads at once (a quarter of the effects per thread
// keeps the contexts made few); each thread frees its two renderers of an effect before the next.
TEST(GlRendererList, ManyThreadsAtTwoSizesThenEverythingFreed) {
  const int gl_ids[] = {42, 43, 45, 47, 48, 49, 50, 51, 52, 55, 57, 58, 60, 61, 62, 64};
  const int renderers = zv::gl_renderer_count();
  std::vector<std::thread> threads;
  for (int t = 0; t < 8; ++t) {
    threads.emplace_back([t, &gl_ids] {
      for (int k = 0; k < 4; ++k) {
        const int id = gl_ids[(4 * (t % 4) + k + 16 * (t / 4)) % 16];
        for (double p : {0.3, 0.7}) {
          EXPECT_EQ(call(id, 64, 48, p), 0);
          EXPECT_EQ(call(id, 90 + 2 * t, 60, p), 0);
        }
        // Two renderers made here (two sizes): two calls free them, a third finds none.
        for (int i = 0; i < 3; ++i) ZvFreeOpenGLObj();
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(zv::gl_renderer_count(), renderers);
}

// Two threads drawing frames large enough that their rows are split over the cores (the largest texture's level 0,
// the frame's way in and the read-back), each with its own renderer, the same bytes as one thread alone.
TEST(GlRendererList, LargeFramesFromTwoThreadsSplitTheirRowsAlike) {
  const int width = 1100, height = 400;
  auto a = zvtest::random_frame(width, height, 4), b = zvtest::random_frame(width, height, 5);
  auto draw = [&](zvtest::ImagePtr& out) {
    out = zvtest::random_frame(width, height, 6);
    TransitionParams params = zvtest::make_params(0, 0.4);
    EXPECT_EQ(zv::transition_entry(kDriveOff)(out.get(), a.get(), b.get(), &params), 0);
    ZvFreeOpenGLObj();
  };
  zvtest::ImagePtr alone, first, second;
  draw(alone);
  std::thread one([&] { draw(first); }), two([&] { draw(second); });
  one.join();
  two.join();
  EXPECT_EQ(zvtest::frame_bytes(*first), zvtest::frame_bytes(*alone));
  EXPECT_EQ(zvtest::frame_bytes(*second), zvtest::frame_bytes(*alone));
}

TEST(GlTransitions, EmptyAndNullCallsDrawNothing) {
  const int renderers = zv::gl_renderer_count();
  for (int id : {kCube, kDriveOff}) {
    auto a = zvtest::solid_frame(0, 0, 1, 2, 3), out = zvtest::solid_frame(0, 0, 1, 2, 3);
    TransitionParams params = zvtest::make_params(0, 0.5);
    EXPECT_EQ(zv::transition_entry(id)(out.get(), a.get(), a.get(), &params), 0);
    EXPECT_EQ(zv::transition_entry(id)(out.get(), a.get(), nullptr, &params), 1);
    params.enabled = 0;
    EXPECT_EQ(zv::transition_entry(id)(out.get(), a.get(), a.get(), &params), 2);
  }
  EXPECT_EQ(zv::gl_renderer_count(), renderers);
}

}  // namespace
