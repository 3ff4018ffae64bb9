// Where the frames of clip A or B come from: a media file or a built-in pattern.
#pragma once

#include "cli/cli_common.h"

namespace zvcli {

class FrameSource {
 public:
  virtual ~FrameSource() = default;
  // The picture's own size, frame rate (0 for a still) and length in seconds
  // (0 for a still).
  virtual Size size() const = 0;
  virtual double frame_rate() const = 0;
  virtual double length() const = 0;
  // Fills `out` (any size; the picture is scaled to it) with what shows at
  // `seconds` from the start; past the end the last picture holds.
  virtual void frame_at(double seconds, Image& out) = 0;
};

}  // namespace zvcli
