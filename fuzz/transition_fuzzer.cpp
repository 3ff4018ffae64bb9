// Decodes each input into one call of a transition (by id, through the registration table) or of a picture service,
// with hostile sizes and parameters, on planes allocated to their exact size with poisoned guard bytes on both sides,
// so one byte read or written past a plane is caught.
//
// Built twice: zv_fuzz (the software transitions and the picture services) and zv_fuzz_gl (the OpenGL transitions and
// the GLSL collection, much slower per call; their sizes are kept small because the library caches bitmaps per frame
// size).
#include <fuzzer/FuzzedDataProvider.h>
#include <sanitizer/asan_interface.h>  // the poisoning is a no-op without AddressSanitizer

#include <algorithm>
#include <cstdio>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <memory>
#include <vector>

#include "effects3d/zv_gl_collection.h"
#include "frame/registration.h"
#include "frame/transition_op.h"
#include "frame/zv_transition.h"
#include "gl/gl_cache.h"
#include "imaging/fit_overlap.h"
#include "imaging/image_resize.h"
#include "imaging/yuv_rgb.h"


namespace {

// The transitions drawn with OpenGL go to zv_fuzz_gl, without the picture services; the others to zv_fuzz.
constexpr int kOpenGlIds[] = {42, 43, 45, 47, 48, 49, 50, 51, 52, 55, 57, 58, 60, 61, 62, 64};
#ifdef ZV_FUZZ_OPEN_GL
constexpr bool kOpenGl = true;
constexpr int kMaxSide = 48, kServices = 1;  // the GLSL collection
#else
constexpr bool kOpenGl = false;
constexpr int kMaxSide = 200, kServices = 7;
#endif

// `size` bytes with kGuard poisoned bytes before and after; the data starts
// on a 64-byte boundary, so its end is exact to the byte.
class GuardedBuffer {
 public:
  static constexpr size_t kGuard = 64;
  explicit GuardedBuffer(size_t size) : size_(size), block_(new uint8_t[size + 2 * kGuard]) {
    ASAN_POISON_MEMORY_REGION(block_.get(), kGuard);
    ASAN_POISON_MEMORY_REGION(block_.get() + kGuard + size, kGuard);
  }
  ~GuardedBuffer() { ASAN_UNPOISON_MEMORY_REGION(block_.get(), size_ + 2 * kGuard); }
  uint8_t* data() const { return block_.get() + kGuard; }
  size_t size() const { return size_; }

 private:
  size_t size_;
  std::unique_ptr<uint8_t[]> block_;
};

// Everything below is drawn from the input with FuzzedDataProvider.
class Decoder {
 public:
  explicit Decoder(FuzzedDataProvider& in) : in_(in) {}

  // A frame side: mostly -8..kMaxSide, sometimes an extreme negative.
  int side() {
    const uint8_t code = in_.ConsumeIntegral<uint8_t>();
    if (code < 250) return static_cast<int>(code % (kMaxSide + 9)) - 8;
    static const int kExtreme[] = {INT32_MIN, INT32_MIN + 1, -(1 << 30), -65536, -201, -1};
    return kExtreme[code - 250];
  }

  // A 32-bit value: small, a boundary, or raw bits.
  int32_t int32(int32_t low, int32_t high) {
    switch (in_.ConsumeIntegralInRange<int>(0, 3)) {
      case 0: return in_.ConsumeIntegralInRange<int32_t>(low, high);
      case 1: {
        static const int32_t kEdges[] = {0, 1, -1, 2, 7, 8, 100, 255, 256, INT32_MAX, INT32_MIN, 1 << 30, 0x7FFF7FFF,
                                         static_cast<int32_t>(0xFF00FF00u), 0x00FFFFFF};
        return kEdges[in_.ConsumeIntegralInRange<size_t>(0, std::size(kEdges) - 1)];
      }
      default: return in_.ConsumeIntegral<int32_t>();
    }
  }

  // A double: ordinary, a boundary (NaN, infinities, huge, tiny) or raw bits.
  double real(double low, double high) {
    switch (in_.ConsumeIntegralInRange<int>(0, 3)) {
      case 0: return in_.ConsumeFloatingPointInRange<double>(low, high);
      case 1: {
        static const double kEdges[] = {
            std::numeric_limits<double>::quiet_NaN(), -std::numeric_limits<double>::quiet_NaN(),
            std::numeric_limits<double>::infinity(), -std::numeric_limits<double>::infinity(), 0.0, -0.0, 1.0, 0.5,
            1e300, -1e300, std::numeric_limits<double>::denorm_min(), std::numeric_limits<double>::min(),
            4294967295.0, 2147483648.0, -2147483649.0, 0.999999999, 1.000000001, 100.0, -1.0};
        return kEdges[in_.ConsumeIntegralInRange<size_t>(0, std::size(kEdges) - 1)];
      }
      case 2: {
        uint64_t bits = in_.ConsumeIntegral<uint64_t>();
        double d;
        std::memcpy(&d, &bits, sizeof d);
        return d;
      }
      default: return in_.ConsumeProbability<double>();
    }
  }

  void fill(uint8_t* data, size_t size) {
    const uint8_t mode = in_.ConsumeIntegral<uint8_t>();
    if (mode < 64) {
      std::memset(data, mode * 4, size);
      return;
    }
    uint32_t state = in_.ConsumeIntegral<uint32_t>() | 1u;
    for (size_t i = 0; i < size; ++i) {
      state ^= state << 13, state ^= state >> 17, state ^= state << 5;
      data[i] = static_cast<uint8_t>(state >> 24);
    }
  }

  FuzzedDataProvider& in() { return in_; }

 private:
  FuzzedDataProvider& in_;
};

// A host frame whose planes are guarded buffers of exactly plane_size bytes.
class GuardedFrame {
 public:
  explicit GuardedFrame(Decoder& d) : image_(0, 0) {
    for (int p = 0; p < 3; ++p) own_[p] = image_.planes_[p];
    image_.width = d.side();
    image_.height = d.side();
    image_.chroma_format = d.in().ConsumeBool() ? kChroma422 : kChroma420;
    image_.picture_width = image_.width;
    image_.picture_height = image_.height;
    if (d.in().ConsumeIntegralInRange<int>(0, 3) == 0) {  // a picture size of its own, even a wrong one
      image_.picture_width = d.side();
      image_.picture_height = d.side();
    }
    image_.set_frame_flags(d.in().ConsumeIntegral<int32_t>());
    for (int p = 0; p < 3; ++p) {
      planes_[p] = std::make_unique<GuardedBuffer>(image_.plane_size(p));
      d.fill(planes_[p]->data(), planes_[p]->size());
      image_.planes_[p] = planes_[p]->data();
    }
  }
  ~GuardedFrame() {
    for (int p = 0; p < 3; ++p) image_.planes_[p] = own_[p];
  }

  Image* get() { return &image_; }
  std::vector<uint8_t> bytes() const {
    std::vector<uint8_t> all;
    for (const auto& plane : planes_) all.insert(all.end(), plane->data(), plane->data() + plane->size());
    return all;
  }

 private:
  Image image_;
  uint8_t* own_[3];
  std::unique_ptr<GuardedBuffer> planes_[3];
};

// A pointer, or null when the top four bits of `nulls` are all set (now and
// then: most inputs should reach the drawing) and so is `bit`.
template <typename T>
T* maybe_null(uint8_t nulls, int bit, T* pointer) {
  return (nulls & 0xF0) == 0xF0 && (nulls & bit) ? nullptr : pointer;
}

TransitionParams decode_params(Decoder& d) {
  TransitionParams params;
  d.fill(reinterpret_cast<uint8_t*>(&params), sizeof params);  // the host's opaque bytes too
  params.style = d.int32(-2, 40);
  params.param1 = d.int32(-2, 1000);
  params.param2 = d.real(-2.0, 200.0);
  params.duration = d.real(0.0, 2.0);
  params.position = d.real(0.0, 1.0);
  params.param3 = d.int32(-2, 1000);
  params.enabled = d.int32(0, 1);
  return params;
}

[[noreturn]] void fail(const char* what) {
  std::fprintf(stderr, "zv_fuzz: %s\n", what);
  std::abort();
}

// One transition call. Besides memory safety: a result code from the list, and `a` and `b` unchanged.
void fuzz_transition(int id, Decoder& d) {
  const uint8_t nulls = d.in().ConsumeIntegral<uint8_t>();
  GuardedFrame out(d), a(d), b(d);
  TransitionParams params = decode_params(d);
  const std::vector<uint8_t> a_before = a.bytes(), b_before = b.bytes();
  const int result = zv::transition_entry(id)(maybe_null(nulls, 1, out.get()), maybe_null(nulls, 2, a.get()),
                                              maybe_null(nulls, 4, b.get()), maybe_null(nulls, 8, &params));
  if (result < kTransitionDone || result > kTransitionNotImplemented) fail("result code out of range");
  if (a.bytes() != a_before || b.bytes() != b_before) fail("a transition changed one of its sources");
  // A host thread done with a transition hands its OpenGL renderer back.
  ZvFreeOpenGLObj();
}

// One call of a GLSL transition: any index, parameters named right or wrong,
// with numbers of any count and value, and pictures of any size. Besides
// memory safety: a documented result, and the sources unchanged.
void fuzz_collection(Decoder& d) {
  const int index = d.in().ConsumeIntegralInRange<int>(-2, zvGlTranCount() + 1);
  const ZvGlTransitionInfo* info = zvGlTranInfo(index);
  const uint8_t nulls = d.in().ConsumeIntegral<uint8_t>();
  GuardedFrame out(d), a(d), b(d), picture(d);
  ZvGlParamValue values[3] = {};
  const int given = d.in().ConsumeIntegralInRange<int>(0, 3);
  for (int i = 0; i < given; ++i) {
    ZvGlParamValue& v = values[i];
    const int pick = d.in().ConsumeIntegralInRange<int>(0, 7);
    if (pick < 6 && info && info->param_count > 0) {
      v.name = info->params[pick % info->param_count].name;
    } else {
      v.name = pick == 7 ? nullptr : "no_such_parameter";
    }
    v.count = d.int32(-1, 5);
    for (double& x : v.values) x = d.real(-2.0, 2.0);
    v.image = d.in().ConsumeBool() ? picture.get() : nullptr;
  }
  // The count passed: what was filled in, or none, or a negative one.
  const int count = d.in().ConsumeIntegralInRange<int>(0, 7) == 0 ? -1 : given;
  const double progress = d.real(0.0, 1.0);
  const std::vector<uint8_t> a_before = a.bytes(), b_before = b.bytes(), picture_before = picture.bytes();
  const int result = zvGlTranApply(index, maybe_null(nulls, 1, out.get()), maybe_null(nulls, 2, a.get()),
                                   maybe_null(nulls, 4, b.get()), progress, given ? values : nullptr, count);
  if (result != kZvGlDone && result != kZvGlNullArgument && result != kZvGlBadArgument && result != kZvGlNotDrawn) {
    fail("zvGlTranApply gave a result it does not document");
  }
  if (result != kZvGlDone && zvGlTranError()[0] == '\0') fail("zvGlTranApply failed without saying why");
  if (a.bytes() != a_before || b.bytes() != b_before || picture.bytes() != picture_before) {
    fail("a GLSL transition changed one of its sources");
  }
  ZvFreeOpenGLObj();
}

// A 24-bit bitmap record over a guarded buffer of exactly the bytes its rows
// span (pitch * (height - 1) + 3 * width), or a record the service must refuse.
struct GuardedBitmap {
  explicit GuardedBitmap(Decoder& d) {
    param.width = d.side();
    param.height = d.side();
    const int row = 3 * std::max(param.width, 0);
    param.pitch = d.in().ConsumeIntegralInRange<int>(0, 7) == 0 ? d.int32(-8, 700) : row + d.in().ConsumeIntegralInRange<int>(0, 9);
    param.rect_x = d.int32(-2, kMaxSide);
    param.rect_y = d.int32(-2, kMaxSide);
    param.rect_width = d.int32(-2, kMaxSide + 2);
    param.rect_height = d.int32(-2, kMaxSide + 2);
    size_t bytes = 0;
    if (param.width > 0 && param.height > 0 && param.pitch >= row && param.pitch <= row + 1024) {
      bytes = static_cast<size_t>(param.pitch) * (param.height - 1) + row;
    }
    buffer = std::make_unique<GuardedBuffer>(bytes);
    d.fill(buffer->data(), bytes);
    param.pixels = d.in().ConsumeIntegralInRange<int>(0, 15) == 0 ? nullptr : buffer->data();
  }
  // A record whose pitch is too large for this harness to back with memory.
  bool backed() const { return !(param.width > 0 && param.height > 0 && param.pitch > 3 * param.width + 1024); }
  tagImgParam param{};
  std::unique_ptr<GuardedBuffer> buffer;
};

// The conversions take raw planes and strides from the caller: each plane is
// exactly the bytes the even part of the picture spans.
void fuzz_conversion(bool to_yuv, Decoder& d) {
  const BITMAPINFOHEADER header = zv::rgb24_header(d.side(), d.side());
  const int w = header.biWidth & ~1, h = header.biHeight & ~1;
  const bool converts = w >= 2 && h >= 2;
  const int y_stride = std::max(w, 0) + d.in().ConsumeIntegralInRange<int>(0, 5);
  const int c_stride = std::max(w, 0) / 2 + d.in().ConsumeIntegralInRange<int>(0, 5);
  const size_t y_bytes = converts ? static_cast<size_t>(y_stride) * (h - 1) + w : 0;
  const size_t c_bytes = converts ? static_cast<size_t>(c_stride) * (h / 2 - 1) + w / 2 : 0;
  const size_t pixel_bytes =
      header.biWidth > 0 && header.biHeight > 0 ? static_cast<size_t>(zv::dib_row_bytes(header.biWidth)) * header.biHeight : 0;
  GuardedBuffer y(y_bytes), u(c_bytes), v(c_bytes), pixels(pixel_bytes);
  for (GuardedBuffer* b : {&y, &u, &v, &pixels}) d.fill(b->data(), b->size());
  if (to_yuv) {
    Rgb24_2_yuv420(y.data(), u.data(), v.data(), y_stride, c_stride, c_stride, &header, pixels.data());
  } else {
    Yuv420_2_rgb24(&header, pixels.data(), y.data(), u.data(), v.data(), y_stride, c_stride, c_stride);
  }
}

void fuzz_service(int service, Decoder& d) {
  switch (service) {
    case 0: {  // the letterbox fit
      const uint8_t nulls = d.in().ConsumeIntegral<uint8_t>();
      GuardedFrame destination(d), source(d), unused(d);
      TransitionParams params{};
      if (zvTranRound(maybe_null(nulls, 1, destination.get()), maybe_null(nulls, 2, source.get()),
                      maybe_null(nulls, 4, unused.get()), maybe_null(nulls, 8, &params)) != 1) {
        fail("zvTranRound returned other than 1");
      }
      break;
    }
    case 1:
    case 2: {  // the frame resize, with and without aspect numbers
      GuardedFrame destination(d), source(d);
      const auto interpolation = static_cast<IMAGE_INTERPOLATION>(d.int32(-1, 3));
      const auto method = static_cast<IMAGE_RESIZE_METHOD>(d.int32(-1, 6));
      int result;
      if (service == 1) {
        result = zvImageResize(destination.get(), source.get(), interpolation, method);
      } else {
        const int dx = d.int32(-1, 20), dy = d.int32(-1, 20), sx = d.int32(-1, 20), sy = d.int32(-1, 20);
        result = zvImageResize(destination.get(), dx, dy, source.get(), sx, sy, interpolation, method);
      }
      if (result != 0) fail("zvImageResize returned other than 0");
      break;
    }
    case 3: {  // the bitmap resize
      GuardedBitmap source(d), target(d);
      if (!source.backed() || !target.backed()) break;
      const auto interpolation = static_cast<IMAGE_INTERPOLATION>(d.int32(-1, 3));
      const bool null_source = d.in().ConsumeIntegralInRange<int>(0, 31) == 0;
      if (DIB_Resize(null_source ? nullptr : &source.param, &target.param, interpolation) != 0) {
        fail("DIB_Resize returned other than 0");
      }
      break;
    }
    case 4:
    case 5:
      fuzz_conversion(service == 4, d);
      break;
    default: {  // the catalogue queries, any id
      const int id = d.int32(-2, 70);
      (void)zvTranGetStyleCount(id);
      (void)zvTranGetStyleName(id);
      if (zvTarnParamExplain* explain = zvTranGetParamExplain(id)) {
        for (int i = 0; i < explain->count; ++i) (void)explain->labels[i];
      }
      break;
    }
  }
}

std::vector<int> call_ids() {
  std::vector<int> ids;
  for (int id = 1; id <= zv::kTransitionCount; ++id) {
    if (std::count(std::begin(kOpenGlIds), std::end(kOpenGlIds), id) == kOpenGl) ids.push_back(id);
  }
  return ids;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  static const std::vector<int> ids = call_ids();
  FuzzedDataProvider in(data, size);
  Decoder d(in);
  const int pick = in.ConsumeIntegralInRange<int>(0, static_cast<int>(ids.size()) + kServices - 1);
  if (pick < static_cast<int>(ids.size())) {
    fuzz_transition(ids[pick], d);
  } else if (kOpenGl) {
    fuzz_collection(d);
  } else {
    fuzz_service(pick - static_cast<int>(ids.size()), d);
  }
  return 0;
}
