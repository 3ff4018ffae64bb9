// Where rendered frames go; OUT's form picks the kind: ".mp4" (H.264), ".y4m"
// or "-" (a Y4M stream on stdout), ".png" (a contact sheet), a folder (one PNG
// per frame), or /dev/null (the frames are dropped, for timing a render). Every
// file appears under its final name only when complete.
#pragma once

#include <memory>
#include <optional>
#include <string>

#include "cli/audio_mix.h"
#include "cli/cli_common.h"

namespace zvcli {

struct OutputInfo {
  Size size;                 // even width and height
  double fps = 25;
  int transition_frames = 2;  // frames of the transition itself (contact sheet)
  std::string title;         // contact sheet heading: transition, then style
  std::string subtitle;
  int video_quality = 18;    // H.264 constant-quality level (lower is better)
  int encoder_threads = 0;   // 0: the encoder decides
  std::optional<AudioMix> audio;  // the sound an MP4 carries; none when unset
};

class FrameSink {
 public:
  // A sink destroyed before finish() removes everything it wrote.
  virtual ~FrameSink() = default;
  // `transition_index` is the frame's place within the transition, or -1 for
  // the clips shown before and after it.
  virtual void write(const Image& frame, int transition_index) = 0;
  virtual void finish() = 0;
};

// Checks the path and starts the output (a usage error for an unknown
// extension, a run error for a place that cannot be written).
std::unique_ptr<FrameSink> open_sink(const std::string& path, const OutputInfo& info);

}  // namespace zvcli
