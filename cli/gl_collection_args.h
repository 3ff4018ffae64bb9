// The GLSL collection on the command line: a transition named gl:NAME and its
// parameters given as --set NAME=VALUE.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "cli/cli_common.h"
#include "effects3d/zv_gl_collection.h"

namespace zvcli {

constexpr const char* kGlPrefix = "gl:";

// Whether a --transition or OP names a transition of the collection.
bool is_gl_transition(const std::string& text);

// A collection transition and the values of the parameters set, checked
// against it; the values point into the names and pictures held here.
struct GlChoice {
  int index = -1;
  std::vector<ZvGlParamValue> values;
  std::vector<std::string> names;
  std::vector<std::unique_ptr<Image>> pictures;

  const char* name() const { return zvGlTranInfo(index)->name; }
};

// From "gl:NAME" and each "NAME=VALUE" of --set: numbers separated by commas,
// true or false (or 1 or 0) for a switch, and for a picture a file FFmpeg
// decodes or a pattern (pattern:NAME), at its own size. A usage error naming
// the transition, or the parameter, when they do not fit.
GlChoice gl_choice(const std::string& transition, const std::vector<std::string>& sets);

// The parameters in one line: "name (type, default ...)", for the catalogue.
std::string gl_parameter_summary(const ZvGlTransitionInfo& info);

}  // namespace zvcli
