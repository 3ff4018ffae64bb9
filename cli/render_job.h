// Rendering a transition between two clips exactly as a host does: one call of
// the registered transition per output frame, with `duration` the length of
// the transition and `position` the time into it.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "cli/frame_source.h"
#include "cli/gl_collection_args.h"
#include "cli/media_output.h"
#include "frame/easing.h"
#include "frame/transition_op.h"

namespace zvcli {

// Thrown when a signal asked the work to stop.
struct Interrupted : RunError {
  Interrupted() : RunError("interrupted") {}
};
// Turns SIGINT, SIGTERM, SIGHUP and SIGQUIT into a flag the work loops check
// (per frame, per call), so that every temporary output is removed on the way out.
void catch_interrupts();
bool interrupt_requested();
// The signal that asked, or 0.
int interrupt_signal();

struct RenderPlan {
  TransitionOp op = nullptr;
  const GlChoice* gl = nullptr;  // a transition of the GLSL collection instead of `op`
  zv::Easing easing;             // the progress each frame shows, from its time
  int style = 0;
  int param1 = 0;
  double param2 = 0;
  double duration = 1;       // seconds
  double offset = 0;         // where in A the transition starts, seconds
  Size size;
  double fps = 25;
  int lead_frames = 0;       // frames of A alone before the transition
  int tail_frames = 0;       // frames of B alone after it
  int threads = 1;           // transition workers (readers and the writer have their own)
  int transition_frames() const;
  int total_frames() const { return lead_frames + transition_frames() + tail_frames; }
};

// Renders every frame into each sink (they are finished by the caller), the
// same bytes whatever `plan.threads` is. `progress` is called after each frame
// with the count done, on the calling thread, which also writes the sinks.
void render(const RenderPlan& plan, FrameSource& a, FrameSource& b, const std::vector<FrameSink*>& sinks,
            const std::function<void(int done)>& progress = {});

// The style index from an index or a style name of transition `id`; a usage
// error when out of range or unknown. Not thread-safe (catalogue queries).
int resolve_style(int id, const std::string& text);
// The style names a host shows for `id` (as many as its style count).
std::vector<std::string> style_names(int id);

}  // namespace zvcli
