// The MLT module: every transition of the library, and every transition of the
// GLSL collection, as an MLT transition service on yuv420p frames. MLT scales
// both frames to the size the consumer asks for; should B still arrive at
// another size, the library's centred common region applies and the rest of
// the output shows A.
#include <framework/mlt.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <set>
#include <string>
#include <tuple>
#include <vector>

#include "effects3d/zv_gl_collection.h"
#include "frame/transition_op.h"
#include "frame/zv_transition.h"
#include "gl/gl_release.h"
#include "host/image.h"
#include "host/transition_registry.h"
#include "mlt/frame_image.h"
#include "mlt/service_names.h"
#include "mlt/service_settings.h"

namespace {

using zv_mlt::FrameImage;
using zv_mlt::Layout;

struct Service {
  int id;            // 1-66, or 0 for the collection's
  std::string name;  // the service name
  std::vector<std::string> styles;
  int gl = -1;  // the collection's index
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
  zv_mlt::report_once(transition, "_zv_reported_style",
                      std::string("style \"") + value + "\" out of range 0-" + std::to_string(last) + ", using " +
                          std::to_string(clamped) + " (\"" + service.styles[clamped] + "\")");
  return clamped;
}

// How far into the transition this frame is, 0 to 1, the last frame exactly at the end.
double fraction_of(mlt_transition transition, mlt_frame frame) {
  const mlt_position length = mlt_transition_get_length(transition);
  const mlt_position position = mlt_transition_get_position(transition, frame);
  return position >= length - 1 ? 1.0 : static_cast<double>(position) / (length - 1);
}

// The parameter block of this frame: duration the transition's length in
// seconds, position the eased time into it (linear: the time itself), the last
// frame exactly at the end.
TransitionParams params_of(mlt_transition transition, mlt_frame frame, const Service& service,
                           const zv::Easing& easing) {
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
  params.position = position >= length - 1 ? params.duration
                    : easing.linear()       ? params.duration * position / (length - 1)
                                            : zv::eased(easing, fraction_of(transition, frame)) * params.duration;
  return params;
}

int get_image(mlt_frame a_frame, uint8_t** image, mlt_image_format* format, int* width, int* height,
              int /*writable*/) {
  mlt_frame b_frame = mlt_frame_pop_frame(a_frame);
  auto transition = static_cast<mlt_transition>(mlt_frame_pop_service(a_frame));
  const Service* service = &services()[mlt_properties_get_int(MLT_TRANSITION_PROPERTIES(transition), "_zv_service")];

  *format = mlt_image_yuv420p;
  int error = mlt_frame_get_image(a_frame, image, format, width, height, 0);
  if (error || *format != mlt_image_yuv420p) return error;
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

  const zv::Easing easing = zv_mlt::easing_of(transition);
  int result;
  std::string why;
  {
    FrameImage out(out_data, size, *width, *height), a(*image, a_size, *width, *height),
        b(b_image, b_size, b_width, b_height);
    t_renderers.used.emplace(*width, *height, service->id);
    if (service->gl >= 0) {
      const zv_mlt::GlSettings settings = zv_mlt::gl_settings_of(transition, service->gl);
      const double progress = zv::eased(easing, fraction_of(transition, a_frame));
      result = zvGlTranApply(service->gl, out.image(), a.image(), b.image(), progress, settings.values.data(),
                             static_cast<int>(settings.values.size()));
      why = zvGlTranError();
    } else {
      TransitionParams params = params_of(transition, a_frame, *service, easing);
      result = transition_get_op(service->id)(out.image(), a.image(), b.image(), &params);
      why = service->name + " returned " + std::to_string(result);
    }
    out.write_back();
  }
  if (result != kTransitionDone) {
    zv_mlt::report_once(transition, "_zv_reported_result", why + "; showing A");
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
  for (int i = 0; i < zvGlTranCount(); ++i) {
    services().push_back({0, zv_mlt::service_name(zvGlTranInfo(i)->name, zv_mlt::kGlServicePrefix), {}, i});
  }
  for (const Service& s : services()) {
    MLT_REGISTER(mlt_service_transition_type, s.name.c_str(), transition_init);
    MLT_REGISTER_METADATA(mlt_service_transition_type, s.name.c_str(), metadata, nullptr);
  }
}
