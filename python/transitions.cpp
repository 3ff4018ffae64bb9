#include "python/transitions.h"

#include <stdexcept>
#include <string>

#include "frame/zv_transition.h"
#include "host/transition_registry.h"
#include "python/arguments.h"
#include "python/frames.h"
#include "python/gl_collection.h"

namespace zvpy {
namespace {

std::string name_of(int id) {
  const char* name = transition_get_op_name(id);
  return name ? name : "transition " + std::to_string(id);
}

// What a call's result means to Python. 1 is Overlap Alpha Blend's answer
// when it has drawn: no argument is ever null from here, and no block disabled.
void check_result(int result, int id, int style) {
  if (result == kTransitionDone || result == kTransitionNullArgument) return;
  if (result == kTransitionBadStyle) {
    throw py::value_error("style " + std::to_string(style) + " is out of range for " + name_of(id) + " (styles 0-" +
                          std::to_string(zvTranGetStyleCount(id) - 1) + ")");
  }
  throw std::runtime_error(name_of(id) + " returned " + std::to_string(result));
}

}  // namespace

py::list catalogue() {
  py::list list;
  for (int id = 1; id <= transition_get_op_count(); ++id) {
    py::list styles, labels;
    const int count = zvTranGetStyleCount(id);
    if (const char** names = zvTranGetStyleName(id)) {
      for (int s = 0; s < count; ++s) styles.append(names[s]);
    }
    const zvTarnParamExplain* explain = zvTranGetParamExplain(id);
    for (int l = 0; l < explain->count; ++l) {
      labels.append(explain->labels[l] ? py::object(py::str(explain->labels[l])) : py::none());
    }
    py::dict entry;
    entry["id"] = id;
    entry["name"] = name_of(id);
    entry["styles"] = styles;
    entry["labels"] = labels;
    list.append(entry);
  }
  append_gl_catalogue(list);
  return list;
}

int transition_id(py::handle transition) {
  if (py::isinstance<py::str>(transition)) {
    const std::string name = transition.cast<std::string>();
    if (const int id = transition_find_op_id(name.c_str())) return id;
    throw py::value_error("unknown transition '" + name + "' (see zvtransition.catalogue())");
  }
  if (!PyIndex_Check(transition.ptr())) {
    throw py::type_error("transition must be an id or a display name, not " + type_name(transition));
  }
  const int32_t id = int32_argument(transition, "transition");
  const int count = transition_get_op_count();
  if (id < 1 || id > count) {
    throw py::value_error("transition id " + std::to_string(id) + " is out of range 1-" + std::to_string(count));
  }
  return id;
}

TransitionParams make_params(double position, double duration, int32_t style, int32_t param1, double param2,
                             int32_t param3) {
  // The host's own bytes zero, and the block enabled.
  return TransitionParams{{}, style, param1, param2, {}, duration, position, param3, 1};
}

py::object call_transition(TransitionOp op, int id, py::handle a, py::handle b, py::handle out,
                           TransitionParams params) {
  py::object output;
  const int result = draw_frames(a, b, out, output, [&](Image* o, Image* x, Image* y) { return op(o, x, y, &params); });
  check_result(result, id, params.style);
  return output;
}

}  // namespace zvpy
