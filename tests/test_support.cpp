#include "tests/test_support.h"

#include <cstddef>
#include <cstring>
#include <random>

#include "blends/random.h"
#include "frame/zv_transition.h"
#include "host/transition_registry.h"

namespace zvtest {

ImagePtr solid_frame(int width, int height, uint8_t y, uint8_t u, uint8_t v) {
  auto image = std::make_unique<Image>(width, height);
  const uint8_t values[3] = {y, u, v};
  for (int p = 0; p < 3; ++p) std::memset(image->plane(p), values[p], image->plane_size(p));
  return image;
}

ImagePtr random_frame(int width, int height, uint32_t seed) {
  auto image = std::make_unique<Image>(width, height);
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

void reset_random_state() { zv::set_random_state(12345); }

void register_library() {
  transition_clear_ops();
  zvTranInit();
}

}  // namespace zvtest
