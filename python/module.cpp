// The Python module zvtransition: every transition and picture service of the
// library on numpy frames, each call made as a host makes it, without copying
// the frames and without the GIL.
#include <pybind11/pybind11.h>

#include "frame/transition_op.h"
#include "frame/zv_transition.h"
#include "gl/gl_release.h"
#include "host/transition_registry.h"
#include "imaging/fit_overlap.h"
#include "imaging/image_resize.h"
#include "python/arguments.h"
#include "python/gl_collection.h"
#include "python/services.h"
#include "python/transitions.h"

namespace py = pybind11;
using namespace pybind11::literals;

namespace {

// The id under which the library registers zvTransparentOverlap itself.
constexpr int kOverlapId = 17;

py::object apply(py::handle transition, py::handle a, py::handle b, double position, double duration, py::handle style,
                 py::handle param1, double param2, py::handle param3, py::handle params, py::handle out) {
  const TransitionParams block =
      zvpy::make_params(position, duration, zvpy::int32_argument(style, "style"),
                        zvpy::int32_argument(param1, "param1"), param2, zvpy::int32_argument(param3, "param3"));
  if (zvpy::is_gl_transition(transition)) {
    if (block.style || block.param1 || block.param2 != 0.0 || block.param3) {
      throw py::value_error("a GLSL transition takes its parameters as params={name: value}, not as style or param1-3");
    }
    const double progress = zv::transition_progress(&block);
    return zvpy::call_gl_transition(transition.cast<std::string>(), a, b, out, progress, params);
  }
  if (!params.is_none()) throw py::value_error("params= is for the GLSL collection (gl:NAME)");
  const int id = zvpy::transition_id(transition);
  return zvpy::call_transition(transition_get_op(id), id, a, b, out, block);
}

py::object overlap(py::handle a, py::handle b, double position, double duration, py::handle param1, double param2,
                   py::handle param3, py::handle out) {
  const TransitionParams params = zvpy::make_params(position, duration, 0, zvpy::int32_argument(param1, "param1"),
                                                    param2, zvpy::int32_argument(param3, "param3"));
  return zvpy::call_transition(zvTransparentOverlap, kOverlapId, a, b, out, params);
}

void release_opengl() {
  py::gil_scoped_release released;
  ZvFreeOpenGLObj();
}

// The docstrings, each starting with the function's Python signature.
constexpr const char* kModuleDoc = R"(The ZvTransition video transitions and picture services on numpy frames.

A frame is a uint8 array of shape (H * 3 / 2, W), Y then U then V (what PyAV's
to_ndarray(format="yuv420p") gives; H and W even), or a tuple of three uint8
planes (Y, U, V) of shapes (H, W), (H / 2, W / 2), (H / 2, W / 2), any size.
Contiguous frames are used where they lie; the GIL is released in every call.)";

constexpr const char* kCatalogueDoc = R"(catalogue() -> list of dict

Every transition: id, name, styles (the names a host shows, style 0 first) and
labels (the parameter labels: the style's, then param1's and param2's; None
where the library gives a null label). Then the GLSL collection: id (gl:NAME),
name, author, license and params (each parameter's name, type and default).)";

constexpr const char* kApplyDoc = R"(apply(transition, a, b, position, *, duration=1.0, style=0, param1=0, param2=0.0,
param3=0, params=None, out=None) -> frame

One call of a transition, as a host makes it: `transition` is an id or a
display name (any letter case); `a` shows at progress 0 and `b` at 1, progress
being position / duration. Writes `out` in place and returns it; without
`out`, returns a new frame started as a copy of `a`. Frames may differ in
size: the transition works on their centred common region. A style that the
transition reports out of range raises ValueError naming its styles; a
transition that does not test its style draws what it draws for it.

A transition of the GLSL collection is named gl:NAME and takes its parameters
as params={name: value}: a number, a sequence of up to four, or a frame for a
picture; the others keep their defaults (see catalogue()).)";

constexpr const char* kOverlapDoc =
    R"(overlap(a, b, position, *, duration=1.0, param1=0, param2=0.0, param3=0, out=None) -> frame

zvTransparentOverlap, transition 17 itself: `b` over `a` at the opacity
position / duration, `b`'s samples near the key luma transparent (param1: a
key colour 0xFFBBGGRR, used when its top byte is set; param3: a direct key
luma in bits 16-23). Arguments and result as in apply().)";

constexpr const char* kLetterboxDoc = R"(letterbox(frame, size=None, *, out=None) -> frame

zvTranRound: `frame` fitted into `out`, or into a new frame of zeros of `size`
(width, height), its aspect kept, black around it. Returns the output frame.)";

constexpr const char* kResizeDoc =
    R"(resize(frame, size=None, *, out=None, interpolation=BILINEAR, method=STRETCH, dst_aspect=None, src_aspect=None)
-> frame

zvImageResize: `frame` scaled into `out`, or into a new frame of zeros of
`size` (width, height), by `interpolation` (NEAREST, BILINEAR, CUBIC) and
`method` (KEEP_ASPECT, FIT_16_9, FIT_4_3, STRETCH, CENTRE, TILE). The display
aspects dst_aspect and src_aspect, (x, y) each, go together (KEEP_ASPECT uses
them). Returns the output frame.)";

constexpr const char* kRgbToYuvDoc = R"(rgb_to_yuv420(rgb, *, out=None) -> frame

Rgb24_2_yuv420: an H x W x 3 uint8 RGB array into a W x H frame, `out` or a
new one of zeros; its even part is converted. Returns the frame.)";

constexpr const char* kYuvToRgbDoc = R"(yuv420_to_rgb(frame, *, out=None) -> array

Yuv420_2_rgb24: a frame into an H x W x 3 uint8 RGB array, `out` or a new one
of zeros; its even part is converted. Returns the array.)";

constexpr const char* kReleaseDoc = R"(release_opengl()

ZvFreeOpenGLObj: releases one OpenGL renderer of the calling thread (the 3D
transitions make one per frame size and transition, the GLSL collection one
per frame size); a thread calls it once for each, before it ends.)";

}  // namespace

PYBIND11_MODULE(zvtransition, m) {
  m.doc() = kModuleDoc;
  if (zvTranInit() != 1) throw py::import_error("the transition library found no string loader (libzvCtrls)");
  // pybind11's own signatures would name C++ types; each docstring starts with the Python one.
  py::options options;
  options.disable_function_signatures();

  m.def("catalogue", &zvpy::catalogue, kCatalogueDoc);
  m.def("apply", &apply, "transition"_a, "a"_a, "b"_a, "position"_a, py::kw_only(), "duration"_a = 1.0, "style"_a = 0,
        "param1"_a = 0, "param2"_a = 0.0, "param3"_a = 0, "params"_a = py::none(), "out"_a = py::none(), kApplyDoc);
  m.def("overlap", &overlap, "a"_a, "b"_a, "position"_a, py::kw_only(), "duration"_a = 1.0, "param1"_a = 0,
        "param2"_a = 0.0, "param3"_a = 0, "out"_a = py::none(), kOverlapDoc);
  m.def("letterbox", &zvpy::letterbox, "frame"_a, "size"_a = py::none(), py::kw_only(), "out"_a = py::none(),
        kLetterboxDoc);
  m.def("resize", &zvpy::resize, "frame"_a, "size"_a = py::none(), py::kw_only(), "out"_a = py::none(),
        "interpolation"_a = static_cast<int>(IMAGE_INTERPOLATION_BILINEAR),
        "method"_a = static_cast<int>(IMAGE_RESIZE_STRETCH), "dst_aspect"_a = py::none(), "src_aspect"_a = py::none(),
        kResizeDoc);
  m.def("rgb_to_yuv420", &zvpy::rgb_to_yuv420, "rgb"_a, py::kw_only(), "out"_a = py::none(), kRgbToYuvDoc);
  m.def("yuv420_to_rgb", &zvpy::yuv420_to_rgb, "frame"_a, py::kw_only(), "out"_a = py::none(), kYuvToRgbDoc);
  m.def("release_opengl", &release_opengl, kReleaseDoc);

  m.attr("NEAREST") = static_cast<int>(IMAGE_INTERPOLATION_NEAREST);
  m.attr("BILINEAR") = static_cast<int>(IMAGE_INTERPOLATION_BILINEAR);
  m.attr("CUBIC") = static_cast<int>(IMAGE_INTERPOLATION_CUBIC);
  m.attr("KEEP_ASPECT") = static_cast<int>(IMAGE_RESIZE_KEEP_ASPECT);
  m.attr("FIT_16_9") = static_cast<int>(IMAGE_RESIZE_FIT_16_9);
  m.attr("FIT_4_3") = static_cast<int>(IMAGE_RESIZE_FIT_4_3);
  m.attr("STRETCH") = static_cast<int>(IMAGE_RESIZE_STRETCH);
  m.attr("CENTRE") = static_cast<int>(IMAGE_RESIZE_CENTRE);
  m.attr("TILE") = static_cast<int>(IMAGE_RESIZE_TILE);
}
