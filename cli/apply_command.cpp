// zvtran apply: one call of a transition, exactly as a host makes it, on raw
// frames. The reproducer host developers use to report what a call did.
#include <cstdio>
#include <cstring>
#include <memory>
#include <optional>

#include "cli/atomic_output.h"
#include "cli/cli_common.h"
#include "cli/commands.h"
#include "cli/gl_collection_args.h"
#include "cli/render_job.h"
#include "host/transition_registry.h"
#include "imaging/fit_overlap.h"

namespace zvcli {
namespace {

// One of the call's images: a frame of the given size, filled from a file
// (or every sample 0), or a null pointer.
std::unique_ptr<Image> make_image(const Args& args, const std::string& role, const std::string& init_option,
                                  bool is_null, std::optional<Size> fallback) {
  if (is_null) return nullptr;
  std::optional<Size> size = args.get_size(role + "-size");
  if (!size) size = fallback;
  if (!size) throw UsageError("missing option --" + role + "-size");
  checked_frame_size(*size, "--" + role + "-size", true);
  auto image = std::make_unique<Image>(size->width, size->height);
  if (auto file = args.get(init_option)) {
    std::vector<uint8_t> bytes = read_file(*file);
    if (bytes.size() != raw_frame_bytes(*size)) {
      throw UsageError(*file + ": " + std::to_string(bytes.size()) + " bytes, but a " +
                       std::to_string(size->width) + "x" + std::to_string(size->height) + " frame has " +
                       std::to_string(raw_frame_bytes(*size)));
    }
    load_raw_frame(*image, bytes);
  }
  return image;
}

// The fit service has the transition shape with an untyped fourth argument.
int ZV_STDCALL round_as_transition(Image* out, Image* a, Image* b, TransitionParams* params) {
  return zvTranRound(out, a, b, params);
}

// A registered transition by id or name, or one of the picture services that
// share the transition signature.
TransitionOp resolve_op(const std::string& text) {
  if (text == "zvTranRound") return round_as_transition;
  if (text == "zvTransparentOverlap") return zvTransparentOverlap;
  return transition_get_op(resolve_transition(text));
}

}  // namespace

int apply_command(int argc, char** argv) {
  constexpr const char* kUsage =
      "usage: zvtran apply OP [options] (OP: an id 1-66, a name, gl:NAME, zvTranRound or zvTransparentOverlap)";
  Args args("apply", kUsage, argc, argv,
            {"a", "a-size", "b", "b-size", "out", "out-size", "out-init", "style", "param1", "param2", "param3",
             "enabled", "duration", "position", "null", "a-flags", "out-flags", "calls", "set"});
  if (args.positional().size() != 1) throw UsageError(kUsage);
  // A GLSL transition takes its parameters by name and its progress from the
  // block's position and duration, as the others compute it.
  std::optional<GlChoice> gl;
  TransitionOp op = nullptr;
  if (is_gl_transition(args.positional()[0])) {
    gl = gl_choice(args.positional()[0], args.get_all("set"));
  } else if (args.has("set")) {
    throw UsageError("--set is for GLSL transitions (gl:NAME)");
  } else {
    op = resolve_op(args.positional()[0]);
  }

  std::set<std::string> nulls;
  for (const std::string& which : args.get_all("null")) {
    if (which != "a" && which != "b" && which != "out" && which != "params") {
      throw UsageError("--null takes a, b, out or params, not '" + which + "'");
    }
    nulls.insert(which);
  }
  const int calls = args.get_int("calls", 1);
  if (calls < 1 || calls > 100000) throw UsageError("--calls must be 1 to 100000");

  std::unique_ptr<Image> a = make_image(args, "a", "a", nulls.count("a"), std::nullopt);
  std::optional<Size> a_size = a ? std::optional<Size>(Size{a->width, a->height}) : std::nullopt;
  std::unique_ptr<Image> b = make_image(args, "b", "b", nulls.count("b"), a_size);
  std::unique_ptr<Image> out = make_image(args, "out", "out-init", nulls.count("out"), a_size);
  if (a) a->set_frame_flags(args.get_int("a-flags", 0));
  if (out) out->set_frame_flags(args.get_int("out-flags", 0));

  TransitionParams params;
  std::memset(&params, 0, sizeof params);
  params.style = args.get_int("style", 0);
  params.param1 = args.get_int("param1", 0);
  params.param2 = args.get_double("param2", 0.0);
  params.param3 = args.get_int("param3", 0);
  params.enabled = args.get_int("enabled", 1);
  params.duration = args.get_double("duration", 1.0);
  params.position = args.get_double("position", 0.0);
  TransitionParams* block = nulls.count("params") ? nullptr : &params;

  // Each call's output goes to the file as it is made, never all of them held.
  std::unique_ptr<AtomicOutput> file;
  if (auto path = args.get("out"); path && out) file = std::make_unique<AtomicOutput>(*path, AtomicOutput::kFile);
  int result = 0;
  for (int call = 0; call < calls; ++call) {
    if (interrupt_requested()) throw Interrupted();
    if (gl) {
      result = zvGlTranApply(gl->index, out.get(), a.get(), b.get(), block ? zv::transition_progress(block) : 0.0,
                             gl->values.data(), static_cast<int>(gl->values.size()));
      if (result >= kZvGlBadArgument) throw RunError(zvGlTranError());
    } else {
      result = op(out.get(), a.get(), b.get(), block);
    }
    if (file) {
      for (int p = 0; p < 3; ++p) file->write(p == 0 ? out->get_Y() : p == 1 ? out->get_U() : out->get_V(), out->plane_size(p));
    }
  }
  std::printf("result %d flags %d param1 %d\n", result, out ? out->frame_flags() : 0, block ? block->param1 : 0);
  flush_stdout();  // the output appears only when everything was said
  if (file) file->commit();
  return 0;
}

}  // namespace zvcli
