// zvtran render: a transition between two clips (media files or built-in
// patterns), rendered frame by frame through the host registry into a video,
// a Y4M stream, a contact sheet or a folder of PNGs.
#include <cstdio>
#include <optional>
#include <string>
#include <thread>
#include <unistd.h>

#include "cli/audio_mix.h"
#include "cli/cli_common.h"
#include "cli/commands.h"
#include "cli/media_input.h"
#include "cli/media_module.h"
#include "cli/media_output.h"
#include "cli/render_job.h"
#include "frame/registration.h"
#include "host/transition_registry.h"

namespace zvcli {
namespace {

constexpr const char* kUsage =
    "usage: zvtran render A B --transition T [--style S] [--param1 N] [--param2 X] [--set NAME=VALUE ...] "
    "[--easing E] [--duration SEC] [--offset SEC] [--size WxH] [--fps R] [--with-clips] [--threads N] [--no-audio] "
    "-o OUT (T: an id, a name or gl:NAME)";
constexpr int kMaxSide = kMaxFrameSide;
constexpr int kMaxFrames = 1000000;

Size checked_size(Size size, const std::string& what) {
  if (size.width <= 0 || size.height <= 0 || size.width > kMaxSide || size.height > kMaxSide ||
      size.width % 2 || size.height % 2) {
    throw UsageError(what + ": " + std::to_string(size.width) + "x" + std::to_string(size.height) +
                     " is not a size of even width and height from 2 to " + std::to_string(kMaxSide));
  }
  return size;
}

void draw_progress(int done, int total) {
  const int width = 30, filled = static_cast<int>(static_cast<long>(done) * width / total);
  std::fprintf(stderr, "\r  [%s%s] %3d%%  %d/%d frames", std::string(filled, '#').c_str(),
               std::string(width - filled, ' ').c_str(), static_cast<int>(100L * done / total), done, total);
  if (done == total) std::fputc('\n', stderr);
}

}  // namespace

int render_command(int argc, char** argv) {
  Args args("render", kUsage, argc, argv,
            {"transition", "style", "param1", "param2", "set", "easing", "duration", "offset", "size", "fps", "output",
             "threads"},
            {"with-clips", "no-audio"});
  if (args.positional().size() != 2) throw UsageError(kUsage);
  const std::string out_path = args.require("output");
  const std::string transition = args.require("transition");

  RenderPlan plan;
  std::optional<GlChoice> gl;
  std::string label, title, subtitle;  // as said when done, and on the pictures
  if (is_gl_transition(transition)) {
    for (const char* option : {"style", "param1", "param2"}) {
      if (args.has(option)) throw UsageError(std::string("--") + option + " is not for GLSL transitions (use --set)");
    }
    gl = gl_choice(transition, args.get_all("set"));
    plan.gl = &*gl;
    const ZvGlTransitionInfo& info = *zvGlTranInfo(gl->index);
    label = title = kGlPrefix + std::string(info.name);
    subtitle = std::string("by ") + info.author + " (" + info.license + ")";
  } else {
    if (args.has("set")) throw UsageError("--set is for GLSL transitions (gl:NAME); see --param1 and --param2");
    const int id = resolve_transition(transition);
    const char* name = transition_get_op_name(id);
    if (!zv::transition_is_implemented(id)) {
      throw UsageError("transition " + std::to_string(id) + " (" + name + ") is not implemented in this build");
    }
    plan.op = transition_get_op(id);
    plan.style = resolve_style(id, args.get("style").value_or("0"));
    plan.param1 = args.get_int("param1", 0);
    plan.param2 = args.get_double("param2", 0.0);
    label = name;
    title = std::to_string(id) + " " + name;
    std::vector<std::string> styles = style_names(id);
    subtitle = "style " + std::to_string(plan.style) +
               (plan.style < static_cast<int>(styles.size()) ? ": " + styles[plan.style] : "");
  }
  const std::string easing = args.get("easing").value_or("linear");
  if (!zv::parse_easing(easing, &plan.easing)) {
    throw UsageError("--easing: '" + easing + "' is not one of " + zv::kEasingChoices);
  }
  plan.duration = args.get_double("duration", 1.0);
  if (!(plan.duration > 0 && plan.duration <= 3600)) throw UsageError("--duration must be above 0 and at most 3600");

  plan.threads = args.get_int("threads", static_cast<int>(std::max(1u, std::thread::hardware_concurrency())));
  if (plan.threads < 1 || plan.threads > 256) throw UsageError("--threads must be 1 to 256");
  if (args.positional()[0] == "-" && args.positional()[1] == "-") {
    throw UsageError("only one of A and B can be - (standard input)");
  }

  std::unique_ptr<FrameSource> a = open_source(args.positional()[0]);
  std::unique_ptr<FrameSource> b = open_source(args.positional()[1]);
  if (auto size = args.get_size("size")) {
    plan.size = checked_size(*size, "--size");
  } else {
    plan.size = checked_size(Size{a->size().width & ~1, a->size().height & ~1}, args.positional()[0] + ": picture");
  }
  plan.fps = args.get_double("fps", a->frame_rate() > 0 ? a->frame_rate() : 25.0);
  if (!(plan.fps > 0 && plan.fps <= 240)) throw UsageError("--fps must be above 0 and at most 240");
  const bool with_clips = args.has("with-clips");
  plan.offset = args.get_double("offset", with_clips ? std::max(0.0, a->length() - plan.duration) : 0.0);
  if (!(plan.offset >= 0 && plan.offset <= 86400)) throw UsageError("--offset must be from 0 to 86400");
  if (with_clips) {
    plan.lead_frames = zv::round_to_int(plan.offset * plan.fps);
    plan.tail_frames = zv::round_to_int(std::max(0.0, b->length() - plan.duration) * plan.fps);
  }
  if (static_cast<double>(plan.lead_frames) + plan.transition_frames() + plan.tail_frames > kMaxFrames) {
    throw UsageError("that is more than " + std::to_string(kMaxFrames) + " frames");
  }

  OutputInfo info;
  info.size = plan.size;
  info.fps = plan.fps;
  info.transition_frames = plan.transition_frames();
  info.title = title;
  info.subtitle = subtitle;
  // Only an MP4 file carries sound.
  if (!args.has("no-audio") && has_extension(out_path, ".mp4")) {
    // Patterns, stdin and files without sound play silence; no track when neither has any.
    AudioMix mix;
    for (int k = 0; k < 2; ++k) {
      const std::string& name = args.positional()[k];
      if (name != "-" && name.compare(0, 8, "pattern:") != 0 && media_module().has_audio(name)) {
        (k ? mix.b : mix.a) = name;
      }
    }
    const int n = plan.transition_frames();
    mix.a_start = plan.offset - plan.lead_frames / plan.fps;
    mix.a_length = (plan.lead_frames + n) / plan.fps;
    mix.b_length = (n + plan.tail_frames) / plan.fps;
    mix.crossfade = n / plan.fps;
    if (!mix.a.empty() || !mix.b.empty()) info.audio = mix;
  }
  catch_interrupts();
  std::unique_ptr<FrameSink> sink = open_sink(out_path, info);

  const int total = plan.total_frames();
  const bool show_progress = isatty(STDERR_FILENO);
  render(plan, *a, *b, {sink.get()}, [&](int done) {
    if (show_progress) draw_progress(done, total);
  });
  sink->finish();
  if (out_path != "-") {
    std::printf("%s: %d frames, %dx%d at %g fps (%s, %s)\n", out_path.c_str(), total, plan.size.width,
                plan.size.height, plan.fps, label.c_str(), info.subtitle.c_str());
  }
  return 0;
}

}  // namespace zvcli
