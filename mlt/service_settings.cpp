#include "mlt/service_settings.h"

#include <cstdlib>
#include <cstring>
#include <strings.h>

#include "mlt/frame_image.h"

namespace zv_mlt {
namespace {

// A picture file read through an MLT producer at its own size (the profile's
// when it has none), as a 4:2:0 frame; null when it cannot be read.
std::shared_ptr<Image> read_picture(mlt_transition transition, const char* path) {
  mlt_profile profile = mlt_service_profile(MLT_TRANSITION_SERVICE(transition));
  mlt_producer producer = mlt_factory_producer(profile, nullptr, path);
  if (!producer) return nullptr;
  std::shared_ptr<Image> picture;
  mlt_frame frame = nullptr;
  if (!mlt_service_get_frame(MLT_PRODUCER_SERVICE(producer), &frame, 0) && frame) {
    mlt_properties properties = MLT_FRAME_PROPERTIES(frame);
    int width = mlt_properties_get_int(properties, "meta.media.width");
    int height = mlt_properties_get_int(properties, "meta.media.height");
    if (width <= 0 || height <= 0) width = profile->width, height = profile->height;
    uint8_t* data = nullptr;
    mlt_image_format format = mlt_image_yuv420p;
    if (!mlt_frame_get_image(frame, &data, &format, &width, &height, 0) && format == mlt_image_yuv420p && data &&
        width >= 2 && height >= 2) {
      FrameImage image(data, mlt_image_format_size(format, width, height, nullptr), width, height);
      picture = std::make_shared<Image>(width & ~1, height & ~1);
      picture->copy(image.image(), 1, 0);
    }
    mlt_frame_close(frame);
  }
  mlt_producer_close(producer);
  return picture;
}

void delete_picture(void* picture) { delete static_cast<std::shared_ptr<Image>*>(picture); }

// The picture of parameter `name` read from `path`, kept with the service
// while the property names that file.
std::shared_ptr<Image> picture_of(mlt_transition transition, const std::string& name, const char* path) {
  mlt_properties properties = MLT_TRANSITION_PROPERTIES(transition);
  const std::string data_key = "_zv_picture." + name, path_key = "_zv_picture_path." + name;
  mlt_service_lock(MLT_TRANSITION_SERVICE(transition));
  std::shared_ptr<Image> picture;
  const char* held = mlt_properties_get(properties, path_key.c_str());
  if (held && std::strcmp(held, path) == 0) {
    auto* kept = static_cast<std::shared_ptr<Image>*>(mlt_properties_get_data(properties, data_key.c_str(), nullptr));
    if (kept) picture = *kept;
  } else {
    picture = read_picture(transition, path);
    mlt_properties_set_data(properties, data_key.c_str(), picture ? new std::shared_ptr<Image>(picture) : nullptr, 0,
                            picture ? delete_picture : nullptr, nullptr);
    mlt_properties_set(properties, path_key.c_str(), path);
  }
  mlt_service_unlock(MLT_TRANSITION_SERVICE(transition));
  return picture;
}

// A property's numbers (a switch's words too); false when something else is there.
bool read_numbers(const ZvGlParamInfo& param, const char* text, ZvGlParamValue* value) {
  if (param.kind == kZvGlBool && (!strcasecmp(text, "true") || !strcasecmp(text, "false"))) {
    value->count = 1;
    value->values[0] = !strcasecmp(text, "true");
    return true;
  }
  const char* at = text;
  for (;;) {
    while (*at == ' ' || *at == ',' || *at == '\t') ++at;
    if (!*at) return value->count > 0;
    char* end = nullptr;
    const double number = std::strtod(at, &end);
    if (end == at) return false;
    if (value->count < 4) value->values[value->count] = number;
    ++value->count;
    at = end;
  }
}

}  // namespace

void report_once(mlt_transition transition, const char* key, const std::string& message) {
  mlt_properties properties = MLT_TRANSITION_PROPERTIES(transition);
  const char* reported = mlt_properties_get(properties, key);
  if (reported && message == reported) return;
  mlt_log_warning(MLT_TRANSITION_SERVICE(transition), "%s\n", message.c_str());
  mlt_properties_set(properties, key, message.c_str());
}

zv::Easing easing_of(mlt_transition transition) {
  zv::Easing easing;
  const char* text = mlt_properties_get(MLT_TRANSITION_PROPERTIES(transition), "easing");
  if (text && *text && !zv::parse_easing(text, &easing)) {
    report_once(transition, "_zv_reported_easing",
                std::string("easing \"") + text + "\" is not one of " + zv::kEasingChoices + "; using linear");
  }
  return easing;
}

GlSettings gl_settings_of(mlt_transition transition, int index) {
  GlSettings settings;
  const ZvGlTransitionInfo& info = *zvGlTranInfo(index);
  for (int i = 0; i < info.param_count; ++i) {
    const ZvGlParamInfo& param = info.params[i];
    const char* text = mlt_properties_get(MLT_TRANSITION_PROPERTIES(transition), param.name);
    if (!text || !*text) continue;
    ZvGlParamValue value{};
    value.name = param.name;
    std::string why;
    if (param.kind == kZvGlImage) {
      std::shared_ptr<Image> picture = picture_of(transition, param.name, text);
      if (picture) settings.pictures.push_back(picture);
      value.image = picture.get();
      if (!picture) why = std::string(info.name) + ": " + param.name + ": cannot read a picture from " + text;
    } else if (!read_numbers(param, text, &value)) {
      why = std::string(info.name) + ": " + param.name + ": \"" + text + "\" is not a list of numbers";
    }
    if (why.empty() && zvGlTranCheck(index, &value, 1) != kZvGlDone) why = zvGlTranError();
    if (!why.empty()) {
      report_once(transition, (std::string("_zv_reported.") + param.name).c_str(), why + "; using its default");
      continue;
    }
    settings.values.push_back(value);
  }
  return settings;
}

}  // namespace zv_mlt
