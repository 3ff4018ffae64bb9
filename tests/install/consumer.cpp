// A host built against the installed library: registers the transitions and
// runs one, then one of the GLSL collection. Prints what it found; exits
// non-zero when something is wrong.
#include <cstdio>
#include <cstring>
#include <initializer_list>

#include "effects3d/zv_gl_collection.h"
#include "frame/transition_op.h"
#include "frame/zv_transition.h"
#include "gl/gl_release.h"
#include "host/image.h"
#include "host/transition_registry.h"

int main() {
  if (zvTranInit() != 1) return std::puts("zvTranInit failed"), 1;
  int count = transition_get_op_count();
  int fade = transition_get_op_id("Fade");
  if (count != 66 || fade != 14) return std::printf("%d transitions, Fade is %d\n", count, fade), 1;

  Image a(64, 48), b(64, 48), out(64, 48);
  std::memset(a.get_Y(), 40, a.plane_size(0));
  std::memset(b.get_Y(), 200, b.plane_size(0));
  TransitionParams params{};
  params.duration = 1.0;
  params.position = 1.0;
  params.enabled = 1;
  int result = transition_get_op(fade)(&out, &a, &b, &params);
  if (result != 0 || out.get_Y()[0] != 200) return std::printf("Fade gave %d, luma %d\n", result, out.get_Y()[0]), 1;
  std::printf("66 transitions; %s drew b; style 0 is \"%s\"\n", transition_get_op_name(fade), zvTranGetStyleName(14)[0]);

  // Grey (neutral chroma), which comes back through RGB as it went.
  for (Image* image : {&a, &b}) {
    std::memset(image->get_U(), 128, image->plane_size(1));
    std::memset(image->get_V(), 128, image->plane_size(2));
  }
  const int gl_fade = zvGlTranFind("fade");
  result = zvGlTranApply(gl_fade, &out, &a, &b, 0.0, nullptr, 0);
  if (zvGlTranCount() != 125 || result != 0 || out.get_Y()[0] < 38 || out.get_Y()[0] > 42) {
    return std::printf("%d GLSL transitions, fade gave %d (%s), luma %d\n", zvGlTranCount(), result, zvGlTranError(),
                       out.get_Y()[0]), 1;
  }
  ZvFreeOpenGLObj();
  ZvFreeOpenGLObj();
  std::printf("125 GLSL transitions; gl:%s by %s drew a\n", zvGlTranInfo(gl_fade)->name, zvGlTranInfo(gl_fade)->author);
  return 0;
}
