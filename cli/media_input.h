// Opening clip A or B: "pattern:NAME" or any file FFmpeg's libraries decode
// (video, a still image, Y4M).
#pragma once

#include <memory>
#include <string>

#include "cli/frame_source.h"

namespace zvcli {

// A usage error naming the file when it is missing or holds no decodable
// picture; the first picture is decoded here.
std::unique_ptr<FrameSource> open_source(const std::string& name);

}  // namespace zvcli
