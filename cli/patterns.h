// Built-in animated test pictures, named "pattern:NAME" on the command line.
#pragma once

#include <memory>
#include <string>

#include "cli/frame_source.h"

namespace zvcli {

constexpr const char* kPatternPrefix = "pattern:";

// "bars, gradient, zoneplate, checker".
std::string pattern_names();
// The pattern named after the prefix; a usage error for an unknown name.
std::unique_ptr<FrameSource> open_pattern(const std::string& name);

}  // namespace zvcli
