// The collection's exported functions: the table, the checks of parameter
// values, and one call on the renderer of the frame size and thread.
#include <cmath>
#include <cstdio>
#include <cstring>
#include <memory>
#include <string>
#include <strings.h>
#include <vector>

#include "effects3d/gl_collection_renderer.h"
#include "effects3d/zv_gl_collection.h"
#include "frame/entry.h"
#include "frame/plane.h"
#include "gl/gl_cache.h"
#include "gl/offscreen_context.h"

namespace zv {
namespace {

// The largest magnitude of a parameter's number: far past any useful value,
// and small enough that no integer arithmetic in a shader overflows into a trap.
constexpr double kValueLimit = 1e6;

thread_local std::string t_error;

int failed(int result, std::string why) {
  t_error = std::move(why);
  return result;
}

// What a value of `param` is: "2 numbers", "1 whole number", "1 number (0 or 1)".
std::string value_words(const ZvGlParamInfo& param) {
  const std::string count = std::to_string(param.components);
  const char* plural = param.components == 1 ? "" : "s";
  if (param.kind == kZvGlInt) return count + " whole number" + plural;
  if (param.kind == kZvGlBool) return count + " number (0 or 1)";
  return count + " number" + plural;
}

std::string number_text(double v) {
  char text[32];
  std::snprintf(text, sizeof text, "%g", v);
  return text;
}

std::string parameter_names(const ZvGlTransitionInfo& info) {
  std::string names;
  for (int i = 0; i < info.param_count; ++i) names += (i ? ", " : "") + std::string(info.params[i].name);
  return names.empty() ? "none" : names;
}

// Why `value` does not fit `param`, or "".
std::string misfit(const ZvGlParamInfo& param, const ZvGlParamValue& value) {
  const std::string takes = std::string("parameter ") + param.name + " (" + param.glsl_type + ") takes ";
  if (param.kind == kZvGlImage) {
    if (value.count != 0) return takes + "a picture, not numbers";
    const Image* image = value.image;
    if (image && (image->width < 2 || image->height < 2 || !image->get_Y() || !image->get_U() || !image->get_V())) {
      return takes + "a picture of at least 2x2 pixels, not " + std::to_string(image->width) + "x" +
             std::to_string(image->height);
    }
    return "";
  }
  if (value.image || value.count != param.components) {
    return takes + value_words(param) + ", not " + (value.image ? "a picture" : std::to_string(value.count));
  }
  for (int k = 0; k < value.count; ++k) {
    const double v = value.values[k];
    if (!(std::fabs(v) <= kValueLimit)) return takes + "numbers from -1e6 to 1e6, not " + number_text(v);
    const bool fits = param.kind == kZvGlInt ? v == std::trunc(v) : param.kind != kZvGlBool || v == 0 || v == 1;
    if (!fits) return takes + value_words(param) + ", not " + number_text(v);
  }
  return "";
}

// The setting of every parameter of `info`: its default, replaced by the
// values given for it (the last one wins).
int resolve(const ZvGlTransitionInfo& info, const ZvGlParamValue* values, int count,
            std::vector<GlParamSetting>* settings) {
  settings->clear();
  for (int i = 0; i < info.param_count; ++i) {
    GlParamSetting s{};
    std::memcpy(s.numbers, info.params[i].defaults, sizeof s.numbers);
    settings->push_back(s);
  }
  if (count < 0 || (count > 0 && !values)) {
    return failed(kZvGlBadArgument, std::string(info.name) + ": " + std::to_string(count) + " parameter values given" +
                                        (values ? "" : " without the values"));
  }
  for (int v = 0; v < count; ++v) {
    const char* name = values[v].name ? values[v].name : "";
    int found = -1;
    for (int i = 0; i < info.param_count && found < 0; ++i) {
      if (std::strcmp(info.params[i].name, name) == 0) found = i;
    }
    if (found < 0) {
      return failed(kZvGlBadArgument, std::string(info.name) + ": no parameter named '" + name +
                                          "' (parameters: " + parameter_names(info) + ")");
    }
    const std::string why = misfit(info.params[found], values[v]);
    if (!why.empty()) return failed(kZvGlBadArgument, std::string(info.name) + ": " + why);
    GlParamSetting& s = (*settings)[static_cast<size_t>(found)];
    std::memcpy(s.numbers, values[v].values, sizeof s.numbers);
    s.image = values[v].image;
  }
  return kZvGlDone;
}

int check_index(int index) {
  if (index < 0 || index >= kGlCollectionCount) {
    return failed(kZvGlBadArgument, "no GLSL transition has the index " + std::to_string(index) + " (0-" +
                                         std::to_string(kGlCollectionCount - 1) + ")");
  }
  return kZvGlDone;
}

// The centred region the three frames have in common, per plane, as regions
// of each frame.
struct Regions {
  YuvRegion out, a, b;
};

Regions common_regions(Image* out, Image* a, Image* b) {
  Regions r{};
  for (int p = 0; p < 3; ++p) {
    const CommonRegion c = common_region(image_plane(out, p), image_plane(a, p), image_plane(b, p));
    r.out.planes[p] = c.out;
    r.a.planes[p] = const_cast<uint8_t*>(c.a);
    r.b.planes[p] = const_cast<uint8_t*>(c.b);
    r.out.strides[p] = c.out_stride;
    r.a.strides[p] = c.a_stride;
    r.b.strides[p] = c.b_stride;
    if (p == 0) {
      r.out.width = r.a.width = r.b.width = c.width;
      r.out.height = r.a.height = r.b.height = c.height;
    }
  }
  return r;
}

}  // namespace
}  // namespace zv

int ZV_STDCALL zvGlTranCount() { return zv::kGlCollectionCount; }

const ZvGlTransitionInfo* ZV_STDCALL zvGlTranInfo(int index) {
  return index >= 0 && index < zv::kGlCollectionCount ? &zv::kGlCollection[index].info : nullptr;
}

int ZV_STDCALL zvGlTranFind(const char* name) {
  if (!name) return -1;
  for (int i = 0; i < zv::kGlCollectionCount; ++i) {
    if (std::strcmp(zv::kGlCollection[i].info.name, name) == 0) return i;
  }
  for (int i = 0; i < zv::kGlCollectionCount; ++i) {
    if (strcasecmp(zv::kGlCollection[i].info.name, name) == 0) return i;
  }
  return -1;
}

int ZV_STDCALL zvGlTranCheck(int index, const ZvGlParamValue* values, int count) {
  zv::t_error.clear();
  if (zv::check_index(index) != kZvGlDone) return kZvGlBadArgument;
  std::vector<zv::GlParamSetting> settings;
  return zv::resolve(zv::kGlCollection[index].info, values, count, &settings);
}

int ZV_STDCALL zvGlTranApply(int index, Image* out, Image* a, Image* b, double progress, const ZvGlParamValue* values,
                              int count) {
  zv::t_error.clear();
  if (!out || !a || !b) return zv::failed(kZvGlNullArgument, "a frame of the call is null");
  out->copy_flags(*a);
  if (zv::check_index(index) != kZvGlDone) return kZvGlBadArgument;
  std::vector<zv::GlParamSetting> settings;
  if (zv::resolve(zv::kGlCollection[index].info, values, count, &settings) != kZvGlDone) return kZvGlBadArgument;

  zv::Regions regions = zv::common_regions(out, a, b);
  // Only the even part is converted: the renderer draws at that size.
  const int width = regions.out.width & ~1, height = regions.out.height & ~1;
  if (width <= 0 || height <= 0) return kZvGlDone;
  const uint32_t thread = zv::current_thread_id();
  auto* renderer = static_cast<zv::CGlCollectionRenderer*>(
      zv::FindRenderer(width, height, zv::kGlCollectionEffectId, thread));
  std::string error;
  if (!renderer) {
    auto fresh = std::make_unique<zv::CGlCollectionRenderer>();
    if (!fresh->Setup(width, height, &error)) {
      return zv::failed(kZvGlNotDrawn, std::string(zv::kGlCollection[index].info.name) + ": " + error);
    }
    fresh->effectId = zv::kGlCollectionEffectId;
    fresh->threadId = thread;
    renderer = fresh.release();
    zv::AddRenderer(renderer);
  }
  if (!renderer->Draw(index, regions.out, regions.a, regions.b, zv::clamp_progress_nan_safe(progress), settings,
                      &error)) {
    return zv::failed(kZvGlNotDrawn, error);
  }
  return kZvGlDone;
}

const char* ZV_STDCALL zvGlTranError() { return zv::t_error.c_str(); }
