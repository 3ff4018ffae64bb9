// Loads the transition library as an editor does, registers its transitions,
// lists the catalogue and runs a fixed set of calls on generated frames, then
// writes one line per result to the file named by its argument. The same
// program built natively and for Windows must write the same lines (the two
// OpenGL transitions' frames within a few levels; compare_outputs.py).
//
// On Windows every library export is found with GetProcAddress by the name an
// MSVC-built host would use, as an editor of that kind finds them.
#include <cstdint>
#include <algorithm>
#include <cstdio>
#include <string>
#include <vector>

#include "frame/transition_op.h"
#include "frame/zv_transition.h"
#include "host/transition_registry.h"
#include "imaging/image_resize.h"

#if defined(_WIN32)
#include <windows.h>
#else
#include "gl/gl_cache.h"
#include "imaging/fit_overlap.h"
#include "imaging/yuv_rgb.h"
#endif

namespace {

// The library's exports, as a host holds them.
struct LibraryApi {
  int(ZV_STDCALL* init)();
  int(ZV_STDCALL* style_count)(int);
  const char**(ZV_STDCALL* style_name)(int);
  zvTarnParamExplain*(ZV_STDCALL* explain_by_id)(int);
  zvTarnParamExplain*(ZV_STDCALL* explain_by_name)(const char*);
  void(ZV_STDCALL* rgb_to_yuv)(uint8_t*, uint8_t*, uint8_t*, int, int, int, const BITMAPINFOHEADER*, const uint8_t*);
  void(ZV_STDCALL* yuv_to_rgb)(const BITMAPINFOHEADER*, uint8_t*, const uint8_t*, const uint8_t*, const uint8_t*, int,
                               int, int);
  int(ZV_STDCALL* resize)(Image*, Image*, IMAGE_INTERPOLATION, IMAGE_RESIZE_METHOD);
  int(ZV_STDCALL* resize_aspect)(Image*, int, int, Image*, int, int, IMAGE_INTERPOLATION, IMAGE_RESIZE_METHOD);
  int(ZV_STDCALL* dib_resize)(const tagImgParam*, tagImgParam*, IMAGE_INTERPOLATION);
  int(ZV_STDCALL* round)(Image*, Image*, Image*, void*);
  int(ZV_STDCALL* overlap)(Image*, Image*, Image*, TransitionParams*);
  void(ZV_STDCALL* free_gl)();
};

// Each export: its slot, its function here, and the decorated names an
// MSVC-built host finds it by in the 32-bit and the 64-bit DLL (see the
// module-definition files).
#define ZV_EXPORTS(X)                                                                                              \
  X(init, zvTranInit, "?zvTranInit@@YGHXZ", "?zvTranInit@@YAHXZ")                                                  \
  X(style_count, zvTranGetStyleCount, "?zvTranGetStyleCount@@YGHH@Z", "?zvTranGetStyleCount@@YAHH@Z")              \
  X(style_name, zvTranGetStyleName, "?zvTranGetStyleName@@YGPAPBDH@Z", "?zvTranGetStyleName@@YAPEAPEBDH@Z")        \
  X(explain_by_id, zvTranGetParamExplain, "?zvTranGetParamExplain@@YGPAUzvTarnParamExplain@@H@Z",                   \
    "?zvTranGetParamExplain@@YAPEAUzvTarnParamExplain@@H@Z")                                                       \
  X(explain_by_name, zvTranGetParamExplain, "?zvTranGetParamExplain@@YGPAUzvTarnParamExplain@@PBD@Z",               \
    "?zvTranGetParamExplain@@YAPEAUzvTarnParamExplain@@PEBD@Z")                                                    \
  X(rgb_to_yuv, Rgb24_2_yuv420, "?Rgb24_2_yuv420@@YGXPAE00HHHPBUtagBITMAPINFOHEADER@@PBE@Z",                        \
    "?Rgb24_2_yuv420@@YAXPEAE00HHHPEBUtagBITMAPINFOHEADER@@PEBE@Z")                                                \
  X(yuv_to_rgb, Yuv420_2_rgb24, "?Yuv420_2_rgb24@@YGXPBUtagBITMAPINFOHEADER@@PAEPBE22HHH@Z",                        \
    "?Yuv420_2_rgb24@@YAXPEBUtagBITMAPINFOHEADER@@PEAEPEBE22HHH@Z")                                                \
  X(resize, zvImageResize, "?zvImageResize@@YGHPAVImage@@0W4IMAGE_INTERPOLATION@@W4IMAGE_RESIZE_METHOD@@@Z",        \
    "?zvImageResize@@YAHPEAVImage@@0W4IMAGE_INTERPOLATION@@W4IMAGE_RESIZE_METHOD@@@Z")                             \
  X(resize_aspect, zvImageResize, "?zvImageResize@@YGHPAVImage@@HH0HHW4IMAGE_INTERPOLATION@@W4IMAGE_RESIZE_METHOD@@@Z", \
    "?zvImageResize@@YAHPEAVImage@@HH0HHW4IMAGE_INTERPOLATION@@W4IMAGE_RESIZE_METHOD@@@Z")                         \
  X(dib_resize, DIB_Resize, "?DIB_Resize@@YGHPBUtagImgParam@@PAU1@W4IMAGE_INTERPOLATION@@@Z",                       \
    "?DIB_Resize@@YAHPEBUtagImgParam@@PEAU1@W4IMAGE_INTERPOLATION@@@Z")                                            \
  X(round, zvTranRound, "?zvTranRound@@YGHPAVImage@@00PAX@Z", "?zvTranRound@@YAHPEAVImage@@00PEAX@Z")              \
  X(overlap, zvTransparentOverlap, "?zvTransparentOverlap@@YGHPAVImage@@00PAUTransitionParams@@@Z",                 \
    "?zvTransparentOverlap@@YAHPEAVImage@@00PEAUTransitionParams@@@Z")                                             \
  X(free_gl, ZvFreeOpenGLObj, "?ZvFreeOpenGLObj@@YGXXZ", "?ZvFreeOpenGLObj@@YAXXZ")

#if defined(_WIN32)
template <typename F>
bool resolve(HMODULE library, F& slot, const char* name) {
  slot = reinterpret_cast<F>(reinterpret_cast<void*>(GetProcAddress(library, name)));
  if (!slot) std::fprintf(stderr, "missing export %s\n", name);
  return slot != nullptr;
}

bool load_library(LibraryApi& api) {
  // The editor loads its controls library itself; the transition library
  // only looks it up among the loaded modules.
  if (!LoadLibraryA("zvCtrls.dll")) return false;
  HMODULE library = LoadLibraryA("ZvTransition.dll");
  if (!library) return false;
  bool found = true;
#if defined(_WIN64)
#define ZV_RESOLVE(slot, function, msvc32, msvc64) found &= resolve(library, api.slot, msvc64);
#else
#define ZV_RESOLVE(slot, function, msvc32, msvc64) found &= resolve(library, api.slot, msvc32);
#endif
  ZV_EXPORTS(ZV_RESOLVE)
  return found;
}
#else
bool load_library(LibraryApi& api) {
#define ZV_ASSIGN(slot, function, msvc32, msvc64) api.slot = function;
  ZV_EXPORTS(ZV_ASSIGN)
  return true;
}
#endif

// The ids of the transitions drawn with OpenGL, compared within a tolerance.
constexpr int kCubeId = 57;
constexpr int kDriveOffId = 49;

FILE* g_out = nullptr;

uint64_t fnv1a(const uint8_t* data, size_t n, uint64_t hash = 1469598103934665603ull) {
  for (size_t i = 0; i < n; ++i) hash = (hash ^ data[i]) * 1099511628211ull;
  return hash;
}

uint64_t image_hash(const Image& image) {
  uint64_t hash = 1469598103934665603ull;
  for (int p = 0; p < 3; ++p) hash = fnv1a(image.plane(p), image.plane_size(p), hash);
  return hash;
}

// Ends a result line with a hash.
void end_with_hash(uint64_t hash) { std::fprintf(g_out, " hash=%016llx\n", static_cast<unsigned long long>(hash)); }

// A frame with smooth ramps and a few hard edges, different for each seed.
void paint(Image& image, int seed) {
  for (int p = 0; p < 3; ++p) {
    const int w = p ? image.chroma_width() : image.width;
    const int h = p ? image.chroma_height() : image.height;
    for (int y = 0; y < h; ++y) {
      for (int x = 0; x < w; ++x) {
        int v = (x * (3 + seed) + y * (5 - seed) + seed * 61 + p * 37) & 0xFF;
        if (((x / 8) + (y / 8) + seed) % 5 == 0) v = 255 - v;
        image.plane(p)[static_cast<size_t>(y) * w + x] = static_cast<uint8_t>(v);
      }
    }
  }
  image.set_frame_flags(seed + 1);
}

void fill(Image& image, uint8_t value) {
  for (int p = 0; p < 3; ++p) std::fill(image.plane(p), image.plane(p) + image.plane_size(p), value);
}

void write_hex(const Image& image) {
  for (int p = 0; p < 3; ++p) {
    for (size_t i = 0; i < image.plane_size(p); ++i) std::fprintf(g_out, "%02x", image.plane(p)[i]);
  }
}

TransitionParams block(int style, int param1, double param2, double position) {
  TransitionParams params = {};
  params.style = style;
  params.param1 = param1;
  params.param2 = param2;
  params.duration = 1.0;
  params.position = position;
  params.enabled = 1;
  return params;
}

void list_catalogue(const LibraryApi& api) {
  for (int id = 0; id <= 67; ++id) {
    const int count = api.style_count(id);
    const char** names = api.style_name(id);
    std::fprintf(g_out, "styles %d count=%d", id, count);
    const int shown = names ? (count > 0 ? count : 1) : 0;
    for (int i = 0; i < shown; ++i) std::fprintf(g_out, " [%s]", names[i] ? names[i] : "(null)");
    std::fprintf(g_out, "\n");
    const zvTarnParamExplain* explain = api.explain_by_id(id);
    std::fprintf(g_out, "labels %d count=%d", id, explain->count);
    for (int i = 0; i < explain->count && explain->labels; ++i) {
      std::fprintf(g_out, " [%s]", explain->labels[i] ? explain->labels[i] : "(null)");
    }
    std::fprintf(g_out, "\n");
  }
  for (int id : {1, 16, 34, 46}) {
    const zvTarnParamExplain* explain = api.explain_by_name(transition_get_op_name(id));
    std::fprintf(g_out, "labels-by-name %d count=%d\n", id, explain->count);
  }
}

struct Size {
  int width, height;
};

// Every transition but the OpenGL ones, at each of its styles, a few positions,
// two parameter sets and three size combinations (the last with three
// different sizes, so the centred common region is exercised).
void run_software_transitions(const LibraryApi& api) {
  const Size kCombos[][3] = {{{176, 144}, {176, 144}, {176, 144}},
                             {{97, 61}, {97, 61}, {97, 61}},
                             {{160, 120}, {176, 144}, {150, 130}}};
  const double kPositions[] = {0.0, 0.3, 0.65, 1.0};
  const struct {
    int param1;
    double param2;
  } kParams[] = {{0, 0.0}, {6, 40 * 65536.0 + 30.0}};
  for (int id = 1; id <= 66; ++id) {
    if (id == kCubeId || id == kDriveOffId) continue;
    TransitionOp op = transition_get_op(id);
    const int styles = api.style_count(id) > 0 ? api.style_count(id) : 1;
    for (const auto& combo : kCombos) {
      Image out(combo[0].width, combo[0].height), a(combo[1].width, combo[1].height), b(combo[2].width, combo[2].height);
      paint(a, 0);
      paint(b, 1);
      for (int style = 0; style < styles && style < 8; ++style) {
        for (const auto& param : kParams) {
          for (double position : kPositions) {
            fill(out, 0x55);
            TransitionParams params = block(style, param.param1, param.param2, position);
            const int result = op(&out, &a, &b, &params);
            std::fprintf(g_out, "frame %d style=%d p1=%d pos=%g %dx%d result=%d flags=%d", id, style, param.param1,
                         position, out.width, out.height, result, out.frame_flags());
            end_with_hash(image_hash(out));
          }
        }
      }
    }
  }
}

// The picture services on the same generated frames.
void run_services(const LibraryApi& api) {
  Image a(176, 144), b(176, 144);
  paint(a, 0);
  paint(b, 1);

  // RGB24 and back, through a bottom-up bitmap with padded rows.
  BITMAPINFOHEADER header = {};
  header.biSize = sizeof(header);
  header.biWidth = 175;
  header.biHeight = 143;
  header.biPlanes = 1;
  header.biBitCount = 24;
  const int pitch = ((175 * 24 + 31) >> 5) * 4;
  std::vector<uint8_t> pixels(static_cast<size_t>(pitch) * 143, 0x11);
  api.yuv_to_rgb(&header, pixels.data(), a.get_Y(), a.get_U(), a.get_V(), a.width, a.width / 2, a.width / 2);
  std::fprintf(g_out, "service yuv_to_rgb");
  end_with_hash(fnv1a(pixels.data(), pixels.size()));
  Image back(176, 144);
  fill(back, 0x33);
  api.rgb_to_yuv(back.get_Y(), back.get_U(), back.get_V(), back.width, back.width / 2, back.width / 2, &header,
                 pixels.data());
  std::fprintf(g_out, "service rgb_to_yuv");
  end_with_hash(image_hash(back));

  // Resizing whole frames: every sampling kernel and placement method.
  const Size kTargets[] = {{320, 180}, {100, 90}};
  for (const Size& size : kTargets) {
    Image target(size.width, size.height);
    for (int interpolation = 0; interpolation <= 3; ++interpolation) {
      for (int method = 0; method <= 5; ++method) {
        fill(target, 0x22);
        const int result = api.resize(&target, &a, static_cast<IMAGE_INTERPOLATION>(interpolation),
                                      static_cast<IMAGE_RESIZE_METHOD>(method));
        std::fprintf(g_out, "service resize %dx%d i=%d m=%d result=%d", size.width, size.height, interpolation,
                     method, result);
        end_with_hash(image_hash(target));
      }
      fill(target, 0x22);
      const int result = api.resize_aspect(&target, 16, 9, &a, 4, 3, static_cast<IMAGE_INTERPOLATION>(interpolation),
                                           IMAGE_RESIZE_KEEP_ASPECT);
      std::fprintf(g_out, "service resize-aspect %dx%d i=%d result=%d", size.width, size.height, interpolation, result);
      end_with_hash(image_hash(target));
    }
  }

  // Bitmap rectangles.
  for (int interpolation = 0; interpolation <= 2; ++interpolation) {
    std::vector<uint8_t> target_pixels(static_cast<size_t>(96 * 3) * 70, 0x44);
    tagImgParam source = {pixels.data(), 175, 143, pitch, 10, 7, 150, 120};
    tagImgParam target = {target_pixels.data(), 96, 70, 96 * 3, 3, 2, 90, 66};
    const int result = api.dib_resize(&source, &target, static_cast<IMAGE_INTERPOLATION>(interpolation));
    std::fprintf(g_out, "service dib_resize i=%d result=%d", interpolation, result);
    end_with_hash(fnv1a(target_pixels.data(), target_pixels.size()));
  }

  // Letterbox fit and the keyed overlap.
  const Size kFits[] = {{176, 144}, {200, 100}, {90, 160}};
  for (const Size& size : kFits) {
    Image target(size.width, size.height);
    fill(target, 0x22);
    int dummy = 0;
    const int result = api.round(&target, &a, nullptr, &dummy);
    std::fprintf(g_out, "service round %dx%d result=%d", size.width, size.height, result);
    end_with_hash(image_hash(target));
  }
  Image out(176, 144);
  for (double position : {0.0, 0.4, 1.0}) {
    for (int param3 : {0, 90 << 16}) {
      fill(out, 0x55);
      TransitionParams params = block(0, 0, 0.0, position);
      params.param3 = param3;
      const int result = api.overlap(&out, &a, &b, &params);
      std::fprintf(g_out, "service overlap pos=%g key=%d result=%d", position, param3, result);
      end_with_hash(image_hash(out));
    }
  }
}

// The two OpenGL transitions at a few sizes and positions, whole frames written
// out; then the renderers released, one per call, as a host does.
void run_gl_transitions(const LibraryApi& api) {
  const Size kSizes[] = {{176, 144}, {64, 48}, {128, 96}};
  const double kPositions[] = {0.0, 0.2, 0.5, 0.8, 1.0};
  int renderers = 0;
  for (int id : {kCubeId, kDriveOffId}) {
    TransitionOp op = transition_get_op(id);
    for (const Size& size : kSizes) {
      Image out(size.width, size.height), a(size.width, size.height), b(size.width, size.height);
      paint(a, 0);
      paint(b, 1);
      ++renderers;
      for (double position : kPositions) {
        TransitionParams params = block(0, 0, 0.0, position);
        const int result = op(&out, &a, &b, &params);
        std::fprintf(g_out, "glframe %d pos=%g %dx%d result=%d data=", id, position, size.width, size.height, result);
        write_hex(out);
        std::fprintf(g_out, "\n");
      }
    }
  }
  for (int i = 0; i < renderers + 1; ++i) api.free_gl();
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 2) {
    std::fprintf(stderr, "usage: zv_host_compare OUTPUT\n");
    return 2;
  }
  LibraryApi api = {};
  if (!load_library(api)) {
    std::fprintf(stderr, "the transition library or its host modules could not be loaded\n");
    return 1;
  }
  g_out = std::fopen(argv[1], "wb");
  if (!g_out) {
    std::fprintf(stderr, "cannot write %s\n", argv[1]);
    return 1;
  }
  std::fprintf(g_out, "init %d\n", api.init());
  std::fprintf(g_out, "registered %d\n", transition_get_op_count());
  for (int id = 1; id <= transition_get_op_count(); ++id) {
    std::fprintf(g_out, "name %d [%s]\n", id, transition_get_op_name(id) ? transition_get_op_name(id) : "(null)");
  }
  std::fprintf(g_out, "init-again %d registered %d\n", api.init(), transition_get_op_count());
  list_catalogue(api);
  run_software_transitions(api);
  run_services(api);
  run_gl_transitions(api);
  std::fclose(g_out);
  return 0;
}
