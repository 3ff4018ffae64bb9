// The MLT module: every transition of the library as an MLT transition service
// on yuv420p frames. MLT scales both frames to the size the consumer asks for;
// should B still arrive at another size, the library's centred common region
// applies and the rest of the output shows A.
#include <framework/mlt.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <set>
#include <string>
#include <tuple>
#include <vector>

#include "frame/transition_op.h"
#include "frame/zv_transition.h"
#include "gl/gl_release.h"
#include "gl/gl_status.h"
#include "host/image.h"
#include "host/transition_registry.h"
#include "mlt/service_names.h"

namespace {

struct Service {
  int id;
  std::string name;  // the service name
  std::vector<std::string> styles;
};

// Filled once, when MLT loads the module; read only afterwards.
std::vector<Service>& services() {
  static std::vector<Service> list;
  return list;
}

int find_service(const char* name) {
  for (size_t i = 0; i < services().size(); ++i) {
    if (name && services()[i].name == name) return static_cast<int>(i);
  }
  return -1;
}

// The OpenGL renderers the library may have made on this thread, one per frame
// size and transition. A host releases them on the thread that made them, so
// they are released when the thread ends; a call with none left does nothing.
struct ThreadRenderers {
  std::set<std::tuple<int, int, int>> used;
  ~ThreadRenderers() {
    for (size_t i = 0; i < used.size(); ++i) ZvFreeOpenGLObj();
  }
};
thread_local ThreadRenderers t_renderers;

// MLT's yuv420p layout, as its FFmpeg-backed services lay frames out: packed
// rows, chroma planes of (width + 1) / 2 by (height + 1) / 2, U then V.
struct Layout {
  Layout(int w, int h) : width(w), height(h), chroma_width((w + 1) / 2), chroma_height((h + 1) / 2) {}
  size_t offset(int plane) const {
    const size_t luma = static_cast<size_t>(width) * height;
    return plane == 0 ? 0 : luma + (plane - 1) * static_cast<size_t>(chroma_width) * chroma_height;
  }
  int stride(int plane) const { return plane ? chroma_width : width; }
  size_t size() const { return offset(3); }
  int width, height, chroma_width, chroma_height;
};

// A yuv420p frame of MLT as an Image: MLT's own planes when the layouts agree
// (even sizes), else a copy, since the library's chroma planes are width / 2 by
// height / 2. A copy never reaches past the `size` bytes MLT handed over.
class FrameImage {
 public:
  FrameImage(uint8_t* data, size_t size, int width, int height) : data_(data), size_(size), layout_(width, height) {
    if (width % 2 == 0 && height % 2 == 0 && layout_.size() <= size) {
      image_ = new Image(width, height, data, data + layout_.offset(1), data + layout_.offset(2));
    } else {
      image_ = new Image(width, height);
      copied_ = true;
      transfer(true);
    }
  }
  ~FrameImage() { delete image_; }
  FrameImage(const FrameImage&) = delete;
  FrameImage& operator=(const FrameImage&) = delete;

  Image* image() { return image_; }
  // Puts what was written into a copy back into MLT's planes.
  void write_back() {
    if (copied_) transfer(false);
  }

 private:
  void transfer(bool into_image) {
    uint8_t* own[3] = {image_->get_Y(), image_->get_U(), image_->get_V()};
    for (int p = 0; p < 3; ++p) {
      const int w = p ? layout_.width / 2 : layout_.width, h = p ? layout_.height / 2 : layout_.height;
      for (int row = 0; row < h; ++row) {
        const size_t at = layout_.offset(p) + static_cast<size_t>(row) * layout_.stride(p);
        if (at + w > size_) return;
        uint8_t* mine = own[p] + static_cast<size_t>(row) * w;
        std::memcpy(into_image ? mine : data_ + at, into_image ? data_ + at : mine, w);
      }
    }
  }

  uint8_t* data_;
  size_t size_;
  Layout layout_;
  Image* image_ = nullptr;
  bool copied_ = false;
};

// The style the service is set to: an index or a style name. Out of range or
// unknown styles are clamped, as MLT's own services clamp, and reported once
// per value.
int style_of(mlt_transition transition, const Service& service) {
  mlt_properties properties = MLT_TRANSITION_PROPERTIES(transition);
  const char* value = mlt_properties_get(properties, "style");
  const int last = static_cast<int>(service.styles.size()) - 1;
  if (!value || last < 0) return 0;
  for (int s = 0; s <= last; ++s) {
    if (service.styles[s] == value) return s;
  }
  char* end = nullptr;
  long index = std::strtol(value, &end, 10);
  const bool number = end != value && *end == '\0';
  if (number && index >= 0 && index <= last) return static_cast<int>(index);
  const int clamped = number && index > last ? last : 0;
  const char* reported = mlt_properties_get(properties, "_zv_reported_style");
  if (!reported || std::strcmp(reported, value) != 0) {
    mlt_log_warning(MLT_TRANSITION_SERVICE(transition), "style \"%s\" out of range 0-%d, using %d (\"%s\")\n", value,
                    last, clamped, service.styles[clamped].c_str());
    mlt_properties_set(properties, "_zv_reported_style", value);
  }
  return clamped;
}

// The parameter block of this frame: duration the transition's length in
// seconds, position the time into it, the last frame exactly at the end.
TransitionParams params_of(mlt_transition transition, mlt_frame frame, const Service& service) {
  mlt_properties properties = MLT_TRANSITION_PROPERTIES(transition);
  TransitionParams params{};
  params.style = style_of(transition, service);
  params.param1 = mlt_properties_get_int(properties, "param1");
  params.param2 = mlt_properties_get_double(properties, "param2");
  params.enabled = 1;
  const double fps = mlt_profile_fps(mlt_service_profile(MLT_TRANSITION_SERVICE(transition)));
  const mlt_position length = mlt_transition_get_length(transition);
  const mlt_position position = mlt_transition_get_position(transition, frame);
  params.duration = (length > 0 ? length : 1) / (fps > 0 ? fps : 25.0);
  params.position = position >= length - 1 ? params.duration : params.duration * position / (length - 1);
  return params;
}

// Whether the service can draw here: a 3D transition needs an OpenGL context.
// Where none can be made, the cause is reported once per transition and the
// frame comes back with an error (MLT then shows A's picture).
bool can_draw(mlt_transition transition, const Service& service) {
  char cause[512];
  if (ZvOpenGLStatus(service.id, cause, sizeof cause)) return true;
  mlt_properties properties = MLT_TRANSITION_PROPERTIES(transition);
  if (!mlt_properties_get_int(properties, "_zv_reported_no_opengl")) {
    mlt_log_error(MLT_TRANSITION_SERVICE(transition), "%s draws with OpenGL, and %s\n", service.name.c_str(), cause);
    mlt_properties_set_int(properties, "_zv_reported_no_opengl", 1);
  }
  return false;
}

int get_image(mlt_frame a_frame, uint8_t** image, mlt_image_format* format, int* width, int* height,
              int /*writable*/) {
  mlt_frame b_frame = mlt_frame_pop_frame(a_frame);
  auto transition = static_cast<mlt_transition>(mlt_frame_pop_service(a_frame));
  const Service* service = &services()[mlt_properties_get_int(MLT_TRANSITION_PROPERTIES(transition), "_zv_service")];

  *format = mlt_image_yuv420p;
  int error = mlt_frame_get_image(a_frame, image, format, width, height, 0);
  if (error || *format != mlt_image_yuv420p) return error;
  if (!can_draw(transition, *service)) return 1;
  uint8_t* b_image = nullptr;
  mlt_image_format b_format = mlt_image_yuv420p;
  int b_width = *width, b_height = *height;
  if (mlt_frame_get_image(b_frame, &b_image, &b_format, &b_width, &b_height, 0) || b_format != mlt_image_yuv420p)
    return 0;

  const size_t a_size = mlt_image_format_size(mlt_image_yuv420p, *width, *height, nullptr);
  const size_t b_size = mlt_image_format_size(mlt_image_yuv420p, b_width, b_height, nullptr);
  const int size = static_cast<int>(std::max(a_size, Layout(*width, *height).size()));
  auto* out_data = static_cast<uint8_t*>(mlt_pool_alloc(size));
  // Outside the common region the library leaves the output as it was: A.
  if (b_width != *width || b_height != *height) std::memcpy(out_data, *image, a_size);

  TransitionParams params = params_of(transition, a_frame, *service);
  int result;
  {
    FrameImage out(out_data, size, *width, *height), a(*image, a_size, *width, *height),
        b(b_image, b_size, b_width, b_height);
    t_renderers.used.emplace(*width, *height, service->id);
    result = transition_get_op(service->id)(out.image(), a.image(), b.image(), &params);
    out.write_back();
  }
  if (result != kTransitionDone) {
    mlt_properties properties = MLT_TRANSITION_PROPERTIES(transition);
    if (mlt_properties_get_int(properties, "_zv_reported_result") != result) {
      mlt_log_warning(MLT_TRANSITION_SERVICE(transition), "%s returned %d; showing A\n", service->name.c_str(),
                      result);
      mlt_properties_set_int(properties, "_zv_reported_result", result);
    }
    mlt_pool_release(out_data);
    return 0;
  }
  mlt_frame_set_image(a_frame, out_data, size, mlt_pool_release);
  *image = out_data;
  return 0;
}

mlt_frame process(mlt_transition transition, mlt_frame a_frame, mlt_frame b_frame) {
  mlt_frame_push_service(a_frame, transition);
  mlt_frame_push_frame(a_frame, b_frame);
  mlt_frame_push_get_image(a_frame, get_image);
  return a_frame;
}

void* transition_init(mlt_profile /*profile*/, mlt_service_type /*type*/, const char* id, char* /*arg*/) {
  const int service = find_service(id);
  if (service < 0) return nullptr;
  mlt_transition transition = mlt_transition_new();
  if (!transition) return nullptr;
  transition->process = process;
  mlt_properties_set_int(MLT_TRANSITION_PROPERTIES(transition), "_zv_service", service);
  mlt_properties_set_int(MLT_TRANSITION_PROPERTIES(transition), "_transition_type", 1);  // video only
  return transition;
}

// The service's YAML, as the module's data folder holds it.
mlt_properties metadata(mlt_service_type /*type*/, const char* id, void* /*data*/) {
  const char* data = mlt_environment("MLT_DATA");
  if (!data) return nullptr;
  std::string path = std::string(data) + "/zvtransition/transition_" + id + ".yml";
  return mlt_properties_parse_yaml(path.c_str());
}

}  // namespace

// The one symbol MLT looks up in the module.
extern "C" ZV_DLL_EXPORT MLT_REPOSITORY {
  auto catalogue = zv_mlt::read_catalogue();
  if (catalogue.empty()) {
    mlt_log_error(nullptr, "zvtransition: the library registered no transitions\n");
    return;
  }
  services().clear();
  for (const auto& t : catalogue) services().push_back({t.id, zv_mlt::service_name(t.name.c_str()), t.styles});
  for (const Service& s : services()) {
    MLT_REGISTER(mlt_service_transition_type, s.name.c_str(), transition_init);
    MLT_REGISTER_METADATA(mlt_service_transition_type, s.name.c_str(), metadata, nullptr);
  }
}
