#include "cli/render_job.h"

#include <csignal>
#include <cstring>
#include <strings.h>

#include "frame/registration.h"
#include "gl/gl_cache.h"
#include "frame/zv_transition.h"
#include "host/transition_registry.h"

namespace zvcli {
namespace {

volatile std::sig_atomic_t g_interrupted = 0;

extern "C" void on_interrupt(int signal) { g_interrupted = signal; }

}  // namespace

void catch_interrupts() {
  for (int signal : {SIGINT, SIGTERM, SIGHUP, SIGQUIT}) std::signal(signal, on_interrupt);
}

bool interrupt_requested() { return g_interrupted != 0; }

int interrupt_signal() { return g_interrupted; }

int RenderPlan::transition_frames() const { return std::max(2, zv::round_to_int(duration * fps)); }

void render(const RenderPlan& plan, FrameSource& a, FrameSource& b, const std::vector<FrameSink*>& sinks,
            const std::function<void(int done)>& progress) {
  const int n = plan.transition_frames(), total = plan.total_frames();
  // Like a host whose thread is done with a transition: hand back the OpenGL
  // renderer this thread made for it (one size, one effect: at most one).
  struct ReleaseOpenGl {
    ~ReleaseOpenGl() { ZvFreeOpenGLObj(); }
  } release_open_gl;
  Image frame_a(plan.size.width, plan.size.height), frame_b(plan.size.width, plan.size.height);
  Image out(plan.size.width, plan.size.height);
  for (int j = 0; j < total; ++j) {
    if (interrupt_requested()) throw Interrupted();
    const int i = j - plan.lead_frames;  // place within the transition
    const double seconds = i / plan.fps;
    const Image* shown = &out;
    if (i < 0) {
      a.frame_at(plan.offset + seconds, frame_a);
      shown = &frame_a;
    } else if (i >= n) {
      b.frame_at(seconds, frame_b);
      shown = &frame_b;
    } else {
      a.frame_at(plan.offset + seconds, frame_a);
      b.frame_at(seconds, frame_b);
      // A fresh block per call, as a host fills it; the last frame sits exactly
      // at the end so that it shows B alone.
      TransitionParams params;
      std::memset(&params, 0, sizeof params);
      params.style = plan.style;
      params.param1 = plan.param1;
      params.param2 = plan.param2;
      params.enabled = 1;
      params.duration = plan.duration;
      params.position = i == n - 1 ? plan.duration : plan.duration * i / (n - 1);
      int result = plan.op(&out, &frame_a, &frame_b, &params);
      // Never a null argument here, so 1 is Overlap Alpha Blend's ordinary
      // result; a bad style (3) or an undrawn transition (4) draws nothing.
      if (result >= kTransitionBadStyle) throw RunError("the transition returned " + std::to_string(result));
    }
    for (FrameSink* sink : sinks) sink->write(*shown, i >= 0 && i < n ? i : -1);
    if (progress) progress(j + 1);
  }
}

std::vector<std::string> style_names(int id) {
  std::vector<std::string> names;
  const int count = zvTranGetStyleCount(id);
  const char** list = zvTranGetStyleName(id);
  for (int i = 0; list && i < count; ++i) names.push_back(list[i] ? list[i] : "");
  return names;
}

int resolve_style(int id, const std::string& text) {
  const std::vector<std::string> names = style_names(id);
  const std::string name = transition_get_op_name(id) ? transition_get_op_name(id) : std::to_string(id);
  char* end = nullptr;
  long index = std::strtol(text.c_str(), &end, 10);
  if (!text.empty() && !*end) {
    long last = names.empty() ? 0 : static_cast<long>(names.size()) - 1;
    if (index < 0 || index > last) {
      throw UsageError("style " + text + " is out of range for " + name + " (styles 0-" + std::to_string(last) + ")");
    }
    return static_cast<int>(index);
  }
  for (size_t i = 0; i < names.size(); ++i) {
    if (names[i] == text) return static_cast<int>(i);
  }
  for (size_t i = 0; i < names.size(); ++i) {
    if (strcasecmp(names[i].c_str(), text.c_str()) == 0) return static_cast<int>(i);
  }
  throw UsageError("unknown style '" + text + "' for " + name + " (see: zvtran catalogue)");
}

}  // namespace zvcli
