// What an MLT service of the module reads from its properties besides the
// style and the two numbers of the 66: the easing of every service, and the
// parameters of a GLSL collection transition, typed as the collection types
// them. A value that does not fit is reported once and not used.
#pragma once

#include <framework/mlt.h>

#include <memory>
#include <string>
#include <vector>

#include "effects3d/zv_gl_collection.h"
#include "frame/easing.h"
#include "host/image.h"

namespace zv_mlt {

// Logs `message` as a warning of the service, once for each text it takes
// under `key` (a property of the service's own).
void report_once(mlt_transition transition, const char* key, const std::string& message);

// The property "easing": linear when unset or wrong (reported).
zv::Easing easing_of(mlt_transition transition);

// The values of collection transition `index`'s parameters that are set as
// properties of their names: numbers separated by commas or blanks, 1 or 0 (or
// true or false) for a switch, a picture's file (anything an MLT producer
// reads). Picture values point into the pictures held here.
struct GlSettings {
  std::vector<ZvGlParamValue> values;
  std::vector<std::shared_ptr<Image>> pictures;
};
GlSettings gl_settings_of(mlt_transition transition, int index);

}  // namespace zv_mlt
