// Calls every transition and picture service on one fixed set of frames and
// prints one line per call: the call, its result, the frame flags, param1 and
// a digest of every output byte. Built against two builds of the library
// (tools/compare_builds.sh), the two listings must match line for line.
#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <memory>
#include <vector>

#include "frame/zv_transition.h"
#include "host/transition_registry.h"
#include "imaging/fit_overlap.h"
#include "imaging/image_resize.h"
#include "imaging/yuv_rgb.h"

namespace {

uint32_t g_seed = 20240;
uint8_t next_byte() {
  g_seed = g_seed * 1103515245u + 12345u;
  return static_cast<uint8_t>(g_seed >> 16);
}

// Through the accessors every version of Image has.
uint8_t* plane_of(const Image& image, int p) { return p == 0 ? image.get_Y() : p == 1 ? image.get_U() : image.get_V(); }

std::unique_ptr<Image> frame(int w, int h, int flags) {
  auto image = std::make_unique<Image>(w, h);
  for (int p = 0; p < 3; ++p) {
    for (size_t i = 0; i < image->plane_size(p); ++i) plane_of(*image, p)[i] = next_byte();
  }
  image->set_frame_flags(flags);
  return image;
}

uint64_t digest(const uint8_t* data, size_t n, uint64_t h = 1469598103934665603ull) {
  for (size_t i = 0; i < n; ++i) h = (h ^ data[i]) * 1099511628211ull;
  return h;
}

uint64_t digest(const Image& image) {
  uint64_t h = 1469598103934665603ull;
  for (int p = 0; p < 3; ++p) h = digest(plane_of(image, p), image.plane_size(p), h);
  return h;
}

struct Sizes {
  int ow, oh, aw, ah, bw, bh;
};

}  // namespace

int main() {
  zvTranInit();
  const Sizes sizes[] = {{64, 48, 64, 48, 64, 48}, {37, 29, 50, 31, 23, 41}, {66, 50, 64, 48, 70, 40}};
  const double times[][2] = {{1, 0}, {1, 0.3}, {1, 0.5}, {1, 0.77}, {1, 1}, {0, 0}, {2, -1}};
  const int32_t params1[] = {0, 3, 0x00140010, 200};
  const double params2[] = {0, 5, 0x00200030, 90};
  auto run = [&](const char* name, TransitionOp op, const Sizes& s, int style, double duration, double position,
                 int32_t p1, double p2) {
    auto a = frame(s.aw, s.ah, 5), b = frame(s.bw, s.bh, 9), out = frame(s.ow, s.oh, 3);
    TransitionParams params{};
    params.style = style;
    params.param1 = p1;
    params.param2 = p2;
    params.duration = duration;
    params.position = position;
    params.enabled = 1;
    const int result = op(out.get(), a.get(), b.get(), &params);
    std::printf("%s %dx%d style %d t %g/%g p %d %g: result %d flags %d param1 %d out %016llx\n", name, s.ow, s.oh,
                style, position, duration, p1, p2, result, out->frame_flags(), params.param1,
                static_cast<unsigned long long>(digest(*out)));
  };
  for (int id = 1; id <= transition_get_op_count(); ++id) {
    char name[16];
    std::snprintf(name, sizeof name, "id%d", id);
    for (const Sizes& s : sizes) {
      for (int style = -1; style <= 8; ++style) {
        for (const auto& t : times) run(name, transition_get_op(id), s, style, t[0], t[1], 0, 0);
        for (int i = 1; i < 4; ++i) run(name, transition_get_op(id), s, style, 1, 0.4, params1[i], params2[i]);
      }
    }
  }
  // The OpenGL effects at large sizes, where the largest textures take the frames scaled (widths and heights past
  // 1024, odd and portrait ones), and frames that do not cover the output or are wider than it.
  const int gl_ids[] = {42, 43, 45, 47, 48, 49, 50, 51, 52, 55, 57, 58, 60, 61, 62, 64};
  const Sizes large[] = {{1025, 577, 1025, 577, 1025, 577},     {1280, 720, 1280, 720, 1280, 720},
                         {1920, 1080, 1920, 1080, 1920, 1080},  {2048, 1152, 2048, 1152, 2048, 1152},
                         {1080, 1920, 1080, 1920, 1080, 1920},  {1601, 899, 1601, 899, 1601, 899},
                         {2047, 1535, 2047, 1535, 2047, 1535},  {700, 1300, 700, 1300, 700, 1300},
                         {1920, 1080, 1280, 720, 2000, 1100},   {3840, 2160, 3840, 2160, 3840, 2160}};
  for (const Sizes& s : large) {
    auto a = frame(s.aw, s.ah, 5), b = frame(s.bw, s.bh, 9), out = frame(s.ow, s.oh, 3);
    const std::vector<uint8_t> out_y(out->get_Y(), out->get_Y() + out->plane_size(0));
    for (int id : gl_ids) {
      const int styles = std::max(zvTranGetStyleCount(id), 1);
      for (int style : {0, styles - 1}) {
        for (double position : {0.0, 0.3, 0.5, 0.8, 1.0}) {
          std::copy(out_y.begin(), out_y.end(), out->get_Y());  // the odd last row and column are not drawn
          TransitionParams params{};
          params.style = style;
          params.duration = 1;
          params.position = position;
          params.enabled = 1;
          const int result = transition_get_op(id)(out.get(), a.get(), b.get(), &params);
          std::printf("id%d %dx%d from %dx%d and %dx%d style %d t %g: result %d out %016llx\n", id, s.ow, s.oh, s.aw,
                      s.ah, s.bw, s.bh, style, position, result, static_cast<unsigned long long>(digest(*out)));
        }
        if (style == styles - 1) break;
      }
    }
  }
  for (const Sizes& s : sizes) {
    for (int mode = -1; mode <= 3; ++mode) {
      run("overlap", zvTransparentOverlap, s, mode, 1, 0.5, mode, 0);
      auto src = frame(s.aw, s.ah, 0), dst = frame(s.ow, s.oh, 0);
      const int result = zvTranRound(dst.get(), src.get(), nullptr, &mode);
      std::printf("round %dx%d mode %d: result %d out %016llx\n", s.ow, s.oh, mode, result,
                  static_cast<unsigned long long>(digest(*dst)));
    }
    for (int interpolation = 0; interpolation < 3; ++interpolation) {
      for (int method = 0; method < 6; ++method) {
        auto src = frame(s.aw, s.ah, 0), dst = frame(s.ow, s.oh, 0), dst2 = frame(s.ow, s.oh, 0);
        const int r1 = zvImageResize(dst.get(), src.get(), static_cast<IMAGE_INTERPOLATION>(interpolation),
                                     static_cast<IMAGE_RESIZE_METHOD>(method));
        const int r2 = zvImageResize(dst2.get(), 16, 9, src.get(), 4, 3, static_cast<IMAGE_INTERPOLATION>(interpolation),
                                     static_cast<IMAGE_RESIZE_METHOD>(method));
        std::printf("resize %dx%d %d %d: result %d %d out %016llx %016llx\n", s.ow, s.oh, interpolation, method, r1,
                    r2, static_cast<unsigned long long>(digest(*dst)), static_cast<unsigned long long>(digest(*dst2)));
      }
    }
    const int w = s.aw, h = s.ah;
    const BITMAPINFOHEADER header = zv::rgb24_header(w, h);
    std::vector<uint8_t> pixels(static_cast<size_t>(zv::dib_row_bytes(w)) * h);
    for (uint8_t& byte : pixels) byte = next_byte();
    auto yuv = frame(w, h, 0);
    Rgb24_2_yuv420(plane_of(*yuv, 0), plane_of(*yuv, 1), plane_of(*yuv, 2), w, w / 2, w / 2, &header, pixels.data());
    std::vector<uint8_t> back(pixels.size(), 0);
    Yuv420_2_rgb24(&header, back.data(), plane_of(*yuv, 0), plane_of(*yuv, 1), plane_of(*yuv, 2), w, w / 2, w / 2);
    std::printf("rgb %dx%d: yuv %016llx rgb %016llx\n", w, h, static_cast<unsigned long long>(digest(*yuv)),
                static_cast<unsigned long long>(digest(back.data(), back.size())));
  }
  return 0;
}
