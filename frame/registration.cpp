#include "frame/registration.h"

#include <algorithm>
#include <iterator>

#include "blends/blend.h"
#include "blends/dissolves.h"
#include "blends/fade.h"
#include "blends/gradient_wipe.h"
#include "blends/image_space.h"
#include "blends/mesh.h"
#include "blends/mosaic.h"
#include "blends/picture_in_picture.h"
#include "blends/stretch_in.h"
#include "blends/x_ray.h"
#include "blends/zoom.h"
#include "effects3d/cube.h"
#include "effects3d/door.h"
#include "effects3d/drive_off.h"
#include "effects3d/gl_pieces.h"
#include "effects3d/gl_recede.h"
#include "effects3d/gl_sheets.h"
#include "effects3d/gl_turns.h"
#include "effects3d/software3d.h"
#include "frame/platform_module.h"
#include "frame/zv_transition.h"
#include "host/transition_registry.h"
#include "imaging/fit_overlap.h"
#include "wipes/build_wipes.h"
#include "wipes/clock_wipes.h"
#include "wipes/line_wipe.h"
#include "wipes/push_slide_haul.h"
#include "wipes/region_wipe.h"
#include "wipes/rotate_wipe.h"
#include "wipes/split_wipes.h"
#include "wipes/strip_wipes.h"
#include "wipes/triangle_doors.h"
#include "wipes/triangle_wipes.h"

namespace zv {
namespace {

typedef const char*(ZV_STDCALL* LoadStringFn)(unsigned int id, ZvModule module);

// Set by zvTranInit and never cleared: a later init that finds no controls
// module keeps what an earlier one resolved.
LoadStringFn g_load_string = nullptr;

// Stands in for a transition this build does not draw: it behaves like any
// entry up to the point of drawing, then reports that it drew nothing.
int ZV_STDCALL not_implemented_transition(Image* out, Image* a, Image* b, TransitionParams* params) {
  int result = transition_prologue(out, a, b, params);
  return result == kProceed ? kTransitionNotImplemented : result;
}

// Registration order: the place in this table is the transition's id.
const TransitionOp kEntries[kTransitionCount] = {
    line_based_wipe,             // 1 Line Based Wipe
    push_based_wipe,             // 2 Push Based Wipe
    slide_based_wipe,            // 3 Slide Based Wipe
    haul_based_wipe,             // 4 Haul Based Wipe
    region_based_wipe,           // 5 Region Based Wipe
    clock_based_wipe,            // 6 Clock Based Wipe
    rotate_based_wipe,           // 7 Rotate Based Wipe
    center_rotate_wipe,          // 8 Center Rotate Wipe
    cross_based_wipe,            // 9 Cross Based Wipe
    blind_based_wipe,            // 10 Blind Based Wipe
    build_based_wipe,            // 11 Build Based Wipe
    spiral_based_wipe,           // 12 Spiral Based Wipe
    zoom_transition,             // 13 Zoom
    fade_transition,             // 14 Fade
    mosaic_based_wipe,           // 15 Mosaic Based Wipe
    picture_in_picture,          // 16 Picture in picture
    zvTransparentOverlap,        // 17 Overlap Alpha Blend: the exported service itself
    roll_3d,                     // 18 3D Roll
    wipe_transition,             // 19 Wipe
    split_wipe,                  // 20 Split
    center_split_wipe,           // 21 Center Split
    double_slide_wipe,           // 22 Double Slide
    triangle_rotate_wipe,        // 23 Triangle Rotate
    triangle_push_wipe,          // 24 Triangle Push
    triangle_slide_wipe,         // 25 Triangle Slide
    page_turn_3d,                // 26 3D Page Turn
    center_peel_3d,              // 27 3D Center Peel
    peel_back_3d,                // 28 3D Peel Back
    obscure,                     // 29 Obscure
    split_back_wipe,             // 30 Split Back
    single_triangle_door,        // 31 Single Triangle Door
    multi_triangle_door,         // 32 Multi-Triangle Door
    swap,                        // 33 Swap
    curtain_3d,                  // 34 3D Curtain
    swing,                       // 35 Swing
    add_dissolve,                // 36 Add Dissolve
    non_add_dissolve,            // 37 Non Add Dissolve
    random_dissolve,             // 38 Random Dissolve
    gradient_wipe,               // 39 Gradient Wipe
    stretch_in,                  // 40 Stretch In
    mesh_transition,             // 41 Mesh
    RotaryCubeTransition,        // 42 3D Rotary Cube
    FlagTransition,              // 43 3D Flag
    user_defined_zoom,           // 44 User-Defined Zoom
    CrossZoomTransition,         // 45 Cross Zoom
    zoom_box,                    // 46 Zoom Box
    ProjectionTransition,        // 47 3D Projection
    FoldTransition,              // 48 3D Fold
    DriveOffTransition,          // 49 3D Drive Off
    ZStretchTransition,          // 50 3D Z-Stretch
    WindowGridTransition,        // 51 3D Window Grid
    FoldingBoxTransition,        // 52 3D Folding Box
    x_ray,                       // 53 X Ray
    gauze,                       // 54 Gauze
    ImageSpiralTransition,       // 55 Image Spiral
    edge_feather,                // 56 Edge Feather
    CubeTransition,              // 57 3D Cube
    FlipTransition,              // 58 3D Flip
    DoorTransition,              // 59 3D Door
    BubblesTransition,           // 60 3D Bubbles
    DistortTransition,           // 61 3D Distort
    PatchTransition,             // 62 Patch
    wind,                        // 63 Wind
    ShatterTransition,           // 64 3D Shatter
    lens,                        // 65 Lens
    blend_transition,            // 66 Blend
};

// The transitions drawn with OpenGL.
const TransitionOp kOpenGlEntries[] = {
    RotaryCubeTransition, FlagTransition,        CrossZoomTransition, ProjectionTransition,
    FoldTransition,       DriveOffTransition,    ZStretchTransition,  WindowGridTransition,
    FoldingBoxTransition, ImageSpiralTransition, CubeTransition,      FlipTransition,
    BubblesTransition,    DistortTransition,     PatchTransition,     ShatterTransition,
};

// A host that already holds more than this many transitions is taken to hold
// this library's set already (kept as hosts expect).
constexpr int kAlreadyRegisteredThreshold = 10;

}  // namespace

const char* load_library_string(unsigned int id) {
  if (!g_load_string) return nullptr;
  // Our own module by its fixed file name, not by the handle we were loaded with.
  return g_load_string(id, find_loaded_module(kTransitionModuleName));
}

TransitionOp transition_entry(int id) {
  return (id >= 1 && id <= kTransitionCount) ? kEntries[id - 1] : nullptr;
}

bool transition_uses_opengl(int id) {
  TransitionOp entry = transition_entry(id);
  return entry && std::find(std::begin(kOpenGlEntries), std::end(kOpenGlEntries), entry) != std::end(kOpenGlEntries);
}

bool transition_is_implemented(int id) {
  TransitionOp entry = transition_entry(id);
  return entry && entry != not_implemented_transition;
}

}  // namespace zv

int ZV_STDCALL zvTranInit() {
  if (ZvModule controls = zv::find_loaded_module(zv::kControlsModuleName)) {
    zv::g_load_string = reinterpret_cast<zv::LoadStringFn>(zv::find_module_symbol(controls, zv::kLoadStringSymbol));
  }
  if (!zv::g_load_string) return 0;
  if (transition_get_op_count() > zv::kAlreadyRegisteredThreshold) return 1;
  for (int id = 1; id <= zv::kTransitionCount; ++id) {
    transition_add_op(zv::kEntries[id - 1], zv::load_library_string(static_cast<unsigned int>(id)));
  }
  return 1;
}
