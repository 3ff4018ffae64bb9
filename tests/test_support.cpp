#include "tests/test_support.h"

#include <cstddef>
#include <cstring>
#include <random>

#include "blends/random.h"
#include "frame/registration.h"
#include "frame/zv_transition.h"
#include "host/transition_registry.h"

namespace zvtest {

ImagePtr solid_frame(int width, int height, uint8_t y, uint8_t u, uint8_t v) {
  auto image = std::make_unique<Image>(width, height);
  const uint8_t values[3] = {y, u, v};
  for (int p = 0; p < 3; ++p) std::memset(image->plane(p), values[p], image->plane_size(p));
  return image;
}

ImagePtr random_frame(int width, int height, uint32_t seed, int chroma_format) {
  auto image = std::make_unique<Image>(width, height, chroma_format);
  std::mt19937 gen(seed);
  for (int p = 0; p < 3; ++p) {
    uint8_t* data = image->plane(p);
    for (size_t i = 0; i < image->plane_size(p); ++i) data[i] = static_cast<uint8_t>(gen());
  }
  return image;
}

TransitionParams make_params(int style, double position, double duration) {
  TransitionParams params;
  std::memset(&params, 0, sizeof params);
  params.style = style;
  params.position = position;
  params.duration = duration;
  params.enabled = 1;
  return params;
}

std::vector<uint8_t> plane_bytes(const Image& image, int plane) {
  const uint8_t* data = image.plane(plane);
  return std::vector<uint8_t>(data, data + image.plane_size(plane));
}

std::vector<uint8_t> frame_bytes(const Image& image) {
  std::vector<uint8_t> all;
  for (int p = 0; p < 3; ++p) all.insert(all.end(), image.plane(p), image.plane(p) + image.plane_size(p));
  return all;
}

uint8_t sample(const Image& image, int plane, int x, int y) {
  const int stride = plane == 0 ? image.width : image.width / 2;
  return image.plane(plane)[static_cast<ptrdiff_t>(y) * stride + x];
}

int run_transition(int id, Image* out, Image* a, Image* b, int style, double position, int param1, double param2) {
  TransitionParams params = make_params(style, position);
  params.param1 = param1;
  params.param2 = param2;
  return zv::transition_entry(id)(out, a, b, &params);
}

::testing::AssertionResult samples_are(const Image& image, int plane, const std::function<int(int, int)>& expected) {
  const int width = plane == 0 ? image.width : image.chroma_width();
  const int height = plane == 0 ? image.height : image.chroma_height();
  for (int y = 0; y < height; ++y) {
    for (int x = 0; x < width; ++x) {
      const int got = image.plane(plane)[static_cast<ptrdiff_t>(y) * width + x], want = expected(x, y);
      if (got != want) {
        return ::testing::AssertionFailure() << "plane " << plane << " at " << x << "," << y << ": " << got
                                             << " instead of " << want;
      }
    }
  }
  return ::testing::AssertionSuccess();
}

void reset_random_state() { zv::set_random_state(12345); }

void register_library() {
  transition_clear_ops();
  zvTranInit();
}

}  // namespace zvtest
